#pragma once

#include "widgets/accessible/CAccessibleGroup.h"

/// The editor's window: its buttons, menus, online mark and pages, the view that lies over them for a while, and the
/// notice that was told last.
class CAccessibleWindow : public CAccessibleGroup
{
  public:
    explicit CAccessibleWindow(QWidget* window);

    [[nodiscard]] QAccessibleInterface* focusChild() const override;

  protected:
    [[nodiscard]] QObjectList members() const override;
};
