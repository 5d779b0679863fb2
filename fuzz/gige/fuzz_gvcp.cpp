// SPDX-License-Identifier: Apache-2.0
// Any bytes as an acknowledge: the parsers of the control protocol, and commands that wait for an answer.
#include <KelAIndustryControl/gige/AccessProbe.h>
#include <KelAIndustryControl/gige/GvcpTransaction.h>

#include <cstdlib>

using namespace kela;
using namespace kela::gige;

namespace
{

void offerTo(Datagram command, const Acknowledge &acknowledge)
{
    RequestIds ids;
    const TimePoint now = Clock::now();
    GvcpTransaction transaction(std::move(command), ids, {}, now);
    transaction.takeDue(now);
    transaction.offer(acknowledge, now);
    if (transaction.nextEvent() > now + Milliseconds{10000})
        std::abort(); // nobody may hold a client longer
    if (transaction.state() == GvcpTransaction::State::Answered)
        parseReadRegister(transaction.payload());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto acknowledge = parseAcknowledge({data, size});
    if (!acknowledge)
        return 0;
    if (acknowledge->payload.size + sizeof(AckHeader) > size)
        std::abort();
    parseReadRegister(acknowledge->payload);
    parsePending(acknowledge->payload);
    parseReadMemory(acknowledge->payload, 0xD8, 16);
    offerTo(readRegisterCommand(0, 0x0A00), *acknowledge);
    offerTo(writeRegisterCommand(0, 0x0A00, 2), *acknowledge);
    offerTo(readMemoryCommand(0, 0xD8, 16), *acknowledge);
    offerTo(discoveryCommand(0, true), *acknowledge);
    AccessProbe probe;
    while (probe.nextRegister()) {
        if (acknowledge->isError())
            probe.onRefused(acknowledge->status);
        else
            probe.onValue(parseReadRegister(acknowledge->payload).value_or(acknowledge->requestId));
    }
    return 0;
}
