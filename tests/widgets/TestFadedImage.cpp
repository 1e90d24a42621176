#include "tests/support/CTestCase.h"
#include "widgets/KnobLEDStates.h"

class TestFadedImage : public CTestCase
{
    Q_OBJECT

  private slots:
    void alphaIsScaledAndCutTowardZero_data();
    void alphaIsScaledAndCutTowardZero();
    void coloursStayUnderTheScaledAlpha();
    void everyPixelIsFaded();
    void sourceStaysWhole();
    void nullStaysNull();
};

void TestFadedImage::alphaIsScaledAndCutTowardZero_data()
{
    QTest::addColumn<int>("alpha");
    QTest::addColumn<int>("opacity");
    QTest::addColumn<int>("result");
    QTest::newRow("opaque, fully shown") << 255 << 255 << 255;
    QTest::newRow("opaque, hidden") << 255 << 0 << 0;
    QTest::newRow("opaque, half") << 255 << 128 << 128;
    QTest::newRow("200 at 100: 78.43") << 200 << 100 << 78;
    QTest::newRow("255 at 254") << 255 << 254 << 254;
    QTest::newRow("128 at 254: 127.498") << 128 << 254 << 127;
    QTest::newRow("1 at 254: 0.996") << 1 << 254 << 0;
    QTest::newRow("clear") << 0 << 255 << 0;
    QTest::newRow("opacity above") << 200 << 300 << 200;
    QTest::newRow("opacity below") << 200 << -1 << 0;
}

void TestFadedImage::alphaIsScaledAndCutTowardZero()
{
    QFETCH(int, alpha);
    QFETCH(int, opacity);
    QImage image(1, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(10, 20, 30, alpha));
    QTEST(qAlpha(fadedImage(image, opacity).pixel(0, 0)), "result");
}

void TestFadedImage::coloursStayUnderTheScaledAlpha()
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(10, 20, 30, 200));
    image.setPixel(1, 0, qRgba(11, 22, 33, 0));
    const QImage faded = fadedImage(image, 100);
    QCOMPARE(faded.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(faded.pixel(0, 0), qPremultiply(qRgba(10, 20, 30, 78)));
    QCOMPARE(faded.pixel(1, 0), 0U);
}

void TestFadedImage::everyPixelIsFaded()
{
    QImage image(7, 5, QImage::Format_ARGB32);
    image.fill(Qt::red);
    const QImage faded = fadedImage(image, 51);
    for (int y = 0; y < faded.height(); ++y) {
        for (int x = 0; x < faded.width(); ++x)
            QCOMPARE(faded.pixel(x, y), qPremultiply(qRgba(255, 0, 0, 51)));
    }
}

void TestFadedImage::sourceStaysWhole()
{
    QImage image(3, 3, QImage::Format_ARGB32);
    image.fill(Qt::red);
    static_cast<void>(fadedImage(image, 0));
    QCOMPARE(image.pixel(1, 1), qRgba(255, 0, 0, 255));
}

void TestFadedImage::nullStaysNull()
{
    QVERIFY(fadedImage(QImage(), 100).isNull());
}

KTZ_TEST(QCoreApplication, TestFadedImage)
#include "TestFadedImage.moc"
