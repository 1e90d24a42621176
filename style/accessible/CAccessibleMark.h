#pragma once

#include <QAccessibleWidget>

class COnlineMark;

/// The online mark: checked while the device is connected. It can only be read.
class CAccessibleMark : public QAccessibleWidget
{
  public:
    explicit CAccessibleMark(COnlineMark* mark);

    [[nodiscard]] QString text(QAccessible::Text which) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] void* interface_cast(QAccessible::InterfaceType type) override;
};
