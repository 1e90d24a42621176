#pragma once

#include <QAbstractButton>

/// The device's jack and the plug of its cable: checked while the plug is in.
///
/// A click or Space pulls the plug out or puts it in, and so does dragging it.
class CPanelJack : public QAbstractButton
{
    Q_OBJECT

  public:
    explicit CPanelJack(const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] double restingPull() const;

    int m_pressedAt = 0;
    bool m_dragged = false;
    double m_pull = 0; ///< pixels between the plug and its place, while it is dragged
};
