// SPDX-License-Identifier: Apache-2.0
#include <CustomCtr/CustomObject.h>

#include "CustomColors.h"
#include "CustomThemeStyle.h"

#include <QApplication>
#include <QFile>
#include <QPalette>
#include <QWidget>

namespace
{

Custom::Theme &currentTheme()
{
    static Custom::Theme theme = Custom::ThemeDark;
    return theme;
}

QPalette paletteOf(Custom::Theme theme)
{
    const auto color = [theme](const char *name) { return CustomColors::color(QLatin1String(name), theme); };
    QPalette palette;
    palette.setColor(QPalette::Window, color("Window"));
    palette.setColor(QPalette::Base, color("Base"));
    palette.setColor(QPalette::AlternateBase, color("AlternateBase"));
    palette.setColor(QPalette::Button, color("Raised"));
    palette.setColor(QPalette::ToolTipBase, color("Raised"));
    palette.setColor(QPalette::Mid, color("Border"));
    palette.setColor(QPalette::Highlight, color("Accent"));
    palette.setColor(QPalette::HighlightedText, color("AccentText"));
    palette.setColor(QPalette::Link, color("Accent"));
    palette.setColor(QPalette::LinkVisited, color("Accent"));
    palette.setColor(QPalette::PlaceholderText, color("TextMuted"));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                            QPalette::BrightText}) {
        palette.setColor(role, color("Text"));
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, color("TextDisabled"));
    }
    return palette;
}

// The sheet names its colours as "@Name@".
QString styleSheetOf(Custom::Theme theme)
{
    QFile file(QStringLiteral(":/CustomCtr/styles/theme.qss"));
    if (!file.open(QIODevice::ReadOnly)) {
        return QString();
    }
    QString sheet = QString::fromUtf8(file.readAll());
    for (const QString &name : CustomColors::names()) {
        const QString value = CustomColors::color(name, theme).name(QColor::HexArgb);
        sheet.replace(QLatin1Char('@') + name + QLatin1Char('@'), value);
    }
    return sheet;
}

} // namespace

void Custom::setTheme(Theme theme)
{
    static bool isStyled = false;
    currentTheme() = theme;
    if (!isStyled) {
        isStyled = true;
        // Other styles take colours from their own theme and would mix them with ours.
        QApplication::setStyle(new CustomThemeStyle);
    }
    QApplication::setPalette(paletteOf(theme));
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (auto *object = dynamic_cast<CustomObject *>(widget)) {
            object->cThemeChange();
        }
    }
    qApp->setStyleSheet(styleSheetOf(theme));
}

Custom::Theme Custom::theme()
{
    return currentTheme();
}
