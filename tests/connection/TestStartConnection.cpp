#include "app/common/Constants.h"
#include "connection/CStartConnectionManager.h"
#include "device/CMemAPIWrapper.h"
#include "tests/support/CTestCase.h"
#include "tests/support/SimulatedDeviceFixture.h"

using namespace std::chrono_literals;

namespace
{
const QString k_start = QStringLiteral("f043103e18050200f7");
constexpr ConnectionTimes k_times{.startInterval = 30ms};
} // namespace

class TestStartConnection : public CTestCase
{
    Q_OBJECT

  private slots:
    void intervalIsOneSecondUnlessToldOtherwise();
    void deviceAnswersTheFirstStart();
    void deviceAnswersTheThirdStart();
    void failedSendsDoNotEndTheLoop();
    void answerBeforeTheFirstSendGivesFalse();
    void resultIsThatOfTheLastSend();
    void answerAfterTheManagerIsGone();
    void withoutAMemory();
    void singleSteps();
};

void TestStartConnection::intervalIsOneSecondUnlessToldOtherwise()
{
    QCOMPARE(ConnectionTimes().startInterval, 1000ms);
}

void TestStartConnection::deviceAnswersTheFirstStart()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    CStartConnectionManager manager(&memory, k_jxEditorPortName, ConnectionTimes{.startInterval = 200ms});
    QElapsedTimer timer;
    timer.start();
    QVERIFY(manager.sendStartMessage());
    // The answer came at once, and is seen after the first pause.
    QVERIFY(timer.elapsed() >= 200);
    QCOMPARE(fixture.sent(), QStringList{k_start});
}

void TestStartConnection::deviceAnswersTheThirdStart()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    fixture.device.ignoreStarts(2);
    CMemAPIWrapper memory;
    memory.initialize();
    CStartConnectionManager manager(&memory, k_jxEditorPortName, ConnectionTimes{.startInterval = 200ms});
    QElapsedTimer timer;
    timer.start();
    QVERIFY(manager.sendStartMessage());
    QVERIFY(timer.elapsed() >= 600);
    QCOMPARE(fixture.sent(), (QStringList{k_start, k_start, k_start}));
}

void TestStartConnection::failedSendsDoNotEndTheLoop()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    fixture.device.refuseSend(1, 3);
    CMemAPIWrapper memory;
    memory.initialize();
    CStartConnectionManager manager(&memory, k_jxEditorPortName, k_times);
    QVERIFY(manager.sendStartMessage());
    QVERIFY(fixture.sent().size() >= 4);
}

void TestStartConnection::answerBeforeTheFirstSendGivesFalse()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    CStartConnectionManager manager(&memory, k_jxEditorPortName, k_times);
    manager.paramChanged();
    QVERIFY(!manager.sendStartMessage());
    QVERIFY(fixture.sent().isEmpty());
}

void TestStartConnection::resultIsThatOfTheLastSend()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    fixture.device.refuseSend(1, CSimulatedDevice::k_always);
    CMemAPIWrapper memory;
    memory.initialize();
    CStartConnectionManager manager(&memory, k_jxEditorPortName, k_times);
    // An answer to a message that another program sent ends the loop all the same.
    fixture.device.send(QByteArray::fromHex(k_start.toLatin1()));
    const bool result = manager.sendStartMessage();
    QVERIFY(!result);
}

void TestStartConnection::answerAfterTheManagerIsGone()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    {
        const CStartConnectionManager manager(&memory, k_jxEditorPortName, k_times);
    }
    const QByteArray start = QByteArray::fromHex(k_start.toLatin1());
    QVERIFY(!memory.messageReceived(reinterpret_cast<const unsigned char*>(start.constData()),
                                    static_cast<int>(start.size())));
}

void TestStartConnection::withoutAMemory()
{
    CStartConnectionManager manager(nullptr, k_jxEditorPortName, k_times);
    manager.paramChanged();
    QVERIFY(!manager.sendStartMessage());
}

void TestStartConnection::singleSteps()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    fixture.device.ignoreStarts(1);
    CMemAPIWrapper memory;
    memory.initialize();
    CStartConnectionManager start(&memory, k_jxEditorPortName, k_times);
    QVERIFY(!start.isAnswered());
    QVERIFY(start.sendOnce());
    QCOMPARE(fixture.sent(), QStringList{k_start});
    QVERIFY(!start.isAnswered());
    QVERIFY(start.sendOnce());
    QTRY_VERIFY(start.isAnswered());
    fixture.device.unplug();
    QVERIFY(!start.sendOnce());
}

KTZ_TEST(QCoreApplication, TestStartConnection)
#include "TestStartConnection.moc"
