// SPDX-License-Identifier: Apache-2.0
#include "StandingColors.h"

#include <CustomCtr/CustomDefine.h>

#include <QString>

namespace browser
{

BadgeColors badgeColors(Standing standing)
{
    const bool isDark = Custom::theme() == Custom::ThemeDark;
    switch (standing) {
    case Standing::Ready:
        return isDark ? BadgeColors{0x1f4d36, 0xa9edc7} : BadgeColors{0xd5f2e1, 0x0b5a32};
    case Standing::Ours:
        return isDark ? BadgeColors{0x1c4670, 0xb5dcff} : BadgeColors{0xd6e9fb, 0x0b4a82};
    case Standing::Busy:
        return isDark ? BadgeColors{0x5a4516, 0xffe0a0} : BadgeColors{0xfdeecb, 0x6b4a00};
    case Standing::Blocked:
        return isDark ? BadgeColors{0x632a2a, 0xffc9c4} : BadgeColors{0xfbdcd9, 0x8a1c14};
    case Standing::Neutral:
        break;
    }
    return isDark ? BadgeColors{0x3a404a, 0xd5dbe5} : BadgeColors{0xe6e9ee, 0x39414d};
}

QString badgeMark(Standing standing)
{
    switch (standing) {
    case Standing::Ready:
        return QStringLiteral("○");
    case Standing::Ours:
        return QStringLiteral("●");
    case Standing::Busy:
        return QStringLiteral("◐");
    case Standing::Blocked:
        return QStringLiteral("✕");
    case Standing::Neutral:
        break;
    }
    return {};
}

QColor mutedTextColor()
{
    return Custom::theme() == Custom::ThemeDark ? QColor(0x9aa4b2) : QColor(0x5b6675);
}

QColor lineColor()
{
    return Custom::theme() == Custom::ThemeDark ? QColor(0x3a404a) : QColor(0xd5dae1);
}

} // namespace browser
