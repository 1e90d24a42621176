#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/DeviceMessages.h"
#include "simulator/transports/CSendGate.h"
#include "simulator/transports/CSimulatedSystem.h"
#include "tests/support/CTestCase.h"

#include <thread>

class TestSendGate : public CTestCase
{
    Q_OBJECT

  private slots:
    void lettingThroughIsTheRule();
    void holdsTheNthAlone();
    void releaseBeforeThePacketComes();
    void anotherOrderLetsGo();
    void heldPacketIsNotOnRecord();
    void deviceSpeaksAndGoesWhileAPacketIsHeld();
    void resetLetsGo();
};

void TestSendGate::lettingThroughIsTheRule()
{
    CSendGate gate;
    gate.pass();
    QVERIFY(!gate.isHolding());
}

void TestSendGate::holdsTheNthAlone()
{
    CSendGate gate;
    gate.hold(3);
    std::atomic<int> passed = 0;
    std::thread sender([&] {
        for (int packet = 0; packet < 4; ++packet) {
            gate.pass();
            ++passed;
        }
    });
    QTRY_VERIFY(gate.isHolding());
    QCOMPARE(passed.load(), 2);
    gate.pass(); // another thread's is not held
    QVERIFY(gate.isHolding());
    gate.release();
    sender.join();
    QCOMPARE(passed.load(), 4);
    QVERIFY(!gate.isHolding());
}

void TestSendGate::releaseBeforeThePacketComes()
{
    CSendGate gate;
    gate.hold(1);
    QVERIFY(!gate.isHolding());
    gate.release();
    gate.pass();
}

void TestSendGate::anotherOrderLetsGo()
{
    CSendGate gate;
    gate.hold(1);
    std::thread sender([&] { gate.pass(); });
    QTRY_VERIFY(gate.isHolding());
    gate.hold(2);
    sender.join();
    gate.pass(); // the first of the new order
    QVERIFY(!gate.isHolding());
}

void TestSendGate::heldPacketIsNotOnRecord()
{
    CSimulatedSystem& system = CSimulatedSystem::instance();
    const MIDIEndpoint destination = system.addDestination(QStringLiteral("Maker"), QStringLiteral("Port"));
    system.sendGate().hold(1);
    bool taken = false;
    std::thread sender([&] { taken = system.send(destination, "\xf8"); });
    QTRY_VERIFY(system.sendGate().isHolding());
    QVERIFY(system.packets().isEmpty());
    system.sendGate().release();
    sender.join();
    QVERIFY(taken);
    QCOMPARE(system.packets().size(), 1);
    system.reset();
}

void TestSendGate::deviceSpeaksAndGoesWhileAPacketIsHeld()
{
    CSimulatedSystem& system = CSimulatedSystem::instance();
    CSimulatedDevice device;
    system.plug(device);
    static_cast<void>(MIDIPlatform::listDestinations());
    const MIDIEndpoint destination = MIDIPlatform::destination(2);
    system.sendGate().hold(1);
    bool taken = true;
    std::thread sender([&] { taken = system.send(destination, DeviceMessages::keep()); });
    QTRY_VERIFY(system.sendGate().isHolding());
    device.turn(3, 64);
    QCOMPARE(device.trafficSince(0).size(), 1);
    device.unplug();
    system.sendGate().release();
    sender.join();
    QVERIFY(!taken);
    QVERIFY(device.received().isEmpty());
    system.reset();
}

void TestSendGate::resetLetsGo()
{
    CSimulatedSystem& system = CSimulatedSystem::instance();
    system.sendGate().hold(1);
    std::thread sender([&] { static_cast<void>(system.send(1, "\xf8")); });
    QTRY_VERIFY(system.sendGate().isHolding());
    system.reset();
    sender.join();
    QVERIFY(!system.sendGate().isHolding());
}

KTZ_TEST(QCoreApplication, TestSendGate)
#include "TestSendGate.moc"
