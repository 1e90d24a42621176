#include "style/CScrollBarGeometry.h"
#include "tests/support/CTestCase.h"

#include <QStyleOptionSlider>

#include <limits>

namespace
{
constexpr int k_thickness = 16;
constexpr int k_sliderMinimum = 10;

QStyleOptionSlider barOfLength(int length)
{
    QStyleOptionSlider bar;
    bar.orientation = Qt::Vertical;
    bar.rect = QRect(0, 0, k_thickness, length);
    bar.minimum = 0;
    bar.maximum = 100;
    bar.pageStep = 25;
    bar.sliderPosition = 0;
    return bar;
}

QRect part(const QStyleOptionSlider& bar, QStyle::SubControl control)
{
    return CScrollBarGeometry(bar, k_thickness, k_sliderMinimum).part(control);
}
} // namespace

class TestScrollBarGeometry : public CTestCase
{
    Q_OBJECT

  private slots:
    void partsAreWhereTheTableSays_data();
    void partsAreWhereTheTableSays();
    void partsFollowTheBarsOwnPlace();
    void sliderLength_data();
    void sliderLength();
    void sliderStart_data();
    void sliderStart();
    void pagesFillTheGrooveAroundTheSlider_data();
    void pagesFillTheGrooveAroundTheSlider();
    void barTooShortForItsArrowsHasNoGroove_data();
    void barTooShortForItsArrowsHasNoGroove();
};

void TestScrollBarGeometry::partsAreWhereTheTableSays_data() // bar of 125: the groove is 100 long, the slider 20 at 40
{
    QTest::addColumn<int>("control");
    QTest::addColumn<int>("first"); // along the bar
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("acrossFirst");
    QTest::addColumn<int>("acrossLast");
    QTest::newRow("sub-line") << int(QStyle::SC_ScrollBarSubLine) << 3 << 9 << 3 << k_thickness - 4;
    QTest::newRow("add-line") << int(QStyle::SC_ScrollBarAddLine) << 11 << 17 << 3 << k_thickness - 4;
    QTest::newRow("groove") << int(QStyle::SC_ScrollBarGroove) << 21 << 125 - 5 << 4 << k_thickness - 5;
    QTest::newRow("slider") << int(QStyle::SC_ScrollBarSlider) << 61 << 80 << 4 << k_thickness - 5;
    QTest::newRow("sub-page") << int(QStyle::SC_ScrollBarSubPage) << 21 << 60 << 4 << k_thickness - 5;
    QTest::newRow("add-page") << int(QStyle::SC_ScrollBarAddPage) << 81 << 120 << 4 << k_thickness - 5;
}

void TestScrollBarGeometry::partsAreWhereTheTableSays()
{
    QFETCH(int, control);
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, acrossFirst);
    QFETCH(int, acrossLast);

    QStyleOptionSlider bar = barOfLength(125);
    bar.sliderPosition = 50;
    QCOMPARE(part(bar, QStyle::SubControl(control)), QRect(QPoint(acrossFirst, first), QPoint(acrossLast, last)));

    bar.orientation = Qt::Horizontal;
    bar.rect = bar.rect.transposed();
    QCOMPARE(part(bar, QStyle::SubControl(control)), QRect(QPoint(first, acrossFirst), QPoint(last, acrossLast)));
}

void TestScrollBarGeometry::partsFollowTheBarsOwnPlace()
{
    QStyleOptionSlider bar = barOfLength(125);
    const QRect before = part(bar, QStyle::SC_ScrollBarSlider);
    bar.rect.translate(30, 7);
    QCOMPARE(part(bar, QStyle::SC_ScrollBarSlider), before.translated(30, 7));
}

void TestScrollBarGeometry::sliderLength_data()
{
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int widest = 1073741824;
    QTest::addColumn<int>("barLength");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("pageStep");
    QTest::addColumn<int>("length");
    QTest::newRow("a fifth of the whole") << 125 << 0 << 100 << 25 << 20;
    QTest::newRow("cut to whole pixels") << 125 << 0 << 99 << 25 << 20;
    QTest::newRow("range below zero") << 125 << -50 << 50 << 25 << 20;
    QTest::newRow("exactly the minimum") << 125 << 0 << 90 << 10 << k_sliderMinimum;
    QTest::newRow("below the minimum") << 125 << 0 << 1000 << 1 << k_sliderMinimum;
    QTest::newRow("page of 0") << 125 << 0 << 100 << 0 << k_sliderMinimum;
    QTest::newRow("nothing to scroll fills the groove") << 125 << 7 << 7 << 25 << 100;
    QTest::newRow("nothing to scroll, page of 0") << 125 << 0 << 0 << 0 << 100;
    QTest::newRow("widest range but one, page as wide") << 125 << 0 << widest - 1 << widest - 1 << 50;
    QTest::newRow("widest range, page as wide") << 125 << 0 << widest << widest << k_sliderMinimum;
    QTest::newRow("all ints") << 125 << least << most << most << k_sliderMinimum;
    QTest::newRow("groove shorter than the minimum") << 30 << 0 << 100 << 25 << 5;
    QTest::newRow("groove of the minimum") << 35 << 0 << 100 << 25 << 10;
}

void TestScrollBarGeometry::sliderLength()
{
    QFETCH(int, barLength);
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(int, pageStep);
    QFETCH(int, length);
    QStyleOptionSlider bar = barOfLength(barLength);
    bar.minimum = minimum;
    bar.maximum = maximum;
    bar.pageStep = pageStep;
    bar.sliderPosition = minimum;
    const QRect slider = part(bar, QStyle::SC_ScrollBarSlider);
    QCOMPARE(slider.height(), length);
    QCOMPARE(slider.top(), 21);
}

void TestScrollBarGeometry::sliderStart_data() // the slider of 20 has 80 pixels to move in
{
    QTest::addColumn<int>("position");
    QTest::addColumn<bool>("upsideDown");
    QTest::addColumn<int>("start");
    QTest::newRow("minimum") << 0 << false << 21;
    QTest::newRow("middle") << 50 << false << 61;
    QTest::newRow("maximum") << 100 << false << 101;
    QTest::newRow("minimum, upside down") << 0 << true << 101;
    QTest::newRow("quarter, upside down") << 25 << true << 81;
    QTest::newRow("maximum, upside down") << 100 << true << 21;
}

void TestScrollBarGeometry::sliderStart()
{
    QFETCH(int, position);
    QFETCH(bool, upsideDown);
    QFETCH(int, start);
    QStyleOptionSlider bar = barOfLength(125);
    bar.sliderPosition = position;
    bar.upsideDown = upsideDown;
    QCOMPARE(part(bar, QStyle::SC_ScrollBarSlider).top(), start);
}

void TestScrollBarGeometry::pagesFillTheGrooveAroundTheSlider_data()
{
    QTest::addColumn<int>("position");
    for (const int position : {0, 1, 33, 99, 100})
        QTest::addRow("position %d", position) << position;
}

void TestScrollBarGeometry::pagesFillTheGrooveAroundTheSlider()
{
    QFETCH(int, position);
    QStyleOptionSlider bar = barOfLength(125);
    bar.sliderPosition = position;
    const QRect groove = part(bar, QStyle::SC_ScrollBarGroove);
    const QRect before = part(bar, QStyle::SC_ScrollBarSubPage);
    const QRect slider = part(bar, QStyle::SC_ScrollBarSlider);
    const QRect behind = part(bar, QStyle::SC_ScrollBarAddPage);
    QCOMPARE(before.top(), groove.top());
    QCOMPARE(before.bottom() + 1, slider.top());
    QCOMPARE(slider.bottom() + 1, behind.top());
    QCOMPARE(behind.bottom(), groove.bottom());
}

void TestScrollBarGeometry::barTooShortForItsArrowsHasNoGroove_data()
{
    QTest::addColumn<int>("length");
    for (const int length : {0, 1, 24, 25})
        QTest::addRow("%d long", length) << length;
}

void TestScrollBarGeometry::barTooShortForItsArrowsHasNoGroove()
{
    QFETCH(int, length);
    const QStyleOptionSlider bar = barOfLength(length);
    for (const auto control : {QStyle::SC_ScrollBarGroove, QStyle::SC_ScrollBarSlider, QStyle::SC_ScrollBarSubPage,
                               QStyle::SC_ScrollBarAddPage})
        QVERIFY(part(bar, control).isEmpty());
}

KTZ_TEST(QApplication, TestScrollBarGeometry)
#include "TestScrollBarGeometry.moc"
