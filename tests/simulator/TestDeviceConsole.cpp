#include "simulator/console/CDeviceArguments.h"
#include "simulator/console/CDeviceConsole.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/DeviceMessages.h"
#include "simulator/device/TrafficText.h"
#include "tests/simulator/CRecordingTransport.h"
#include "tests/support/CTestCase.h"

Q_DECLARE_METATYPE(Traffic)
Q_DECLARE_METATYPE(DeviceArguments::Port)

using namespace DeviceMessages;

class TestDeviceConsole : public CTestCase
{
    Q_OBJECT

  private slots:
    void messageIsOneLine_data();
    void messageIsOneLine();
    void argumentsAreUnderstood_data();
    void argumentsAreUnderstood();
    void cablesAreThreeOrAsManyAsAsked();
    void wrongArgumentsAreRefusedInOneLine_data();
    void wrongArgumentsAreRefusedInOneLine();
    void helpNamesArgumentsAndCommands();
    void turnChangesAndReports();
    void setChangesAndReportsNothing();
    void sendGivesTheBytesAsTheyAre();
    void showTellsWhatTheDeviceHolds();
    void silentAndAnswer();
    void unplugPullsTheCable();
    void helpListsTheCommands();
    void quitIsRemembered();
    void emptyLineDoesNothing();
    void wrongCommandGetsOneLine();
    void newsAreToldOnce();
};

void TestDeviceConsole::messageIsOneLine_data()
{
    QTest::addColumn<Traffic>("message");
    QTest::addColumn<QString>("line");
    QTest::newRow("received") << Traffic{0, 12345, Traffic::Direction::ToDevice, keep()}
                              << "    12.345 received  F0 43 10 3E 18 05 02 01 F7  keep";
    QTest::newRow("sent") << Traffic{0, 7, Traffic::Direction::FromDevice, noticeValue(3, 64)}
                          << "     0.007 sent      F0 43 10 3E 18 05 02 04 03 40 F7  notice value: knob 3, value 64";
    QTest::newRow("after a day") << Traffic{0, 86'400'000, Traffic::Direction::ToDevice, QByteArray("\xf8")}
                                 << " 86400.000 received  F8  not a message of this device";
    QTest::newRow("64 bytes") << Traffic{0, 0, Traffic::Direction::FromDevice, QByteArray(64, '\x01')}
                              << "     0.000 sent      01" + QString(" 01").repeated(63) +
                                     "  not a message of this device";
    QTest::newRow("65 bytes") << Traffic{0, 0, Traffic::Direction::FromDevice, QByteArray(65, '\x01')}
                              << "     0.000 sent      01" + QString(" 01").repeated(63) +
                                     " ... 65 bytes  not a message of this device";
}

void TestDeviceConsole::messageIsOneLine()
{
    QFETCH(Traffic, message);
    QFETCH(QString, line);
    QCOMPARE(trafficText(message), line);
}

void TestDeviceConsole::argumentsAreUnderstood_data()
{
    using Port = DeviceArguments::Port;
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<Port>("port");
    QTest::addColumn<QByteArray>("rawName");
    QTest::addColumn<bool>("keepRunning");
    QTest::addColumn<bool>("help");
    QTest::newRow("none") << QStringList() << Port::Alsa << QByteArray() << false << false;
    QTest::newRow("--alsa") << QStringList{"--alsa"} << Port::Alsa << QByteArray() << false << false;
    QTest::newRow("--raw") << QStringList{"--raw", "hw:0,0,2"} << Port::Raw << QByteArray("hw:0,0,2") << false << false;
    QTest::newRow("--keep-running") << QStringList{"--keep-running"} << Port::Alsa << QByteArray() << true << false;
    QTest::newRow("--raw --keep-running") << QStringList{"--raw", "hw:f_midi,0,2", "--keep-running"} << Port::Raw
                                          << QByteArray("hw:f_midi,0,2") << true << false;
    QTest::newRow("--help") << QStringList{"--help"} << Port::Alsa << QByteArray() << false << true;
    QTest::newRow("--raw=") << QStringList{"--raw=hw:1"} << Port::Raw << QByteArray("hw:1") << false << false;
    QTest::newRow("-h") << QStringList{"-h"} << Port::Alsa << QByteArray() << false << true;
}

void TestDeviceConsole::argumentsAreUnderstood()
{
    QFETCH(QStringList, arguments);
    QFETCH(DeviceArguments::Port, port);
    QFETCH(QByteArray, rawName);
    QFETCH(bool, keepRunning);
    QFETCH(bool, help);
    const CDeviceArguments::Result result = CDeviceArguments::parse(arguments);
    QCOMPARE(result.error, QString());
    QCOMPARE(result.arguments.port, port);
    QCOMPARE(result.arguments.rawName, rawName);
    QCOMPARE(result.arguments.keepRunning, keepRunning);
    QCOMPARE(result.arguments.help, help);
}

void TestDeviceConsole::cablesAreThreeOrAsManyAsAsked()
{
    QCOMPARE(CDeviceArguments::parse({}).arguments.cables, 3);
    for (const char* number : {"1", "2", "3"})
        QCOMPARE(CDeviceArguments::parse({"--alsa", "--cables", number}).arguments.cables, QByteArray(number).toInt());
}

void TestDeviceConsole::wrongArgumentsAreRefusedInOneLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    const QString raw = QStringLiteral("--raw needs a raw MIDI device, such as hw:0,0,2");
    QTest::newRow("unknown") << QStringList{"--usb"} << "unknown argument \"--usb\"; --help lists them";
    QTest::newRow("a file") << QStringList{"a\nb.CJX"} << "unknown argument \"a?b.CJX\"; --help lists them";
    QTest::newRow("empty") << QStringList{""} << "unknown argument \"\"; --help lists them";
    QTest::newRow("--raw alone") << QStringList{"--raw"} << raw;
    QTest::newRow("--raw with another argument") << QStringList{"--raw", "--keep-running"} << raw;
    const QString cables = QStringLiteral("--cables needs a number from 1 to 3");
    for (const char* number : {"", "0", "4", "33", "two", "-1", "--alsa"})
        QTest::addRow("--cables '%s'", number) << QStringList{"--cables", number} << cables;
    QTest::newRow("--cables alone") << QStringList{"--cables"} << cables;
    QTest::newRow("both ports") << QStringList{"--raw", "hw:0,0,2", "--alsa"} << "--alsa and --raw exclude each other";
}

void TestDeviceConsole::wrongArgumentsAreRefusedInOneLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    QCOMPARE(CDeviceArguments::parse(arguments).error, error);
}

void TestDeviceConsole::helpNamesArgumentsAndCommands()
{
    const QString help = CDeviceArguments::help();
    for (const char* word : {"--alsa", "--cables", "--raw", "--keep-running", "--help", "turn", "quit"})
        QVERIFY2(help.contains(word), word);
}

void TestDeviceConsole::turnChangesAndReports()
{
    CRecordingTransport transport;
    CSimulatedDevice device;
    device.plug(transport);
    CDeviceConsole console(device);
    QCOMPARE(console.execute("turn 3 64"), QStringList());
    QCOMPARE(device.value(3), 64);
    QCOMPARE(transport.take(), QList{noticeValue(3, 64)});
    QCOMPARE(console.news().size(), 1);
}

void TestDeviceConsole::setChangesAndReportsNothing()
{
    CRecordingTransport transport;
    CSimulatedDevice device;
    device.plug(transport);
    CDeviceConsole console(device);
    const QList<QByteArray> lines = {"set 2 cc 11", "set 2 ch 12", "set 2 max 100", "set 2 min 20", "set 2 led 3"};
    for (const QByteArray& line : lines)
        QCOMPARE(console.execute(line), QStringList());
    QVERIFY(device.settings(2) == KnobSettings({11, 12, 100, 20, 3}));
    QVERIFY(transport.take().isEmpty());
}

void TestDeviceConsole::sendGivesTheBytesAsTheyAre()
{
    CRecordingTransport transport;
    CSimulatedDevice device;
    device.plug(transport);
    CDeviceConsole console(device);
    QCOMPARE(console.execute("send F0 43 F8 7f"), QStringList());
    QCOMPARE(transport.take(), QList{QByteArray("\xf0\x43\xf8\x7f")});
}

void TestDeviceConsole::showTellsWhatTheDeviceHolds()
{
    CSimulatedDevice device;
    device.setValue(2, 33);
    device.goSilent();
    CDeviceConsole console(device);
    const QStringList lines = console.execute("show");
    QCOMPARE(lines.size(), 10);
    QCOMPARE(lines.at(0), "knob 0: value 0, cc 74, channel 0, max 127, min 0, led 0 (ascent)");
    QCOMPARE(lines.at(2), "knob 2: value 33, cc 10, channel 0, max 127, min 0, led 2 (concave)");
    QCOMPARE(lines.at(8), "silent");
    QCOMPARE(lines.at(9), "unplugged");
}

void TestDeviceConsole::silentAndAnswer()
{
    CRecordingTransport transport;
    CSimulatedDevice device;
    device.plug(transport);
    CDeviceConsole console(device);
    QCOMPARE(console.execute("silent"), QStringList());
    QVERIFY(device.isSilent());
    QCOMPARE(console.execute("answer"), QStringList());
    QVERIFY(!device.isSilent());
    QCOMPARE(console.execute("show").size(), 8);
}

void TestDeviceConsole::unplugPullsTheCable()
{
    CRecordingTransport transport;
    CSimulatedDevice device;
    device.plug(transport);
    CDeviceConsole console(device);
    QCOMPARE(console.execute("unplug"), QStringList());
    QVERIFY(!device.isPlugged());
}

void TestDeviceConsole::helpListsTheCommands()
{
    CSimulatedDevice device;
    QCOMPARE(CDeviceConsole(device).execute("help").size(), 9);
}

void TestDeviceConsole::quitIsRemembered()
{
    CSimulatedDevice device;
    CDeviceConsole console(device);
    QVERIFY(!console.wantsToQuit());
    QCOMPARE(console.execute("quit"), QStringList());
    QVERIFY(console.wantsToQuit());
}

void TestDeviceConsole::emptyLineDoesNothing()
{
    CSimulatedDevice device;
    CDeviceConsole console(device);
    QCOMPARE(console.execute("\r"), QStringList());
    QVERIFY(!console.wantsToQuit());
}

void TestDeviceConsole::wrongCommandGetsOneLine()
{
    CSimulatedDevice device;
    QCOMPARE(CDeviceConsole(device).execute("turn 9 1"), QStringList{"\"9\" is no knob, which is 0 to 7"});
}

void TestDeviceConsole::newsAreToldOnce()
{
    CRecordingTransport transport;
    CSimulatedDevice device;
    device.plug(transport);
    CDeviceConsole console(device);
    QVERIFY(device.receive(start()));
    QCOMPARE(console.news(), QStringList({"     0.000 received  F0 43 10 3E 18 05 02 00 F7  start",
                                          "     0.000 sent      F0 43 10 3E 18 05 02 00 F7  start"}));
    QCOMPARE(console.news(), QStringList());
}

KTZ_TEST(QCoreApplication, TestDeviceConsole)
#include "TestDeviceConsole.moc"
