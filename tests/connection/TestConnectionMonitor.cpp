#include "app/common/Constants.h"
#include "connection/CConnectionMonitor.h"
#include "device/CMemAPIWrapper.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/CTestCase.h"
#include "tests/support/SimulatedDeviceFixture.h"

#include <QWidget>

#include <thread>

using namespace std::chrono_literals;

namespace
{
const QString k_keep = QStringLiteral("f043103e18050201f7");

/// So long that it never passes in a test.
constexpr std::chrono::milliseconds k_never = 3600s;
constexpr ConnectionTimes k_calm{.keepInterval = k_never, .watchdog = k_never};

QByteArray keepReply()
{
    return QByteArray::fromHex(k_keep.toLatin1());
}
} // namespace

class TestConnectionMonitor : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void defaultTimes();
    void startSendsTwoKeepsNearlyTogether();
    void keepsGoOutAtTheInterval();
    void firstReplyConnectsOnceAndLaterOnesSayNothing();
    void repliesKeepTheWatchdogFromRunningOut();
    void noReplyAtAllLosesWithoutDisconnected();
    void lossAfterConnectedDisconnectsOnce();
    void failedSendIsALossReportedFromTheEventLoop();
    void secondLossWarnsAgainButDisconnectsOnce();
    void replyBeforeStartChangesNothing();
    void replyFromBeforeStartDoesNotCountAfterIt();
    void replyAfterStopChangesNothing();
    void endOfReceptionIsALossAtOnce();
    void endOfReceptionWithoutAConnectionIsNoLoss();
    void stopEndsThePauseAtOnce();
    void stoppedMonitorStaysStopped();
    void destructionBetweenStartAndFirstReply();
    void withoutAMemory();
    void warningBelongsToTheParentWidget();
    void slotsAreThere();

  private:
    /// A monitor of the memory, with a loss only where a test wants one.
    std::unique_ptr<CConnectionMonitor> monitor(std::chrono::milliseconds keepInterval,
                                                std::chrono::milliseconds watchdog)
    {
        const ConnectionTimes times{.keepInterval = keepInterval, .watchdog = watchdog};
        return std::make_unique<CConnectionMonitor>(nullptr, m_memory.get(), k_jxEditorPortName, times);
    }

    [[nodiscard]] qsizetype keepsReceived() const
    {
        return m_fixture->device.received().count(keepReply());
    }

    std::unique_ptr<SimulatedDeviceFixture> m_fixture;
    std::unique_ptr<CMemAPIWrapper> m_memory;
};

void TestConnectionMonitor::init()
{
    CTestCase::init();
    m_fixture = std::make_unique<SimulatedDeviceFixture>();
    m_fixture->plug();
    m_memory = std::make_unique<CMemAPIWrapper>();
    m_memory->initialize();
}

void TestConnectionMonitor::cleanup()
{
    m_memory.reset();
    m_fixture.reset();
}

void TestConnectionMonitor::defaultTimes()
{
    const ConnectionTimes times;
    QCOMPARE(times.keepInterval, 2000ms);
    QCOMPARE(times.watchdog, 5000ms);
}

void TestConnectionMonitor::startSendsTwoKeepsNearlyTogether()
{
    const auto connection = monitor(k_never, k_never);
    connection->start();
    // One from start() and one from the thread's first pass.
    QTRY_COMPARE(keepsReceived(), 2);
    connection->stop();
    QCOMPARE(keepsReceived(), 2);
}

void TestConnectionMonitor::keepsGoOutAtTheInterval()
{
    const auto connection = monitor(100ms, k_never);
    QElapsedTimer timer;
    timer.start();
    connection->start();
    QTRY_VERIFY(keepsReceived() >= 5);
    // The third to fifth came from the thread, a full interval apart each.
    QVERIFY2(timer.elapsed() >= 300, qPrintable(QString::number(timer.elapsed())));
    connection->stop();
}

void TestConnectionMonitor::firstReplyConnectsOnceAndLaterOnesSayNothing()
{
    const auto connection = monitor(20ms, k_never);
    QSignalSpy connected(connection.get(), SIGNAL(connected()));
    connection->start();
    QTRY_COMPARE(connected.count(), 1);
    QVERIFY(m_memory->isConnected());
    QTRY_VERIFY(keepsReceived() >= 6);
    QCoreApplication::processEvents();
    QCOMPARE(connected.count(), 1);
    connection->stop();
}

void TestConnectionMonitor::repliesKeepTheWatchdogFromRunningOut()
{
    // The interval is a fifth of the watchdog's; three times the watchdog's pass.
    const auto connection = monitor(100ms, 500ms);
    QSignalSpy disconnected(connection.get(), SIGNAL(disconnected()));
    connection->start();
    QTRY_VERIFY_WITH_TIMEOUT(keepsReceived() >= 17, 10'000);
    QCOMPARE(disconnected.count(), 0);
    QVERIFY(m_memory->isConnectOutput());
    connection->stop();
}

void TestConnectionMonitor::noReplyAtAllLosesWithoutDisconnected()
{
    m_fixture->device.goSilent();
    CMessageBoxAnswer answer(QMessageBox::Ok);
    const auto connection = monitor(k_never, 50ms);
    QSignalSpy connected(connection.get(), SIGNAL(connected()));
    QSignalSpy disconnected(connection.get(), SIGNAL(disconnected()));
    connection->start();
    // The keep thread's first pass is over before the event loop lets the watchdog bite.
    while (keepsReceived() < 2)
        std::this_thread::sleep_for(1ms);
    QTRY_COMPARE(answer.boxes().size(), 1);
    QCOMPARE(connected.count(), 0);
    QCOMPARE(disconnected.count(), 0);
    QVERIFY(!m_memory->isConnectOutput());
    QVERIFY(!m_memory->isConnected());
    const CMessageBoxAnswer::Box& box = answer.boxes().first();
    QCOMPARE(box.title, QString());
    QCOMPARE(box.text, QStringLiteral("Lost the connection.\r\nPlease connect the device properly to the computer, and "
                                      "restart this editor."));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::Ok);
    QCOMPARE(box.defaultButton, QMessageBox::Ok);
    // The timer and the thread have ended: nothing more goes out, and no second box comes.
    const qsizetype keeps = keepsReceived();
    QTest::qWait(120);
    QCOMPARE(keepsReceived(), keeps);
    QCOMPARE(answer.boxes().size(), 1);
}

void TestConnectionMonitor::lossAfterConnectedDisconnectsOnce()
{
    CMessageBoxAnswer answer(QMessageBox::Ok);
    const auto connection = monitor(20ms, 200ms);
    QSignalSpy connected(connection.get(), SIGNAL(connected()));
    QSignalSpy disconnected(connection.get(), SIGNAL(disconnected()));
    connection->start();
    QTRY_COMPARE(connected.count(), 1);
    m_fixture->device.goSilent();
    QTRY_COMPARE(disconnected.count(), 1);
    QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
    QCOMPARE(disconnected.count(), 1);
    QVERIFY(!m_memory->isConnected());
}

void TestConnectionMonitor::failedSendIsALossReportedFromTheEventLoop()
{
    m_fixture->device.refuseSend(1, CSimulatedDevice::k_always);
    CMessageBoxAnswer answer(QMessageBox::Ok);
    const auto connection = monitor(k_never, k_never);
    connection->start();
    QVERIFY(answer.boxes().isEmpty());
    QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
    QVERIFY(!m_memory->isConnectOutput());
}

void TestConnectionMonitor::secondLossWarnsAgainButDisconnectsOnce()
{
    CMessageBoxAnswer answer(QMessageBox::Ok);
    const auto connection = monitor(k_never, k_never);
    QSignalSpy disconnected(connection.get(), SIGNAL(disconnected()));
    m_memory->setConnected(true);
    connection->connectionError();
    connection->connectionError();
    QCOMPARE(disconnected.count(), 1);
    QCOMPARE(answer.boxes().size(), 2);
}

void TestConnectionMonitor::replyBeforeStartChangesNothing()
{
    const auto connection = monitor(k_never, k_never);
    QSignalSpy connected(connection.get(), SIGNAL(connected()));
    connection->paramChanged();
    std::thread delivery([&] { connection->paramChanged(); });
    delivery.join();
    QCoreApplication::processEvents();
    QCOMPARE(connected.count(), 0);
    QVERIFY(!m_memory->isConnected());
}

void TestConnectionMonitor::replyFromBeforeStartDoesNotCountAfterIt()
{
    m_fixture->device.goSilent();
    const auto connection = monitor(k_never, k_never);
    QSignalSpy connected(connection.get(), SIGNAL(connected()));
    std::thread delivery([&] { connection->paramChanged(); });
    delivery.join();
    connection->start();
    QCoreApplication::processEvents();
    QCOMPARE(connected.count(), 0);
    QVERIFY(!m_memory->isConnected());
    m_fixture->device.answer();
    m_fixture->device.send(keepReply());
    QTRY_COMPARE(connected.count(), 1);
    connection->stop();
}

void TestConnectionMonitor::endOfReceptionIsALossAtOnce()
{
    CMessageBoxAnswer answer(QMessageBox::Ok);
    const auto connection = monitor(k_never, k_never);
    QSignalSpy disconnected(connection.get(), SIGNAL(disconnected()));
    connection->start();
    QTRY_VERIFY(m_memory->isConnected());
    QTRY_COMPARE(keepsReceived(), 2);
    CSimulatedSystem::instance().endReception();
    QTRY_COMPARE(answer.boxes().size(), 1);
    QCOMPARE(answer.boxes().first().text, k_connectionErrorMessage);
    QCOMPARE(disconnected.count(), 1);
    QVERIFY(!m_memory->isConnectOutput());
}

void TestConnectionMonitor::endOfReceptionWithoutAConnectionIsNoLoss()
{
    CMessageBoxAnswer answer(QMessageBox::Ok);
    const auto connection = monitor(k_never, k_never);
    QSignalSpy lost(connection.get(), SIGNAL(currentThreadConnectionError()));
    QVERIFY(m_memory->receptionEndObserver().notify());
    QCOMPARE(lost.count(), 0);
}

void TestConnectionMonitor::replyAfterStopChangesNothing()
{
    m_fixture->device.goSilent();
    const auto connection = monitor(k_never, k_never);
    QSignalSpy connected(connection.get(), SIGNAL(connected()));
    connection->start();
    connection->stop();
    m_fixture->device.answer();
    m_fixture->device.send(keepReply());
    QTest::qWait(20);
    connection->paramChanged();
    QCOMPARE(connected.count(), 0);
    QVERIFY(!m_memory->isConnected());
}

void TestConnectionMonitor::stopEndsThePauseAtOnce()
{
    const auto connection = monitor(k_never, k_never);
    connection->start();
    QTRY_COMPARE(keepsReceived(), 2);
    connection->stop(); // an hour, were the pause not ended
    QCOMPARE(keepsReceived(), 2);
}

void TestConnectionMonitor::stoppedMonitorStaysStopped()
{
    const auto connection = monitor(5ms, k_never);
    connection->start();
    connection->stop();
    const qsizetype keeps = keepsReceived();
    connection->start();
    QTest::qWait(50);
    // The one that start() itself sends; the thread says nothing more.
    QCOMPARE(keepsReceived(), keeps + 1);
    connection->stop();
}

void TestConnectionMonitor::destructionBetweenStartAndFirstReply()
{
    m_fixture->device.delayReplies(1000);
    {
        const auto connection = monitor(k_never, k_never);
        connection->start();
    }
    // The reply comes when nobody is there to hear it.
    m_fixture->device.advance(1000);
    QCoreApplication::processEvents();
    QVERIFY(!m_memory->isConnected());
}

void TestConnectionMonitor::withoutAMemory()
{
    CMessageBoxAnswer answer(QMessageBox::Ok);
    CConnectionMonitor connection(nullptr, nullptr, k_jxEditorPortName, k_calm);
    QSignalSpy connected(&connection, SIGNAL(connected()));
    connection.start();
    connection.paramChanged();
    QCOMPARE(connected.count(), 0);
    connection.connectionError();
    QCOMPARE(answer.boxes().size(), 1);

    CConnectionThread thread(nullptr, k_never);
    thread.start();
    QVERIFY(thread.wait(5000));
    thread.stop(); // nothing is left to stop
}

void TestConnectionMonitor::warningBelongsToTheParentWidget()
{
    QWidget window;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    auto* connection = new CConnectionMonitor(&window, m_memory.get(), k_jxEditorPortName, k_calm);
    connection->connectionError();
    QCOMPARE(answer.boxes().size(), 1);
    QCOMPARE(answer.boxes().first().parent, &window);
    QCOMPARE(answer.boxes().first().buttonWidths, QList<int>{90});
}

void TestConnectionMonitor::slotsAreThere()
{
    const QMetaObject& meta = CConnectionMonitor::staticMetaObject;
    QVERIFY(meta.indexOfSlot("paramChanged()") >= 0);
    QVERIFY(meta.indexOfSlot("connectionError()") >= 0);
    for (const char* name :
         {"connected()", "disconnected()", "currentThreadParamChanged()", "currentThreadConnectionError()"})
        QVERIFY(meta.indexOfSignal(name) >= 0);
}

KTZ_TEST(QApplication, TestConnectionMonitor)
#include "TestConnectionMonitor.moc"
