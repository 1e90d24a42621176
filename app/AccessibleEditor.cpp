#include "app/AccessibleEditor.h"

#include "app/CAccessibleNotice.h"
#include "app/CAccessibleWindow.h"
#include "app/CMainWindow.h"
#include "app/CNotice.h"
#include "app/CValueTeller.h"
#include "style/CInfoView.h"
#include "style/COnlineMark.h"
#include "style/accessible/CAccessibleMark.h"
#include "style/accessible/CAccessibleView.h"
#include "widgets/CControlView.h"
#include "widgets/CKnobLED.h"
#include "widgets/CSlideEditor.h"
#include "widgets/accessible/CAccessibleField.h"
#include "widgets/accessible/CAccessiblePage.h"
#include "widgets/accessible/CAccessibleRing.h"

#include <QAbstractSlider>

namespace
{
template <class Interface, class Told> QAccessibleInterface* createFor(QObject* object)
{
    auto* told = qobject_cast<Told*>(object);
    return told != nullptr ? new Interface(told) : nullptr;
}

QAccessibleInterface* createInterface(const QString& className, QObject* object)
{
    if (className == QLatin1String("CSlideEditor"))
        return createFor<CAccessibleField, CSlideEditor>(object);
    if (className == QLatin1String("CKnobLED"))
        return createFor<CAccessibleRing, CKnobLED>(object);
    if (className == QLatin1String("CControlView"))
        return createFor<CAccessiblePage, CControlView>(object);
    if (className == QLatin1String("COnlineMark"))
        return createFor<CAccessibleMark, COnlineMark>(object);
    if (className == QLatin1String("CInfoView"))
        return createFor<CAccessibleView, CInfoView>(object);
    if (className == QLatin1String("CMainWindow"))
        return createFor<CAccessibleWindow, CMainWindow>(object);
    if (className == QLatin1String("CNotice"))
        return createFor<CAccessibleNotice, CNotice>(object);
    return nullptr;
}

QAccessible::UpdateHandler& nextHandler()
{
    static QAccessible::UpdateHandler handler = nullptr;
    return handler;
}

void passOn(QAccessibleEvent* event)
{
    if (nextHandler() != nullptr) {
        nextHandler()(event);
        return;
    }
    // The system's own is reached only while there is no other.
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(AccessibleEditor::tell);
}

// The events of what is typed, as the field's own.

void passOnInserted(const QAccessibleTextInsertEvent& event, QObject* field)
{
    QAccessibleTextInsertEvent told(field, event.changePosition(), event.textInserted());
    passOn(&told);
}

void passOnRemoved(const QAccessibleTextRemoveEvent& event, QObject* field)
{
    QAccessibleTextRemoveEvent told(field, event.changePosition(), event.textRemoved());
    passOn(&told);
}

void passOnUpdated(const QAccessibleTextUpdateEvent& event, QObject* field)
{
    QAccessibleTextUpdateEvent told(field, event.changePosition(), event.textRemoved(), event.textInserted());
    passOn(&told);
}

void passOnSelected(const QAccessibleTextSelectionEvent& event, QObject* field)
{
    QAccessibleTextSelectionEvent told(field, event.selectionStart(), event.selectionEnd());
    passOn(&told);
}

void passOnCaret(const QAccessibleTextCursorEvent& event, QObject* field)
{
    QAccessibleTextCursorEvent told(field, event.cursorPosition());
    passOn(&told);
}

void passOnValue(const QObject* part, CSlideEditor* field)
{
    // The arrows follow the slider, and would tell everything twice.
    if (part == field->slider())
        AccessibleEditor::tellValue(field);
}

void passOnFocus(QObject* field)
{
    QAccessibleEvent told(field, QAccessible::Focus);
    passOn(&told);
}
} // namespace

void AccessibleEditor::tellValue(QObject* object)
{
    static CValueTeller teller([](QObject* changed) {
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(changed);
        QAccessibleValueChangeEvent told(changed, interface->valueInterface()->currentValue());
        passOn(&told);
    });
    teller.changed(object);
}

void AccessibleEditor::tell(QAccessibleEvent* event)
{
    auto* field = qobject_cast<CSlideEditor*>(told(event->object()));
    if (field == nullptr || field == event->object()) {
        passOn(event);
        return;
    }
    switch (event->type()) {
    case QAccessible::Focus:
        return passOnFocus(field);
    case QAccessible::ValueChanged:
        return passOnValue(event->object(), field);
    case QAccessible::TextInserted:
        return passOnInserted(*static_cast<QAccessibleTextInsertEvent*>(event), field);
    case QAccessible::TextRemoved:
        return passOnRemoved(*static_cast<QAccessibleTextRemoveEvent*>(event), field);
    case QAccessible::TextUpdated:
        return passOnUpdated(*static_cast<QAccessibleTextUpdateEvent*>(event), field);
    case QAccessible::TextSelectionChanged:
        return passOnSelected(*static_cast<QAccessibleTextSelectionEvent*>(event), field);
    case QAccessible::TextCaretMoved:
        return passOnCaret(*static_cast<QAccessibleTextCursorEvent*>(event), field);
    default:
        return; // of a part that is not told apart
    }
}

void AccessibleEditor::install()
{
    static bool isInstalled = false;
    if (isInstalled)
        return;
    isInstalled = true;
    QAccessible::installFactory(createInterface);
    nextHandler() = QAccessible::installUpdateHandler(tell);
}

QObject* AccessibleEditor::told(QObject* object)
{
    for (QObject* around = object; around != nullptr; around = around->parent()) {
        if (qobject_cast<CSlideEditor*>(around) != nullptr)
            return around;
    }
    return object;
}
