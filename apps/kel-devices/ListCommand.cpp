// SPDX-License-Identifier: Apache-2.0
#include "ListCommand.h"

#include "Printing.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{

// Often enough that a late answer is in the list soon after it came.
constexpr std::chrono::milliseconds kPassInterval{200};

void write(const QByteArray &text, FILE *stream)
{
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stream);
    std::fflush(stream);
}

} // namespace

ListCommand::ListCommand(const Options &options)
    : m_options(options)
    , m_enumerations(options)
{
    connect(&m_enumerations, &Enumerations::happened, this, &ListCommand::onEvent);
    connect(&m_passes, &QTimer::timeout, &m_enumerations, &Enumerations::requestPasses);
    connect(&m_end, &QTimer::timeout, this, [this] {
        m_isTimeOver = true;
        m_passes.stop();
        finishIfComplete();
    });
    m_end.setSingleShot(true);
    m_end.setTimerType(Qt::PreciseTimer);
}

void ListCommand::start()
{
    if (m_options.timeout) {
        m_end.start(*m_options.timeout);
        m_passes.start(m_options.interval.value_or(kPassInterval));
    } else {
        m_isTimeOver = true;
    }
    m_enumerations.start(!m_options.timeout);
}

void ListCommand::onEvent(const EnumerationEvent &event)
{
    m_picture.apply(event);
    if (event.kind == KELA_INTERFACE_STATE_PASS_END) {
        finishIfComplete();
    }
}

// The first pass of every transport is waited for, however short the time to listen is.
bool ListCommand::isComplete() const
{
    return m_isTimeOver && m_picture.results().size() == m_options.transports.size();
}

void ListCommand::finishIfComplete()
{
    if (m_isFinished || !isComplete()) {
        return;
    }
    m_isFinished = true;
    write(m_options.isJson ? listJson(m_picture) : listTable(m_picture), stdout);
    if (!m_options.isJson) {
        write(failureLines(m_picture), stderr);
    }
    QCoreApplication::exit(m_picture.hasFailure() ? 1 : 0);
}
