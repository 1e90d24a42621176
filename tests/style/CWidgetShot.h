#pragma once

#include <QImage>
#include <QPainter>
#include <QWidget>

/// What a widget shows, at the screen's density; places are in logical pixels.
class CWidgetShot
{
  public:
    explicit CWidgetShot(QWidget* widget) : m_image(widget->grab().toImage().convertToFormat(QImage::Format_RGB32)) {}

    [[nodiscard]] const QImage& image() const
    {
        return m_image;
    }

    [[nodiscard]] qreal ratio() const
    {
        return m_image.devicePixelRatio();
    }

    /// The smallest rectangle around all pixels in which another shot differs.
    [[nodiscard]] QRectF differences(const CWidgetShot& other) const
    {
        return boundsOf([&other](int x, int y, QRgb pixel) { return pixel != other.m_image.pixel(x, y); });
    }

    /// The smallest rectangle around all pixels of a colour.
    [[nodiscard]] QRectF bounds(const QColor& color) const
    {
        return boundsOf([rgb = color.rgb()](int, int, QRgb pixel) { return pixel == rgb; });
    }

    /// What draw(QPainter*) draws on a shot of the same size and density.
    template <class Draw> [[nodiscard]] QImage expected(const Draw& draw) const
    {
        QImage image(m_image.size(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio());
        image.fill(Qt::white);
        QPainter painter(&image);
        draw(&painter);
        return image;
    }

  private:
    template <class Wanted> [[nodiscard]] QRectF boundsOf(const Wanted& wanted) const
    {
        QRect box;
        for (int y = 0; y < m_image.height(); ++y)
            for (int x = 0; x < m_image.width(); ++x)
                if (wanted(x, y, m_image.pixel(x, y)))
                    box |= QRect(x, y, 1, 1);
        return {QPointF(box.topLeft()) / ratio(), QSizeF(box.size()) / ratio()};
    }

    QImage m_image;
};
