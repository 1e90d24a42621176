#include "device/DeviceParams.h"
#include "tests/skin/CSkinScenes.h"
#include "tests/skin/PictureDifference.h"
#include "tests/support/CTestCase.h"

#include <QScreen>

#include <algorithm>

namespace
{
constexpr QSize k_windowSize(446, 680);

/// A smoothed edge is some steps off when it is scaled.
constexpr int k_edgeTolerance = 24;
/// What a thin line may lose when a fractional ratio spreads it over two pixels, and the scaling over a third.
constexpr int k_thinLineTolerance = 128;

// Pixels of letters, whose forms a fractional ratio changes a little: a stem's length, and corners all over the window.
// A seam is longer, and a lost caption has more.
constexpr int k_stemOfALetter = 8;
constexpr int k_spreadPixels = 60;

int red(QRgb pixel)
{
    return qRed(pixel);
}
int green(QRgb pixel)
{
    return qGreen(pixel);
}
int blue(QRgb pixel)
{
    return qBlue(pixel);
}

/// How far a colour channel is outside of what it is in a pixel of another picture and the eight around it.
int outside(int value, const QImage& other, const QPoint& centre, int (*channel)(QRgb))
{
    int least = 255;
    int most = 0;
    for (int y = std::max(centre.y() - 1, 0); y <= std::min(centre.y() + 1, other.height() - 1); ++y) {
        for (int x = std::max(centre.x() - 1, 0); x <= std::min(centre.x() + 1, other.width() - 1); ++x) {
            least = std::min(least, channel(other.pixel(x, y)));
            most = std::max(most, channel(other.pixel(x, y)));
        }
    }
    return std::max(least - value, value - most);
}

/// Pixels that show something which another picture has neither there nor one pixel beside.
QList<QPoint> strangePixels(const QImage& picture, const QImage& other, int tolerance)
{
    QList<QPoint> found;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            if (pixel == other.pixel(x, y))
                continue; // nearly always: the flat grounds
            const QPoint place(x, y);
            if (std::max({outside(qRed(pixel), other, place, red), outside(qGreen(pixel), other, place, green),
                          outside(qBlue(pixel), other, place, blue)}) > tolerance)
                found.append(place);
        }
    }
    return found;
}

QByteArray list(const QList<QPoint>& places)
{
    QByteArray text = QByteArray::number(places.size()) + " pixels:";
    for (const QPoint& place : places.mid(0, 8))
        text += " (" + QByteArray::number(place.x()) + ", " + QByteArray::number(place.y()) + ')';
    return text;
}

} // namespace

/// The window at the device pixel ratio of this process, against the reference pictures at ratio 1.
class TestSkinResolution : public CTestCase
{
    Q_OBJECT

  private slots:
    void sceneLooksAsAtRatioOne_data();
    void sceneLooksAsAtRatioOne();
    void edgeIsPaintedToTheLastPixel();
    void screenShowsWhatTheWidgetsDraw();
};

void TestSkinResolution::sceneLooksAsAtRatioOne_data()
{
    QTest::addColumn<QString>("scene");
    for (const char* scene : {"offline", "online", "edit-menu", "context-menu", "about", "splash"})
        QTest::newRow(scene) << QString::fromLatin1(scene);
}

void TestSkinResolution::sceneLooksAsAtRatioOne()
{
    QFETCH(QString, scene);
    const QImage plain = QImage(QStringLiteral(KTZ_REFERENCES "/%1@1x.png").arg(scene));
    const QImage picture = CSkinScenes::take(scene);
    const qreal ratio = qGuiApp->devicePixelRatio();
    QCOMPARE(plain.size(), k_windowSize);
    QCOMPARE(picture.size(), QSize(qCeil(k_windowSize.width() * ratio), qCeil(k_windowSize.height() * ratio)));

    const QImage scaled = picture.scaled(k_windowSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QList<QPoint> strange = strangePixels(scaled, plain, k_edgeTolerance);
    QVERIFY2(strange.size() <= k_stemOfALetter, "strange: " + list(strange));
    const QList<QPoint> lost = strangePixels(plain, scaled, k_thinLineTolerance);
    QVERIFY2(lost.size() <= k_spreadPixels, "lost: " + list(lost));
}

void TestSkinResolution::edgeIsPaintedToTheLastPixel()
{
    const QImage plain(QStringLiteral(KTZ_REFERENCES "/online@1x.png"));
    const QImage picture = CSkinScenes::take(QStringLiteral("online"));
    const QRect rect = picture.rect();
    for (const QPoint corner : {rect.topLeft(), rect.topRight(), rect.bottomLeft(), rect.bottomRight()})
        QVERIFY(channelDistance(picture.pixel(corner), plain.pixel(0, 0)) <= k_edgeTolerance);
}

void TestSkinResolution::screenShowsWhatTheWidgetsDraw()
{
    CSkinScenes editor;
    CMainWindow& window = editor.startOnline();
    // Edits and lights have parts of the window painted, each on its own.
    for (int knob = 0; knob < 8; ++knob) {
        for (const int category : k_settingCategories)
            editor.editor(category + knob)->setValue(knob % 4);
        editor.device.turn(knob, 127 - 16 * knob);
    }
    QTRY_COMPARE(editor.device.settings(7).led, 3);
    // A click moves the mark, of which the lines alone are painted.
    for (const int knob : {5, 2}) {
        const CKnobLED* ring = editor.knobLED(knob);
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, ring->mapTo(&window, ring->rect().center()));
    }
    const auto screenIsUpToDate = [&] {
        editor.settle();
        const QImage screen = window.screen()->grabWindow(window.winId()).toImage();
        return screen.convertToFormat(QImage::Format_RGB32) == editor.picture();
    };
    QTRY_VERIFY(screenIsUpToDate());
}

KTZ_TEST_MAIN(TestSkinResolution)(int argc, char** argv)
{
    CSkinScenes::prepareProcess();
    QApplication application(argc, argv);
    TestSkinResolution test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestSkinResolution.moc"
