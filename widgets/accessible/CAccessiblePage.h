#pragma once

#include "widgets/accessible/CAccessibleGroup.h"

class CControlView;

/// A knob's page: the ring and the fields from the top. To focus it selects the whole knob.
class CAccessiblePage : public CAccessibleGroup
{
  public:
    explicit CAccessiblePage(CControlView* page);

    [[nodiscard]] QString text(QAccessible::Text which) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;

  protected:
    [[nodiscard]] QObjectList members() const override;

  private:
    [[nodiscard]] CControlView* page() const;
};
