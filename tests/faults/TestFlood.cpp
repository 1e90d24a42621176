#include "device/CMemAPIProxy.h"
#include "midi/CMIDIInput.h"
#include "tests/faults/CFaultTest.h"
#include "tests/faults/FaultFixture.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/MemoryIsSanitized.h"

#include <semaphore>
#include <thread>

namespace
{
constexpr int k_patience = 60'000; // milliseconds that a slow machine may take for a flood

/// Watches a knob's value on the thread that delivers it, and can make that thread wait.
class CStopper : public QObject, public CMemAPIProxy
{
  public:
    explicit CStopper(QObject* parent) : QObject(parent) {}

    void paramChanged() override
    {
        if (!m_stopping.exchange(false))
            return;
        m_stopped = true;
        m_goOn.acquire();
    }

    void updateMemAPI() override {}

    void stopAtNextReport()
    {
        m_stopping = true;
    }

    [[nodiscard]] bool hasStopped() const
    {
        return m_stopped;
    }

    void goOn()
    {
        m_goOn.release();
    }

  private:
    std::atomic<bool> m_stopping = false;
    std::atomic<bool> m_stopped = false;
    std::binary_semaphore m_goOn{0};
};
} // namespace

/// More messages than anybody can look at.
class TestFlood : public CFaultTest
{
    Q_OBJECT

  private slots:
    void whileTheWindowIsBusy();
    void ofSettings();
    void ofEverythingThatIsNothing();
    void withTheRingFull();
    void whileTheUserEdits();
};

void TestFlood::whileTheWindowIsBusy()
{
    // As if something had kept the window from its events for seconds: the flood ends before it looks again.
    constexpr int k_messages = 100'000;
    FaultFixture fixture;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    const qint64 before = ProcessResources::now().residentKilobytes;
    for (int number = 0; number < k_messages; ++number)
        fixture.device.turn(number % k_numOfKnobs, (number / k_numOfKnobs + number) % 128);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.agrees(), k_patience);
    QVERIFY(answer.boxes().isEmpty());
    QVERIFY(fixture.isMarkLit());
    QCOMPARE(FaultFixture::commands(), QStringList());
    fixture.editor(1104)->setValue(5);
    QCOMPARE(fixture.device.settings(4).cc, 5);
    QCoreApplication::processEvents();
    const qint64 grown = ProcessResources::now().residentKilobytes - before;
    fixture.device.clearTraffic();
    QVERIFY2(k_memoryIsSanitized || grown < 64 * 1024, qPrintable(QString::number(grown)));
}

void TestFlood::ofSettings()
{
    FaultFixture fixture;
    fixture.startConnected();
    for (int number = 0; number < 10'000; ++number) {
        const int knob = number % k_numOfKnobs;
        fixture.device.setSettings(knob,
                                   {number % 128, number % 16, (number * 3) % 128, (number * 5) % 128, number % 4});
        fixture.device.reportSettings(knob);
    }
    QTRY_VERIFY_WITH_TIMEOUT(fixture.agrees(), k_patience);
    QCOMPARE(FaultFixture::commands(), QStringList());
}

void TestFlood::ofEverythingThatIsNothing()
{
    FaultFixture fixture;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    const QList<QByteArray> packets{"\xf8",
                                    "\xfe",
                                    QByteArray(300, '\x11'),
                                    "\xf7",
                                    QByteArray::fromHex("f043103e1805"),
                                    QByteArray::fromHex("f043103e180502040840f7")};
    for (int number = 0; number < 50'000; ++number) // three megabytes, which the ring can hold
        fixture.device.send(packets.at(number % packets.size()));
    fixture.waitForReports();
    QVERIFY(fixture.agrees());
    QVERIFY(answer.boxes().isEmpty());
    QCOMPARE(FaultFixture::commands(), QStringList());
}

void TestFlood::withTheRingFull()
{
    // The delivery thread stands still until the ring has no room; what comes then is lost whole, and asked for again.
    FaultFixture fixture;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    auto* holder = new QWidget(fixture.window.get());
    auto* stopper = new CStopper(holder);
    stopper->setControllerID(k_knobValueCategory + 3);
    fixture.window->initializeSubController(holder);
    stopper->stopAtNextReport();
    fixture.device.turn(3, 100);
    QTRY_VERIFY(stopper->hasStopped());

    for (int packet = 0; packet < 100; ++packet) // six megabytes, of which four fit
        fixture.device.send(QByteArray(CMIDIInput::k_largestRecord, '\x11'));
    for (int turn = 0; turn < 10'000; ++turn)
        fixture.device.turn(2, turn % 128);
    fixture.device.setSettings(5, FaultFixture::stageSettings(5));
    fixture.device.reportSettings(5);
    stopper->goOn();

    // Nobody touches the device any more: the editor asks it for what was lost.
    QTRY_VERIFY_WITH_TIMEOUT(fixture.agrees(), k_patience);
    QCOMPARE(fixture.shown(5), FaultFixture::stageSettings(5));
    QVERIFY(answer.boxes().isEmpty());
    QVERIFY(fixture.isMarkLit());
    QCOMPARE(FaultFixture::commands(), QStringList(k_requestAllText));
}

void TestFlood::whileTheUserEdits()
{
    FaultFixture fixture;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    std::thread hand([&] {
        for (int number = 0; number < 20'000; ++number)
            fixture.device.turn(number % k_numOfKnobs, number % 128);
    });
    QStringList expected;
    for (int number = 0; number < 200; ++number) {
        const int knob = number % k_numOfKnobs;
        fixture.editor(k_maxCategory + knob)->setValue(number % 100);
        expected.append(changeText(knob, fixture.shown(knob)));
        QCoreApplication::processEvents();
    }
    hand.join();
    QTRY_VERIFY_WITH_TIMEOUT(fixture.agrees(), k_patience);
    QCOMPARE(FaultFixture::commands(), expected);
    QVERIFY(answer.boxes().isEmpty());
    QVERIFY(fixture.isMarkLit());
}

KTZ_TEST(QApplication, TestFlood)
#include "TestFlood.moc"
