// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/CameraAccess.h>

#include <KelAIndustryControl/KelAErrors.h>
#include <KelAIndustryControl/gige/AccessBook.h>
#include <KelAIndustryControl/gige/BootstrapRegisters.h>
#include <KelAIndustryControl/gige/CameraTable.h>
#include <KelAIndustryControl/gige/Discovery.h>

#include <netinet/in.h>

#include <vector>

namespace kela::gige
{
namespace
{

constexpr Milliseconds kLongestAsk{700};
constexpr RetryPlan kOnlyRoutePlan{Milliseconds{230}, 3};
constexpr RetryPlan kFirstRoutePlan{Milliseconds{170}, 2};
constexpr RetryPlan kAccessPlan{Milliseconds{250}, 2};

// By the card that is thought to see the camera, then by the routing table: behind a router, or moved.
std::vector<CameraRoute> routesTo(const Cards &cards, const KELA_DEVICE_INFO_EX &info)
{
    std::vector<CameraRoute> routes{routeOf(cards, info)};
    if (routes.front().card)
        routes.push_back({info.special.gige.currentIp, {}, nullptr});
    return routes;
}

// What the camera did not tell again stays as it was: the stream's destination, and who holds it.
void refreshRecord(KELA_DEVICE_INFO_EX &info, const DiscoveryAnswer &answer, std::uint32_t hostAddress,
                   bool isOnThisHost)
{
    const KELA_GIGE_DEVICE_INFO before = info.special.gige;
    info = recordOf(answer, hostAddress, isOnThisHost);
    info.special.gige.streamDestination = before.streamDestination;
    info.special.gige.streamHostPort = before.streamHostPort;
    info.special.gige.primaryApplicationIp = before.primaryApplicationIp;
}

// Who holds it, in what is left of the time; without an answer the old value stays.
void refreshHolder(RegisterClient &client, KELA_DEVICE_INFO_EX &info)
{
    constexpr RetryPlan kOnce{Milliseconds{100}, 1};
    AccessProbe probe;
    while (const auto address = probe.nextRegister()) {
        if (*address == kRegisterStreamPort)
            break;
        std::uint32_t value = 0;
        const unsigned int result = client.readRegister(*address, value, kOnce);
        if (result == KELA_OK) {
            probe.onValue(value);
        } else if (result == KELA_ERROR_IN_USE) {
            probe.onRefused(kStatusAccessDenied);
        } else {
            return;
        }
    }
    info.special.gige.primaryApplicationIp = probe.value().holder;
}

} // namespace

CameraRoute routeOf(const Cards &cards, const KELA_DEVICE_INFO_EX &info)
{
    const KELA_GIGE_DEVICE_INFO &gige = info.special.gige;
    return routeTo(cards, {gige.currentIp, gige.subnetMask, gige.hostIp, cardThatSaw(keyOf(info))});
}

unsigned int askDevice(const CancelSignal &cancel, KELA_DEVICE_INFO_EX &info)
{
    const std::uint32_t address = info.special.gige.currentIp;
    if (address == 0)
        return KELA_ERROR_PARAMETER;
    const Cards cards = readCards().value_or(Cards{});
    const TimePoint deadline = Clock::now() + kLongestAsk;
    const std::vector<CameraRoute> routes = routesTo(cards, info);
    unsigned int result = KELA_ERROR_UNREACHABLE;
    for (const CameraRoute &route : routes) {
        RegisterClient client(cancel);
        client.setDeadline(deadline);
        DiscoveryAnswer answer;
        const bool isLast = &route == &routes.back();
        result = client.open(route);
        if (result == KELA_OK)
            result = client.discover(answer, routes.size() == 1 ? kOnlyRoutePlan : kFirstRoutePlan);
        if (result == KELA_ERROR_CANCELLED || (result != KELA_OK && isLast))
            return result;
        if (result != KELA_OK)
            continue;
        const std::uint32_t local = client.localAddress();
        refreshRecord(info, answer, local, isOwnAddress(cards, address));
        refreshHolder(client, info);
        return KELA_OK;
    }
    return result;
}

unsigned int askAccess(const CancelSignal &cancel, const KELA_DEVICE_INFO_EX &info, bool withStream,
                       AccessValue &value)
{
    if (info.special.gige.currentIp == 0)
        return KELA_ERROR_PARAMETER;
    const Cards cards = readCards().value_or(Cards{});
    RegisterClient client(cancel);
    unsigned int result = client.open(routeOf(cards, info));
    if (result != KELA_OK)
        return result;
    std::uint32_t privilege = 0;
    result = client.readRegister(kRegisterControlPrivilege, privilege, kAccessPlan);
    if (result == KELA_ERROR_IN_USE) {
        value.kind = AccessValue::Kind::Denied;
        return KELA_OK;
    }
    if (result != KELA_OK)
        return result;
    value.kind = AccessValue::Kind::Read;
    value.privilege = privilege;
    if (!withStream)
        return KELA_OK;
    std::uint32_t port = 0;
    result = client.readRegister(kRegisterStreamPort, port, kAccessPlan);
    value.isStreamPortRead = result == KELA_OK;
    value.streamHostPort = port & kStreamPortMask;
    return result;
}

unsigned int sendForcedAddress(const CancelSignal &cancel, const KELA_DEVICE_INFO_EX &info,
                               const ForcedAddress &forced)
{
    constexpr int kSends = 2;
    constexpr Milliseconds kPause{50};
    const Cards cards = readCards().value_or(Cards{});
    const CameraRoute route = routeOf(cards, info);
    if (!route.card)
        return KELA_ERROR_UNREACHABLE;
    GvcpSocket socket;
    if (const int error = socket.open(route.card); error != 0)
        return errorOfErrno(error);
    RequestIds ids;
    const Datagram command = forceIpCommand(ids.next(), forced, areBroadcastAnswersAllowed());
    // There may be no answer: the camera has just moved. So the command is repeated, and whether it obeyed
    // shows in the next enumeration.
    for (int i = 0; i < kSends; ++i) {
        if (i > 0 && cancel.waitUntil(Clock::now() + kPause))
            return KELA_ERROR_CANCELLED;
        if (const int error = socket.send(INADDR_BROADCAST, route.path, {command.data(), command.size()});
            error != 0)
            return errorOfErrno(error);
    }
    return KELA_OK;
}

} // namespace kela::gige
