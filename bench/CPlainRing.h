#pragma once

#include "widgets/CFrameGate.h"

#include <QImage>
#include <QWidget>

/// What a ring that fades costs any Qt program: a widget of its size that draws as many pictures, at most once in a
/// frame, and does nothing else.
class CPlainRing : public QWidget
{
  public:
    explicit CPlainRing(QWidget* parent);

    /// Has it repainted.
    void change();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage m_picture;
    CFrameGate m_gate{this};
};
