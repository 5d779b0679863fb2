// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Marks what libKelAIndustryControl shows to its users; everything else stays hidden.
#define KELA_EXPORT __attribute__((visibility("default")))
