// SPDX-License-Identifier: Apache-2.0
#include "Preferences.h"

#include "PassScheduler.h"
#include "RowKinds.h"
#include "TreeHost.h"

#include <CommonTools/KelInterface.h>
#include <CustomCtr/CustomDefine.h>
#include <DeviceEnumMng/KelDeviceTree.h>

namespace browser
{

Preferences::Preferences(SettingsStore *store, TreeHost *host, PassScheduler *scheduler, QObject *parent)
    : QObject(parent)
    , m_store(store)
    , m_host(host)
    , m_scheduler(scheduler)
{
}

void Preferences::applyToProgram()
{
    m_language.use(m_store->language());
    Custom::setTheme(static_cast<Custom::Theme>(m_store->theme()));
    KelInterface::SetEncodingType(m_store->encoding());
    m_scheduler->setAutomatic(m_store->isAutomaticRefresh());
}

void Preferences::applyToTree()
{
    KelDeviceTree *tree = m_host->tree();
    tree->setVisibleItemTypes(visibleItemTypes(m_store->hiddenKinds()));
    tree->setStayTopList(m_store->stayTop());
    tree->SetEnableVirtualPort(m_store->isVirtualPortAllowed());
    tree->setRightBtnVisible(m_store->areRowButtonsShown());
    m_scheduler->setTransports(m_store->transports());
}

void Preferences::setTransports(uint transports)
{
    m_store->setTransports(transports);
    m_scheduler->setTransports(transports);
    Q_EMIT changed();
}

void Preferences::setAutomaticRefresh(bool on)
{
    m_store->setAutomaticRefresh(on);
    m_scheduler->setAutomatic(on);
    Q_EMIT changed();
}

void Preferences::setLanguage(const QString &locale)
{
    m_store->setLanguage(locale);
    m_language.use(locale);
    Q_EMIT changed();
}

void Preferences::setTheme(int theme)
{
    m_store->setTheme(theme);
    Custom::setTheme(static_cast<Custom::Theme>(theme));
    Q_EMIT changed();
}

void Preferences::setEncoding(int encoding)
{
    m_store->setEncoding(encoding);
    m_host->tree()->refreshEncodeType(encoding);
    Q_EMIT changed();
}

void Preferences::setKindVisible(const QString &kind, bool isVisible)
{
    QStringList hidden = m_store->hiddenKinds();
    hidden.removeAll(kind);
    if (!isVisible)
        hidden.append(kind);
    m_store->setHiddenKinds(hidden);
    m_host->tree()->setVisibleItemTypes(visibleItemTypes(hidden));
    Q_EMIT changed();
}

void Preferences::setVirtualPortAllowed(bool on)
{
    m_store->setVirtualPortAllowed(on);
    m_host->tree()->SetEnableVirtualPort(on);
    Q_EMIT changed();
}

void Preferences::setRowButtonsShown(bool on)
{
    m_store->setRowButtonsShown(on);
    m_host->tree()->setRightBtnVisible(on);
    Q_EMIT changed();
}

void Preferences::setAcknowledgeMode(int mode)
{
    m_store->setAcknowledgeMode(mode);
    Q_EMIT changed();
}

bool Preferences::isKeptOnTop(const QString &serial) const
{
    return !serial.isEmpty() && m_store->stayTop().contains(serial);
}

void Preferences::setKeptOnTop(const QString &serial, bool on)
{
    if (serial.isEmpty())
        return;
    QStringList serials = m_store->stayTop();
    serials.removeAll(serial);
    if (on)
        serials.append(serial);
    m_store->setStayTop(serials);
    m_host->tree()->setStayTopList(serials);
    Q_EMIT changed();
}

} // namespace browser
