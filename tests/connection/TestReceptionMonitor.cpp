#include "connection/CReceptionMonitor.h"
#include "device/CMemAPIWrapper.h"
#include "tests/support/CTestCase.h"
#include "tests/support/SimulatedDeviceFixture.h"

#include <QSemaphore>

#include <thread>

using namespace std::chrono_literals;

namespace
{
/// A device memory that hears of losses, and a pause that ends when a test has its timer run out.
struct LossFixture : SimulatedDeviceFixture
{
    LossFixture()
    {
        plug();
        memory.initialize();
    }

    /// The system loses something, and the editor hears of it.
    void lose() const
    {
        std::atomic<bool> heard = false; // on the delivery thread
        const auto connection = QObject::connect(
            &monitor, &CReceptionMonitor::overran, &monitor, [&] { heard = true; }, Qt::DirectConnection);
        CSimulatedSystem::instance().overrunInputs();
        QTRY_VERIFY(heard);
        QObject::disconnect(connection);
        QCoreApplication::sendPostedEvents();
    }

    [[nodiscard]] static qsizetype requests()
    {
        return sent().count(QStringLiteral("f043303e180502007ff7"));
    }

    CMemAPIWrapper memory;
    CReceptionMonitor monitor{nullptr, &memory, {.requestPause = 1h}};
};
} // namespace

class TestReceptionMonitor : public CTestCase
{
    Q_OBJECT

  private slots:
    void pauseIsOneSecondUnlessToldOtherwise();
    void nothingLostAsksNothing();
    void lossIsAskedForAtOnce();
    void lossesInThePauseAreAskedForOnceAfterIt();
    void lossThatEndsTheMonitorsLifeIsIgnored();
    void monitorGoesAfterALossThatIsBeingTold();
    void lostDeviceIsNotAsked();
};

void TestReceptionMonitor::pauseIsOneSecondUnlessToldOtherwise()
{
    QCOMPARE(ConnectionTimes().requestPause, 1s);
}

void TestReceptionMonitor::nothingLostAsksNothing()
{
    LossFixture fixture;
    fixture.device.turn(3, 64);
    QTRY_COMPARE(fixture.memory.getKnob(1003), 64);
    QCoreApplication::processEvents();
    QCOMPARE(LossFixture::requests(), 0);
}

void TestReceptionMonitor::lossIsAskedForAtOnce()
{
    LossFixture fixture;
    fixture.device.setValue(3, 64); // what was lost
    fixture.lose();
    QCOMPARE(LossFixture::requests(), 1);
    QTRY_COMPARE(fixture.memory.getKnob(1003), 64);
}

void TestReceptionMonitor::lossesInThePauseAreAskedForOnceAfterIt()
{
    LossFixture fixture;
    fixture.lose();
    fixture.lose();
    fixture.lose();
    QCOMPARE(LossFixture::requests(), 1);
    auto* pause = fixture.monitor.findChild<QTimer*>();
    QVERIFY(pause->isActive());
    pause->start(0);
    QTRY_COMPARE(LossFixture::requests(), 2);
    // That one has a pause too, in which nothing is lost any more.
    pause->start(0);
    QTRY_VERIFY(!pause->isActive());
    QCOMPARE(LossFixture::requests(), 2);
    fixture.lose();
    QCOMPARE(LossFixture::requests(), 3);
}

void TestReceptionMonitor::lossThatEndsTheMonitorsLifeIsIgnored()
{
    SimulatedDeviceFixture fixture;
    fixture.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    {
        CReceptionMonitor monitor(nullptr, &memory);
    }
    QVERIFY(!memory.overrunObserver().notify());
}

void TestReceptionMonitor::monitorGoesAfterALossThatIsBeingTold()
{
    CMemAPIWrapper memory;
    auto monitor = std::make_unique<CReceptionMonitor>(nullptr, &memory);
    QSemaphore entered;
    QSemaphore leave;
    std::atomic<bool> left = false;
    const auto tell = [&] {
        entered.release();
        leave.acquire();
        left = true;
    };
    connect(monitor.get(), &CReceptionMonitor::overran, monitor.get(), tell, Qt::DirectConnection);
    std::thread delivery([&] { memory.receptionOverran(); });
    entered.acquire();
    std::thread release([&] {
        // So that whoever does not wait for the call is through by then.
        std::this_thread::sleep_for(20ms);
        leave.release();
    });
    monitor.reset();
    const bool waited = left;
    delivery.join();
    release.join();
    QVERIFY(waited);
}

void TestReceptionMonitor::lostDeviceIsNotAsked()
{
    LossFixture fixture;
    fixture.memory.setOutputConnection(k_jxEditorPortName, false);
    fixture.lose();
    QCOMPARE(LossFixture::requests(), 0);
}

KTZ_TEST(QCoreApplication, TestReceptionMonitor)
#include "TestReceptionMonitor.moc"
