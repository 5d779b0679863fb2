// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

/// Marks what libCommonTools shows to its users; everything else stays hidden.
#if defined(COMMONTOOLS_LIBRARY)
#define COMMONTOOLS_EXPORT Q_DECL_EXPORT
#else
#define COMMONTOOLS_EXPORT Q_DECL_IMPORT
#endif
