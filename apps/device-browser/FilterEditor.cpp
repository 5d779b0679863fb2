// SPDX-License-Identifier: Apache-2.0
#include "FilterEditor.h"

#include <CommonTools/KelInterface.h>

#include <QComboBox>
#include <QFormLayout>
#include <QPlainTextEdit>
#include <QTextDocument>

namespace browser
{

namespace
{

const QChar kSeparator = QLatin1Char('/');

/// Whole names are compared, so every blank is kept. A name that held the separator would come back as two.
QString joined(const QPlainTextEdit *edit)
{
    // Unlike the plain text, the raw text keeps blanks that do not break.
    QString text = edit->document()->toRawText();
    for (const QChar lineEnd : {QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)})
        text.replace(lineEnd, kSeparator);
    return text.split(kSeparator, Qt::SkipEmptyParts).join(kSeparator);
}

void fill(QPlainTextEdit *edit, const QString &names)
{
    edit->setPlainText(names.split(kSeparator, Qt::SkipEmptyParts).join(QLatin1Char('\n')));
}

} // namespace

FilterEditor::FilterEditor(const QString &title, QWidget *parent)
    : QGroupBox(title, parent)
    , m_state(new QComboBox)
    , m_include(new QPlainTextEdit)
    , m_exclude(new QPlainTextEdit)
{
    m_state->addItem(tr("Off: show all"), KelInterface::FilterOff);
    m_state->addItem(tr("Show only those listed"), KelInterface::FilterInclude);
    m_state->addItem(tr("Hide those listed"), KelInterface::FilterExclude);
    auto *form = new QFormLayout(this);
    form->addRow(tr("Filter:"), m_state);
    form->addRow(tr("Show, one name per line:"), m_include);
    form->addRow(tr("Hide, one name per line:"), m_exclude);
    for (QPlainTextEdit *edit : {m_include, m_exclude}) {
        edit->setTabChangesFocus(true);
        edit->setMaximumHeight(90);
    }
    connect(m_state, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &FilterEditor::enableListInUse);
    enableListInUse();
}

void FilterEditor::setFilter(int state, const QString &include, const QString &exclude)
{
    // Such a state hides every camera, which must not look like "off".
    if (m_state->findData(state) < 0)
        m_state->addItem(tr("Unknown (%1): hides all").arg(state), state);
    m_state->setCurrentIndex(m_state->findData(state));
    fill(m_include, include);
    fill(m_exclude, exclude);
}

int FilterEditor::state() const
{
    return m_state->currentData().toInt();
}

QString FilterEditor::include() const
{
    return joined(m_include);
}

QString FilterEditor::exclude() const
{
    return joined(m_exclude);
}

void FilterEditor::enableListInUse()
{
    m_include->setEnabled(state() == KelInterface::FilterInclude);
    m_exclude->setEnabled(state() == KelInterface::FilterExclude);
}

} // namespace browser
