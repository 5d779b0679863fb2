// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Picture.h"

/// @file
/// What goes to stdout. Every function gives whole lines, each with its end.

/// One JSON object on one line.
QByteArray listJson(const Picture &picture);

/// A table for people.
QByteArray listTable(const Picture &picture);

/// One line per failed transport, for stderr.
QByteArray failureLines(const Picture &picture);

/// An event as a JSON object on one line.
QByteArray eventJson(const EnumerationEvent &event);

/// An event as a line for people.
QByteArray eventLine(const EnumerationEvent &event);
