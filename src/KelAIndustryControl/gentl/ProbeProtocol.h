// SPDX-License-Identifier: Apache-2.0
#pragma once

/// @file
/// What kel-cti-probe tells the process that started it: lines of a letter and a text, through a pipe.

namespace kela::gentl
{

constexpr int kProbePipe = 3; ///< the probe's descriptor for its lines

constexpr char kProbeStep = 'S';  ///< the text names the call that comes next
constexpr char kProbeFault = 'F'; ///< the file is no producer, for the reason given
constexpr char kProbeLied = 'L';  ///< the producer told of more bytes than it had room for
constexpr char kProbeDone = 'D';  ///< everything was called and came back; the process ends now

} // namespace kela::gentl
