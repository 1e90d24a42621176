#include "simulator/panel/CDevicePanel.h"

#include "simulator/device/DeviceMessages.h"
#include "simulator/device/TrafficText.h"
#include "simulator/panel/CFaceplate.h"
#include "simulator/panel/CPanelDisplay.h"
#include "simulator/panel/CPanelJack.h"
#include "simulator/panel/CPanelKnob.h"
#include "simulator/panel/CPanelSwitch.h"
#include "simulator/panel/PanelText.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTimer>

namespace
{
constexpr int k_refreshInterval = 20; // milliseconds
constexpr int k_knobsInARow = 4;      // as on the device
constexpr int k_width = 540;          // pixels, so that the editor has its place beside it on a screen of 1024
constexpr int k_sideMargin = 20;
} // namespace

CDevicePanel::CDevicePanel(CSimulatedDevice& device, QWidget* parent) : QWidget(parent), m_device(device)
{
    setWindowTitle(tr("KTZ-JX device"));

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(createFaceplate());
    layout->addWidget(createMessages(), 1);

    auto* const timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &CDevicePanel::refresh);
    timer->start(k_refreshInterval);
    m_sinceRefresh.start();
    refresh();
}

void CDevicePanel::refresh()
{
    m_device.advance(m_sinceRefresh.restart());
    showKnobs();
    showTraffic();
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
        m_device.unplug();
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

    auto* const head = new QHBoxLayout;
    head->setContentsMargins(0, 3, 0, 3);
    head->addWidget(m_silence);
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

QWidget* CDevicePanel::createMessages()
{
    m_messages = new QPlainTextEdit;
    m_messages->setObjectName("messages");
    m_messages->setReadOnly(true);
    m_messages->setMaximumBlockCount(k_messagesShown);
    m_messages->setLineWrapMode(QPlainTextEdit::NoWrap);
    QFont fixedFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixedFont.setPixelSize(fontInfo().pixelSize() - 1);
    m_messages->setFont(fixedFont);
    m_messages->setMinimumHeight(180);
    return m_messages;
}

void CDevicePanel::showKnobs()
{
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob)
        m_knobs.at(static_cast<size_t>(knob))->hold(m_device.value(knob), m_device.settings(knob));
}

void CDevicePanel::showTraffic()
{
    const QList<Traffic> traffic = m_device.trafficSince(m_nextTraffic);
    if (traffic.isEmpty())
        return;
    m_nextTraffic = traffic.last().number + 1;
    QStringList lines;
    for (const Traffic& message : traffic.last(qMin<qsizetype>(traffic.size(), k_messagesShown))) {
        lines += trafficText(message);
        showOnDisplay(message);
    }
    m_messages->appendPlainText(lines.join('\n'));
}

/// The keep-alive would leave nothing else to be read.
void CDevicePanel::showOnDisplay(const Traffic& message)
{
    using namespace DeviceMessages;
    const Type type = typeOf(message.bytes);
    if (type == Type::Keep)
        return;
    QString text = PanelText::meaning(message.bytes);
    if (type == Type::NoticeValue) {
        const int knob = knobOf(message.bytes);
        text = PanelText::turned(knob, m_device.settings(knob), valueOf(message.bytes));
    }
    if (message.direction == Traffic::Direction::ToDevice)
        m_display->showReceived(text);
    else
        m_display->showSent(text);
}
