#pragma once

#include "app/common/CMutex.h"
#include "app/common/Constants.h"
#include "midi/MIDIPlatform.h"
#include "simulator/device/CDeviceTransport.h"
#include "simulator/transports/CSendGate.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <deque>
#include <map>

class CMIDIInput_Simulated;

/// One packet that went to a simulated destination, or was meant to.
struct SentPacket
{
    MIDIEndpoint destination = 0;
    qint64 time = 0; ///< milliseconds of the device's clock, 0 at a port without a device
    QByteArray bytes;
    bool taken = false; ///< false: the send was refused
};

/// The MIDI ports of this process: a system without any system. Empty until something is plugged in.
///
/// Threads  every operation may be called on any thread; one lock covers a packet's whole way, from the editor into a
///          device and from a device into the rings of its open inputs, whose delivery threads do the rest.
/// Devices  are borrowed; one that is destroyed unplugs itself.
class CSimulatedSystem : public CDeviceTransport
{
  public:
    static CSimulatedSystem& instance();

    /// Gives the device a port pair for each endpoint name, of which the last is the editor's. What is sent to the
    /// others is recorded and goes nowhere.
    void plug(CSimulatedDevice& device, const QString& deviceName = k_jxPortName,
              const QStringList& endpointNames = threeCables());

    /// Endpoint names of devices with three cables, "Port1" to "Port3", and with two, of which the first is called as
    /// the device.
    [[nodiscard]] static QStringList threeCables();
    [[nodiscard]] static QStringList twoCables();

    /// A port without a device behind it. A null name is a name that the port or its device lacks.
    MIDIEndpoint addSource(const QString& deviceName, const QString& endpointName);
    MIDIEndpoint addDestination(const QString& deviceName, const QString& endpointName);
    void removePort(MIDIEndpoint endpoint);

    /// Back to an empty system: unplugs the devices, removes the ports, forgets packets and faults. Ports that the
    /// editor holds open stay open objects of vanished ports.
    void reset();

    /// Programs that are said to use the system too.
    void setOtherPrograms(const QStringList& names);
    [[nodiscard]] QStringList otherPrograms();

    /// A program that comes with an open input of this process, and is gone after the look that finds it: so many
    /// times.
    void meetProgram(const QString& name, int times);

    /// So many of the next openPort() calls are refused.
    void refuseOpens(int count);

    /// Every open input has lost something that it received; or has received its last.
    void overrunInputs();
    void endReception();

    /// Where a packet can be made to wait on its way, before anything of it is recorded; see CSendGate. While one
    /// waits, devices can be turned and unplugged, and what they say arrives.
    [[nodiscard]] CSendGate& sendGate();

    /// What the editor sent, oldest first: the last k_packetLimit packets.
    [[nodiscard]] QList<SentPacket> packets() const;
    void clearPackets();
    static constexpr int k_packetLimit = 100'000;

    /// The ports of now: the sources, or else the destinations; and their names, as MIDIPlatform.h has them.
    [[nodiscard]] QList<MIDIEndpoint> endpoints(bool sources) const;
    [[nodiscard]] QString endpointName(MIDIEndpoint endpoint) const;
    [[nodiscard]] QString deviceName(MIDIEndpoint endpoint) const;

    // What the port objects need. false: the endpoint has vanished, or the system refuses.
    [[nodiscard]] bool connectInput(CMIDIInput_Simulated& input, MIDIEndpoint source);
    void disconnectInput(CMIDIInput_Simulated& input); ///< no packet reaches the input when this has returned
    [[nodiscard]] bool connectOutput(MIDIEndpoint destination);
    [[nodiscard]] bool send(MIDIEndpoint destination, const QByteArray& packet);

    void deviceSent(CSimulatedDevice& device, const QByteArray& packet) override;
    void deviceUnplugged(CSimulatedDevice& device) override;

  private:
    struct Port
    {
        MIDIEndpoint endpoint = 0;
        QString deviceName;
        QString endpointName;
        bool isSource = false;
        CSimulatedDevice* owner = nullptr; ///< null without a device
        bool isEditorPort = false;
    };

    CSimulatedSystem() = default;
    MIDIEndpoint addPort(Port port);
    [[nodiscard]] const Port* find(MIDIEndpoint endpoint) const;
    [[nodiscard]] bool takeOpen(MIDIEndpoint endpoint, bool isSource);

    CSendGate m_sendGate; ///< never entered with the lock held
    mutable CRecursiveMutex m_mutex;
    QList<Port> m_ports;
    MIDIEndpoint m_lastEndpoint = 0; ///< never used twice, so that an old endpoint cannot mean a new port
    std::map<CMIDIInput_Simulated*, MIDIEndpoint> m_inputs;
    std::deque<SentPacket> m_packets;
    int m_opensToRefuse = 0;
    QStringList m_otherPrograms;
    QString m_metProgram;
    int m_meetings = 0;
};
