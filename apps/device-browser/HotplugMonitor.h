// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QTimer>

#include <map>
#include <memory>

struct nlmsghdr;
struct udev_monitor;

namespace browser
{

/// Listens to what the system tells of its hardware: USB devices that come and go, and network cards whose
/// link or addresses change. What comes close together is told once. Where the system tells nothing (a
/// container without udev), nothing is heard; ordinary passes find the devices all the same.
///
/// Thread: GUI.
class HotplugMonitor : public QObject
{
    Q_OBJECT

public:
    explicit HotplugMonitor(QObject *parent = nullptr);
    ~HotplugMonitor() override;

Q_SIGNALS:
    /// Devices may have come or gone.
    /// @param transports  KELA_INTERFACE_TYPE bits: USB, GigE or both
    void changed(uint transports);

private:
    void listenToUdev();
    void listenToKernel();
    void readUdev();
    void readKernel();
    bool bringsNews(const char *messages, size_t length);
    bool isLinkNews(const nlmsghdr &header, const char *payload);
    void gather(uint transports);

    std::unique_ptr<udev_monitor, void (*)(udev_monitor *)> m_udev;
    int m_kernel = -1;
    std::map<int, unsigned int> m_links; ///< the flags of each network card that were heard last
    uint m_gathered = 0;
    QTimer m_burst;
};

} // namespace browser
