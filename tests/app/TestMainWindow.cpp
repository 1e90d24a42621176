#include "style/CAboutView.h"
#include "style/COnlineMark.h"
#include "tests/app/EditorFixture.h"
#include "tests/support/CTestCase.h"
#include "widgets/COnOffButton.h"

#include <QMenu>
#include <QSignalSpy>

namespace
{
const QString k_start = QStringLiteral("f043103e18050200f7");
const QString k_requestAll = QStringLiteral("f043303e180502007ff7");

} // namespace

class TestMainWindow : public CTestCase
{
    Q_OBJECT

  private slots:
    void windowIsFramelessAndOfOneSize();
    void buttons_data();
    void buttons();
    void pages_data();
    void pages();
    void absentDevice();
    void orderOnTheWireAtStart();
    void deviceSettingsAppearOnThePages();
    void turnedKnobReachesItsLED();
    void unansweredStartsBlockTheStart();
    void proxiesAreBoundToTheEditorsPort();
    void keepInFrontChangesNothingElse();
    void lockCountsNest();
    void menuBarIsLockedWhileAViewIsOpen();
    void neitherSplashNorAboutWhileLocked();
    void aboutOpensAndCloses();
    void aboutOpenedByKeysClosesByEscape();
    void escapeLeavesTheSplashAlone();
    void splashWaitsForWhoeverIsNotReady();
    void closeButtonHidesAndShows();
    void minimiseButtonMinimises();
    void windowFollowsTheDrag();
    void otherButtonsDoNotDrag();
    void windowDroppedOffTheScreenIsPulledBack();
    void lowestRowCanBeShown();
    void slotsInOrder();
};

void TestMainWindow::windowIsFramelessAndOfOneSize()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    QVERIFY(window.windowFlags().testFlag(Qt::FramelessWindowHint));
    QVERIFY(!window.windowFlags().testFlag(Qt::WindowTitleHint));
    QVERIFY(!window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
    QCOMPARE(window.size(), QSize(446, 680));
    QCOMPARE(window.minimumSize(), window.maximumSize());
    QCOMPARE(window.objectName(), QStringLiteral("MainWindow"));
    QCOMPARE(window.windowTitle(), QStringLiteral("KTZ-JX Editor"));
    QCOMPARE(window.font().family(), QStringLiteral("Morlan GLT10 Bold"));
    QCOMPARE(window.font().pixelSize(), 10);
    QCOMPARE(window.font().weight(), int(QFont::Normal));
    QCOMPARE(window.font().styleStrategy(), QFont::NoAntialias);
    QVERIFY(!window.backgroundPixmap().isNull());
}

void TestMainWindow::buttons_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QRect>("geometry");
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("checkable");
    QTest::newRow("close") << "closeWindowBtn" << QRect(14, 14, 20, 20) << 100 << false;
    QTest::newRow("minimise") << "minimizeWindowBtn" << QRect(38, 14, 20, 20) << 101 << false;
    QTest::newRow("keep in front") << "holdWindowInFrontBtn" << QRect(62, 14, 20, 20) << 102 << true;
}

void TestMainWindow::buttons()
{
    QFETCH(QString, name);
    QFETCH(QRect, geometry);
    QFETCH(int, id);
    QFETCH(bool, checkable);
    EditorFixture fixture;
    const auto* button = fixture.start().findChild<COnOffButton*>(name);
    QVERIFY(button);
    QCOMPARE(button->geometry(), geometry);
    QCOMPARE(button->controllerID(), id);
    QCOMPARE(button->isCheckable(), checkable);
    QVERIFY(button->isFlat());
    QVERIFY(!button->property("hasDownImage").toBool());
    QVERIFY(!button->property("combinedImage").value<QPixmap>().isNull());
}

void TestMainWindow::pages_data()
{
    QTest::addColumn<int>("knob");
    QTest::addColumn<QRect>("geometry");
    QTest::newRow("knob 0") << 0 << QRect(23, 58, 87, 279);
    QTest::newRow("knob 1") << 1 << QRect(126, 58, 87, 279);
    QTest::newRow("knob 2") << 2 << QRect(229, 58, 87, 279);
    QTest::newRow("knob 3") << 3 << QRect(332, 58, 87, 279);
    QTest::newRow("knob 4") << 4 << QRect(23, 341, 87, 279);
    QTest::newRow("knob 5") << 5 << QRect(126, 341, 87, 279);
    QTest::newRow("knob 6") << 6 << QRect(229, 341, 87, 279);
    QTest::newRow("knob 7") << 7 << QRect(332, 341, 87, 279);
}

void TestMainWindow::pages()
{
    QFETCH(int, knob);
    QFETCH(QRect, geometry);
    EditorFixture fixture;
    fixture.start();
    QCOMPARE(fixture.page(knob)->geometry(), geometry);
    QCOMPARE(fixture.knobLED(knob)->controllerID(), 1000 + knob);
}

void TestMainWindow::absentDevice()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    QVERIFY(fixture.sent().isEmpty());
    QVERIFY(!fixture.action(k_revrtString)->isEnabled());
    QVERIFY(!fixture.action(k_resetString)->isEnabled());
    QVERIFY(fixture.action(k_openString)->isEnabled());
    QVERIFY(fixture.action(k_saveString)->isEnabled());
    QCOMPARE(window.findChild<COnlineMark*>()->getAlpha(), 255);
    QVERIFY(!QApplication::activeModalWidget());
    // The factory preset is there, and can be edited.
    QCOMPARE(fixture.editor(1102)->getValue(), 10);
    QCOMPARE(fixture.editor(1502)->getValue(), 2);
    fixture.editor(1102)->setValue(11);
    QCOMPARE(fixture.editor(1102)->getValue(), 11);
}

void TestMainWindow::orderOnTheWireAtStart()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.device.ignoreStarts(2);
    fixture.startWhole();
    fixture.waitUntilConnected();
    QStringList sent = fixture.sent();
    QCOMPARE(sent.mid(0, 3), (QStringList{k_start, k_start, k_start}));
    sent = sent.mid(3);
    // Two keeps nearly together and the request for everything; the thread's first keep may come on either side of it.
    QStringList first = sent.mid(0, 3);
    QCOMPARE(first.removeAll(k_keep), 2);
    QCOMPARE(first, QStringList{k_requestAll});
    QVERIFY(sent.indexOf(k_keep) < sent.indexOf(k_requestAll));
    for (const QString& later : sent.mid(3))
        QCOMPARE(later, k_keep);
    QVERIFY(fixture.action(k_revrtString)->isEnabled());
    QVERIFY(fixture.action(k_resetString)->isEnabled());
}

void TestMainWindow::deviceSettingsAppearOnThePages()
{
    EditorFixture fixture;
    fixture.plug();
    for (int knob = 0; knob < 8; ++knob)
        fixture.device.setSettings(knob, {knob + 20, knob, 100 + knob, knob * 3, 3 - knob % 4});
    fixture.startWhole();
    for (int knob = 0; knob < 8; ++knob) {
        QTRY_COMPARE(fixture.editor(1500 + knob)->getValue(), 3 - knob % 4);
        QCOMPARE(fixture.editor(1100 + knob)->getValue(), knob + 20);
        QCOMPARE(fixture.editor(1200 + knob)->getValue(), knob);
        QCOMPARE(fixture.editor(1300 + knob)->getValue(), 100 + knob);
        QCOMPARE(fixture.editor(1400 + knob)->getValue(), knob * 3);
    }
}

void TestMainWindow::turnedKnobReachesItsLED()
{
    EditorFixture fixture;
    fixture.plug();
    CMainWindow& window = fixture.startWhole();
    fixture.waitUntilConnected();
    const QImage before = fixture.knobLED(5)->grab().toImage();
    const QImage other = fixture.knobLED(6)->grab().toImage();
    fixture.device.turn(5, 127);
    QTRY_COMPARE(fixture.knobLED(5)->getAlpha(), 255);
    QTRY_VERIFY(fixture.knobLED(5)->grab().toImage() != before);
    QCOMPARE(fixture.knobLED(6)->grab().toImage(), other);
    Q_UNUSED(window)
}

void TestMainWindow::unansweredStartsBlockTheStart()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.device.ignoreStarts(5);
    QElapsedTimer timer;
    timer.start();
    fixture.start();
    QVERIFY(timer.elapsed() >= 6 * 20);
    QCOMPARE(fixture.sent().count(k_start), 6);
}

void TestMainWindow::proxiesAreBoundToTheEditorsPort()
{
    EditorFixture fixture;
    fixture.plug();
    fixture.startWhole();
    fixture.waitUntilConnected();
    fixture.forgetSent();
    fixture.editor(1207)->setValue(15);
    QCOMPARE(fixture.device.settings(7).channel, 15);
    QVERIFY(fixture.sent().contains(QStringLiteral("f043103e18050203075d0f7f0000f7")));
}

void TestMainWindow::keepInFrontChangesNothingElse()
{
    EditorFixture fixture;
    fixture.plug();
    CMainWindow& window = fixture.startWhole();
    fixture.waitUntilConnected();
    QTest::qWait(10);
    const KnobSettings before = fixture.device.settings(0);
    auto* pin = window.findChild<COnOffButton*>(QStringLiteral("holdWindowInFrontBtn"));
    fixture.forgetSent();
    QTest::mouseClick(pin, Qt::LeftButton);
    QVERIFY(pin->isChecked());
    QVERIFY(window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    QTest::mouseClick(pin, Qt::LeftButton);
    QVERIFY(!pin->isChecked());
    QVERIFY(!window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    const QStringList sent = fixture.sent();
    QCOMPARE(sent.count(k_keep), sent.size());
    QCOMPARE(fixture.device.settings(0), before);
    // Nothing has changed, so that closing asks nothing.
    QVERIFY(window.close());
}

void TestMainWindow::lockCountsNest()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    QVERIFY(fixture.menuBar()->isEnabled());
    window.windowLock();
    window.windowLock();
    QVERIFY(!fixture.menuBar()->isEnabled());
    window.windowUnlock();
    QVERIFY(!fixture.menuBar()->isEnabled());
    QApplication::setOverrideCursor(Qt::WaitCursor);
    window.windowUnlock();
    QVERIFY(fixture.menuBar()->isEnabled());
    QVERIFY(!QApplication::overrideCursor());
    // One unlock too many leaves the window unlocked, and the next lock locks.
    window.windowUnlock();
    QVERIFY(fixture.menuBar()->isEnabled());
    window.windowLock();
    QVERIFY(!fixture.menuBar()->isEnabled());
    window.windowUnlock();
    QVERIFY(fixture.menuBar()->isEnabled());
}

void TestMainWindow::menuBarIsLockedWhileAViewIsOpen()
{
    EditorFixture fixture;
    fixture.start();
    QVERIFY(!fixture.menuBar()->isEnabled());
    QTest::mouseClick(fixture.menuBar(), Qt::LeftButton, {}, QPoint(10, 10));
    QVERIFY(!QApplication::activePopupWidget());
    fixture.finishSplash();
    QVERIFY(fixture.menuBar()->isEnabled());
    QTest::mouseClick(fixture.menuBar(), Qt::LeftButton, {}, QPoint(10, 10));
    QTRY_VERIFY(QApplication::activePopupWidget());
    QApplication::activePopupWidget()->close();
}

void TestMainWindow::neitherSplashNorAboutWhileLocked()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    window.windowLock();
    window.showSplash();
    window.about();
    QVERIFY(!window.findChild<CSplashView*>());
    QVERIFY(!window.findChild<CAboutView*>());
    window.windowUnlock();
}

void TestMainWindow::aboutOpensAndCloses()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    fixture.action(k_aboutString)->trigger();
    QPointer<CAboutView> about = window.findChild<CAboutView*>();
    QVERIFY(about);
    QCOMPARE(about->parentWidget()->geometry(), QRect(12, 45, 421, 580));
    QVERIFY(about->parentWidget()->isVisible());
    QVERIFY(!fixture.menuBar()->isEnabled());
    window.about();
    QCOMPARE(window.findChildren<CAboutView*>().size(), 1);
    QWidget* overlay = about->parentWidget();
    about->closeView();
    QTRY_VERIFY(!about);
    QVERIFY(!overlay->isVisible());
    QVERIFY(fixture.menuBar()->isEnabled());
}

void TestMainWindow::aboutOpenedByKeysClosesByEscape()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_H, Qt::AltModifier);
    QTRY_VERIFY(QApplication::activePopupWidget());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_A);
    const QPointer<CAboutView> about = window.findChild<CAboutView*>();
    QVERIFY(about);
    QTest::keyClick(&window, Qt::Key_Escape);
    auto* animation = about->findChild<QPropertyAnimation*>();
    QCOMPARE(animation->endValue().toInt(), about->height());
    animation->setCurrentTime(animation->totalDuration());
    QTRY_VERIFY(!about);
    QVERIFY(fixture.menuBar()->isEnabled());
}

void TestMainWindow::escapeLeavesTheSplashAlone()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.start();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto* splash = window.findChild<CSplashView*>();
    QTest::keyClick(&window, Qt::Key_Escape);
    QVERIFY(window.isInitializing());
    QVERIFY(splash->isVisible());
    QCOMPARE(splash->pos(), QPoint(0, 0));
}

void TestMainWindow::splashWaitsForWhoeverIsNotReady()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    window.showSplash();
    auto* splash = window.findChild<CSplashView*>();
    QSignalSpy finished(splash, SIGNAL(finished()));
    // Twice the minimum time.
    for (int tick = 0; tick < 236; ++tick)
        splash->showTimeOver();
    QCOMPARE(finished.count(), 0);
    QVERIFY(!fixture.menuBar()->isEnabled());
    splash->editorReady();
    QCOMPARE(finished.count(), 1);
}

void TestMainWindow::closeButtonHidesAndShows()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    auto* button = window.findChild<COnOffButton*>(QStringLiteral("closeWindowBtn"));
    window.setCloseButtonEnabled(false);
    QVERIFY(!button->isVisible());
    window.setCloseButtonEnabled(true);
    QVERIFY(button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!window.isVisible());
}

void TestMainWindow::minimiseButtonMinimises()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    QTest::mouseClick(window.findChild<COnOffButton*>(QStringLiteral("minimizeWindowBtn")), Qt::LeftButton);
    QVERIFY(window.isMinimized());
}

void TestMainWindow::windowFollowsTheDrag()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    window.move(100, 100);
    QTest::mousePress(&window, Qt::LeftButton, {}, QPoint(250, 10));
    QMouseEvent move(QEvent::MouseMove, QPointF(0, 0), QPointF(0, 0), QPointF(400, 160), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&window, &move);
    QCOMPARE(window.pos(), QPoint(150, 150));
    QTest::mouseRelease(&window, Qt::LeftButton, {}, QPoint(250, 10));
    QCOMPARE(window.pos(), QPoint(150, 150));
    // The drag is over.
    QApplication::sendEvent(&window, &move);
    QCOMPARE(window.pos(), QPoint(150, 150));
}

void TestMainWindow::otherButtonsDoNotDrag()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    window.move(100, 100);
    QTest::mousePress(&window, Qt::RightButton, {}, QPoint(250, 10));
    QMouseEvent move(QEvent::MouseMove, QPointF(0, 0), QPointF(0, 0), QPointF(400, 160), Qt::NoButton, Qt::RightButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&window, &move);
    QTest::mouseRelease(&window, Qt::RightButton, {}, QPoint(250, 10));
    QCOMPARE(window.pos(), QPoint(100, 100));
}

void TestMainWindow::windowDroppedOffTheScreenIsPulledBack()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    const QRect screen = window.screen()->availableGeometry();
    window.move(100, 100);
    QTest::mousePress(&window, Qt::LeftButton, {}, QPoint(5, 5));
    const QPointF below(screen.right(), screen.bottom());
    QMouseEvent move(QEvent::MouseMove, QPointF(5, 5), QPointF(5, 5), below, Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&window, &move);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(5, 5), QPointF(5, 5), below, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(&window, &release);
    QCOMPARE(window.pos(), QPoint(screen.right() - 11, screen.bottom() - 22));
}

/// Also run on a screen that is lower than the window.
void TestMainWindow::lowestRowCanBeShown()
{
    EditorFixture fixture;
    CMainWindow& window = fixture.startWhole();
    const QRect screen = window.screen()->availableGeometry();
    window.move(100, 0);
    QTest::mousePress(&window, Qt::LeftButton, {}, QPoint(5, 400));
    const QPointF above(105, 100);
    QMouseEvent move(QEvent::MouseMove, QPointF(5, 400), QPointF(5, 400), above, Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&window, &move);
    QCOMPARE(window.pos(), QPoint(100, -300));
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(5, 400), QPointF(5, 400), above, Qt::LeftButton,
                        Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &release);
    if (window.height() > screen.height())
        QCOMPARE(window.geometry().bottom(), screen.bottom());
    else
        QCOMPARE(window.geometry().top(), screen.top());
}

void TestMainWindow::slotsInOrder()
{
    const QMetaObject& meta = CMainWindow::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names.append(QString::fromLatin1(meta.method(i).methodSignature()));
    QCOMPARE(names,
             (QStringList{"windowLock()", "windowUnlock()", "setCloseButtonEnabled(bool)", "callStaysOnTop(bool)",
                          "setEditMenuEnable()", "disconnectDevice()", "open()", "save()", "saveAs()", "copy()",
                          "paste()", "revert()", "factoryReset()", "manual()", "about()", "conViewSelect(int)",
                          "backupMemAPI()", "applicationFileOpen()", "endInitialize()"}));
}

KTZ_TEST(QApplication, TestMainWindow)
#include "TestMainWindow.moc"
