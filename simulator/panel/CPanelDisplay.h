#pragma once

#include <QLabel>

/// The device's small display, of two lines: what it heard last, and what it said last.
///
/// Screen readers   find a text, both lines in one.
class CPanelDisplay : public QLabel
{
    Q_OBJECT

  public:
    explicit CPanelDisplay(QWidget* parent = nullptr);

    void showReceived(const QString& text);
    void showSent(const QString& text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void refresh();

    QString m_received;
    QString m_sent;
};
