#include "app/WindowReach.h"
#include "tests/support/CTestCase.h"

namespace
{
const QRect k_left(0, 25, 1000, 775);     // a bar of 25 pixels at its top
const QRect k_right(1000, 0, 1280, 1024); // beside it
constexpr QSize k_window(446, 680);
} // namespace

class TestWindowReach : public CTestCase
{
    Q_OBJECT

  private slots:
    void reachable_data();
    void reachable();
    void pulledBack_data();
    void pulledBack();
    void lowScreen_data();
    void lowScreen();
    void lowScreenBesideAHighOne();
    void missing_data();
    void missing();
};

void TestWindowReach::reachable_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<bool>("isReachable");
    QTest::newRow("in the middle") << QPoint(100, 100) << true;
    QTest::newRow("at the left screen's top") << QPoint(100, 25) << true;
    QTest::newRow("one above it, not on the right screen either") << QPoint(100, 24) << false;
    QTest::newRow("one above it, across both screens") << QPoint(900, 24) << true;
    QTest::newRow("last row below") << QPoint(100, 776) << true;
    QTest::newRow("one too low") << QPoint(100, 777) << false;
    QTest::newRow("as low, on the taller screen") << QPoint(1200, 777) << true;
    QTest::newRow("last column at the left") << QPoint(-433, 100) << true;
    QTest::newRow("one too far left") << QPoint(-434, 100) << false;
    QTest::newRow("last column at the right") << QPoint(2267, 100) << true;
    QTest::newRow("one too far right") << QPoint(2268, 100) << false;
}

void TestWindowReach::reachable()
{
    QFETCH(QPoint, position);
    QFETCH(bool, isReachable);
    QCOMPARE(WindowReach::isReachable(QRect(position, k_window), {k_left, k_right}), isReachable);
    QVERIFY(!WindowReach::isReachable(QRect(position, k_window), {}));
}

void TestWindowReach::pulledBack_data()
{
    QTest::addColumn<QPoint>("wanted");
    QTest::addColumn<QPoint>("position");
    QTest::newRow("in the middle") << QPoint(100, 100) << QPoint(100, 100);
    QTest::newRow("above") << QPoint(100, -50) << QPoint(100, 25);
    QTest::newRow("below: 22 pixels of the top stay") << QPoint(100, 5000) << QPoint(100, 777);
    QTest::newRow("left: 11 pixels of the side stay") << QPoint(-5000, 100) << QPoint(-435, 100);
    QTest::newRow("right: 11 pixels of the side stay") << QPoint(5000, 100) << QPoint(988, 100);
    QTest::newRow("corner") << QPoint(-5000, 5000) << QPoint(-435, 777);
}

void TestWindowReach::pulledBack()
{
    QFETCH(QPoint, wanted);
    QFETCH(QPoint, position);
    QCOMPARE(WindowReach::reachablePosition(wanted, k_window, k_left), position);
}

void TestWindowReach::lowScreen_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("highestTop");
    QTest::newRow("800 x 600") << 600 << -80;
    QTest::newRow("1280 x 720 at 125 %") << 576 << -104;
    QTest::newRow("one row too low") << 679 << -1;
    QTest::newRow("just high enough") << 680 << 0;
    QTest::newRow("1024 x 768") << 768 << 0;
    QTest::newRow("1920 x 1080") << 1080 << 0;
}

void TestWindowReach::lowScreen()
{
    QFETCH(int, height);
    QFETCH(int, highestTop);
    for (const int bar : {0, 25}) {
        const QRect screen(0, bar, 1000, height);
        const QPoint highest(100, bar + highestTop);
        QVERIFY(WindowReach::isReachable(QRect(highest, k_window), {screen}));
        QVERIFY(!WindowReach::isReachable(QRect(highest - QPoint(0, 1), k_window), {screen}));
        QCOMPARE(WindowReach::reachablePosition(highest, k_window, screen), highest);
        QCOMPARE(WindowReach::reachablePosition(QPoint(100, -500), k_window, screen), highest);
        // Its lowest row shows, and no more of what is below it than that.
        QCOMPARE(std::max(QRect(highest, k_window).bottom(), screen.bottom()), screen.bottom());
        // Downwards nothing changes.
        QCOMPARE(WindowReach::reachablePosition(QPoint(100, 5000), k_window, screen),
                 QPoint(100, screen.bottom() - WindowReach::k_verticalMargin));
    }
}

void TestWindowReach::lowScreenBesideAHighOne()
{
    const QRect low(0, 0, 800, 600);
    const QRect high(800, 0, 1920, 1080);
    QVERIFY(WindowReach::isReachable(QRect(QPoint(100, -80), k_window), {low, high}));
    QVERIFY(WindowReach::isReachable(QRect(QPoint(100, -80), k_window), {high, low}));
    // The part on the high screen alone is out of reach, that on the low one is not.
    QVERIFY(!WindowReach::isReachable(QRect(QPoint(900, -80), k_window), {low, high}));
    QVERIFY(WindowReach::isReachable(QRect(QPoint(700, -80), k_window), {low, high}));
}

void TestWindowReach::missing_data()
{
    QTest::addColumn<QRect>("part");
    QTest::addColumn<QPoint>("missing");
    QTest::newRow("in the middle") << QRect(100, 100, 50, 20) << QPoint(0, 0);
    QTest::newRow("in the first corner") << QRect(0, 25, 50, 20) << QPoint(0, 0);
    QTest::newRow("in the last corner") << QRect(950, 780, 50, 20) << QPoint(0, 0);
    QTest::newRow("under the bar at the top") << QRect(100, 24, 50, 20) << QPoint(0, 1);
    QTest::newRow("half below") << QRect(100, 790, 50, 20) << QPoint(0, -10);
    QTest::newRow("beyond the left, below") << QRect(-60, 900, 50, 20) << QPoint(60, -120);
    QTest::newRow("half on the right screen") << QRect(980, 100, 50, 20) << QPoint(0, 0);
    QTest::newRow("half on the right screen, above the left one") << QRect(980, 0, 50, 20) << QPoint(-30, 25);
    QTest::newRow("on the right screen") << QRect(1500, 900, 50, 20) << QPoint(0, 0);
}

void TestWindowReach::missing()
{
    QFETCH(QRect, part);
    QFETCH(QPoint, missing);
    QCOMPARE(WindowReach::missing(part, k_left, {k_left, k_right}), missing);
}

KTZ_TEST(QCoreApplication, TestWindowReach)
#include "TestWindowReach.moc"
