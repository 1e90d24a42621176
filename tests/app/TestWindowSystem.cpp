#include "app/common/WindowSystem.h"
#include "tests/support/CTestCase.h"

class TestWindowSystem : public CTestCase
{
    Q_OBJECT

  private slots:
    void whatItLetsAProgramDo_data();
    void whatItLetsAProgramDo();
};

void TestWindowSystem::whatItLetsAProgramDo_data()
{
    QTest::addColumn<QString>("platform");
    QTest::addColumn<QByteArray>("display");
    QTest::addColumn<QByteArray>("session");
    QTest::addColumn<bool>("places");
    QTest::addColumn<bool>("keepsInFront");
    const QByteArray none;
    QTest::newRow("X11") << "xcb" << none << QByteArray("x11") << true << true;
    QTest::newRow("X11, session unknown") << "xcb" << none << none << true << true;
    QTest::newRow("X11 on a text console") << "xcb" << none << QByteArray("tty") << true << true;
    QTest::newRow("Xwayland") << "xcb" << QByteArray("wayland-0") << QByteArray("wayland") << false << true;
    QTest::newRow("Xwayland, by the display") << "xcb" << QByteArray("wayland-0") << none << false << true;
    QTest::newRow("Xwayland, by the session") << "xcb" << none << QByteArray("wayland") << false << true;
    QTest::newRow("Wayland") << "wayland" << QByteArray("wayland-0") << QByteArray("wayland") << false << false;
    QTest::newRow("Wayland with EGL") << "wayland-egl" << none << none << false << false;
    QTest::newRow("macOS") << "cocoa" << none << none << true << true;
    QTest::newRow("no display, from a Wayland session")
        << "offscreen" << QByteArray("wayland-0") << QByteArray("wayland") << true << true;
}

void TestWindowSystem::whatItLetsAProgramDo()
{
    QFETCH(QString, platform);
    QFETCH(QByteArray, display);
    QFETCH(QByteArray, session);
    const WindowSystem system(platform, display, session);
    QTEST(system.letsProgramsPlace(), "places");
    QTEST(system.keepsWindowsInFront(), "keepsInFront");
    QCOMPARE(system.scalesScreensApart(), platform != "cocoa");
}

KTZ_TEST(QCoreApplication, TestWindowSystem)
#include "TestWindowSystem.moc"
