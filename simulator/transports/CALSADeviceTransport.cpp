#include "simulator/transports/CALSADeviceTransport.h"

#include "app/common/Constants.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/ALSAError.h"

#include <algorithm>
#include <array>

namespace
{
constexpr size_t k_coderBuffer = 4096;
constexpr size_t k_queueCells = 2000; // the kernel's largest; the default loses everything after 100 messages
constexpr unsigned k_portRights =
    SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_READ | SND_SEQ_PORT_CAP_SUBS_WRITE;
} // namespace

void CALSADeviceTransport::Closer::operator()(snd_seq_t* sequencer) const
{
    snd_seq_close(sequencer);
}

void CALSADeviceTransport::Closer::operator()(snd_midi_event_t* coder) const
{
    snd_midi_event_free(coder);
}

CALSADeviceTransport::CALSADeviceTransport(int cables) : m_ports(static_cast<size_t>(cables)) {}

CALSADeviceTransport::~CALSADeviceTransport()
{
    if (m_device)
        m_device->unplug();
}

QString CALSADeviceTransport::open(CSimulatedDevice& device)
{
    silenceALSA();
    QString error = createClient();
    if (error.isEmpty())
        error = createPorts();
    if (!error.isEmpty()) {
        m_sequencer.reset();
        return error;
    }
    device.plug(*this);
    m_device = &device;
    return {};
}

QString CALSADeviceTransport::description() const
{
    return QStringLiteral("ALSA sequencer client \"%1\", port %2:%3")
        .arg(k_jxPortName)
        .arg(snd_seq_client_id(m_sequencer.get()))
        .arg(m_ports.back());
}

std::vector<pollfd> CALSADeviceTransport::descriptors() const
{
    if (!m_sequencer)
        return {};
    std::vector<pollfd> waits(1); // a sequencer client has one
    snd_seq_poll_descriptors(m_sequencer.get(), waits.data(), 1, POLLIN);
    return waits;
}

bool CALSADeviceTransport::process()
{
    while (m_sequencer) {
        snd_seq_event_t* event = nullptr;
        const int status = snd_seq_event_input(m_sequencer.get(), &event);
        if (status == -ENOSPC)
            continue; // the queue overflowed and was emptied
        if (status == -EAGAIN)
            return true;
        if (status < 0)
            return false;
        const QByteArray bytes = bytesOf(*event);
        if (event->dest.port == m_ports.back() && !bytes.isEmpty())
            m_device->receive(bytes);
    }
    return true;
}

void CALSADeviceTransport::deviceSent(CSimulatedDevice&, const QByteArray& packet)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(packet.constData());
    long left = packet.size();
    while (left > 0) {
        snd_seq_event_t event;
        snd_seq_ev_clear(&event);
        const long taken = snd_midi_event_encode(m_coder.get(), bytes, left, &event);
        if (taken <= 0)
            return;
        if (event.type != SND_SEQ_EVENT_NONE)
            sendEvent(event);
        bytes += taken;
        left -= taken;
    }
}

void CALSADeviceTransport::deviceUnplugged(CSimulatedDevice&)
{
    m_sequencer.reset();
    m_device = nullptr;
}

QString CALSADeviceTransport::createClient()
{
    snd_seq_t* sequencer = nullptr;
    int status = snd_seq_open(&sequencer, "default", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK);
    if (status < 0)
        return alsaError("cannot open the ALSA sequencer", status);
    m_sequencer.reset(sequencer);
    snd_midi_event_t* coder = nullptr;
    status = snd_midi_event_new(k_coderBuffer, &coder);
    if (status < 0)
        return alsaError("cannot create an ALSA MIDI coder", status);
    m_coder.reset(coder);
    snd_midi_event_no_status(coder, 1);
    status = snd_seq_set_client_name(sequencer, qPrintable(k_jxPortName));
    if (status < 0)
        return alsaError("cannot name the ALSA client", status);
    status = snd_seq_set_client_pool_input(sequencer, k_queueCells);
    return status < 0 ? alsaError("cannot enlarge the ALSA input queue", status) : QString();
}

QString CALSADeviceTransport::createPorts()
{
    for (size_t i = 0; i < m_ports.size(); ++i) {
        const QByteArray name = "Port" + QByteArray::number(static_cast<int>(i) + 1);
        const int port = snd_seq_create_simple_port(m_sequencer.get(), name.constData(), k_portRights,
                                                    SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_SOFTWARE);
        if (port < 0)
            return alsaError("cannot create an ALSA port", port);
        m_ports.at(i) = port;
    }
    return {};
}

QByteArray CALSADeviceTransport::bytesOf(const snd_seq_event_t& event)
{
    if (event.type == SND_SEQ_EVENT_SYSEX)
        return {static_cast<const char*>(event.data.ext.ptr), static_cast<qsizetype>(event.data.ext.len)};
    std::array<unsigned char, 16> bytes = {};
    const long size = snd_midi_event_decode(m_coder.get(), bytes.data(), static_cast<long>(bytes.size()), &event);
    return {reinterpret_cast<const char*>(bytes.data()), std::max(size, 0L)};
}

void CALSADeviceTransport::sendEvent(snd_seq_event_t& event)
{
    snd_seq_ev_set_source(&event, static_cast<unsigned char>(m_ports.back()));
    snd_seq_ev_set_subs(&event);
    snd_seq_ev_set_direct(&event);
    // Nothing waits on its way: a status says that one of the listeners has no room for the event, which all of the
    // others have got by then. Sent again, it would reach those a second time.
    snd_seq_event_output_direct(m_sequencer.get(), &event);
}
