// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

/// Marks what libDeviceEnumMng shows to its users; everything else stays hidden.
#if defined(DEVICEENUMMNG_LIBRARY)
#define DEVICEENUMMNG_EXPORT Q_DECL_EXPORT
#else
#define DEVICEENUMMNG_EXPORT Q_DECL_IMPORT
#endif
