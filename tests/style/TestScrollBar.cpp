#include "style/CJXStyle.h"
#include "style/StyleColors.h"
#include "style/StyleImages.h"
#include "tests/style/CStyleCanvas.h"
#include "tests/support/CTestCase.h"

#include <QApplication>
#include <QScrollBar>
#include <QStyleOption>

namespace
{
constexpr QRect k_groove{4, 21, 8, 100}; // of a vertical bar of 125
constexpr QRect k_slider{4, 61, 8, 20};  // at 50 of 0 to 100, page 25
constexpr QRect k_subLine{3, 3, 10, 7};
constexpr QRect k_addLine{3, 11, 10, 7};

QStyleOptionSlider verticalBar(int position)
{
    QStyleOptionSlider bar;
    bar.orientation = Qt::Vertical;
    bar.rect = QRect(0, 0, 16, 125);
    bar.minimum = 0;
    bar.maximum = 100;
    bar.pageStep = 25;
    bar.sliderPosition = position;
    bar.subControls = QStyle::SC_All;
    bar.state = QStyle::State_Enabled;
    return bar;
}

CStyleCanvas drawBar(const QStyleOptionSlider& bar)
{
    QScrollBar widget;
    CStyleCanvas canvas(bar.rect.size());
    canvas.draw([&](QPainter* painter) {
        QApplication::style()->drawComplexControl(QStyle::CC_ScrollBar, &bar, painter, &widget);
    });
    return canvas;
}

QImage picture(ImageData data)
{
    return QImage(data).convertToFormat(QImage::Format_RGB32);
}

/// A bar on the screen, from 0 to 100.
void show(QScrollBar* bar, int value)
{
    bar->setRange(0, 100);
    bar->setPageStep(25);
    bar->setValue(value);
    bar->resize(bar->orientation() == Qt::Vertical ? QSize(16, 125) : QSize(125, 16));
    bar->show();
}

QImage shot(QScrollBar* bar)
{
    return bar->grab().toImage().convertToFormat(QImage::Format_RGB32);
}
} // namespace

class TestScrollBar : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();

    void backgroundGrooveAndSlider();
    void grooveAndSliderOnlyIfAskedFor();
    void sliderIsDrawnOnlyIfItCanMove_data();
    void sliderIsDrawnOnlyIfItCanMove();
    void arrows_data();
    void arrows();
    void barAtItsMinimumNeverShowsTheHighlightedUpArrow();
    void arrowIsHighlightedWhilePressed();
    void partsAreMirroredRightToLeft_data();
    void partsAreMirroredRightToLeft();
    void clickOnPart_data();
    void clickOnPart();
    void sliderIsDraggedFromEndToEnd_data();
    void sliderIsDraggedFromEndToEnd();
    void tooShortBarShowsNoGroove();
};

void TestScrollBar::init()
{
    CTestCase::init();
    QApplication::setStyle(QStringLiteral("Fusion")); // what the application had before
    QApplication::setStyle(new CJXStyle);
}

void TestScrollBar::backgroundGrooveAndSlider()
{
    const CStyleCanvas canvas = drawBar(verticalBar(50));
    QSet<QRgb> inks = canvas.colors();
    QCOMPARE(inks, (QSet<QRgb>{colorScrollBarBackground.rgb(), colorScrollBarForeground.rgb()}));

    const QRect below(0, 19, 16, 106);
    QCOMPARE(canvas.bounds(colorScrollBarForeground, below), k_groove);
    for (const QRect& line : {QRect(4, 21, 8, 1), QRect(4, 120, 8, 1), QRect(4, 21, 1, 100), QRect(11, 21, 1, 100)})
        QCOMPARE(canvas.colors(line), QSet<QRgb>{colorScrollBarForeground.rgb()});
    const QRect inside = k_groove.adjusted(1, 1, -1, -1);
    QCOMPARE(canvas.bounds(colorScrollBarForeground, inside), k_slider.adjusted(1, 1, -1, -1));
    QCOMPARE(canvas.colors(k_slider.adjusted(1, 1, -1, -1)), QSet<QRgb>{colorScrollBarForeground.rgb()});
}

void TestScrollBar::grooveAndSliderOnlyIfAskedFor()
{
    QStyleOptionSlider bar = verticalBar(50);
    const QRect below(0, 19, 16, 106);
    bar.subControls = QStyle::SC_ScrollBarSlider;
    QCOMPARE(drawBar(bar).bounds(colorScrollBarForeground, below), k_slider.adjusted(1, 1, -1, -1));
    bar.subControls = QStyle::SC_ScrollBarGroove;
    QCOMPARE(drawBar(bar).bounds(colorScrollBarForeground, k_groove.adjusted(1, 1, -1, -1)), QRect());
    QCOMPARE(drawBar(bar).bounds(colorScrollBarForeground, below), k_groove);
    bar.subControls = QStyle::SC_None;
    QCOMPARE(drawBar(bar).bounds(colorScrollBarForeground, below), QRect());
}

void TestScrollBar::sliderIsDrawnOnlyIfItCanMove_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("position");
    QTest::addColumn<bool>("drawn");
    QTest::newRow("at the minimum") << 0 << 100 << 0 << true;
    QTest::newRow("at the maximum") << 0 << 100 << 100 << true;
    QTest::newRow("nowhere to go") << 0 << 0 << 0 << false;
}

void TestScrollBar::sliderIsDrawnOnlyIfItCanMove()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(int, position);
    QFETCH(bool, drawn);
    QStyleOptionSlider bar = verticalBar(position);
    bar.minimum = minimum;
    bar.maximum = maximum;
    QCOMPARE(!drawBar(bar).bounds(colorScrollBarForeground, k_groove.adjusted(1, 1, -1, -1)).isEmpty(), drawn);
}

void TestScrollBar::arrows_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<QStyle::SubControl>("active");
    QTest::addColumn<bool>("sunken");
    QTest::addColumn<int>("position");
    QTest::addColumn<ImageData>("subLine");
    QTest::addColumn<ImageData>("addLine");
    const auto row = [](const char* name, Qt::Orientation orientation, QStyle::SubControl active, bool sunken,
                        int position, ImageData subLine, ImageData addLine) {
        QTest::newRow(name) << orientation << active << sunken << position << subLine << addLine;
    };
    const auto sub = QStyle::SC_ScrollBarSubLine;
    const auto add = QStyle::SC_ScrollBarAddLine;
    const auto v = Qt::Vertical;
    const auto h = Qt::Horizontal;
    const auto none = QStyle::SC_None;
    row("vertical", v, none, false, 50, scrollbar_up_image, scrollbar_down_image);
    row("up hovered", v, sub, false, 50, scrollbar_up_image, scrollbar_down_image);
    row("up pressed", v, sub, true, 50, scrollbar_up_highlight_image, scrollbar_down_image);
    row("up pressed above the minimum", v, sub, true, 1, scrollbar_up_highlight_image, scrollbar_down_image);
    row("up pressed at the minimum", v, sub, true, 0, scrollbar_up_image, scrollbar_down_image);
    row("down pressed", v, add, true, 50, scrollbar_up_image, scrollbar_down_highlight_image);
    row("down pressed below the maximum", v, add, true, 99, scrollbar_up_image, scrollbar_down_highlight_image);
    row("down pressed at the maximum", v, add, true, 100, scrollbar_up_image, scrollbar_down_image);
    row("slider pressed", v, QStyle::SC_ScrollBarSlider, true, 50, scrollbar_up_image, scrollbar_down_image);
    row("horizontal", h, none, false, 50, scrollbar_left_image, scrollbar_right_image);
    row("left hovered", h, sub, false, 50, scrollbar_left_image, scrollbar_right_image);
    row("left pressed", h, sub, true, 50, scrollbar_left_highlight_image, scrollbar_right_image);
    row("left pressed at the minimum", h, sub, true, 0, scrollbar_left_image, scrollbar_right_image);
    row("right pressed", h, add, true, 50, scrollbar_left_image, scrollbar_right_highlight_image);
    row("right pressed at the maximum", h, add, true, 100, scrollbar_left_image, scrollbar_right_image);
}

void TestScrollBar::arrows()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(QStyle::SubControl, active);
    QFETCH(bool, sunken);
    QFETCH(int, position);
    QFETCH(ImageData, subLine);
    QFETCH(ImageData, addLine);
    QStyleOptionSlider bar = verticalBar(position);
    QRect first = k_subLine;
    QRect second = k_addLine;
    if (orientation == Qt::Horizontal) {
        bar.orientation = orientation;
        bar.rect = bar.rect.transposed();
        first = QRect(k_subLine.y(), k_subLine.x(), k_subLine.height(), k_subLine.width());
        second = QRect(k_addLine.y(), k_addLine.x(), k_addLine.height(), k_addLine.width());
    }
    bar.activeSubControls = active;
    bar.state.setFlag(QStyle::State_Sunken, sunken);
    const QImage image = drawBar(bar).image();
    QCOMPARE(image.copy(first), picture(subLine));
    QCOMPARE(image.copy(second), picture(addLine));
}

void TestScrollBar::barAtItsMinimumNeverShowsTheHighlightedUpArrow()
{
    QScrollBar bar(Qt::Vertical);
    show(&bar, 0);
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QTest::mousePress(&bar, Qt::LeftButton, {}, k_subLine.center());
    QVERIFY(bar.isVisible());
    QCOMPARE(shot(&bar).copy(k_subLine), picture(scrollbar_up_image));
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, k_subLine.center());
}

void TestScrollBar::arrowIsHighlightedWhilePressed()
{
    QScrollBar bar(Qt::Vertical);
    show(&bar, 50);
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QTest::mousePress(&bar, Qt::LeftButton, {}, k_addLine.center());
    QCOMPARE(shot(&bar).copy(k_addLine), picture(scrollbar_down_highlight_image));
    QCOMPARE(shot(&bar).copy(k_subLine), picture(scrollbar_up_image));
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, k_addLine.center());
    QCOMPARE(shot(&bar).copy(k_addLine), picture(scrollbar_down_image));
}

void TestScrollBar::partsAreMirroredRightToLeft_data()
{
    QTest::addColumn<QStyle::SubControl>("control");
    QTest::newRow("sub-line") << QStyle::SC_ScrollBarSubLine;
    QTest::newRow("add-line") << QStyle::SC_ScrollBarAddLine;
    QTest::newRow("groove") << QStyle::SC_ScrollBarGroove;
    QTest::newRow("slider") << QStyle::SC_ScrollBarSlider;
    QTest::newRow("sub-page") << QStyle::SC_ScrollBarSubPage;
    QTest::newRow("add-page") << QStyle::SC_ScrollBarAddPage;
}

void TestScrollBar::partsAreMirroredRightToLeft()
{
    QFETCH(QStyle::SubControl, control);
    QScrollBar widget;
    QStyleOptionSlider bar = verticalBar(30);
    bar.orientation = Qt::Horizontal;
    bar.rect = bar.rect.transposed();
    const auto part = [&] {
        return QApplication::style()->subControlRect(QStyle::CC_ScrollBar, &bar, control, &widget);
    };
    const QRect before = part();
    bar.direction = Qt::RightToLeft;
    QCOMPARE(part(), QRect(125 - before.right() - 1, before.top(), before.width(), before.height()));
}

void TestScrollBar::clickOnPart_data() // at 50: the slider is at 61 to 80
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<int>("along");
    QTest::addColumn<int>("value");
    for (const auto orientation : {Qt::Vertical, Qt::Horizontal}) {
        const char* name = orientation == Qt::Vertical ? "vertical" : "horizontal";
        QTest::addRow("%s, sub-line", name) << orientation << 6 << 49;
        QTest::addRow("%s, add-line", name) << orientation << 14 << 51;
        QTest::addRow("%s, between the arrows", name) << orientation << 10 << 50;
        QTest::addRow("%s, sub-page", name) << orientation << 40 << 25;
        QTest::addRow("%s, slider", name) << orientation << 70 << 50;
        QTest::addRow("%s, add-page", name) << orientation << 100 << 75;
    }
}

void TestScrollBar::clickOnPart()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(int, along);
    QFETCH(int, value);
    QScrollBar bar(orientation);
    show(&bar, 50);
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QTest::mouseClick(&bar, Qt::LeftButton, {}, orientation == Qt::Vertical ? QPoint(8, along) : QPoint(along, 8));
    QCOMPARE(bar.value(), value);
}

void TestScrollBar::sliderIsDraggedFromEndToEnd_data()
{
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("value");
    QTest::newRow("half way") << 31 + 40 << 50;
    QTest::newRow("to the end") << 31 + 80 << 100;
    QTest::newRow("beyond the end") << 31 + 90 << 100;
}

void TestScrollBar::sliderIsDraggedFromEndToEnd()
{
    QFETCH(int, to);
    QFETCH(int, value);
    QScrollBar bar(Qt::Vertical);
    show(&bar, 0);
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QTest::mousePress(&bar, Qt::LeftButton, {}, QPoint(8, 31));
    QMouseEvent move(QEvent::MouseMove, QPointF(8, to), bar.mapToGlobal(QPointF(8, to)), Qt::NoButton, Qt::LeftButton,
                     {});
    QApplication::sendEvent(&bar, &move);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, QPoint(8, to));
    QCOMPARE(bar.value(), value);
}

void TestScrollBar::tooShortBarShowsNoGroove()
{
    QStyleOptionSlider bar = verticalBar(50);
    bar.rect.setHeight(25);
    QCOMPARE(drawBar(bar).colors(QRect(0, 18, 16, 7)), QSet<QRgb>{colorScrollBarBackground.rgb()});
    bar.rect.setHeight(26); // a groove of one pixel, a slider of none
    QCOMPARE(drawBar(bar).bounds(colorScrollBarForeground, QRect(0, 18, 16, 8)), QRect(4, 21, 8, 1));
}

KTZ_TEST(QApplication, TestScrollBar)
#include "TestScrollBar.moc"
