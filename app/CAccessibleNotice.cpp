#include "app/CAccessibleNotice.h"

#include "app/CNotice.h"

CAccessibleNotice::CAccessibleNotice(CNotice* notice) : QAccessibleObject(notice) {}

QAccessibleInterface* CAccessibleNotice::parent() const
{
    return QAccessible::queryAccessibleInterface(object()->parent());
}

int CAccessibleNotice::childCount() const
{
    return 0;
}

QAccessibleInterface* CAccessibleNotice::child(int /*index*/) const
{
    return nullptr;
}

int CAccessibleNotice::indexOfChild(const QAccessibleInterface* /*child*/) const
{
    return -1;
}

QString CAccessibleNotice::text(QAccessible::Text which) const
{
    return which == QAccessible::Name ? static_cast<CNotice*>(object())->text() : QString();
}

QAccessible::Role CAccessibleNotice::role() const
{
    return QAccessible::Notification;
}

QAccessible::State CAccessibleNotice::state() const
{
    return {};
}
