#pragma once

#include "simulator/device/CSimulatedDevice.h"

#include <QElapsedTimer>
#include <QWidget>

#include <array>

class CMessageTable;
class CPanelDisplay;
class CPanelJack;
class CPanelKnob;
class CPanelSwitch;
class QGridLayout;
class QLayout;
class QPushButton;

/// A window onto a simulated device: its knobs to turn, what it holds, what it hears and says, and two faults.
///
/// Clock    the panel moves the device's clock along with real time while it exists.
/// Device   borrowed; outlives the panel.
/// Cable    is the owner's, who alone knows what the device is plugged into.
class CDevicePanel : public QWidget
{
    Q_OBJECT

  public:
    explicit CDevicePanel(CSimulatedDevice& device, QWidget* parent = nullptr);

    /// Has a button offer to start the editor again, from when the cable has been pulled and put in again. For an owner
    /// who can do so.
    void offerEditorRestart();

  signals:
    /// The cable was pulled, or put in: the device is to be unplugged, or plugged in, before the signal's receiver
    /// returns.
    void cablePulled();
    void cablePutIn();

    /// An editor that has lost the device has to be started again, and the user asks for it.
    void editorRestartWanted();

  private slots:
    void refresh();
    void showTraffic();
    void silence(bool on);
    void moveCable(bool in);

  private:
    [[nodiscard]] QWidget* createFaceplate();
    [[nodiscard]] QLayout* createHead();
    [[nodiscard]] QGridLayout* createKnobs();
    void showKnobs();
    void showOnDisplay(const QList<Traffic>& messages);
    [[nodiscard]] QString displayText(const QByteArray& message) const;

    CSimulatedDevice& m_device;
    std::array<CPanelKnob*, CSimulatedDevice::k_knobs> m_knobs = {};
    CPanelDisplay* m_display = nullptr;
    CPanelSwitch* m_silence = nullptr;
    CPanelJack* m_jack = nullptr;
    QPushButton* m_restart = nullptr;
    bool m_offersRestart = false;
    CMessageTable* m_messages = nullptr;
    QElapsedTimer m_sinceRefresh;
    qint64 m_nextTraffic = 0;
};
