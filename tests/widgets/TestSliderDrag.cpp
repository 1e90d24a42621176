#include "tests/support/CTestCase.h"
#include "tests/widgets/WidgetEvents.h"
#include "widgets/CSliderDrag.h"

#include <QSlider>

namespace
{
QMouseEvent pressAt(const QPointF& inWindow, const QPointF& global)
{
    return {QEvent::MouseButtonPress, inWindow, inWindow, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier};
}
} // namespace

/// What every slider's own test cannot reach: positions between two logical pixels, and the choice of a pointer scheme.
class TestSliderDrag : public CTestCase
{
    Q_OBJECT

  private slots:
    void halfPixelsOfDenseScreensAddUpInBothDirections_data();
    void halfPixelsOfDenseScreensAddUpInBothDirections();
    void roundedHalfPixelsCountWhenTheyAreWhole();
    void nothingIsLostOnAnyScreen_data();
    void nothingIsLostOnAnyScreen();
    void positionInTheWindowThatCannotBeTrueIsIgnored();
    void lastHalfPixelOfADenseScreenBelongsToTheSlider();
    void pointerIsPlacedOnlyWhereItMay();
};

void TestSliderDrag::halfPixelsOfDenseScreensAddUpInBothDirections_data()
{
    QTest::addColumn<bool>("pointerWarps");
    QTest::newRow("pointer held at the centre") << true;
    QTest::newRow("pointer moves on") << false;
}

void TestSliderDrag::halfPixelsOfDenseScreensAddUpInBothDirections()
{
    QFETCH(bool, pointerWarps);
    QSlider slider;
    slider.setGeometry(100, 100, 73, 15);
    slider.setRange(0, 127);
    slider.setValue(64);
    CSliderDrag drag(&slider);
    drag.setPointerWarps(pointerWarps);
    drag.begin(pressAt(QPointF(36, 7), centreOf(slider)));
    const auto moveBy = [&](double y) {
        const QPointF global = drag.centre() + QPointF(0, y);
        drag.move(QMouseEvent(QEvent::MouseMove, slider.mapFromGlobal(global), global, Qt::NoButton, Qt::LeftButton,
                              Qt::NoModifier));
    };
    moveBy(0.5);
    moveBy(-0.5);
    QCOMPARE(slider.value(), 64);
    moveBy(1.5);
    QCOMPARE(slider.value(), 63);
    // From the centre again, or from where the last whole pixel was.
    moveBy(pointerWarps ? -1.5 : -0.5);
    QCOMPARE(slider.value(), 64);
}

namespace
{
/// A slider at 64 of 0 to 127 that is being dragged.
class CDraggedSlider : public QSlider
{
  public:
    CDraggedSlider()
    {
        setGeometry(100, 100, 73, 15);
        setRange(0, 127);
        setValue(64);
        m_drag.setPointerWarps(true);
        m_drag.begin(pressAt(QPointF(36, 7), centreOf(*this)));
    }

    /// y   from the centre: as the toolkit rounds it for the screen, and within the window.
    int moveTo(double yOnScreen, double yInWindow)
    {
        const QPointF global = m_drag.centre() + QPointF(0, yOnScreen);
        const QPointF scene = QPointF(36, 7 + yInWindow);
        m_drag.move(QMouseEvent(QEvent::MouseMove, scene, scene, global, Qt::NoButton, Qt::LeftButton, Qt::NoModifier));
        return value();
    }

  private:
    CSliderDrag m_drag{this};
};
} // namespace

void TestSliderDrag::roundedHalfPixelsCountWhenTheyAreWhole()
{
    CDraggedSlider slider;
    QCOMPARE(slider.moveTo(-1, -1), 65);
    // Placed at the centre; from here on the window's positions count.
    QCOMPARE(slider.moveTo(0, 0), 65);
    QCOMPARE(slider.moveTo(1, 0.5), 65);
    QCOMPARE(slider.moveTo(1, 1), 64);
    QCOMPARE(slider.moveTo(0, 0), 64);
    QCOMPARE(slider.moveTo(0, -0.5), 64);
    QCOMPARE(slider.moveTo(-1, -1), 65);
    QCOMPARE(slider.moveTo(-1, -1.5), 66);
    QCOMPARE(slider.moveTo(2, 1.5), 65);
}

namespace
{
/// A slider of 0 to 127 on a screen of any ratio, dragged by a pointer that is where X11 and the toolkit say: at whole
/// device pixels, rounded to logical ones for the screen, exact within the window.
class CDenseScreen
{
  public:
    /// windowTop   of the slider, which is the window, in device pixels.
    CDenseScreen(double ratio, int windowTop, bool pointerWarps)
        : m_ratio(ratio), m_windowTop(windowTop), m_pointerWarps(pointerWarps)
    {
        m_slider.setGeometry(100, 100, 73, 15);
        m_slider.setRange(0, 127);
        m_slider.setValue(64);
        m_drag.setPointerWarps(pointerWarps);
        m_centre = centreOf(m_slider);
        m_pointer = centre();
        m_drag.begin(event(QEvent::MouseButtonPress));
    }

    /// The steps that the value makes for a movement downwards of so many device pixels.
    [[nodiscard]] int move(int devicePixels)
    {
        m_slider.setValue(64);
        m_pointer += devicePixels;
        m_drag.move(event(QEvent::MouseMove));
        if (m_pointerWarps && m_pointer != centre()) {
            // It has been placed, which the window system reports.
            m_pointer = centre();
            m_drag.move(event(QEvent::MouseMove));
        }
        return m_slider.value() - 64;
    }

  private:
    [[nodiscard]] int centre() const
    {
        return qRound(m_centre.y() * m_ratio);
    }

    [[nodiscard]] QMouseEvent event(QEvent::Type type) const
    {
        const QPointF inWindow(36, (m_pointer - m_windowTop) / m_ratio);
        const QPointF global(m_centre.x(), qRound(m_pointer / m_ratio));
        const bool isPress = type == QEvent::MouseButtonPress;
        return {type,           inWindow,      inWindow, global, isPress ? Qt::LeftButton : Qt::NoButton,
                Qt::LeftButton, Qt::NoModifier};
    }

    double m_ratio;
    int m_windowTop;
    bool m_pointerWarps;
    QSlider m_slider;
    CSliderDrag m_drag{&m_slider};
    QPoint m_centre; ///< logical, of the slider
    int m_pointer = 0;
};
} // namespace

void TestSliderDrag::nothingIsLostOnAnyScreen_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<int>("move"); // device pixels, downwards
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        for (int move = 1; move <= 9; ++move) {
            QTest::addRow("ratio %g, %d down", ratio, move) << ratio << move;
            QTest::addRow("ratio %g, %d up", ratio, move) << ratio << -move;
        }
    }
}

void TestSliderDrag::nothingIsLostOnAnyScreen()
{
    QFETCH(double, ratio);
    QFETCH(int, move);
    for (const bool pointerWarps : {true, false}) {
        for (int windowTop = 120; windowTop < 125; ++windowTop) {
            CDenseScreen screen(ratio, windowTop, pointerWarps);
            int steps = 0;
            for (int moves = 1; moves <= 20; ++moves) {
                steps += screen.move(move);
                // Counted in hundredths of a device pixel, of which every ratio is a whole number.
                QCOMPARE(-steps, moves * move * 100 / static_cast<int>(ratio * 100));
            }
            for (int moves = 1; moves <= 20; ++moves)
                steps += screen.move(-move);
            QCOMPARE(steps, 0);
        }
    }
}

void TestSliderDrag::positionInTheWindowThatCannotBeTrueIsIgnored()
{
    CDraggedSlider slider;
    QCOMPARE(slider.moveTo(-1, -1), 65);
    QCOMPARE(slider.moveTo(0, 40), 65);
    QCOMPARE(slider.moveTo(-1, 40), 66);
    QCOMPARE(slider.moveTo(3, 40), 63);
}

void TestSliderDrag::lastHalfPixelOfADenseScreenBelongsToTheSlider()
{
    QSlider slider;
    slider.setGeometry(100, 100, 73, 15);
    const CSliderDrag drag(&slider);
    QVERIFY(drag.isOverSlider(QPointF(0, 0)));
    QVERIFY(drag.isOverSlider(QPointF(72.5, 14.5)));
    QVERIFY(!drag.isOverSlider(QPointF(73, 0)));
    QVERIFY(!drag.isOverSlider(QPointF(0, 15)));
    QVERIFY(!drag.isOverSlider(QPointF(-0.5, 0)));
    QVERIFY(!drag.isOverSlider(QPointF(0, -0.5)));
}

void TestSliderDrag::pointerIsPlacedOnlyWhereItMay()
{
    QSlider slider;
    CSliderDrag drag(&slider);
    drag.setPointerWarps(true);
    drag.warpPointer(QPoint(40, 50));
    QTRY_COMPARE(QCursor::pos(), QPoint(40, 50));
    drag.setPointerWarps(false);
    drag.warpPointer(QPoint(80, 90));
    QCOMPARE(QCursor::pos(), QPoint(40, 50));
}

KTZ_TEST(QApplication, TestSliderDrag)
#include "TestSliderDrag.moc"
