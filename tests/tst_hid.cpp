// HID ports through the real hidapi, which finds the devices of a mock /sys and /dev.

#include <umockdev.h> // before Qt, whose keywords it uses as names

#include "guardedtest.h"
#include "portmanage.h"

namespace {

constexpr int vendor = 0x0665;
constexpr int product = 0x5161;

constexpr char description[] =
    "P: /devices/usb1/1-1\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\n"
    "A: idVendor=0665\nA: idProduct=5161\nA: manufacturer=M\nA: product=P\nA: serial=1\n"
    "A: bcdDevice=0100\n\n"
    "P: /devices/usb1/1-1/1-1:1.0\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\n"
    "A: bInterfaceNumber=00\n\n"
    "P: /devices/usb1/1-1/1-1:1.0/0003:0665:5161.0001\nE: SUBSYSTEM=hid\n"
    "E: HID_ID=0003:00000665:00005161\nE: HID_NAME=M P\nE: HID_UNIQ=1\n"
    "H: report_descriptor=05010902A101C0\n\n"
    "P: /devices/usb1/1-1/1-1:1.0/0003:0665:5161.0001/hidraw/hidraw0\nN: hidraw0\n"
    "E: SUBSYSTEM=hidraw\nE: DEVNAME=/dev/hidraw0\nL: device=../../../0003:0665:5161.0001\n";

// What hidapi asks a node before it takes it for a hidraw device.
constexpr char answers[] = "@DEV /dev/hidraw0\nHIDIOCGRDESCSIZE 0 06000000\n";

} // namespace

class tst_Hid : public GuardedTest
{
    Q_OBJECT

private slots:
    void comesAndGoes()
    {
        PortManage manager;
        CommHandle *handle = manager.getPortHandle(vendor, product);
        QVERIFY(handle && !handle->device);
        QCOMPARE(handle->kind, int(CommHandle::Hid));
        manager.ReOpen(vendor, product);
        manager.Close(vendor, product);
        plug();
        QCOMPARE(manager.getPortHandle(vendor, product), handle);
        const void *device = handle->device;
        QVERIFY(device);
        QCOMPARE(manager.getPortHandle(vendor, product)->device, device); // stays open
        QVERIFY(!manager.getPortHandle(vendor, product + 1)->device);
        manager.ReOpen(vendor, product);
        QVERIFY(m_guard->messages().constLast().startsWith(QStringLiteral("ReOpen 0x")));
        manager.timerProc(); // ticks are for serial ports
        QVERIFY(handle->device);
        for (int twice = 0; twice < 2; ++twice) {
            manager.Close(vendor, product);
            QVERIFY(!handle->device);
        }
        QVERIFY(manager.getPortHandle(vendor, product)->device);
        unplug();
        manager.ReOpen(vendor, product);
        QVERIFY(!handle->device);
    }

    void namesDoNotMix()
    {
        PortManage manager;
        QVERIFY(manager.getPortHandle(vendor, product));
        const QString name = QStringLiteral("1637.20833");
        QVERIFY(!manager.getPortHandle(name));
        manager.ReOpen(name);
        manager.Close(name);
        QVERIFY(manager.getPortHandle(QStringLiteral("1637.1")));
        QVERIFY(!manager.getPortHandle(vendor, 1));
        manager.ReOpen(vendor, 1);
        manager.Close(vendor, 1);
    }

private:
    void plug()
    {
        QVERIFY(writeFile("answers", answers));
        QVERIFY(umockdev_testbed_add_from_string(m_bed.get(), description, nullptr));
        QVERIFY(umockdev_testbed_load_ioctl(m_bed.get(), "/dev/hidraw0", "answers", nullptr));
    }

    void unplug()
    {
        umockdev_testbed_remove_device(
            m_bed.get(), "/sys/devices/usb1/1-1/1-1:1.0/0003:0665:5161.0001/hidraw/hidraw0");
    }

    std::unique_ptr<UMockdevTestbed, decltype(&g_object_unref)> m_bed { umockdev_testbed_new(),
                                                                        g_object_unref };
};

QTEST_GUILESS_MAIN(tst_Hid)
#include "tst_hid.moc"
