// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QGroupBox>

class QComboBox;
class QPlainTextEdit;

namespace browser
{

/// Edits one filter: its state and its two lists, a name per line. Thread: GUI.
class FilterEditor : public QGroupBox
{
    Q_OBJECT

public:
    explicit FilterEditor(const QString &title, QWidget *parent = nullptr);

    /// @param include, exclude  names separated by "/"
    void setFilter(int state, const QString &include, const QString &exclude);
    int state() const;
    QString include() const;
    QString exclude() const;

private:
    void enableListInUse();

    QComboBox *m_state;
    QPlainTextEdit *m_include;
    QPlainTextEdit *m_exclude;
};

} // namespace browser
