// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

/// The world of cameras that the contract tests steer: a script, or simulated cameras on a network. Cameras
/// stand at 192.168.10.x/24, those with a number above 255 behind it; the host's card has 192.168.10.1.
class ContractWorld
{
public:
    /// No cameras.
    virtual void reset() = 0;

    /// A camera of the vendor "Contract Vision", model "CV-1", version "2.1".
    virtual void plug(const std::string &serial, uint32_t number) = 0;
    virtual void unplug(const std::string &serial) = 0;

    /// Another program takes control, and lets go.
    virtual void hold(const std::string &serial) = 0;
    virtual void letGo(const std::string &serial) = 0;
    virtual void holdAndStream(const std::string &serial, uint32_t destination, uint16_t port) = 0;

protected:
    ~ContractWorld() = default;
};

/// The world that this program is linked with.
ContractWorld &contractWorld();
