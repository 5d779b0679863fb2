// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/usb3/UsbStrings.h>

#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/usb3/LibUsb.h>

#include <array>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

namespace kela::usb3
{
namespace
{

constexpr unsigned int kTimeLimitMs = 250;
constexpr std::uint16_t kEnglish = 0x0409;
// A descriptor says its own length in one byte; two of them are its head.
constexpr std::size_t kLongestDescriptor = 255;

void appendUtf8(std::string &text, std::uint32_t point)
{
    const auto tail = [&text](std::uint32_t bits) { text += static_cast<char>(0x80U | (bits & 0x3FU)); };
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0U | point >> 6);
        tail(point);
    } else if (point < 0x10000) {
        text += static_cast<char>(0xE0U | point >> 12);
        tail(point >> 6);
        tail(point);
    } else {
        text += static_cast<char>(0xF0U | point >> 18);
        tail(point >> 12);
        tail(point >> 6);
        tail(point);
    }
}

bool isHighSurrogate(std::uint32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowSurrogate(std::uint32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

/// UTF-16 with the low byte first, up to a NUL; lone surrogates become the replacement character.
std::string decodeUtf16(ByteView bytes)
{
    constexpr std::uint32_t kReplacement = 0xFFFD;
    const auto unitAt = [&bytes](std::size_t at) -> std::uint32_t {
        return at + 1 < bytes.size ? static_cast<std::uint32_t>(bytes.data[at] | bytes.data[at + 1] << 8) : 0U;
    };
    std::string text;
    for (std::size_t at = 0; unitAt(at) != 0; at += 2) {
        const std::uint32_t unit = unitAt(at);
        const std::uint32_t next = unitAt(at + 2);
        if (isHighSurrogate(unit) && isLowSurrogate(next)) {
            appendUtf8(text, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            at += 2;
        } else {
            appendUtf8(text, isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit);
        }
    }
    return text;
}

/// Asks one open device for its strings.
class StringReader
{
public:
    explicit StringReader(libusb_device_handle *handle)
        : m_handle(handle)
    {
    }

    std::string read(std::uint8_t index)
    {
        if (index == 0)
            return {};
        const auto descriptor = fetch(index, language());
        return descriptor ? decodeUtf16(descriptor->from(kHead)) : std::string();
    }

    /// False once the device did not answer at all: then nothing that was read is worth keeping.
    bool isAnswering() const { return m_isAnswering; }

private:
    static constexpr std::size_t kHead = 2;

    std::uint16_t language()
    {
        if (!m_language) {
            const auto list = fetch(0, 0);
            const bool isTold = list && list->size >= kHead + 2;
            m_language =
                isTold ? static_cast<std::uint16_t>(list->data[kHead] | list->data[kHead + 1] << 8) : kEnglish;
        }
        return *m_language;
    }

    std::optional<ByteView> fetch(std::uint8_t index, std::uint16_t language)
    {
        if (!m_isAnswering)
            return std::nullopt;
        const auto value = static_cast<std::uint16_t>(LIBUSB_DT_STRING << 8 | index);
        const int count = libusb_control_transfer(m_handle, LIBUSB_ENDPOINT_IN, LIBUSB_REQUEST_GET_DESCRIPTOR,
                                                  value, language, m_buffer.data(),
                                                  static_cast<std::uint16_t>(m_buffer.size()), kTimeLimitMs);
        m_isAnswering = count >= 0 || count == LIBUSB_ERROR_PIPE;
        if (count < static_cast<int>(kHead) || m_buffer[1] != LIBUSB_DT_STRING)
            return std::nullopt;
        return ByteView{m_buffer.data(), static_cast<std::size_t>(count)}.first(m_buffer[0]);
    }

    libusb_device_handle *m_handle;
    std::array<std::uint8_t, kLongestDescriptor> m_buffer = {};
    std::optional<std::uint16_t> m_language;
    bool m_isAnswering = true;
};

std::optional<UsbTexts> readTexts(libusb_device_handle *handle, const CameraDescriptors &descriptors)
{
    StringReader reader(handle);
    UsbTexts texts;
    texts.guid = reader.read(descriptors.guidString);
    texts.vendor = reader.read(descriptors.vendorString);
    texts.model = reader.read(descriptors.modelString);
    texts.family = reader.read(descriptors.familyString);
    texts.version = reader.read(descriptors.versionString);
    texts.info = reader.read(descriptors.infoString);
    texts.serial = reader.read(descriptors.serialString);
    texts.userName = reader.read(descriptors.userNameString);
    return reader.isAnswering() ? std::optional(std::move(texts)) : std::nullopt;
}

} // namespace

bool UsbStrings::Key::operator<(const Key &other) const
{
    return std::tie(busNumber, deviceNumber, serial) <
           std::tie(other.busNumber, other.deviceNumber, other.serial);
}

UsbStrings::Key UsbStrings::keyOf(const SysfsCamera &camera)
{
    return {camera.busNumber, camera.deviceNumber, camera.serial};
}

void UsbStrings::update(const std::vector<SysfsCamera> &cameras)
{
    LibUsbContext context;
    std::map<Key, UsbTexts> present;
    for (const SysfsCamera &camera : cameras) {
        const auto known = m_texts.find(keyOf(camera));
        if (known != m_texts.end()) {
            present.insert(*known);
            continue;
        }
        if (m_cancel.isSet())
            break;
        if (!context)
            context = openLibUsb();
        if (!context)
            break;
        int result = LIBUSB_SUCCESS;
        const LibUsbHandle handle = openCamera(context.get(), camera, result);
        auto texts = handle ? readTexts(handle.get(), camera.descriptors) : std::nullopt;
        if (texts)
            present.emplace(keyOf(camera), std::move(*texts));
    }
    m_texts = std::move(present);
}

const UsbTexts *UsbStrings::texts(const SysfsCamera &camera) const
{
    const auto known = m_texts.find(keyOf(camera));
    return known == m_texts.end() ? nullptr : &known->second;
}

} // namespace kela::usb3
