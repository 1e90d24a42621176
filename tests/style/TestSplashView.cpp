#include "app/common/Constants.h"
#include "app/common/SkinPixmap.h"
#include "app/common/Utilities.h"
#include "style/CSplashView.h"
#include "tests/style/CLockedWindow.h"
#include "tests/style/CWidgetShot.h"
#include "tests/style/ViewLook.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QPaintEvent>
#include <QPointer>
#include <QPropertyAnimation>
#include <QSignalSpy>
#include <QTimer>

#include <memory>

namespace
{
constexpr QPoint k_barPos{122, 402};
constexpr int k_ticksUntilFull = 100;    // 1700 ms
constexpr int k_ticksUntilMinimum = 118; // 2006 ms, the first tick at 2000 or later

QPixmap bar()
{
    return skinPixmap(QStringLiteral(":images/ktz_status_bar.png"));
}

/// Notes where a widget is repainted.
class CPaintRecorder : public QObject
{
  public:
    explicit CPaintRecorder(QWidget* widget) : QObject(widget)
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            m_painted |= static_cast<QPaintEvent*>(event)->rect();
        return false;
    }

    QRect m_painted;
};
} // namespace

class TestSplashView : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void init();
    void cleanup();

    void showViewStartsBothTimers();
    void slideAnimation();
    void fontIsTheSkins();

    void editorReadyBefore2000msWaitsUntil2000ms();
    void editorReadyAfter2000msSlidesAtOnce();
    void withoutEditorReadyItSlidesAtTheTimeout();
    void timeoutStopsBothTimers();
    void minimumTimeEndsWithTick118();
    void slidesOutToTheRightThenCloses();
    void finishedComesBeforeTheSlideAndOnce();
    void setAnimVariableMovesTheViewRight();
    void windowIsLockedAndTimersRunOnlyAsLongAsTheViewLives();
    void closingAtAnyTimeStopsTheTimers();
    void waitsAndSlidesByItself();
    void givesUpWaitingByItself();
    void editorThatIsReadyIsNotGivenUp();

    void barWidth_data();
    void barWidth();
    void repaintsOnlyTheBarAndOnlyWhileItGrows();
    void barGrowsOverItsBackground_data();
    void barGrowsOverItsBackground();

  private:
    void tick(int times);
    [[nodiscard]] QPropertyAnimation* animation() const;
    [[nodiscard]] QTimer* timer(bool singleShot) const;

    std::unique_ptr<CLockedWindow> m_window;
    QPointer<CSplashView> m_view; ///< child of the window
};

void TestSplashView::initTestCase()
{
    QVERIFY(Utilities::registerSkinFonts());
}

void TestSplashView::init()
{
    CTestCase::init();
    m_window = std::make_unique<CLockedWindow>();
    m_window->resize(446, 680);
    m_view = new CSplashView(m_window.get(), m_window.get(), blue());
    m_view->setAttribute(Qt::WA_DeleteOnClose);
    m_view->setGeometry(QRect(QPoint(0, 0), k_viewSize));
    m_view->initialize(k_editorName, k_version, k_copyright);
}

void TestSplashView::cleanup()
{
    m_window.reset();
}

void TestSplashView::tick(int times)
{
    for (int i = 0; i < times; ++i)
        m_view->showTimeOver();
}

QPropertyAnimation* TestSplashView::animation() const
{
    return m_view->findChild<QPropertyAnimation*>();
}

QTimer* TestSplashView::timer(bool singleShot) const
{
    const auto timers = m_view->findChildren<QTimer*>();
    for (QTimer* timer : timers)
        if (timer->isSingleShot() == singleShot)
            return timer;
    return nullptr;
}

void TestSplashView::showViewStartsBothTimers()
{
    QVERIFY(!timer(false)->isActive() && !timer(true)->isActive());
    m_view->hide();
    m_view->showView();
    QVERIFY(!m_view->isHidden());
    QVERIFY(timer(false)->isActive() && timer(true)->isActive());
    QCOMPARE(timer(false)->interval(), 17);
    QCOMPARE(timer(true)->interval(), 5000);
}

void TestSplashView::slideAnimation()
{
    QCOMPARE(animation()->targetObject(), m_view);
    QCOMPARE(animation()->propertyName(), QByteArray("animVariable"));
    QCOMPARE(animation()->duration(), 1000);
    QCOMPARE(animation()->easingCurve().type(), QEasingCurve::OutInBack);
}

void TestSplashView::fontIsTheSkins()
{
    QCOMPARE(m_view->font().family(), k_fontGLT8);
    QCOMPARE(m_view->font().pixelSize(), 8);
    QVERIFY(m_view->font().styleStrategy() & QFont::NoAntialias);
}

void TestSplashView::editorReadyBefore2000msWaitsUntil2000ms()
{
    QSignalSpy finished(m_view, SIGNAL(finished()));
    tick(k_ticksUntilMinimum - 1); // 1989 ms
    m_view->editorReady();
    QCOMPARE(finished.count(), 0);
    QCOMPARE(animation()->state(), QAbstractAnimation::Stopped);
    tick(1);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(animation()->state(), QAbstractAnimation::Running);
}

void TestSplashView::editorReadyAfter2000msSlidesAtOnce()
{
    QSignalSpy finished(m_view, SIGNAL(finished()));
    m_view->showView();
    tick(k_ticksUntilMinimum);
    QCOMPARE(finished.count(), 0);
    QVERIFY(timer(true)->isActive());
    m_view->editorReady();
    QCOMPARE(finished.count(), 1);
    QVERIFY(!timer(true)->isActive());
    QCOMPARE(animation()->state(), QAbstractAnimation::Running);
}

void TestSplashView::withoutEditorReadyItSlidesAtTheTimeout()
{
    QSignalSpy finished(m_view, SIGNAL(finished()));
    m_view->showView();
    tick(k_ticksUntilMinimum);
    QCOMPARE(finished.count(), 0);
    m_view->timeout();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(animation()->state(), QAbstractAnimation::Running);
}

void TestSplashView::timeoutStopsBothTimers()
{
    QSignalSpy finished(m_view, SIGNAL(finished()));
    m_view->showView();
    m_view->timeout(); // also when not a single tick has come through
    QVERIFY(!timer(false)->isActive() && !timer(true)->isActive());
    QCOMPARE(finished.count(), 1);
}

void TestSplashView::minimumTimeEndsWithTick118()
{
    m_view->showView();
    tick(k_ticksUntilMinimum - 1);
    QVERIFY(timer(false)->isActive());
    tick(1);
    QVERIFY(!timer(false)->isActive());
}

void TestSplashView::slidesOutToTheRightThenCloses()
{
    QSignalSpy closed(m_view, SIGNAL(closed()));
    m_view->showView();
    m_view->timeout();
    QCOMPARE(m_view->pos(), QPoint(0, 0));
    animation()->setCurrentTime(500);
    QVERIFY(m_view->x() > 0);
    QCOMPARE(closed.count(), 0);
    animation()->setCurrentTime(1000);
    QCOMPARE(m_view->pos(), QPoint(421, 0));
    QCOMPARE(closed.count(), 1);
    QVERIFY(m_view->isHidden());
    QTRY_VERIFY(m_view.isNull());
}

void TestSplashView::finishedComesBeforeTheSlideAndOnce()
{
    QStringList order;
    connect(m_view, &CSplashView::finished, this, [&] {
        QCOMPARE(animation()->state(), QAbstractAnimation::Stopped);
        order.append(QStringLiteral("finished"));
    });
    connect(m_view, &CSplashView::closed, this, [&order] { order.append(QStringLiteral("closed")); });
    m_view->editorReady();
    m_view->timeout();
    animation()->setCurrentTime(100);
    m_view->editorReady();
    m_view->timeout();
    m_view->showTimeOver();
    QVERIFY(animation()->currentTime() >= 100);
    animation()->setCurrentTime(1000);
    QCOMPARE(order, (QStringList{QStringLiteral("finished"), QStringLiteral("closed")}));
}

void TestSplashView::setAnimVariableMovesTheViewRight()
{
    QVERIFY(m_view->setProperty("animVariable", 17));
    QCOMPARE(m_view->pos(), QPoint(17, 0));
    QCOMPARE(m_view->property("animVariable").toInt(), 17);
    m_view->setAnimVariable(-5);
    QCOMPARE(m_view->pos(), QPoint(-5, 0));
}

void TestSplashView::windowIsLockedAndTimersRunOnlyAsLongAsTheViewLives()
{
    QCOMPARE(m_window->m_locks, 1);
    m_view->showView();
    const QPointer<QTimer> showTimer(timer(false));
    const QPointer<QTimer> timeoutTimer(timer(true));
    m_view->timeout();
    animation()->setCurrentTime(1000);
    QCOMPARE(m_window->m_locks, 1);
    QTRY_VERIFY(m_view.isNull());
    QCOMPARE(m_window->m_locks, 0);
    QVERIFY(showTimer.isNull() && timeoutTimer.isNull());
}

void TestSplashView::closingAtAnyTimeStopsTheTimers()
{
    QSignalSpy closed(m_view, SIGNAL(closed()));
    m_view->setAttribute(Qt::WA_DeleteOnClose, false);
    m_view->showView();
    tick(3);
    m_view->closeView();
    QCOMPARE(closed.count(), 1);
    QVERIFY(m_view->isHidden());
    QVERIFY(!timer(false)->isActive() && !timer(true)->isActive());
}

void TestSplashView::waitsAndSlidesByItself()
{
    QSignalSpy finished(m_view, SIGNAL(finished()));
    m_window->show();
    timer(false)->setInterval(0);
    animation()->setDuration(30);
    m_view->showView();
    m_view->editorReady();
    QTRY_VERIFY(m_view.isNull());
    QCOMPARE(finished.count(), 1);
}

void TestSplashView::givesUpWaitingByItself()
{
    QSignalSpy finished(m_view, SIGNAL(finished()));
    m_window->show();
    timer(true)->setInterval(20);
    animation()->setDuration(30);
    m_view->showView();
    QTRY_VERIFY(m_view.isNull());
    QCOMPARE(finished.count(), 1);
}

void TestSplashView::editorThatIsReadyIsNotGivenUp()
{
    // The editor blocked the event loop while it connected: the longest wait is over, and no tick has come yet.
    QSignalSpy finished(m_view, SIGNAL(finished()));
    m_window->show();
    timer(false)->setInterval(3600'000);
    timer(true)->setInterval(0);
    m_view->showView();
    m_view->editorReady();
    QVERIFY(!timer(true)->isActive());
    QTest::qWait(1);
    QCOMPARE(finished.count(), 0);
    tick(k_ticksUntilMinimum);
    QCOMPARE(finished.count(), 1);
}

void TestSplashView::barWidth_data()
{
    QTest::addColumn<int>("whole");
    QTest::addColumn<int>("elapsed");
    QTest::addColumn<int>("width");
    QTest::newRow("start") << 190 << 0 << 0;
    QTest::newRow("first tick, cut to whole pixels") << 190 << 17 << 1; // 1.9
    QTest::newRow("half") << 190 << 850 << 95;
    QTest::newRow("last tick but one, cut") << 190 << 1683 << 188; // 188.1
    QTest::newRow("full") << 190 << 1700 << 190;
    QTest::newRow("after that") << 190 << 2006 << 190;
    QTest::newRow("no picture") << 0 << 850 << 0;
}

void TestSplashView::barWidth()
{
    QFETCH(int, whole);
    QFETCH(int, elapsed);
    QFETCH(int, width);
    QCOMPARE(CSplashView::barWidth(whole, std::chrono::milliseconds(elapsed)), width);
}

void TestSplashView::repaintsOnlyTheBarAndOnlyWhileItGrows()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QCoreApplication::processEvents();
    CPaintRecorder recorder(m_view);
    const QRect barRect(k_barPos, bar().deviceIndependentSize().toSize());
    const auto paintedByATick = [&] {
        recorder.m_painted = QRect();
        tick(1);
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        return recorder.m_painted;
    };
    for (int i = 1; i <= k_ticksUntilFull; ++i)
        QCOMPARE(paintedByATick(), barRect);
    for (int i = k_ticksUntilFull + 1; i < k_ticksUntilMinimum; ++i)
        QCOMPARE(paintedByATick(), QRect());
}

void TestSplashView::barGrowsOverItsBackground_data()
{
    QTest::addColumn<int>("ticks");
    for (const int ticks : {0, 1, 33, 99, 100, 117})
        QTest::addRow("%d ms", ticks * 17) << ticks;
}

void TestSplashView::barGrowsOverItsBackground()
{
    QFETCH(int, ticks);
    tick(ticks);
    const QPixmap whole = bar();
    QVERIFY(!whole.isNull());
    const int shown = int(whole.deviceIndependentSize().width() * qMin(1.0, ticks * 17 / 1700.0));
    const CWidgetShot shot(m_view);
    QCOMPARE(shot.image(), shot.expected([&](QPainter* painter) {
        painter->drawPixmap(0, 0, blue());
        painter->drawPixmap(116, 395, skinPixmap(QStringLiteral(":images/ktz_back_status_bar.png")));
        painter->setClipRect(QRect(k_barPos, QSize(shown, 100)));
        painter->drawPixmap(k_barPos, whole);
        painter->setClipping(false);
        painter->setFont(skinFont());
        painter->setPen(Qt::white);
        painter->drawText(116, 500, k_editorName);
        painter->drawText(116, 515, k_version);
        painter->drawText(116, 538, k_copyright);
    }));
}

KTZ_TEST(QApplication, TestSplashView)
#include "TestSplashView.moc"
