// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

namespace kela::gige
{

/// Who holds a camera, as its registers told a stranger.
struct AccessValue {
    enum class Kind {
        NotRead,  ///< its subnet does not fit the card: nobody asked
        Read,     ///< privilege was read
        Denied,   ///< even reading is refused: somebody holds it exclusively
        NoAnswer, ///< it was asked and stayed silent
    };

    Kind kind = Kind::NotRead;
    std::uint32_t privilege = 0; ///< control channel privilege
    std::uint32_t holder = 0;    ///< address of the program that holds it, 0 = not told
    bool isStreamPortRead = false;
    std::uint32_t streamHostPort = 0; ///< 0 = stream channel 0 is closed

    bool isHeld() const;

    /// What a client may do that asks for an access mode.
    /// @return 0 or the KELA_ERROR that stands for not knowing
    unsigned int allows(unsigned int accessMode, bool &isAllowed) const;
};

/// The registers to read, one after the other, to know who holds a camera. Nothing is ever written and
/// control is never tried: that would take the camera from its user for a moment.
class AccessProbe
{
public:
    /// @param capability  of the control protocol, if it was read before
    explicit AccessProbe(std::optional<std::uint32_t> capability = std::nullopt)
        : m_capability(capability)
    {
    }

    /// Nothing when all is known.
    std::optional<std::uint32_t> nextRegister() const;

    void onValue(std::uint32_t value);
    void onRefused(std::uint16_t status);
    void onSilence();

    const AccessValue &value() const { return m_value; }
    std::optional<std::uint32_t> capability() const { return m_capability; }

    /// The camera answered at least once.
    bool hasAnswered() const { return m_hasAnswered; }

private:
    enum class Step { Privilege, Capability, Holder, StreamPort, Done };

    void advance();

    Step m_step = Step::Privilege;
    std::optional<std::uint32_t> m_capability;
    bool m_hasAnswered = false;
    AccessValue m_value;
};

} // namespace kela::gige
