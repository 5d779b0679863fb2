// SPDX-License-Identifier: Apache-2.0
// What makes a sample producer crash as it is loaded or let go.
#include <csignal>

#if defined(SAMPLE_CRASH_ON_LOAD)
__attribute__((constructor)) static void crashOnLoad()
{
    std::raise(SIGSEGV);
}
#endif

#if defined(SAMPLE_CRASH_ON_UNLOAD)
__attribute__((destructor)) static void crashOnUnload()
{
    std::raise(SIGSEGV);
}
#endif
