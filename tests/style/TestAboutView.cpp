#include "app/common/Constants.h"
#include "app/common/Utilities.h"
#include "style/CAboutView.h"
#include "tests/style/CLockedWindow.h"
#include "tests/style/CWidgetShot.h"
#include "tests/style/ViewLook.h"
#include "tests/support/CTestCase.h"
#include "widgets/COnOffButton.h"

#include <QPointer>
#include <QPropertyAnimation>
#include <QSignalSpy>

#include <memory>

namespace
{

} // namespace

class TestAboutView : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void init();
    void cleanup();

    void closeButton();
    void fontIsTheSkins();
    void dropsInWithABounce();
    void risesOutAndCloses();
    void closeButtonClickedHidesTheView();
    void secondClickWhileRisingChangesNothing();
    void closedWhileStillDropping();
    void dropAloneDoesNotClose();
    void escapeClosesTheView_data();
    void escapeClosesTheView();
    void setAnimVariableMovesTheViewUp();
    void windowIsLockedAsLongAsTheViewLives();
    void dropsAndRisesByItself();
    void backgroundAndThreeWhiteLines();
    void lineStandsAtItsPlace_data();
    void lineStandsAtItsPlace();

  private:
    [[nodiscard]] QPropertyAnimation* animation() const;

    std::unique_ptr<CLockedWindow> m_window;
    QPointer<CAboutView> m_view; ///< child of the window
};

void TestAboutView::initTestCase()
{
    QVERIFY(Utilities::registerSkinFonts());
}

void TestAboutView::init()
{
    CTestCase::init();
    m_window = std::make_unique<CLockedWindow>();
    m_window->resize(446, 680);
    m_view = new CAboutView(m_window.get(), m_window.get(), blue());
    m_view->setAttribute(Qt::WA_DeleteOnClose);
    m_view->setGeometry(QRect(QPoint(0, 0), k_viewSize));
    m_view->initialize(k_editorName, k_version, k_copyright);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void TestAboutView::cleanup()
{
    m_window.reset();
}

QPropertyAnimation* TestAboutView::animation() const
{
    return m_view->findChild<QPropertyAnimation*>();
}

void TestAboutView::closeButton()
{
    const auto* button = m_view->findChild<COnOffButton*>();
    QVERIFY(button != nullptr);
    QCOMPARE(button->geometry(), QRect(12, 11, 20, 20));
    QVERIFY(!button->hasDownImage());
    QVERIFY(!button->combinedImage().isNull());
    QCOMPARE(button->combinedImage().deviceIndependentSize(), QSizeF(20, 40));
}

void TestAboutView::fontIsTheSkins()
{
    QCOMPARE(m_view->font().family(), k_fontGLT8);
    QCOMPARE(m_view->font().pixelSize(), 8);
    QVERIFY(m_view->font().styleStrategy() & QFont::NoAntialias);
}

void TestAboutView::dropsInWithABounce()
{
    m_view->showView();
    QVERIFY(m_view->isVisible());
    QCOMPARE(m_view->pos(), QPoint(0, -580));
    QCOMPARE(animation()->duration(), 1000);
    QCOMPARE(animation()->easingCurve().type(), QEasingCurve::OutBounce);
    QCOMPARE(animation()->state(), QAbstractAnimation::Running);

    animation()->setCurrentTime(363); // the first time at the bottom, from where it bounces back
    QVERIFY(m_view->y() > -10);
    animation()->setCurrentTime(545);
    QVERIFY(m_view->y() < -100);
    animation()->setCurrentTime(1000);
    QCOMPARE(m_view->pos(), QPoint(0, 0));
    QCOMPARE(m_view->getAnimVariable(), 0);
}

void TestAboutView::risesOutAndCloses()
{
    QSignalSpy closed(m_view, SIGNAL(closed()));
    m_view->showView();
    animation()->setCurrentTime(1000);

    m_view->hideView();
    QCOMPARE(animation()->easingCurve().type(), QEasingCurve::InBack);
    QCOMPARE(m_view->pos(), QPoint(0, 0));
    animation()->setCurrentTime(300); // backs up first
    QVERIFY(m_view->y() > 0);
    animation()->setCurrentTime(999);
    QVERIFY(m_view->y() < -500);
    QCOMPARE(closed.count(), 0);
    animation()->setCurrentTime(1000);
    QCOMPARE(closed.count(), 1);
    QVERIFY(!m_view->isVisible());
    QTRY_VERIFY(m_view.isNull());
}

void TestAboutView::closeButtonClickedHidesTheView()
{
    QSignalSpy closed(m_view, SIGNAL(closed()));
    m_view->showView();
    animation()->setCurrentTime(1000);
    QTest::mouseClick(m_view->findChild<COnOffButton*>(), Qt::LeftButton);
    QCOMPARE(animation()->state(), QAbstractAnimation::Running);
    QCOMPARE(animation()->endValue().toInt(), 580);
    animation()->setCurrentTime(1000);
    QCOMPARE(closed.count(), 1);
}

void TestAboutView::secondClickWhileRisingChangesNothing()
{
    QSignalSpy closed(m_view, SIGNAL(closed()));
    m_view->showView();
    animation()->setCurrentTime(1000);
    m_view->hideView();
    animation()->setCurrentTime(900);
    m_view->hideView();
    QVERIFY(animation()->currentTime() >= 900);
    animation()->setCurrentTime(1000);
    QCOMPARE(closed.count(), 1);
}

void TestAboutView::closedWhileStillDropping()
{
    QSignalSpy closed(m_view, SIGNAL(closed()));
    m_view->showView();
    animation()->setCurrentTime(100);
    m_view->hideView();
    QCOMPARE(m_view->pos(), QPoint(0, 0));
    QCOMPARE(closed.count(), 0);
    animation()->setCurrentTime(1000);
    QCOMPARE(closed.count(), 1);
}

void TestAboutView::dropAloneDoesNotClose()
{
    QSignalSpy closed(m_view, SIGNAL(closed()));
    m_view->showView();
    animation()->setCurrentTime(1000);
    QCOMPARE(animation()->state(), QAbstractAnimation::Stopped);
    QCOMPARE(closed.count(), 0);
    QVERIFY(m_view->isVisible());
}

void TestAboutView::escapeClosesTheView_data()
{
    QTest::addColumn<int>("time");
    QTest::newRow("while it drops") << 100;
    QTest::newRow("shown") << 1000;
}

void TestAboutView::escapeClosesTheView()
{
    QFETCH(int, time);
    QSignalSpy closed(m_view, SIGNAL(closed()));
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_view->showView();
    animation()->setCurrentTime(time);
    QTest::keyClick(m_window.get(), Qt::Key_Escape);
    QCOMPARE(animation()->endValue().toInt(), 580);
    // Once more while it rises.
    animation()->setCurrentTime(900);
    QTest::keyClick(m_window.get(), Qt::Key_Escape);
    QVERIFY(animation()->currentTime() >= 900);
    QCOMPARE(closed.count(), 0);
    animation()->setCurrentTime(1000);
    QCOMPARE(closed.count(), 1);
    QTRY_VERIFY(m_view.isNull());
    QTest::keyClick(m_window.get(), Qt::Key_Escape);
}

void TestAboutView::setAnimVariableMovesTheViewUp()
{
    QVERIFY(m_view->setProperty("animVariable", 17));
    QCOMPARE(m_view->pos(), QPoint(0, -17));
    QCOMPARE(m_view->property("animVariable").toInt(), 17);
    m_view->setAnimVariable(-5);
    QCOMPARE(m_view->pos(), QPoint(0, 5));
}

void TestAboutView::windowIsLockedAsLongAsTheViewLives()
{
    QCOMPARE(m_window->m_locks, 1);
    m_view->showView();
    m_view->closeView();
    QCOMPARE(m_window->m_locks, 1);
    QTRY_VERIFY(m_view.isNull());
    QCOMPARE(m_window->m_locks, 0);
}

void TestAboutView::dropsAndRisesByItself()
{
    animation()->setDuration(30);
    m_view->showView();
    QTRY_COMPARE(animation()->state(), QAbstractAnimation::Stopped);
    QCOMPARE(m_view->pos(), QPoint(0, 0));
    QTest::mouseClick(m_view->findChild<COnOffButton*>(), Qt::LeftButton);
    QTRY_VERIFY(m_view.isNull());
}

void TestAboutView::backgroundAndThreeWhiteLines()
{
    m_view->findChild<COnOffButton*>()->hide();
    const CWidgetShot shot(m_view);
    QCOMPARE(shot.image(), shot.expected([](QPainter* painter) {
        painter->drawPixmap(0, 0, blue());
        painter->setFont(skinFont());
        painter->setPen(Qt::white);
        painter->drawText(116, 500, k_editorName);
        painter->drawText(116, 515, k_version);
        painter->drawText(116, 538, k_copyright);
    }));
}

void TestAboutView::lineStandsAtItsPlace_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("copyright");
    QTest::addColumn<int>("baseline");
    const QString text = QStringLiteral("HHH");
    QTest::newRow("editor name") << text << QString() << QString() << 500;
    QTest::newRow("version") << QString() << text << QString() << 515;
    QTest::newRow("copyright") << QString() << QString() << text << 538;
}

void TestAboutView::lineStandsAtItsPlace()
{
    QFETCH(QString, name);
    QFETCH(QString, version);
    QFETCH(QString, copyright);
    QFETCH(int, baseline);
    CAboutView view(m_window.get(), m_window.get(), blue());
    view.resize(k_viewSize);
    view.initialize(name, version, copyright);
    view.findChild<COnOffButton*>()->hide();
    const QRectF ink = CWidgetShot(&view).bounds(Qt::white);
    QCOMPARE(ink.bottom(), qreal(baseline)); // letters without descenders stand on it
    QVERIFY(ink.left() >= 116 && ink.left() < 118);
}

KTZ_TEST(QApplication, TestAboutView)
#include "TestAboutView.moc"
