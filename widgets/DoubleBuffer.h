#pragma once

#include <QPixmap>

class QEvent;
class QPainter;
class QRegion;
class QWidget;

/// Draws a widget's face once per change into a pixmap, from which the screen is painted.
///
/// A class that derives from a widget and from this offers every event to eventDoubleBuffer() first: what that
/// consumed gives false from event(), everything else goes to QWidget::event().
///
/// Units    the pixmap has the widget's size in device pixels and its ratio, so painters use logical pixels. It is
///          rebuilt when either has changed, asked for or not.
/// Threads  GUI thread only.
class DoubleBuffer
{
  public:
    /// widget   the object that derives from this; borrowed, not null.
    explicit DoubleBuffer(QWidget* widget);
    virtual ~DoubleBuffer() = default;
    DoubleBuffer(const DoubleBuffer&) = delete;
    DoubleBuffer& operator=(const DoubleBuffer&) = delete;

    /// Handles Show, Polish and Paint. true: consumed, the base class does not see the event.
    [[nodiscard]] bool eventDoubleBuffer(QEvent* event);

    /// Has the face redrawn with the next paint, or with one at once. Nothing happens before the widget is polished:
    /// its first Show or Paint draws the face anyway.
    void updateDoubleBuffer();
    void repaintDoubleBuffer();

    /// Redraws the pixmap if it is out of date.
    void updateDoubleBufferPixmap();

  protected:
    /// Draws the whole face: logical pixels, transparent background, the widget's font and pen, text not smoothed.
    /// That of a widget with Qt::WA_OpaquePaintEvent leaves nothing transparent.
    virtual void paintDoubleBuffer(QPainter* painter) = 0;

    [[nodiscard]] QWidget* widget() const;

  private:
    [[nodiscard]] bool fitsWidget() const;
    void paintWidget(const QRegion& region);

    QWidget* m_widget;
    bool m_dirty = true;
    bool m_polished = false;
    QPixmap m_pixmap;
};
