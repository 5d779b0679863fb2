// SPDX-License-Identifier: Apache-2.0
// Finds the script in the libKelAIndustryControl.so.1 that this process loaded. Looked up by name at run time,
// so that a test links the shipped libraries as a host does, and the loader's path decides which device
// access they meet.

#include "ScriptedAccess.h"

#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>

namespace
{

ScriptedAccess *findScript()
{
    using Finder = ScriptedAccess *(*)();
    void *symbol = dlsym(RTLD_DEFAULT, "kelScriptedAccess");
    if (symbol == nullptr) {
        std::fputs("this test needs the scripted libKelAIndustryControl.so.1 first on LD_LIBRARY_PATH\n",
                   stderr);
        std::abort();
    }
    return reinterpret_cast<Finder>(symbol)();
}

} // namespace

ScriptedAccess &scriptedAccess()
{
    static ScriptedAccess *const s_script = findScript();
    return *s_script;
}
