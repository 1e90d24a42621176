#include "midi/CMIDIPort.h"

#include "app/common/Constants.h"

int CMIDIPort::createInputPortList()
{
    m_inputPortList.clear();
    const int total = MIDIPlatform::listSources();
    for (int index = 0; index < total; ++index)
        m_inputPortList[index] = getInputPortNameFromSystemByIndex(index);
    return total;
}

int CMIDIPort::createOutputPortList()
{
    m_outputPortList.clear();
    const int total = MIDIPlatform::listDestinations();
    for (int index = 0; index < total; ++index)
        m_outputPortList[index] = getOutputPortNameFromSystemByIndex(index);
    return total;
}

int CMIDIPort::getTotalInputPorts() const
{
    return MIDIPlatform::sourceCount();
}

int CMIDIPort::getTotalOutputPorts() const
{
    return MIDIPlatform::destinationCount();
}

int CMIDIPort::getTotalAvailableInputPorts() const
{
    return static_cast<int>(m_inputPortList.size());
}

int CMIDIPort::getTotalAvailableOutputPorts() const
{
    return static_cast<int>(m_outputPortList.size());
}

QString CMIDIPort::getPortName(MIDIEndpoint endpoint, int index)
{
    if (endpoint == 0)
        return {};
    QString name = MIDIPlatform::endpointName(endpoint);
    if (name.isNull())
        name = QStringLiteral("Port #%1").arg(index);
    QString device = MIDIPlatform::deviceName(endpoint);
    if (device.isNull())
        device = QStringLiteral("Unknown Device");
    return name.contains(device, Qt::CaseSensitive) ? name : device + k_space + name;
}

QString CMIDIPort::getInputPortNameFromSystemByIndex(int index) const
{
    return getPortName(MIDIPlatform::source(index), index);
}

QString CMIDIPort::getOutputPortNameFromSystemByIndex(int index) const
{
    return getPortName(MIDIPlatform::destination(index), index);
}

namespace
{
int lastIndexOf(const QString& name, const QMap<int, QString>& list)
{
    const QList<int> indexes = list.keys(name);
    return indexes.isEmpty() ? -1 : indexes.last();
}
} // namespace

int CMIDIPort::getInputPortByName(const QString& name) const
{
    return lastIndexOf(name, m_inputPortList);
}

int CMIDIPort::getOutputPortByName(const QString& name) const
{
    return lastIndexOf(name, m_outputPortList);
}
