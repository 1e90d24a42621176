#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

/// Renders SVG pictures to PNG files, without a display.
///
///     render_skin skin FOLDER PICTURE...          FOLDER/name.png, name@2x.png and name@3x.png of each picture
///     render_skin icon FILE PICTURE SIZE          one square FILE of SIZE pixels
///
/// Exit status 1, with a line on standard error, when a picture is not an SVG, uses what Qt Svg can't draw, or a file
/// can't be written.

namespace
{

bool complained = false;

/// Qt Svg leaves out what it doesn't understand and only warns: a picture with a part missing must not get through.
void noteComplaint(QtMsgType, const QMessageLogContext&, const QString& text)
{
    complained = true;
    QTextStream(stderr) << text << '\n';
}

bool isOpaque(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 0xFF)
                return false;
        }
    }
    return true;
}

bool render(const QString& svg, const QSize& fixedSize, int scale, const QString& png)
{
    QSvgRenderer renderer(svg);
    const QSize size = fixedSize.isValid() ? fixedSize : renderer.defaultSize() * scale;
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    // Without a channel that says nothing: read and drawn as it is, it takes half the memory and time.
    if (isOpaque(image))
        image = image.convertToFormat(QImage::Format_RGB32);
    if (renderer.isValid() && !complained && image.save(png))
        return true;
    QTextStream(stderr) << "render_skin: cannot render " << svg << " to " << png << '\n';
    return false;
}

bool renderSkin(const QString& folder, const QStringList& pictures)
{
    const QStringList suffixes{QStringLiteral(".png"), QStringLiteral("@2x.png"), QStringLiteral("@3x.png")};
    for (const QString& picture : pictures) {
        const QString name = folder + QLatin1Char('/') + QFileInfo(picture).completeBaseName();
        for (int scale = 1; scale <= suffixes.size(); ++scale) {
            if (!render(picture, {}, scale, name + suffixes.at(scale - 1)))
                return false;
        }
    }
    return true;
}

/// Each picture once more as plain pixels beside it, "name.ppm".
bool unpack(const QStringList& pngs)
{
    for (const QString& png : pngs) {
        const QImage image(png);
        const QString plain = png.chopped(4) + QStringLiteral(".ppm");
        if (image.isNull() || !isOpaque(image) || !image.save(plain)) {
            QTextStream(stderr) << "render_skin: cannot turn " << png << " into opaque pixels\n";
            return false;
        }
    }
    return true;
}
} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(noteComplaint);
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    if (arguments.size() >= 3 && arguments.at(0) == QLatin1String("skin"))
        return renderSkin(arguments.at(1), arguments.mid(2)) ? 0 : 1;
    if (arguments.size() >= 2 && arguments.at(0) == QLatin1String("plain"))
        return unpack(arguments.mid(1)) ? 0 : 1;
    if (arguments.size() == 4 && arguments.at(0) == QLatin1String("icon")) {
        const int pixels = arguments.at(3).toInt();
        return render(arguments.at(2), {pixels, pixels}, 1, arguments.at(1)) ? 0 : 1;
    }
    QTextStream(stderr) << "usage: render_skin skin FOLDER PICTURE... | plain PNG... | icon FILE PICTURE SIZE\n";
    return 1;
}
