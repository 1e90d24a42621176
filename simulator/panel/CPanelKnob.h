#pragma once

#include "simulator/device/KnobSettings.h"

#include <QDial>

/// A knob of the device in its ring of LEDs, with its number and its settings below it.
///
/// Turned by dragging up or to the right, a value a pixel, by the wheel and by the keys of a dial.
/// Screen readers   find a dial, "Knob 3", described by its settings.
class CPanelKnob : public QDial
{
    Q_OBJECT

  public:
    /// knob   0 to 7; counted from 1 for people.
    explicit CPanelKnob(int knob, QWidget* parent = nullptr);

    /// Shows what the device holds, without turning the knob.
    void hold(int value, const KnobSettings& settings);

    /// LEDs that are lit now, 0 to 15.
    [[nodiscard]] int litLEDs() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void describe();

    int m_knob;
    KnobSettings m_settings;
    QPoint m_pressedAt;
    int m_pressedValue = 0;
};
