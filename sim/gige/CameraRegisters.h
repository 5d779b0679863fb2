// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CameraSettings.h"
#include "GvcpFormat.h"

#include <string>
#include <vector>

namespace kelsim
{

/// The registers of one camera: the bootstrap block, and behind it a small description file that tells a
/// GenICam client the features which lie on these registers.
class CameraRegisters
{
public:
    /// As the camera has them when it is switched on.
    explicit CameraRegisters(const CameraSettings &settings);

    bool isReadable(uint32_t address, std::size_t size) const;
    static bool isWritable(uint32_t address);
    static bool isTextWritable(uint32_t address, std::size_t size);

    uint32_t value(uint32_t address) const;
    void setValue(uint32_t address, uint32_t value);
    void setText(uint32_t address, std::size_t size, const std::string &text);
    void setPlace(const CameraPlace &place);

    /// Appends @p size bytes from a readable address.
    void read(uint32_t address, std::size_t size, std::vector<uint8_t> &bytes) const;
    void write(uint32_t address, const uint8_t *bytes, std::size_t size);

private:
    void setIdentity(const CameraSettings &settings);
    void setControls(const CameraSettings &settings);

    std::vector<uint8_t> m_bytes;
};

} // namespace kelsim
