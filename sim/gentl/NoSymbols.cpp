// SPDX-License-Identifier: Apache-2.0
// A library that is no producer.
extern "C" __attribute__((visibility("default"))) int nothingOfInterest()
{
    return 0;
}
