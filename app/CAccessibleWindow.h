#pragma once

#include "widgets/accessible/CAccessibleGroup.h"

/// The editor's window: its buttons, menus, online mark and pages, and the view that lies over them for a while.
class CAccessibleWindow : public CAccessibleGroup
{
  public:
    explicit CAccessibleWindow(QWidget* window);

    [[nodiscard]] QAccessibleInterface* focusChild() const override;

  protected:
    [[nodiscard]] QWidgetList members() const override;
};
