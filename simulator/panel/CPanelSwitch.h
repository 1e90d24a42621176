#pragma once

#include <QAbstractButton>

/// A slide switch with its caption beside it. Clicked, or pressed by Space, it changes; on, its window shows green.
class CPanelSwitch : public QAbstractButton
{
    Q_OBJECT

  public:
    explicit CPanelSwitch(const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};
