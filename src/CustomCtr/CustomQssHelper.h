// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomDefine.h>

#include <QString>
#include <QVariant>

class QWidget;

/// Adds a style selector, user data and a language hook to a widget.
///
/// The selector is the widget's dynamic property "cStyleSelector", which style sheets match on.
///
/// Thread: GUI.
class CUSTOMCTR_EXPORT CustomQssHelper
{
public:
    /// @param widget  the widget that this is a part of; not owned
    explicit CustomQssHelper(QWidget *widget);
    virtual ~CustomQssHelper();

    CustomQssHelper(const CustomQssHelper &) = delete;
    CustomQssHelper &operator=(const CustomQssHelper &) = delete;

    /// Chooses the widget's rules in the style sheet and applies them.
    virtual void cSetStyleSelector(const QString &strName);
    /// The selector in use.
    QString cStyleSelector() const;

    /// Keeps a value with the widget.
    void cSetUserData(const QVariant &data);
    /// The value kept with the widget, invalid when none was set.
    QVariant cUserData() const;

    /// Called on a change of the language, before the widget sets its texts again.
    virtual void cLanguageChange();

protected:
    /// The widget that this is a part of.
    QWidget *cWidget() const;

private:
    QWidget *m_widget;
    QVariant m_userData;
};
