#include "tests/soak/CSoak.h"
#include "tests/soak/ProcessResources.h"
#include "tests/support/CTestCase.h"
#include "tests/support/MemoryIsSanitized.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QPixmapCache>

namespace
{
struct Plan
{
    int minutes = 0; ///< 0 for k_shortRun steps
    quint32 seed = 1;
};
Plan g_plan;

constexpr int k_shortRun = 300;

// Caches, logs and the holes in the heap have filled by half of the run; what grows on is a leak.
constexpr qint64 k_memoryNoise = 4096; // kilobytes
} // namespace

class TestSoak : public CTestCase
{
    Q_OBJECT

  private slots:
    void editorAndDeviceAgreeAndNothingGrows();
};

void TestSoak::editorAndDeviceAgreeAndNothingGrows()
{
    // Qt never forgets the names of the pictures in its cache (6.4), and its file dialog paints its header with a new
    // one each time, about a kilobyte for a save and an open. Without room the cache names nothing.
    QPixmapCache::setCacheLimit(0);
    CSoak soak(g_plan.seed);
    soak.start();
    ProcessResources halfWay;
    int stepsHalfWay = 0;
    QElapsedTimer time;
    time.start();
    int steps = 0;
    const auto share = [&] {
        return g_plan.minutes > 0 ? static_cast<double>(time.elapsed()) / (g_plan.minutes * 60'000.0)
                                  : static_cast<double>(steps) / k_shortRun;
    };
    while (share() < 1.0 && !QTest::currentTestFailed()) {
        soak.step();
        ++steps;
        if (stepsHalfWay == 0 && share() >= 0.5) {
            halfWay = ProcessResources::now();
            stepsHalfWay = steps;
        }
        if (QTest::currentTestFailed())
            qInfo("seed %u, step %d: %s", g_plan.seed, steps, qPrintable(soak.lastStep()));
    }
    const ProcessResources atLast = ProcessResources::now();
    qInfo("seed %u: %d steps, %d starts, %d losses; from step %d on %lld -> %lld KiB, %d -> %d threads, %d -> %d "
          "descriptors",
          g_plan.seed, steps, soak.starts(), soak.losses(), stepsHalfWay, halfWay.residentKilobytes,
          atLast.residentKilobytes, halfWay.threads, atLast.threads, halfWay.descriptors, atLast.descriptors);
    soak.stop();
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(atLast.threads, halfWay.threads);
    QCOMPARE(atLast.descriptors, halfWay.descriptors);
    QVERIFY(k_memoryIsSanitized || atLast.residentKilobytes <= halfWay.residentKilobytes + k_memoryNoise);
}

/// TestSoak [--minutes N] [--seed S]: without minutes, a short run with seed 1.
KTZ_TEST_MAIN(TestSoak)(int argc, char** argv)
{
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("minutes"), QStringLiteral("how long"), QStringLiteral("N"), QStringLiteral("0")});
    parser.addOption(
        {QStringLiteral("seed"), QStringLiteral("decides the steps"), QStringLiteral("S"), QStringLiteral("1")});
    parser.process(application);
    g_plan = {parser.value(QStringLiteral("minutes")).toInt(), parser.value(QStringLiteral("seed")).toUInt()};
    // Qt Test ends a function that runs longer than this.
    qputenv("QTEST_FUNCTION_TIMEOUT", QByteArray::number((g_plan.minutes + 5) * 60'000));
    TestSoak test;
    return QTest::qExec(&test, QStringList{application.arguments().first()});
}

#include "TestSoak.moc"
