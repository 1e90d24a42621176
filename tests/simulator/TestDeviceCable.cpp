#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/DeviceMessages.h"
#include "simulator/transports/CALSADeviceTransport.h"
#include "simulator/transports/CDeviceCable.h"
#include "tests/simulator/COtherClient.h"
#include "tests/support/CTestCase.h"

#include <cerrno>

using namespace DeviceMessages;

/// A device that the event loop serves, on a sequencer in the process.
class TestDeviceCable : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();
    void eventLoopServesThePort();
    void pulledCableTakesThePortAway();
    void cablePutInAgainIsFoundAndServed();
    void deviceThatWasUnpluggedIsPulledToo();
    void cableThatIsInIsPutInAnew();
    void cableThatCannotBePutInStaysOut();
    void portThatCannotBeReadVanishes();
    void itsEndPullsIt();

  private:
    std::unique_ptr<CSimulatedDevice> m_device;
    std::unique_ptr<CDeviceCable> m_cable;
};

void TestDeviceCable::init()
{
    CTestCase::init();
    FakeALSA::reset();
    m_device = std::make_unique<CSimulatedDevice>();
    m_cable = std::make_unique<CDeviceCable>(*m_device, [] { return std::make_unique<CALSADeviceTransport>(3); });
}

void TestDeviceCable::cleanup()
{
    m_cable.reset();
    m_device.reset();
}

void TestDeviceCable::eventLoopServesThePort()
{
    QCOMPARE(m_cable->putIn(), QString());
    const COtherClient editor(FakeALSA::newestOpenClient(), k_editorPort);
    QVERIFY(editor.connected);
    editor.send(start());
    QTRY_COMPARE(editor.received(), QByteArrayList{start()});
    editor.send(keep());
    QTRY_COMPARE(editor.received(), QByteArrayList({start(), keep()}));
    QVERIFY(m_cable->description().startsWith("ALSA sequencer client \"Trellwick KTZ-JX\", port "));
}

void TestDeviceCable::pulledCableTakesThePortAway()
{
    QCOMPARE(m_cable->putIn(), QString());
    m_cable->pull();
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
    QVERIFY(!m_device->isPlugged());
    QCOMPARE(m_cable->description(), QString());
    m_cable->pull();
    QTRY_VERIFY(m_cable->children().isEmpty()); // nothing waits for it any more
}

void TestDeviceCable::cablePutInAgainIsFoundAndServed()
{
    QCOMPARE(m_cable->putIn(), QString());
    m_device->turn(3, 64);
    m_cable->pull();
    QCOMPARE(m_cable->putIn(), QString());
    const int client = FakeALSA::newestOpenClient();
    QCOMPARE(FakeALSA::clientName(client), QByteArray("Trellwick KTZ-JX"));
    QCOMPARE(FakeALSA::portName(client, k_editorPort), QByteArray("Port3"));
    const COtherClient editor(client, k_editorPort);
    editor.send(start());
    QTRY_COMPARE(editor.received(), QByteArrayList{start()});
    QCOMPARE(m_device->value(3), 64);
}

void TestDeviceCable::deviceThatWasUnpluggedIsPulledToo()
{
    QCOMPARE(m_cable->putIn(), QString());
    m_device->unplug();
    m_cable->pull();
    QCOMPARE(m_cable->putIn(), QString());
    const COtherClient editor(FakeALSA::newestOpenClient(), k_editorPort);
    editor.send(keep());
    QTRY_COMPARE(editor.received(), QByteArrayList{keep()});
}

void TestDeviceCable::cableThatIsInIsPutInAnew()
{
    QCOMPARE(m_cable->putIn(), QString());
    QCOMPARE(m_cable->putIn(), QString());
    QVERIFY(m_device->isPlugged());
    m_cable->pull();
    QCOMPARE(FakeALSA::newestOpenClient(), -1); // there was one port at a time
}

void TestDeviceCable::cableThatCannotBePutInStaysOut()
{
    FakeALSA::failNext("snd_seq_open", -ENODEV);
    QCOMPARE(m_cable->putIn(), QStringLiteral("cannot open the ALSA sequencer: No such device"));
    QVERIFY(!m_device->isPlugged());
    QCOMPARE(m_cable->description(), QString());
    QCOMPARE(m_cable->putIn(), QString());
    QVERIFY(m_device->isPlugged());
}

void TestDeviceCable::portThatCannotBeReadVanishes()
{
    QCOMPARE(m_cable->putIn(), QString());
    const COtherClient editor(FakeALSA::newestOpenClient(), k_editorPort);
    FakeALSA::failNext("snd_seq_event_input", -ENODEV);
    editor.send(start());
    QTRY_VERIFY(!m_device->isPlugged());
    QCOMPARE(m_cable->description(), QString());
    QCOMPARE(m_cable->putIn(), QString());
    QVERIFY(m_device->isPlugged());
}

void TestDeviceCable::itsEndPullsIt()
{
    QCOMPARE(m_cable->putIn(), QString());
    m_cable.reset();
    QVERIFY(!m_device->isPlugged());
    QCOMPARE(FakeALSA::newestOpenClient(), -1);
}

KTZ_TEST(QCoreApplication, TestDeviceCable)
#include "TestDeviceCable.moc"
