#include "tests/skin/PictureDifference.h"
#include "tests/support/CTestCase.h"

namespace
{
constexpr QSize k_size{300, 200}; ///< of whose pixels 3 may differ
constexpr int k_grey = 100;

/// A grey picture in which some pixels have another value in one channel.
QImage picture(int others, int value, const QSize& size = k_size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(qRgb(k_grey, k_grey, k_grey));
    for (int i = 0; i < others; ++i)
        image.setPixel(i * 7, i * 3, qRgb(k_grey, value, k_grey));
    return image;
}
} // namespace

class TestPictureDifference : public CTestCase
{
    Q_OBJECT

  private slots:
    void isSmall_data();
    void isSmall();
    void everyChannelCounts();
    void otherSizeIsNeverSmall();
    void differencesAreMarked();
};

void TestPictureDifference::isSmall_data()
{
    QTest::addColumn<int>("others");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<bool>("small");
    const int near = k_grey + PictureDifference::k_tolerance;
    QTest::newRow("the same") << 0 << k_grey << 0 << true;
    QTest::newRow("many a little lighter") << 40 << near << 0 << true;
    QTest::newRow("as many as may differ") << 3 << near + 1 << 3 << true;
    QTest::newRow("one more, lighter") << 4 << near + 1 << 4 << false;
    QTest::newRow("one more, darker") << 4 << k_grey - PictureDifference::k_tolerance - 1 << 4 << false;
}

void TestPictureDifference::isSmall()
{
    QFETCH(int, others);
    QFETCH(int, value);
    const PictureDifference difference(picture(others, value), picture(0, k_grey));
    QCOMPARE(difference.allowed, 3);
    QFETCH(int, pixels);
    QCOMPARE(difference.pixels, pixels);
    QTEST(difference.isSmall(), "small");
}

void TestPictureDifference::everyChannelCounts()
{
    const QImage expected = picture(0, k_grey);
    for (const QRgb other : {qRgb(200, k_grey, k_grey), qRgb(k_grey, 200, k_grey), qRgb(k_grey, k_grey, 200)}) {
        QImage actual = expected;
        actual.setPixel(5, 5, other);
        QCOMPARE(PictureDifference(actual, expected).pixels, 1);
    }
}

void TestPictureDifference::otherSizeIsNeverSmall()
{
    const QImage expected = picture(0, k_grey);
    QVERIFY(!PictureDifference(picture(0, k_grey, QSize(300, 199)), expected).isSmall());
    QVERIFY(!PictureDifference(expected, QImage()).isSmall()); // a reference that is missing
}

void TestPictureDifference::differencesAreMarked()
{
    const PictureDifference difference(picture(2, 255), picture(0, k_grey));
    QCOMPARE(difference.marked.pixel(7, 3), qRgb(255, 0, 0));
    QCOMPARE(difference.marked.pixel(8, 3), qRgb(217, 217, 217));
}

KTZ_TEST(QCoreApplication, TestPictureDifference)
#include "TestPictureDifference.moc"
