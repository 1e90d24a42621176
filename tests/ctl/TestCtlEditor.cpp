#include "tests/ctl/EditorOnBusFixture.h"

#include <QDBusContext>
#include <QJsonArray>
#include <QMenu>
#include <QMessageBox>

#include <csignal>

namespace
{
constexpr int k_noDevice = int(CtlStatus::NoDevice);
constexpr int k_noAnswer = int(CtlStatus::NoAnswer);

const QString k_taken =
    QStringLiteral("ktz-jxctl: \"KTZ-JX Editor\" is running and has the device; --force goes on beside it\n");

/// An editor that takes every call and answers none.
class CDeafEditor : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.ktzjx.Editor.Device")

  public:
    explicit CDeafEditor(const QString& bus) : m_connection(QDBusConnection::connectToBus(bus, "deaf editor"))
    {
        m_isThere =
            m_connection.registerObject("/org/ktzjx/Editor/Device", this, QDBusConnection::ExportScriptableSlots) &&
            m_connection.registerService(k_busName);
    }
    ~CDeafEditor() override
    {
        QDBusConnection::disconnectFromBus("deaf editor");
    }
    CDeafEditor(const CDeafEditor&) = delete;
    CDeafEditor& operator=(const CDeafEditor&) = delete;

    [[nodiscard]] bool isThere() const
    {
        return m_isThere;
    }

  public slots:
    Q_SCRIPTABLE QByteArray Read()
    {
        setDelayedReply(true);
        emit asked();
        return {};
    }

  signals:
    void asked();

  private:
    QDBusConnection m_connection;
    bool m_isThere = false;
};
} // namespace

/// The program without a window beside a running editor, which it asks to do the work.
class TestCtlEditor : public CTestCase
{
    Q_OBJECT

  private slots:
    void reads_data();
    void reads();
    void changes_data();
    void changes();
    void changeIsAnEditByHand();
    void savedFileIsTheEditors();
    void loadsAFile();
    void editByHandInBetweenStays();
    void verifyAsksTheDevice();
    void deviceThatHoldsSomethingElse();
    void dryRunSendsNothing();
    void verboseTellsWhatIsAsked();
    void watches();
    void watchEndsWithALostDevice();
    void watchEndsWithTheEditor();
    void busyEditorRefusesAChange_data();
    void busyEditorRefusesAChange();
    void busyEditorIsWaitedFor();
    void editorThatStartsIsWaitedFor();
    void editorWithoutAConnection();
    void lossInTheMiddle();
    void deviceThatSaysNothingMore();
    void withoutSomebodyToAskTheDeviceIsTaken_data();
    void withoutSomebodyToAskTheDeviceIsTaken();
    void editorThatDoesNotAnswer();
    void stopWhileItDoesNotAnswer();
    void forceGoesOnBesideIt();
};

void TestCtlEditor::reads_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("output");
    QTest::newRow("get") << QStringList{"get", "3.cc", "3.led"} << 0 << "10\nconcave\n";
    QTest::newRow("show") << QStringList{"show", "device"} << 0
                          << "knob\tcc\tchannel\tmax\tmin\tled\n1\t5\t1\t127\t0\tascent\n2\t71\t1\t127\t0\tascent\n"
                             "3\t10\t1\t127\t0\tconcave\n4\t7\t1\t127\t0\tascent\n5\t73\t1\t127\t0\tascent\n"
                             "6\t72\t1\t127\t0\tascent\n7\t91\t1\t127\t0\tascent\n8\t93\t1\t127\t0\tascent\n";
    QTest::newRow("diff") << QStringList{"diff", "factory", "device"} << 1 << "1.cc: 74, 5\n";
    QTest::newRow("get as JSON") << QStringList{"get", "8.cc", "--json"} << 0
                                 << "{\n    \"values\": [\n        {\n            \"knob\": 8,\n            "
                                    "\"setting\": \"cc\",\n            \"value\": 93\n        }\n    ]\n}\n";
}

void TestCtlEditor::reads()
{
    QFETCH(QStringList, arguments);
    EditorOnBusFixture fixture;
    fixture.editor.device.setSetting(0, &KnobSettings::cc, 5);
    fixture.startWhole();
    const CtlOutcome outcome = fixture.ctl.run(arguments);
    QCOMPARE(outcome.errors, QString());
    QTEST(outcome.status, "status");
    QTEST(outcome.output, "output");
    // The editor knows it; the device is left alone.
    QCOMPARE(EditorOnBusFixture::sent(), QStringList());
    QVERIFY(!fixture.editor.window->memory().isDirty());
}

void TestCtlEditor::changes_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QString>("output");
    QTest::newRow("set two of a knob, in one message")
        << QStringList{"set", "3.cc=11", "3.led=convex"} << QStringList{"020b007f0003"}
        << "sent to knobs 3; the device holds it\n";
    QTest::newRow("set what is there") << QStringList{"set", "3.cc=10"} << QStringList()
                                       << "nothing to send: the device holds it already\n";
    QTest::newRow("copy") << QStringList{"copy", "3", "1", "8"} << QStringList{"000a007f0002", "070a007f0002"}
                          << "sent to knobs 1, 8; the device holds it\n";
    QTest::newRow("reset") << QStringList{"reset"} << QStringList{"0548007f0000"}
                           << "sent to knobs 6; the device holds it\n";
    QTest::newRow("without looking after it") << QStringList{"set", "1-2.channel=16", "--no-verify"}
                                              << QStringList{"004a0f7f0000", "01470f7f0000"} << "sent to knobs 1, 2\n";
}

void TestCtlEditor::changes()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, sent);
    EditorOnBusFixture fixture;
    fixture.editor.device.setSetting(5, &KnobSettings::max, 99);
    fixture.startWhole();
    const CtlOutcome outcome = fixture.ctl.run(arguments);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.status, 0);
    QTEST(outcome.output, "output");
    QStringList wire;
    for (const QString& change : sent)
        wire.append(QStringLiteral("f043103e18050203%1f7").arg(change));
    if (outcome.output.contains("holds it\n"))
        wire.append(k_requestAll);
    QCOMPARE(EditorOnBusFixture::sent(), wire);
    QTRY_VERIFY(fixture.editor.agrees());
}

void TestCtlEditor::changeIsAnEditByHand()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    QVERIFY(!fixture.editor.window->memory().isDirty());
    QCOMPARE(fixture.ctl.run({"set", "3.cc=11", "--no-verify"}).status, 0);
    QCOMPARE(fixture.editor.shown(2).cc, 11);
    QCOMPARE(fixture.editor.device.settings(2).cc, 11);
    QVERIFY(fixture.editor.window->memory().isDirty());
}

void TestCtlEditor::savedFileIsTheEditors()
{
    EditorOnBusFixture fixture;
    fixture.editor.device.setSettings(3, {.cc = 1, .channel = 2, .max = 3, .min = 4, .led = 3});
    fixture.startWhole();
    QCOMPARE(fixture.ctl.run({"save", fixture.ctl.path("by-editor.CJX")}).status, 0);
    fixture.editor.window.reset();
    CtlFixture alone;
    alone.device.setSettings(3, {.cc = 1, .channel = 2, .max = 3, .min = 4, .led = 3});
    alone.plug();
    QCOMPARE(alone.run({"save", alone.path("alone.CJX")}).status, 0);
    QFile byEditor(fixture.ctl.path("by-editor.CJX"));
    QFile byItself(alone.path("alone.CJX"));
    QVERIFY(byEditor.open(QIODevice::ReadOnly) && byItself.open(QIODevice::ReadOnly));
    QCOMPARE(byEditor.readAll(), byItself.readAll());
}

void TestCtlEditor::loadsAFile()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    const QString file =
        fixture.ctl.make("part.CJX", "<!DOCTYPE KTZJXEditor><parameters version=\"1.0\"><controlview><key1>"
                                     "<key1101>5</key1101></key1></controlview></parameters>");
    const CtlOutcome outcome = fixture.ctl.run({"load", file, "--json", "--quiet"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(
        outcome.json(),
        (QJsonObject{
            {"sent", QJsonArray{2}}, {"unsent", QJsonArray()}, {"verified", true}, {"differences", QJsonArray()}}));
    QCOMPARE(fixture.editor.device.settings(1).cc, 5);
    QCOMPARE(fixture.editor.shown(1).cc, 5);
}

/// Only what was asked for is changed, whatever the user has done since it was read.
void TestCtlEditor::editByHandInBetweenStays()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    // The user moves a field of the second knob once the first has been sent.
    QTimer hand;
    connect(&hand, &QTimer::timeout, this, [&] {
        if (EditorOnBusFixture::sent().isEmpty())
            return;
        hand.stop();
        fixture.editor.slider(k_maxCategory + 1)->setValue(90);
    });
    hand.start(0);
    QCOMPARE(fixture.ctl.run({"set", "1-2.cc=9"}).status, 0);
    QTRY_COMPARE(fixture.editor.device.settings(1).max, 90);
    QCOMPARE(fixture.editor.device.settings(1).cc, 9);
    QCOMPARE(fixture.editor.shown(1).max, 90);
}

void TestCtlEditor::verifyAsksTheDevice()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    QCOMPARE(fixture.ctl.run({"set", "1.cc=1"}).status, 0);
    QCOMPARE(EditorOnBusFixture::sent().count(k_requestAll), 1);
}

void TestCtlEditor::deviceThatHoldsSomethingElse()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    fixture.editor.device.keepSettings(1);
    const CtlOutcome outcome = fixture.ctl.run({"set", "1.cc=1"});
    QCOMPARE(outcome.status, int(CtlStatus::NotHeld));
    QCOMPARE(outcome.output, "1.cc: sent 1, held 74\n");
    QTRY_COMPARE(fixture.editor.shown(0).cc, 74);
}

void TestCtlEditor::dryRunSendsNothing()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    const CtlOutcome outcome = fixture.ctl.run({"set", "1.cc=1", "--dry-run"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.output, "F0 43 10 3E 18 05 02 03 00 01 00 7F 00 00 F7  change parameter, knob 1\n");
    QCOMPARE(EditorOnBusFixture::sent(), QStringList());
    QCOMPARE(fixture.editor.shown(0).cc, 74);
}

void TestCtlEditor::verboseTellsWhatIsAsked()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    QCOMPARE(fixture.ctl.run({"set", "2.cc=1", "--verbose"}).errors,
             "= editor, read\n= editor, write knob 2\n= editor, ask\n");
}

void TestCtlEditor::watches()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    QTimer hands; // before the watch they are nobody's
    int turn = 0;
    QObject::connect(&hands, &QTimer::timeout, [&] {
        fixture.editor.device.turn(turn % 8, turn % 128);
        ++turn;
    });
    hands.start(0);
    const CtlOutcome outcome = fixture.ctl.run({"watch", "--count", "500"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QString());
    QStringList lines = outcome.output.split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 500);
    // From the first one on every one is there, in its order.
    int first = -1;
    for (int i = 0; i < lines.size(); ++i) {
        const QString what = lines[i].sliced(14);
        if (first < 0) {
            for (first = 0; what != QStringLiteral("%1.value=%2").arg(first % 8 + 1).arg(first % 128);)
                ++first;
        }
        QCOMPARE(what, QStringLiteral("%1.value=%2").arg((first + i) % 8 + 1).arg((first + i) % 128));
    }
    hands.stop();
    // The editor shows them too.
    QTRY_VERIFY(fixture.editor.agrees());
    fixture.whenWatched = [&] {
        fixture.editor.device.setSetting(6, &KnobSettings::led, 1);
        fixture.editor.device.reportSettings(6);
    };
    const CtlOutcome change = fixture.ctl.run({"watch", "--count", "1", "--json"});
    QCOMPARE(change.json()["settings"], (QJsonObject{{"led", "descend"}}));
    QCOMPARE(change.json()["knob"], 7);
    QCOMPARE(EditorOnBusFixture::sent(), QStringList());
}

void TestCtlEditor::watchEndsWithALostDevice()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    fixture.whenWatched = [&] { fixture.editor.device.unplug(); };
    // The editor tells its user.
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->accept();
    });
    answer.start(5);
    const CtlOutcome outcome = fixture.ctl.run({"watch"});
    QCOMPARE(outcome.status, k_noAnswer);
    QCOMPARE(outcome.errors, "ktz-jxctl: the connection to the device is lost\n");
    QTRY_VERIFY(QApplication::activeModalWidget() == nullptr);
}

void TestCtlEditor::watchEndsWithTheEditor()
{
    EditorOnBusFixture fixture;
    auto other = std::make_unique<CSingleEditorOnBus>(JoinTimes{.bus = 20s});
    fixture.editor.plug();
    fixture.editor.startWhole();
    fixture.editor.waitUntilConnected();
    QCOMPARE(other->start({}, {}), CSingleEditor::Start::Editor);
    other->offerDevice(*fixture.editor.window);
    fixture.whenWatched = [&] {
        other->refuse();
        other.reset();
    };
    QCOMPARE(fixture.ctl.run({"watch"}).status, k_noAnswer);
}

void TestCtlEditor::busyEditorRefusesAChange_data()
{
    QTest::addColumn<bool>("isMenu");
    QTest::newRow("question") << false;
    QTest::newRow("menu") << true;
}

void TestCtlEditor::busyEditorRefusesAChange()
{
    QFETCH(bool, isMenu);
    EditorOnBusFixture fixture;
    fixture.startWhole();
    QMessageBox box(fixture.editor.window.get());
    QMenu menu(fixture.editor.window.get());
    menu.addAction("action");
    if (isMenu)
        menu.popup(QPoint(10, 10));
    else
        box.open();
    const CtlOutcome outcome = fixture.ctl.run({"set", "1.cc=1"});
    QCOMPARE(outcome.status, k_noDevice);
    QCOMPARE(outcome.errors,
             "ktz-jxctl: \"KTZ-JX Editor\" is running and waits for its user to answer; --force goes on "
             "beside it; knobs sent: none; not sent: 1\n");
    QCOMPARE(EditorOnBusFixture::sent(), QStringList());
    QVERIFY(!fixture.editor.window->memory().isDirty());
    // To look does not disturb the user.
    QCOMPARE(fixture.ctl.run({"get", "1.cc"}).output, "74\n");
}

void TestCtlEditor::busyEditorIsWaitedFor()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    QMessageBox box(fixture.editor.window.get());
    box.open();
    QTimer::singleShot(30ms, &box, &QMessageBox::accept);
    QCOMPARE(fixture.ctl.run({"set", "1.cc=1", "--wait", "60"}).status, 0);
    QCOMPARE(fixture.editor.device.settings(0).cc, 1);
}

void TestCtlEditor::editorThatStartsIsWaitedFor()
{
    EditorOnBusFixture fixture;
    fixture.editor.plug();
    fixture.editor.start(); // the splash is there
    fixture.offer();
    const CtlOutcome refused = fixture.ctl.run({"get", "1.cc"});
    QCOMPARE(refused.status, k_noDevice);
    QCOMPARE(refused.errors,
             "ktz-jxctl: \"KTZ-JX Editor\" is running and has no connection to the device; --force goes "
             "on beside it\n");
    QTimer::singleShot(30ms, [&] { fixture.editor.finishSplash(); });
    QCOMPARE(fixture.ctl.run({"get", "1.cc", "--wait", "60"}).output, "74\n");
}

void TestCtlEditor::editorWithoutAConnection()
{
    EditorOnBusFixture fixture;
    fixture.editor.startWhole();
    fixture.offer();
    for (const QStringList& arguments : {QStringList{"show"}, {"set", "1.cc=1"}, {"watch"}}) {
        const CtlOutcome outcome = fixture.ctl.run(arguments);
        QCOMPARE(outcome.status, k_noDevice);
        QCOMPARE(outcome.errors, "ktz-jxctl: \"KTZ-JX Editor\" is running and has no connection to the device; --force "
                                 "goes on beside it\n");
    }
    QVERIFY(!fixture.editor.window->memory().isDirty());
}

void TestCtlEditor::lossInTheMiddle()
{
    EditorOnBusFixture fixture;
    fixture.editor.times.keepInterval = 3600s;
    fixture.editor.plug();
    fixture.editor.startWhole();
    fixture.editor.waitUntilConnected();
    fixture.offer();
    fixture.editor.device.refuseSend(3, CSimulatedDevice::k_always); // two knobs arrive
    const CtlOutcome outcome = fixture.ctl.run({"set", "1-4.cc=1", "--json"});
    QCOMPARE(outcome.status, k_noAnswer);
    QCOMPARE(outcome.errors, "ktz-jxctl: the connection to the device is lost; knobs sent: 1, 2; not sent: 3, 4\n");
    QCOMPARE(outcome.json()["sent"], (QJsonArray{1, 2}));
    // Like a field that is edited, the page goes back to what the device has.
    QCOMPARE(fixture.editor.shown(2).cc, 10);
}

void TestCtlEditor::deviceThatSaysNothingMore()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    fixture.editor.device.goSilent();
    const CtlOutcome outcome = fixture.ctl.run({"set", "1.cc=1"});
    QCOMPARE(outcome.status, k_noAnswer);
    QCOMPARE(outcome.errors, "ktz-jxctl: the device does not say what it holds; knobs sent: 1; not sent: none\n");
}

void TestCtlEditor::withoutSomebodyToAskTheDeviceIsTaken_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::newRow("no editor on this bus") << QByteArray("here");
    QTest::newRow("no bus") << QByteArray("unix:path=/nonexistent/bus");
    QTest::newRow("no address of one") << QByteArray("nothing");
}

void TestCtlEditor::withoutSomebodyToAskTheDeviceIsTaken()
{
    QFETCH(QByteArray, address);
    EditorOnBusFixture fixture;
    fixture.editor.plug();
    if (address != "here")
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    const CtlOutcome outcome = fixture.ctl.run({"set", "1.cc=1"});
    QCOMPARE(outcome.status, k_noDevice);
    QCOMPARE(outcome.errors, k_taken);
    QCOMPARE(EditorOnBusFixture::sent(), QStringList());
}

void TestCtlEditor::editorThatDoesNotAnswer()
{
    EditorOnBusFixture fixture;
    fixture.ctl.times.editor.answer = 50ms;
    const CDeafEditor deaf(fixture.bus.address());
    QVERIFY(deaf.isThere());
    const CtlOutcome outcome = fixture.ctl.run({"set", "1.cc=1"});
    QCOMPARE(outcome.status, k_noDevice);
    QCOMPARE(outcome.errors,
             "ktz-jxctl: \"KTZ-JX Editor\" is running and does not answer; --force goes on beside it\n");
}

void TestCtlEditor::stopWhileItDoesNotAnswer()
{
    EditorOnBusFixture fixture;
    fixture.ctl.times.editor.answer = 3600s;
    const CDeafEditor deaf(fixture.bus.address());
    connect(&deaf, &CDeafEditor::asked, this, [&] { fixture.ctl.stop.request(SIGINT); });
    QCOMPARE(fixture.ctl.run({"show"}).status, 128 + SIGINT);
}

void TestCtlEditor::forceGoesOnBesideIt()
{
    EditorOnBusFixture fixture;
    fixture.startWhole();
    QCOMPARE(fixture.ctl.run({"get", "1.cc", "--force"}).output, "74\n");
    QVERIFY(EditorOnBusFixture::sent().contains(QString::fromLatin1(k_startMessageBytes.toHex())));
}

KTZ_TEST(QApplication, TestCtlEditor)
#include "TestCtlEditor.moc"
