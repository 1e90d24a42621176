#pragma once

#include <QAccessibleWidget>

class CControlView;
class CKnobLED;

/// The LED ring of a knob: a label that says the value that the device reports. It is no value of the toolkit's kind:
/// whatever has one of those is offered to be stepped and set, and the ring can only be read.
class CAccessibleRing : public QAccessibleWidget
{
  public:
    explicit CAccessibleRing(CKnobLED* ring);

    [[nodiscard]] QString text(QAccessible::Text which) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] void* interface_cast(QAccessible::InterfaceType type) override;

  private:
    [[nodiscard]] CKnobLED* ring() const;
    [[nodiscard]] const CControlView* page() const;

    /// Of the 15 LEDs, those that are lit for the value, also during a fade.
    [[nodiscard]] int litLEDs() const;
};
