#include "tests/skin/CSkinScenes.h"
#include "tests/skin/PictureDifference.h"
#include "tests/skin/TextContrast.h"
#include "tests/support/CTestCase.h"

#include <algorithm>

namespace
{
/// Between colours that are one to the eye.
constexpr int k_tolerance = 16;

/// The pixels of a text, black on white. Null if a pixel has a colour between the text's and that of its ground.
QImage inkOf(const QImage& area)
{
    constexpr int shadeOfGround = 64;
    const TextContrast contrast = TextContrast::measure(area, area.rect());
    QImage ink(area.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < area.height(); ++y) {
        for (int x = 0; x < area.width(); ++x) {
            const bool isText = channelDistance(area.pixel(x, y), contrast.text) <= k_tolerance;
            if (!isText && channelDistance(area.pixel(x, y), contrast.ground) > shadeOfGround)
                return {};
            ink.scanLine(y)[x] = isText ? 0 : 255;
        }
    }
    return ink;
}

QRect boundsOf(const QImage& ink)
{
    QRect bounds;
    for (int y = 0; y < ink.height(); ++y)
        for (int x = 0; x < ink.width(); ++x)
            if (qGray(ink.pixel(x, y)) == 0)
                bounds |= QRect(x, y, 1, 1);
    return bounds;
}
} // namespace

/// The window's text at a whole device pixel ratio: every pixel that it has at ratio 1 is a square of pixels.
class TestSkinSharpness : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void textIsSharp_data();
    void textIsSharp();

  private:
    QImage m_plain;   ///< the reference at ratio 1
    QImage m_picture; ///< the same scene, taken here
};

void TestSkinSharpness::initTestCase()
{
    m_plain = QImage(QStringLiteral(KTZ_REFERENCES "/online@1x.png")).convertToFormat(QImage::Format_RGB32);
    CSkinScenes editor;
    editor.startOnline();
    m_picture = editor.picture();
    QCOMPARE(m_picture.size(), m_plain.size() * qRound(m_picture.devicePixelRatio()));
}

void TestSkinSharpness::textIsSharp_data()
{
    QTest::addColumn<QRect>("area");
    for (const int knob : {0, 7}) {
        const QPoint page(23 + 103 * (knob % 4), 58 + 283 * (knob / 4));
        QTest::addRow("number of knob %d", knob) << QRect(page + QPoint(38, 76), QSize(12, 8));
        for (const QRect& field : {k_ledTypeRect, k_ccNumRect, k_midiChRect, k_maxRect, k_minRect})
            QTest::addRow("knob %d, caption at %d", knob, field.y())
                << QRect(page + field.topLeft() - QPoint(0, 10), QSize(field.width(), 6));
        for (const QRect& field : {k_ccNumRect, k_midiChRect, k_maxRect, k_minRect})
            QTest::addRow("knob %d, value at %d", knob, field.y())
                << QRect(page + field.topLeft() + QPoint(20, 2), QSize(34, 11));
    }
    QTest::newRow("menu bar") << QRect(102, 19, 90, 13);
    QTest::newRow("online caption") << QRect(398, 27, 38, 6);
    QTest::newRow("foot, first line") << QRect(320, 649, 103, 6);
    QTest::newRow("foot, second line") << QRect(380, 661, 43, 6);
}

void TestSkinSharpness::textIsSharp()
{
    QFETCH(QRect, area);
    const int scale = qRound(m_picture.devicePixelRatio());
    const QImage plain = inkOf(m_plain.copy(area));
    const QImage dense = inkOf(m_picture.copy(QRect(area.topLeft() * scale, area.size() * scale)));
    QVERIFY2(!plain.isNull() && !dense.isNull(), "a pixel is neither text nor ground");
    // A number with an odd rest in its field is set half a logical pixel further, still on a pixel of the screen.
    const QRect from = boundsOf(plain);
    const QRect to = boundsOf(dense);
    QCOMPARE(to.size(), from.size() * scale);
    QCOMPARE(dense.copy(to), plain.copy(from).scaled(to.size()));
}

KTZ_TEST_MAIN(TestSkinSharpness)(int argc, char** argv)
{
    CSkinScenes::prepareProcess();
    QApplication application(argc, argv);
    TestSkinSharpness test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestSkinSharpness.moc"
