// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

class QLabel;

namespace browser
{

class FilterEditor;

/// Edits the user's vendor and model filters. They take effect in a new tree, which the dialog offers.
/// Thread: GUI.
class FilterDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FilterDialog(QWidget *parent = nullptr);

Q_SIGNALS:
    /// The filters were stored and the user wants to see them at work.
    void rebuildWanted();

private:
    void store(bool isRebuildWanted);

    FilterEditor *m_vendor;
    FilterEditor *m_model;
    QLabel *m_message;
};

} // namespace browser
