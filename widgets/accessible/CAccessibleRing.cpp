#include "widgets/accessible/CAccessibleRing.h"

#include "device/DeviceParams.h"
#include "widgets/CControlView.h"
#include "widgets/CKnobLED.h"
#include "widgets/CSlideEditor.h"

namespace
{
constexpr int k_ledsOfAState = 3; ///< more than of the state before
} // namespace

CAccessibleRing::CAccessibleRing(CKnobLED* ring) : QAccessibleWidget(ring, QAccessible::StaticText) {}

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
        return QStringLiteral("LED ring %1").arg(ring()->getKnob());
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
    return type == QAccessible::ActionInterface ? nullptr : QAccessibleWidget::interface_cast(type);
}
