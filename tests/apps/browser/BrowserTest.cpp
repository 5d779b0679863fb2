// SPDX-License-Identifier: Apache-2.0
#include "BrowserTest.h"

#include "MainWindow.h"
#include "SteeredCameras.h"
#include "TreeHost.h"

#include <CommonTools/KelInterface.h>

#include <QAction>
#include <QDir>
#include <QTest>

using namespace browser;

const QString BrowserTest::kEntrance = QStringLiteral("HO-20117");
const QString BrowserTest::kConveyor = QStringLiteral("HO-20118");
const QString BrowserTest::kInlet = QStringLiteral("HO-31001");
const QString BrowserTest::kLabels = QStringLiteral("7714-0031");
const QString BrowserTest::kStranger = QStringLiteral("7714-0107");

BrowserTest::BrowserTest() = default;

BrowserTest::~BrowserTest() = default;

void BrowserTest::initTestCase()
{
    if (!steeredcameras::areThere())
        QSKIP("no private network here");
}

void BrowserTest::init()
{
    QDir(KelInterface::programDataPath()).removeRecursively();
    openWindow();
    QTRY_VERIFY_WITH_TIMEOUT(row(kEntrance) && row(kConveyor) && row(kLabels) && row(kStranger), 5000);
}

void BrowserTest::cleanup()
{
    closeWindow();
    steeredcameras::tell({"plug", "all"});
}

void BrowserTest::openWindow()
{
    CommandLine line;
    line.language = QStringLiteral("en");
    m_window = std::make_unique<MainWindow>(line);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void BrowserTest::closeWindow()
{
    m_window.reset();
}

KelDeviceTree *BrowserTest::tree() const
{
    return m_window->treeHost()->tree();
}

int BrowserTest::stateOf(const QString &serial) const
{
    const auto device = rows::deviceOf(row(serial));
    return device ? device->deviceState : -1;
}

void BrowserTest::connectCamera(const QString &serial)
{
    tree()->setCurrentItem(row(serial));
    Q_EMIT tree()->sigRightBtnClicked(idOf(serial), false);
    QTRY_COMPARE_WITH_TIMEOUT(m_window->connections()->session(idOf(serial)).state, SessionState::Open, 3000);
}

void BrowserTest::putConveyorBehindARouter()
{
    steeredcameras::tell({"unplug", "conveyor"});
    QTRY_VERIFY_WITH_TIMEOUT(!row(kConveyor), kLeavesWithinMs);
    steeredcameras::tell({"lose", "conveyor", "all", "broadcast"});
    steeredcameras::tell({"plug", "conveyor"});
    QTest::qWait(1500);
    QVERIFY(!row(kConveyor));
}

QAction *BrowserTest::action(const QString &text) const
{
    const QList<QAction *> actions = m_window->findChildren<QAction *>();
    for (QAction *candidate : actions) {
        if (candidate->text().remove(QLatin1Char('&')) == text)
            return candidate;
    }
    return nullptr;
}

void BrowserTest::trigger(const QString &text)
{
    QTRY_VERIFY2(action(text) && action(text)->isEnabled(), qPrintable(text));
    action(text)->trigger();
}

void BrowserTest::keepPicture(QWidget *widget, const QString &name)
{
    const QString folder = qEnvironmentVariable("KEL_PICTURES");
    if (folder.isEmpty())
        return;
    QDir().mkpath(folder);
    QVERIFY(widget->grab().save(folder + QLatin1Char('/') + name + QStringLiteral(".png")));
}
