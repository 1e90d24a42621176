#include "tests/app/StageFile.h"
#include "tests/faults/CFaultTest.h"
#include "tests/faults/EditorCommands.h"
#include "tests/support/CMessageBoxAnswer.h"

#include <thread>

using namespace std::chrono_literals;

/// Messages to the device that are refused, or stay on their way for a while, at each point of each command.
class TestSendFaults : public CFaultTest
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void refusedOnce_data();
    void refusedOnce();
    void refusedFromThenOn_data();
    void refusedFromThenOn();
    void heldUp_data();
    void heldUp();
    void heldUpKeepMessage();
    void closedWhileAKeepMessageIsHeldUp();

  private:
    /// The fetched row's command on an editor whose settings are neither the initial ones nor the preset's.
    void runCommand();

    std::unique_ptr<FaultFixture> m_fixture;
    std::unique_ptr<CMessageBoxAnswer> m_boxes;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::array<KnobSettings, k_numOfKnobs> m_before{}; ///< what the device held before the command
};

void TestSendFaults::init()
{
    CFaultTest::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_boxes = std::make_unique<CMessageBoxAnswer>(QMessageBox::Ok);
    m_fixture = std::make_unique<FaultFixture>();
    m_fixture->startEdited();
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        m_before.at(static_cast<std::size_t>(knob)) = m_fixture->device.settings(knob);
}

void TestSendFaults::cleanup()
{
    m_fixture.reset();
    m_boxes.reset();
    m_folder.reset();
    CFaultTest::cleanup();
}

void TestSendFaults::runCommand()
{
    QFETCH(int, command);
    k_editorCommands.at(static_cast<std::size_t>(command)).run(*m_fixture, *m_boxes, stageFile(*m_folder));
}

void TestSendFaults::refusedOnce_data()
{
    addCommandRows();
}

void TestSendFaults::refusedOnce()
{
    QFETCH(int, command);
    QFETCH(int, n);
    const EditorCommand& run = k_editorCommands.at(static_cast<std::size_t>(command));
    m_fixture->device.refuseSend(n);
    runCommand();
    QCOMPARE(FaultFixture::commands().size(), run.messages);
    const int refusedKnob = run.firstKnob + n - 1;
    QCOMPARE(m_fixture->device.settings(refusedKnob), m_before.at(static_cast<std::size_t>(refusedKnob)));
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        // An edit is taken back; of what concerns a whole knob, the editor keeps its own.
        const bool agrees = knob != refusedKnob || run.run == k_editorCommands.front().run;
        QCOMPARE(m_fixture->shown(knob) == m_fixture->device.settings(knob), agrees);
    }
    m_boxes->setAnswer(QMessageBox::Ok);
    const qsizetype questions = m_boxes->boxes().size();
    m_fixture->sendKeep();
    m_fixture->waitForReports();
    QCOMPARE(m_boxes->boxes().size(), questions);
    QVERIFY(m_fixture->isMarkLit());

    // The next edit of the knob sends the whole of it.
    m_fixture->editor(k_maxCategory + refusedKnob)->setValue(77);
    QVERIFY(m_fixture->agrees());
}

void TestSendFaults::refusedFromThenOn_data()
{
    addCommandRows();
}

void TestSendFaults::refusedFromThenOn()
{
    QFETCH(int, command);
    QFETCH(int, n);
    const EditorCommand& run = k_editorCommands.at(static_cast<std::size_t>(command));
    m_fixture->device.refuseSend(n, CSimulatedDevice::k_always);
    runCommand();
    for (int knob = run.firstKnob; knob < run.firstKnob + run.messages; ++knob) {
        const bool isTaken = knob < run.firstKnob + n - 1;
        const KnobSettings before = m_before.at(static_cast<std::size_t>(knob));
        QCOMPARE(m_fixture->device.settings(knob) != before, isTaken);
        QCOMPARE(m_fixture->shown(knob) != before, run.run != k_editorCommands.front().run);
    }
    const qsizetype questions = m_boxes->boxes().size();
    m_boxes->setAnswer(QMessageBox::Ok);
    m_fixture->sendKeep();
    QTRY_COMPARE(m_boxes->boxes().size(), questions + 1);
    QCOMPARE(m_boxes->boxes().last().text, k_connectionErrorMessage);
    m_fixture->verifyLost();

    // Nothing more is tried, neither now nor at the end.
    FaultFixture::forgetSent();
    m_fixture->editor(k_maxCategory)->setValue(77);
    QCOMPARE(m_fixture->shown(0).max, 77);
    m_fixture->window.reset();
    QCOMPARE(FaultFixture::sent(), QStringList());
}

void TestSendFaults::heldUp_data()
{
    addCommandRows();
}

void TestSendFaults::heldUp()
{
    QFETCH(int, command);
    QFETCH(int, n);
    const EditorCommand& run = k_editorCommands.at(static_cast<std::size_t>(command));
    CSendGate& gate = CSimulatedSystem::instance().sendGate();
    gate.hold(n);
    qsizetype sentBefore = -1;
    std::thread hand([&] {
        while (!gate.isHolding())
            std::this_thread::sleep_for(1ms);
        sentBefore = FaultFixture::commands().size();
        for (int value = 0; value < 128; ++value)
            m_fixture->device.turn(6, value);
        gate.release();
    });
    runCommand();
    hand.join();
    QCOMPARE(sentBefore, n - 1);
    QStringList expected;
    for (int knob = run.firstKnob; knob < run.firstKnob + run.messages; ++knob)
        expected.append(changeText(knob, m_fixture->shown(knob)));
    QCOMPARE(FaultFixture::commands(), expected);
    QTRY_VERIFY(m_fixture->agrees());
    QVERIFY(m_fixture->isMarkLit());
}

void TestSendFaults::heldUpKeepMessage()
{
    // On a thread of its own, it keeps nobody from seeing what the device reports.
    CSendGate& gate = CSimulatedSystem::instance().sendGate();
    gate.hold(1);
    std::thread keep([this] { m_fixture->sendKeep(); });
    QTRY_VERIFY(gate.isHolding());
    m_fixture->waitForReports();
    QVERIFY(FaultFixture::sent().isEmpty());
    gate.release();
    keep.join();
    QCOMPARE(FaultFixture::sent(), QStringList{k_keep});
    m_fixture->editor(1104)->setValue(5);
    QVERIFY(m_fixture->agrees());
}

void TestSendFaults::closedWhileAKeepMessageIsHeldUp()
{
    m_fixture.reset();
    m_fixture = std::make_unique<FaultFixture>();
    m_fixture->startConnected(); // with the keep messages of its own thread
    CSendGate& gate = CSimulatedSystem::instance().sendGate();
    gate.hold(1);
    QTRY_VERIFY(gate.isHolding());
    std::atomic<bool> closing = false;
    std::thread hand([&] {
        while (!closing)
            std::this_thread::sleep_for(1ms);
        gate.release();
    });
    closing = true;
    m_fixture->window.reset();
    hand.join();
    QCOMPARE(FaultFixture::sent().last(), k_endText);
    QCOMPARE(FaultFixture::sent().count(k_endText), 1);
}

KTZ_TEST(QApplication, TestSendFaults)
#include "TestSendFaults.moc"
