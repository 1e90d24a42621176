#pragma once

#include <QMessageBox>
#include <QObject>

/// Waits in the event loop for modal message boxes and presses one button in each, keeping what they said.
/// Lives as long as boxes are expected; boxes that nobody expects stay open and let the test run into its time limit.
class CMessageBoxAnswer : public QObject
{
    Q_OBJECT

  public:
    explicit CMessageBoxAnswer(QMessageBox::StandardButton answer);

    struct Box
    {
        QString title;
        QString text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QMessageBox::StandardButtons buttons;
        QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
        QList<int> buttonWidths;
        QWidget* parent = nullptr;
    };

    /// The boxes seen so far, or since they were last forgotten, in their order.
    [[nodiscard]] const QList<Box>& boxes() const;
    void forgetBoxes();

    /// Whether there were boxes, each with this text. A lost connection is told once or more: again for each keep
    /// message that is refused before the editor has heard of the loss.
    [[nodiscard]] bool sawOnly(const QString& text) const;

    /// What the next boxes get.
    void setAnswer(QMessageBox::StandardButton answer);

  protected:
    void timerEvent(QTimerEvent* e) override;

  private:
    QMessageBox::StandardButton m_answer;
    QList<Box> m_boxes;
};
