// SPDX-License-Identifier: Apache-2.0
#include "Script.h"

ScriptedAccess &scriptedAccess()
{
    return Script::instance();
}

/// What the client of a scripted libKelAIndustryControl.so.1 looks for.
extern "C" __attribute__((visibility("default"))) ScriptedAccess *kelScriptedAccess();

extern "C" ScriptedAccess *kelScriptedAccess()
{
    return &Script::instance();
}
