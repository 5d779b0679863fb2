// SPDX-License-Identifier: Apache-2.0
#include "SampleDescription.h"

#include <algorithm>
#include <cstdlib>
#include <istream>
#include <sstream>

namespace sample
{
namespace
{

std::string unescaped(const std::string &text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 2, "\\x") == 0 && i + 3 < text.size()) {
            result.push_back(static_cast<char>(std::strtoul(text.substr(i + 2, 2).c_str(), nullptr, 16)));
            i += 3;
        } else {
            result.push_back(text[i]);
        }
    }
    return result;
}

std::vector<std::string> fieldsOf(const std::string &text, std::size_t count)
{
    std::vector<std::string> fields;
    std::istringstream line(text);
    for (std::string field; std::getline(line, field, '|');)
        fields.push_back(unescaped(field));
    fields.resize(std::max(count, fields.size()));
    return fields;
}

Device deviceOf(const std::string &text)
{
    const std::vector<std::string> fields = fieldsOf(text, 7);
    const std::int32_t status = fields[6].empty() ? 1 : static_cast<std::int32_t>(std::atoi(fields[6].c_str()));
    return {fields[0], fields[1], fields[2], fields[3], fields[4], fields[5], status};
}

void addNumbered(Interface &interface, int count)
{
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i + 1);
        interface.devices.push_back({"device-" + number, "Sample", "Numbered", "N" + number, "", "1.0", 1});
    }
}

void takeLine(const std::string &line, Description &description)
{
    std::istringstream words(line);
    std::string kind;
    words >> kind >> std::ws;
    std::string rest;
    std::getline(words, rest);
    std::istringstream arguments(rest);
    std::string name;
    int number = 0;
    arguments >> name >> number;

    if (kind == "producer") {
        const std::vector<std::string> fields = fieldsOf(rest, 5);
        description.producer = {fields[0], fields[1], fields[2], fields[3], fields[4]};
    } else if (kind == "interface") {
        const std::vector<std::string> fields = fieldsOf(rest, 3);
        description.interfaces.push_back({fields[0], fields[1], fields[2], {}});
    } else if (kind == "device" && !description.interfaces.empty()) {
        description.interfaces.back().devices.push_back(deviceOf(rest));
    } else if (kind == "devices" && !description.interfaces.empty()) {
        addNumbered(description.interfaces.back(), std::atoi(rest.c_str()));
    } else if (kind == "error") {
        description.errors[name] = number;
    } else if (kind == "hang") {
        description.hangs[name] = number;
    } else if (kind == "fault") {
        description.faults.push_back(name);
    }
}

} // namespace

bool Description::has(const char *fault) const
{
    return std::find(faults.begin(), faults.end(), fault) != faults.end();
}

Description readDescription(std::istream &text)
{
    Description description;
    for (std::string line; std::getline(text, line);) {
        if (!line.empty() && line.front() != '#')
            takeLine(line, description);
    }
    return description;
}

} // namespace sample
