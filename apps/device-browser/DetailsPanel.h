// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Explanation.h"

#include <QScrollArea>

class QAction;
class QHBoxLayout;
class QLabel;
class QVBoxLayout;

namespace browser
{

class FactColumns;

/// Shows an explanation: a heading with a badge, what it means in words, what can be done, and the
/// figures. Every text is plain text and can be copied. Thread: GUI.
class DetailsPanel : public QScrollArea
{
    Q_OBJECT

public:
    explicit DetailsPanel(QWidget *parent = nullptr);

    /// Adds buttons for actions; a button shows while its action is enabled.
    void addButtons(const QList<QAction *> &actions);
    /// Shows an explanation. Nothing moves or flickers where texts stay the same.
    void explain(const Explanation &explanation);
    /// The whole explanation as text, for the clipboard.
    QString asText() const;

protected:
    void changeEvent(QEvent *event) override;

private:
    void showBadge();
    void showParagraphs();

    Explanation m_explanation;
    QLabel *m_title;
    QLabel *m_kind;
    QLabel *m_badge;
    QVBoxLayout *m_paragraphs;
    QHBoxLayout *m_buttons;
    FactColumns *m_facts;
};

} // namespace browser
