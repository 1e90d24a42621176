#include "widgets/accessible/CAccessibleRing.h"

#include "device/DeviceParams.h"
#include "widgets/CControlView.h"
#include "widgets/CKnobLED.h"
#include "widgets/CSlideEditor.h"

namespace
{
constexpr int k_highestValue = 127;
constexpr int k_ledsOfAState = 3; ///< more than of the state before
} // namespace

CAccessibleRing::CAccessibleRing(CKnobLED* ring) : QAccessibleWidget(ring, QAccessible::Dial) {}

CKnobLED* CAccessibleRing::ring() const
{
    return static_cast<CKnobLED*>(widget());
}

const CControlView* CAccessibleRing::page() const
{
    return qobject_cast<const CControlView*>(ring()->parentWidget());
}

int CAccessibleRing::litLEDs() const
{
    const CSlideEditor* type = page() != nullptr ? page()->editorOf(k_ledTypeCategory) : nullptr;
    return type != nullptr ? ring()->getImageIndexByType(type->getValue()) * k_ledsOfAState : 0;
}

QString CAccessibleRing::text(QAccessible::Text which) const
{
    switch (which) {
    case QAccessible::Name:
        return QStringLiteral("LED ring");
    case QAccessible::Value:
        return currentValue().toString();
    case QAccessible::Description:
        return QStringLiteral("%1 of %2 LEDs lit").arg(litLEDs()).arg((k_numOfLEDStates - 1) * k_ledsOfAState);
    default:
        return QAccessibleWidget::text(which);
    }
}

QAccessible::State CAccessibleRing::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.offscreen = page() != nullptr && page()->isCovered();
    return state;
}

void* CAccessibleRing::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface*>(this);
    return type == QAccessible::ActionInterface ? nullptr : QAccessibleWidget::interface_cast(type);
}

QVariant CAccessibleRing::currentValue() const
{
    return ring()->getKnob();
}

void CAccessibleRing::setCurrentValue(const QVariant& /*value*/) {} // the hardware's alone

QVariant CAccessibleRing::maximumValue() const
{
    return k_highestValue;
}

QVariant CAccessibleRing::minimumValue() const
{
    return 0;
}

QVariant CAccessibleRing::minimumStepSize() const
{
    return 1;
}
