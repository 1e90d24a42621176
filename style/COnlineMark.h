#pragma once

#include <QPixmap>
#include <QWidget>

class QPropertyAnimation;

/// The small LED that fades in while the device is connected and out when it is lost: a white mask over it goes.
///
/// Units    logical pixels; alpha 0 to 255.      Threads  GUI thread only.
/// Owns     its animation, as a child.
class COnlineMark : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int alpha READ getAlpha WRITE setAlpha)

  public:
    explicit COnlineMark(QWidget* parent = nullptr);

    /// Loads the picture and takes its size. To be called once.
    void initialize();

    /// The mask's opacity: 255 hides the LED, 0 shows it.
    [[nodiscard]] int getAlpha() const;
    void setAlpha(int alpha);

    /// Since the last turn, also while it fades.
    [[nodiscard]] bool isOn() const;

  public slots:
    // Each starts from its own end, also while the other is under way. Nothing happens before initialize().
    void turnOn();
    void turnOff();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void fade(int from, int to);

    bool m_isOn = false;
    int m_alpha;
    QPixmap m_led;
    QPropertyAnimation* m_fadeAnimation = nullptr;
};
