#include "simulator/device/DeviceMessages.h"
#include "tests/faults/CFaultTest.h"
#include "tests/faults/FaultFixture.h"
#include "tests/support/CMessageBoxAnswer.h"

using Packets = QList<QByteArray>;
using Way = std::function<void(CSimulatedDevice&)>;
Q_DECLARE_METATYPE(Way)

namespace
{
QByteArray fromHex(const char* text)
{
    return QByteArray::fromHex(text);
}

/// Changes every setting of every knob at the device, and every value but knob 7's, and reports all of it.
void reportEverything(CSimulatedDevice& device)
{
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        device.setSettings(knob, FaultFixture::stageSettings(knob));
        device.reportSettings(knob);
        if (knob != k_numOfKnobs - 1)
            device.turn(knob, 50 + knob);
    }
}
} // namespace

/// Replies and reports that come in pieces, among other bytes, or wrong.
class TestReplyFaults : public CFaultTest
{
    Q_OBJECT

  private slots:
    void theWayOfReplies_data();
    void theWayOfReplies();
    void reportCutAtEveryByte_data();
    void reportCutAtEveryByte();
    void realTimeBetweenThePieces_data();
    void realTimeBetweenThePieces();
    void twoReportsInOnePacket();
    void reportsOfNothing_data();
    void reportsOfNothing();
    void settingsAbove127();
    void valuesAbove127();
};

void TestReplyFaults::theWayOfReplies_data()
{
    QTest::addColumn<Way>("way");
    const auto row = [](const char* name, const Way& way) { QTest::newRow(name) << way; };
    for (int bytes = 1; bytes <= 15; ++bytes)
        QTest::addRow("%d bytes a packet", bytes) << Way([bytes](auto& device) { device.cutRepliesInto(bytes); });
    row("stray data bytes ahead", [](auto& device) { device.strayBytes(fromHex("017f40")); });
    row("a stray end ahead", [](auto& device) { device.strayBytes(fromHex("f7")); });
    row("a controller's message ahead", [](auto& device) { device.strayBytes(fromHex("b04a40")); });
    row("an unfinished message ahead", [](auto& device) { device.strayBytes(fromHex("f043103e180502030a0b")); });
    row("clock and active sensing ahead", [](auto& device) { device.strayBytes(fromHex("f8fe")); });
    row("another maker's message between", [](auto& device) { device.otherEvents({fromHex("f07e7f0601f7")}); });
    row("clock and active sensing between", [](auto& device) {
        device.otherEvents({fromHex("f8"), fromHex("fe"), fromHex("f8")});
    });
    row("notes between, all in one-byte packets", [](auto& device) {
        device.otherEvents({fromHex("904040"), fromHex("b00740")});
        device.cutRepliesInto(1);
    });
}

void TestReplyFaults::theWayOfReplies()
{
    QFETCH(Way, way);
    FaultFixture fixture;
    fixture.device.setSettings(5, FaultFixture::stageSettings(4));
    way(fixture.device);
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    QVERIFY(fixture.agrees());
    reportEverything(fixture.device);
    QTRY_VERIFY(fixture.agrees());
    // Two more replies to keep messages arrive by the same way.
    QTRY_VERIFY(FaultFixture::sent().count(k_keep) >= 2);
    QCOMPARE(FaultFixture::commands(), QStringList());
    QVERIFY(fixture.isMarkLit());
    QVERIFY(answer.boxes().isEmpty());
}

void TestReplyFaults::reportCutAtEveryByte_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("change parameter") << DeviceMessages::changeParameter(2, FaultFixture::stageSettings(2));
    QTest::newRow("notice value") << DeviceMessages::noticeValue(2, 99);
}

void TestReplyFaults::reportCutAtEveryByte()
{
    QFETCH(QByteArray, message);
    FaultFixture fixture;
    fixture.times.keepInterval = std::chrono::hours(1); // no reply between the pieces
    fixture.startConnected();
    for (qsizetype cut = 1; cut < message.size(); ++cut) {
        fixture.device.setSettings(2, k_factorySettings.at(2));
        fixture.device.reportSettings(2);
        fixture.device.turn(2, 0);
        QTRY_VERIFY(fixture.agrees());
        if (DeviceMessages::typeOf(message) == DeviceMessages::Type::NoticeValue)
            fixture.device.setValue(2, 99);
        else
            fixture.device.setSettings(2, FaultFixture::stageSettings(2));
        fixture.device.send(message.left(cut));
        QVERIFY(!fixture.agrees());
        fixture.device.send(message.mid(cut));
        QTRY_VERIFY(fixture.agrees());
    }
    QCOMPARE(FaultFixture::commands(), QStringList());
}

void TestReplyFaults::realTimeBetweenThePieces_data()
{
    QTest::addColumn<QByteArray>("byte");
    QTest::newRow("clock") << fromHex("f8");
    QTest::newRow("active sensing") << fromHex("fe");
    QTest::newRow("reset") << fromHex("ff");
}

void TestReplyFaults::realTimeBetweenThePieces()
{
    QFETCH(QByteArray, byte);
    FaultFixture fixture;
    fixture.times.keepInterval = std::chrono::hours(1);
    fixture.startConnected();
    for (int cut = 1; cut < 15; ++cut) {
        KnobSettings settings = FaultFixture::stageSettings(2);
        settings.cc = cut;
        fixture.device.setSettings(2, settings);
        const QByteArray message = DeviceMessages::changeParameter(2, settings);
        for (const QByteArray& packet : Packets{message.left(cut), byte, byte, message.mid(cut)})
            fixture.device.send(packet);
        QTRY_VERIFY(fixture.agrees());
    }
    QCOMPARE(FaultFixture::commands(), QStringList());
}

void TestReplyFaults::twoReportsInOnePacket()
{
    FaultFixture fixture;
    fixture.startConnected();
    QByteArray settings;
    QByteArray values;
    for (const int knob : {2, 5}) {
        fixture.device.setSettings(knob, FaultFixture::stageSettings(knob));
        fixture.device.setValue(knob, 99);
        settings += DeviceMessages::changeParameter(knob, FaultFixture::stageSettings(knob));
        values += DeviceMessages::noticeValue(knob, 99);
    }
    fixture.device.send(settings);
    fixture.device.send(values);
    QTRY_VERIFY(fixture.agrees());
    fixture.device.send(DeviceMessages::keep() + DeviceMessages::keep());
    fixture.waitForReports();
    QVERIFY(fixture.isMarkLit());
    QCOMPARE(FaultFixture::commands(), QStringList());
}

void TestReplyFaults::reportsOfNothing_data()
{
    QTest::addColumn<Packets>("packets");
    const auto row = [](const char* name, const Packets& packets) { QTest::newRow(name) << packets; };
    row("settings of knob 8", {fromHex("f043103e18050203080102030401f7")});
    row("settings of knob 127", {fromHex("f043103e180502037f0102030401f7")});
    row("settings of knob 255", {fromHex("f043103e18050203ff0102030401f7")});
    row("value of knob 8", {fromHex("f043103e180502040840f7")});
    row("value of knob 100, whose id is a controller number", {fromHex("f043103e180502046440f7")});
    row("value of knob 200, whose id is a channel", {fromHex("f043103e18050204c840f7")});
    row("settings a byte short", {fromHex("f043103e180502030201020304f7")});
    row("value a byte short", {fromHex("f043103e1805020402f7")});
    row("settings without their end", {fromHex("f043103e18050203020102030401"), fromHex("f07e7f0601f7")});
    row("another maker's settings", {fromHex("f044103e18050203020102030401f7")});
    row("a kind that there is not", {fromHex("f043103e18050209020102030401f7")});
    row("the editor's own request", {fromHex("f043303e180502007ff7")});
    row("an end message", {fromHex("f043103e18050202f7")});
    row("ends alone", {fromHex("f7"), fromHex("f7f7f7")});
    row("65,535 bytes of no message", {QByteArray(65'535, '\x11')});
    row("65,537 bytes of no message", {QByteArray(65'537, '\x11')});
    row("a message of 65,535 bytes", {"\xf0" + QByteArray(65'533, '\x11') + "\xf7"});
    row("a message of 65,537 bytes", {"\xf0" + QByteArray(65'535, '\x11') + "\xf7"});
    row("a message without end", Packets(40, "\xf0" + QByteArray(65'534, '\x11')));
    row("65,535 beginnings", {QByteArray(65'535, '\xf0')});
    row("65,535 ends", {QByteArray(65'535, '\xf7')});
    row("65,535 bytes of clock", {QByteArray(65'535, '\xf8')});
}

void TestReplyFaults::reportsOfNothing()
{
    QFETCH(Packets, packets);
    FaultFixture fixture;
    CMessageBoxAnswer answer(QMessageBox::Ok);
    fixture.startConnected();
    for (const QByteArray& packet : packets)
        fixture.device.send(packet);
    fixture.waitForReports();
    QVERIFY(fixture.agrees());
    QVERIFY(fixture.isMarkLit());
    QVERIFY(answer.boxes().isEmpty());
    QCOMPARE(FaultFixture::commands(), QStringList());
}

void TestReplyFaults::settingsAbove127()
{
    // The editor holds them in their ranges and tells the device so, in messages that are whole.
    FaultFixture fixture;
    fixture.startConnected();
    fixture.device.send(fromHex("f043103e1805020302c880ff9009f7"));
    const auto isHeld = [&] { return fixture.device.settings(2) == KnobSettings{127, 15, 127, 127, 3}; };
    QTRY_VERIFY(isHeld());
    fixture.waitForReports();
    QVERIFY(fixture.agrees());
    const QStringList commands = FaultFixture::commands();
    QVERIFY(!commands.isEmpty());
    for (const QString& command : commands) {
        const QByteArray message = QByteArray::fromHex(command.toLatin1());
        QVERIFY(message.startsWith('\xf0') && message.endsWith('\xf7'));
        for (const char byte : message.sliced(1).chopped(1))
            QVERIFY2((byte & 0x80) == 0, qPrintable(command));
    }
}

void TestReplyFaults::valuesAbove127()
{
    // A ring has no state for such a value, and the knob's next turn is followed again.
    FaultFixture fixture;
    fixture.startConnected();
    for (const char* report : {"f043103e180502040280f7", "f043103e1805020402c8f7", "f043103e1805020402fff7"})
        fixture.device.send(fromHex(report));
    fixture.waitForReports();
    QCOMPARE(fixture.knobLED(2)->getImageIndexByType(k_ledAscent), 0);
    fixture.device.turn(2, 100);
    QTRY_VERIFY(fixture.agrees());
    QCOMPARE(FaultFixture::commands(), QStringList());
}

KTZ_TEST(QApplication, TestReplyFaults)
#include "TestReplyFaults.moc"
