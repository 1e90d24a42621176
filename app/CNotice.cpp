#include "app/CNotice.h"

#include <QAccessible>
#include <QWidget>

#include <utility>

namespace
{
void tellOf(QObject* notice, QAccessible::Event what)
{
    QAccessibleEvent event(notice, what);
    QAccessible::updateAccessibility(&event);
}
} // namespace

CNotice::CNotice(QWidget* window, QString text) : QObject(window), m_text(std::move(text)) {}

CNotice::~CNotice()
{
    tellOf(this, QAccessible::ObjectDestroyed);
}

const QString& CNotice::text() const
{
    return m_text;
}

void CNotice::tell()
{
    tellOf(this, QAccessible::ObjectCreated);
    tellOf(this, QAccessible::ObjectShow);
}
