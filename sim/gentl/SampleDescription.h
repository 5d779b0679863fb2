// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

/// What a sample producer shows and what it gets wrong. It comes from the text file beside the producer,
/// "<producer>.txt", which may be changed while a program uses the producer:
///
///     # a comment
///     producer VENDOR|MODEL|VERSION|TYPE|DISPLAY NAME
///     interface ID|DISPLAY NAME|TYPE
///     device ID|VENDOR|MODEL|SERIAL|USER NAME|VERSION|ACCESS STATUS
///     devices COUNT                   as many numbered devices
///     error FUNCTION CODE             the function gives the code
///     hang FUNCTION MILLISECONDS      the function takes that long, whatever its time-out
///     fault NAME                      see Fault
///
/// Devices belong to the interface above them. In identifiers and names, \xHH is a byte.
namespace sample
{

struct Device {
    std::string id;
    std::string vendor;
    std::string model;
    std::string serial;
    std::string userName;
    std::string version;
    std::int32_t accessStatus = 1;
};

struct Interface {
    std::string id;
    std::string name;
    std::string type;
    std::vector<Device> devices;
};

struct ProducerTexts {
    std::string vendor = "Sample";
    std::string model = "Sample producer";
    std::string version = "1.0";
    std::string type = "Mixed";
    std::string displayName = "Sample producer";
};

struct Description {
    ProducerTexts producer;
    std::vector<Interface> interfaces;
    std::map<std::string, std::int32_t> errors; // by function
    std::map<std::string, int> hangs;           // milliseconds by function
    std::vector<std::string> faults;

    bool has(const char *fault) const;
};

/// Reads a description; lines that are not understood are left out.
Description readDescription(std::istream &text);

} // namespace sample
