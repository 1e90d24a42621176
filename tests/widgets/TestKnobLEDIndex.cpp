#include "tests/support/CTestCase.h"
#include "widgets/KnobLEDStates.h"

#include <limits>

class TestKnobLEDIndex : public CTestCase
{
    Q_OBJECT

  private slots:
    void everyValueOfARangeHasItsState_data();
    void everyValueOfARangeHasItsState();
    void rangesCoverEveryValueOnce();
    void valueOutsideEveryRangeGivesState0_data();
    void valueOutsideEveryRangeGivesState0();
    void unknownTypeGivesState0_data();
    void unknownTypeGivesState0();
};

void TestKnobLEDIndex::everyValueOfARangeHasItsState_data()
{
    QTest::addColumn<int>("rising"); // the type that begins dark, its mirror image is the other
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("risingState");
    QTest::addColumn<int>("mirror");
    QTest::addColumn<int>("mirrorState");
    const auto ascent = [](int first, int last, int up, int down) {
        QTest::addRow("ascent and descent, %d to %d", first, last) << 0 << first << last << up << 1 << down;
    };
    ascent(0, 0, 0, 5);
    ascent(1, 32, 1, 4);
    ascent(33, 63, 2, 3);
    ascent(64, 94, 3, 2);
    ascent(95, 126, 4, 1);
    ascent(127, 127, 5, 0);
    const auto concave = [](int first, int last, int in, int out) {
        QTest::addRow("concave and convex, %d to %d", first, last) << 2 << first << last << in << 3 << out;
    };
    concave(0, 0, 5, 0);
    concave(1, 16, 4, 1);
    concave(17, 32, 3, 2);
    concave(33, 48, 2, 3);
    concave(49, 63, 1, 4);
    concave(64, 64, 0, 5);
    concave(65, 78, 1, 4);
    concave(79, 94, 2, 3);
    concave(95, 110, 3, 2);
    concave(111, 126, 4, 1);
    concave(127, 127, 5, 0);
}

void TestKnobLEDIndex::everyValueOfARangeHasItsState()
{
    QFETCH(int, rising);
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, risingState);
    QFETCH(int, mirror);
    QFETCH(int, mirrorState);
    for (int value = first; value <= last; ++value) {
        QCOMPARE(knobLEDIndex(rising, value), risingState);
        QCOMPARE(knobLEDIndex(mirror, value), mirrorState);
    }
}

void TestKnobLEDIndex::rangesCoverEveryValueOnce()
{
    int next = 0;
    for (std::size_t row = 0; row < k_minAscentDescendParam.size(); ++row) {
        QCOMPARE(k_minAscentDescendParam[row], next);
        next = k_maxAscentDescendParam[row] + 1;
    }
    QCOMPARE(next, 128);
    next = 0;
    for (std::size_t row = 0; row < k_minConcaveConvexParam.size(); ++row) {
        QCOMPARE(k_minConcaveConvexParam[row], next);
        next = k_maxConcaveConvexParam[row] + 1;
    }
    QCOMPARE(next, 128);
}

void TestKnobLEDIndex::valueOutsideEveryRangeGivesState0_data()
{
    QTest::addColumn<int>("value");
    QTest::newRow("one below") << -1;
    QTest::newRow("one above") << 128;
    QTest::newRow("far below") << std::numeric_limits<int>::min();
    QTest::newRow("far above") << std::numeric_limits<int>::max();
}

void TestKnobLEDIndex::valueOutsideEveryRangeGivesState0()
{
    QFETCH(int, value);
    for (int type = 0; type <= 3; ++type)
        QCOMPARE(knobLEDIndex(type, value), 0);
}

void TestKnobLEDIndex::unknownTypeGivesState0_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("one below") << -1;
    QTest::newRow("one above") << 4;
    QTest::newRow("far above") << 127;
}

void TestKnobLEDIndex::unknownTypeGivesState0()
{
    QFETCH(int, type);
    for (int value = 0; value <= 127; ++value)
        QCOMPARE(knobLEDIndex(type, value), 0);
}

KTZ_TEST(QCoreApplication, TestKnobLEDIndex)
#include "TestKnobLEDIndex.moc"
