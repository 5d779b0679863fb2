// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>
#include <DeviceEnumMng/KelGenTLMenu.h>

#include <ScriptedAccess.h>

#include <QPaintEvent>
#include <QRegion>
#include <QTest>
#include <QTreeWidgetItem>

namespace
{

/// Remembers what of a widget was painted.
class PaintedArea : public QObject
{
public:
    explicit PaintedArea(QWidget *widget) { widget->installEventFilter(this); }

    QRegion region;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            region += static_cast<QPaintEvent *>(event)->region();
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

class TestShownButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void onlyOneOfThousandIsShown();
    void buttonThatTheHostShowedIsHiddenToo();
    void nullHidesAll();
    void openProducerMenuKeepsEveryButtonAsItIs();
    void menuButtonStandsLeftOfTheButton();
    void menuButtonNeedsAButton();
    void nothingIsRepaintedWhenNothingChanges();
    void onlyTheRowsBelowChangedButtonsArePainted();
    void switchedOffButtonsAreHiddenAndLeftAlone();
    void switchingOffTwiceHidesOnce();
};

void TestShownButton::init()
{
    scriptedAccess().reset();
}

void TestShownButton::onlyOneOfThousandIsShown()
{
    KelDeviceTree tree;
    for (int id = 0; id < 1000; ++id) {
        privateOf(tree).getItemRightBtn(id, false);
    }
    for (const int shown : {3, 999, 500, 3}) {
        CustomPushButton *button = privateOf(tree).getItemRightBtn(shown, false);

        tree.setCurRightBtn(button, false);

        for (const CustomPushButton *other : qAsConst(privateOf(tree).m_rightBtns)) {
            QCOMPARE(!other->isHidden(), other == button);
        }
    }
}

void TestShownButton::buttonThatTheHostShowedIsHiddenToo()
{
    KelDeviceTree tree;
    CustomPushButton *first = privateOf(tree).getItemRightBtn(1, false);
    CustomPushButton *second = privateOf(tree).getItemRightBtn(2, false);
    second->show();

    tree.setCurRightBtn(first, false);

    QVERIFY(!first->isHidden());
    QVERIFY(second->isHidden());
}

void TestShownButton::nullHidesAll()
{
    KelDeviceTree tree;
    tree.setCurRightBtn(privateOf(tree).getItemRightBtn(-4, false), true);

    tree.setCurRightBtn(nullptr, true);

    for (const CustomPushButton *button : qAsConst(privateOf(tree).m_rightBtns)) {
        QVERIFY(button->isHidden());
    }
    QVERIFY(privateOf(tree).m_configBtn->isHidden());
}

void TestShownButton::openProducerMenuKeepsEveryButtonAsItIs()
{
    KelDeviceTree tree;
    showTree(tree);
    KelDeviceTreePrivate &d = privateOf(tree);
    CustomPushButton *camera = d.getItemRightBtn(7, false);
    CustomPushButton *group = d.getItemRightBtn(-4, false);
    tree.setCurRightBtn(group, true);
    d.m_genTLMenu->popup(tree.mapToGlobal(QPoint(10, 10)));
    QVERIFY(d.m_genTLMenu->isVisible());

    tree.setCurRightBtn(camera, false);
    QVERIFY(camera->isHidden());
    QVERIFY(!group->isHidden());
    QVERIFY(!d.m_configBtn->isHidden());
    tree.setCurRightBtn(nullptr, false);
    QVERIFY(!group->isHidden());
    QVERIFY(!d.m_configBtn->isHidden());

    d.m_genTLMenu->close();
}

void TestShownButton::menuButtonStandsLeftOfTheButton()
{
    KelDeviceTree tree;
    CustomPushButton *button = privateOf(tree).getItemRightBtn(-4, false);
    button->setGeometry(200, 50, 35, 24);

    tree.setCurRightBtn(button, true);

    QVERIFY(!privateOf(tree).m_configBtn->isHidden());
    QCOMPARE(privateOf(tree).m_configBtn->pos(), QPoint(165, 50));
}

void TestShownButton::menuButtonNeedsAButton()
{
    KelDeviceTree tree;

    tree.setCurRightBtn(nullptr, true);
    QVERIFY(privateOf(tree).m_configBtn->isHidden());
    tree.setCurRightBtn(privateOf(tree).getItemRightBtn(-4, false), false);
    QVERIFY(privateOf(tree).m_configBtn->isHidden());
}

void TestShownButton::nothingIsRepaintedWhenNothingChanges()
{
    KelDeviceTree tree;
    showTree(tree);
    // Painting hides the button of a row that nobody points to; this one has no row.
    CustomPushButton *shown = privateOf(tree).getItemRightBtn(7, false);
    for (CustomPushButton *button : {static_cast<CustomPushButton *>(nullptr), shown}) {
        tree.setCurRightBtn(button, false);
        settle();
        EventCounter paints(tree.viewport(), QEvent::Paint);

        tree.setCurRightBtn(button, false);
        settle();

        QCOMPARE(paints.count(), 0);
        QCOMPARE(shown->isVisible(), button == shown);
    }
}

void TestShownButton::onlyTheRowsBelowChangedButtonsArePainted()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});
    showTree(tree);
    hoverRow(tree, tree.findCameraItem(2));
    settle();
    PaintedArea painted(tree.viewport());

    tree.setCurRightBtn(nullptr, false);
    settle();

    QRect row = tree.visualItemRect(tree.findCameraItem(2));
    row.setLeft(0);
    QVERIFY(painted.region.contains(row.center()));
    QVERIFY(!painted.region.intersects(tree.visualItemRect(tree.findItem(KelDeviceTree::ItemAll, -1))));
    QVERIFY(!painted.region.intersects(tree.visualItemRect(tree.findItem(KelDeviceTree::ItemUSBRoot, -1))));
}

void TestShownButton::switchedOffButtonsAreHiddenAndLeftAlone()
{
    KelDeviceTree tree;
    CustomPushButton *button = privateOf(tree).getItemRightBtn(7, false);
    tree.setCurRightBtn(button, false);

    tree.setRightBtnVisible(false);
    QVERIFY(button->isHidden());
    tree.setCurRightBtn(button, false);
    QVERIFY(button->isHidden());

    tree.setRightBtnVisible(true);
    tree.setCurRightBtn(button, false);
    QVERIFY(!button->isHidden());
}

void TestShownButton::switchingOffTwiceHidesOnce()
{
    KelDeviceTree tree;
    CustomPushButton *button = privateOf(tree).getItemRightBtn(7, false);
    tree.setRightBtnVisible(false);
    button->show();

    tree.setRightBtnVisible(false);

    QVERIFY(!button->isHidden());
}

QTEST_MAIN(TestShownButton)
#include "tst_keldevicetree_shownbutton.moc"
