#include "simulator/console/CDeviceConsole.h"

#include "simulator/console/CCommandParser.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/DeviceMessages.h"
#include "simulator/device/TrafficText.h"

CDeviceConsole::CDeviceConsole(CSimulatedDevice& device) : m_device(device) {}

QStringList CDeviceConsole::execute(const QByteArray& line)
{
    const CCommandParser::Result parsed = CCommandParser::parse(line);
    return parsed.error.isEmpty() ? execute(parsed.command) : QStringList{parsed.error};
}

QStringList CDeviceConsole::news()
{
    QStringList lines;
    for (const Traffic& message : m_device.trafficSince(m_nextTraffic)) {
        lines += trafficText(message);
        m_nextTraffic = message.number + 1;
    }
    return lines;
}

bool CDeviceConsole::wantsToQuit() const
{
    return m_wantsToQuit;
}

QStringList CDeviceConsole::execute(const DeviceCommand& command)
{
    switch (command.action) {
    case DeviceCommand::Action::Nothing:
        break;
    case DeviceCommand::Action::Turn:
        m_device.turn(command.knob, command.value);
        break;
    case DeviceCommand::Action::Set:
        m_device.setSetting(command.knob, command.setting, command.value);
        break;
    case DeviceCommand::Action::Send:
        m_device.send(command.bytes);
        break;
    case DeviceCommand::Action::Show:
        return show();
    case DeviceCommand::Action::Silent:
        m_device.goSilent();
        break;
    case DeviceCommand::Action::Answer:
        m_device.answer();
        break;
    case DeviceCommand::Action::Unplug:
        m_device.unplug();
        break;
    case DeviceCommand::Action::Help:
        return CCommandParser::help().split('\n', Qt::SkipEmptyParts);
    case DeviceCommand::Action::Quit:
        m_wantsToQuit = true;
        break;
    }
    return {};
}

QStringList CDeviceConsole::show() const
{
    QStringList lines;
    for (int knob = 0; knob < CSimulatedDevice::k_knobs; ++knob) {
        lines += QStringLiteral("knob %1: value %2, %3")
                     .arg(knob)
                     .arg(m_device.value(knob))
                     .arg(DeviceMessages::settingsInWords(m_device.settings(knob)));
    }
    if (m_device.isSilent())
        lines += QStringLiteral("silent");
    if (!m_device.isPlugged())
        lines += QStringLiteral("unplugged");
    return lines;
}
