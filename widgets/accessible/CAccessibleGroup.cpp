#include "widgets/accessible/CAccessibleGroup.h"

int CAccessibleGroup::childCount() const
{
    return static_cast<int>(members().size());
}

QAccessibleInterface* CAccessibleGroup::child(int index) const
{
    return QAccessible::queryAccessibleInterface(members().value(index));
}

int CAccessibleGroup::indexOfChild(const QAccessibleInterface* child) const
{
    return static_cast<int>(members().indexOf(child->object()));
}
