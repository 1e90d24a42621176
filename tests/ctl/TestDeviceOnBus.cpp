#include "tests/ctl/EditorOnBusFixture.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

/// What the editor offers on the session bus, to callers who mean no good.
class TestDeviceOnBus : public CTestCase
{
    Q_OBJECT

  private slots:
    void hostileCallsChangeNothing_data();
    void hostileCallsChangeNothing();
    void callerWhoLeavesIsToldNoMore();
    void manyAskAtOnce();
    void deviceThatTurnsWhileTheEditorEnds();

  private:
    static QDBusMessage call(const QDBusConnection& bus, const QString& method, const QVariantList& arguments)
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(k_busName, "/org/ktzjx/Editor/Device", "org.ktzjx.Editor.Device", method);
        message.setArguments(arguments);
        QDBusPendingCall pending = bus.asyncCall(message);
        while (!pending.isFinished())
            QCoreApplication::processEvents();
        return pending.reply();
    }
};

void TestDeviceOnBus::hostileCallsChangeNothing_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<QVariantList>("arguments");
    QTest::addColumn<QString>("error");
    const QString invalid("org.freedesktop.DBus.Error.InvalidArgs");
    const QString unknown("org.freedesktop.DBus.Error.UnknownMethod");
    QTest::newRow("knob 8") << "Write" << QVariantList{8, QByteArray("\x01\x01\x01\x01\x01", 5)} << invalid;
    QTest::newRow("knob -1") << "Write" << QVariantList{-1, QByteArray("\x01\x01\x01\x01\x01", 5)} << invalid;
    QTest::newRow("value 128") << "Write" << QVariantList{0, QByteArray("\x80\x01\x01\x01\x01", 5)} << invalid;
    QTest::newRow("value 254") << "Write" << QVariantList{0, QByteArray("\x01\x01\x01\xfe\x01", 5)} << invalid;
    QTest::newRow("channel 16") << "Write" << QVariantList{0, QByteArray("\x01\x10\x01\x01\x01", 5)} << invalid;
    QTest::newRow("led 4") << "Write" << QVariantList{0, QByteArray("\x01\x01\x01\x01\x04", 5)} << invalid;
    QTest::newRow("four settings") << "Write" << QVariantList{0, QByteArray("\x01\x01\x01\x01", 4)} << invalid;
    QTest::newRow("six settings") << "Write" << QVariantList{0, QByteArray("\x01\x01\x01\x01\x01\x01", 6)} << invalid;
    QTest::newRow("no settings") << "Write" << QVariantList{0, QByteArray("", 0)} << invalid;
    QTest::newRow("many settings") << "Write" << QVariantList{0, QByteArray(1'000'000, 1)} << invalid;
    QTest::newRow("text for a knob") << "Write" << QVariantList{"0", QByteArray("\x01\x01\x01\x01\x01", 5)} << unknown;
    QTest::newRow("numbers for settings")
        << "Write" << QVariantList{0, QVariant::fromValue(QList<int>{1, 1, 1, 1, 1})} << unknown;
    QTest::newRow("text for settings") << "Write" << QVariantList{0, "1 1 1 1 1"} << unknown;
    QTest::newRow("no arguments") << "Write" << QVariantList() << unknown;
    QTest::newRow("a knob to read") << "Read" << QVariantList{0} << unknown;
    QTest::newRow("what there is not") << "Format" << QVariantList() << unknown;
}

void TestDeviceOnBus::hostileCallsChangeNothing()
{
    QFETCH(QString, method);
    QFETCH(QVariantList, arguments);
    EditorOnBusFixture fixture;
    fixture.startWhole();
    const QDBusConnection bus = QDBusConnection::connectToBus(fixture.bus.address(), "hostile");
    const QDBusMessage answer = call(bus, method, arguments);
    QTEST(answer.errorName(), "error");
    QCOMPARE(EditorOnBusFixture::sent(), QStringList());
    QVERIFY(!fixture.editor.window->memory().isDirty());
    QVERIFY(fixture.editor.agrees());
    QDBusConnection::disconnectFromBus("hostile");
}

void TestDeviceOnBus::callerWhoLeavesIsToldNoMore()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    const QDBusConnection bus = QDBusConnection::connectToBus(fixture.bus.address(), "watcher");
    QCOMPARE(call(bus, "Watch", {}).type(), QDBusMessage::ReplyMessage);
    QDBusConnection::disconnectFromBus("watcher");
    fixture.editor.device.turn(0, 5);
    QTRY_VERIFY(fixture.editor.agrees());
    QCOMPARE(fixture.ctl.run({"get", "1.cc"}).status, 0);
}

void TestDeviceOnBus::manyAskAtOnce()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    const QDBusConnection bus = QDBusConnection::connectToBus(fixture.bus.address(), "many");
    QList<QDBusPendingCall> calls;
    for (int i = 0; i < 20; ++i)
        calls.append(bus.asyncCall(
            QDBusMessage::createMethodCall(k_busName, "/org/ktzjx/Editor/Device", "org.ktzjx.Editor.Device", "Ask")));
    for (const QDBusPendingCall& pending : calls) {
        QTRY_VERIFY(pending.isFinished());
        const QDBusPendingReply<QByteArray> reply(pending);
        QVERIFY(reply.isValid());
        QCOMPARE(reply.value().size(), 40);
        QCOMPARE(reply.value().at(0), 'J'); // 74
    }
    QDBusConnection::disconnectFromBus("many");
}

/// The memory goes on to call whoever has ever listened together with a page.
void TestDeviceOnBus::deviceThatTurnsWhileTheEditorEnds()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    QCOMPARE(fixture.ctl.run({"set", "1.cc=1"}).status, 0); // with a look at what the device holds
    fixture.session.refuse();
    for (int i = 0; i < 100; ++i)
        fixture.editor.device.turn(i % 8, i);
    QTRY_VERIFY(fixture.editor.agrees());
    fixture.editor.window.reset();
}

KTZ_TEST(QApplication, TestDeviceOnBus)
#include "TestDeviceOnBus.moc"
