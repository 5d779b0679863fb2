// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "UsbScene.h"

#include <umockdev.h>

namespace kelsim
{

/// Answers what programs ask the node of a camera: its string descriptors, and whether its interface can be
/// claimed. Lives as long as the test bed.
class UsbAnswers
{
public:
    explicit UsbAnswers(const UsbDevice &device);
    ~UsbAnswers();
    UsbAnswers(const UsbAnswers &) = delete;
    UsbAnswers &operator=(const UsbAnswers &) = delete;

    /// To be called before the device is added to the test bed.
    bool attachTo(UMockdevTestbed *testbed);

private:
    struct State;
    State *m_state;
};

} // namespace kelsim
