#pragma once

#include <QAccessibleWidget>

class CControlView;
class CLineEdit;
class CSlideEditor;
class CTextSlider;

/// A field of a page as the one thing that a person knows: a value with a name, which is changed by steps, set, or
/// written as text. Its slider, its arrows and the line for typing are not told apart.
///
/// Value    as shown, so that a channel is counted from 1. The text of an LED type is its name.
/// Text     each change of it is taken over at once, if it makes a value; while the user types, it goes into what is
///          typed.
/// Covered  with its page, it can be read and no more.
class CAccessibleField : public QAccessibleWidget,
                         public QAccessibleValueInterface,
                         public QAccessibleTextInterface,
                         public QAccessibleEditableTextInterface
{
  public:
    explicit CAccessibleField(CSlideEditor* editor);

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;
    [[nodiscard]] QString text(QAccessible::Text which) const override;
    void setText(QAccessible::Text which, const QString& text) override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] void* interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;

    [[nodiscard]] QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    [[nodiscard]] QVariant maximumValue() const override;
    [[nodiscard]] QVariant minimumValue() const override;
    [[nodiscard]] QVariant minimumStepSize() const override;

    void selection(int index, int* start, int* end) const override;
    [[nodiscard]] int selectionCount() const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int position) override;
    [[nodiscard]] QString text(int start, int end) const override;
    [[nodiscard]] int characterCount() const override;
    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int* start, int* end) const override;

    void deleteText(int start, int end) override;
    void insertText(int offset, const QString& text) override;
    void replaceText(int start, int end, const QString& text) override;

  private:
    [[nodiscard]] CSlideEditor* editor() const;
    [[nodiscard]] const CControlView* page() const;
    [[nodiscard]] bool isCovered() const;

    /// Of the shown number from the stored one.
    [[nodiscard]] int shownOffset() const;
    [[nodiscard]] QString shownText() const;

    /// The line in which the user types now; null for none.
    [[nodiscard]] CLineEdit* typing() const;
};
