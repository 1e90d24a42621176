#include "simulator/transports/CSimulatedSystem.h"

#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CMIDIInput_Simulated.h"

#include <algorithm>
#include <mutex>
#include <set>

CSimulatedSystem& CSimulatedSystem::instance()
{
    static CSimulatedSystem system;
    return system;
}

QStringList CSimulatedSystem::threeCables()
{
    return {QStringLiteral("Port1"), QStringLiteral("Port2"), QStringLiteral("Port3")};
}

QStringList CSimulatedSystem::twoCables()
{
    return {k_jxPortName, QStringLiteral("Port3")};
}

void CSimulatedSystem::plug(CSimulatedDevice& device, const QString& deviceName, const QStringList& endpointNames)
{
    const std::scoped_lock lock(m_mutex);
    device.plug(*this);
    for (qsizetype i = 0; i < endpointNames.size(); ++i) {
        Port port;
        port.deviceName = deviceName;
        port.endpointName = endpointNames[i];
        port.owner = &device;
        port.isEditorPort = i == endpointNames.size() - 1;
        port.isSource = true;
        addPort(port);
        port.isSource = false;
        addPort(port);
    }
}

MIDIEndpoint CSimulatedSystem::addSource(const QString& deviceName, const QString& endpointName)
{
    const std::scoped_lock lock(m_mutex);
    return addPort({.deviceName = deviceName, .endpointName = endpointName, .isSource = true});
}

MIDIEndpoint CSimulatedSystem::addDestination(const QString& deviceName, const QString& endpointName)
{
    const std::scoped_lock lock(m_mutex);
    return addPort({.deviceName = deviceName, .endpointName = endpointName, .isSource = false});
}

void CSimulatedSystem::removePort(MIDIEndpoint endpoint)
{
    const std::scoped_lock lock(m_mutex);
    m_ports.removeIf([endpoint](const Port& port) { return port.endpoint == endpoint; });
}

void CSimulatedSystem::reset()
{
    m_sendGate.release();
    const std::scoped_lock lock(m_mutex);
    std::set<CSimulatedDevice*> devices;
    for (const Port& port : m_ports) {
        if (port.owner)
            devices.insert(port.owner);
    }
    for (CSimulatedDevice* device : devices)
        device->unplug();
    m_ports.clear();
    m_packets.clear();
    m_opensToRefuse = 0;
    m_otherPrograms.clear();
    m_meetings = 0;
}

void CSimulatedSystem::setOtherPrograms(const QStringList& names)
{
    const std::scoped_lock lock(m_mutex);
    m_otherPrograms = names;
}

QStringList CSimulatedSystem::otherPrograms()
{
    const std::scoped_lock lock(m_mutex);
    if (m_inputs.empty() || m_meetings == 0)
        return m_otherPrograms;
    --m_meetings;
    return m_otherPrograms + QStringList(m_metProgram);
}

void CSimulatedSystem::meetProgram(const QString& name, int times)
{
    const std::scoped_lock lock(m_mutex);
    m_metProgram = name;
    m_meetings = times;
}

void CSimulatedSystem::refuseOpens(int count)
{
    const std::scoped_lock lock(m_mutex);
    m_opensToRefuse = count;
}

void CSimulatedSystem::overrunInputs()
{
    const std::scoped_lock lock(m_mutex);
    for (const auto& [input, endpoint] : m_inputs)
        input->overrun();
}

void CSimulatedSystem::endReception()
{
    const std::scoped_lock lock(m_mutex);
    for (const auto& [input, endpoint] : m_inputs)
        input->endReception();
    m_inputs.clear();
}

CSendGate& CSimulatedSystem::sendGate()
{
    return m_sendGate;
}

QList<SentPacket> CSimulatedSystem::packets() const
{
    const std::scoped_lock lock(m_mutex);
    return {m_packets.begin(), m_packets.end()};
}

void CSimulatedSystem::clearPackets()
{
    const std::scoped_lock lock(m_mutex);
    m_packets.clear();
}

QList<MIDIEndpoint> CSimulatedSystem::endpoints(bool sources) const
{
    const std::scoped_lock lock(m_mutex);
    QList<MIDIEndpoint> list;
    for (const Port& port : m_ports) {
        if (port.isSource == sources)
            list += port.endpoint;
    }
    return list;
}

QString CSimulatedSystem::endpointName(MIDIEndpoint endpoint) const
{
    const std::scoped_lock lock(m_mutex);
    const Port* const port = find(endpoint);
    return port ? port->endpointName : QString();
}

QString CSimulatedSystem::deviceName(MIDIEndpoint endpoint) const
{
    const std::scoped_lock lock(m_mutex);
    const Port* const port = find(endpoint);
    return port ? port->deviceName : QString();
}

bool CSimulatedSystem::connectInput(CMIDIInput_Simulated& input, MIDIEndpoint source)
{
    const std::scoped_lock lock(m_mutex);
    if (!takeOpen(source, true))
        return false;
    m_inputs[&input] = source;
    return true;
}

void CSimulatedSystem::disconnectInput(CMIDIInput_Simulated& input)
{
    const std::scoped_lock lock(m_mutex);
    m_inputs.erase(&input);
}

bool CSimulatedSystem::connectOutput(MIDIEndpoint destination)
{
    const std::scoped_lock lock(m_mutex);
    return takeOpen(destination, false);
}

bool CSimulatedSystem::send(MIDIEndpoint destination, const QByteArray& packet)
{
    m_sendGate.pass();
    const std::scoped_lock lock(m_mutex);
    const Port* const port = find(destination);
    SentPacket sent{.destination = destination, .bytes = packet, .taken = port != nullptr};
    if (port && port->owner)
        sent.time = port->owner->now();
    if (port && port->isEditorPort)
        sent.taken = port->owner->receive(packet);
    if (m_packets.size() == k_packetLimit)
        m_packets.pop_front();
    m_packets.push_back(sent);
    return sent.taken;
}

void CSimulatedSystem::deviceSent(CSimulatedDevice& device, const QByteArray& packet)
{
    const std::scoped_lock lock(m_mutex);
    for (const auto& [input, endpoint] : m_inputs) {
        const Port* const port = find(endpoint);
        if (port && port->isEditorPort && port->owner == &device)
            input->receive(packet);
    }
}

void CSimulatedSystem::deviceUnplugged(CSimulatedDevice& device)
{
    const std::scoped_lock lock(m_mutex);
    m_ports.removeIf([&device](const Port& port) { return port.owner == &device; });
}

MIDIEndpoint CSimulatedSystem::addPort(Port port)
{
    port.endpoint = ++m_lastEndpoint;
    m_ports += port;
    return port.endpoint;
}

const CSimulatedSystem::Port* CSimulatedSystem::find(MIDIEndpoint endpoint) const
{
    const auto found = std::find_if(m_ports.begin(), m_ports.end(),
                                    [endpoint](const Port& port) { return port.endpoint == endpoint; });
    return found == m_ports.end() ? nullptr : &*found;
}

bool CSimulatedSystem::takeOpen(MIDIEndpoint endpoint, bool isSource)
{
    if (m_opensToRefuse > 0) {
        --m_opensToRefuse;
        return false;
    }
    const Port* const port = find(endpoint);
    return port != nullptr && port->isSource == isSource;
}
