// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// Identifier of a GenTL interface by its identifier text and number, the same for the life of the
/// process and made on first sight. Two producers that give the same text and number share one.
/// @param strInterfaceID  ends with a NUL
/// Thread: any.
unsigned int GetGenTLInterfaceID(unsigned char *strInterfaceID, unsigned int nNumber);

/// @overload For a field that may hold no NUL.
unsigned int genTLInterfaceId(std::string_view text, unsigned int number);
