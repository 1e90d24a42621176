#include "tests/app/StageFile.h"
#include "tests/faults/CFaultTest.h"
#include "tests/faults/EditorCommands.h"
#include "tests/support/CMessageBoxAnswer.h"

#include <thread>

using namespace std::chrono_literals;

/// The cable pulled in each state of the connection, and while a message is on its way.
class TestPulledCable : public CFaultTest
{
    Q_OBJECT

  private slots:
    void beforeTheStart();
    void whileStarting();
    void betweenStartAndTheFirstKeepReply();
    void whileConfirmed();
    void afterALoss();
    void whileClosing();
    void insideAnIncomingMessage();
    void insideAnOutgoingMessage_data();
    void insideAnOutgoingMessage();
    void pluggedInAgain();
};

void TestPulledCable::beforeTheStart()
{
    FaultFixture fixture;
    fixture.plug();
    fixture.device.unplug();
    fixture.startWhole();
    QVERIFY(FaultFixture::sent().isEmpty());
    QVERIFY(!fixture.isMarkLit());
    QVERIFY(!fixture.action(k_revrtString)->isEnabled());
    fixture.editor(1104)->setValue(5);
    QCOMPARE(fixture.editor(1104)->getValue(), 5);
}

void TestPulledCable::whileStarting()
{
    // The editor waits for the device, which comes back as new ports that it does not know; until then it goes on to
    // wait. The first keep message finds no way.
    FaultFixture fixture;
    fixture.plug();
    fixture.device.ignoreStarts(3);
    std::thread hand([&fixture] {
        while (FaultFixture::sent().count(k_startText) < 4)
            std::this_thread::sleep_for(1ms);
        fixture.device.unplug();
    });
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.start();
    hand.join();
    QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
    QVERIFY(!fixture.isMarkLit());
    fixture.window.reset();
    QVERIFY(!FaultFixture::sent().contains(k_endText));
}

void TestPulledCable::betweenStartAndTheFirstKeepReply()
{
    FaultFixture fixture;
    fixture.plug();
    fixture.device.dropKeeps(CSimulatedDevice::k_always);
    fixture.times.keepInterval = 1h;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.start();
    QTRY_COMPARE(fixture.knobLED(7)->getImageIndexByType(k_ledAscent), k_numOfLEDStates - 1);
    QTRY_COMPARE(FaultFixture::sent().count(k_keep), 2); // the keep thread's first pass is over
    fixture.device.unplug();
    fixture.editor(1104)->setValue(5);
    QCOMPARE(fixture.editor(1104)->getValue(), 5);
    QVERIFY(answer.boxes().isEmpty()); // nobody has tried to send since
    fixture.sendKeep();
    QTRY_COMPARE(answer.boxes().size(), 1);
    QCOMPARE(answer.boxes().first().text, k_connectionErrorMessage);
    QVERIFY(!fixture.isMarkLit());
    fixture.window.reset();
    QVERIFY(!FaultFixture::sent().contains(k_endText));
}

void TestPulledCable::whileConfirmed()
{
    FaultFixture fixture;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    fixture.device.unplug();
    QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage)); // at the next keep message
    QCOMPARE(answer.boxes().first().parent, fixture.window.get());
    fixture.verifyLost();
    fixture.window.reset();
    QVERIFY(!FaultFixture::sent().contains(k_endText));
}

void TestPulledCable::afterALoss()
{
    FaultFixture fixture;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    fixture.device.refuseSend(1);
    QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
    answer.forgetBoxes();
    FaultFixture::forgetSent();
    fixture.device.unplug();
    for (int id = 1100; id < 1108; ++id)
        fixture.editor(id)->setValue(5);
    QVERIFY(answer.boxes().isEmpty());
    fixture.verifyLost();
    fixture.window.reset();
    QVERIFY(FaultFixture::sent().isEmpty());
}

void TestPulledCable::whileClosing()
{
    // The end message finds no way, which the device notices by itself.
    FaultFixture fixture;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    QVERIFY(fixture.window->close());
    fixture.device.unplug();
    fixture.window.reset();
    QVERIFY(answer.boxes().isEmpty());
    QCOMPARE(FaultFixture::sent().last(), k_endText);
    QVERIFY(!CSimulatedSystem::instance().packets().last().taken);
    QVERIFY(!fixture.device.received().contains(QByteArray::fromHex(k_endText.toLatin1())));
}

void TestPulledCable::insideAnIncomingMessage()
{
    FaultFixture fixture;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    fixture.device.send(QByteArray::fromHex("f043103e180502030211"));
    fixture.device.unplug();
    QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
    fixture.verifyLost();
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        QCOMPARE(fixture.shown(knob), k_factorySettings.at(static_cast<std::size_t>(knob)));
}

void TestPulledCable::insideAnOutgoingMessage_data()
{
    addCommandRows();
}

void TestPulledCable::insideAnOutgoingMessage()
{
    QFETCH(int, command);
    QFETCH(int, n);
    const EditorCommand& run = k_editorCommands.at(static_cast<std::size_t>(command));
    const QTemporaryDir folder;
    FaultFixture fixture;
    CMessageBoxAnswer boxes(QMessageBox::Ok);
    fixture.startEdited();
    const KnobSettings before = fixture.shown(4);

    CSendGate& gate = CSimulatedSystem::instance().sendGate();
    gate.hold(n);
    std::thread hand([&] {
        while (!gate.isHolding())
            std::this_thread::sleep_for(1ms);
        fixture.device.unplug();
        gate.release();
    });
    run.run(fixture, boxes, stageFile(folder));
    hand.join();
    const QList<SentPacket> packets = CSimulatedSystem::instance().packets();
    for (qsizetype i = 0; i < packets.size(); ++i)
        QCOMPARE(packets.at(i).taken, i < n - 1);
    // An edit that was not sent is taken back; of what concerns whole knobs, the editor keeps its own.
    QCOMPARE(fixture.shown(4) == before, n == 1 && run.run == k_editorCommands.front().run);

    const qsizetype questions = boxes.boxes().size();
    boxes.setAnswer(QMessageBox::Ok);
    fixture.sendKeep();
    QTRY_COMPARE(boxes.boxes().size(), questions + 1);
    QCOMPARE(boxes.boxes().last().text, k_connectionErrorMessage);
    fixture.verifyLost();
}

void TestPulledCable::pluggedInAgain()
{
    // Before anybody noticed: the old ports are gone for good, so that this is a loss like any other.
    FaultFixture fixture;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    fixture.device.unplug();
    fixture.plug();
    QTRY_VERIFY(answer.sawOnly(k_connectionErrorMessage));
    fixture.verifyLost();
    fixture.device.clearTraffic();
    fixture.device.turn(3, 99);
    fixture.editor(1104)->setValue(5);
    QVERIFY(fixture.device.received().isEmpty());
    fixture.window.reset();
    QVERIFY(fixture.device.received().isEmpty());
}

KTZ_TEST(QApplication, TestPulledCable)
#include "TestPulledCable.moc"
