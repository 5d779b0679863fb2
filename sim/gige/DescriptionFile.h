// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace kelsim
{

/// The GenICam description of a simulated camera: the features that lie on its bootstrap registers. Padded
/// with blanks to whole registers.
const std::string &descriptionFile();

} // namespace kelsim
