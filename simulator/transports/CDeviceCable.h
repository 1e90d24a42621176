#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class CPolledTransport;
class CSimulatedDevice;
class QSocketNotifier;

/// A simulated device's cable to the other programs of this system: puts it in and pulls it, and has the event loop
/// serve the port meanwhile.
///
/// Threads  the one that made it, which runs an event loop; the device is used on it alone.
/// Device   borrowed; outlives the cable, whose end pulls it.
class CDeviceCable : public QObject
{
    Q_OBJECT

  public:
    using PortMaker = std::function<std::unique_ptr<CPolledTransport>()>;

    /// makePort   gives a closed transport, a new one each time that the cable is put in. What it has to wait for must
    ///            stay the same while it is open, as with the sequencer.
    CDeviceCable(CSimulatedDevice& device, PortMaker makePort);
    ~CDeviceCable() override;

    /// Opens a port and plugs the device in; a cable that is in is pulled first. The result is empty, or one line that
    /// says why it did not work, with the cable out.
    [[nodiscard]] QString putIn();

    /// Unplugs the device, whose port vanishes before this returns. So does a port that can no longer be read, by
    /// itself. Nothing happens when the cable is out.
    void pull();

    /// What it is in, in words; empty when it is out.
    [[nodiscard]] QString description() const;

  private:
    void serve();

    CSimulatedDevice& m_device;
    PortMaker m_makePort;
    std::unique_ptr<CPolledTransport> m_port;
    QList<QSocketNotifier*> m_notifiers; ///< children, while the cable is in
};
