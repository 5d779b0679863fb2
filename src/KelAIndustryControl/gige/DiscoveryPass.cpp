// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/DiscoveryPass.h>

#include <KelAIndustryControl/KelAErrors.h>
#include <KelAIndustryControl/gige/Discovery.h>

#include <algorithm>

namespace kela::gige
{
namespace
{

// The registers of a camera that was heard at the end of the window still get their time.
constexpr Milliseconds kLongestPass{1500};

// How long a camera is believed to be there that answers by its registers only: its discovery answer may be
// delayed by a second.
constexpr Milliseconds kSilenceBelieved{3000};

} // namespace

DiscoveryPass::DiscoveryPass(const Tools &tools)
    : m_tools(tools)
    , m_command(discoveryCommand(tools.ids.next(), areBroadcastAnswersAllowed()))
    , m_window(Clock::now(), !tools.table.cameras().empty())
    , m_probes(tools.sockets, tools.ids)
{
    m_tools.requests.add(requestIdOf(m_command), m_tools.table.pass(), m_window.start());
}

unsigned int DiscoveryPass::run()
{
    receive(); // what came after the window of the pass before
    for (;;) {
        if (m_tools.cancel.isSet())
            return KELA_ERROR_CANCELLED;
        const TimePoint now = Clock::now();
        ask(now);
        m_probes.drive(now);
        if (isOver(now))
            break;
        m_tools.sockets.wait(nextEvent(), m_tools.cancel);
        receive();
    }
    m_probes.giveUp();
    takeProbes();
    return KELA_OK;
}

bool DiscoveryPass::isOver(TimePoint now)
{
    if (now >= m_window.start() + kLongestPass)
        return true;
    m_isListening = m_isListening && !m_window.isOver(now, isSomebodyAwaited());
    return !m_isListening && !m_probes.isBusy();
}

TimePoint DiscoveryPass::nextEvent() const
{
    const TimePoint end = std::min(m_window.start() + kLongestPass, m_probes.nextEvent());
    return m_isListening ? std::min(end, m_window.nextEvent(isSomebodyAwaited())) : end;
}

bool DiscoveryPass::isSomebodyAwaited() const
{
    const auto &cameras = m_tools.table.cameras();
    return std::any_of(cameras.begin(), cameras.end(),
                       [this](const auto &entry) { return m_tools.table.isAwaited(entry.second); });
}

void DiscoveryPass::ask(TimePoint now)
{
    if (!m_isListening)
        return;
    if (m_window.takeBroadcast(now))
        m_tools.sockets.broadcast({m_command.data(), m_command.size()});
    if (m_window.takeReask(now))
        askSilentOnes(now);
}

void DiscoveryPass::askSilentOnes(TimePoint now)
{
    for (auto &[key, camera] : m_tools.table.cameras()) {
        const Sighting *chosen = camera.chosen();
        if (!m_tools.table.isAwaited(camera) || !chosen)
            continue;
        m_tools.sockets.send(chosen->answer.currentIp, {chosen->cardIndex, chosen->hostAddress},
                             {m_command.data(), m_command.size()});
        if (chosen->fits)
            m_probes.start(key, *chosen, camera.capability, now);
    }
}

void DiscoveryPass::receive()
{
    m_tools.sockets.receive([this](const Arrival &arrival, const Card *card) { onDatagram(arrival, card); });
}

void DiscoveryPass::onDatagram(const Arrival &arrival, const Card *card)
{
    const auto acknowledge = parseAcknowledge(arrival.bytes);
    if (arrival.senderPort != kGvcpPort) {
        refuse(arrival, "from a wrong port");
    } else if (!acknowledge) {
        refuse(arrival, "shorter than it says");
    } else if (acknowledge->code == acknowledgeOf(kDiscoveryCommand)) {
        onDiscoveryAnswer(arrival, *acknowledge, card);
    } else if (acknowledge->code == acknowledgeOf(kReadRegisterCommand) ||
               acknowledge->code == kPendingAcknowledge) {
        onRegisterAnswer(arrival, *acknowledge);
    } else {
        refuse(arrival, "has an unknown code");
    }
}

void DiscoveryPass::onDiscoveryAnswer(const Arrival &arrival, const Acknowledge &acknowledge, const Card *card)
{
    const auto pass = m_tools.requests.passOf(acknowledge.requestId);
    if (!pass)
        return refuse(arrival, "answers an unknown request");
    const auto answer = acknowledge.isError() ? std::nullopt : parseDiscovery(acknowledge.payload);
    if (!answer)
        return refuse(arrival, acknowledge.isError() ? "reports an error" : "has too few bytes");
    // A camera on this host itself sends from one of our addresses; the kernel lets no other do that.
    const bool isOnThisHost =
        isOwnAddress(m_tools.cards, answer->currentIp) && isOwnAddress(m_tools.cards, arrival.sender);
    // A program on this host that plays a camera of another address: seen by the card it speaks from.
    if (!isOnThisHost && !card)
        card = findCardByAddress(m_tools.cards, arrival.sender);
    if (!isOnThisHost && !card)
        return refuse(arrival, "came by no card");
    const TimePoint now = Clock::now();
    const CameraTable::Noted noted =
        m_tools.table.note({*answer, isOnThisHost ? nullptr : card, arrival.destination, *pass}, now);
    if (noted.isNew)
        m_window.noteNew(now);
    if (!noted.camera)
        return;
    const Sighting *sighting = noted.camera->sightingBy(isOnThisHost ? 0 : card->index);
    if (sighting && sighting->fits)
        m_probes.start(*noted.key, *sighting, noted.camera->capability, now);
}

void DiscoveryPass::onRegisterAnswer(const Arrival &arrival, const Acknowledge &acknowledge)
{
    const TimePoint now = Clock::now();
    const CameraKey *key = m_probes.offer(arrival.sender, acknowledge, now);
    if (!key)
        return; // a repetition, or too late
    const auto entry = m_tools.table.cameras().find(*key);
    if (entry != m_tools.table.cameras().end() && now - entry->second.lastAnswer < kSilenceBelieved)
        entry->second.isAlive = true;
}

void DiscoveryPass::refuse(const Arrival &arrival, const char *reason)
{
    if (m_refused++ == 0) {
        m_refusedExample = "a datagram of " + std::to_string(arrival.bytes.size) + " bytes from " +
                           dotted(arrival.sender) + " port " + std::to_string(arrival.senderPort) + " " +
                           reason;
    }
}

void DiscoveryPass::takeProbes()
{
    for (auto &[key, camera] : m_tools.table.cameras()) {
        const AccessProbe *probe = m_probes.find(key);
        camera.access = probe ? probe->value() : AccessValue{};
        if (probe && probe->capability())
            camera.capability = probe->capability();
    }
}

} // namespace kela::gige
