// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomQssHelper.h>

#include <QColor>
#include <QMap>
#include <QPixmap>
#include <QStringList>

/// Adds images and colours per state to a styled widget.
///
/// Thread: GUI.
class CUSTOMCTR_EXPORT CustomObject : public CustomQssHelper
{
public:
    explicit CustomObject(QWidget *widget);
    ~CustomObject() override;

    /// Shows an image as the widget's background in a state.
    /// @param strPath   resource or file; "@2x" and "@3x" variants are found by themselves
    /// @param status    the state
    /// @param lstClass  not used; reserved for classes of widgets
    void cSetBackgroundImage(const QString &strPath, Custom::ItemStatus status, const QStringList &lstClass);

    /// The image of a state, empty when none was set.
    QString cBackgroundImage(Custom::ItemStatus status) const;

    /// Fills the widget's background in a state. Texts on it take a colour that can be read there.
    /// @param strColor  a colour name or "#rrggbb" of the dark theme; the colour table may have another
    ///                  one for the light theme
    void cSetBackgroundColor(const QString &strColor, Custom::ItemStatus status, const QStringList &lstClass);

    /// The colour of a state as it was set, invalid when none was.
    QColor cBackgroundColor(Custom::ItemStatus status) const;

    /// Takes over the colours of a new theme; called by Custom::setTheme.
    void cThemeChange();

protected:
    /// The image of a state, else the normal one, in the resolution that fits the widget's screen.
    QPixmap cBackgroundPixmap(Custom::ItemStatus status) const;

    /// The colour that fills a state in this theme, else the normal one, invalid when there is none.
    QColor cBackgroundFill(Custom::ItemStatus status) const;

private:
    QMap<int, QString> m_images;
    QMap<int, QColor> m_colors;
};
