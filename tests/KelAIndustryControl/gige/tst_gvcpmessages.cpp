// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/gige/GvcpMessages.h>

#include <gtest/gtest.h>

#include <random>

using namespace kela;
using namespace kela::gige;

namespace
{

ByteView viewOf(const Datagram &bytes)
{
    return {bytes.data(), bytes.size()};
}

// A whole discovery acknowledge for request 1: header, then the image.
Datagram discoveryAcknowledge()
{
    Datagram bytes = {0x00, 0x00, 0x00, 0x03, 0x00, 0xF8, 0x00, 0x01};
    bytes.resize(8 + 248);
    const auto put = [&bytes](std::size_t offset, std::initializer_list<std::uint8_t> values) {
        std::copy(values.begin(), values.end(), bytes.begin() + 8 + static_cast<std::ptrdiff_t>(offset));
    };
    put(0x00, {0x00, 0x02, 0x00, 0x01, 0x80, 0x00, 0x00, 0x01});
    put(0x08, {0xEE, 0xEE, 0x00, 0x0C, 0xDF, 0x01, 0x02, 0x03}); // the upper half is reserved
    put(0x10, {0x80, 0x00, 0x00, 0x07, 0x00, 0x00, 0x00, 0x05});
    put(0x24, {192, 168, 50, 2});
    put(0x34, {255, 255, 255, 0});
    put(0x44, {192, 168, 50, 254});
    put(0x48, {'M', 'a', 'k', 'e', 'r', 0, 'x'});
    put(0x68, {'M', 'o', 'd', 'e', 'l'});
    put(0x88, {'1', '.', '2'});
    put(0xD8, {'S', '1'});
    put(0xE8, {'N', 'a', 'm', 'e'});
    return bytes;
}

} // namespace

TEST(GvcpMessages, commandsAreTheGoldenDatagrams)
{
    EXPECT_EQ(discoveryCommand(1, true), (Datagram{0x42, 0x11, 0, 2, 0, 0, 0, 1}));
    EXPECT_EQ(discoveryCommand(1, false), (Datagram{0x42, 0x01, 0, 2, 0, 0, 0, 1}));
    EXPECT_EQ(readRegisterCommand(2, 0x0A00), (Datagram{0x42, 1, 0, 0x80, 0, 4, 0, 2, 0, 0, 0x0A, 0}));
    EXPECT_EQ(writeRegisterCommand(4, 0x0A00, 2),
              (Datagram{0x42, 1, 0, 0x82, 0, 8, 0, 4, 0, 0, 0x0A, 0, 0, 0, 0, 2}));
    EXPECT_EQ(readMemoryCommand(3, 0xD8, 16),
              (Datagram{0x42, 1, 0, 0x84, 0, 8, 0, 3, 0, 0, 0, 0xD8, 0, 0, 0, 0x10}));
}

TEST(GvcpMessages, forceIpNamesTheDeviceAndItsNewAddress)
{
    const Datagram command = forceIpCommand(5, {0x000CDF010203, 0xC0A83209, 0xFFFFFF00, 0xC0A832FE}, true);

    Datagram expected = {0x42, 0x11, 0, 4, 0, 0x38, 0, 5};
    expected.resize(8 + 56);
    const std::uint8_t mac[] = {0x00, 0x0C, 0xDF, 1, 2, 3};
    const std::uint8_t address[] = {192, 168, 50, 9};
    const std::uint8_t mask[] = {255, 255, 255, 0};
    const std::uint8_t gateway[] = {192, 168, 50, 254};
    std::copy(std::begin(mac), std::end(mac), expected.begin() + 8 + 2);
    std::copy(std::begin(address), std::end(address), expected.begin() + 8 + 20);
    std::copy(std::begin(mask), std::end(mask), expected.begin() + 8 + 36);
    std::copy(std::begin(gateway), std::end(gateway), expected.begin() + 8 + 52);
    EXPECT_EQ(command, expected);
}

TEST(GvcpMessages, goldenAcknowledgesAreRead)
{
    const Datagram taken = {0, 0, 0, 0x81, 0, 4, 0, 2, 0, 0, 0, 2};
    const auto read = parseAcknowledge(viewOf(taken));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->code, 0x0081);
    EXPECT_EQ(read->requestId, 2);
    EXPECT_FALSE(read->isError());
    EXPECT_EQ(parseReadRegister(read->payload), 2U);

    const Datagram refused = {0x80, 0x06, 0, 0x83, 0, 0, 0, 4};
    const auto denial = parseAcknowledge(viewOf(refused));
    ASSERT_TRUE(denial);
    EXPECT_TRUE(denial->isError());
    EXPECT_EQ(denial->status, kStatusAccessDenied);
    EXPECT_EQ(denial->payload.size, 0U);

    const Datagram pending = {0, 0, 0, 0x89, 0, 4, 0, 4, 0, 0, 3, 0xE8};
    EXPECT_EQ(parsePending(parseAcknowledge(viewOf(pending))->payload), 1000);
}

TEST(GvcpMessages, discoveryAnswerIsReadByItsNamedFields)
{
    const Datagram bytes = discoveryAcknowledge();

    const auto answer = parseDiscovery(parseAcknowledge(viewOf(bytes))->payload);

    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->version, 0x00020001U);
    EXPECT_EQ(answer->hardwareAddress, 0x000CDF010203U);
    EXPECT_EQ(answer->ipConfigOptions, 0x80000007U);
    EXPECT_EQ(answer->ipConfigCurrent, 5U);
    EXPECT_EQ(answer->currentIp, 0xC0A83202U);
    EXPECT_EQ(answer->subnetMask, 0xFFFFFF00U);
    EXPECT_EQ(answer->gateway, 0xC0A832FEU);
    EXPECT_TRUE(answer->isPlainTransmitter());
    EXPECT_EQ(std::string(answer->texts.manufacturerName), "Maker");
}

TEST(GvcpMessages, discoveryAnswerCutAnywhereIsRefused)
{
    const Datagram whole = discoveryAcknowledge();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        // A block of its own size, so that a read behind the end is seen by the sanitizer.
        const Datagram cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_FALSE(parseAcknowledge(viewOf(cut))) << length;

        Datagram honest = cut; // a header that tells the shorter length
        if (length >= 8) {
            honest[4] = static_cast<std::uint8_t>((length - 8) >> 8);
            honest[5] = static_cast<std::uint8_t>(length - 8);
            const auto acknowledge = parseAcknowledge(viewOf(honest));
            ASSERT_TRUE(acknowledge) << length;
            EXPECT_FALSE(parseDiscovery(acknowledge->payload)) << length;
        }
    }
}

TEST(GvcpMessages, discoveryAnswerLongerThanTheImageIsAccepted)
{
    Datagram bytes = discoveryAcknowledge();
    bytes.resize(bytes.size() + 24, 0xAA);
    bytes[5] = static_cast<std::uint8_t>(bytes.size() - 8 - 256);
    bytes[4] = 1;

    const auto acknowledge = parseAcknowledge(viewOf(bytes));

    ASSERT_TRUE(acknowledge);
    EXPECT_TRUE(parseDiscovery(acknowledge->payload));
}

TEST(GvcpMessages, bytesBehindTheAnnouncedLengthAreNotPartOfThePayload)
{
    const Datagram bytes = {0, 0, 0, 0x81, 0, 2, 0, 2, 0, 0, 0, 2};

    const auto acknowledge = parseAcknowledge(viewOf(bytes));

    ASSERT_TRUE(acknowledge);
    EXPECT_EQ(acknowledge->payload.size, 2U);
    EXPECT_FALSE(parseReadRegister(acknowledge->payload));
}

TEST(GvcpMessages, memoryAnswerOfAnotherAddressIsRefused)
{
    const Datagram bytes = {0, 0, 0, 0x85, 0, 8, 0, 3, 0, 0, 0, 0xD8, 1, 2, 3, 4};
    const ByteView payload = parseAcknowledge(viewOf(bytes))->payload;

    EXPECT_TRUE(parseReadMemory(payload, 0xD8, 4));
    EXPECT_FALSE(parseReadMemory(payload, 0xDC, 4));
    EXPECT_FALSE(parseReadMemory(payload, 0xD8, 8));
}

TEST(GvcpMessages, receiverClassIsNoPlainTransmitter)
{
    DiscoveryAnswer answer;
    answer.deviceMode = 0x90000001;
    EXPECT_FALSE(answer.isPlainTransmitter());
    answer.deviceMode = 0x80000001;
    EXPECT_TRUE(answer.isPlainTransmitter());
}

TEST(GvcpMessages, randomBytesAreSurvived)
{
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        Datagram bytes(random() % 300);
        for (std::uint8_t &byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        if (const auto acknowledge = parseAcknowledge(viewOf(bytes))) {
            EXPECT_LE(acknowledge->payload.size + 8, bytes.size());
            parseDiscovery(acknowledge->payload);
            parseReadRegister(acknowledge->payload);
            parseReadMemory(acknowledge->payload, 0, 4);
            parsePending(acknowledge->payload);
        }
    }
}
