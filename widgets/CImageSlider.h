#pragma once

#include "device/CMemAPIProxy.h"
#include "widgets/CSliderDrag.h"
#include "widgets/DoubleBuffer.h"

#include <QAbstractSlider>

/// A slider that shows one picture for each of its values: drag it up or down, or turn the wheel over it.
///
/// Picture  totalImages frames below each other, value 0 at the top, each scaled to the whole widget.
/// Failure  an edit that the memory takes back is never shown: the value falls back to the memory's.
class CImageSlider : public QAbstractSlider, public DoubleBuffer, public CMemAPIProxy
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

    /// Whether drags may place the pointer, instead of what the window system says.
    void setPointerWarps(bool warps);

    void updateMemAPI() override;

  public slots:
    /// Writes the value and redraws.
    void updateValue();

  protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintDoubleBuffer(QPainter* painter) override;

  private:
    /// Ends a press whose release went elsewhere, and a drag with it.
    void letGo();

    QPixmap m_image;
    int m_totalImages = 1;
    CSliderDrag m_drag{this};
};
