// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

namespace browser
{

/// A label for texts that may come from a device: shown as they are, never interpreted, and copyable.
class PlainLabel : public QLabel
{
public:
    explicit PlainLabel(const QString &text = QString(), QWidget *parent = nullptr)
        : QLabel(parent)
    {
        setTextFormat(Qt::PlainText);
        setTextInteractionFlags(Qt::TextSelectableByMouse);
        setText(text);
    }
};

} // namespace browser
