#pragma once

#include <QFont>
#include <QImage>
#include <QMetaType>
#include <QPainter>
#include <QSet>

/// A picture of style/StyleImages.h, as a column of a test.
using ImageData = const char* const*;
Q_DECLARE_METATYPE(ImageData)

/// A picture to draw one thing on: pixels that nobody drew stay magenta.
class CStyleCanvas
{
  public:
    static constexpr QColor k_untouched{255, 0, 255};

    explicit CStyleCanvas(const QSize& size) : m_image(size, QImage::Format_RGB32)
    {
        m_image.fill(k_untouched);
    }

    /// Calls draw(QPainter*) with a painter that smooths text.
    template <class Draw> void draw(const Draw& draw)
    {
        QPainter painter(&m_image);
        painter.setRenderHint(QPainter::TextAntialiasing, true);
        draw(&painter);
        m_smoothsText = painter.testRenderHint(QPainter::TextAntialiasing);
    }

    [[nodiscard]] bool smoothsText() const
    {
        return m_smoothsText;
    }

    [[nodiscard]] QColor at(int x, int y) const
    {
        return m_image.pixelColor(x, y);
    }

    /// The different colours within a rectangle.
    [[nodiscard]] QSet<QRgb> colors(const QRect& rect) const
    {
        QSet<QRgb> found;
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            for (int x = rect.left(); x <= rect.right(); ++x)
                found.insert(m_image.pixel(x, y));
        return found;
    }

    [[nodiscard]] QSet<QRgb> colors() const
    {
        return colors(m_image.rect());
    }

    /// The smallest rectangle around all pixels of a colour; empty if there are none.
    [[nodiscard]] QRect bounds(const QColor& color, const QRect& within) const
    {
        QRect box;
        for (int y = within.top(); y <= within.bottom(); ++y)
            for (int x = within.left(); x <= within.right(); ++x)
                if (m_image.pixel(x, y) == color.rgb())
                    box |= QRect(x, y, 1, 1);
        return box;
    }

    [[nodiscard]] const QImage& image() const
    {
        return m_image;
    }

    /// A font without half tones, so that text has its pen's colour alone.
    [[nodiscard]] static QFont crispFont(int pixelSize)
    {
        QFont font;
        font.setPixelSize(pixelSize);
        font.setStyleStrategy(QFont::NoAntialias);
        return font;
    }

  private:
    QImage m_image;
    bool m_smoothsText = true;
};
