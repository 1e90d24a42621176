#include "simulator/console/CCommandParser.h"
#include "tests/support/CTestCase.h"

#include <QRandomGenerator>

using Action = DeviceCommand::Action;

Q_DECLARE_METATYPE(DeviceCommand::Action)
Q_DECLARE_METATYPE(int KnobSettings::*)

namespace
{
constexpr int KnobSettings::*k_none = nullptr;
} // namespace

class TestCommandParser : public CTestCase
{
    Q_OBJECT

  private slots:
    void understands_data();
    void understands();
    void sendTakesAnyNumberOfBytes();
    void refusesInOneLine_data();
    void refusesInOneLine();
    void helpNamesEveryCommand();
    void helpNamesEverySetting();
    void anyBytesGiveACommandOrOneLine();
};

void TestCommandParser::understands_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<Action>("action");
    QTest::addColumn<int>("knob");
    QTest::addColumn<int KnobSettings::*>("setting");
    QTest::addColumn<int>("value");
    QTest::newRow("nothing") << QByteArray() << Action::Nothing << 0 << k_none << 0;
    QTest::newRow("blanks") << QByteArray(" \t\r\n") << Action::Nothing << 0 << k_none << 0;
    QTest::newRow("turn") << QByteArray("turn 3 64") << Action::Turn << 3 << k_none << 64;
    QTest::newRow("turn to the lowest") << QByteArray("turn 0 0") << Action::Turn << 0 << k_none << 0;
    QTest::newRow("turn to the highest") << QByteArray("turn 7 127") << Action::Turn << 7 << k_none << 127;
    QTest::newRow("more blanks than needed") << QByteArray("  turn\t3  64 \r\n") << Action::Turn << 3 << k_none << 64;
    QTest::newRow("leading zeros") << QByteArray("turn 03 064") << Action::Turn << 3 << k_none << 64;
    QTest::newRow("set cc") << QByteArray("set 2 cc 10") << Action::Set << 2 << &KnobSettings::cc << 10;
    QTest::newRow("set cc, highest") << QByteArray("set 2 cc 127") << Action::Set << 2 << &KnobSettings::cc << 127;
    QTest::newRow("set ch, highest") << QByteArray("set 2 ch 15") << Action::Set << 2 << &KnobSettings::channel << 15;
    QTest::newRow("set max") << QByteArray("set 0 max 100") << Action::Set << 0 << &KnobSettings::max << 100;
    QTest::newRow("set min") << QByteArray("set 7 min 1") << Action::Set << 7 << &KnobSettings::min << 1;
    QTest::newRow("set led, highest") << QByteArray("set 1 led 3") << Action::Set << 1 << &KnobSettings::led << 3;
    QTest::newRow("show") << QByteArray("show") << Action::Show << 0 << k_none << 0;
    QTest::newRow("silent") << QByteArray("silent") << Action::Silent << 0 << k_none << 0;
    QTest::newRow("answer") << QByteArray("answer") << Action::Answer << 0 << k_none << 0;
    QTest::newRow("unplug") << QByteArray("unplug") << Action::Unplug << 0 << k_none << 0;
    QTest::newRow("help") << QByteArray("help") << Action::Help << 0 << k_none << 0;
    QTest::newRow("quit") << QByteArray("quit") << Action::Quit << 0 << k_none << 0;
}

void TestCommandParser::understands()
{
    QFETCH(QByteArray, line);
    QFETCH(Action, action);
    QFETCH(int, knob);
    QFETCH(int KnobSettings::*, setting);
    QFETCH(int, value);
    const CCommandParser::Result result = CCommandParser::parse(line);
    QCOMPARE(result.error, QString());
    QCOMPARE(result.command.action, action);
    QCOMPARE(result.command.knob, knob);
    QVERIFY(result.command.setting == setting);
    QCOMPARE(result.command.value, value);
}

void TestCommandParser::sendTakesAnyNumberOfBytes()
{
    const CCommandParser::Result one = CCommandParser::parse("send f8");
    QCOMPARE(one.error, QString());
    QCOMPARE(one.command.action, Action::Send);
    QCOMPARE(one.command.bytes, QByteArray("\xf8"));
    QCOMPARE(CCommandParser::parse("send F0 00  7f F7\n").command.bytes, QByteArray("\xf0\0\x7f\xf7", 4));
    QCOMPARE(CCommandParser::parse("send" + QByteArray(" 12").repeated(1000)).command.bytes, QByteArray(1000, '\x12'));
}

void TestCommandParser::refusesInOneLine_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("error");
    QTest::newRow("unknown") << QByteArray("spin 3 64") << "unknown command \"spin\"; help lists them";
    QTest::newRow("wrong case") << QByteArray("TURN 3 64") << "unknown command \"TURN\"; help lists them";
    QTest::newRow("control characters") << QByteArray("a\x1b[2J\x07") << "unknown command \"a?[2J?\"; help lists them";
    QTest::newRow("not ASCII") << QByteArray("d\xc3\xa9j\xc3\xa0") << "unknown command \"d??j??\"; help lists them";
    QTest::newRow("very long") << QByteArray(5000, 'x')
                               << "unknown command \"" + QString(40, 'x') + "...\"; help lists them";
    QTest::newRow("turn without all") << QByteArray("turn") << "usage: turn KNOB VALUE";
    QTest::newRow("turn without a value") << QByteArray("turn 3") << "usage: turn KNOB VALUE";
    QTest::newRow("turn with one word too many") << QByteArray("turn 3 64 1") << "usage: turn KNOB VALUE";
    QTest::newRow("knob 8") << QByteArray("turn 8 64") << "\"8\" is no knob, which is 0 to 7";
    QTest::newRow("knob -1") << QByteArray("turn -1 64") << "\"-1\" is no knob, which is 0 to 7";
    QTest::newRow("knob +1") << QByteArray("turn +1 64") << "\"+1\" is no knob, which is 0 to 7";
    QTest::newRow("knob in words") << QByteArray("turn three 64") << "\"three\" is no knob, which is 0 to 7";
    QTest::newRow("value 128") << QByteArray("turn 3 128") << "\"128\" is no value, which is 0 to 127";
    QTest::newRow("value in hexadecimal") << QByteArray("turn 3 0x40") << "\"0x40\" is no value, which is 0 to 127";
    QTest::newRow("value beyond any integer")
        << QByteArray("turn 3 99999999999999999999") << "\"99999999999999999999\" is no value, which is 0 to 127";
    QTest::newRow("set without a value") << QByteArray("set 2 cc") << "usage: set KNOB SETTING VALUE";
    QTest::newRow("set of knob 8") << QByteArray("set 8 cc 10") << "\"8\" is no knob, which is 0 to 7";
    QTest::newRow("unknown setting") << QByteArray("set 2 volume 10")
                                     << "\"volume\" is no setting: cc, ch, max, min or led";
    QTest::newRow("cc 128") << QByteArray("set 2 cc 128") << "\"128\" is no cc, which is 0 to 127";
    QTest::newRow("ch 16") << QByteArray("set 2 ch 16") << "\"16\" is no ch, which is 0 to 15";
    QTest::newRow("max 128") << QByteArray("set 2 max 128") << "\"128\" is no max, which is 0 to 127";
    QTest::newRow("min 128") << QByteArray("set 2 min 128") << "\"128\" is no min, which is 0 to 127";
    QTest::newRow("led 4") << QByteArray("set 2 led 4") << "\"4\" is no led, which is 0 to 3";
    QTest::newRow("send without a byte") << QByteArray("send") << "usage: send BYTE...";
    QTest::newRow("send one digit") << QByteArray("send F0 4 F7") << "\"4\" is no byte, which is 00 to FF";
    QTest::newRow("send three digits") << QByteArray("send 0F0") << "\"0F0\" is no byte, which is 00 to FF";
    QTest::newRow("send what is no digit") << QByteArray("send F0 G0") << "\"G0\" is no byte, which is 00 to FF";
    QTest::newRow("send a sign") << QByteArray("send +1") << "\"+1\" is no byte, which is 00 to FF";
    QTest::newRow("show with a word") << QByteArray("show all") << "usage: show";
    QTest::newRow("silent with a word") << QByteArray("silent now") << "usage: silent";
    QTest::newRow("answer with a word") << QByteArray("answer now") << "usage: answer";
    QTest::newRow("unplug with a word") << QByteArray("unplug now") << "usage: unplug";
    QTest::newRow("help with a word") << QByteArray("help turn") << "usage: help";
    QTest::newRow("quit with a word") << QByteArray("quit now") << "usage: quit";
}

void TestCommandParser::refusesInOneLine()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, error);
    const CCommandParser::Result result = CCommandParser::parse(line);
    QCOMPARE(result.error, error);
    QCOMPARE(result.command.action, Action::Nothing);
}

void TestCommandParser::helpNamesEveryCommand()
{
    const QStringList lines = CCommandParser::help().split('\n', Qt::SkipEmptyParts);
    QStringList verbs;
    for (const QString& line : lines)
        verbs += line.simplified().section(' ', 0, 0);
    QCOMPARE(verbs, QStringList({"turn", "set", "send", "show", "silent", "answer", "unplug", "help", "quit"}));
}

void TestCommandParser::helpNamesEverySetting()
{
    QVERIFY(CCommandParser::help().contains("sets cc, ch (0 to 15), max, min or led (0 to 3) at the device"));
}

void TestCommandParser::anyBytesGiveACommandOrOneLine()
{
    const QList<QByteArray> words = {"turn", "set", "send", "show", "cc", "ch", "led", "7",           "8",
                                     "127",  "-1",  "\xff", "\0",   "\n", " ",  "\t",  "999999999999"};
    QRandomGenerator random(20260101); // the same sequence every time, so that a failure comes back
    for (int round = 0; round < 20'000; ++round) {
        QByteArray line;
        for (int length = random.bounded(6); length > 0; --length)
            line += words.at(random.bounded(words.size())) + ' ';
        const CCommandParser::Result result = CCommandParser::parse(line);
        QVERIFY(!result.error.contains('\n'));
        QVERIFY(result.error.isEmpty() || result.command.action == Action::Nothing);
        QVERIFY(result.command.knob >= 0 && result.command.knob <= 7);
        QVERIFY(result.command.value >= 0 && result.command.value <= 127);
        QCOMPARE(result.command.action == Action::Set, result.command.setting != nullptr);
    }
}

KTZ_TEST(QCoreApplication, TestCommandParser)
#include "TestCommandParser.moc"
