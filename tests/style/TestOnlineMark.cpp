#include "app/common/SkinPixmap.h"
#include "style/COnlineMark.h"
#include "tests/style/CWidgetShot.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QPropertyAnimation>

namespace
{
/// Fast-forwards the running fade; milliseconds.
void goTo(const COnlineMark& mark, int time)
{
    mark.findChild<QPropertyAnimation*>()->setCurrentTime(time);
}

/// The lit LED as the picture holds it.
QPixmap litLed()
{
    const QPixmap frames = skinPixmap(QStringLiteral(":/images/ktz_led_online.png"));
    return frames.copy(0, frames.height() / 2, frames.width(), frames.height() / 2);
}
} // namespace

class TestOnlineMark : public CTestCase
{
    Q_OBJECT

  private slots:
    void startsCovered();
    void takesTheSizeOfThePicturesLowerHalf();
    void nothingHappensBeforeInitialize();
    void fade_data();
    void fade();
    void turnOnDuringAFadeOutRestartsFrom255();
    void turnOffDuringAFadeInRestartsFrom0();
    void fadesByItself();
    void ledUnderTheMask_data();
    void ledUnderTheMask();
    void ledIsScaledToTheWholeWidget();
    void setAlphaRepaints();
};

void TestOnlineMark::startsCovered()
{
    COnlineMark mark;
    QCOMPARE(mark.getAlpha(), 255);
    mark.initialize();
    QCOMPARE(mark.getAlpha(), 255);
    QCOMPARE(mark.property("alpha").toInt(), 255);
}

void TestOnlineMark::takesTheSizeOfThePicturesLowerHalf()
{
    COnlineMark mark;
    mark.initialize();
    const QImage picture(QStringLiteral(":/images/ktz_led_online.png")); // the plain one: a pixel a point
    QVERIFY(!picture.isNull());
    QCOMPARE(mark.size(), QSize(picture.width(), picture.height() / 2));
}

void TestOnlineMark::nothingHappensBeforeInitialize()
{
    COnlineMark mark;
    mark.turnOn();
    mark.turnOff();
    QVERIFY(mark.findChild<QPropertyAnimation*>() == nullptr);
    QCOMPARE(mark.getAlpha(), 255);
    mark.resize(10, 10);
    QCOMPARE(CWidgetShot(&mark).bounds(Qt::white), QRectF(0, 0, 10, 10));
}

void TestOnlineMark::fade_data() // quadratic: slow at first
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<int>("time");
    QTest::addColumn<int>("alpha");
    QTest::newRow("on, start") << true << 0 << 255;
    QTest::newRow("on, 200 ms") << true << 200 << 244;
    QTest::newRow("on, half") << true << 500 << 191;
    QTest::newRow("on, end") << true << 1000 << 0;
    QTest::newRow("off, start") << false << 0 << 0;
    QTest::newRow("off, half") << false << 500 << 63;
    QTest::newRow("off, end") << false << 1000 << 255;
}

void TestOnlineMark::fade()
{
    QFETCH(bool, on);
    QFETCH(int, time);
    QFETCH(int, alpha);
    COnlineMark mark;
    mark.initialize();
    if (on)
        mark.turnOn();
    else
        mark.turnOff();
    goTo(mark, time);
    QCOMPARE(mark.getAlpha(), alpha);
    QCOMPARE(mark.findChild<QPropertyAnimation*>()->duration(), 1000);
    QCOMPARE(mark.findChild<QPropertyAnimation*>()->easingCurve().type(), QEasingCurve::InQuad);
}

void TestOnlineMark::turnOnDuringAFadeOutRestartsFrom255()
{
    COnlineMark mark;
    mark.initialize();
    mark.turnOff();
    goTo(mark, 500);
    QCOMPARE(mark.getAlpha(), 63);
    mark.turnOn();
    QCOMPARE(mark.getAlpha(), 255);
    goTo(mark, 1000);
    QCOMPARE(mark.getAlpha(), 0);
}

void TestOnlineMark::turnOffDuringAFadeInRestartsFrom0()
{
    COnlineMark mark;
    mark.initialize();
    mark.turnOn();
    goTo(mark, 500);
    mark.turnOff();
    QCOMPARE(mark.getAlpha(), 0);
    goTo(mark, 1000);
    QCOMPARE(mark.getAlpha(), 255);
}

void TestOnlineMark::fadesByItself()
{
    COnlineMark mark;
    mark.initialize();
    mark.findChild<QPropertyAnimation*>()->setDuration(30);
    mark.turnOn();
    QTRY_COMPARE(mark.getAlpha(), 0);
    mark.turnOff();
    QTRY_COMPARE(mark.getAlpha(), 255);
    QCOMPARE(mark.findChild<QPropertyAnimation*>()->state(), QAbstractAnimation::Stopped);
}

void TestOnlineMark::ledUnderTheMask_data()
{
    QTest::addColumn<int>("alpha");
    QTest::newRow("shown") << 0;
    QTest::newRow("half covered") << 128;
    QTest::newRow("covered") << 255;
}

void TestOnlineMark::ledUnderTheMask()
{
    QFETCH(int, alpha);
    QWidget panel;
    panel.setPalette(QPalette(Qt::white));
    COnlineMark mark(&panel);
    mark.initialize();
    mark.setAlpha(alpha);
    panel.resize(mark.size());

    const CWidgetShot shot(&panel);
    QCOMPARE(shot.image(), shot.expected([&](QPainter* painter) {
        painter->drawPixmap(0, 0, litLed());
        painter->fillRect(mark.rect(), QColor(255, 255, 255, alpha));
    }));
    const bool allWhite = shot.bounds(Qt::white) == QRectF(mark.rect()) &&
                          shot.image() == shot.expected([](QPainter* painter) { painter->setPen(Qt::white); });
    QCOMPARE(allWhite, alpha == 255);
}

void TestOnlineMark::ledIsScaledToTheWholeWidget()
{
    QWidget panel;
    panel.setPalette(QPalette(Qt::white));
    COnlineMark mark(&panel);
    mark.initialize();
    mark.setAlpha(0);
    mark.resize(mark.size() * 2);
    panel.resize(mark.size());
    const CWidgetShot shot(&panel);
    QCOMPARE(shot.image(), shot.expected([&](QPainter* painter) { painter->drawPixmap(mark.rect(), litLed()); }));
}

void TestOnlineMark::setAlphaRepaints()
{
    QWidget panel;
    panel.setPalette(QPalette(Qt::white));
    COnlineMark mark(&panel);
    mark.initialize();
    panel.resize(mark.size());
    const CWidgetShot covered(&panel);
    mark.setProperty("alpha", 0);
    QVERIFY(!CWidgetShot(&panel).differences(covered).isEmpty());
}

KTZ_TEST(QApplication, TestOnlineMark)
#include "TestOnlineMark.moc"
