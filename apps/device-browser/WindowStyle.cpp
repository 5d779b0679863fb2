// SPDX-License-Identifier: Apache-2.0
#include "WindowStyle.h"

#include <QString>

namespace browser
{

QString windowStyle()
{
    return QStringLiteral("QDockWidget::title { padding: 8px 12px; text-align: left; }"
                          "QStatusBar { padding: 3px 4px; }"
                          "QStatusBar::item { border: none; }"
                          "QStatusBar QLabel { padding: 2px 8px; }"
                          "QTableView::item { padding: 0px 8px; border: none; }"
                          "QTableView QHeaderView::section { padding: 4px 11px; }");
}

} // namespace browser
