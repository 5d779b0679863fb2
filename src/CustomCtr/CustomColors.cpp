// SPDX-License-Identifier: Apache-2.0
#include "CustomColors.h"

#include <QHash>

namespace
{

struct ThemedColor {
    QRgb dark;
    QRgb light;
};

using ColorTable = QHash<QString, ThemedColor>;

const ColorTable &table()
{
    static const ColorTable kTable = {
        {QStringLiteral("Window"), {0xff24272c, 0xfff4f5f7}},
        {QStringLiteral("Base"), {0xff1c1f23, 0xffffffff}},
        {QStringLiteral("AlternateBase"), {0xff212429, 0xfff8f9fa}},
        {QStringLiteral("Raised"), {0xff30343b, 0xffffffff}},
        {QStringLiteral("RaisedHover"), {0xff3a3f48, 0xffeceff3}},
        {QStringLiteral("RaisedPressed"), {0xff2a2e34, 0xffdfe3e9}},
        {QStringLiteral("Border"), {0xff444a54, 0xffc9ced6}},
        {QStringLiteral("Divider"), {0xff333840, 0xffe1e4e9}},
        {QStringLiteral("Text"), {0xffe3e6ea, 0xff20242a}},
        {QStringLiteral("TextMuted"), {0xff9aa2ad, 0xff5f6875}},
        {QStringLiteral("TextDisabled"), {0xff6b727d, 0xff9aa1ac}},
        {QStringLiteral("TextOnDark"), {0xffe3e6ea, 0xffe3e6ea}},
        {QStringLiteral("TextOnLight"), {0xff20242a, 0xff20242a}},
        {QStringLiteral("Accent"), {0xff4c9bff, 0xff1a6fd6}},
        {QStringLiteral("AccentText"), {0xff0d1117, 0xffffffff}},
        {QStringLiteral("RowHover"), {0xff2a2f36, 0xffeef2f7}},
        {QStringLiteral("RowSelected"), {0xff2b4263, 0xffd3e4fa}},
        {QStringLiteral("ScrollHandle"), {0xff4a505a, 0xffc2c8d0}},
        {QStringLiteral("ScrollHandleHover"), {0xff626a76, 0xff9ea6b1}},
        // A ground that callers give as a number.
        {QStringLiteral("#303030"), {0xff303030, 0xffffffff}},
        // Lies over what a row shows, so it lets that through.
        {QStringLiteral("DeviceEnumMngColor_KelDeviceTreeDelegate_StayTopItemRole"), {0x30f0b429, 0x38f0b429}},
    };
    return kTable;
}

} // namespace

namespace CustomColors
{

QColor color(const QString &name, Custom::Theme theme)
{
    const auto entry = table().constFind(name);
    if (entry == table().constEnd()) {
        return QColor();
    }
    return QColor::fromRgba(theme == Custom::ThemeLight ? entry->light : entry->dark);
}

QStringList names()
{
    return table().keys();
}

} // namespace CustomColors

QBrush Custom::getDataBaseColor(const QString &strKey, const QRect & /*rect*/)
{
    const QColor color = CustomColors::color(strKey, theme());
    return color.isValid() ? QBrush(color) : QBrush();
}
