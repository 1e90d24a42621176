#pragma once

#include "device/CMemAPIProxy.h"
#include "widgets/CSliderDrag.h"
#include "widgets/DoubleBuffer.h"

#include <QAbstractSlider>

/// What the sliders without a track share: they are dragged up or down, with the pointer hidden, or turned by the
/// wheel, and edit one parameter. How a press takes the pointer and a release gives it back is each slider's own.
///
/// Threads  GUI thread only.
/// Failure  an edit that the memory takes back is never shown: the value falls back to the memory's.
class CTracklessSlider : public QAbstractSlider, public DoubleBuffer, public CMemAPIProxy
{
    Q_OBJECT

  public:
    explicit CTracklessSlider(QWidget* parent);
    ~CTracklessSlider() override;

    /// Whether drags may place the pointer, instead of what the window system says.
    void setPointerWarps(bool warps);

    void updateMemAPI() override;

  public slots:
    /// Writes the value and redraws.
    void updateValue();

  protected:
    bool event(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

    /// Presses the slider with any button, and begins a drag with the left one. true: a drag has begun.
    [[nodiscard]] bool press(const QMouseEvent& event);

    /// Ends the press and the drag. The pointer is shown, but stays where it is.
    void release();

    [[nodiscard]] CSliderDrag& drag();

    /// The application's pointer during a drag, and its end. Each press that sets it is followed by one end.
    virtual void setSliderCursor(const QCursor& cursor);
    virtual void unsetSliderCursor();

  private:
    /// Ends a press whose release went elsewhere, and a drag with it.
    void letGo();

    CSliderDrag m_drag{this};
};
