// SPDX-License-Identifier: Apache-2.0
#include "CommandLine.h"
#include "DisplayCheck.h"
#include "MainWindow.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>

namespace
{

constexpr int kWrongArguments = 2;

QStringList argumentsOf(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

void print(std::FILE *stream, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
}

void writeScreenshot(browser::MainWindow &window, const QString &file)
{
    const bool isWritten = window.grab().save(file, "PNG");
    if (!isWritten)
        print(stderr, QStringLiteral("device-browser: cannot write \"%1\"\n").arg(file));
    QCoreApplication::exit(isWritten ? 0 : 1);
}

} // namespace

int main(int argc, char **argv)
{
    const browser::CommandLine line = browser::parseCommandLine(argumentsOf(argc, argv));
    if (!line.error.isEmpty()) {
        print(stderr, QStringLiteral("device-browser: %1 (--help tells more)\n").arg(line.error));
        return kWrongArguments;
    }
    if (line.isHelpWanted) {
        print(stdout, browser::usage());
        return 0;
    }
    const QString complaint = browser::missingDisplay();
    if (!complaint.isEmpty()) {
        print(stderr, complaint + QLatin1Char('\n'));
        return 1;
    }
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("device-browser"));
    QApplication::setQuitOnLastWindowClosed(false);
    browser::MainWindow window(line);
    window.show();
    if (!line.screenshot.isEmpty()) {
        QTimer::singleShot(line.screenshotAfter, &window,
                           [&window, &line] { writeScreenshot(window, line.screenshot); });
    }
    return QApplication::exec();
}
