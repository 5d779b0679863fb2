// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/core/TransportBackend.h>

#include <memory>

namespace kela::gige
{

/// The GigE Vision cameras of one object.
std::unique_ptr<TransportBackend> makeBackend(const BackendContext &context);

/// How cameras answer the discovery, for the whole process: by broadcast too, or to the asking address only.
void setBroadcastAnswers(bool areAllowed);

} // namespace kela::gige
