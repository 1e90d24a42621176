#include "app/linux/CDesktopInterface.h"
#include "tests/app/CActivationRequests.h"
#include "tests/app/CEditorProcess.h"
#include "tests/app/CTestBus.h"
#include "tests/app/StageFile.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QWidget>

namespace
{
constexpr QLatin1StringView k_path("/org/ktzjx/Editor");

/// The test in the place of the running editor.
class CStandIn : public QObject
{
  public:
    explicit CStandIn(const QString& bus) : m_connection(QDBusConnection::connectToBus(bus, k_busName))
    {
        connect(&m_interface, &CDesktopInterface::requested, this, [this](const QByteArray& path, const auto& token) {
            m_path = path;
            m_token = token;
            ++m_requests;
        });
        m_owner = m_connection.registerObject(k_path, &m_interface, QDBusConnection::ExportScriptableSlots) &&
                  m_connection.registerService(k_busName);
    }
    ~CStandIn() override
    {
        QDBusConnection::disconnectFromBus(k_busName);
    }
    CStandIn(const CStandIn&) = delete;
    CStandIn& operator=(const CStandIn&) = delete;

    QDBusConnection m_connection;
    CDesktopInterface m_interface;
    bool m_owner = false;
    QByteArray m_path;
    ActivationToken m_token;
    int m_requests = 0;
};
} // namespace

/// What the editor is to the desktop: who may call it, with what proof of the user's wish, and what then comes to the
/// front.
class TestDesktopInterface : public CTestCase
{
    Q_OBJECT

  private slots:
    void secondStartWithoutAFileBringsTheWindowToTheFront();
    void desktopsTokenIsPassedOn_data();
    void desktopsTokenIsPassedOn();
    void windowManagerHearsWhenTheUserAsked_data();
    void windowManagerHearsWhenTheUserAsked();
    void callsOfADesktop();
    void editorComesWhenTheBusStartsIt();
};

void TestDesktopInterface::secondStartWithoutAFileBringsTheWindowToTheFront()
{
    QProcess manager;
    manager.start(QStringLiteral("openbox"), {});
    const auto manages = [] {
        QProcess look;
        look.start(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")});
        return look.waitForFinished() && look.readAllStandardOutput().contains("window id");
    };
    QTRY_VERIFY(manages());
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    CEditorProcess first(bus.address());
    QVERIFY(first.becameEditor());
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    QTRY_COMPARE(first.ask("state"), QByteArray("active"));

    QWidget other;
    other.setWindowTitle(QStringLiteral("other"));
    other.setGeometry(0, 0, 1200, 900);
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&other));
    // The user goes on in another program, later than all that he did in the editor.
    QProcess pointer;
    pointer.start(QStringLiteral("xdotool"),
                  {QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--name"),
                   QStringLiteral("^other$"), QStringLiteral("windowactivate"), QStringLiteral("mousemove"),
                   QStringLiteral("600"), QStringLiteral("800"), QStringLiteral("click"), QStringLiteral("1")});
    QVERIFY(pointer.waitForFinished());
    QTRY_VERIFY(other.isActiveWindow());
    QTRY_COMPARE(first.ask("state"), QByteArray("behind"));

    CEditorProcess second(bus.address());
    QCOMPARE(second.silentEnd(), 0);
    QTRY_COMPARE(first.ask("state"), QByteArray("active"));
    QTRY_VERIFY(!other.isActiveWindow());

    QCOMPARE(first.ask("minimise"), QByteArray("minimised"));
    QTRY_COMPARE(first.ask("state"), QByteArray("minimised"));
    CEditorProcess third(bus.address());
    QCOMPARE(third.silentEnd(), 0);
    QTRY_COMPARE(first.ask("state"), QByteArray("active"));
    manager.kill();
    manager.waitForFinished();
}

void TestDesktopInterface::desktopsTokenIsPassedOn_data()
{
    QTest::addColumn<QString>("activation");
    QTest::addColumn<QString>("startupId");
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("Wayland's") << QStringLiteral("abc") << QString();
    QTest::newRow("X11's") << QString() << QStringLiteral("panel-1_TIME4711");
    QTest::newRow("both") << QStringLiteral("abc") << QStringLiteral("panel-1_TIME4711");
}

void TestDesktopInterface::desktopsTokenIsPassedOn()
{
    QFETCH(QString, activation);
    QFETCH(QString, startupId);
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    QProcessEnvironment environment = CEditorProcess::environmentFor(bus.address());
    if (!activation.isEmpty())
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), activation);
    if (!startupId.isEmpty())
        environment.insert(QStringLiteral("DESKTOP_STARTUP_ID"), startupId);
    {
        CStandIn standIn(bus.address());
        QVERIFY(standIn.m_owner);
        CEditorProcess second(environment, "/stage.CJX");
        QTRY_COMPARE(standIn.m_requests, 1);
        QCOMPARE(second.silentEnd(), 0);
        QCOMPARE(standIn.m_path, QByteArray("/stage.CJX"));
        QCOMPARE(standIn.m_token.activation, activation);
        QCOMPARE(standIn.m_token.startupId, startupId);
    }
    // Nobody is there now; the token is still nothing for programs that the editor starts.
    CEditorProcess editor(environment, {});
    QVERIFY(editor.becameEditor());
    QCOMPARE(editor.ask("tokens"), QByteArray("none"));
}

void TestDesktopInterface::windowManagerHearsWhenTheUserAsked_data()
{
    QTest::addColumn<QString>("startupId");
    QTest::addColumn<quint32>("time");
    QTest::newRow("a start from a terminal") << QString() << 0U;
    QTest::newRow("a panel's time") << QStringLiteral("panel-1-host_TIME4294967295") << 4294967295U;
    QTest::newRow("an id without a time") << QStringLiteral("panel-1-host") << 0U;
}

void TestDesktopInterface::windowManagerHearsWhenTheUserAsked()
{
    QFETCH(QString, startupId);
    QFETCH(quint32, time);
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    CEditorProcess first(bus.address());
    QVERIFY(first.becameEditor());
    QCOMPARE(first.ask("end splash"), QByteArray("ended"));
    const CActivationRequests manager;
    QProcessEnvironment environment = CEditorProcess::environmentFor(bus.address());
    if (!startupId.isEmpty())
        environment.insert(QStringLiteral("DESKTOP_STARTUP_ID"), startupId);
    CEditorProcess second(environment, {});
    QCOMPARE(second.silentEnd(), 0);
    const CActivationRequests::Request expected{2, time};
    QTRY_VERIFY(manager.requests().contains(expected));
}

void TestDesktopInterface::callsOfADesktop()
{
    const CTestBus bus;
    QVERIFY(bus.isRunning());
    const QTemporaryDir folder;
    const QString uri = QStringLiteral("file://") + QString::fromUtf8(knobFile(folder, "stage.CJX", 55));
    const QString before = QStringLiteral("file://") + QString::fromUtf8(knobFile(folder, "before.CJX", 44));
    CEditorProcess editor(bus.address());
    QVERIFY(editor.becameEditor());
    QCOMPARE(editor.ask("end splash"), QByteArray("ended"));

    QDBusConnection desktop = QDBusConnection::connectToBus(bus.address(), QStringLiteral("desktop"));
    const auto call = [&](const QString& method, const QVariantList& arguments) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(k_busName, k_path, QStringLiteral("org.freedesktop.Application"), method);
        message.setArguments(arguments);
        return desktop.call(message).type();
    };
    const QVariantMap data{{QStringLiteral("activation-token"), QStringLiteral("abc")},
                           {QStringLiteral("something-new"), 1}};
    QCOMPARE(call(QStringLiteral("Activate"), {data}), QDBusMessage::ReplyMessage);
    QCOMPARE(call(QStringLiteral("ActivateAction"), {QStringLiteral("new"), QVariantList(), data}),
             QDBusMessage::ReplyMessage);
    QCOMPARE(call(QStringLiteral("Open"), {QStringList(), data}), QDBusMessage::ReplyMessage);
    QCOMPARE(editor.ask("value"), QByteArray("7"));
    QCOMPARE(editor.ask("tokens"), QByteArray("none"));
    QCOMPARE(call(QStringLiteral("Open"), {QStringList({before, uri}), data}), QDBusMessage::ReplyMessage);
    QTRY_COMPARE(editor.ask("value"), QByteArray("55"));
    QCOMPARE(call(QStringLiteral("Open"), {QStringList(QStringLiteral("sftp://far/away.CJX")), data}),
             QDBusMessage::ReplyMessage);
    QTRY_COMPARE(editor.ask("box"), QByteArray("Failed to open the data."));
    QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
}

void TestDesktopInterface::editorComesWhenTheBusStartsIt()
{
    const QTemporaryDir folder;
    const QString report = folder.filePath(QStringLiteral("report"));
    QProcessEnvironment environment = CEditorProcess::environmentFor({});
    environment.insert(QStringLiteral("KTZ_TEST_REPORT"), report);
    const CTestBus bus(environment);
    QVERIFY(bus.isRunning());
    QVERIFY(bus.addService(k_busName, QCoreApplication::applicationFilePath()));
    const QString uri = QStringLiteral("file://") + QString::fromUtf8(knobFile(folder, "stage.CJX", 55));

    QDBusConnection desktop = QDBusConnection::connectToBus(bus.address(), QStringLiteral("desktop"));
    QDBusMessage open = QDBusMessage::createMethodCall(k_busName, k_path, QStringLiteral("org.freedesktop.Application"),
                                                       QStringLiteral("Open"));
    open << QStringList(uri) << QVariantMap();
    const QDBusMessage answer = desktop.call(open);
    QVERIFY2(answer.type() == QDBusMessage::ReplyMessage, qPrintable(answer.errorMessage()));
    QFile opened(report);
    QTRY_VERIFY(opened.exists() && opened.size() > 0);
    QVERIFY(opened.open(QIODevice::ReadOnly));
    QCOMPARE(opened.readAll(), QByteArray("55"));
    QTRY_VERIFY(!bus.hasOwner(k_busName));
    QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
}

KTZ_TEST_MAIN(TestDesktopInterface)(int argc, char** argv)
{
    if (CEditorProcess::isEditor())
        return CEditorProcess::run(argc, argv);
    QApplication application(argc, argv);
    TestDesktopInterface test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestDesktopInterface.moc"
