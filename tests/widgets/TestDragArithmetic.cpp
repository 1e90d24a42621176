#include "tests/support/CTestCase.h"
#include "widgets/CImageSlider.h"
#include "widgets/DragArithmetic.h"

class TestDragArithmetic : public CTestCase
{
    Q_OBJECT

  private slots:
    void factorFollowsTheRange_data();
    void factorFollowsTheRange();
    void travelMakesSteps_data();
    void travelMakesSteps();
    void subStepTravelIsCarriedOver();
    void partsOfAPixelAddUpOnEveryScreen_data();
    void partsOfAPixelAddUpOnEveryScreen();
    void partsOfAPixelMakeNoStepOfTenthsWhereAPixelMakesTen();
    void directionChangeUsesUpTheRemainder();
    void resetForgetsTheRemainder();
};

void TestDragArithmetic::factorFollowsTheRange_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<double>("factor");
    QTest::addColumn<double>("fineFactor");
    QTest::newRow("8 or less") << 0 << 8 << 0.125 << 0.03125;
    QTest::newRow("9 to 16") << 9 << 16 << 0.25 << 0.0625;
    QTest::newRow("17 to 32") << 17 << 32 << 0.5 << 0.125;
    QTest::newRow("33 to 999") << 33 << 999 << 1.0 << 0.25;
    QTest::newRow("1000 or more") << 1000 << 20000 << 10.0 << 0.25;
}

void TestDragArithmetic::factorFollowsTheRange()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(double, factor);
    QFETCH(double, fineFactor);
    for (int range = first; range <= last; ++range) {
        QCOMPARE(DragArithmetic::factor(range, false), factor);
        QCOMPARE(DragArithmetic::factor(range, true), fineFactor);
        QCOMPARE(CImageSlider::getMagnificationForMouseMove(range, false), factor);
        QCOMPARE(CImageSlider::getMagnificationForMouseMove(range, true), fineFactor);
    }
}

void TestDragArithmetic::travelMakesSteps_data()
{
    QTest::addColumn<double>("travel");
    QTest::addColumn<double>("factor");
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("remainder");
    QTest::newRow("none") << 0.0 << 1.0 << 0 << 0;
    QTest::newRow("one to one, down") << 7.0 << 1.0 << 7 << 0;
    QTest::newRow("one to one, up") << -7.0 << 1.0 << -7 << 0;
    QTest::newRow("a quarter, below one step") << 3.0 << 0.25 << 0 << 3;
    QTest::newRow("a quarter, exactly one step") << 4.0 << 0.25 << 1 << 0;
    QTest::newRow("a quarter, more than one step") << 7.0 << 0.25 << 1 << 3;
    QTest::newRow("a quarter upwards is cut toward zero too") << -7.0 << 0.25 << -1 << -3;
    QTest::newRow("an eighth") << 17.0 << 0.125 << 2 << 1;
    QTest::newRow("the finest") << 33.0 << 0.03125 << 1 << 1;
    QTest::newRow("ten steps a pixel leave nothing over") << -3.0 << 10.0 << -30 << 0;
    QTest::newRow("less than a pixel") << 0.8 << 1.0 << 0 << 0;
    QTest::newRow("a pixel and a half, up") << -1.5 << 1.0 << -1 << 0;
    QTest::newRow("three pixels and a half at a quarter") << 3.5 << 0.25 << 0 << 3;
}

void TestDragArithmetic::travelMakesSteps()
{
    QFETCH(double, travel);
    QFETCH(double, factor);
    DragArithmetic arithmetic;
    QTEST(arithmetic.steps(travel, factor), "steps");
    QTEST(arithmetic.remainder(), "remainder");
}

void TestDragArithmetic::subStepTravelIsCarriedOver()
{
    DragArithmetic arithmetic;
    for (int pixel = 1; pixel <= 64; ++pixel)
        QCOMPARE(arithmetic.steps(1, 0.0625), pixel % 16 == 0 ? 1 : 0);
}

void TestDragArithmetic::partsOfAPixelAddUpOnEveryScreen_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<int>("move"); // device pixels
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        for (int move = 1; move <= 9; ++move) {
            QTest::addRow("ratio %g, %d down", ratio, move) << ratio << move;
            QTest::addRow("ratio %g, %d up", ratio, move) << ratio << -move;
        }
    }
}

void TestDragArithmetic::partsOfAPixelAddUpOnEveryScreen()
{
    QFETCH(double, ratio);
    QFETCH(int, move);
    DragArithmetic arithmetic;
    int steps = 0;
    for (int moves = 1; moves <= 20; ++moves) {
        steps += arithmetic.steps(move / ratio, 1.0);
        // Counted in hundredths of a device pixel, of which every ratio is a whole number.
        QCOMPARE(steps, moves * move * 100 / static_cast<int>(ratio * 100));
    }
    for (int moves = 1; moves <= 20; ++moves)
        steps += arithmetic.steps(-move / ratio, 1.0);
    QCOMPARE(steps, 0);
}

void TestDragArithmetic::partsOfAPixelMakeNoStepOfTenthsWhereAPixelMakesTen()
{
    DragArithmetic arithmetic;
    QCOMPARE(arithmetic.steps(0.5, 10.0), 0);
    QCOMPARE(arithmetic.steps(0.5, 10.0), 10);
}

void TestDragArithmetic::directionChangeUsesUpTheRemainder()
{
    DragArithmetic arithmetic;
    QCOMPARE(arithmetic.steps(3, 0.25), 0);
    QCOMPARE(arithmetic.steps(-6, 0.25), 0);
    QCOMPARE(arithmetic.remainder(), -3);
    QCOMPARE(arithmetic.steps(-1, 0.25), -1);
}

void TestDragArithmetic::resetForgetsTheRemainder()
{
    DragArithmetic arithmetic;
    QCOMPARE(arithmetic.steps(3.9, 0.25), 0);
    arithmetic.reset();
    QCOMPARE(arithmetic.remainder(), 0);
    QCOMPARE(arithmetic.steps(1, 0.25), 0);
    QCOMPARE(arithmetic.steps(0.2, 1.0), 1);
    QCOMPARE(arithmetic.steps(0.9, 1.0), 1);
}

KTZ_TEST(QCoreApplication, TestDragArithmetic)
#include "TestDragArithmetic.moc"
