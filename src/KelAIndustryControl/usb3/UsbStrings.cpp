// SPDX-License-Identifier: Apache-2.0
#include <KelAIndustryControl/usb3/UsbStrings.h>

#include <KelAIndustryControl/core/CancelSignal.h>
#include <KelAIndustryControl/usb3/LibUsb.h>
#include <KelAIndustryControl/usb3/UsbStringDescriptor.h>

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
constexpr int kMostTimeouts = 2; // in a pass
constexpr std::uint16_t kEnglish = 0x0409;
// A descriptor says its own length in one byte; two of them are its head.
constexpr std::size_t kLongestDescriptor = 255;

/// Asks one open device for its strings. One that does not come in time is not asked for again: the others are
/// worth more than the wait for it in every pass. A device that answers nothing, or holds up the pass too long,
/// is left for the next one.
class StringReader
{
public:
    StringReader(libusb_device_handle *handle, std::set<std::uint8_t> &stuck)
        : m_handle(handle)
        , m_stuck(stuck)
    {
    }

    /// Reads a text that was not read before.
    void read(std::uint8_t index, std::string &text)
    {
        if (index == 0 || !text.empty())
            return;
        const std::uint16_t language = languageOfTexts();
        if (const auto descriptor = fetch(index, language))
            text = parseStringDescriptor(*descriptor).value_or(std::string());
    }

    bool hasAnswered() const { return m_hasAnswered; }
    /// False when something is still to be asked for.
    bool isComplete() const { return !m_isStopped && (m_hasAnswered || !m_hasAsked); }

private:
    std::uint16_t languageOfTexts()
    {
        if (!m_language) {
            const auto list = fetch(0, 0);
            m_language = list ? parseLanguageList(*list).value_or(kEnglish) : kEnglish;
        }
        return *m_language;
    }

    std::optional<ByteView> fetch(std::uint8_t index, std::uint16_t language)
    {
        if (m_isStopped || m_stuck.count(index) != 0)
            return std::nullopt;
        const auto value = static_cast<std::uint16_t>(LIBUSB_DT_STRING << 8 | index);
        const int count = libusb_control_transfer(m_handle, LIBUSB_ENDPOINT_IN, LIBUSB_REQUEST_GET_DESCRIPTOR,
                                                  value, language, m_buffer.data(),
                                                  static_cast<std::uint16_t>(m_buffer.size()), kTimeLimitMs);
        // A device without such a string stalls, which is an answer too.
        m_hasAnswered = m_hasAnswered || count >= 0 || count == LIBUSB_ERROR_PIPE;
        m_isStopped = count == LIBUSB_ERROR_NO_DEVICE;
        m_hasAsked = true;
        if (count == LIBUSB_ERROR_TIMEOUT) {
            // Without the list of languages there is English; without any answer the camera may just be
            // booting.
            if (m_hasAnswered || index == 0)
                m_stuck.insert(index);
            m_isStopped = !m_hasAnswered || ++m_timeouts == kMostTimeouts;
        }
        if (count < 0)
            return std::nullopt;
        return ByteView{m_buffer.data(), static_cast<std::size_t>(count)};
    }

    libusb_device_handle *m_handle;
    std::set<std::uint8_t> &m_stuck;
    std::array<std::uint8_t, kLongestDescriptor> m_buffer = {};
    std::optional<std::uint16_t> m_language;
    int m_timeouts = 0;
    bool m_hasAsked = false;
    bool m_hasAnswered = false;
    bool m_isStopped = false;
};

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

void UsbStrings::read(libusb_device_handle *handle, const CameraDescriptors &descriptors, Known &known)
{
    StringReader reader(handle, known.stuck);
    UsbTexts &texts = known.texts;
    reader.read(descriptors.guidString, texts.guid);
    reader.read(descriptors.vendorString, texts.vendor);
    reader.read(descriptors.modelString, texts.model);
    reader.read(descriptors.familyString, texts.family);
    reader.read(descriptors.versionString, texts.version);
    reader.read(descriptors.infoString, texts.info);
    reader.read(descriptors.serialString, texts.serial);
    reader.read(descriptors.userNameString, texts.userName);
    known.isRead = known.isRead || reader.hasAnswered();
    known.isComplete = reader.isComplete();
}

void UsbStrings::update(const std::vector<SysfsCamera> &cameras)
{
    LibUsbContext context;
    std::map<Key, Known> present;
    for (const SysfsCamera &camera : cameras) {
        Known &known = present[keyOf(camera)];
        if (const auto before = m_known.find(keyOf(camera)); before != m_known.end())
            known = before->second;
        if (known.isComplete || m_cancel.isSet())
            continue;
        if (!context)
            context = openLibUsb();
        if (!context)
            continue;
        int result = LIBUSB_SUCCESS;
        if (const LibUsbHandle handle = openCamera(context.get(), camera, result))
            read(handle.get(), camera.descriptors, known);
    }
    m_known = std::move(present);
}

const UsbTexts *UsbStrings::texts(const SysfsCamera &camera) const
{
    const auto known = m_known.find(keyOf(camera));
    return known == m_known.end() || !known->second.isRead ? nullptr : &known->second.texts;
}

} // namespace kela::usb3
