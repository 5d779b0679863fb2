// SPDX-License-Identifier: Apache-2.0
// Lists and watches devices on the command line, with the engine itself.
#include "Interruption.h"
#include "ListCommand.h"
#include "Options.h"
#include "WatchCommand.h"

#include <KelAIndustryControl/KelAIndustryControl.h>

#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>

namespace
{

constexpr int kWrongArguments = 2;

void writeLogLine(KELA_LOG_LEVEL, const char *text, void *)
{
    std::fprintf(stderr, "%s\n", text);
}

void chooseLogging(bool isVerbose)
{
    if (isVerbose) {
        KelAIndustryControl::SetLogSink(&writeLogLine, nullptr);
    } else {
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false\ndefault.info=false"));
    }
}

int printAndEnd(const QString &text)
{
    std::fputs(text.toUtf8().constData(), stdout);
    return 0;
}

int list(const Options &options)
{
    ListCommand command(options);
    command.start();
    return QCoreApplication::exec();
}

int watch(const Options &options)
{
    Interruption interruption;
    WatchCommand command(options);
    QObject::connect(&interruption, &Interruption::requested, &command, &WatchCommand::stop);
    command.start();
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QString error;
    const auto options = readOptions(QCoreApplication::arguments(), error);
    if (!options) {
        std::fprintf(stderr, "kel-devices: %s; --help shows how\n", error.toLocal8Bit().constData());
        return kWrongArguments;
    }
    switch (options->command) {
    case Options::Command::Help:
        return printAndEnd(helpText());
    case Options::Command::Version:
        return printAndEnd(QStringLiteral("kel-devices " KEL_VERSION "\n"));
    case Options::Command::List:
        chooseLogging(options->isVerbose);
        return list(*options);
    case Options::Command::Watch:
        chooseLogging(options->isVerbose);
        return watch(*options);
    }
    return kWrongArguments;
}
