#pragma once

#include <QAccessibleWidget>

/// What assistive technology is told of a widget with parts of its own: which they are, and in which order they are
/// read.
///
/// Widget   borrowed; the toolkit drops this with it.      Threads  GUI thread only.
class CAccessibleGroup : public QAccessibleWidget
{
  public:
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;

  protected:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] virtual QObjectList members() const = 0;
};
