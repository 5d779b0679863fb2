// SPDX-License-Identifier: Apache-2.0
#pragma once

class QString;

namespace browser
{

/// Distances of the window's own parts; colours come from the theme.
QString windowStyle();

} // namespace browser
