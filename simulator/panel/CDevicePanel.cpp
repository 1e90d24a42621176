#include "simulator/panel/CDevicePanel.h"

#include "simulator/device/DeviceMessages.h"
#include "simulator/panel/CFaceplate.h"
#include "simulator/panel/CMessageTable.h"
#include "simulator/panel/CPanelDisplay.h"
#include "simulator/panel/CPanelJack.h"
#include "simulator/panel/CPanelKnob.h"
#include "simulator/panel/CPanelSwitch.h"
#include "simulator/panel/PanelLook.h"
#include "simulator/panel/PanelText.h"

#include <QGridLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace
{
constexpr std::chrono::milliseconds k_refreshInterval{20};
constexpr std::chrono::milliseconds k_trafficInterval{100}; // as fast as anybody reads, and cheap in a flood
constexpr int k_knobsInARow = 4;                            // as on the device
constexpr int k_width = 540;  // pixels, so that the editor has its place beside it on a screen of 1024
constexpr int k_height = 680; // as the editor
constexpr int k_sideMargin = 20;
} // namespace

CDevicePanel::CDevicePanel(CSimulatedDevice& device, QWidget* parent) : QWidget(parent), m_device(device)
{
    setWindowTitle(tr("KTZ-JX device"));
    setPalette(PanelLook::palette());

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(createFaceplate());
    m_messages = new CMessageTable;
    layout->addWidget(m_messages, 1);
    resize(k_width, k_height);

    const auto repeat = [this](std::chrono::milliseconds interval, void (CDevicePanel::*slot)()) {
        auto* const timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, slot);
        timer->start(interval);
    };
    repeat(k_refreshInterval, &CDevicePanel::refresh);
    repeat(k_trafficInterval, &CDevicePanel::showTraffic);
    m_sinceRefresh.start();
    refresh();
}

void CDevicePanel::offerEditorRestart()
{
    m_offersRestart = true;
}

void CDevicePanel::refresh()
{
    m_device.advance(m_sinceRefresh.restart());
    showKnobs();
    const QSignalBlocker noPull(m_jack);
    m_jack->setChecked(m_device.isPlugged());
}

void CDevicePanel::silence(bool on)
{
    if (on)
        m_device.goSilent();
    else
        m_device.answer();
}

void CDevicePanel::moveCable(bool in)
{
    if (in)
        emit cablePutIn();
    else
        emit cablePulled();
    m_restart->setVisible(m_offersRestart && m_device.isPlugged());
    refresh();
}

QWidget* CDevicePanel::createFaceplate()
{
    m_display = new CPanelDisplay;
    auto* const plate = new CFaceplate;
    plate->setMinimumWidth(k_width);
    auto* const layout = new QVBoxLayout(plate);
    layout->setContentsMargins(k_sideMargin, 0, 0, CFaceplate::k_footHeight + 8);
    layout->setSpacing(12);
    layout->addLayout(createHead());
    auto* const body = new QVBoxLayout;
    body->setContentsMargins(0, 0, k_sideMargin, 0);
    body->setSpacing(14);
    body->addWidget(m_display);
    body->addLayout(createKnobs());
    layout->addLayout(body);
    return plate;
}

QLayout* CDevicePanel::createHead()
{
    m_silence = new CPanelSwitch(tr("Answers nothing"));
    m_silence->setObjectName("silence");
    m_silence->setShortcut(tr("Alt+S"));
    m_silence->setChecked(m_device.isSilent());
    m_silence->setToolTip(tr("The device goes on listening but says nothing"));
    m_silence->setAccessibleDescription(m_silence->toolTip());
    connect(m_silence, &CPanelSwitch::toggled, this, &CDevicePanel::silence);

    m_jack = new CPanelJack(tr("Cable"));
    m_jack->setObjectName("cable");
    m_jack->setShortcut(tr("Alt+U"));
    m_jack->setChecked(m_device.isPlugged());
    m_jack->setToolTip(tr("Pull the cable, or put it in again: the editor has to be started again then"));
    m_jack->setAccessibleDescription(m_jack->toolTip());
    connect(m_jack, &CPanelJack::toggled, this, &CDevicePanel::moveCable);

    m_restart = new QPushButton(tr("&Restart editor"));
    m_restart->setObjectName("restart");
    m_restart->setToolTip(tr("Closes the editor and starts it again; the device goes on"));
    m_restart->setVisible(false);
    connect(m_restart, &QPushButton::clicked, this, &CDevicePanel::editorRestartWanted);

    auto* const head = new QHBoxLayout;
    head->setContentsMargins(0, 3, 0, 3);
    head->addWidget(m_silence);
    head->addStretch();
    head->addWidget(m_restart);
    head->addStretch();
    head->addWidget(m_jack);
    return head;
}

QGridLayout* CDevicePanel::createKnobs()
{
    auto* const grid = new QGridLayout;
    grid->setVerticalSpacing(8);
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob) {
        auto* const shown = new CPanelKnob(knob);
        connect(shown, &CPanelKnob::valueChanged, this, [this, knob](int value) { m_device.turn(knob, value); });
        m_knobs.at(static_cast<size_t>(knob)) = shown;
        grid->addWidget(shown, knob / k_knobsInARow, knob % k_knobsInARow, Qt::AlignHCenter);
    }
    return grid;
}

void CDevicePanel::showKnobs()
{
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob)
        m_knobs.at(static_cast<size_t>(knob))->hold(m_device.value(knob), m_device.settings(knob));
}

void CDevicePanel::showTraffic()
{
    const QList<Traffic> messages = m_device.trafficSince(m_nextTraffic);
    if (messages.isEmpty())
        return;
    m_nextTraffic = messages.last().number + 1;
    m_messages->add(messages);
    showOnDisplay(messages);
}

/// The last of either direction, but for the keep-alive, which would leave nothing else to be read.
void CDevicePanel::showOnDisplay(const QList<Traffic>& messages)
{
    const auto last = [&messages](Traffic::Direction direction) {
        return std::find_if(messages.rbegin(), messages.rend(), [direction](const Traffic& message) {
            return message.direction == direction &&
                   DeviceMessages::typeOf(message.bytes) != DeviceMessages::Type::Keep;
        });
    };
    if (const auto received = last(Traffic::Direction::ToDevice); received != messages.rend())
        m_display->showReceived(displayText(received->bytes));
    if (const auto sent = last(Traffic::Direction::FromDevice); sent != messages.rend())
        m_display->showSent(displayText(sent->bytes));
}

QString CDevicePanel::displayText(const QByteArray& message) const
{
    if (DeviceMessages::typeOf(message) != DeviceMessages::Type::NoticeValue)
        return PanelText::meaning(message);
    const int knob = DeviceMessages::knobOf(message);
    if (knob >= CSimulatedDevice::k_knobs)
        return PanelText::meaning(message);
    return PanelText::turned(knob, m_device.settings(knob), DeviceMessages::valueOf(message));
}
