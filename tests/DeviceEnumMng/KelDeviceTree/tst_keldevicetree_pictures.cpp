// SPDX-License-Identifier: Apache-2.0
// Draws the tree with a row in every device state and keeps the picture where KEL_PICTURES says, for people
// to look at. QT_SCALE_FACTOR is the scale of the screen.
#include "TreeTestKit.h"

#include <CustomCtr/CustomDefine.h>
#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>

#include <QApplication>
#include <QDir>
#include <QMap>
#include <QPainter>
#include <QPixmap>
#include <QSet>
#include <QTest>
#include <QTreeWidgetItem>

#include <memory>
#include <vector>

Q_DECLARE_METATYPE(Custom::Theme)

namespace
{

struct StateRow {
    KELA_DEV_STATE state;
    const char *name;
};

constexpr StateRow kGigE[] = {
    {KELA_DEV_STATE_GIGE_FREE, "Free"},
    {KELA_DEV_STATE_GIGE_IN_USE, "In use elsewhere"},
    {KELA_DEV_STATE_GIGE_UNREACHABLE, "Not reachable"},
    {KELA_DEV_STATE_GIGE_CONNECTED, "Connected"},
    {KELA_DEV_STATE_GIGE_GRABBING, "Grabbing"},
    {KELA_DEV_STATE_GIGE_MULTICAST, "Multicast"},
    {KELA_DEV_STATE_GIGE_MULTICAST_CONNECTED, "Multicast joined"},
};
constexpr StateRow kUsb3[] = {
    {KELA_DEV_STATE_USB3_FREE, "USB 3 free"},           {KELA_DEV_STATE_USB3_IN_USE, "USB 3 in use"},
    {KELA_DEV_STATE_USB3_CONNECTED, "USB 3 connected"}, {KELA_DEV_STATE_USB3_GRABBING, "USB 3 grabbing"},
    {KELA_DEV_STATE_USB3_UNUSABLE, "USB 3 unusable"},
};
constexpr StateRow kUsb2[] = {
    {KELA_DEV_STATE_USB2_FREE, "USB 2 free"},           {KELA_DEV_STATE_USB2_IN_USE, "USB 2 in use"},
    {KELA_DEV_STATE_USB2_CONNECTED, "USB 2 connected"}, {KELA_DEV_STATE_USB2_GRABBING, "USB 2 grabbing"},
    {KELA_DEV_STATE_USB2_UNUSABLE, "USB 2 unusable"},
};
constexpr StateRow kCameraLink[] = {
    {KELA_DEV_STATE_CAMERALINK_FREE, "Free"},
    {KELA_DEV_STATE_CAMERALINK_CONNECTED, "Connected"},
    {KELA_DEV_STATE_CAMERALINK_UNREACHABLE, "Not reachable"},
};
constexpr StateRow kGenTL[] = {
    {KELA_DEV_STATE_GENTL_FREE, "Free"},
    {KELA_DEV_STATE_GENTL_CONNECTED, "Connected"},
    {KELA_DEV_STATE_GENTL_GRABBING, "Grabbing"},
    {KELA_DEV_STATE_GENTL_IN_USE, "In use elsewhere"},
};
constexpr StateRow kInterfaces[] = {
    {KELA_DEV_STATE_GENTL_INTERFACE_FREE, "Interface, closed"},
    {KELA_DEV_STATE_GENTL_INTERFACE_OPEN, "Interface, open"},
    {KELA_DEV_STATE_GENTL_INTERFACE_IN_USE, "Interface, in use"},
};

constexpr int kPanelWidth = 320;
constexpr int kMargin = 12;

double screenScale()
{
    return qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble();
}

std::string serialOf(const StateRow &row)
{
    return "77-" + std::to_string(100 + static_cast<int>(row.state));
}

void setName(KELA_DEVICE_INFO_EX &device, const std::string &name)
{
    switch (device.transport) {
    case KELA_INTERFACE_TYPE_GIGE:
        setField(device.special.gige.userDefinedName, name);
        break;
    case KELA_INTERFACE_TYPE_USB:
        setField(device.special.usb.userDefinedName, name);
        break;
    case KELA_INTERFACE_TYPE_GENTL:
        setField(device.special.genTL.userDefinedName, name);
        break;
    default:
        setField(device.modelName, name);
        break;
    }
}

/// One tree of the picture.
struct Panel {
    explicit Panel(int groupType);
    ~Panel();
    Panel(const Panel &) = delete;
    Panel &operator=(const Panel &) = delete;

    void addCamera(KELA_STRUCT_DEVICE_INFO record, const StateRow &row);
    /// The panel as a person sees it, with the pointer on a row.
    QPixmap picture();

    std::unique_ptr<KelDeviceTree> tree = std::make_unique<KelDeviceTree>();
    QTreeWidgetItem *group = nullptr;
    QTreeWidgetItem *hovered = nullptr;
    QList<QTreeWidgetItem *> rows; ///< a row for each state
    QList<QRect> buttons;          ///< where buttons were shown
    QStringList spoken;            ///< and their names

private:
    void noteButtons();
};

Panel::Panel(int groupType)
{
    if (groupType == KelDeviceTree::ItemCamLinkRoot) {
        group = new QTreeWidgetItem(tree.get(), {QStringLiteral("Camera Link")});
        group->setData(0, KelDeviceTree::ItemTypeRole, groupType);
        group->setData(0, KelDeviceTree::ItemIdRole, -1);
        group->setFont(0, tree->topLevelItem(0)->font(0));
        group->setExpanded(true);
    } else {
        group = tree->findItem(static_cast<KelDeviceTree::ItemType>(groupType), -1);
    }
    for (int row = 0; row < tree->topLevelItemCount(); ++row) {
        tree->topLevelItem(row)->setHidden(tree->topLevelItem(row) != group);
    }
    tree->setCurrentItem(nullptr);
}

Panel::~Panel() = default;

void Panel::addCamera(KELA_STRUCT_DEVICE_INFO record, const StateRow &row)
{
    record.deviceId = static_cast<int32_t>(row.state);
    record.deviceState = static_cast<int32_t>(row.state);
    setName(record.deviceInfo, row.name);
    rows.append(addDevice(*tree, record));
}

QPixmap Panel::picture()
{
    tree->expandAll();
    tree->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tree->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    showTree(*tree);
    QTreeWidgetItem *last = group;
    while (last->childCount() > 0) {
        last = last->child(last->childCount() - 1);
    }
    tree->resize(kPanelWidth, tree->visualItemRect(last).bottom() + 1);
    settle();
    // The display may still tell of the pointer's last place; nothing comes between this and the picture.
    (void)soon([this] {
        hoverRow(*tree, hovered);
        return buttonOf(hovered)->isVisible();
    });
    noteButtons();
    const QPixmap picture = tree->grab();
    tree->hide();
    return picture;
}

// From the left to the right.
void Panel::noteButtons()
{
    QMap<int, const CustomPushButton *> visible;
    for (const CustomPushButton *button : tree->findChildren<CustomPushButton *>()) {
        if (button->isVisible()) {
            visible.insert(button->x(), button);
        }
    }
    for (const CustomPushButton *button : qAsConst(visible)) {
        buttons.append(button->geometry());
        spoken.append(button->accessibleName());
    }
}

// More than the row's ground: something is drawn there.
int coloursIn(const QImage &image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            colours.insert(image.pixel(x, y));
        }
    }
    return colours.size();
}

std::unique_ptr<Panel> gigePanel()
{
    auto panel = std::make_unique<Panel>(KelDeviceTree::ItemGigERoot);
    KelDeviceTree &tree = *panel->tree;
    addCard(tree, 500, "enp3s0");
    for (const StateRow &row : kGigE) {
        panel->addCamera(gigeRecord(0, serialOf(row), row.state, "enp3s0"), row);
    }
    KELA_NETWORK otherCard = cardRecord(501, "enp4s0");
    setField(otherCard.name, "enp4s0[10.0.3.1]");
    tree.onNewNetWork(QVariant::fromValue(otherCard));
    tree.setStayTopList({QStringLiteral("77-203"), QStringLiteral("77-202")});
    for (int id = 201; id <= 203; ++id) {
        KELA_STRUCT_DEVICE_INFO record =
            gigeRecord(id, "77-" + std::to_string(id), KELA_DEV_STATE_GIGE_FREE, "enp4s0");
        setName(record.deviceInfo, id == 201 ? "As it came" : "Kept on top");
        addDevice(tree, record);
    }
    for (const KELA_PLACEMENT placement : {KELA_PLACEMENT_VIRTUAL, KELA_PLACEMENT_OTHER}) {
        KELA_STRUCT_DEVICE_INFO record = gigeRecord(300 + static_cast<int>(placement), "77-300");
        record.deviceInfo.placement = placement;
        setName(record.deviceInfo, placement == KELA_PLACEMENT_VIRTUAL ? "Simulated" : "Strobe");
        addDevice(tree, record);
    }
    panel->hovered = panel->rows.first();
    panel->rows.at(3)->setSelected(true);
    return panel;
}

std::unique_ptr<Panel> usbPanel()
{
    auto panel = std::make_unique<Panel>(KelDeviceTree::ItemUSBRoot);
    addController(*panel->tree, 600, "xHCI controller");
    for (const StateRow &row : kUsb3) {
        KELA_STRUCT_DEVICE_INFO record = deviceRecord(0, usbCamera(serialOf(row)), row.state);
        setField(record.usbController.identifier, "xHCI controller");
        panel->addCamera(record, row);
    }
    for (const StateRow &row : kUsb2) {
        panel->addCamera(deviceRecord(0, usbCamera(serialOf(row)), row.state), row);
    }
    panel->hovered = panel->rows.at(2);
    return panel;
}

std::unique_ptr<Panel> cameraLinkPanel()
{
    auto panel = std::make_unique<Panel>(KelDeviceTree::ItemCamLinkRoot);
    for (const StateRow &row : kCameraLink) {
        panel->addCamera(deviceRecord(0, cameraLinkCamera(serialOf(row), "COM1"), row.state), row);
    }
    panel->hovered = panel->rows.last();
    return panel;
}

std::unique_ptr<Panel> genTLPanel()
{
    auto panel = std::make_unique<Panel>(KelDeviceTree::ItemGenTLRoot);
    KelDeviceTree &tree = *panel->tree;
    for (const StateRow &row : kInterfaces) {
        KELA_GENTL_IF_INFO record = interfaceRecord(7000 + static_cast<uint32_t>(row.state), serialOf(row));
        setField(record.displayName, row.name);
        tree.onNewGenTLInterface(QVariant::fromValue(record));
        QTreeWidgetItem *item = tree.findItem(KelDeviceTree::ItemGenTLInterface, static_cast<long>(record.id));
        tree.setCameraItemIcon(item, row.state);
        panel->rows.append(item);
    }
    const std::string open = serialOf(kInterfaces[1]);
    for (const StateRow &row : kGenTL) {
        KELA_STRUCT_DEVICE_INFO record = deviceRecord(0, genTLDevice(serialOf(row), open), row.state);
        record.genTLInterface = interfaceRecord(7026, open);
        panel->addCamera(record, row);
    }
    panel->hovered = panel->group;
    return panel;
}

/// The picture: GigE, USB, and the two others below each other.
class Sheet
{
public:
    explicit Sheet(const std::vector<std::unique_ptr<Panel>> &panels)
    {
        for (const auto &panel : panels) {
            m_pictures.append(panel->picture());
        }
    }

    QPixmap draw() const
    {
        const double scale = m_pictures.first().devicePixelRatio();
        QPixmap sheet(size() * scale);
        sheet.setDevicePixelRatio(scale);
        sheet.fill(QApplication::palette().color(QPalette::Window));
        QPainter painter(&sheet);
        for (int index = 0; index < m_pictures.size(); ++index) {
            painter.drawPixmap(placeOf(index), m_pictures.at(index));
        }
        return sheet;
    }

    QSize size() const
    {
        int bottom = 0;
        for (int index = 0; index < m_pictures.size(); ++index) {
            bottom = std::max(bottom, placeOf(index).y() + heightOf(index));
        }
        return {3 * kPanelWidth + 4 * kMargin, bottom + kMargin};
    }

private:
    int heightOf(int index) const
    {
        return qRound(m_pictures.at(index).height() / m_pictures.at(index).devicePixelRatio());
    }

    QPoint placeOf(int index) const
    {
        const int column = std::min(index, 2);
        const int above = index > 2 ? heightOf(2) + kMargin : 0;
        return {kMargin + column * (kPanelWidth + kMargin), kMargin + above};
    }

    QList<QPixmap> m_pictures;
};

QString fileName(Custom::Theme theme)
{
    const QString scale = screenScale() > 1 ? QStringLiteral("@%1x").arg(screenScale()) : QString();
    return QStringLiteral("tree-%1%2.png")
        .arg(theme == Custom::ThemeDark ? QStringLiteral("dark") : QStringLiteral("light"), scale);
}

} // namespace

class TestPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyStateIsDrawn_data();
    void everyStateIsDrawn();
    void statesOfATransportHaveDifferentIcons();
    void hoveredRowsShowTheirButtons();

private:
    static std::vector<std::unique_ptr<Panel>> panels();
};

std::vector<std::unique_ptr<Panel>> TestPictures::panels()
{
    std::vector<std::unique_ptr<Panel>> panels;
    panels.push_back(gigePanel());
    panels.push_back(usbPanel());
    panels.push_back(genTLPanel());
    panels.push_back(cameraLinkPanel());
    return panels;
}

void TestPictures::everyStateIsDrawn_data()
{
    QTest::addColumn<Custom::Theme>("theme");
    QTest::newRow("dark") << Custom::ThemeDark;
    QTest::newRow("light") << Custom::ThemeLight;
}

void TestPictures::everyStateIsDrawn()
{
    QFETCH(Custom::Theme, theme);
    Custom::setTheme(theme);
    const auto all = panels();

    const Sheet sheet(all);
    const QPixmap picture = sheet.draw();

    QCOMPARE(picture.devicePixelRatio(), screenScale());
    QCOMPARE(picture.size(), sheet.size() * screenScale());
    int states = 0;
    for (const auto &panel : all) {
        QVERIFY2(!panel->spoken.isEmpty(), qPrintable(panel->hovered->text(0)));
        for (const QTreeWidgetItem *row : qAsConst(panel->rows)) {
            QVERIFY2(!row->icon(0).isNull(), qPrintable(row->text(0)));
            ++states;
        }
    }
    QCOMPARE(states, KelDeviceTreePrivate::iconMap().size());
    const QString folder = qEnvironmentVariable("KEL_PICTURES");
    if (!folder.isEmpty()) {
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(picture.save(folder + QLatin1Char('/') + fileName(theme), "PNG", 0));
    }
}

void TestPictures::statesOfATransportHaveDifferentIcons()
{
    for (const auto &panel : panels()) {
        QList<QImage> seen;
        for (const QTreeWidgetItem *row : qAsConst(panel->rows)) {
            const QPixmap icon = row->icon(0).pixmap(panel->tree->iconSize());
            QCOMPARE(icon.size(), panel->tree->iconSize() * screenScale());
            QVERIFY2(!seen.contains(icon.toImage()), qPrintable(row->text(0)));
            seen.append(icon.toImage());
        }
    }
}

void TestPictures::hoveredRowsShowTheirButtons()
{
    const QStringList names = {QStringLiteral("Connect"), QStringLiteral("Disconnect"),
                               QStringLiteral("Choose producers Refresh"), QStringLiteral("Connect")};
    QStringList shown;
    for (const auto &panel : panels()) {
        const QImage picture = panel->picture().toImage();
        for (const QRect &place : qAsConst(panel->buttons)) {
            const QRectF scaled(QPointF(place.topLeft()) * screenScale(), QSizeF(place.size()) * screenScale());
            QVERIFY(coloursIn(picture.copy(scaled.toRect())) > 2);
        }
        shown.append(panel->spoken.join(QLatin1Char(' ')));
    }
    QCOMPARE(shown, names);
}

int main(int argc, char *argv[])
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    TestPictures test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_keldevicetree_pictures.moc"
