// SPDX-License-Identifier: Apache-2.0
#include "DeviceDialogs.h"

#include "DeviceTasks.h"
#include "DeviceText.h"
#include "EventLog.h"
#include "FilterDialog.h"
#include "ForceIpDialog.h"
#include "HelpDialog.h"
#include "Ipv4.h"
#include "RemoteCameras.h"
#include "TreeHost.h"
#include "TreeRows.h"

#include <CustomCtr/CustomMessageBox.h>
#include <KelAIndustryControl/KelAErrors.h>

#include <QInputDialog>

namespace browser
{

DeviceDialogs::DeviceDialogs(const Parts &parts, QWidget *window)
    : QObject(window)
    , m_parts(parts)
    , m_window(window)
{
    connect(parts.tasks, &DeviceTasks::addressAssigned, this, [this](long, uint errorCode) {
        if (errorCode == KELA_OK) {
            m_parts.log->add(EventLog::Kind::Note,
                             tr("The temporary address was sent; the camera takes it in a "
                                "moment."));
            Q_EMIT refreshWanted();
            return;
        }
        const QString reason = KelInterface::GenerateErrorDesc(static_cast<int>(errorCode));
        m_parts.log->add(EventLog::Kind::Problem,
                         tr("The temporary address could not be sent: %1").arg(reason));
        CustomMessageBox::simple(m_window, reason, tr("Assign temporary address"), QString(),
                                 Custom::IconWarning, false);
    });
}

void DeviceDialogs::askAddress(long id)
{
    const auto device = rows::deviceOf(*m_parts.host->tree(), id);
    if (!device || !mayAssignAddress(*device))
        return;
    const AddressNeighbourhood around =
        neighbourhoodOf(*device, readHostFacts(), rows::allDevices(*m_parts.host->tree()));
    auto *dialog = new ForceIpDialog(*device, around, m_window);
    connect(dialog, &QDialog::accepted, this, [this, dialog, device = *device] {
        const TemporaryAddress choice = dialog->choice();
        m_parts.log->add(EventLog::Kind::Note, tr("Assigning %1 to %2 …")
                                                   .arg(ipv4::textWithMask(choice.address, choice.mask),
                                                        displayName(device.deviceInfo)));
        m_parts.tasks->assignAddress(device, choice);
    });
    open(dialog);
}

void DeviceDialogs::askRemoteCamera()
{
    auto *dialog = new QInputDialog(m_window);
    dialog->setWindowTitle(tr("Add camera by address"));
    dialog->setLabelText(tr("Address of a GigE Vision camera, also behind a router:"));
    dialog->setOkButtonText(tr("Add"));
    dialog->setCancelButtonText(tr("Cancel"));
    connect(dialog, &QInputDialog::textValueSelected, this, &DeviceDialogs::addRemote);
    open(dialog);
}

void DeviceDialogs::editFilters()
{
    auto *dialog = new FilterDialog(m_window);
    connect(dialog, &FilterDialog::rebuildWanted, this, &DeviceDialogs::rebuildWanted);
    open(dialog);
}

void DeviceDialogs::showHelp()
{
    open(new HelpDialog(m_window));
}

void DeviceDialogs::open(QDialog *dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void DeviceDialogs::addRemote(const QString &address)
{
    const auto number = ipv4::parse(address);
    if (!number || *number == 0) {
        CustomMessageBox::simple(m_window, tr("\"%1\" is no IPv4 address.").arg(address),
                                 tr("Add camera by address"), QString(), Custom::IconHint, false);
        return;
    }
    if (m_parts.remoteCameras->add(*number))
        return;
    CustomMessageBox::simple(m_window, tr("No camera answers at %1.").arg(ipv4::text(*number)),
                             tr("Add camera by address"), QString(), Custom::IconHint, false);
}

} // namespace browser
