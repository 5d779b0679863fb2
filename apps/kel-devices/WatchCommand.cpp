// SPDX-License-Identifier: Apache-2.0
#include "WatchCommand.h"

#include "Printing.h"

#include <QCoreApplication>

#include <cstdio>

#include <unistd.h>

namespace
{

constexpr std::chrono::milliseconds kPassInterval{1000};

} // namespace

WatchCommand::WatchCommand(const Options &options)
    : m_options(options)
    , m_enumerations(options)
    // Only a person reads the plain form; a program gets what it can read without asking for it.
    , m_isJson(options.isJson || isatty(STDOUT_FILENO) == 0)
{
    connect(&m_enumerations, &Enumerations::happened, this, &WatchCommand::onEvent);
    connect(&m_passes, &QTimer::timeout, &m_enumerations, &Enumerations::requestPasses);
}

void WatchCommand::start()
{
    m_passes.start(m_options.interval.value_or(kPassInterval));
    if (m_options.timeout) {
        QTimer::singleShot(*m_options.timeout, this, &WatchCommand::stop);
    }
    m_enumerations.start(false);
}

void WatchCommand::stop()
{
    QCoreApplication::exit(m_picture.hasFailure() ? 1 : 0);
}

void WatchCommand::onEvent(const EnumerationEvent &event)
{
    const bool isNews = m_picture.apply(event);
    if (!isNews && !m_options.isEveryEvent) {
        return;
    }
    const QByteArray line = m_isJson ? eventJson(event) : eventLine(event);
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}
