#include "app/common/Constants.h"
#include "app/common/Utilities.h"
#include "tests/support/CTestCase.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>

namespace
{

/// Every character of the skin's texts and of names in Latin-1, with the ellipsis, dashes, bullet and menu arrow.
QList<char16_t> requiredCharacters()
{
    QList<char16_t> characters{0x2013, 0x2014, 0x2022, 0x2026, 0x25B8};
    for (char16_t c = 0x20; c < 0x7F; ++c)
        characters << c;
    for (char16_t c = 0xA0; c <= 0xFF; ++c)
        characters << c;
    return characters;
}

QFont skinFont(const QString& family, int pixels)
{
    QFont font(family);
    font.setPixelSize(pixels);
    font.setStyleHint(QFont::AnyStyle, QFont::NoAntialias);
    return font;
}

/// One character in black on white, its pixels `scale` device pixels wide, with a margin of 4 pixels on every side.
QImage drawn(const QFont& font, QChar character, int scale)
{
    const QFontMetrics metrics(font);
    QImage image(QSize(metrics.horizontalAdvance(character) + 8, metrics.height() + 8) * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font);
    painter.drawText(4, 4 + metrics.ascent(), QString(character));
    return image;
}

/// The ink's bounding rectangle in device pixels; `sharp` is false when a pixel is neither full ink nor none.
QRect ink(const QImage& image, bool& sharp)
{
    QRect bounds;
    sharp = true;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y) | 0xFF000000;
            if (pixel == qRgb(0, 0, 0))
                bounds |= QRect(x, y, 1, 1);
            else if (pixel != qRgb(255, 255, 255))
                sharp = false;
        }
    }
    return bounds;
}

/// Where the window puts a knob's page: two rows of four.
QPoint pagePosition(int knob)
{
    return {23 + 103 * (knob % 4), 58 + 283 * (knob / 4)};
}

/// The window without its widgets: background and foreground as they lie on each other.
QImage emptyWindow()
{
    QImage window(446, 680, QImage::Format_ARGB32);
    window.fill(Qt::transparent);
    const QImage foreground(QStringLiteral(":/images/ktz_jx_main_window.png"));
    QPainter painter(&window);
    painter.drawImage(0, 0, QImage(QStringLiteral(":/images/ktz_back.png")));
    painter.drawImage(0, window.height() - foreground.height(), foreground);
    return window;
}

} // namespace

class TestSkin : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void pictureHasOneLogicalSizeAtEveryScale_data();
    void pictureHasOneLogicalSizeAtEveryScale();
    void headAndBodyMakeOnePicture();
    void framesDivideExactly_data();
    void framesDivideExactly();
    void eachRingStateContainsTheOneBelow();
    void ringStatesDifferWithoutColour();
    void onlineFramesAreEqual();
    void disabledAndPressedArrowsDiffer();
    void pagesArePrintedAlike();
    void familyIsFoundByItsWholeName_data();
    void familyIsFoundByItsWholeName();
    void everyCharacterIsDrawn_data();
    void everyCharacterIsDrawn();
    void everyGlyphIsSharpAndFits_data();
    void everyGlyphIsSharpAndFits();
    void lookAlikesDiffer_data();
    void lookAlikesDiffer();
    void windowIconHasItsSizes_data();
    void windowIconHasItsSizes();
};

void TestSkin::initTestCase()
{
    Q_INIT_RESOURCE(common_images);
    QVERIFY(Utilities::registerSkinFonts());
}

void TestSkin::pictureHasOneLogicalSizeAtEveryScale_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");
    const QList<std::pair<const char*, QSize>> pictures{
        {"ktz_back", {446, 48}},
        {"ktz_jx_main_window", {446, 640}},
        {"ktz_jx_info_view", {421, 580}},
        {"ktz_btn_close", {20, 40}},
        {"ktz_btn_minimum", {20, 40}},
        {"ktz_btn_pin", {20, 40}},
        {"ktz_btn_close_info", {20, 40}},
        {"ktz_jx_knob", {43, 6 * 43}},
        {"ktz_jx_led", {60, 4 * 15}},
        {"ktz_spin", {13, 5 * 15}},
        {"ktz_led_online", {28, 2 * 12}},
        {"ktz_status_bar", {177, 5}},
        {"ktz_back_status_bar", {189, 19}},
        {"ktz_box_question", {32, 32}},
        {"ktz_box_warning", {32, 32}},
    };
    for (const auto& [name, size] : pictures)
        QTest::newRow(name) << QString::fromLatin1(name) << size;
}

void TestSkin::pictureHasOneLogicalSizeAtEveryScale()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    for (int scale = 1; scale <= 3; ++scale) {
        const QString suffix = scale == 1 ? QString() : QStringLiteral("@%1x").arg(scale);
        for (const char* root : {":images/", ":/images/"}) {
            const QImage image(QLatin1String(root) + name + suffix + QStringLiteral(".png"));
            QCOMPARE(image.size(), size * scale);
        }
    }
}

void TestSkin::headAndBodyMakeOnePicture()
{
    const QImage window = emptyWindow();
    const QImage head(QStringLiteral(":/images/ktz_back.png"));
    for (int y = 0; y < window.height(); ++y) {
        for (int x = 0; x < window.width(); ++x)
            QCOMPARE(qAlpha(window.pixel(x, y)), 255);
    }
    // Where both lie, the one below must not show through where a fractional ratio smooths the upper one's border.
    for (int y = 40; y < head.height(); ++y) {
        for (int x = 0; x < head.width(); ++x)
            QCOMPARE(head.pixelColor(x, y), window.pixelColor(x, y));
    }
}

void TestSkin::framesDivideExactly_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QSize>("frame");
    QTest::newRow("close: off, on") << "ktz_btn_close" << 2 << QSize(20, 20);
    QTest::newRow("minimise: off, on") << "ktz_btn_minimum" << 2 << QSize(20, 20);
    QTest::newRow("keep in front: off, on") << "ktz_btn_pin" << 2 << QSize(20, 20);
    QTest::newRow("close the about view: off, on") << "ktz_btn_close_info" << 2 << QSize(20, 20);
    QTest::newRow("knob: six ring states, drawn into 43 x 43") << "ktz_jx_knob" << 6 << QSize(43, 43);
    QTest::newRow("spin button: five rows") << "ktz_spin" << 5 << QSize(13, 15);
    QTest::newRow("LED type: the field less the spin button") << "ktz_jx_led" << 4 << QSize(73 - 13, 15);
    QTest::newRow("online mark: two frames") << "ktz_led_online" << 2 << QSize(28, 12);
}

void TestSkin::framesDivideExactly()
{
    QFETCH(QString, name);
    QFETCH(int, rows);
    QFETCH(QSize, frame);
    for (const char* suffix : {"", "@2x", "@3x"}) {
        const QImage strip(QStringLiteral(":/images/%1%2.png").arg(name, QLatin1String(suffix)));
        const int scale = strip.width() / frame.width();
        QCOMPARE(strip.width(), frame.width() * scale);
        QCOMPARE(strip.height(), frame.height() * scale * rows);
        for (int row = 0; row < rows; ++row) { // no frame is empty
            bool hasInk = false;
            const QImage one = strip.copy(0, row * frame.height() * scale, strip.width(), frame.height() * scale);
            for (int y = 0; y < one.height() && !hasInk; ++y)
                for (int x = 0; x < one.width() && !hasInk; ++x)
                    hasInk = qAlpha(one.pixel(x, y)) == 255;
            QVERIFY2(hasInk, qPrintable(QStringLiteral("row %1").arg(row)));
        }
    }
}

void TestSkin::eachRingStateContainsTheOneBelow()
{
    const QImage strip(QStringLiteral(":/images/ktz_jx_knob.png"));
    for (int state = 1; state < 6; ++state) {
        int brighter = 0;
        for (int y = 0; y < 43; ++y) {
            for (int x = 0; x < 43; ++x) {
                const QRgb below = strip.pixel(x, (state - 1) * 43 + y);
                const QRgb above = strip.pixel(x, state * 43 + y);
                QVERIFY(qAbs(qAlpha(above) - qAlpha(below)) <= 1); // the fade changes light, never the knob's shape
                QVERIFY2(qGreen(above) + 1 >= qGreen(below), "an LED of the state below is not lit");
                brighter += qGreen(above) > qGreen(below) + 60 ? 1 : 0;
            }
        }
        QVERIFY2(brighter >= 3 * 4, "three more LEDs of at least four pixels each");
    }
}

void TestSkin::ringStatesDifferWithoutColour()
{
    const QImage strip = QImage(QStringLiteral(":/images/ktz_jx_knob.png")).convertToFormat(QImage::Format_Grayscale8);
    for (int state = 1; state < 6; ++state) {
        int lighter = 0;
        for (int y = 0; y < 43; ++y) {
            for (int x = 0; x < 43; ++x)
                lighter += qGray(strip.pixel(x, state * 43 + y)) > qGray(strip.pixel(x, (state - 1) * 43 + y)) + 50;
        }
        QVERIFY2(lighter >= 3 * 4, qPrintable(QStringLiteral("state %1").arg(state)));
    }
}

void TestSkin::onlineFramesAreEqual()
{
    const QImage strip(QStringLiteral(":/images/ktz_led_online@2x.png"));
    const int half = strip.height() / 2;
    QCOMPARE(strip.copy(0, 0, strip.width(), half), strip.copy(0, half, strip.width(), half));
}

void TestSkin::disabledAndPressedArrowsDiffer()
{
    const QImage strip(QStringLiteral(":/images/ktz_spin.png"));
    const auto half = [&](int row, bool lower) { return strip.copy(0, row * 15 + (lower ? 8 : 0), 13, 7); };
    const bool up = false;
    const bool down = true;
    QVERIFY(half(0, down) != half(1, down)); // greyed at the minimum
    QCOMPARE(half(0, up), half(1, up));
    QVERIFY(half(4, up) != half(1, up)); // greyed at the maximum
    QCOMPARE(half(4, down), half(1, down));
    QVERIFY(half(2, up) != half(1, up) && half(2, up) != half(4, up)); // pressed is neither rest nor greyed
    QCOMPARE(half(2, down), half(1, down));
    QVERIFY(half(3, down) != half(1, down) && half(3, down) != half(0, down));
    QCOMPARE(half(3, up), half(1, up));
}

void TestSkin::pagesArePrintedAlike()
{
    // Dark or light, pixel by pixel: the ground's shading may differ from page to page, the print may not.
    const auto print = [](const QImage& page) {
        return page.copy(0, 88, 87, 191).convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
    };
    const QImage window = emptyWindow();
    const QImage first = print(window.copy(QRect(pagePosition(0), QSize(87, 279))));
    for (int knob = 1; knob < 8; ++knob)
        QCOMPARE(print(window.copy(QRect(pagePosition(knob), QSize(87, 279)))), first);
}

void TestSkin::familyIsFoundByItsWholeName_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<int>("pixels");
    QTest::newRow("captions and menus") << k_fontGLT7Bold << 7;
    QTest::newRow("splash and about") << k_fontGLT8 << 8;
    QTest::newRow("values") << k_fontGLT10Bold << 10;
}

void TestSkin::familyIsFoundByItsWholeName()
{
    QFETCH(QString, family);
    QFETCH(int, pixels);
    QVERIFY(QFontDatabase::families().contains(family));
    const QFont font = skinFont(family, pixels);
    QCOMPARE(QFontInfo(font).family(), family);
    QCOMPARE(QFontInfo(font).pixelSize(), pixels);
    QVERIFY(!QFontInfo(font).bold()); // the weight is drawn, not synthesised
}

void TestSkin::everyCharacterIsDrawn_data()
{
    familyIsFoundByItsWholeName_data();
}

void TestSkin::everyCharacterIsDrawn()
{
    QFETCH(QString, family);
    QFETCH(int, pixels);
    const QFont font = skinFont(family, pixels);
    bool sharp = false;
    for (const char16_t code : requiredCharacters()) {
        const QByteArray name = "U+" + QByteArray::number(code, 16);
        QVERIFY2(QFontMetrics(font).inFont(QChar(code)), name.constData());
        const bool blank = code == 0x20 || code == 0xA0 || code == 0xAD; // Qt shows no soft hyphen
        QVERIFY2(ink(drawn(font, QChar(code), 1), sharp).isNull() == blank, name.constData());
    }
}

void TestSkin::everyGlyphIsSharpAndFits_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("scale");
    for (int scale = 1; scale <= 3; ++scale) {
        QTest::addRow("7 at %dx", scale) << k_fontGLT7Bold << 7 << scale;
        QTest::addRow("8 at %dx", scale) << k_fontGLT8 << 8 << scale;
        QTest::addRow("10 at %dx", scale) << k_fontGLT10Bold << 10 << scale;
    }
}

void TestSkin::everyGlyphIsSharpAndFits()
{
    QFETCH(QString, family);
    QFETCH(int, pixels);
    QFETCH(int, scale);
    const QFont font = skinFont(family, pixels);
    const QFontMetrics metrics(font);
    for (const char16_t code : requiredCharacters()) {
        const QByteArray name = "U+" + QByteArray::number(code, 16);
        const QImage image = drawn(font, QChar(code), scale);
        bool sharp = false;
        const QRect bounds = ink(image, sharp);
        QVERIFY2(sharp, name.constData());
        if (bounds.isNull())
            continue;
        const QRect cell(4 * scale, 4 * scale, metrics.horizontalAdvance(QChar(code)) * scale,
                         metrics.height() * scale);
        QVERIFY2(cell.contains(bounds), name.constData());
        for (int y = bounds.top(); y <= bounds.bottom(); ++y) { // every font pixel is scale x scale device pixels
            for (int x = bounds.left(); x <= bounds.right(); ++x) {
                const int column = x / scale * scale;
                const int row = y / scale * scale;
                QVERIFY2(image.pixel(x, y) == image.pixel(column, row), name.constData());
            }
        }
    }
}

void TestSkin::lookAlikesDiffer_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<QString>("pair");
    for (const auto& [family, pixels] : {std::pair{k_fontGLT7Bold, 7}, {k_fontGLT8, 8}, {k_fontGLT10Bold, 10}}) {
        for (const char* pair : {"0O", "1l", "1I", "lI", "I|", "5S", "8B", "2Z", "i!"})
            QTest::addRow("%d: %s", pixels, pair) << family << pixels << QString::fromLatin1(pair);
    }
}

void TestSkin::lookAlikesDiffer()
{
    QFETCH(QString, family);
    QFETCH(int, pixels);
    QFETCH(QString, pair);
    const QFont font = skinFont(family, pixels);
    QImage one = drawn(font, pair.at(0), 1);
    const QImage other = drawn(font, pair.at(1), 1);
    QVERIFY(one.size() != other.size() || one != other);
}

void TestSkin::windowIconHasItsSizes_data()
{
    QTest::addColumn<int>("pixels");
    for (const int pixels : {16, 24, 32, 48, 64})
        QTest::addRow("%d", pixels) << pixels;
}

void TestSkin::windowIconHasItsSizes()
{
    QFETCH(int, pixels);
    const QImage icon(QStringLiteral(":/icon/ktz-jx-editor-%1.png").arg(pixels));
    QCOMPARE(icon.size(), QSize(pixels, pixels));
    QVERIFY(qAlpha(icon.pixel(0, 0)) < 32); // round corners
    QCOMPARE(qAlpha(icon.pixel(pixels / 2, pixels / 2)), 255);
}

KTZ_TEST(QApplication, TestSkin)
#include "TestSkin.moc"
