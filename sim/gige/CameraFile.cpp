// SPDX-License-Identifier: Apache-2.0
#include "CameraSettings.h"

#include <fstream>

namespace kelsim
{

namespace
{

bool readLine(const std::string &line, CameraSettings &defaults, std::vector<CameraSettings> &cameras,
              std::string &error)
{
    const auto words = splitWords(line);
    if (!words) {
        error = "a quote stays open";
        return false;
    }
    if (words->empty() || words->front()[0] == '#') {
        return true;
    }
    const std::vector<std::string> rest(words->begin() + 1, words->end());
    if (words->front() == "card" && rest.size() == 1) {
        defaults.card = rest[0];
    } else if (words->front() == "camera") {
        if (const auto camera = parseCamera(rest, defaults, error)) {
            cameras.push_back(*camera);
        }
    } else if (words->front() == "fleet") {
        const auto fleet = parseFleet(rest, defaults, error);
        cameras.insert(cameras.end(), fleet.begin(), fleet.end());
    } else {
        error = "'" + words->front() +
                "' is none of card NAME, camera ID key=value…, fleet PREFIX COUNT key=value…";
    }
    return error.empty();
}

} // namespace

std::vector<CameraSettings> readCameraFile(const std::string &path, const std::string &card, std::string &error)
{
    std::ifstream file(path);
    if (!file) {
        error = path + ": cannot be read";
        return {};
    }
    std::vector<CameraSettings> cameras;
    CameraSettings defaults;
    defaults.card = card;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        if (!readLine(line, defaults, cameras, error)) {
            error.insert(0, path + ":" + std::to_string(number) + ": ");
            return {};
        }
    }
    return cameras;
}

} // namespace kelsim
