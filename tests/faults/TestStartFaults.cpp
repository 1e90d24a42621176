#include "tests/app/StageFile.h"
#include "tests/faults/CFaultTest.h"
#include "tests/faults/FaultFixture.h"
#include "tests/support/CMessageBoxAnswer.h"

#include <thread>

using namespace std::chrono_literals;

namespace
{
/// The editor has sent so many start messages, or more where the answer was seen late, and then its request.
void verifyStarted(int starts)
{
    QStringList commands = FaultFixture::commands();
    QVERIFY(commands.count(k_startText) >= starts);
    commands.removeDuplicates();
    QCOMPARE(commands, QStringList({k_startText, k_requestAllText}));
}
} // namespace

/// A device that answers late or not, while the editor starts and afterwards.
class TestStartFaults : public CFaultTest
{
    Q_OBJECT

  private slots:
    void lateAnswerToStart_data();
    void lateAnswerToStart();
    void startThatCannotBeSent();
    void requestThatCannotBeSent();
    void droppedKeeps_data();
    void droppedKeeps();
    void noKeepReplyAtAll();
    void deviceThatSaysNothingButStart();
    void refusedPorts();
    void heldInputIsAsGoodAsNoDevice();
    void slowDeviceIsHeardBeforeTheStartUpEnds_data();
    void slowDeviceIsHeardBeforeTheStartUpEnds();
};

void TestStartFaults::lateAnswerToStart_data()
{
    QTest::addColumn<int>("unanswered"); // one start message an interval, which is a second outside of tests
    QTest::newRow("at once") << 0;
    QTest::newRow("after one interval") << 1;
    QTest::newRow("after ten intervals") << 10;
}

void TestStartFaults::lateAnswerToStart()
{
    QFETCH(int, unanswered);
    FaultFixture fixture;
    fixture.device.setSettings(3, FaultFixture::stageSettings(3));
    fixture.plug();
    fixture.device.ignoreStarts(unanswered);
    fixture.startWhole();
    QTRY_VERIFY(fixture.isMarkLit());
    verifyStarted(unanswered + 1);
    QVERIFY(fixture.agrees());
    QVERIFY(fixture.action(k_revrtString)->isEnabled());
    QVERIFY(fixture.menuBar()->isEnabled());
}

void TestStartFaults::startThatCannotBeSent()
{
    FaultFixture fixture;
    fixture.plug();
    fixture.device.refuseSend(1, 3);
    fixture.startWhole();
    QTRY_VERIFY(fixture.isMarkLit());
    verifyStarted(4);
    QVERIFY(fixture.agrees());
}

void TestStartFaults::requestThatCannotBeSent()
{
    // Start and two keep messages come before it, the second of them on a thread of its own.
    FaultFixture fixture;
    fixture.plug();
    fixture.device.setSettings(3, FaultFixture::stageSettings(3));
    fixture.device.refuseSend(3, CSimulatedDevice::k_always);
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.start();
    QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
    QVERIFY(!fixture.isMarkLit());
    QCOMPARE(fixture.editor(1103)->getValue(), k_factorySettings.at(3).cc);
    QCOMPARE(fixture.device.settings(3), FaultFixture::stageSettings(3));
}

void TestStartFaults::droppedKeeps_data()
{
    QTest::addColumn<int>("dropped");
    QTest::addColumn<int>("interval"); // milliseconds
    QTest::addColumn<int>("watchdog"); // milliseconds
    QTest::addColumn<bool>("lost");
    QTest::newRow("once, within the watchdog's time") << 1 << 50 << 3'600'000 << false;
    QTest::newRow("twice, within the watchdog's time") << 2 << 50 << 3'600'000 << false;
    QTest::newRow("twice, which is too long") << 2 << 600 << 1200 << true;
    QTest::newRow("for good") << CSimulatedDevice::k_always << 100 << 1500 << true;
}

void TestStartFaults::droppedKeeps()
{
    QFETCH(int, dropped);
    QFETCH(int, interval);
    QFETCH(int, watchdog);
    QFETCH(bool, lost);
    FaultFixture fixture;
    fixture.times.keepInterval = std::chrono::milliseconds(interval);
    fixture.times.watchdog = std::chrono::milliseconds(watchdog);
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    fixture.device.dropKeeps(dropped);
    if (lost) {
        QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
        fixture.verifyLost();
        const qsizetype sent = FaultFixture::sent().size();
        fixture.editor(1104)->setValue(5);
        QCOMPARE(fixture.editor(1104)->getValue(), 5); // kept, to be saved
        QCOMPARE(FaultFixture::sent().size(), sent);
        return;
    }
    QTRY_VERIFY(FaultFixture::sent().count(k_keep) > dropped + 1);
    QVERIFY(answer.boxes().isEmpty());
    QVERIFY(fixture.isMarkLit());
    fixture.editor(1104)->setValue(5);
    QCOMPARE(fixture.device.settings(4).cc, 5);
    fixture.waitForReports();
    QVERIFY(fixture.agrees());
}

void TestStartFaults::noKeepReplyAtAll()
{
    FaultFixture fixture;
    fixture.plug();
    fixture.device.dropKeeps(CSimulatedDevice::k_always);
    fixture.times.watchdog = 500ms;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.start();
    fixture.editor(1104)->setValue(5);
    QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
    QVERIFY(!fixture.isMarkLit());
    // An edit before the first keep reply stays in the editor.
    verifyStarted(1);
    QCOMPARE(fixture.device.settings(4), k_factorySettings.at(4));
    fixture.window.reset();
    QVERIFY(!FaultFixture::sent().contains(k_endText));
}

void TestStartFaults::deviceThatSaysNothingButStart()
{
    FaultFixture fixture;
    fixture.device.setSettings(3, FaultFixture::stageSettings(3));
    fixture.plug();
    fixture.times.watchdog = 500ms;
    fixture.device.delayReplies(1);
    // The clock of the device moves once: what it says later stays with it.
    std::thread hand([&] {
        while (FaultFixture::sent().isEmpty())
            std::this_thread::sleep_for(1ms);
        fixture.device.advance(1);
    });
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.start();
    hand.join();
    QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
    QVERIFY(!fixture.isMarkLit());
    QCOMPARE(fixture.editor(1103)->getValue(), k_factorySettings.at(3).cc);
}

void TestStartFaults::refusedPorts()
{
    // Someone else has them, say: the editor works on files alone, as without a device.
    FaultFixture fixture;
    fixture.plug();
    CSimulatedSystem::instance().refuseOpens(2);
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.start();
    fixture.editor(1104)->setValue(5);
    QCOMPARE(fixture.editor(1104)->getValue(), 5);
    QVERIFY(!fixture.action(k_revrtString)->isEnabled());
    QVERIFY(answer.boxes().isEmpty());
    QVERIFY(FaultFixture::sent().isEmpty());
}

void TestStartFaults::heldInputIsAsGoodAsNoDevice()
{
    // Another program reads from the device's raw port: writing would work, but no answer could be heard.
    FaultFixture fixture;
    fixture.plug();
    CSimulatedSystem::instance().refuseOpens(1);
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.start();
    fixture.editor(1104)->setValue(5);
    QCOMPARE(fixture.editor(1104)->getValue(), 5);
    QVERIFY(!fixture.action(k_revrtString)->isEnabled());
    QVERIFY(!fixture.isMarkLit());
    QVERIFY(answer.boxes().isEmpty());
    QVERIFY(FaultFixture::sent().isEmpty());
}

void TestStartFaults::slowDeviceIsHeardBeforeTheStartUpEnds_data()
{
    QTest::addColumn<int>("unanswered"); // start messages, one an interval
    QTest::addColumn<bool>("says");      // more than the answer to start
    QTest::addColumn<bool>("hasFile");
    for (const bool hasFile : {false, true}) {
        const QByteArray file = hasFile ? ", with a file" : "";
        QTest::newRow("at once" + file) << 0 << true << hasFile;
        QTest::newRow("longer than the splash's minimum" + file) << 3 << true << hasFile;
        QTest::newRow("longer than the splash's longest wait" + file) << 6 << true << hasFile;
        QTest::newRow("never says more" + file) << 6 << false << hasFile;
    }
}

void TestStartFaults::slowDeviceIsHeardBeforeTheStartUpEnds()
{
    QFETCH(int, unanswered);
    QFETCH(bool, says);
    QFETCH(bool, hasFile);
    FaultFixture fixture;
    const auto held = [](int knob) { return KnobSettings{60 + knob, 15 - knob, 90 + knob, 40 + knob, 1}; };
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        fixture.device.setSettings(knob, held(knob));
    fixture.plug();
    fixture.device.ignoreStarts(unanswered);
    // Everything twenty times as fast as outside of tests.
    fixture.times = {.startInterval = 50ms, .keepInterval = 100ms, .watchdog = 1h};
    fixture.splashTimes = {.tick = 5ms, .fill = 85ms, .minimumShow = 100ms, .longestWait = 250ms, .slide = 50ms};
    // Its answers take half a second, in that measure; one that says nothing more has its clock stand still then.
    fixture.device.delayReplies(25);
    std::jthread hand([&](const std::stop_token& stop) {
        while (FaultFixture::sent().size() <= unanswered)
            std::this_thread::sleep_for(1ms);
        fixture.device.advance(25);
        while (says && !stop.stop_requested()) {
            std::this_thread::sleep_for(1ms);
            fixture.device.advance(1);
        }
    });
    CMainWindow& window = fixture.start();
    const QTemporaryDir folder;
    if (hasFile)
        window.setApplicationFilePath(stageFile(folder));
    QTRY_VERIFY(!window.isInitializing());

    CMessageBoxAnswer answer(QMessageBox::Yes);
    if (hasFile) {
        // The file is the last to have spoken.
        QTest::qWait(1);
        for (int knob = 0; knob < k_numOfKnobs; ++knob) {
            QCOMPARE(fixture.shown(knob), FaultFixture::stageSettings(knob));
            QCOMPARE(fixture.device.settings(knob), FaultFixture::stageSettings(knob));
        }
    }
    QTRY_VERIFY(!window.findChild<CSplashView*>());
    QVERIFY(window.close());
    QVERIFY(answer.boxes().isEmpty()); // nobody changed anything
    fixture.action(k_revrtString)->trigger();
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        QCOMPARE(fixture.shown(knob), says ? held(knob) : k_factorySettings.at(std::size_t(knob)));
}

KTZ_TEST(QApplication, TestStartFaults)
#include "TestStartFaults.moc"
