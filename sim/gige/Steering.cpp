// SPDX-License-Identifier: Apache-2.0
#include "Steering.h"

#include <cstdio>
#include <map>

namespace kelsim
{

namespace
{

using Words = std::vector<std::string>;

/// A command for one camera. Returns an error, empty when all is well. words[0] is the command, words[1] the
/// camera.
using Action = std::string (*)(CameraNetwork &, SimulatedCamera &, const Words &);

struct Verb {
    std::size_t fewest; ///< words, the command and the camera included
    std::size_t most;
    Action action;
};

std::string wrongUse(const Words &words)
{
    return "wrong arguments for '" + words[0] + "'; 'help' shows them";
}

std::string plug(CameraNetwork &, SimulatedCamera &camera, const Words &)
{
    camera.plug();
    return {};
}

std::string unplug(CameraNetwork &, SimulatedCamera &camera, const Words &)
{
    camera.unplug();
    return {};
}

// Without an address given, a neighbour of the camera holds it.
std::string take(SimulatedCamera &camera, const Words &words, bool isExclusive)
{
    const CameraPlace &place = camera.place();
    const auto holder =
        words.size() > 2 ? parseAddress(words[2]) : std::make_optional(place.directedBroadcast() - 1);
    if (!holder) {
        return wrongUse(words);
    }
    camera.hold(*holder, isExclusive);
    return {};
}

std::string hold(CameraNetwork &, SimulatedCamera &camera, const Words &words)
{
    return take(camera, words, false);
}

std::string holdExclusively(CameraNetwork &, SimulatedCamera &camera, const Words &words)
{
    return take(camera, words, true);
}

std::string release(CameraNetwork &, SimulatedCamera &camera, const Words &)
{
    camera.release();
    return {};
}

std::string multicast(CameraNetwork &, SimulatedCamera &camera, const Words &words)
{
    if (words[2] == "off") {
        camera.openMulticast(0, 0);
        return {};
    }
    const auto group = parseAddress(words[2]);
    const auto port = words.size() > 3 ? parseNumber(words[3], 65535) : std::nullopt;
    if (!group || !port) {
        return wrongUse(words);
    }
    if (camera.registerValue(reg::kControlPrivilege) == 0) {
        camera.hold(camera.place().directedBroadcast() - 1, false);
    }
    camera.openMulticast(*group, static_cast<uint16_t>(*port));
    return {};
}

std::string moveCamera(CameraNetwork &network, SimulatedCamera &camera, const Words &words)
{
    CameraPlace place = camera.place();
    place.gateway = 0;
    if (!parsePlace(words[2], place)) {
        return wrongUse(words);
    }
    if (words.size() > 3) {
        const auto mask = parseMask(words[3]);
        if (!mask) {
            return wrongUse(words);
        }
        place.mask = *mask;
    }
    if (words.size() > 4) {
        const auto gateway = parseAddress(words[4]);
        if (!gateway) {
            return wrongUse(words);
        }
        place.gateway = *gateway;
    }
    return network.move(camera, place);
}

std::string rename(CameraNetwork &, SimulatedCamera &camera, const Words &words)
{
    camera.rename(words.size() > 2 ? words[2] : "");
    return {};
}

std::string delay(CameraNetwork &, SimulatedCamera &camera, const Words &words)
{
    const auto milliseconds = parseNumber(words[2], 3600000);
    const auto traffic = parseTraffic(words.size() > 3 ? words[3] : "everything");
    if (!milliseconds || !traffic) {
        return wrongUse(words);
    }
    camera.faults().setDelay(std::chrono::milliseconds(*milliseconds), *traffic);
    return {};
}

std::string lose(CameraNetwork &, SimulatedCamera &camera, const Words &words)
{
    const auto count = words[2] == "all" ? std::make_optional(CameraFaults::kForever)
                                         : parseNumber(words[2], CameraFaults::kForever - 1);
    const auto traffic = parseTraffic(words.size() > 3 ? words[3] : "everything");
    if (!count || !traffic) {
        return wrongUse(words);
    }
    camera.faults().setLost(*count, *traffic);
    return {};
}

std::string duplicate(CameraNetwork &, SimulatedCamera &camera, const Words &words)
{
    const auto count = parseNumber(words[2], 1000);
    if (!count) {
        return wrongUse(words);
    }
    camera.faults().setDuplicates(*count);
    return {};
}

std::string bad(CameraNetwork &, SimulatedCamera &camera, const Words &words)
{
    const auto spoiling = parseSpoiling(words[2]);
    const auto value = parseNumber(words.size() > 3 ? words[3] : "0", 0xFFFF);
    if (!spoiling || !value) {
        return wrongUse(words);
    }
    camera.faults().setSpoiling(*spoiling, *value);
    return {};
}

std::string pending(CameraNetwork &, SimulatedCamera &camera, const Words &words)
{
    const auto milliseconds = parseNumber(words[2], 65535);
    if (!milliseconds) {
        return wrongUse(words);
    }
    camera.setPending(*milliseconds);
    return {};
}

const std::map<std::string, Verb> &verbs()
{
    static const std::map<std::string, Verb> table = {
        {"plug", {2, 2, plug}},           {"unplug", {2, 2, unplug}},
        {"hold", {2, 3, hold}},           {"exclusive", {2, 3, holdExclusively}},
        {"release", {2, 2, release}},     {"multicast", {3, 4, multicast}},
        {"move", {3, 5, moveCamera}},     {"name", {2, 3, rename}},
        {"delay", {3, 4, delay}},         {"lose", {3, 4, lose}},
        {"duplicate", {3, 3, duplicate}}, {"bad", {3, 4, bad}},
        {"pending", {3, 3, pending}},
    };
    return table;
}

std::string describe(SimulatedCamera &camera, Clock::time_point now)
{
    const uint32_t privilege = camera.privilege(now);
    std::string text = camera.settings().id + " " + (camera.isPlugged() ? "plugged" : "unplugged") + " " +
                       addressText(camera.place().address) + "/" +
                       std::to_string(prefixLength(camera.place().mask)) + " " + camera.settings().card + " " +
                       macText(camera.settings().mac);
    if (privilege != 0) {
        text += (privilege & kPrivilegeExclusive) != 0 ? " exclusive " : " held ";
        text += addressText(camera.holder().address);
    }
    if (camera.registerValue(reg::kStreamPort) != 0) {
        text += " streams to " + addressText(camera.registerValue(reg::kStreamDestination)) + ":" +
                std::to_string(camera.registerValue(reg::kStreamPort));
    }
    return text;
}

std::string describeReceived(const SimulatedCamera &camera)
{
    std::string text = camera.settings().id;
    for (const auto &[code, count] : camera.received()) {
        char entry[32];
        std::snprintf(entry, sizeof entry, " 0x%04x=%u", static_cast<unsigned int>(code), count);
        text += entry;
    }
    return text;
}

std::string addCamera(CameraNetwork &network, const Words &words)
{
    std::string error;
    const Words rest(words.begin() + 1, words.end());
    const auto camera = parseCamera(rest, CameraSettings{}, error);
    return camera ? network.add({*camera}) : error;
}

/// The cameras that a word names: one by its ID, or "all".
std::vector<SimulatedCamera *> named(CameraNetwork &network, const std::string &id)
{
    if (id == "all") {
        return network.all();
    }
    SimulatedCamera *const camera = network.find(id);
    return camera == nullptr ? std::vector<SimulatedCamera *>{} : std::vector<SimulatedCamera *>{camera};
}

std::string steerCameras(CameraNetwork &network, const Words &words)
{
    const auto verb = verbs().find(words[0]);
    if (verb == verbs().end()) {
        return "unknown command '" + words[0] + "'; 'help' lists them";
    }
    if (words.size() < verb->second.fewest || words.size() > verb->second.most) {
        return wrongUse(words);
    }
    const auto cameras = named(network, words[1]);
    if (cameras.empty()) {
        return "there is no camera '" + words[1] + "'";
    }
    for (SimulatedCamera *camera : cameras) {
        std::string error = verb->second.action(network, *camera, words);
        if (!error.empty()) {
            return error;
        }
    }
    return {};
}

std::vector<std::string> tellAbout(CameraNetwork &network, const Words &words, Clock::time_point now)
{
    std::vector<std::string> lines;
    for (SimulatedCamera *camera : named(network, words.size() > 1 ? words[1] : "all")) {
        lines.push_back(words[0] == "list" ? describe(*camera, now) : describeReceived(*camera));
    }
    return lines;
}

} // namespace

const char *steeringHelp()
{
    return "  plug ID | unplug ID             switch a camera on or pull its cable; ID may be 'all'\n"
           "  hold ID [ADDRESS]               another host takes control\n"
           "  exclusive ID [ADDRESS]          another host takes it for itself alone\n"
           "  release ID                      whoever holds it lets go\n"
           "  multicast ID GROUP PORT | off   the holder streams to a group\n"
           "  move ID ADDRESS MASK [GATEWAY]  to another address; MASK dotted or a prefix length\n"
           "  name ID [TEXT]                  the name that a user gave it\n"
           "  delay ID MS [TRAFFIC]           answers come later\n"
           "  lose ID COUNT|all [TRAFFIC]     the next commands never arrive\n"
           "  duplicate ID COUNT              every answer comes COUNT times more\n"
           "  pending ID MS                   register commands take this long, announced by PENDING\n"
           "  bad ID KIND [VALUE]             answers are wrong: cut SIZE, id, status CODE, code CODE,\n"
           "                                  length SIZE, garbage, text, port; none ends it\n"
           "  camera ID key=value...          one camera more\n"
           "  list [ID] | received [ID]       states; commands received by code\n"
           "  quit\n"
           "TRAFFIC is everything, discovery, broadcast or registers.\n";
}

SteeringResult steer(CameraNetwork &network, const std::string &line, Clock::time_point now)
{
    const auto words = splitWords(line);
    if (!words) {
        return {{}, "a quote stays open", false};
    }
    if (words->empty()) {
        return {};
    }
    const std::string &verb = words->front();
    if (verb == "quit") {
        return {{}, {}, true};
    }
    if (verb == "help") {
        return {{steeringHelp()}, {}, false};
    }
    if (verb == "list" || verb == "received") {
        return {tellAbout(network, *words, now), {}, false};
    }
    if (verb == "camera") {
        return {{}, addCamera(network, *words), false};
    }
    return {{}, steerCameras(network, *words), false};
}

} // namespace kelsim
