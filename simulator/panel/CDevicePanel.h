#pragma once

#include "simulator/device/CSimulatedDevice.h"

#include <QElapsedTimer>
#include <QWidget>

#include <array>

class QDial;
class QGridLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;

/// A window onto a simulated device: its knobs to turn, what it holds, what it hears and says, and two faults.
///
/// Clock    the panel moves the device's clock along with real time while it exists.
/// Device   borrowed; outlives the panel.
class CDevicePanel : public QWidget
{
    Q_OBJECT

  public:
    explicit CDevicePanel(CSimulatedDevice& device, QWidget* parent = nullptr);

    static constexpr int k_messagesShown = 500;

  private slots:
    void refresh();
    void silence(bool on);
    void unplug();

  private:
    struct Knob
    {
        QDial* dial = nullptr;
        QLabel* settings = nullptr;
    };

    [[nodiscard]] QGridLayout* createKnobs();
    [[nodiscard]] QWidget* createKnob(int knob);
    void showKnob(int knob);
    void showTraffic();

    CSimulatedDevice& m_device;
    std::array<Knob, CSimulatedDevice::k_knobs> m_knobs;
    QPushButton* m_silence = nullptr;
    QPushButton* m_unplug = nullptr;
    QPlainTextEdit* m_messages = nullptr;
    QElapsedTimer m_sinceRefresh;
    qint64 m_nextTraffic = 0;
};
