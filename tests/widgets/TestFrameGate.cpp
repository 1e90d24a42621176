#include "tests/support/CTestCase.h"
#include "widgets/CFrameGate.h"

#include <QElapsedTimer>

using namespace std::chrono_literals;

class TestFrameGate : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void quietGateLetsARequestThroughAtOnce();
    void requestWithinTheFrameWaits();
    void requestAtTheFramesEndPassesAtOnce();
    void manyRequestsWithinAFrameGiveOne();
    void lastRequestIsNeverLost();
    void nothingRunsAtRest();
    void floodStaysBelow60Frames();
    void gatesThatWaitPassTogether();

  private:
    std::chrono::milliseconds m_now{0};
};

void TestFrameGate::init()
{
    CTestCase::init();
    m_now = 5s;
}

void TestFrameGate::quietGateLetsARequestThroughAtOnce()
{
    CFrameGate gate(nullptr, [this] { return m_now; });
    QSignalSpy frames(&gate, &CFrameGate::frame);
    gate.request();
    QCOMPARE(frames.count(), 1);
    m_now += 1s;
    gate.request();
    QCOMPARE(frames.count(), 2);
}

void TestFrameGate::requestWithinTheFrameWaits()
{
    CFrameGate gate(nullptr, [this] { return m_now; });
    QSignalSpy frames(&gate, &CFrameGate::frame);
    gate.request();
    m_now += 5ms;
    gate.request();
    QCOMPARE(frames.count(), 1);
    QVERIFY(gate.isPending());
    QTRY_COMPARE(frames.count(), 2);
}

void TestFrameGate::requestAtTheFramesEndPassesAtOnce()
{
    CFrameGate gate(nullptr, [this] { return m_now; });
    QSignalSpy frames(&gate, &CFrameGate::frame);
    gate.request();
    m_now += CFrameGate::k_interval;
    gate.request();
    QCOMPARE(frames.count(), 2);
    QVERIFY(!gate.isPending());
}

void TestFrameGate::manyRequestsWithinAFrameGiveOne()
{
    CFrameGate gate(nullptr, [this] { return m_now; });
    QSignalSpy frames(&gate, &CFrameGate::frame);
    gate.request();
    for (int i = 0; i < 100; ++i)
        gate.request();
    QTRY_VERIFY(!gate.isPending());
    QCOMPARE(frames.count(), 2);
}

void TestFrameGate::lastRequestIsNeverLost()
{
    CFrameGate gate;
    int requested = 0;
    int shown = 0;
    connect(&gate, &CFrameGate::frame, this, [&] { shown = requested; });
    for (requested = 1; requested <= 1000; ++requested) {
        gate.request();
        QCoreApplication::processEvents();
    }
    --requested;
    QTRY_COMPARE(shown, requested);
}

void TestFrameGate::nothingRunsAtRest()
{
    CFrameGate gate(nullptr, [this] { return m_now; });
    QVERIFY(!gate.isPending());
    gate.request();
    QVERIFY(!gate.isPending());
    gate.request();
    QVERIFY(gate.isPending());
    QTRY_VERIFY(!gate.isPending());
}

void TestFrameGate::floodStaysBelow60Frames()
{
    CFrameGate gate;
    int frames = 0;
    connect(&gate, &CFrameGate::frame, this, [&] { ++frames; });
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 200) {
        gate.request();
        QCoreApplication::processEvents();
    }
    QVERIFY(frames >= 2);
    // The time may begin and end within a frame.
    QVERIFY(frames <= timer.elapsed() / CFrameGate::k_interval.count() + 2);
}

void TestFrameGate::gatesThatWaitPassTogether()
{
    CFrameGate first(nullptr, [this] { return m_now; });
    CFrameGate second(nullptr, [this] { return m_now; });
    const auto endOfWait = [this](CFrameGate& gate) {
        gate.request(); // passes
        gate.request(); // waits
        return m_now + gate.findChild<QTimer*>()->intervalAsDuration();
    };
    const std::chrono::milliseconds firstEnd = endOfWait(first);
    m_now += 4ms;
    QCOMPARE(endOfWait(second).count(), firstEnd.count());
}

KTZ_TEST(QCoreApplication, TestFrameGate)
#include "TestFrameGate.moc"
