#pragma once

#include "device/CMemAPIProxyWrapper.h"
#include "widgets/CFrameGate.h"
#include "widgets/KnobLEDStates.h"

#include <QVariant>
#include <QWidget>

class QPropertyAnimation;

inline constexpr QRect k_ledRect{22, 22, 43, 43};
inline const QVariant k_minOpacity(0);
inline const QVariant k_maxOpacity(255.0);

/// The LED ring of a knob: one of six states, by the value that the device reports and the knob's LED type. A change
/// fades from one state to the other; clicks only select the knob.
///
/// Watches  the knob's value, id 1000 + knob; the LED type is read beside it.
/// Threads  GUI thread only.
/// Speed    however often the value changes, at most 60 repaints a second; at rest no timer runs.
class CKnobLED : public QWidget, public CMemAPIProxyWrapper
{
    Q_OBJECT
    Q_PROPERTY(int alpha READ getAlpha WRITE setAlpha)
    Q_PROPERTY(int controllerID READ controllerID WRITE setControllerID)

  public:
    explicit CKnobLED(QWidget* parent);
    ~CKnobLED() override;

    /// The state, 0 to 5, of the value last read.
    [[nodiscard]] int getImageIndexByType(int ledType) const;

    /// Opacity of the upper of two states during a fade: 0 to 255.
    [[nodiscard]] int getAlpha() const;
    void setAlpha(int alpha);

    void updateMemAPI() override;

  public slots:
    /// Reads the LED type and fades, from the start even during a fade, if that changes the state.
    void updateLED();

  signals:
    void selected();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    int m_knobValue = 0;
    QPropertyAnimation* m_fadeAnimation; ///< child
    int m_alpha = 0;
    int m_previousIndex = 0;
    int m_currentIndex = 0;
    CFrameGate m_frameGate{this};
};
