#include "app/CApplication.h"
#include "app/CMainWindow.h"
#include "app/RunEditor.h"
#include "app/common/Constants.h"
#include "tests/support/CFileDialogAnswer.h"
#include "tests/support/CTestCase.h"

#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

/// The editor as it is started, on a desktop that scales by Xft.dpi: KTZ_XFT_DPI says how much.
class TestDesktopScale : public CTestCase
{
    Q_OBJECT

  private slots:
    void windowHasTheDesktopsRatio();
    void skinFontsHaveTheirHeights();
    void dialogsHaveTheDesktopsFont();
    void environmentIsTheUsers();

  private:
    const double m_ratio = qEnvironmentVariable("KTZ_XFT_DPI").toDouble() / 96;
};

namespace
{
int heightOf(const QWidget* widget)
{
    return QFontInfo(widget->font()).pixelSize();
}
} // namespace

void TestDesktopScale::windowHasTheDesktopsRatio()
{
    QVERIFY(m_ratio >= 1);
    QCOMPARE(g_mainWindow->devicePixelRatioF(), m_ratio);
    QCOMPARE(g_mainWindow->size(), QSize(446, 680));
}

void TestDesktopScale::skinFontsHaveTheirHeights()
{
    QCOMPARE(heightOf(g_mainWindow), 10);
    auto* bar = g_mainWindow->findChild<QMenuBar*>();
    QCOMPARE(heightOf(bar), 7);
    const QList<QAction*> menus = bar->actions();
    QCOMPARE(menus.size(), 3);
    for (const QAction* menu : menus)
        QCOMPARE(heightOf(menu->menu()), 7);
}

void TestDesktopScale::dialogsHaveTheDesktopsFont()
{
    // What any other program shows text in: a size in points, at the desktop's own resolution.
    const QFont desktop = QApplication::font();
    QVERIFY(desktop.pointSizeF() > 0);
    const int expected = qRound(desktop.pointSizeF() * 96 / 72);
    int box = 0;
    QTimer::singleShot(0, [&] {
        QWidget* shown = QApplication::activeModalWidget();
        box = heightOf(shown->findChild<QLabel*>(QStringLiteral("qt_msgbox_label")));
        shown->close();
    });
    g_mainWindow->manual(); // there is none beside this test
    QCOMPARE(box, expected);

    int dialog = 0;
    QTimer::singleShot(0, [&] {
        QWidget* shown = QApplication::activeModalWidget();
        dialog = heightOf(shown->findChild<QLabel*>());
        shown->close();
    });
    g_mainWindow->open();
    QCOMPARE(dialog, expected);
}

void TestDesktopScale::environmentIsTheUsers()
{
    for (const char* name : {"QT_FONT_DPI", "QT_QPA_PLATFORM", "QT_SCALE_FACTOR"})
        QVERIFY2(!qEnvironmentVariableIsSet(name), name);
}

KTZ_TEST_MAIN(TestDesktopScale)(int argc, char** argv)
{
    for (const char* name : {"QT_FONT_DPI", "QT_QPA_PLATFORM", "QT_SCALE_FACTOR"})
        qunsetenv(name);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    int failures = 0;
    char* program = argv[0];
    const int loop = runEditor(1, &program, [&] {
        // Once the window is up.
        QTimer::singleShot(0, [&] {
            TestDesktopScale test;
            failures = QTest::qExec(&test, argc, argv);
            QCoreApplication::quit();
        });
        return nullptr;
    });
    return failures != 0 || loop != 0 ? 1 : 0;
}
#include "TestDesktopScale.moc"
