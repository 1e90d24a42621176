#include "tests/ctl/CtlFixture.h"

#include <QJsonArray>

#include <csignal>
#include <fcntl.h>
#include <thread>

namespace
{
constexpr int k_noDevice = int(CtlStatus::NoDevice);
constexpr int k_noAnswer = int(CtlStatus::NoAnswer);
constexpr int k_fileError = int(CtlStatus::FileError);

/// Plugs in a device that is connected by exactly so many packets: start, and two keeps, of which another thread sends
/// one. The first one goes unanswered, so that both are waited for.
constexpr int k_packetsToConnect = 3;
void plugCountable(CtlFixture& fixture)
{
    fixture.plug();
    fixture.device.dropKeeps(1);
}
} // namespace

class TestCtlFaults : public CTestCase
{
    Q_OBJECT

  private slots:
    void withoutADeviceStatus3AtOnce_data();
    void withoutADeviceStatus3AtOnce();
    void missingPortIsNamed();
    void portThatCannotBeOpened();
    void runningProgramHasTheDevice_data();
    void runningProgramHasTheDevice();
    void programThatIsMetLooksAgain_data();
    void programThatIsMetLooksAgain();
    void silentDeviceIsStartedThreeTimes();
    void thirdStartIsAnswered();
    void deviceThatAnswersNoKeepIsLost();
    void deviceThatSaysNotWhatItHolds();
    void repliesInPieces();
    void waitsForADeviceThatIsPluggedInLater();
    void waitsForAnAnswer();
    void waitsUntilTheOtherProgramHasEnded();
    void waitEnds();
    void lossInTheMiddleOfALoad();
    void lossDuringVerify();
    void deviceThatHoldsSomethingElse();
    void stopBeforeTheAnswer();
    void stopBeforeTheAnswerCanCome();
    void stopWhileWaiting();
    void stopInTheMiddleOfALoad();
    void fileThatCannotBeLoadedReachesNoDevice_data();
    void fileThatCannotBeLoadedReachesNoDevice();
    void fileThatCannotBeSaved_data();
    void fileThatCannotBeSaved();
    void outputThatIsFull();
    void outputThatNobodyReads();
    void stopWhileTheOutputIsNotRead();
};

void TestCtlFaults::withoutADeviceStatus3AtOnce_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("show") << QStringList{"show"};
    QTest::newRow("get") << QStringList{"get", "1"};
    QTest::newRow("set") << QStringList{"set", "1.cc=1"};
    QTest::newRow("save") << QStringList{"save", "/nonexistent/a"};
    QTest::newRow("copy") << QStringList{"copy", "1", "2"};
    QTest::newRow("reset") << QStringList{"reset"};
    QTest::newRow("diff") << QStringList{"diff", "device", "factory"};
    QTest::newRow("diff the other way round") << QStringList{"diff", "factory", "device"};
    QTest::newRow("watch") << QStringList{"watch"};
    QTest::newRow("dry run") << QStringList{"reset", "--dry-run"};
}

void TestCtlFaults::withoutADeviceStatus3AtOnce()
{
    QFETCH(QStringList, arguments);
    CtlFixture fixture;
    const CtlOutcome outcome = fixture.run(arguments);
    QCOMPARE(outcome.status, k_noDevice);
    QCOMPARE(outcome.output, QString());
    QCOMPARE(outcome.errors, "ktz-jxctl: no device: this system has no MIDI ports\n");
}

void TestCtlFaults::missingPortIsNamed()
{
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome outcome = fixture.run({"show", "--port", "Elsewhere"});
    QCOMPARE(outcome.status, k_noDevice);
    QCOMPARE(outcome.errors, "ktz-jxctl: no device: there is no port \"Elsewhere\"\n");
}

void TestCtlFaults::portThatCannotBeOpened()
{
    CtlFixture fixture;
    fixture.plug();
    CSimulatedSystem::instance().refuseOpens(1);
    const CtlOutcome outcome = fixture.run({"show"});
    QCOMPARE(outcome.status, k_noDevice);
    QCOMPARE(outcome.errors,
             "ktz-jxctl: the port \"Trellwick KTZ-JX Port3\" cannot be opened; another program may have "
             "it\n");
}

void TestCtlFaults::runningProgramHasTheDevice_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("editor") << "KTZ-JX Editor";
    QTest::newRow("another of this program") << "KTZ-JX Control";
}

void TestCtlFaults::runningProgramHasTheDevice()
{
    QFETCH(QString, program);
    CtlFixture fixture;
    fixture.plug();
    CSimulatedSystem::instance().setOtherPrograms({"Sequencer", program});
    const CtlOutcome refused = fixture.run({"set", "1.cc=1"});
    QCOMPARE(refused.status, k_noDevice);
    QCOMPARE(
        refused.errors,
        QStringLiteral("ktz-jxctl: \"%1\" is running and has the device; --force goes on beside it\n").arg(program));
    QVERIFY(fixture.device.received().isEmpty());
    QCOMPARE(fixture.run({"set", "1.cc=1", "--force"}).status, 0);
    CSimulatedSystem::instance().setOtherPrograms({"Sequencer"});
    QCOMPARE(fixture.run({"set", "1.cc=2"}).status, 0);
}

void TestCtlFaults::programThatIsMetLooksAgain_data()
{
    QTest::addColumn<int>("meetings");
    QTest::addColumn<int>("status");
    QTest::newRow("the other leaves") << 1 << 0;
    QTest::newRow("they meet again") << 4 << 0;
    QTest::newRow("and again, until it has had enough") << 5 << k_noDevice;
}

/// Of two that begin together each sees the other, and one has to stay.
void TestCtlFaults::programThatIsMetLooksAgain()
{
    QFETCH(int, meetings);
    CtlFixture fixture;
    fixture.plug();
    CSimulatedSystem::instance().meetProgram("KTZ-JX Control", meetings);
    const CtlOutcome outcome = fixture.run({"set", "1.cc=1"});
    QTEST(outcome.status, "status");
    QCOMPARE(fixture.changes().size(), outcome.status == 0 ? 1 : 0);
    // It said nothing to the device before it had it for itself.
    QCOMPARE(fixture.device.received().count(k_startMessageBytes), outcome.status == 0 ? 1 : 0);
}

void TestCtlFaults::silentDeviceIsStartedThreeTimes()
{
    CtlFixture fixture;
    fixture.times.connection.startInterval = 2ms;
    fixture.plug();
    fixture.device.goSilent();
    const CtlOutcome outcome = fixture.run({"show"});
    QCOMPARE(outcome.status, k_noAnswer);
    QCOMPARE(outcome.errors, "ktz-jxctl: the device does not answer\n");
    QCOMPARE(fixture.device.received(), QList<QByteArray>(3, k_startMessageBytes));
}

void TestCtlFaults::thirdStartIsAnswered()
{
    CtlFixture fixture;
    fixture.times.connection.startInterval = 200ms; // the answer has to be there at its end
    fixture.plug();
    fixture.device.ignoreStarts(2);
    QCOMPARE(fixture.run({"show"}).status, 0);
    QCOMPARE(fixture.device.received().count(k_startMessageBytes), 3);
}

void TestCtlFaults::deviceThatAnswersNoKeepIsLost()
{
    CtlFixture fixture;
    fixture.times.connection.watchdog = 20ms;
    fixture.plug();
    fixture.device.dropKeeps(CSimulatedDevice::k_always);
    const CtlOutcome outcome = fixture.run({"show"});
    QCOMPARE(outcome.status, k_noAnswer);
    QCOMPARE(outcome.errors, "ktz-jxctl: the connection to the device is lost\n");
}

void TestCtlFaults::deviceThatSaysNotWhatItHolds()
{
    CtlFixture fixture;
    fixture.times.answer = 5ms;
    plugCountable(fixture);
    CSendGate& gate = CSimulatedSystem::instance().sendGate();
    gate.hold(k_packetsToConnect + 1);
    std::jthread other([&] {
        while (!gate.isHolding())
            std::this_thread::yield();
        fixture.device.goSilent();
        gate.release();
    });
    const CtlOutcome outcome = fixture.run({"show"});
    other.join();
    QCOMPARE(outcome.status, k_noAnswer);
    QCOMPARE(outcome.errors, "ktz-jxctl: the device does not say what it holds\n");
    QCOMPARE(fixture.device.received().count(k_requestAllBytes), 3);
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

void TestCtlFaults::repliesInPieces()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.cutRepliesInto(4);
    QCOMPARE(fixture.run({"get", "3.cc", "8.led"}).output, "10\nascent\n");
    fixture.device.cutRepliesInto(0);
    fixture.device.glueReplies(16);
    QCOMPARE(fixture.run({"get", "3.cc", "8.led"}).output, "10\nascent\n");
}

void TestCtlFaults::waitsForADeviceThatIsPluggedInLater()
{
    CtlFixture fixture;
    QTimer::singleShot(20ms, [&] { fixture.plug(); });
    const CtlOutcome outcome = fixture.run({"get", "3.cc", "--wait", "60"});
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.output, "10\n");
}

void TestCtlFaults::waitsForAnAnswer()
{
    CtlFixture fixture;
    fixture.times.connection.startInterval = 2ms;
    fixture.plug();
    fixture.device.ignoreStarts(10);
    QCOMPARE(fixture.run({"get", "3.cc", "--wait", "60"}).output, "10\n");
    QVERIFY(fixture.device.received().count(k_startMessageBytes) > 10);
}

void TestCtlFaults::waitsUntilTheOtherProgramHasEnded()
{
    CtlFixture fixture;
    fixture.plug();
    CSimulatedSystem::instance().setOtherPrograms({"KTZ-JX Control"});
    QTimer::singleShot(20ms, [] { CSimulatedSystem::instance().setOtherPrograms({}); });
    QCOMPARE(fixture.run({"get", "3.cc", "--wait", "60"}).output, "10\n");
}

void TestCtlFaults::waitEnds()
{
    CtlFixture fixture;
    fixture.times.connection.startInterval = 2ms;
    QCOMPARE(fixture.run({"show", "--wait", "0.02"}).status, k_noDevice);
    fixture.plug();
    fixture.device.goSilent();
    QCOMPARE(fixture.run({"show", "--wait", "0.02"}).status, k_noAnswer);
}

void TestCtlFaults::lossInTheMiddleOfALoad()
{
    CtlFixture fixture;
    plugCountable(fixture);
    fixture.device.refuseSend(k_packetsToConnect + 4, CSimulatedDevice::k_always); // the request and two knobs arrive
    const CtlOutcome outcome = fixture.run({"set", "1-4.cc=1", "--json"});
    QCOMPARE(outcome.status, k_noAnswer);
    QCOMPARE(outcome.errors, "ktz-jxctl: the connection to the device is lost; knobs sent: 1, 2; not sent: 3, 4\n");
    QCOMPARE(outcome.json()["sent"], (QJsonArray{1, 2}));
    QCOMPARE(outcome.json()["unsent"], (QJsonArray{3, 4}));
    QCOMPARE(outcome.json()["verified"], false);
    QCOMPARE(fixture.device.settings(1).cc, 1);
    QCOMPARE(fixture.device.settings(2).cc, 10);
}

void TestCtlFaults::lossDuringVerify()
{
    CtlFixture fixture;
    plugCountable(fixture);
    fixture.device.refuseSend(k_packetsToConnect + 3, CSimulatedDevice::k_always); // the request and a knob arrive
    const CtlOutcome outcome = fixture.run({"set", "1.cc=1"});
    QCOMPARE(outcome.status, k_noAnswer);
    QCOMPARE(outcome.errors, "ktz-jxctl: the connection to the device is lost; knobs sent: 1; not sent: none\n");
    QCOMPARE(outcome.output, QString());
}

void TestCtlFaults::deviceThatHoldsSomethingElse()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.keepSettings(1);
    const CtlOutcome outcome = fixture.run({"set", "1-2.cc=1", "1.led=convex"});
    QCOMPARE(outcome.status, int(CtlStatus::NotHeld));
    QCOMPARE(outcome.output, "1.cc: sent 1, held 74\n1.led: sent convex, held ascent\n");
    QCOMPARE(outcome.errors, "ktz-jxctl: the device holds something else than was sent\n");
    fixture.device.keepSettings(1);
    const CtlOutcome json = fixture.run({"set", "1.cc=1", "--json"});
    QCOMPARE(json.status, int(CtlStatus::NotHeld));
    QCOMPARE(json.json()["differences"][0],
             (QJsonObject{{"knob", 1}, {"setting", "cc"}, {"first", 1}, {"second", 74}}));
}

void TestCtlFaults::stopBeforeTheAnswer()
{
    CtlFixture fixture;
    fixture.times.startPause = 3600s;
    fixture.plug();
    QTimer::singleShot(20ms, [&] { fixture.stop.request(SIGINT); });
    const CtlOutcome set = fixture.run({"set", "1.cc=1"});
    QCOMPARE(set.status, 128 + SIGINT);
    QCOMPARE(set.errors, "ktz-jxctl: interrupted\n");
    QVERIFY(fixture.changes().isEmpty());
    // It has answered, and expects it.
    QCOMPARE(fixture.device.received(), (QList<QByteArray>{k_startMessageBytes, k_endMessageBytes}));
}

void TestCtlFaults::stopBeforeTheAnswerCanCome()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.ignoreStarts(1);
    QTimer::singleShot(20ms, [&] { fixture.stop.request(SIGINT); });
    QCOMPARE(fixture.run({"set", "1.cc=1"}).status, 128 + SIGINT);
    // A device that is slow to answer is not left with a connection.
    QCOMPARE(fixture.device.received(), (QList<QByteArray>{k_startMessageBytes, k_endMessageBytes}));
}

void TestCtlFaults::stopWhileWaiting()
{
    CtlFixture fixture;
    fixture.times.lookPause = 3600s;
    std::jthread other([&] {
        std::this_thread::sleep_for(10ms);
        fixture.stop.request(SIGTERM);
    });
    const CtlOutcome outcome = fixture.run({"show", "--wait", "3600"});
    other.join();
    QCOMPARE(outcome.status, 128 + SIGTERM);
}

void TestCtlFaults::stopInTheMiddleOfALoad()
{
    CtlFixture fixture;
    plugCountable(fixture);
    CSendGate& gate = CSimulatedSystem::instance().sendGate();
    gate.hold(k_packetsToConnect + 3); // the request and a knob pass; the second knob is on its way
    std::jthread other([&] {
        while (!gate.isHolding())
            std::this_thread::yield();
        fixture.stop.request(SIGINT);
        gate.release();
    });
    const CtlOutcome outcome = fixture.run({"set", "all.cc=1", "--json"});
    other.join();
    QCOMPARE(outcome.status, 128 + SIGINT);
    QCOMPARE(outcome.errors, "ktz-jxctl: interrupted; knobs sent: 1, 2; not sent: 3, 4, 5, 6, 7, 8\n");
    QCOMPARE(outcome.json()["sent"], (QJsonArray{1, 2}));
    QCOMPARE(fixture.changes().size(), 2);
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

void TestCtlFaults::fileThatCannotBeLoadedReachesNoDevice_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("missing") << "/nonexistent.CJX"
                             << "does not exist";
    QTest::newRow("folder") << "/tmp"
                            << "is a folder";
    QTest::newRow("device") << "/dev/null"
                            << "is no regular file";
    QTest::newRow("endless") << "/dev/zero"
                             << "is no regular file";
    QTest::newRow("no name") << ""
                             << "does not exist";
}

void TestCtlFaults::fileThatCannotBeLoadedReachesNoDevice()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome outcome = fixture.run({"load", name});
    QCOMPARE(outcome.status, k_fileError);
    QCOMPARE(outcome.errors, QStringLiteral("ktz-jxctl: %1: %2\n").arg(name, reason));
    QVERIFY(fixture.device.received().isEmpty());
}

void TestCtlFaults::fileThatCannotBeSaved_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("folder that is none") << "/nonexistent/a.CJX";
    QTest::newRow("folder") << "/tmp";
    QTest::newRow("full device") << "/dev/full";
    QTest::newRow("no name") << "";
}

void TestCtlFaults::fileThatCannotBeSaved()
{
    QFETCH(QString, name);
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome outcome = fixture.run({"save", name});
    QCOMPARE(outcome.status, k_fileError);
    QCOMPARE(outcome.errors, QStringLiteral("ktz-jxctl: %1: cannot be written\n").arg(name));
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

void TestCtlFaults::outputThatIsFull()
{
    CtlFixture fixture;
    fixture.plug();
    QFile full("/dev/full");
    if (!full.open(QIODevice::WriteOnly))
        QSKIP("This system has no /dev/full.");
    QTemporaryFile errors;
    QVERIFY(errors.open());
    QCOMPARE(runCtl({"show"}, full.handle(), errors.handle(), fixture.stop, fixture.times), k_fileError);
    QCOMPARE(CtlFixture::textOf(errors.fileName()), "ktz-jxctl: standard output: No space left on device\n");
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

void TestCtlFaults::outputThatNobodyReads()
{
    CtlFixture fixture;
    fixture.plug();
    CPipe pipe;
    pipe.closeReader();
    QTemporaryFile errors;
    QVERIFY(errors.open());
    // A reader who has gone wants no more, and a change is made all the same.
    QCOMPARE(runCtl({"set", "1.cc=1"}, pipe.input(), errors.handle(), fixture.stop, fixture.times), 0);
    QCOMPARE(CtlFixture::textOf(errors.fileName()), QString());
    QCOMPARE(fixture.device.settings(0).cc, 1);
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

void TestCtlFaults::stopWhileTheOutputIsNotRead()
{
    CtlFixture fixture;
    const CPipe pipe;
    QCOMPARE(fcntl(pipe.input(), F_SETFL, O_NONBLOCK), 0);
    const QByteArray much(1 << 16, 'x');
    while (write(pipe.input(), much.constData(), std::size_t(much.size())) > 0) {
    }
    std::jthread other([&] {
        std::this_thread::sleep_for(20ms);
        fixture.stop.request(SIGINT);
    });
    QCOMPARE(runCtl({"show", "factory"}, pipe.input(), STDERR_FILENO, fixture.stop, fixture.times), 128 + SIGINT);
    other.join();
}

KTZ_TEST(QCoreApplication, TestCtlFaults)
#include "TestCtlFaults.moc"
