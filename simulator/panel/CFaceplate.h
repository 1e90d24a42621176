#pragma once

#include <QWidget>

/// The plate in which the device's controls sit: a white head, the light plate, a dark foot with the device's name.
class CFaceplate : public QWidget
{
    Q_OBJECT

  public:
    using QWidget::QWidget;

    static constexpr int k_headHeight = 46; ///< pixels
    static constexpr int k_footHeight = 34;

  protected:
    void paintEvent(QPaintEvent* event) override;
};
