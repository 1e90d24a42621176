#include "tests/app/CWindowManager.h"
#include "tests/app/EditorFixture.h"
#include "tests/support/CTestCase.h"
#include "widgets/COnOffButton.h"

#include <QMenu>
#include <QMessageBox>
#include <QTemporaryDir>

#include <optional>

/// Whatever the window asks stands in front of it, and stays there when the window is clicked; with the pin pressed
/// and without it. Under a real window manager, by the X server's own order.
class TestStackingOrder : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void cleanupTestCase();

    void questionStandsInFront_data();
    void questionStandsInFront();
    void pinKeepsTheWindowInFront();

  private:
    std::optional<CWindowManager> m_manager;
};

void TestStackingOrder::initTestCase()
{
    m_manager.emplace();
}

void TestStackingOrder::cleanupTestCase()
{
    m_manager.reset();
}

void TestStackingOrder::questionStandsInFront_data()
{
    QTest::addColumn<bool>("pinned");
    QTest::addColumn<QString>("command");
    for (const bool pinned : {false, true}) {
        const char* how = pinned ? "in front" : "not in front";
        QTest::addRow("open, %s", how) << pinned << k_openString;
        QTest::addRow("save, %s", how) << pinned << k_saveString;
        QTest::addRow("save as, %s", how) << pinned << k_saveAsString;
        QTest::addRow("factory preset, %s", how) << pinned << k_resetString;
        QTest::addRow("manual is missing, %s", how) << pinned << k_manualString;
        QTest::addRow("save question, %s", how) << pinned << QString();
        QTest::addRow("menu, %s", how) << pinned << k_fileMenuString;
    }
}

void TestStackingOrder::questionStandsInFront()
{
    QFETCH(bool, pinned);
    QFETCH(QString, command);
    EditorFixture fixture;
    fixture.plug();
    CMainWindow& window = fixture.startWhole();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto* pin = window.findChild<COnOffButton*>(QStringLiteral("holdWindowInFrontBtn"));
    if (pinned)
        QTest::mouseClick(pin, Qt::LeftButton);

    bool seen = false;
    bool stays = false;
    QTimer look;
    connect(&look, &QTimer::timeout, [&] {
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* asked = popup != nullptr ? popup : QApplication::activeModalWidget();
        if (asked == nullptr || !asked->windowHandle()->isExposed())
            return;
        look.stop();
        const auto inFront = [&] { return CWindowManager::isInFront(asked->windowHandle(), window.windowHandle()); };
        seen = QTest::qWaitFor(inFront, 2000);
        // A click takes a window to the front, if its window manager lets it.
        if (popup == nullptr)
            window.windowHandle()->raise();
        QTest::qWait(100);
        stays = inFront();
        asked->close();
    });
    look.start(5);
    if (command.isEmpty()) {
        fixture.slider(1100)->setValue(1);
        window.close();
    } else if (command == k_fileMenuString) {
        QTest::mouseClick(fixture.menuBar(), Qt::LeftButton, {},
                          fixture.menuBar()->actionGeometry(fixture.action(command)).center());
        QTRY_VERIFY(!look.isActive());
    } else {
        fixture.action(command)->trigger();
    }
    QVERIFY(!look.isActive());
    QVERIFY(seen);
    QVERIFY(stays);
}

void TestStackingOrder::pinKeepsTheWindowInFront()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    QWidget other;
    other.setGeometry(window.geometry());
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&other));
    other.raise();
    QTRY_VERIFY(CWindowManager::isInFront(other.windowHandle(), window.windowHandle()));
    auto* pin = window.findChild<COnOffButton*>(QStringLiteral("holdWindowInFrontBtn"));
    QTest::mouseClick(pin, Qt::LeftButton);
    QTRY_VERIFY(CWindowManager::isInFront(window.windowHandle(), other.windowHandle()));
    other.raise();
    QTest::qWait(100);
    QVERIFY(CWindowManager::isInFront(window.windowHandle(), other.windowHandle()));
    QTest::mouseClick(pin, Qt::LeftButton);
    other.raise();
    QTRY_VERIFY(CWindowManager::isInFront(other.windowHandle(), window.windowHandle()));
}

KTZ_TEST_MAIN(TestStackingOrder)(int argc, char** argv)
{
    // Its own dialogs and a home of its own, whatever desktop the test runs on.
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path()));
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    TestStackingOrder test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestStackingOrder.moc"
