#include "simulator/device/DeviceMessages.h"
#include "tests/support/CTestCase.h"

using DeviceMessages::Type;

class TestDeviceMessages : public CTestCase
{
    Q_OBJECT

  private slots:
    void messageHasItsBytes_data();
    void messageHasItsBytes();
    void messageReadsInWords_data();
    void messageReadsInWords();
    void everyWrongByteMakesItNoMessage();
    void settingsSurviveTheWay();
};

void TestDeviceMessages::messageHasItsBytes_data()
{
    QTest::addColumn<QByteArray>("built");
    QTest::addColumn<QByteArray>("digits");
    QTest::newRow("start") << DeviceMessages::start() << QByteArray("f043103e18050200f7");
    QTest::newRow("keep") << DeviceMessages::keep() << QByteArray("f043103e18050201f7");
    QTest::newRow("end") << DeviceMessages::end() << QByteArray("f043103e18050202f7");
    QTest::newRow("request all parameters") << DeviceMessages::requestAll() << QByteArray("f043303e180502007ff7");
    QTest::newRow("change parameter") << DeviceMessages::changeParameter(5, {74, 15, 126, 1, 3})
                                      << QByteArray("f043103e18050203054a0f7e0103f7");
    QTest::newRow("notice value") << DeviceMessages::noticeValue(7, 64) << QByteArray("f043103e180502040740f7");
}

void TestDeviceMessages::messageHasItsBytes()
{
    QFETCH(QByteArray, built);
    QFETCH(QByteArray, digits);
    QCOMPARE(built.toHex(), digits);
}

void TestDeviceMessages::messageReadsInWords_data()
{
    QTest::addColumn<QByteArray>("digits");
    QTest::addColumn<QString>("words");
    QTest::newRow("start") << QByteArray("f043103e18050200f7") << "start";
    QTest::newRow("keep") << QByteArray("f043103e18050201f7") << "keep";
    QTest::newRow("end") << QByteArray("f043103e18050202f7") << "end";
    QTest::newRow("request all parameters") << QByteArray("f043303e180502007ff7") << "request all parameters";
    QTest::newRow("change parameter, ascent") << QByteArray("f043103e18050203004a007f0000f7")
                                              << "change parameter: knob 0, cc 74, channel 0, max 127, min 0, led 0 "
                                                 "(ascent)";
    QTest::newRow("change parameter, descend") << QByteArray("f043103e18050203010a0f7e0101f7")
                                               << "change parameter: knob 1, cc 10, channel 15, max 126, min 1, led 1 "
                                                  "(descend)";
    QTest::newRow("change parameter, concave") << QByteArray("f043103e1805020307000000"
                                                             "0002f7")
                                               << "change parameter: knob 7, cc 0, channel 0, max 0, min 0, led 2 "
                                                  "(concave)";
    QTest::newRow("change parameter, convex") << QByteArray("f043103e1805020307000000"
                                                            "0003f7")
                                              << "change parameter: knob 7, cc 0, channel 0, max 0, min 0, led 3 "
                                                 "(convex)";
    QTest::newRow("change parameter, no such LED type")
        << QByteArray("f043103e1805020307000000"
                      "0004f7")
        << "change parameter: knob 7, cc 0, channel 0, max 0, min 0, led 4 (unknown)";
    QTest::newRow("notice value") << QByteArray("f043103e180502040340f7") << "notice value: knob 3, value 64";
    QTest::newRow("notice value of a knob that is not there")
        << QByteArray("f043103e18050204097ff7") << "notice value: knob 9, value 127";
    const QString other = QStringLiteral("not a message of this device");
    QTest::newRow("nothing") << QByteArray() << other;
    QTest::newRow("a control change") << QByteArray("b04a40") << other;
    QTest::newRow("start with the header of request all") << QByteArray("f043303e18050200f7") << other;
    QTest::newRow("request all with the header of the others") << QByteArray("f043103e180502007ff7") << other;
    QTest::newRow("type 5") << QByteArray("f043103e18050205f7") << other;
    QTest::newRow("type 128") << QByteArray("f043103e18050280f7") << other;
    QTest::newRow("header alone") << QByteArray("f043103e180502") << other;
    QTest::newRow("start, one byte too long") << QByteArray("f043103e1805020000f7") << other;
    QTest::newRow("start without an end") << QByteArray("f043103e1805020001") << other;
    QTest::newRow("change parameter of 14 bytes") << QByteArray("f043103e18050203004a007f00f7") << other;
    QTest::newRow("notice value of 12 bytes") << QByteArray("f043103e18050204034000f7") << other;
}

void TestDeviceMessages::messageReadsInWords()
{
    QFETCH(QByteArray, digits);
    QFETCH(QString, words);
    QCOMPARE(DeviceMessages::inWords(QByteArray::fromHex(digits)), words);
}

void TestDeviceMessages::everyWrongByteMakesItNoMessage()
{
    const QList<QByteArray> messages = {DeviceMessages::start(), DeviceMessages::requestAll(),
                                        DeviceMessages::changeParameter(0, {}), DeviceMessages::noticeValue(0, 0)};
    for (const QByteArray& message : messages) {
        for (int position = 0; position < 7; ++position) {
            QByteArray wrong = message;
            wrong[position] = '\x55';
            QCOMPARE(DeviceMessages::typeOf(wrong), Type::Other);
        }
        QByteArray unfinished = message;
        unfinished.back() = '\x00';
        QCOMPARE(DeviceMessages::typeOf(unfinished), Type::Other);
    }
}

void TestDeviceMessages::settingsSurviveTheWay()
{
    for (int knob = 0; knob < 8; ++knob) {
        for (const int value : {0, 1, 127}) {
            const KnobSettings settings = {value, 15, 127 - value, value, 3};
            const QByteArray change = DeviceMessages::changeParameter(knob, settings);
            QCOMPARE(DeviceMessages::typeOf(change), Type::ChangeParameter);
            QCOMPARE(DeviceMessages::knobOf(change), knob);
            QVERIFY(DeviceMessages::settingsOf(change) == settings);
            const QByteArray notice = DeviceMessages::noticeValue(knob, value);
            QCOMPARE(DeviceMessages::typeOf(notice), Type::NoticeValue);
            QCOMPARE(DeviceMessages::knobOf(notice), knob);
            QCOMPARE(DeviceMessages::valueOf(notice), value);
        }
    }
}

KTZ_TEST(QCoreApplication, TestDeviceMessages)
#include "TestDeviceMessages.moc"
