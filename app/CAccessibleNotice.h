#pragma once

#include <QAccessibleObject>

class CNotice;

/// A notice as a notification, which screen readers speak when it comes, whatever has the focus. What they are told of
/// an object that they do not stand on, such as a new description, they pass over.
class CAccessibleNotice : public QAccessibleObject
{
  public:
    explicit CAccessibleNotice(CNotice* notice);

    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QString text(QAccessible::Text which) const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
};
