// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/TransportBackend.h>

#include <memory>

namespace kela::usb3
{

/// USB3 Vision cameras. They are found and judged by what the system shows of them; only texts that it does
/// not keep are read from the camera, once.
std::unique_ptr<TransportBackend> makeBackend(const BackendContext &context);

} // namespace kela::usb3
