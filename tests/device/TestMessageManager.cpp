#include "device/CMessageManagerWrapper.h"
#include "tests/device/Reception.h"
#include "tests/support/CTestCase.h"

namespace
{
using Bytes = QByteArray;

const Bytes k_start = Bytes::fromHex("F043103E18050200F7");
const Bytes k_keep = Bytes::fromHex("F043103E18050201F7");
const Bytes k_end = Bytes::fromHex("F043103E18050202F7");
const Bytes k_requestAll = Bytes::fromHex("F043303E180502007FF7");
const Bytes k_change = Bytes::fromHex("F043103E18050203050A0F7F0003F7");
const Bytes k_notice = Bytes::fromHex("F043103E180502040740F7");

Bytes changeMessage(int knob, int value)
{
    Bytes message = k_change;
    message[8] = static_cast<char>(knob);
    for (int i = 9; i < 14; ++i)
        message[i] = static_cast<char>(value);
    return message;
}

ParamList knobData(int knob, int value)
{
    ParamList settings;
    for (const int category : k_settingCategories)
        settings.insert(QString::number(category + knob), value);
    return {{QString::number(knob), settings}};
}

/// What a codec made of a stream, packet by packet.
struct Parsed
{
    bool result = false;
    int type = -1;
    ParamList data;

    bool operator==(const Parsed&) const = default;
};

Parsed feed(CMessageManagerWrapper& codec, const Bytes& packet)
{
    Parsed parsed;
    parsed.result = codec.parseMessageForMac(raw(packet), static_cast<int>(packet.size()), &parsed.type, &parsed.data);
    return parsed;
}

/// Memory pages of this process that are in use.
qint64 residentPages()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    return statm.open(QIODevice::ReadOnly) ? statm.readAll().split(' ').value(1).toLongLong() : 0;
}
} // namespace

class TestMessageManager : public CTestCase
{
    Q_OBJECT

  private slots:
    void messageLengths_data();
    void messageLengths();
    void createdMessages_data();
    void createdMessages();
    void tooSmallABufferGivesFalseAndWritesNothing_data();
    void tooSmallABufferGivesFalseAndWritesNothing();
    void nullBufferOrLengthGivesFalse();
    void typesThatCannotBeCreated_data();
    void typesThatCannotBeCreated();
    void missingSettingIsSentAsZero();
    void valueIsSentAsItsLowEightBits();
    void firstKnobOfTheMapIsSent();
    void encodedKnobDecodesToItself();
    void everySettingHasAByteOfItsOwn();
    void header_data();
    void header();
    void parsedMessages_data();
    void parsedMessages();
    void parseNeedsEveryPointer();
    void changeParamWithoutRoomIsRefused();
    void failedClosingByteLeavesTheEntries();
    void loneEndOnAFreshCodecFails();
    void packetWithoutAnEndGivesFalse();
    void streamNeedsEveryPointer();
    void messageCutAtEveryByte_data();
    void messageCutAtEveryByte();
    void messageAfterOtherBytes_data();
    void messageAfterOtherBytes();
    void strayBytesAfterAnEndBelongToTheOldMessage();
    void severalMessagesInOnePacketShareTypeAndMap();
    void resultIsThatOfTheLastMessage();
    void endlessMessageStaysSmallAndParsesTheSame();
};

void TestMessageManager::messageLengths_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("length");
    QTest::newRow("start") << 0 << 9;
    QTest::newRow("keep") << 1 << 9;
    QTest::newRow("end") << 2 << 9;
    QTest::newRow("change parameter") << 3 << 15;
    QTest::newRow("notice value, never sent") << 4 << 0;
    QTest::newRow("request all") << 5 << 10;
    QTest::newRow("beyond the last") << 6 << 0;
    QTest::newRow("below the first") << -1 << 0;
}

void TestMessageManager::messageLengths()
{
    QFETCH(int, type);
    QFETCH(int, length);
    const CMessageManagerWrapper codec;
    QCOMPARE(codec.getMessageLen(type), length);
    QCOMPARE(codec.getConnectionMessageLen(), 9);
}

void TestMessageManager::createdMessages_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<Bytes>("bytes");
    QTest::newRow("start") << 0 << k_start;
    QTest::newRow("keep") << 1 << k_keep;
    QTest::newRow("end") << 2 << k_end;
    QTest::newRow("change parameter") << 3 << changeMessage(5, 33);
    QTest::newRow("request all") << 5 << k_requestAll;
}

void TestMessageManager::createdMessages()
{
    QFETCH(int, type);
    QFETCH(Bytes, bytes);
    const CMessageManagerWrapper codec;
    Bytes buffer(32, '\x55');
    int len = static_cast<int>(buffer.size());
    auto* data = reinterpret_cast<unsigned char*>(buffer.data());
    QVERIFY(type == k_requestAllParamMessage ? codec.createRequestAllParamMessage(data, &len)
                                             : codec.createMessage(type, knobData(5, 33), data, &len));
    QCOMPARE(buffer.left(len).toHex(' '), bytes.toHex(' '));
    QCOMPARE(buffer.mid(len), Bytes(32 - len, '\x55'));
}

void TestMessageManager::tooSmallABufferGivesFalseAndWritesNothing_data()
{
    createdMessages_data();
}

void TestMessageManager::tooSmallABufferGivesFalseAndWritesNothing()
{
    QFETCH(int, type);
    QFETCH(Bytes, bytes);
    const CMessageManagerWrapper codec;
    Bytes buffer(32, '\x55');
    auto* data = reinterpret_cast<unsigned char*>(buffer.data());
    for (int size = 0; size < bytes.size(); ++size) {
        int len = size;
        QVERIFY(!(type == k_requestAllParamMessage ? codec.createRequestAllParamMessage(data, &len)
                                                   : codec.createMessage(type, knobData(5, 33), data, &len)));
        QCOMPARE(len, size);
        QCOMPARE(buffer, Bytes(32, '\x55'));
    }
}

void TestMessageManager::nullBufferOrLengthGivesFalse()
{
    const CMessageManagerWrapper codec;
    std::array<unsigned char, 32> buffer{};
    int len = 32;
    for (int type = 0; type <= 3; ++type) {
        QVERIFY(!codec.createMessage(type, knobData(0, 1), nullptr, &len));
        QVERIFY(!codec.createMessage(type, knobData(0, 1), buffer.data(), nullptr));
    }
    QVERIFY(!codec.createRequestAllParamMessage(nullptr, &len));
    QVERIFY(!codec.createRequestAllParamMessage(buffer.data(), nullptr));
    QCOMPARE(len, 32);
}

void TestMessageManager::typesThatCannotBeCreated_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<ParamList>("data");
    QTest::newRow("change parameter of nothing") << 3 << ParamList();
    QTest::newRow("notice value") << 4 << knobData(0, 1);
    QTest::newRow("request all has an operation of its own") << 5 << knobData(0, 1);
    QTest::newRow("unknown") << 6 << knobData(0, 1);
}

void TestMessageManager::typesThatCannotBeCreated()
{
    QFETCH(int, type);
    QFETCH(ParamList, data);
    const CMessageManagerWrapper codec;
    std::array<unsigned char, 32> buffer{};
    int len = 32;
    QVERIFY(!codec.createMessage(type, data, buffer.data(), &len));
}

void TestMessageManager::missingSettingIsSentAsZero()
{
    const CMessageManagerWrapper codec;
    ParamList settings = knobData(2, 99).first().toMap();
    settings.remove(QStringLiteral("1302"));
    Bytes buffer(15, '\0');
    int len = 15;
    QVERIFY(codec.createChangeParamMessage({{QStringLiteral("2"), settings}},
                                           reinterpret_cast<unsigned char*>(buffer.data()), &len));
    QCOMPARE(buffer.toHex(), Bytes("f043103e18050203") + "02" + "63" + "63" + "00" + "63" + "63" + "f7");
}

void TestMessageManager::valueIsSentAsItsLowEightBits()
{
    const CMessageManagerWrapper codec;
    Bytes buffer(15, '\0');
    int len = 15;
    QVERIFY(codec.createChangeParamMessage(knobData(0, 0x1C8), reinterpret_cast<unsigned char*>(buffer.data()), &len));
    QCOMPARE(static_cast<unsigned char>(buffer[9]), 0xC8);
}

void TestMessageManager::firstKnobOfTheMapIsSent()
{
    const CMessageManagerWrapper codec;
    ParamList two = knobData(6, 6);
    two.insert(knobData(3, 3));
    Bytes buffer(15, '\0');
    int len = 15;
    QVERIFY(codec.createChangeParamMessage(two, reinterpret_cast<unsigned char*>(buffer.data()), &len));
    QCOMPARE(buffer, changeMessage(3, 3));
}

void TestMessageManager::encodedKnobDecodesToItself()
{
    CMessageManagerWrapper codec;
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        for (const int value : {0, 1, 127}) {
            Bytes buffer(15, '\0');
            int len = 15;
            QVERIFY(
                codec.createMessage(3, knobData(knob, value), reinterpret_cast<unsigned char*>(buffer.data()), &len));
            QCOMPARE(buffer, changeMessage(knob, value));
            QCOMPARE(feed(codec, buffer), (Parsed{true, 3, knobData(knob, value)}));
        }
    }
}

void TestMessageManager::everySettingHasAByteOfItsOwn()
{
    CMessageManagerWrapper codec;
    const auto settings = static_cast<qsizetype>(k_numOfSettings);
    for (qsizetype i = 0; i < settings; ++i) {
        const QString id = QString::number(k_settingCategories[static_cast<std::size_t>(i)] + 5);
        const ParamList data{{QStringLiteral("5"), ParamList{{id, 99}}}};
        Bytes expected = k_change.left(9) + Bytes(settings, '\0') + '\xF7';
        expected[9 + i] = 99;
        int len = codec.getMessageLen(3);
        QCOMPARE(len, expected.size());
        Bytes buffer(len, '\0');
        QVERIFY(codec.createMessage(3, data, reinterpret_cast<unsigned char*>(buffer.data()), &len));
        QCOMPARE(buffer, expected);
        QCOMPARE(feed(codec, buffer).data.value(QStringLiteral("5")).toMap().value(id), QVariant(99));
    }
}

void TestMessageManager::header_data()
{
    QTest::addColumn<Bytes>("bytes");
    QTest::addColumn<bool>("good");
    QTest::newRow("the header alone") << k_start.left(7) << true;
    QTest::newRow("a whole message") << k_start << true;
    QTest::newRow("one byte short") << k_start.left(6) << false;
    QTest::newRow("request all has another third byte") << k_requestAll << false;
    for (int i = 0; i < 7; ++i) {
        Bytes wrong = k_start;
        wrong[i] = static_cast<char>(wrong[i] ^ 1);
        QTest::addRow("byte %d wrong", i) << wrong << false;
    }
}

void TestMessageManager::header()
{
    QFETCH(Bytes, bytes);
    QFETCH(bool, good);
    QCOMPARE(CMessageManagerWrapper::checkMessageHeader(raw(bytes), static_cast<int>(bytes.size())), good);
    QVERIFY(!CMessageManagerWrapper::checkMessageHeader(nullptr, 7));
}

void TestMessageManager::parsedMessages_data()
{
    QTest::addColumn<Bytes>("bytes");
    QTest::addColumn<bool>("result");
    QTest::addColumn<int>("type");
    QTest::addColumn<ParamList>("data");
    const ParamList none;
    const ParamList change{{QStringLiteral("5"), ParamList{{QStringLiteral("1105"), 10},
                                                           {QStringLiteral("1205"), 15},
                                                           {QStringLiteral("1305"), 127},
                                                           {QStringLiteral("1405"), 0},
                                                           {QStringLiteral("1505"), 3}}}};
    QTest::newRow("start") << k_start << true << 0 << none;
    QTest::newRow("start with a byte more: its length is not looked at")
        << Bytes::fromHex("F043103E1805020011F7") << true << 0 << none;
    QTest::newRow("keep") << k_keep << true << 1 << none;
    QTest::newRow("end") << k_end << true << 2 << none;
    QTest::newRow("start without its end") << Bytes::fromHex("F043103E18050200") << false << 0 << none;
    QTest::newRow("change parameter") << k_change << true << 3 << change;
    QTest::newRow("change parameter of 14 bytes")
        << Bytes::fromHex("F043103E18050203050A0F7F00F7") << false << 3 << none;
    QTest::newRow("change parameter of 16 bytes, byte 14 ignored")
        << Bytes::fromHex("F043103E18050203050A0F7F000355F7") << true << 3 << change;
    QTest::newRow("notice value of knob 7") << k_notice << true << 4 << ParamList{{QStringLiteral("1007"), 64}};
    QTest::newRow("notice value of 10 bytes") << Bytes::fromHex("F043103E1805020407F7") << false << 4 << none;
    QTest::newRow("request all is never accepted") << k_requestAll << false << -1 << none;
    QTest::newRow("type 5") << Bytes::fromHex("F043103E18050205F7") << false << -1 << none;
    QTest::newRow("type 255") << Bytes::fromHex("F043103E180502FFF7") << false << -1 << none;
    QTest::newRow("header and end alone") << Bytes::fromHex("F043103E180502F7") << false << -1 << none;
    QTest::newRow("header alone") << k_start.left(7) << false << -1 << none;
}

void TestMessageManager::parsedMessages()
{
    QFETCH(Bytes, bytes);
    QFETCH(bool, result);
    QFETCH(int, type);
    QFETCH(ParamList, data);
    const CMessageManagerWrapper codec;
    int parsedType = -1;
    ParamList parsedData;
    QCOMPARE(codec.parseMessage(raw(bytes), static_cast<int>(bytes.size()), &parsedType, &parsedData), result);
    QCOMPARE(parsedType, type);
    QCOMPARE(parsedData, data);
}

void TestMessageManager::parseNeedsEveryPointer()
{
    const CMessageManagerWrapper codec;
    int type = -1;
    ParamList data;
    QVERIFY(!codec.parseMessage(nullptr, 9, &type, &data));
    QVERIFY(!codec.parseMessage(raw(k_start), 0, &type, &data));
    QVERIFY(!codec.parseMessage(raw(k_start), 9, nullptr, &data));
    QVERIFY(!codec.parseMessage(raw(k_change), 15, &type, nullptr));
    QVERIFY(!CMessageManagerWrapper::parseChangeParamMessage(nullptr, 15, &data));
    QVERIFY(!CMessageManagerWrapper::parseNoticeValueMessage(raw(k_notice), 11, nullptr));
    QVERIFY(!CMessageManagerWrapper::parseNoticeValueMessage(nullptr, 11, &data));
    QVERIFY(data.isEmpty());
}

void TestMessageManager::changeParamWithoutRoomIsRefused()
{
    const CMessageManagerWrapper codec;
    std::array<unsigned char, 14> buffer{};
    int len = 14;
    QVERIFY(!codec.createChangeParamMessage(knobData(0, 1), buffer.data(), &len));
}

void TestMessageManager::failedClosingByteLeavesTheEntries()
{
    const CMessageManagerWrapper codec;
    Bytes bytes = k_notice;
    bytes.back() = '\x00';
    int type = -1;
    ParamList data;
    QVERIFY(!codec.parseMessage(raw(bytes), static_cast<int>(bytes.size()), &type, &data));
    QCOMPARE(data, (ParamList{{QStringLiteral("1007"), 64}}));
}

void TestMessageManager::loneEndOnAFreshCodecFails()
{
    CMessageManagerWrapper codec;
    QCOMPARE(feed(codec, Bytes("\xF7")), Parsed{});
}

void TestMessageManager::packetWithoutAnEndGivesFalse()
{
    CMessageManagerWrapper codec;
    QCOMPARE(feed(codec, k_start.chopped(1)), Parsed{});
}

void TestMessageManager::streamNeedsEveryPointer()
{
    CMessageManagerWrapper codec;
    int type = -1;
    ParamList data;
    QVERIFY(!codec.parseMessageForMac(nullptr, 9, &type, &data));
    QVERIFY(!codec.parseMessageForMac(raw(k_start), 0, &type, &data));
    QVERIFY(!codec.parseMessageForMac(raw(k_start), -1, &type, &data));
    QVERIFY(!codec.parseMessageForMac(raw(k_start), 9, nullptr, &data));
}

void TestMessageManager::messageCutAtEveryByte_data()
{
    QTest::addColumn<Bytes>("bytes");
    QTest::newRow("start") << k_start;
    QTest::newRow("change parameter") << k_change;
    QTest::newRow("notice value") << k_notice;
}

void TestMessageManager::messageCutAtEveryByte()
{
    QFETCH(Bytes, bytes);
    CMessageManagerWrapper whole;
    const Parsed expected = feed(whole, bytes);
    QVERIFY(expected.result);
    for (qsizetype cut = 1; cut < bytes.size(); ++cut) {
        CMessageManagerWrapper codec;
        QVERIFY(!feed(codec, bytes.left(cut)).result);
        QCOMPARE(feed(codec, bytes.mid(cut)), expected);
    }
    // One byte a packet.
    CMessageManagerWrapper codec;
    for (qsizetype i = 0; i + 1 < bytes.size(); ++i)
        QVERIFY(!feed(codec, bytes.mid(i, 1)).result);
    QCOMPARE(feed(codec, bytes.right(1)), expected);
}

void TestMessageManager::messageAfterOtherBytes_data()
{
    QTest::addColumn<Bytes>("before");
    QTest::newRow("a complete message") << k_keep;
    QTest::newRow("stray bytes") << Bytes("\x01\x7F\x90\x40\x40");
    QTest::newRow("a stray end") << Bytes("\xF7");
    QTest::newRow("an unfinished message") << k_change.left(12);
    QTest::newRow("another maker's message") << Bytes::fromHex("F07E7F0601F7");
    QTest::newRow("clock and active sensing") << Bytes::fromHex("F8FE");
    for (int i = 0; i < 7; ++i) {
        Bytes wrong = k_notice;
        wrong[i] = static_cast<char>(wrong[i] ^ 1);
        QTest::addRow("a message with header byte %d wrong", i) << wrong;
    }
}

void TestMessageManager::messageAfterOtherBytes()
{
    QFETCH(Bytes, before);
    for (const Bytes& message : {k_start, k_change, k_notice}) {
        CMessageManagerWrapper whole;
        const Parsed expected = feed(whole, message);

        CMessageManagerWrapper separate;
        feed(separate, before);
        QCOMPARE(feed(separate, message), expected);

        CMessageManagerWrapper together;
        const Parsed parsed = feed(together, before + message);
        QCOMPARE(parsed.result, expected.result);
        QCOMPARE(parsed.type, expected.type);
    }
}

void TestMessageManager::strayBytesAfterAnEndBelongToTheOldMessage()
{
    CMessageManagerWrapper codec;
    QVERIFY(feed(codec, k_start).result);
    QVERIFY(!feed(codec, Bytes("\x10\x20")).result);
    // The buffer still begins with the finished message, so another end completes it once more.
    QCOMPARE(feed(codec, Bytes("\xF7")), (Parsed{true, 0, {}}));
    QCOMPARE(feed(codec, k_notice), (Parsed{true, 4, {{QStringLiteral("1007"), 64}}}));
}

void TestMessageManager::severalMessagesInOnePacketShareTypeAndMap()
{
    CMessageManagerWrapper codec;
    const Parsed parsed = feed(codec, changeMessage(1, 11) + changeMessage(2, 22) + k_notice);
    QVERIFY(parsed.result);
    QCOMPARE(parsed.type, 4);
    ParamList expected = knobData(1, 11);
    expected.insert(knobData(2, 22));
    expected.insert(QStringLiteral("1007"), 64);
    QCOMPARE(parsed.data, expected);
}

void TestMessageManager::resultIsThatOfTheLastMessage()
{
    CMessageManagerWrapper codec;
    QVERIFY(!feed(codec, k_start + k_requestAll).result);
    QVERIFY(feed(codec, k_requestAll + k_start).result);
}

void TestMessageManager::endlessMessageStaysSmallAndParsesTheSame()
{
    // A start message may have any length; one that never seems to end must not fill the memory, and still ends as a
    // start message.
    CMessageManagerWrapper codec;
    feed(codec, k_start.chopped(1));
    const Bytes filling(65'537, '\x11');
    const qint64 before = residentPages();
    for (int i = 0; i < 200; ++i)
        QVERIFY(!feed(codec, filling).result);
    QVERIFY2(residentPages() - before < 1000, "13 MB of one message stay in memory");
    QCOMPARE(feed(codec, Bytes("\xF7")), (Parsed{true, 0, {}}));

    feed(codec, k_change.chopped(1) + filling);
    Parsed expected;
    {
        CMessageManagerWrapper fresh;
        expected = feed(fresh, k_change);
    }
    // The long message was fed in two packets, so that only the type and the result come with the second.
    const Parsed parsed = feed(codec, Bytes("\xF7"));
    QCOMPARE(parsed, expected);
}

KTZ_TEST(QCoreApplication, TestMessageManager)
#include "TestMessageManager.moc"
