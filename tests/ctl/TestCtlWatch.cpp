#include "tests/ctl/CtlFixture.h"

#include <csignal>
#include <thread>

class TestCtlWatch : public CTestCase
{
    Q_OBJECT

  private slots:
    void turnsAndChangesAreLines();
    void jsonIsAnObjectALine();
    void reportOfWhatIsKnownIsNoChange();
    void everyTurnOfAFloodIsThere();
    void beginsRightBehindTheAnswer();
    void deviceThatDoesNotSayWhereKnobsStand();
    void endsAfterATime();
    void endsWhenToldTo();
    void endsWhenNobodyReads();
    void endsWithALostDevice();
    void stopsThoughTheReaderDoesNot();

  private:
    /// Does something, once, from the event loop, as soon as the condition holds.
    static void when(CtlFixture& fixture, const std::function<bool()>& condition, const std::function<void()>& act)
    {
        auto* timer = new QTimer(&fixture.stop);
        QObject::connect(timer, &QTimer::timeout, [timer, condition, act] {
            if (!condition())
                return;
            timer->stop();
            act();
        });
        timer->start(1ms);
    }

    /// Does something with the device right behind its answer, which is where a watch begins.
    static void whenAnswered(CtlFixture& fixture, const std::function<void()>& act)
    {
        when(
            fixture, [&] { return fixture.device.received().contains(k_requestAllBytes); }, act);
    }

    /// Turns a knob behind the answer, and does something when the watch has told of that.
    static void whenTurnIsTold(CtlFixture& fixture, const std::function<void()>& act)
    {
        whenAnswered(fixture, [&] { fixture.device.turn(0, 1); });
        when(
            fixture, [&] { return !fixture.written().isEmpty(); }, act);
    }

    /// The lines without their times.
    static QStringList linesOf(const CtlOutcome& outcome)
    {
        QStringList lines = outcome.output.split('\n', Qt::SkipEmptyParts);
        for (QString& line : lines)
            line = line.sliced(14);
        return lines;
    }
};

void TestCtlWatch::turnsAndChangesAreLines()
{
    CtlFixture fixture;
    fixture.plug();
    whenAnswered(fixture, [&] {
        fixture.device.turn(2, 64);
        fixture.device.setSettings(7, {.cc = 93, .channel = 15, .led = 1});
        fixture.device.reportSettings(7);
    });
    const CtlOutcome outcome = fixture.run({"watch", "--count", "2"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(linesOf(outcome), (QStringList{"3.value=64", "8.channel=16 8.led=descend"}));
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

void TestCtlWatch::jsonIsAnObjectALine()
{
    CtlFixture fixture;
    fixture.plug();
    whenAnswered(fixture, [&] {
        fixture.device.turn(0, 127);
        fixture.device.setSetting(1, &KnobSettings::led, 2);
        fixture.device.reportSettings(1);
    });
    const CtlOutcome outcome = fixture.run({"watch", "--count", "2", "--json"});
    const QStringList lines = outcome.output.split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 2);
    QJsonObject turn = QJsonDocument::fromJson(lines[0].toUtf8()).object();
    QVERIFY(turn.take("time").toDouble(-1) >= 0);
    QCOMPARE(turn, (QJsonObject{{"knob", 1}, {"value", 127}}));
    QJsonObject change = QJsonDocument::fromJson(lines[1].toUtf8()).object();
    QVERIFY(change.take("time").toDouble(-1) >= 0);
    QCOMPARE(change, (QJsonObject{{"knob", 2}, {"settings", QJsonObject{{"led", "concave"}}}}));
}

void TestCtlWatch::reportOfWhatIsKnownIsNoChange()
{
    CtlFixture fixture;
    fixture.plug();
    whenAnswered(fixture, [&] {
        fixture.device.reportSettings(0);
        fixture.device.turn(0, 1);
    });
    QCOMPARE(linesOf(fixture.run({"watch", "--count", "1"})), QStringList("1.value=1"));
}

void TestCtlWatch::everyTurnOfAFloodIsThere()
{
    constexpr int turns = 5000;
    CtlFixture fixture;
    fixture.plug();
    whenAnswered(fixture, [&] {
        for (int i = 0; i < turns; ++i)
            fixture.device.turn(i % 8, i % 128);
    });
    const CtlOutcome outcome = fixture.run({"watch", "--count", QString::number(turns)});
    const QStringList lines = linesOf(outcome);
    QCOMPARE(lines.size(), turns);
    for (int i = 0; i < turns; ++i)
        QCOMPARE(lines[i], QStringLiteral("%1.value=%2").arg(i % 8 + 1).arg(i % 128));
}

void TestCtlWatch::beginsRightBehindTheAnswer()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.delayReplies(1);
    const auto turnUntilAsked = [&] {
        const bool isAsked = fixture.device.received().contains(k_requestAllBytes);
        if (!isAsked) {
            fixture.device.turn(4, 99);
            fixture.device.advance(1);
        }
        return isAsked;
    };
    when(fixture, turnUntilAsked, [&] {
        fixture.device.turn(0, 1);
        fixture.device.setSetting(1, &KnobSettings::led, 2);
        fixture.device.reportSettings(1);
        // All of it is in the program before its main thread gets to know that the answer is there.
        fixture.device.advance(1);
        std::this_thread::sleep_for(20ms);
    });
    const CtlOutcome outcome = fixture.run({"watch", "--count", "2"});
    QCOMPARE(linesOf(outcome), (QStringList{"1.value=1", "2.led=concave"}));
    QVERIFY(!outcome.output.contains('-')); // a time before the watch
}

void TestCtlWatch::deviceThatDoesNotSayWhereKnobsStand()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.device.leaveOutValues();
    fixture.times.values = 1ms;
    const auto turnUntilTold = [&] {
        fixture.device.turn(0, 1);
        return !fixture.written().isEmpty();
    };
    // With these each knob has said where it stands, which completes no answer any more: all is told.
    const auto turnTheOthers = [&] {
        for (int knob = 1; knob < 8; ++knob)
            fixture.device.turn(knob, 2);
    };
    whenAnswered(fixture, [&] { when(fixture, turnUntilTold, turnTheOthers); });
    when(
        fixture, [&] { return fixture.written().contains("8.value=2"); }, [&] { fixture.stop.request(SIGINT); });
    const CtlOutcome outcome = fixture.run({"watch"});
    QCOMPARE(outcome.status, 0);
    QStringList lines = linesOf(outcome);
    QVERIFY(lines.removeAll("1.value=1") > 0);
    QCOMPARE(lines,
             (QStringList{"2.value=2", "3.value=2", "4.value=2", "5.value=2", "6.value=2", "7.value=2", "8.value=2"}));
}

void TestCtlWatch::endsAfterATime()
{
    CtlFixture fixture;
    fixture.plug();
    const CtlOutcome outcome = fixture.run({"watch", "--for", "0.01"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.output + outcome.errors, QString());
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

void TestCtlWatch::endsWhenToldTo()
{
    CtlFixture fixture;
    fixture.plug();
    whenTurnIsTold(fixture, [&] { fixture.stop.request(SIGINT); });
    const CtlOutcome outcome = fixture.run({"watch"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(linesOf(outcome), QStringList("1.value=1"));
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

void TestCtlWatch::endsWhenNobodyReads()
{
    CtlFixture fixture;
    fixture.plug();
    CPipe pipe;
    pipe.closeReader();
    whenAnswered(fixture, [&] { fixture.device.turn(0, 1); });
    QCOMPARE(runCtl({"watch"}, pipe.input(), STDERR_FILENO, fixture.stop, fixture.times), 0);
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

void TestCtlWatch::endsWithALostDevice()
{
    CtlFixture fixture;
    fixture.plug();
    fixture.times.connection.keepInterval = 2ms;
    whenTurnIsTold(fixture, [&] { fixture.device.unplug(); });
    const CtlOutcome outcome = fixture.run({"watch"});
    QCOMPARE(outcome.status, int(CtlStatus::NoAnswer));
    QCOMPARE(linesOf(outcome), QStringList("1.value=1"));
    QCOMPARE(outcome.errors, "ktz-jxctl: the connection to the device is lost\n");
}

void TestCtlWatch::stopsThoughTheReaderDoesNot()
{
    CtlFixture fixture;
    fixture.plug();
    const CPipe pipe;
    // Much more than a pipe takes.
    whenAnswered(fixture, [&] {
        for (int i = 0; i < 10'000; ++i)
            fixture.device.turn(0, i % 128);
    });
    std::jthread other([&] {
        while (pipe.takesMore())
            std::this_thread::sleep_for(1ms);
        fixture.stop.request(SIGTERM);
    });
    QCOMPARE(runCtl({"watch"}, pipe.input(), STDERR_FILENO, fixture.stop, fixture.times), 0);
    other.join();
    QCOMPARE(fixture.device.received().constLast(), k_endMessageBytes);
}

KTZ_TEST(QCoreApplication, TestCtlWatch)
#include "TestCtlWatch.moc"
