// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CustomCtr/CustomObject.h>

#include <QMenu>

/// A styled menu. Thread: GUI.
class CUSTOMCTR_EXPORT CustomMenu : public QMenu, public CustomObject
{
    Q_OBJECT

public:
    explicit CustomMenu(QWidget *parent = nullptr);
    ~CustomMenu() override;

    /// Adds a sub-menu whose whole content is a widget.
    /// @param widget  becomes a part of the sub-menu
    /// @return the sub-menu, owned by this menu
    QMenu *cAddCustomWidgetMenu(QWidget *widget);

protected:
    void changeEvent(QEvent *event) override;
};
