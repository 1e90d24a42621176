#include "app/DisplaySetup.h"
#include "app/SilentMessages.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QProcess>

class TestDisplaySetup : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void environment_data();
    void environment();
    void dialogFontKeepsItsUsualSizeInPixels();
    void dialogFontInPixelsStays();
    void fatalMessageEndsTheProcessWithOneLine();
    void silentHandlerIsSilent();

  private:
    QHash<QByteArray, QByteArray> m_saved;
};

namespace
{
const QList<QByteArray> k_variables{"QT_FONT_DPI", "WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM"};
}

void TestDisplaySetup::init()
{
    CTestCase::init();
    for (const QByteArray& name : k_variables) {
        if (qEnvironmentVariableIsSet(name))
            m_saved.insert(name, qgetenv(name));
        qunsetenv(name);
    }
}

void TestDisplaySetup::cleanup()
{
    for (const QByteArray& name : k_variables) {
        if (m_saved.contains(name))
            qputenv(name, m_saved.value(name));
        else
            qunsetenv(name);
    }
}

void TestDisplaySetup::environment_data()
{
    QTest::addColumn<QByteArrayList>("given");
    QTest::addColumn<QByteArray>("fontDpi");
    QTest::addColumn<QByteArray>("platform");
    const QByteArray x = "DISPLAY=:0";
    const QByteArray wayland = "WAYLAND_DISPLAY=wayland-0";
    QTest::newRow("X session") << QByteArrayList{x} << QByteArray("72") << QByteArray();
    QTest::newRow("Wayland session with an X server")
        << QByteArrayList{x, wayland} << QByteArray("72") << QByteArray("xcb");
    QTest::newRow("Wayland alone") << QByteArrayList{wayland} << QByteArray("72") << QByteArray();
    QTest::newRow("platform set by the user")
        << QByteArrayList{x, wayland, "QT_QPA_PLATFORM=wayland"} << QByteArray("72") << QByteArray("wayland");
    QTest::newRow("resolution set by the user")
        << QByteArrayList{x, "QT_FONT_DPI=120"} << QByteArray("120") << QByteArray();
}

void TestDisplaySetup::environment()
{
    QFETCH(QByteArrayList, given);
    QFETCH(QByteArray, fontDpi);
    QFETCH(QByteArray, platform);
    for (const QByteArray& setting : given) {
        const qsizetype at = setting.indexOf('=');
        qputenv(setting.left(at), setting.mid(at + 1));
    }
    DisplaySetup::prepareEnvironment();
    QCOMPARE(qgetenv("QT_FONT_DPI"), fontDpi);
    QCOMPARE(qgetenv("QT_QPA_PLATFORM"), platform);
}

void TestDisplaySetup::dialogFontKeepsItsUsualSizeInPixels()
{
    QFont desktop(QStringLiteral("Sans"));
    desktop.setPointSizeF(9);
    // 9 points are 12 pixels at 96 dots an inch, and so are 12 points at 72.
    QCOMPARE(DisplaySetup::dialogFont(desktop, 72).pointSizeF(), 12.0);
    QCOMPARE(DisplaySetup::dialogFont(desktop, 96).pointSizeF(), 9.0);
}

void TestDisplaySetup::dialogFontInPixelsStays()
{
    QFont desktop(QStringLiteral("Sans"));
    desktop.setPixelSize(13);
    QCOMPARE(DisplaySetup::dialogFont(desktop, 72), desktop);
}

void TestDisplaySetup::fatalMessageEndsTheProcessWithOneLine()
{
    // This program again, as a process without any display.
    QProcess editor;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.insert(QStringLiteral("KTZ_TEST_FATAL"), QStringLiteral("1"));
    editor.setProcessEnvironment(environment);
    editor.start(QCoreApplication::applicationFilePath(), {});
    QVERIFY(editor.waitForFinished());
    QCOMPARE(editor.exitStatus(), QProcess::NormalExit);
    QCOMPARE(editor.exitCode(), 1);
    QCOMPARE(editor.readAllStandardOutput(), QByteArray());
    QCOMPARE(editor.readAllStandardError(), QByteArray("ktz-jx-editor: what is missing\n"));
}

void TestDisplaySetup::silentHandlerIsSilent()
{
    const QtMessageHandler previous = qInstallMessageHandler(doNotOutputMessage);
    qWarning("nobody reads this");
    QVERIFY(qInstallMessageHandler(previous) == &doNotOutputMessage);
}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsSet("KTZ_TEST_FATAL")) {
        const DisplaySetup::CFatalMessageGuard guard;
        qWarning("this is not fatal");
        qFatal("what is missing\nand how to look for it");
    }
    QApplication application(argc, argv);
    TestDisplaySetup test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestDisplaySetup.moc"
