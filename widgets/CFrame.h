#pragma once

#include "widgets/DoubleBuffer.h"

#include <QFrame>

/// A panel that shows a picture. Mouse events end here and never reach its parent. GUI thread only.
class CFrame : public QFrame, public DoubleBuffer
{
    Q_OBJECT
    Q_PROPERTY(QPixmap backgroundPixmap READ backgroundPixmap WRITE setBackgroundPixmap)

  public:
    explicit CFrame(QWidget* parent = nullptr, Qt::WindowFlags flags = {});

    /// Drawn at (0, 0), unscaled; null for none.
    [[nodiscard]] QPixmap backgroundPixmap() const;
    void setBackgroundPixmap(const QPixmap& pixmap);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintDoubleBuffer(QPainter* painter) override;

  private:
    QPixmap m_backgroundPixmap;
};
