// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Explanation.h"

#include <QList>
#include <QWidget>

class QGridLayout;

namespace browser
{

class FactTable;

/// Tables of figures, two beside each other where there is room. Thread: GUI.
class FactColumns : public QWidget
{
    Q_OBJECT

public:
    explicit FactColumns(QWidget *parent = nullptr);

    void setGroups(const QVector<FactGroup> &groups);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void place();

    QGridLayout *m_grid;
    QList<FactTable *> m_tables;
    int m_columns = 1;
};

} // namespace browser
