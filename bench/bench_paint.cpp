// SPDX-License-Identifier: Apache-2.0
// What the device tree costs while somebody looks at it: painting a page, hovering across rows, setting the
// list of rows that stay on top. Each with growing trees, so that the growth shows.
#include "TreeTestKit.h"

#include <CustomCtr/CustomPushButton.h>
#include <DeviceEnumMng/KelDeviceTree/KelDeviceTree_p.h>

#include <QApplication>
#include <QCursor>
#include <QHoverEvent>
#include <QLoggingCategory>
#include <QPixmap>
#include <QScrollBar>
#include <QTreeWidgetItem>

#include <benchmark/benchmark.h>

#include <memory>

namespace
{

constexpr int kPageRows = 40;
constexpr int kStayTopEntries = 100;

QString serialOf(int camera)
{
    return QStringLiteral("SN-%1").arg(camera, 6, 10, QLatin1Char('0'));
}

std::unique_ptr<KelDeviceTree> treeWith(int cameras)
{
    auto tree = std::make_unique<KelDeviceTree>();
    QStringList serials;
    for (int camera = 0; camera < cameras; ++camera) {
        serials.append(serialOf(camera));
    }
    addCameras(*tree, serials);
    return tree;
}

// Shows one page of rows.
void showPage(KelDeviceTree &tree)
{
    const int rowHeight = tree.visualItemRect(tree.findCameraItem(1)).height();
    tree.setGeometry(0, 0, 320, rowHeight * kPageRows);
    tree.show();
    QCoreApplication::processEvents();
}

void paintPage(benchmark::State &state)
{
    const auto tree = treeWith(static_cast<int>(state.range(0)));
    showPage(*tree);
    tree->verticalScrollBar()->setValue(tree->verticalScrollBar()->maximum() / 2);
    QPixmap page(tree->viewport()->size());
    for ([[maybe_unused]] auto turn : state) {
        tree->viewport()->render(&page);
    }
    state.counters["rows"] = benchmark::Counter(kPageRows * static_cast<double>(state.iterations()),
                                                benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(paintPage)->Arg(64)->Arg(512)->Arg(4096)->Unit(benchmark::kMicrosecond);

void hoverAt(KelDeviceTree &tree, const QPoint &place, const QPoint &before)
{
    QCursor::setPos(tree.viewport()->mapToGlobal(place));
    QHoverEvent hover(QEvent::HoverMove, place, before);
    QCoreApplication::sendEvent(tree.viewport(), &hover);
    QCoreApplication::processEvents();
}

// One turn crosses 1000 rows, page by page, and paints what each step changes.
void hoverAcrossThousandRows(benchmark::State &state)
{
    constexpr int kRows = 1000;
    const auto tree = treeWith(static_cast<int>(state.range(0)));
    showPage(*tree);
    int shown = 0;
    for ([[maybe_unused]] auto turn : state) {
        QPoint before;
        for (int camera = 1; camera <= kRows; ++camera) {
            QTreeWidgetItem *item = tree->findCameraItem(camera);
            if (camera % kPageRows == 1) {
                tree->scrollToItem(item, QAbstractItemView::PositionAtTop);
            }
            const QPoint place(100, tree->visualItemRect(item).center().y());
            hoverAt(*tree, place, before);
            before = place;
            shown += buttonOf(item)->isVisible() ? 1 : 0;
        }
    }
    if (shown != kRows * static_cast<int>(state.iterations())) {
        state.SkipWithError("not every row showed its button");
    }
    state.counters["row"] = benchmark::Counter(kRows * static_cast<double>(state.iterations()),
                                               benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(hoverAcrossThousandRows)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond);

QStringList everyNth(int cameras, bool reversed)
{
    QStringList serials;
    for (int entry = 0; entry < kStayTopEntries; ++entry) {
        const int place = reversed ? kStayTopEntries - 1 - entry : entry;
        serials.append(serialOf(place * (cameras / kStayTopEntries)));
    }
    return serials;
}

// Every call turns the order over, so that nearly all hundred rows have to move.
void setStayTopList(benchmark::State &state)
{
    const int cameras = static_cast<int>(state.range(0));
    const auto tree = treeWith(cameras);
    showPage(*tree);
    const QStringList lists[] = {everyNth(cameras, false), everyNth(cameras, true)};
    bool reversed = false;
    for ([[maybe_unused]] auto turn : state) {
        tree->setStayTopList(lists[reversed ? 1 : 0]);
        QCoreApplication::processEvents();
        reversed = !reversed;
    }
    state.SetComplexityN(cameras);
}
BENCHMARK(setStayTopList)
    ->Arg(500)
    ->Arg(1000)
    ->Arg(2000)
    ->Arg(4000)
    ->Complexity()
    ->Unit(benchmark::kMillisecond);

// One more camera goes to the top, which is what a person asks for.
void keepOneMoreOnTop(benchmark::State &state)
{
    const int cameras = static_cast<int>(state.range(0));
    const auto tree = treeWith(cameras);
    showPage(*tree);
    const QStringList fewer = everyNth(cameras, false);
    bool more = false;
    for ([[maybe_unused]] auto turn : state) {
        more = !more;
        tree->setStayTopList(more ? fewer + QStringList{serialOf(cameras - 1)} : fewer);
        QCoreApplication::processEvents();
    }
    state.SetComplexityN(cameras);
}
BENCHMARK(keepOneMoreOnTop)
    ->Arg(500)
    ->Arg(1000)
    ->Arg(2000)
    ->Arg(4000)
    ->Complexity()
    ->Unit(benchmark::kMillisecond);

// A hundred listed cameras arrive among those that are there.
void listedCamerasArrive(benchmark::State &state)
{
    const int cameras = static_cast<int>(state.range(0));
    const auto tree = treeWith(cameras);
    QStringList listed;
    for (int entry = 0; entry < kStayTopEntries; ++entry) {
        listed.append(QStringLiteral("top-%1").arg(entry));
    }
    tree->setStayTopList(listed);
    for ([[maybe_unused]] auto turn : state) {
        for (int entry = 0; entry < kStayTopEntries; ++entry) {
            addDevice(*tree, gigeRecord(100000 + entry, listed.at(entry).toStdString()));
        }
        state.PauseTiming();
        for (int entry = 0; entry < kStayTopEntries; ++entry) {
            tree->deleteCameraItem(tree->findCameraItem(100000 + entry));
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
    state.SetComplexityN(cameras);
}
BENCHMARK(listedCamerasArrive)->Arg(500)->Arg(4000)->Unit(benchmark::kMillisecond);

// What one step of the pointer costs beside painting.
void showOneButton(benchmark::State &state)
{
    const int cameras = static_cast<int>(state.range(0));
    const auto tree = treeWith(cameras);
    CustomPushButton *buttons[] = {buttonOf(tree->findCameraItem(1)), buttonOf(tree->findCameraItem(cameras))};
    bool last = false;
    for ([[maybe_unused]] auto turn : state) {
        tree->setCurRightBtn(buttons[last ? 1 : 0], false);
        last = !last;
    }
}
BENCHMARK(showOneButton)->Arg(64)->Arg(4096);

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QLoggingCategory::setFilterRules(QStringLiteral("*.info=false\ndefault.info=false"));
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
