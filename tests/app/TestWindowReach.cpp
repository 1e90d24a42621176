#include "app/WindowReach.h"
#include "tests/support/CTestCase.h"

namespace
{
const QRect k_left(0, 25, 1000, 775);     // a bar of 25 pixels at its top
const QRect k_right(1000, 0, 1280, 1024); // beside it
constexpr QSize k_size(446, 680);
} // namespace

class TestWindowReach : public CTestCase
{
    Q_OBJECT

  private slots:
    void reachable_data();
    void reachable();
    void pulledBack_data();
    void pulledBack();
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
    QCOMPARE(WindowReach::isReachable(QRect(position, k_size), {k_left, k_right}), isReachable);
    QVERIFY(!WindowReach::isReachable(QRect(position, k_size), {}));
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
    QCOMPARE(WindowReach::reachablePosition(wanted, k_size.width(), k_left), position);
}

QTEST_GUILESS_MAIN(TestWindowReach)
#include "TestWindowReach.moc"
