#include "tests/support/CTestCase.h"
#include "widgets/ImageStrip.h"

class TestImageStrip : public CTestCase
{
    Q_OBJECT

  private slots:
    void frameSizeIsTheWholePartOfTheDivision_data();
    void frameSizeIsTheWholePartOfTheDivision();
    void sourceIsInThePicturesOwnPixels_data();
    void sourceIsInThePicturesOwnPixels();
    void targetFollowsTheAlignment_data();
    void targetFollowsTheAlignment();
};

void TestImageStrip::frameSizeIsTheWholePartOfTheDivision_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QSize>("frame");
    QTest::newRow("one frame") << QSizeF(20, 30) << 1 << 1 << QSize(20, 30);
    QTest::newRow("3 rows") << QSizeF(20, 60) << 1 << 3 << QSize(20, 20);
    QTest::newRow("4 columns, 5 rows") << QSizeF(80, 100) << 4 << 5 << QSize(20, 20);
    QTest::newRow("columns leave a rest") << QSizeF(11, 20) << 3 << 1 << QSize(3, 20);
    QTest::newRow("rows leave a rest") << QSizeF(20, 14) << 1 << 5 << QSize(20, 2);
    QTest::newRow("half a logical pixel at the end") << QSizeF(20.5, 60.5) << 1 << 3 << QSize(20, 20);
    QTest::newRow("more rows than pixels") << QSizeF(20, 2) << 1 << 3 << QSize(20, 0);
    QTest::newRow("null picture") << QSizeF(0, 0) << 2 << 3 << QSize(0, 0);
}

void TestImageStrip::frameSizeIsTheWholePartOfTheDivision()
{
    QFETCH(QSizeF, size);
    QFETCH(int, columns);
    QFETCH(int, rows);
    QTEST(ImageStrip(size, 1, columns, rows).frameSize(), "frame");
}

void TestImageStrip::sourceIsInThePicturesOwnPixels_data() // 3 columns and 5 rows of frames of 10 x 7
{
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("row");
    QTest::addColumn<QRectF>("source");
    QTest::newRow("first frame") << 1.0 << 0 << 0 << QRectF(0, 0, 10, 7);
    QTest::newRow("second row") << 1.0 << 0 << 1 << QRectF(0, 7, 10, 7);
    QTest::newRow("second column") << 1.0 << 1 << 0 << QRectF(10, 0, 10, 7);
    QTest::newRow("last frame") << 1.0 << 2 << 4 << QRectF(20, 28, 10, 7);
    QTest::newRow("twice as dense") << 2.0 << 2 << 4 << QRectF(40, 56, 20, 14);
    QTest::newRow("three times as dense") << 3.0 << 1 << 1 << QRectF(30, 21, 30, 21);
}

void TestImageStrip::sourceIsInThePicturesOwnPixels()
{
    QFETCH(qreal, ratio);
    QFETCH(int, column);
    QFETCH(int, row);
    QTEST(ImageStrip(QSizeF(30, 35), ratio, 3, 5).source(column, row), "source");
}

void TestImageStrip::targetFollowsTheAlignment_data() // a frame of 10 x 7
{
    const QSize area(25, 20);
    QTest::addColumn<QSize>("area");
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QPoint>("topLeft");
    QTest::newRow("left, top") << area << int(Qt::AlignLeft | Qt::AlignTop) << QPoint(0, 0);
    QTest::newRow("centre, odd rests") << area << int(Qt::AlignCenter) << QPoint(7, 6);
    QTest::newRow("right, bottom") << area << int(Qt::AlignRight | Qt::AlignBottom) << QPoint(15, 13);
    QTest::newRow("left, centre") << area << int(Qt::AlignLeft | Qt::AlignVCenter) << QPoint(0, 6);
    QTest::newRow("centre, top") << area << int(Qt::AlignHCenter | Qt::AlignTop) << QPoint(7, 0);
    QTest::newRow("none") << area << 0 << QPoint(0, 0);
    QTest::newRow("justify is no side") << area << int(Qt::AlignJustify) << QPoint(0, 0);
    QTest::newRow("absolute right is no side") << area << int(Qt::AlignRight | Qt::AlignAbsolute) << QPoint(0, 0);
    QTest::newRow("two horizontal sides are none") << area << int(Qt::AlignRight | Qt::AlignHCenter) << QPoint(0, 0);
    QTest::newRow("two vertical sides are none") << area << int(Qt::AlignBottom | Qt::AlignVCenter) << QPoint(0, 0);
    QTest::newRow("baseline does not count") << area << int(Qt::AlignBottom | Qt::AlignBaseline) << QPoint(0, 13);
    QTest::newRow("frame as large as the area") << QSize(10, 7) << int(Qt::AlignCenter) << QPoint(0, 0);
    QTest::newRow("larger than the area, centre") << QSize(5, 4) << int(Qt::AlignCenter) << QPoint(-2, -1);
    QTest::newRow("larger than the area, right, bottom")
        << QSize(5, 4) << int(Qt::AlignRight | Qt::AlignBottom) << QPoint(-5, -3);
}

void TestImageStrip::targetFollowsTheAlignment()
{
    QFETCH(QSize, area);
    QFETCH(int, alignment);
    QFETCH(QPoint, topLeft);
    const ImageStrip strip(QSizeF(30, 35), 2, 3, 5);
    QCOMPARE(strip.target(area, Qt::Alignment::fromInt(static_cast<Qt::Alignment::Int>(alignment))),
             QRect(topLeft, QSize(10, 7)));
}

KTZ_TEST(QCoreApplication, TestImageStrip)
#include "TestImageStrip.moc"
