// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KelAIndustryControl/gige/NetworkCards.h>

#include <string>

namespace kela::gige
{

/// The cards whose reverse-path filtering drops what cameras of a foreign subnet answer, as a text for
/// people, for example "eth0 (strict), eth1 (loose, and no default route)". Empty when there is none.
std::string filteringCards(const Cards &cards);

/// Whether a routing table, as /proc/net/route shows it, has a default route.
bool hasDefaultRoute(const std::string &table);

} // namespace kela::gige
