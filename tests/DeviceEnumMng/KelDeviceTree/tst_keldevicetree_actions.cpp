// SPDX-License-Identifier: Apache-2.0
#include "TreeTestKit.h"

#include <CustomCtr/CustomLoadingDialog.h>
#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>

#include <ScriptedAccess.h>

#include <QPixmap>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidgetItem>

namespace
{

constexpr int kLoadingId = 4097;
const auto kUnknownState = static_cast<KelDeviceTree::BtnState>(3);

QStringList imagesOf(const CustomPushButton &button)
{
    QStringList images;
    for (const auto status :
         {Custom::StatusNormal, Custom::StatusHover, Custom::StatusPressed, Custom::StatusDisabled}) {
        images.append(button.cBackgroundImage(status));
    }
    return images;
}

const QStringList kGroupImages = {QStringLiteral(":/CustomCtr/tree/Gray_refresh.png"),
                                  QStringLiteral(":/CustomCtr/tree/Gray_refresh_sel.png"),
                                  QStringLiteral(":/CustomCtr/tree/Gray_refresh_sel.png"),
                                  QStringLiteral(":/CustomCtr/tree/Gray_refresh_dis.png")};
const QStringList kConnectImages = {QStringLiteral(":/KelToolBarBtn/item_connect.png"),
                                    QStringLiteral(":/KelToolBarBtn/item_connect_sel.png"),
                                    QStringLiteral(":/KelToolBarBtn/item_connect_sel.png"),
                                    QStringLiteral(":/KelToolBarBtn/item_connect_dis.png")};
const QStringList kDisconnectImages = {QStringLiteral(":/KelToolBarBtn/item_disconnet.png"),
                                       QStringLiteral(":/KelToolBarBtn/item_disconnet_sel.png"),
                                       QStringLiteral(":/KelToolBarBtn/item_disconnet_sel.png"),
                                       QStringLiteral(":/KelToolBarBtn/item_disconnet_dis.png")};

} // namespace

class TestActions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void buttonIsMadeOnceAndHidden();
    void menuThatIsGoneIsNotUsed();
    void buttonNeverTakesTheFocus();
    void interfaceWithACamerasIdentifierGetsTheCamerasButton();
    void everyImageIsThere_data();
    void everyImageIsThere();
    void eachStateHasItsImages_data();
    void eachStateHasItsImages();
    void disabledCameraBecomesUsableAgain();
    void unknownStateKeepsTheEnabledStateAndShowsConnect();
    void groupShowsRefreshWhateverTheState_data();
    void groupShowsRefreshWhateverTheState();
    void groupKeepsItsEnabledState();
    void updateOfAnUnknownIdentifierMakesItsButton();
    void buttonsHaveNamesForScreenReaders();

    void removedButtonIsHiddenAtOnceAndDeletedLater();
    void removedRowTakesTheButtonOfItsLastIdentifier();
    void removingAnUnknownIdentifierDoesNothing();
    void buttonThatTheHostDeletesIsForgotten();
    void connectedStatesAreTheTenOfThem();
    void connectedFlagOfAnyRowBelowCounts();

    void refreshOfGigeTellsOneAndStartsAPass();
    void refreshOfUsbTellsFourAndStartsAPass();
    void refreshOfGenTLTellsTheNumberOfUsb();
    void refreshOfCameraLinkShowsThatItSearches();
    void clickOfACameraTellsItsIdentifier();
    void clickOfAnInterfaceTellsThatItIsOne();
    void clickFromNobodyRefreshesGige();
    void clickOfAForeignButtonRefreshesGige();
    void clickNeverChangesTheButton();
    void treeMayBeDestroyedByTheClick();
    void treeMayBeDestroyedBeforeTheRefresh();

private:
    void clickButton(KelDeviceTree &tree, long id);
};

void TestActions::init()
{
    scriptedAccess().reset();
}

void TestActions::clickButton(KelDeviceTree &tree, long id)
{
    privateOf(tree).getItemRightBtn(id, false)->click();
}

void TestActions::buttonIsMadeOnceAndHidden()
{
    KelDeviceTree tree;
    CustomPushButton *button = privateOf(tree).getItemRightBtn(7, false);

    QCOMPARE(button->parentWidget(), static_cast<QWidget *>(&tree));
    QVERIFY(button->isHidden());
    QVERIFY(button->isEnabled());
    QCOMPARE(privateOf(tree).getItemRightBtn(7, true), button);
}

void TestActions::menuThatIsGoneIsNotUsed()
{
    KelDeviceTree tree;
    delete tree.findChild<KelGenTLMenu *>();

    tree.SetEnableVirtualPort(true);
    tree.setCurRightBtn(nullptr, false);
    tree.OnCtiFileChanged();

    QTRY_VERIFY(tree.hasEnumOnce(KELA_INTERFACE_TYPE_GENTL));
}

void TestActions::buttonNeverTakesTheFocus()
{
    KelDeviceTree tree;

    QCOMPARE(privateOf(tree).getItemRightBtn(7, false)->focusPolicy(), Qt::NoFocus);
}

void TestActions::interfaceWithACamerasIdentifierGetsTheCamerasButton()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    QTreeWidgetItem *interfaceItem = addGenTLInterface(tree, 1, "if-1");

    QCOMPARE(buttonOf(interfaceItem), buttonOf(tree.findCameraItem(1)));
    QCOMPARE(buttonOf(interfaceItem)->cUserData(), QVariant(false));
}

void TestActions::everyImageIsThere_data()
{
    QTest::addColumn<QString>("path");
    const QStringList all = kGroupImages + kConnectImages + kDisconnectImages +
                            QStringList{QStringLiteral(":/CustomCtr/tree/conf.png"),
                                        QStringLiteral(":/CustomCtr/tree/conf_sel.png")};
    for (const QString &path : QSet<QString>(all.cbegin(), all.cend())) {
        QTest::newRow(qUtf8Printable(path)) << path;
    }
}

void TestActions::everyImageIsThere()
{
    QFETCH(QString, path);

    QVERIFY(!QPixmap(path).isNull());
}

void TestActions::eachStateHasItsImages_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QStringList>("images");
    QTest::addColumn<bool>("isEnabled");
    QTest::newRow("connect") << 0 << kConnectImages << true;
    QTest::newRow("disconnect") << 1 << kDisconnectImages << true;
    QTest::newRow("disabled") << 2 << kConnectImages << false;
}

void TestActions::eachStateHasItsImages()
{
    QFETCH(int, state);
    QFETCH(QStringList, images);
    QFETCH(bool, isEnabled);
    KelDeviceTree tree;

    privateOf(tree).updateItemRightBtn(7, static_cast<KelDeviceTree::BtnState>(state));

    CustomPushButton *button = privateOf(tree).getItemRightBtn(7, false);
    QCOMPARE(imagesOf(*button), images);
    QCOMPARE(button->isEnabled(), isEnabled);
}

void TestActions::disabledCameraBecomesUsableAgain()
{
    KelDeviceTree tree;
    CustomPushButton *button = privateOf(tree).getItemRightBtn(7, false);

    privateOf(tree).updateItemRightBtn(7, KelDeviceTree::BtnDisable);
    QVERIFY(!button->isEnabled());
    privateOf(tree).updateItemRightBtn(7, KelDeviceTree::BtnConnect);
    QVERIFY(button->isEnabled());
}

void TestActions::unknownStateKeepsTheEnabledStateAndShowsConnect()
{
    KelDeviceTree tree;
    CustomPushButton *button = privateOf(tree).getItemRightBtn(7, false);

    privateOf(tree).updateItemRightBtn(7, KelDeviceTree::BtnDisconnect);
    privateOf(tree).updateItemRightBtn(7, kUnknownState);
    QCOMPARE(imagesOf(*button), kConnectImages);
    QVERIFY(button->isEnabled());

    privateOf(tree).updateItemRightBtn(7, KelDeviceTree::BtnDisable);
    privateOf(tree).updateItemRightBtn(7, kUnknownState);
    QVERIFY(!button->isEnabled());
}

void TestActions::groupShowsRefreshWhateverTheState_data()
{
    QTest::addColumn<int>("id");
    for (int id = -4; id <= -1; ++id) {
        QTest::newRow(QByteArray::number(id).constData()) << id;
    }
}

void TestActions::groupShowsRefreshWhateverTheState()
{
    QFETCH(int, id);
    KelDeviceTree tree;

    privateOf(tree).updateItemRightBtn(id, KelDeviceTree::BtnDisconnect);

    QCOMPARE(imagesOf(*privateOf(tree).getItemRightBtn(id, false)), kGroupImages);
}

void TestActions::groupKeepsItsEnabledState()
{
    KelDeviceTree tree;

    privateOf(tree).updateItemRightBtn(-1, KelDeviceTree::BtnDisable);

    QVERIFY(privateOf(tree).getItemRightBtn(-1, false)->isEnabled());
}

void TestActions::updateOfAnUnknownIdentifierMakesItsButton()
{
    KelDeviceTree tree;
    QVERIFY(!privateOf(tree).m_rightBtns.contains(7));

    privateOf(tree).updateItemRightBtn(7, KelDeviceTree::BtnConnect);

    QVERIFY(privateOf(tree).m_rightBtns.contains(7));
}

void TestActions::buttonsHaveNamesForScreenReaders()
{
    KelDeviceTree tree;
    KelDeviceTreePrivate &d = privateOf(tree);

    QCOMPARE(d.getItemRightBtn(-1, false)->accessibleName(), QStringLiteral("Refresh"));
    QCOMPARE(d.getItemRightBtn(7, false)->accessibleName(), QStringLiteral("Connect"));
    d.updateItemRightBtn(7, KelDeviceTree::BtnDisconnect);
    QCOMPARE(d.getItemRightBtn(7, false)->accessibleName(), QStringLiteral("Disconnect"));
}

void TestActions::removedButtonIsHiddenAtOnceAndDeletedLater()
{
    KelDeviceTree tree;
    QPointer<CustomPushButton> button = privateOf(tree).getItemRightBtn(7, false);
    tree.setCurRightBtn(button, false);
    QVERIFY(!button->isHidden());

    privateOf(tree).removeItemRightBtn(7);

    QVERIFY(button);
    QVERIFY(button->isHidden());
    QVERIFY(!privateOf(tree).m_rightBtns.contains(7));
    QCoreApplication::sendPostedEvents(button, QEvent::DeferredDelete);
    QVERIFY(!button);
}

void TestActions::removedRowTakesTheButtonOfItsLastIdentifier()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    privateOf(tree).getItemRightBtn(77, false);
    QObject::connect(&tree, &KelDeviceTree::sigDeleteDeviceItem,
                     [](QTreeWidgetItem *item) { item->setData(0, KelDeviceTree::ItemIdRole, 77); });

    tree.deleteCameraItem(tree.findCameraItem(1));

    QVERIFY(!privateOf(tree).m_rightBtns.contains(77));
    QVERIFY(privateOf(tree).m_rightBtns.contains(1));
}

void TestActions::removingAnUnknownIdentifierDoesNothing()
{
    KelDeviceTree tree;
    const auto before = privateOf(tree).m_rightBtns;

    privateOf(tree).removeItemRightBtn(12345);

    QCOMPARE(privateOf(tree).m_rightBtns, before);
}

void TestActions::buttonThatTheHostDeletesIsForgotten()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    QTreeWidgetItem *item = tree.findCameraItem(1);
    tree.setCurRightBtn(buttonOf(item), false);

    delete buttonOf(item);

    QVERIFY(!privateOf(tree).m_rightBtns.contains(1));
    QVERIFY(!privateOf(tree).livingButton(item->data(0, KelDeviceTree::ItemRightBtnRole)));
    tree.setCurRightBtn(nullptr, false);
    tree.deleteCameraItem(item);
}

void TestActions::connectedStatesAreTheTenOfThem()
{
    KelDeviceTree tree;
    QList<int> connected;
    for (int state = -1; state <= 40; ++state) {
        if (privateOf(tree).isCameraConnet(state)) {
            connected.append(state);
        }
    }
    QCOMPARE(connected, QList<int>({4, 5, 7, 10, 11, 15, 16, 19, 22, 23}));
}

void TestActions::connectedFlagOfAnyRowBelowCounts()
{
    KelDeviceTree tree;
    QTreeWidgetItem *card = addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});

    QVERIFY(!tree.isNetWorkCameraConnected(nullptr));
    QVERIFY(!tree.isNetWorkCameraConnected(card));
    tree.findCameraItem(1)->setData(0, KelDeviceTree::ItemConnectedRole, true);
    QVERIFY(tree.isNetWorkCameraConnected(card));
}

void TestActions::refreshOfGigeTellsOneAndStartsAPass()
{
    KelDeviceTree tree;
    QSignalSpy before(&tree, &KelDeviceTree::sigBeforeRefreshBtnClicked);
    QSignalSpy clicked(&tree, &KelDeviceTree::sigRightBtnClicked);
    QSignalSpy finished(&tree, &KelDeviceTree::sigFinishEnumOnce);

    clickButton(tree, -1);

    QCOMPARE(before.size(), 1);
    QCOMPARE(before.first(), QVariantList{1});
    QVERIFY(finished.wait());
    QCOMPARE(finished.first(), QVariantList{1});
    QVERIFY(clicked.isEmpty());
}

void TestActions::refreshOfUsbTellsFourAndStartsAPass()
{
    KelDeviceTree tree;
    QSignalSpy before(&tree, &KelDeviceTree::sigBeforeRefreshBtnClicked);
    QSignalSpy finished(&tree, &KelDeviceTree::sigFinishEnumOnce);

    clickButton(tree, -2);

    QCOMPARE(before.size(), 1);
    QCOMPARE(before.first(), QVariantList{4});
    QVERIFY(finished.wait());
    QCOMPARE(finished.first(), QVariantList{4});
}

void TestActions::refreshOfGenTLTellsTheNumberOfUsb()
{
    KelDeviceTree tree;
    QSignalSpy before(&tree, &KelDeviceTree::sigBeforeRefreshBtnClicked);
    QSignalSpy finished(&tree, &KelDeviceTree::sigFinishEnumOnce);

    clickButton(tree, -4);

    QCOMPARE(before.size(), 1);
    QCOMPARE(before.first(), QVariantList{4});
    QVERIFY(CustomLoadingDialog::isLoading(kLoadingId));
    QVERIFY(finished.wait());
    QCOMPARE(finished.first(), QVariantList{16});
    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
}

void TestActions::refreshOfCameraLinkShowsThatItSearches()
{
    KelDeviceTree tree;
    QSignalSpy before(&tree, &KelDeviceTree::sigBeforeRefreshBtnClicked);
    QSignalSpy finished(&tree, &KelDeviceTree::sigFinishEnumOnce);

    clickButton(tree, -3);

    QCOMPARE(before.size(), 1);
    QCOMPARE(before.first(), QVariantList{8});
    QVERIFY(CustomLoadingDialog::isLoading(kLoadingId));
    QVERIFY(finished.wait());
    QCOMPARE(finished.first(), QVariantList{8});
    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
}

void TestActions::clickOfACameraTellsItsIdentifier()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A"), QStringLiteral("B")});
    QSignalSpy clicked(&tree, &KelDeviceTree::sigRightBtnClicked);

    buttonOf(tree.findCameraItem(2))->click();

    QCOMPARE(clicked.size(), 1);
    QCOMPARE(clicked.first(), (QVariantList{QVariant::fromValue(2L), false}));
}

void TestActions::clickOfAnInterfaceTellsThatItIsOne()
{
    KelDeviceTree tree;
    QTreeWidgetItem *item = addGenTLInterface(tree, 7000, "if-1");
    QSignalSpy clicked(&tree, &KelDeviceTree::sigRightBtnClicked);

    buttonOf(item)->click();

    QCOMPARE(clicked.size(), 1);
    QCOMPARE(clicked.first(), (QVariantList{QVariant::fromValue(7000L), true}));
}

void TestActions::clickFromNobodyRefreshesGige()
{
    KelDeviceTree tree;
    QSignalSpy before(&tree, &KelDeviceTree::sigBeforeRefreshBtnClicked);

    tree.onRightBtnClicked();

    QCOMPARE(before.size(), 1);
    QCOMPARE(before.first(), QVariantList{1});
}

void TestActions::clickOfAForeignButtonRefreshesGige()
{
    KelDeviceTree tree;
    CustomPushButton foreign;
    foreign.cSetUserData(true);
    connect(&foreign, &QPushButton::clicked, &tree, &KelDeviceTree::onRightBtnClicked);
    QSignalSpy before(&tree, &KelDeviceTree::sigBeforeRefreshBtnClicked);

    foreign.click();

    QCOMPARE(before.size(), 1);
    QCOMPARE(before.first(), QVariantList{1});
}

void TestActions::clickNeverChangesTheButton()
{
    KelDeviceTree tree;
    addCameras(tree, {QStringLiteral("A")});
    CustomPushButton *button = buttonOf(tree.findCameraItem(1));

    button->click();

    QCOMPARE(imagesOf(*button), kConnectImages);
    QVERIFY(button->isEnabled());
}

void TestActions::treeMayBeDestroyedByTheClick()
{
    QPointer<KelDeviceTree> tree = new KelDeviceTree;
    addCameras(*tree, {QStringLiteral("A")});
    connect(tree, &KelDeviceTree::sigRightBtnClicked, tree, [tree] { delete tree; });

    buttonOf(tree->findCameraItem(1))->click();

    QVERIFY(!tree);
}

void TestActions::treeMayBeDestroyedBeforeTheRefresh()
{
    for (const long id : {-1L, -2L, -3L, -4L}) {
        QPointer<KelDeviceTree> tree = new KelDeviceTree;
        connect(tree, &KelDeviceTree::sigBeforeRefreshBtnClicked, tree, [tree] { delete tree; });

        clickButton(*tree, id);

        QVERIFY(!tree);
    }
    QVERIFY(!CustomLoadingDialog::isLoading(kLoadingId));
}

QTEST_MAIN(TestActions)
#include "tst_keldevicetree_actions.moc"
