#include "tests/skin/TextContrast.h"
#include "tests/support/CTestCase.h"

#include <QColor>

namespace
{
constexpr QRgb k_white = qRgb(255, 255, 255);
constexpr QRgb k_black = qRgb(0, 0, 0);
constexpr QRgb k_midGrey = qRgb(119, 119, 119); ///< 4.48 on white
constexpr QSize k_shadeSize{20, 12};

/// Rows of a picture, top to bottom, that are not of the ground's colour; the text is drawn over them.
using Shade = QList<QRgb>;

QImage picture(QRgb ground, const Shade& shade, QRgb text, int textPixels)
{
    QImage image(k_shadeSize, QImage::Format_RGB32);
    image.fill(ground);
    for (int y = 0; y < shade.size(); ++y)
        for (int x = 0; x < k_shadeSize.width(); ++x)
            image.setPixel(x, y, shade[y]);
    for (int pixel = 0; pixel < textPixels; ++pixel)
        image.setPixel(3 + pixel % 5 * 2, 1 + pixel / 5 * 2, text);
    return image;
}
} // namespace

class TestTextContrast : public CTestCase
{
    Q_OBJECT

  private slots:
    void between_data();
    void between();
    void measure_data();
    void measure();
    void onlyTheAreaCounts_data();
    void onlyTheAreaCounts();
};

void TestTextContrast::between_data()
{
    QTest::addColumn<QRgb>("one");
    QTest::addColumn<QRgb>("other");
    QTest::addColumn<double>("ratio");
    QTest::newRow("black and white") << k_black << k_white << 21.0;
    QTest::newRow("equal") << k_midGrey << k_midGrey << 1.0;
    QTest::newRow("the darkest grey that is too light on white") << k_midGrey << k_white << 4.478;
    QTest::newRow("green counts most") << qRgb(0, 255, 0) << k_black << 15.304;
    QTest::newRow("blue counts least") << qRgb(0, 0, 255) << k_black << 2.444;
}

void TestTextContrast::between()
{
    QFETCH(QRgb, one);
    QFETCH(QRgb, other);
    QFETCH(double, ratio);
    QVERIFY(qAbs(TextContrast::between(one, other) - ratio) < 0.001);
    QCOMPARE(TextContrast::between(other, one), TextContrast::between(one, other));
}

void TestTextContrast::measure_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<int>("textPixels");
    QTest::addColumn<double>("ratio");
    const int few = TextContrast::k_fewestPixels;
    const QRgb pale = qRgb(204, 204, 204);
    QTest::newRow("black on white") << picture(k_white, {}, k_black, 15) << 15 << 21.0;
    QTest::newRow("white on black") << picture(k_black, {}, k_white, 15) << 15 << 21.0;
    QTest::newRow("nothing but ground") << picture(k_white, {}, k_black, 0) << 0 << 0.0;
    QTest::newRow("as few pixels as a text has") << picture(k_white, {}, k_black, few) << few << 21.0;
    QTest::newRow("one fewer is dirt") << picture(k_white, {}, k_black, few - 1) << 0 << 0.0;
    QTest::newRow("ground shaded where no text is")
        << picture(k_white, Shade(7, k_white) + Shade(3, pale), k_black, 15) << 15 << 21.0;
    QTest::newRow("ground shaded behind a part of the text")
        << picture(k_white, Shade(3, pale), k_black, 15) << 15 << TextContrast::between(pale, k_black);
    QTest::newRow("more text than any one shade of its ground")
        << picture(k_white, Shade{pale, k_white, pale, qRgb(230, 230, 230)}, k_black, 15).copy(3, 1, 10, 5) << 15
        << TextContrast::between(pale, k_black);
    QTest::newRow("shades alone are the text that contrasts most")
        << picture(k_white, Shade(3, pale), k_black, 0) << 60 << TextContrast::between(pale, k_white);
}

void TestTextContrast::measure()
{
    QFETCH(QImage, image);
    const TextContrast contrast = TextContrast::measure(image, image.rect());
    QTEST(contrast.textPixels, "textPixels");
    QTEST(contrast.ratio, "ratio");
}

void TestTextContrast::onlyTheAreaCounts_data()
{
    QTest::addColumn<QRect>("area");
    QTest::addColumn<int>("textPixels");
    QTest::newRow("the upper row of text") << QRect(0, 0, 20, 2) << 5;
    QTest::newRow("beside the text") << QRect(14, 0, 6, 12) << 0;
    QTest::newRow("partly outside the picture") << QRect(-5, -5, 40, 7) << 5;
    QTest::newRow("wholly outside") << QRect(40, 40, 5, 5) << 0;
    QTest::newRow("empty") << QRect() << 0;
}

void TestTextContrast::onlyTheAreaCounts()
{
    QFETCH(QRect, area);
    const TextContrast contrast = TextContrast::measure(picture(k_white, {}, k_black, 15), area);
    QTEST(contrast.textPixels, "textPixels");
}

KTZ_TEST(QCoreApplication, TestTextContrast)
#include "TestTextContrast.moc"
