// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPixmap>

/// Images that are kept in several resolutions.
namespace CustomImages
{

/// Loads "name.png", or "name@2x.png" or "name@3x.png" where the screen is that sharp and the file exists.
/// @return null when there is no such image
QPixmap pixmap(const QString &path, qreal devicePixelRatio);

} // namespace CustomImages
