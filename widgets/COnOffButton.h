#pragma once

#include "device/CMemAPIProxy.h"
#include "widgets/StripBuffer.h"

#include <QPushButton>

/// A button with a picture for each of its states, which stand for two values of a parameter.
///
/// Picture  3 rows: off, on, pressed. Without a pressed row a pressed button looks on.
/// Threads  GUI thread only.
/// Failure  an edit that the memory takes back is never shown: the button falls back to the memory's value.
class COnOffButton : public QPushButton, public StripBuffer, public CMemAPIProxy
{
    Q_OBJECT
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment)
    Q_PROPERTY(TOnOffStateTrigger offStateTrigger READ offStateTrigger WRITE setOffStateTrigger)
    Q_PROPERTY(TOnOffStateTrigger onStateTrigger READ onStateTrigger WRITE setOnStateTrigger)
    Q_PROPERTY(int onValue READ onValue WRITE setOnValue)
    Q_PROPERTY(int offValue READ offValue WRITE setOffValue)
    Q_PROPERTY(QPixmap combinedImage READ combinedImage WRITE setCombinedImage)
    Q_PROPERTY(bool hasDownImage READ hasDownImage WRITE setHasDownImage)
    Q_PROPERTY(int imageCategories READ imageCategories WRITE setImageCategories)
    Q_PROPERTY(int controllerID READ controllerID WRITE setControllerID)

  public:
    /// When a checkable button changes its state: with the mouse button's release, or already with its press.
    enum TOnOffStateTrigger
    {
        buttonRelease = 0,
        buttonPush = 1
    };
    Q_ENUM(TOnOffStateTrigger)

    explicit COnOffButton(QWidget* parent = nullptr);
    ~COnOffButton() override;

    [[nodiscard]] TOnOffStateTrigger offStateTrigger() const;
    void setOffStateTrigger(TOnOffStateTrigger trigger);

    [[nodiscard]] TOnOffStateTrigger onStateTrigger() const;
    void setOnStateTrigger(TOnOffStateTrigger trigger);

    /// The parameter values of the two states. A new value of the present state is written at once.
    [[nodiscard]] int onValue() const;
    void setOnValue(int value);
    [[nodiscard]] int offValue() const;
    void setOffValue(int value);

    [[nodiscard]] bool hasDownImage() const;
    void setHasDownImage(bool has);

    /// Checks or unchecks a checkable button; a value of neither state leaves it as it is.
    void updateMemAPI() override;

    /// Comes up without a click if it is held down. The release that ended the press went elsewhere, or soon will.
    void letGo();

  public slots:
    /// Writes the value of the present state and redraws, if checked or down changed since the last call.
    void checkUpdate();

  protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    [[nodiscard]] int imageRows() const override;
    [[nodiscard]] int imageRow() const override;

  private:
    [[nodiscard]] bool losesItsRelease(const QEvent& event) const;
    void writeParam(int value);

    TOnOffStateTrigger m_onStateTrigger = buttonRelease;
    TOnOffStateTrigger m_offStateTrigger = buttonRelease;
    int m_onValue = 1;
    int m_offValue = 0;
    bool m_hasDownImage = true;
    bool m_lastDown;
    bool m_lastChecked;
    bool m_heldByPointer = false;
};
