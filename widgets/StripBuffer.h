#pragma once

#include "widgets/DoubleBuffer.h"

/// A double buffer whose face is one frame of a picture, placed in the widget unscaled. The picture has imageCategories
/// columns, of which one is drawn, and a row for each state of the widget. GUI thread only.
class StripBuffer : public DoubleBuffer
{
  public:
    using DoubleBuffer::DoubleBuffer;

    /// Where the frame is in the widget: right, bottom and centre are known, anything else is left or top.
    [[nodiscard]] Qt::Alignment alignment() const;
    void setAlignment(Qt::Alignment alignment);

    /// Null draws nothing.
    [[nodiscard]] QPixmap combinedImage() const;
    void setCombinedImage(const QPixmap& image);

    /// The picture's number of columns, taken as 1 when below, and the column drawn, brought into 0 .. columns - 1.
    [[nodiscard]] int imageCategories() const;
    void setImageCategories(int count);
    [[nodiscard]] int category() const;
    void setCategory(int category);

  protected:
    void paintDoubleBuffer(QPainter* painter) override;

    /// How many rows the picture has, and which of them, from 0, shows the present state.
    [[nodiscard]] virtual int imageRows() const = 0;
    [[nodiscard]] virtual int imageRow() const = 0;

  private:
    Qt::Alignment m_alignment = Qt::AlignCenter;
    QPixmap m_combinedImage;
    int m_imageCategories = 1;
    int m_category = 0;
};
