// SPDX-License-Identifier: Apache-2.0
#include "WorkArea.h"

#include "ConnectionManager.h"
#include "DetailsPanel.h"
#include "LiveView.h"

#include <QDataStream>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTabBar>
#include <QToolButton>

namespace browser
{

namespace
{

constexpr int kDetailsTab = 0;
constexpr int kPayloadSize = 4;

QString dragFormat()
{
    return QStringLiteral("KelDragTreeWidgetFormat");
}

} // namespace

WorkArea::WorkArea(DetailsPanel *details, ConnectionManager *manager, QWidget *parent)
    : QTabWidget(parent)
    , m_manager(manager)
{
    setAcceptDrops(true);
    setDocumentMode(true);
    setElideMode(Qt::ElideRight);
    tabBar()->setDrawBase(false);
    addTab(details, QString());
    retranslate();
}

void WorkArea::openLiveView(long id)
{
    for (int i = kDetailsTab + 1; i < count(); ++i) {
        if (static_cast<LiveView *>(widget(i))->id() == id) {
            setCurrentIndex(i);
            return;
        }
    }
    if (!m_manager->device(id))
        return;
    auto *view = new LiveView(id, m_manager);
    // A name from a device is no mnemonic.
    const int index = addTab(view, view->title().replace(QLatin1Char('&'), QStringLiteral("&&")));
    tabBar()->setTabButton(index, QTabBar::RightSide, makeCloseButton(view));
    setCurrentIndex(index);
}

bool WorkArea::readDrag(const QMimeData *data, long *id)
{
    const QByteArray payload = data ? data->data(dragFormat()) : QByteArray();
    if (payload.size() != kPayloadSize)
        return false;
    QDataStream stream(payload);
    qint32 number = 0;
    stream >> number;
    *id = number;
    return stream.status() == QDataStream::Ok;
}

void WorkArea::dragEnterEvent(QDragEnterEvent *event)
{
    long id = 0;
    if (readDrag(event->mimeData(), &id) && m_manager->device(id))
        event->acceptProposedAction();
}

void WorkArea::dropEvent(QDropEvent *event)
{
    long id = 0;
    if (!readDrag(event->mimeData(), &id) || !m_manager->device(id))
        return;
    event->acceptProposedAction();
    openLiveView(id);
}

void WorkArea::changeEvent(QEvent *event)
{
    QTabWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

QWidget *WorkArea::makeCloseButton(LiveView *view)
{
    auto *button = new QToolButton;
    button->setAutoRaise(true);
    button->setText(QStringLiteral("✕"));
    button->setAccessibleName(closeText(*view));
    connect(button, &QToolButton::clicked, view, [this, view] {
        removeTab(indexOf(view));
        view->deleteLater();
    });
    return button;
}

QString WorkArea::closeText(const LiveView &view)
{
    return tr("Close %1").arg(view.title());
}

void WorkArea::retranslate()
{
    setTabText(kDetailsTab, tr("Details"));
    setTabToolTip(kDetailsTab, tr("Drop a connected camera here to see its live values"));
    for (int i = kDetailsTab + 1; i < count(); ++i) {
        if (QWidget *button = tabBar()->tabButton(i, QTabBar::RightSide))
            button->setAccessibleName(closeText(*static_cast<LiveView *>(widget(i))));
    }
}

} // namespace browser
