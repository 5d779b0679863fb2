// SPDX-License-Identifier: Apache-2.0
#include "TreeTest.h"

#include <ScriptedAccess.h>

void TreeTest::init()
{
    scriptedAccess().reset();
    m_tree = std::make_unique<KelDeviceTree>();
}

void TreeTest::cleanup()
{
    m_tree.reset();
}
