#include "widgets/accessible/CAccessibleField.h"

#include "device/DeviceParams.h"
#include "widgets/CControlView.h"
#include "widgets/CLineEdit.h"
#include "widgets/CSlideEditor.h"
#include "widgets/CTextSlider.h"

namespace
{
/// The names of the LED types, in the order of LEDType.
const QStringList& ledTypeNames()
{
    static const QStringList names{QStringLiteral("ascent"), QStringLiteral("descend"), QStringLiteral("concave"),
                                   QStringLiteral("convex")};
    return names;
}
} // namespace

CAccessibleField::CAccessibleField(CSlideEditor* editor) : QAccessibleWidget(editor, QAccessible::SpinBox) {}

CSlideEditor* CAccessibleField::editor() const
{
    return static_cast<CSlideEditor*>(widget());
}

const CControlView* CAccessibleField::page() const
{
    return qobject_cast<const CControlView*>(editor()->parentWidget());
}

bool CAccessibleField::isCovered() const
{
    return page() != nullptr && page()->isCovered();
}

int CAccessibleField::shownOffset() const
{
    const auto* number = qobject_cast<CTextSlider*>(editor()->slider());
    return number != nullptr ? static_cast<int>(number->offset()) : 0;
}

QString CAccessibleField::shownText() const
{
    const bool isNumber = qobject_cast<CTextSlider*>(editor()->slider()) != nullptr;
    const int value = currentValue().toInt();
    return isNumber ? QString::number(value) : ledTypeNames().value(value);
}

CLineEdit* CAccessibleField::typing() const
{
    const auto* number = qobject_cast<CTextSlider*>(editor()->slider());
    return number != nullptr && number->lineEdit()->isVisible() ? number->lineEdit() : nullptr;
}

int CAccessibleField::childCount() const
{
    return 0;
}

QAccessibleInterface* CAccessibleField::child(int /*index*/) const
{
    return nullptr;
}

int CAccessibleField::indexOfChild(const QAccessibleInterface* /*child*/) const
{
    return -1;
}

QAccessibleInterface* CAccessibleField::focusChild() const
{
    return state().focused ? const_cast<CAccessibleField*>(this) : nullptr;
}

QString CAccessibleField::text(QAccessible::Text which) const
{
    switch (which) {
    case QAccessible::Name:
        return page() != nullptr ? page()->nameOf(editor()) : QString();
    case QAccessible::Value:
        return text(0, characterCount());
    default:
        return QAccessibleWidget::text(which);
    }
}

void CAccessibleField::setText(QAccessible::Text which, const QString& text)
{
    if (which == QAccessible::Value)
        replaceText(0, characterCount(), text);
    else
        QAccessibleWidget::setText(which, text);
}

QAccessible::State CAccessibleField::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.focusable = !isCovered();
    state.offscreen = isCovered();
    state.focused = editor()->isActiveWindow() && editor()->isAncestorOf(editor()->window()->focusWidget());
    state.editable = true;
    state.selectable = true;
    state.selected = page() != nullptr && page()->isMarked() && page()->selectedEditor() == editor();
    return state;
}

void* CAccessibleField::interface_cast(QAccessible::InterfaceType type)
{
    switch (type) {
    case QAccessible::ValueInterface:
        return static_cast<QAccessibleValueInterface*>(this);
    case QAccessible::TextInterface:
        return static_cast<QAccessibleTextInterface*>(this);
    case QAccessible::EditableTextInterface:
        return static_cast<QAccessibleEditableTextInterface*>(this);
    default:
        return QAccessibleWidget::interface_cast(type);
    }
}

QStringList CAccessibleField::actionNames() const
{
    return {setFocusAction(), increaseAction(), decreaseAction()};
}

void CAccessibleField::doAction(const QString& name)
{
    if (name == setFocusAction() && !isCovered())
        editor()->goTo();
    else if (name == increaseAction())
        setCurrentValue(currentValue().toInt() + 1);
    else if (name == decreaseAction())
        setCurrentValue(currentValue().toInt() - 1);
}

QVariant CAccessibleField::currentValue() const
{
    return editor()->getValue() + shownOffset();
}

// Selects the field, as every edit does.
void CAccessibleField::setCurrentValue(const QVariant& value)
{
    if (isCovered())
        return;
    editor()->editorSelect();
    editor()->setValue(value.toInt() - shownOffset());
}

QVariant CAccessibleField::maximumValue() const
{
    return editor()->slider()->maximum() + shownOffset();
}

QVariant CAccessibleField::minimumValue() const
{
    return editor()->slider()->minimum() + shownOffset();
}

QVariant CAccessibleField::minimumStepSize() const
{
    return 1;
}

void CAccessibleField::selection(int index, int* start, int* end) const
{
    const bool isThere = index < selectionCount();
    *start = isThere ? typing()->selectionStart() : 0;
    *end = isThere ? typing()->selectionEnd() : 0;
}

int CAccessibleField::selectionCount() const
{
    return typing() != nullptr && typing()->hasSelectedText() ? 1 : 0;
}

void CAccessibleField::addSelection(int start, int end)
{
    setSelection(0, start, end);
}

void CAccessibleField::removeSelection(int /*index*/)
{
    if (CLineEdit* line = typing())
        line->deselect();
}

void CAccessibleField::setSelection(int /*index*/, int start, int end)
{
    if (CLineEdit* line = typing())
        line->setSelection(start, end - start);
}

int CAccessibleField::cursorPosition() const
{
    return typing() != nullptr ? typing()->cursorPosition() : 0;
}

void CAccessibleField::setCursorPosition(int position)
{
    if (CLineEdit* line = typing())
        line->setCursorPosition(position);
}

QString CAccessibleField::text(int start, int end) const
{
    const QString whole = typing() != nullptr ? typing()->text() : shownText();
    return whole.mid(start, end - start);
}

int CAccessibleField::characterCount() const
{
    return static_cast<int>(typing() != nullptr ? typing()->text().size() : shownText().size());
}

QRect CAccessibleField::characterRect(int /*offset*/) const
{
    return rect();
}

int CAccessibleField::offsetAtPoint(const QPoint& point) const
{
    return rect().contains(point) ? 0 : -1;
}

void CAccessibleField::scrollToSubstring(int /*start*/, int /*end*/) {}

QString CAccessibleField::attributes(int /*offset*/, int* start, int* end) const
{
    *start = 0;
    *end = characterCount();
    return {};
}

void CAccessibleField::deleteText(int start, int end)
{
    replaceText(start, end, QString());
}

void CAccessibleField::insertText(int offset, const QString& text)
{
    replaceText(offset, offset, text);
}

void CAccessibleField::replaceText(int start, int end, const QString& text)
{
    QString whole = this->text(0, characterCount());
    whole.replace(start, end - start, text);
    if (CLineEdit* line = typing()) {
        line->setText(whole);
        return;
    }
    bool isValue = false;
    int value = whole.toInt(&isValue);
    if (qobject_cast<CTextSlider*>(editor()->slider()) == nullptr) {
        value = static_cast<int>(ledTypeNames().indexOf(whole));
        isValue = value >= 0;
    }
    if (isValue)
        setCurrentValue(value);
}
