// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/TransportBackend.h>

#include <memory>

namespace kela::cameralink
{

/// Camera Link cameras behind the ports of vendor-neutral serial libraries: the files that the environment
/// variable KELS_CLSERIAL lists, separated by ":", else libclallserial.so on the loader's path. Asking for
/// the transport is the user's wish to probe the ports.
std::unique_ptr<TransportBackend> makeBackend(const BackendContext &context);

} // namespace kela::cameralink
