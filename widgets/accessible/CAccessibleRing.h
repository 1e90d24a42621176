#pragma once

#include <QAccessibleWidget>

class CControlView;
class CKnobLED;

/// The LED ring of a knob: the value that the device reports, which can only be read.
class CAccessibleRing : public QAccessibleWidget, public QAccessibleValueInterface
{
  public:
    explicit CAccessibleRing(CKnobLED* ring);

    [[nodiscard]] QString text(QAccessible::Text which) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] void* interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    [[nodiscard]] QVariant maximumValue() const override;
    [[nodiscard]] QVariant minimumValue() const override;
    [[nodiscard]] QVariant minimumStepSize() const override;

  private:
    [[nodiscard]] CKnobLED* ring() const;
    [[nodiscard]] const CControlView* page() const;

    /// Of the 15 LEDs, those that are lit for the value, also during a fade.
    [[nodiscard]] int litLEDs() const;
};
