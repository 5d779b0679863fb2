// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Explanation.h"

#include <KelAIndustryControl/KelAIndustryControl.h>

namespace browser
{

/// A GenTL producer as the menu lists it and as the device access knows it.
struct Producer {
    /// What the user chose, by the numbers of KelGenTLMenu::GetCtiStates.
    enum class Choice { Off = 0, On = 1, VirtualPort = 2, Imported = 3 };

    QString path;
    Choice choice = Choice::On;
    uint infoCode = KELA_OK; ///< of asking for info
    KELA_GENTL_PRODUCER_INFO info = {};
};

/// Tells what a producer is, how it stands and why it is not used.
FactGroup explainProducer(const Producer &producer);

/// One sentence on the producers that give no cameras although they are switched on; empty when all do.
QString producersInTrouble(const QVector<Producer> &producers);

} // namespace browser
