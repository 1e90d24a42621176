#include "style/accessible/CAccessibleMark.h"

#include "style/COnlineMark.h"

CAccessibleMark::CAccessibleMark(COnlineMark* mark) : QAccessibleWidget(mark, QAccessible::CheckBox) {}

QString CAccessibleMark::text(QAccessible::Text which) const
{
    return which == QAccessible::Name ? QStringLiteral("Online") : QAccessibleWidget::text(which);
}

QAccessible::State CAccessibleMark::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = static_cast<COnlineMark*>(widget())->isOn();
    state.readOnly = true;
    return state;
}

void* CAccessibleMark::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? nullptr : QAccessibleWidget::interface_cast(type);
}
