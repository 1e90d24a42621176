#include "tests/support/CTestCase.h"
#include "widgets/SelectionMark.h"

#include <QImage>
#include <QPainter>

namespace
{
constexpr QRect k_outer(3, 5, 40, 30);

/// A mark on white, of a widget that stands at a place of its own in the window.
QImage painted(SelectionMark::Shape shape, qreal ratio, const QPoint& origin)
{
    QImage image(QSize(120, 100) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(origin);
    SelectionMark::paint(painter, k_outer, shape);
    // The painter is as it was.
    Q_ASSERT(painter.worldTransform() == QTransform::fromTranslate(origin.x(), origin.y()) && !painter.hasClipping());
    return image;
}

/// How many pixels of a row or column are not white, from one on.
int thickness(const QImage& image, QPoint from, const QPoint& step)
{
    int count = 0;
    for (; image.rect().contains(from) && image.pixelColor(from) != Qt::white; from += step)
        ++count;
    return count;
}
} // namespace

class TestSelectionMark : public CTestCase
{
    Q_OBJECT

  private slots:
    void linesAreWholePixels_data();
    void linesAreWholePixels();
    void cornersLeaveTheSidesOpen();
};

void TestSelectionMark::linesAreWholePixels_data()
{
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QPoint>("origin");
    QTest::addColumn<int>("line");
    QTest::newRow("1") << 1.0 << QPoint(23, 58) << 1;
    QTest::newRow("1.25") << 1.25 << QPoint(23, 58) << 1;
    QTest::newRow("1.25, between two pixels elsewhere") << 1.25 << QPoint(22, 57) << 1;
    QTest::newRow("1.5") << 1.5 << QPoint(23, 58) << 2;
    QTest::newRow("2") << 2.0 << QPoint(23, 58) << 2;
    QTest::newRow("3") << 3.0 << QPoint(23, 58) << 3;
}

void TestSelectionMark::linesAreWholePixels()
{
    QFETCH(qreal, ratio);
    QFETCH(QPoint, origin);
    QFETCH(int, line);
    const QImage image = painted(SelectionMark::Shape::Frame, ratio, origin);
    QList<QRgb> colors;
    QRect drawn;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == Qt::white)
                continue;
            drawn |= QRect(x, y, 1, 1);
            if (!colors.contains(image.pixel(x, y)))
                colors.append(image.pixel(x, y));
        }
    }
    QCOMPARE(colors, QList<QRgb>{qRgb(102, 102, 102)}); // nothing is smeared over two pixels
    const QRectF exact = QRectF(QPointF(k_outer.topLeft() + origin) * ratio, QSizeF(k_outer.size()) * ratio);
    QCOMPARE(drawn, exact.toRect());
    QCOMPARE(thickness(image, {drawn.center().x(), drawn.top()}, {0, 1}), line);
    QCOMPARE(thickness(image, {drawn.center().x(), drawn.bottom()}, {0, -1}), line);
    QCOMPARE(thickness(image, {drawn.left(), drawn.center().y()}, {1, 0}), line);
    QCOMPARE(thickness(image, {drawn.right(), drawn.center().y()}, {-1, 0}), line);
}

void TestSelectionMark::cornersLeaveTheSidesOpen()
{
    const QPoint origin(10, 10);
    const QImage frame = painted(SelectionMark::Shape::Frame, 2, origin);
    const QImage corners = painted(SelectionMark::Shape::Corners, 2, origin);
    const QRect drawn((k_outer.topLeft() + origin) * 2, k_outer.size() * 2);
    // Seven logical pixels from each corner on.
    for (const QPoint open : {QPoint(14, 0), QPoint(65, 0), QPoint(0, 14), QPoint(0, 45), QPoint(79, 30)}) {
        QVERIFY(corners.pixelColor(drawn.topLeft() + open) == Qt::white);
        QVERIFY(frame.pixelColor(drawn.topLeft() + open) != Qt::white);
    }
    for (const QPoint closed : {QPoint(13, 0), QPoint(66, 0), QPoint(0, 13), QPoint(0, 46), QPoint(79, 50)})
        QVERIFY(corners.pixelColor(drawn.topLeft() + closed) != Qt::white);
}

KTZ_TEST(QCoreApplication, TestSelectionMark)
#include "TestSelectionMark.moc"
