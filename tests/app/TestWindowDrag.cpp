#include "app/WindowDrag.h"
#include "tests/support/CTestCase.h"

using WindowDrag::Screen;
Q_DECLARE_METATYPE(QList<Screen>)

namespace
{
constexpr QSize k_size(446, 680);
}

class TestWindowDrag : public CTestCase
{
    Q_OBJECT

  private slots:
    void oneScreen();
    void screenThatTheToolkitTakes_data();
    void screenThatTheToolkitTakes();
    void grabbedPointStaysUnderThePointer_data();
    void grabbedPointStaysUnderThePointer();
};

void TestWindowDrag::oneScreen()
{
    for (const qreal ratio : {1.0, 1.25, 2.0, 3.0}) {
        const QList<Screen> screen{{QRect(0, 0, 1000, 800), ratio}};
        const auto moved = [&](const QPointF& pointer) {
            return WindowDrag::position(pointer, QPointF(200, 10), k_size, screen, 0);
        };
        QCOMPARE(moved({500, 110}), QPoint(300, 100));
        QCOMPARE(moved({501, 109}), QPoint(301, 99));
        QCOMPARE(moved({0, 0}), QPoint(-200, -10));
        QCOMPARE(moved({999, 799}), QPoint(799, 789)); // its middle is off the screen
    }
}

void TestWindowDrag::screenThatTheToolkitTakes_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<int>("present");
    QTest::addColumn<int>("taken");
    // The middle of the window is 222 pixels right of its left edge and 339 below its top.
    QTest::newRow("on the present one") << QPoint(100, 0) << 0 << 0;
    QTest::newRow("middle on the last column") << QPoint(777, 0) << 0 << 0;
    QTest::newRow("middle one further") << QPoint(778, 0) << 0 << 1;
    QTest::newRow("back") << QPoint(777, 0) << 1 << 0;
    QTest::newRow("below, touching one") << QPoint(100, 700) << 0 << 0;
    QTest::newRow("below, touching the other") << QPoint(1100, 700) << 0 << 1;
    QTest::newRow("off both") << QPoint(100, 2000) << 1 << 1;
}

void TestWindowDrag::screenThatTheToolkitTakes()
{
    QFETCH(QPoint, position);
    QFETCH(int, present);
    const QList<QRect> screens{QRect(0, 0, 1000, 1000), QRect(1000, 0, 1000, 1000)};
    QTEST(int(WindowDrag::screenFor(QRect(position, k_size), screens, present)), "taken");
}

void TestWindowDrag::grabbedPointStaysUnderThePointer_data()
{
    QTest::addColumn<QPoint>("grabbed");
    QTest::addColumn<QList<Screen>>("screens");
    QTest::addColumn<int>("longestWait"); // device pixels
    const Screen plain{QRect(0, 0, 2000, 2000), 1.0};
    const QList<Screen> toDense{plain, {QRect(2000, 0, 1000, 1000), 2.0}};
    const QList<Screen> fromDense{{QRect(0, 0, 1000, 1000), 2.0}, {QRect(2000, 0, 2000, 2000), 1.0}};
    const QList<Screen> fractional{{QRect(0, 0, 1600, 1600), 1.25}, {QRect(2000, 0, 1333, 1333), 1.5}};
    const QList<Screen> alike{plain, {QRect(2000, 0, 2000, 2000), 1.0}};
    for (const auto& [name, x, wait] :
         {std::tuple("left", 20, 0), std::tuple("middle", 223, 1), std::tuple("right", 430, 210)}) {
        QTest::addRow("plain to dense, %s", name) << QPoint(x, 10) << toDense << wait;
        QTest::addRow("dense to plain, %s", name) << QPoint(446 - x, 10) << fromDense << wait;
        QTest::addRow("1.25 to 1.5, %s", name) << QPoint(x, 10) << fractional << wait;
        QTest::addRow("both alike, %s", name) << QPoint(x, 10) << alike << 0;
    }
}

/// Over the seam and back in steps of one device pixel, with the toolkit's own choice of the screen.
void TestWindowDrag::grabbedPointStaysUnderThePointer()
{
    QFETCH(QPoint, grabbed);
    QFETCH(QList<Screen>, screens);
    QFETCH(int, longestWait);
    const auto toDevice = [&](const QPointF& position, qsizetype i) {
        const QPointF corner = screens[i].geometry.topLeft();
        return corner + (position - corner) * screens[i].ratio;
    };
    const QList<QRect> logical{screens[0].geometry, screens[1].geometry};
    const QList<QRect> device{QRect(0, 0, 2000, 2000), QRect(2000, 0, 2000, 2000)};
    qsizetype present = 0;
    int waited = 0;
    int crossings = 0;
    const auto moveTo = [&](int x) {
        const qsizetype under = x < 2000 ? 0 : 1;
        const QPointF origin = screens[under].geometry.topLeft();
        const QPointF pointer = origin + (QPointF(x, 500) - origin) / screens[under].ratio;
        const auto position = WindowDrag::position(pointer, grabbed, k_size, screens, present);
        if (!position) {
            ++waited;
            return;
        }
        const qsizetype taken = WindowDrag::screenFor(QRect(*position, k_size), logical, present);
        const QPointF corner = toDevice(*position, taken);
        const QRect window(corner.toPoint(), k_size * screens[taken].ratio);
        QCOMPARE(WindowDrag::screenFor(window, device, present), taken);
        crossings += taken != present ? 1 : 0;
        present = taken;
        const QPointF seen = corner + QPointF(grabbed) * screens[present].ratio;
        QVERIFY2(qAbs(seen.x() - x) <= screens[present].ratio && qAbs(seen.y() - 500) <= screens[present].ratio,
                 qPrintable(QStringLiteral("pointer at %1, grabbed point at %2").arg(x).arg(seen.x())));
    };
    for (int x = 600; x < 3400; ++x)
        moveTo(x);
    QCOMPARE(crossings, 1);
    for (int x = 3400; x > 600; --x)
        moveTo(x);
    QCOMPARE(crossings, 2);
    QVERIFY2(waited <= 2 * longestWait, qPrintable(QString::number(waited)));
}

KTZ_TEST(QCoreApplication, TestWindowDrag)
#include "TestWindowDrag.moc"
