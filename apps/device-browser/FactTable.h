// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Explanation.h"

#include <QWidget>

class QGridLayout;
class QLabel;

namespace browser
{

/// A titled list of figures, labels and values in two aligned columns. Thread: GUI.
class FactTable : public QWidget
{
    Q_OBJECT

public:
    explicit FactTable(QWidget *parent = nullptr);

    void setGroup(const FactGroup &group);

protected:
    void changeEvent(QEvent *event) override;

private:
    QLabel *cell(int row, int column);
    void showStyle();

    QLabel *m_title;
    QWidget *m_line;
    QGridLayout *m_grid;
    int m_rows = 0;
};

} // namespace browser
