#include "simulator/device/CByteStream.h"
#include "tests/support/CTestCase.h"

namespace
{
QByteArray hex(const char* digits)
{
    return QByteArray::fromHex(digits);
}

QList<QByteArray> pieces(const QList<const char*>& digits)
{
    QList<QByteArray> list;
    for (const char* piece : digits)
        list += hex(piece);
    return list;
}
} // namespace

class TestByteStream : public CTestCase
{
    Q_OBJECT

  private slots:
    void cutsBytesIntoMessagesAndTheRest_data();
    void cutsBytesIntoMessagesAndTheRest();
    void joinsAMessageCutAtEveryByte();
    void longMessageWithoutAnEndIsGivenUp();
    void clearForgetsAnUnfinishedMessage();
};

void TestByteStream::cutsBytesIntoMessagesAndTheRest_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<QByteArray>>("expected");
    QTest::newRow("nothing") << QByteArray() << QList<QByteArray>();
    QTest::newRow("one message") << hex("f04310f7") << pieces({"f04310f7"});
    QTest::newRow("two messages in one packet") << hex("f001f7f002f7") << pieces({"f001f7", "f002f7"});
    QTest::newRow("stray bytes ahead of a message") << hex("01027ff001f7") << pieces({"01027f", "f001f7"});
    QTest::newRow("stray bytes behind a message") << hex("f001f70102") << pieces({"f001f7", "0102"});
    QTest::newRow("only the end of a message") << hex("f7") << pieces({"f7"});
    QTest::newRow("a channel message") << hex("b04a40") << pieces({"b04a40"});
    QTest::newRow("clock inside a message comes out ahead of it") << hex("f001f802f7") << pieces({"f8", "f00102f7"});
    QTest::newRow("clock and sensing at two places of a message")
        << hex("f0f801fe02f7") << pieces({"f8fe", "f00102f7"});
    QTest::newRow("a new message breaks an unfinished one") << hex("f001f002f7") << pieces({"f001", "f002f7"});
    QTest::newRow("a channel message breaks an unfinished one") << hex("f001b04a40f7") << pieces({"f001", "b04a40f7"});
    QTest::newRow("a value above 127 breaks a message") << hex("f04380f7") << pieces({"f043", "80f7"});
    QTest::newRow("the shortest message") << hex("f0f7") << pieces({"f0f7"});
}

void TestByteStream::cutsBytesIntoMessagesAndTheRest()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QList<QByteArray>, expected);
    CByteStream stream;
    QCOMPARE(stream.feed(bytes), expected);
}

void TestByteStream::joinsAMessageCutAtEveryByte()
{
    const QByteArray message = hex("f043103e180502030007000102030004f7");
    for (qsizetype cut = 1; cut < message.size(); ++cut) {
        CByteStream stream;
        QCOMPARE(stream.feed(message.left(cut)), QList<QByteArray>());
        QCOMPARE(stream.feed(message.mid(cut)), QList{message});
    }
}

void TestByteStream::longMessageWithoutAnEndIsGivenUp()
{
    const QByteArray endless = hex("f0") + QByteArray(CByteStream::k_longest, '\x01');
    CByteStream stream;
    QCOMPARE(stream.feed(endless), QList({endless.left(CByteStream::k_longest), hex("01")}));
    QCOMPARE(stream.feed(hex("f002f7")), pieces({"f002f7"}));
}

void TestByteStream::clearForgetsAnUnfinishedMessage()
{
    CByteStream stream;
    QCOMPARE(stream.feed(hex("f001")), QList<QByteArray>());
    stream.clear();
    QCOMPARE(stream.feed(hex("02f7")), pieces({"02f7"}));
}

KTZ_TEST(QCoreApplication, TestByteStream)
#include "TestByteStream.moc"
