// SPDX-License-Identifier: Apache-2.0
#include "HotplugMonitor.h"

#include <KelAIndustryControl/KelARecords.h>

#include <QSignalSpy>
#include <QTest>

// GLib names a structure member like a keyword of Qt.
#undef signals
#include <umockdev.h>

using browser::HotplugMonitor;

/// A mocked USB bus, and what the browser hears of it.
class TestHotplugUsb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void pluggedDeviceIsHeardOf();
    void pulledDeviceIsHeardOf();
    void deviceOfAnotherBusIsNot();

private:
    std::string add(const char *subsystem, const char *type);
    bool isTold();

    UMockdevTestbed *m_bed = nullptr;
    std::unique_ptr<HotplugMonitor> m_monitor;
    std::unique_ptr<QSignalSpy> m_told;
};

void TestHotplugUsb::init()
{
    m_bed = umockdev_testbed_new();
    m_monitor = std::make_unique<HotplugMonitor>();
    m_told = std::make_unique<QSignalSpy>(m_monitor.get(), &HotplugMonitor::changed);
}

void TestHotplugUsb::cleanup()
{
    m_told.reset();
    m_monitor.reset();
    g_clear_object(&m_bed);
}

std::string TestHotplugUsb::add(const char *subsystem, const char *type)
{
    gchar *path = umockdev_testbed_add_device(m_bed, subsystem, "2-1", nullptr, "busnum", "2", nullptr,
                                              "DEVTYPE", type, nullptr);
    std::string result = path ? path : "";
    g_free(path);
    return result;
}

bool TestHotplugUsb::isTold()
{
    return m_told->wait() && m_told->at(0).at(0).toUInt() == KELA_INTERFACE_TYPE_USB;
}

void TestHotplugUsb::pluggedDeviceIsHeardOf()
{
    QVERIFY(!add("usb", "usb_device").empty());

    QVERIFY(isTold());
}

void TestHotplugUsb::pulledDeviceIsHeardOf()
{
    const std::string path = add("usb", "usb_device");
    QVERIFY(isTold());
    m_told->clear();

    umockdev_testbed_uevent(m_bed, path.c_str(), "remove");
    umockdev_testbed_remove_device(m_bed, path.c_str());

    QVERIFY(isTold());
}

void TestHotplugUsb::deviceOfAnotherBusIsNot()
{
    QVERIFY(!add("pci", "adapter").empty());

    QVERIFY(!m_told->wait(600));
}

QTEST_GUILESS_MAIN(TestHotplugUsb)
#include "tst_hotplugusb.moc"
