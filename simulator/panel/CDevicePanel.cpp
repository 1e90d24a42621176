#include "simulator/panel/CDevicePanel.h"

#include "simulator/device/DeviceMessages.h"
#include "simulator/device/TrafficText.h"

#include <QDial>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

namespace
{
constexpr int k_refreshInterval = 20; // milliseconds
constexpr int k_knobsInARow = 4;      // as on the device
constexpr int k_dialSize = 64;

QString holdingText(int value, const KnobSettings& settings)
{
    QString text = QStringLiteral("Value %1").arg(value);
    for (const DeviceSetting& setting : k_deviceSettings) {
        const QString shown = DeviceMessages::valueInWords(setting, settings.*setting.member);
        text += QStringLiteral("\n%1 %2").arg(QString::fromLatin1(setting.label), shown);
    }
    return text;
}
} // namespace

CDevicePanel::CDevicePanel(CSimulatedDevice& device, QWidget* parent) : QWidget(parent), m_device(device)
{
    setWindowTitle(tr("KTZ-JX device"));

    m_silence = new QPushButton(tr("&Silence"));
    m_silence->setObjectName("silence");
    m_silence->setCheckable(true);
    m_silence->setChecked(m_device.isSilent());
    m_silence->setToolTip(tr("The device goes on listening but answers nothing"));
    connect(m_silence, &QPushButton::toggled, this, &CDevicePanel::silence);

    m_unplug = new QPushButton(tr("&Unplug"));
    m_unplug->setObjectName("unplug");
    m_unplug->setToolTip(tr("Pulls the device's cable, for good"));
    connect(m_unplug, &QPushButton::clicked, this, &CDevicePanel::unplug);

    m_messages = new QPlainTextEdit;
    m_messages->setObjectName("messages");
    m_messages->setReadOnly(true);
    m_messages->setMaximumBlockCount(k_messagesShown);
    m_messages->setLineWrapMode(QPlainTextEdit::NoWrap);
    QFont fixedFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixedFont.setPixelSize(fontInfo().pixelSize() - 1);
    m_messages->setFont(fixedFont);
    m_messages->setMinimumSize(560, 180);

    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(new QLabel(tr("Messages, as the device sees them")));
    buttons->addStretch();
    buttons->addWidget(m_silence);
    buttons->addWidget(m_unplug);

    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(createKnobs());
    layout->addLayout(buttons);
    layout->addWidget(m_messages, 1);

    auto* const timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &CDevicePanel::refresh);
    timer->start(k_refreshInterval);
    m_sinceRefresh.start();
    refresh();
}

void CDevicePanel::refresh()
{
    m_device.advance(m_sinceRefresh.restart());
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob)
        showKnob(knob);
    showTraffic();
    m_unplug->setEnabled(m_device.isPlugged());
}

void CDevicePanel::silence(bool on)
{
    if (on)
        m_device.goSilent();
    else
        m_device.answer();
}

void CDevicePanel::unplug()
{
    m_device.unplug();
    refresh();
}

QGridLayout* CDevicePanel::createKnobs()
{
    auto* const grid = new QGridLayout;
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob)
        grid->addWidget(createKnob(knob), knob / k_knobsInARow, knob % k_knobsInARow);
    return grid;
}

QWidget* CDevicePanel::createKnob(int knob)
{
    auto* const dial = new QDial;
    dial->setObjectName(QStringLiteral("dial%1").arg(knob));
    dial->setRange(0, 127);
    dial->setFixedSize(k_dialSize, k_dialSize);
    connect(dial, &QDial::valueChanged, this, [this, knob](int value) { m_device.turn(knob, value); });

    auto* const settings = new QLabel;
    settings->setObjectName(QStringLiteral("settings%1").arg(knob));

    auto* const box = new QGroupBox(tr("Knob %1").arg(knob));
    auto* const layout = new QHBoxLayout(box);
    layout->addWidget(dial);
    layout->addWidget(settings, 1);
    m_knobs.at(static_cast<size_t>(knob)) = {dial, settings};
    return box;
}

void CDevicePanel::showKnob(int knob)
{
    const Knob& shown = m_knobs.at(static_cast<size_t>(knob));
    const int value = m_device.value(knob);
    const QSignalBlocker noTurn(shown.dial);
    shown.dial->setValue(value);
    shown.settings->setText(holdingText(value, m_device.settings(knob)));
}

void CDevicePanel::showTraffic()
{
    const QList<Traffic> traffic = m_device.trafficSince(m_nextTraffic);
    if (traffic.isEmpty())
        return;
    m_nextTraffic = traffic.last().number + 1;
    QStringList lines;
    for (const Traffic& message : traffic.last(qMin<qsizetype>(traffic.size(), k_messagesShown)))
        lines += trafficText(message);
    m_messages->appendPlainText(lines.join('\n'));
}
