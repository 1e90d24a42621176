#include "simulator/transports/CDeviceCable.h"

#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CPolledTransport.h"

#include <QSocketNotifier>

#include <utility>

CDeviceCable::CDeviceCable(CSimulatedDevice& device, PortMaker makePort)
    : m_device(device), m_makePort(std::move(makePort))
{
}

CDeviceCable::~CDeviceCable()
{
    pull();
}

QString CDeviceCable::putIn()
{
    pull();
    std::unique_ptr<CPolledTransport> port = m_makePort();
    QString error = port->open(m_device);
    if (!error.isEmpty())
        return error;
    m_port = std::move(port);
    for (const pollfd& wait : m_port->descriptors()) {
        auto* const notifier = new QSocketNotifier(wait.fd, QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, &CDeviceCable::serve);
        m_notifiers += notifier;
    }
    return {};
}

void CDeviceCable::pull()
{
    if (!m_port)
        return;
    // One of them may be what this is called by.
    for (QSocketNotifier* const notifier : std::exchange(m_notifiers, {})) {
        notifier->setEnabled(false);
        notifier->deleteLater();
    }
    m_device.unplug();
    m_port.reset();
}

QString CDeviceCable::description() const
{
    return m_port ? m_port->description() : QString();
}

void CDeviceCable::serve()
{
    if (!m_port->process())
        pull();
}
