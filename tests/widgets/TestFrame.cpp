#include "tests/support/CTestCase.h"
#include "tests/widgets/ColorStrip.h"
#include "widgets/CFrame.h"

namespace
{
/// Counts the mouse events that its child lets through.
class CMouseCounter : public QWidget
{
    Q_OBJECT

  public:
    int m_events = 0;

  protected:
    void mousePressEvent(QMouseEvent*) override
    {
        ++m_events;
    }

    void mouseReleaseEvent(QMouseEvent*) override
    {
        ++m_events;
    }

    void mouseMoveEvent(QMouseEvent*) override
    {
        ++m_events;
    }
};
} // namespace

class TestFrame : public CTestCase
{
    Q_OBJECT

  private slots:
    void startsWithoutAPicture();
    void pictureIsDrawnUnscaledAtTheTopLeft_data();
    void pictureIsDrawnUnscaledAtTheTopLeft();
    void newPictureIsShown();
    void mouseEventsNeverReachTheParent();
    void consumedEventsGiveFalse_data();
    void consumedEventsGiveFalse();
};

void TestFrame::startsWithoutAPicture()
{
    const CFrame frame(nullptr, Qt::FramelessWindowHint);
    QVERIFY(frame.backgroundPixmap().isNull());
    QVERIFY(frame.property("backgroundPixmap").isValid());
    QCOMPARE(frame.sizeHint(), QSize(100, 100));
    QCOMPARE(frame.minimumSizeHint(), QSize(0, 0));
    QCOMPARE(frame.focusPolicy(), Qt::ClickFocus);
    QVERIFY(frame.windowFlags().testFlag(Qt::FramelessWindowHint));
}

void TestFrame::pictureIsDrawnUnscaledAtTheTopLeft_data()
{
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<bool>("coversMiddle");
    QTest::addColumn<bool>("coversEnd");
    QTest::newRow("smaller than the frame") << QSize(10, 10) << 1.0 << false << false;
    QTest::newRow("smaller and twice as dense") << QSize(10, 10) << 2.0 << false << false;
    QTest::newRow("as large as the frame") << QSize(40, 30) << 1.0 << true << true;
    QTest::newRow("larger than the frame") << QSize(90, 80) << 3.0 << true << true;
    QTest::newRow("null") << QSize() << 1.0 << false << false;
}

void TestFrame::pictureIsDrawnUnscaledAtTheTopLeft()
{
    QFETCH(QSize, picture);
    QFETCH(qreal, ratio);
    QFETCH(bool, coversMiddle);
    QFETCH(bool, coversEnd);
    CFrame frame;
    frame.setPalette(QPalette(Qt::green));
    frame.resize(40, 30);
    if (!picture.isEmpty())
        frame.setBackgroundPixmap(coloredStrip(picture, 1, 1, ratio));
    const QColor bare(Qt::green);
    QCOMPARE(shownColor(frame, QPoint(0, 0)), picture.isEmpty() ? bare : frameColor(0, 0));
    QCOMPARE(shownColor(frame, QPoint(9, 9)), picture.isEmpty() ? bare : frameColor(0, 0));
    QCOMPARE(shownColor(frame, QPoint(10, 10)), coversMiddle ? frameColor(0, 0) : bare);
    QCOMPARE(shownColor(frame, QPoint(39, 29)), coversEnd ? frameColor(0, 0) : bare);
}

void TestFrame::newPictureIsShown()
{
    CFrame frame;
    frame.resize(40, 30);
    frame.setPalette(QPalette(Qt::green));
    frame.show();
    QVERIFY(QTest::qWaitForWindowExposed(&frame));
    const QPixmap picture = coloredStrip(QSize(40, 30), 1, 1);
    QVERIFY(frame.setProperty("backgroundPixmap", picture));
    QCOMPARE(frame.backgroundPixmap().cacheKey(), picture.cacheKey());
    QCOMPARE(shownColor(frame, QPoint(20, 15)), frameColor(0, 0));
    frame.setBackgroundPixmap(QPixmap());
    QCOMPARE(shownColor(frame, QPoint(20, 15)), QColor(Qt::green));
}

void TestFrame::mouseEventsNeverReachTheParent()
{
    CMouseCounter parent;
    parent.resize(100, 100);
    CFrame frame(&parent);
    frame.setMouseTracking(true);
    frame.setGeometry(0, 0, 50, 50);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    QWindow* window = parent.windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {}, QPoint(10, 10));
    QTest::mouseMove(window, QPoint(20, 20));
    QTest::mouseRelease(window, Qt::LeftButton, {}, QPoint(20, 20));
    QTest::mouseClick(window, Qt::RightButton, {}, QPoint(20, 20));
    QCOMPARE(parent.m_events, 0);
    QTest::mouseClick(window, Qt::LeftButton, {}, QPoint(70, 70));
    QCOMPARE(parent.m_events, 2);
}

void TestFrame::consumedEventsGiveFalse_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("result");
    QTest::newRow("Polish is consumed") << int(QEvent::Polish) << false;
    QTest::newRow("Show goes on to the widget") << int(QEvent::Show) << true;
    QTest::newRow("EnabledChange goes on to the widget") << int(QEvent::EnabledChange) << true;
}

void TestFrame::consumedEventsGiveFalse()
{
    QFETCH(int, type);
    CFrame frame;
    QObject& object = frame;
    QShowEvent show;
    QEvent other(static_cast<QEvent::Type>(type));
    QTEST(object.event(type == QEvent::Show ? &show : &other), "result");
}

KTZ_TEST(QApplication, TestFrame)
#include "TestFrame.moc"
