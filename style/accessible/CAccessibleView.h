#pragma once

#include "widgets/accessible/CAccessibleGroup.h"

class CInfoView;

/// The splash or the about view: a dialog that says its lines, with the buttons that it has.
class CAccessibleView : public CAccessibleGroup
{
  public:
    explicit CAccessibleView(CInfoView* view);

    /// The window, since what the view lies on is nothing that a person knows.
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QString text(QAccessible::Text which) const override;

  protected:
    [[nodiscard]] QObjectList members() const override;
};
