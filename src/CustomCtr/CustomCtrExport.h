// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

/// Marks what libCustomCtr shows to its users; everything else stays hidden.
#if defined(CUSTOMCTR_LIBRARY)
#define CUSTOMCTR_EXPORT Q_DECL_EXPORT
#else
#define CUSTOMCTR_EXPORT Q_DECL_IMPORT
#endif
