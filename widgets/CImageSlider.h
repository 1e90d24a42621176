#pragma once

#include "widgets/CTracklessSlider.h"

/// A slider that shows one picture for each of its values: drag it up or down, or turn the wheel over it.
///
/// Picture  totalImages frames below each other, value 0 at the top, each scaled to the whole widget.
/// Threads  GUI thread only.
class CImageSlider : public CTracklessSlider
{
    Q_OBJECT
    Q_PROPERTY(QPixmap image READ getImage WRITE setImage)
    Q_PROPERTY(int totalImages READ getTotalImages WRITE setTotalImages)
    Q_PROPERTY(int controllerID READ controllerID WRITE setControllerID)

  public:
    explicit CImageSlider(QWidget* parent = nullptr);
    ~CImageSlider() override;

    /// Null draws nothing.
    [[nodiscard]] QPixmap getImage() const;
    void setImage(const QPixmap& image);

    /// The picture's frames; sets the range to 0 .. count - 1. A count below 1 is ignored.
    [[nodiscard]] int getTotalImages() const;
    void setTotalImages(int count);

    /// Value steps per pixel of a drag.
    [[nodiscard]] static double getMagnificationForMouseMove(int range, bool fine);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintDoubleBuffer(QPainter* painter) override;

  private:
    QPixmap m_image;
    int m_totalImages = 1;
};
