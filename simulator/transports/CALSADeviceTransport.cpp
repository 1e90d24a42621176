#include "simulator/transports/CALSADeviceTransport.h"

#include "app/common/Constants.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/ALSAError.h"

namespace
{
constexpr size_t k_encoderBuffer = 4096;
constexpr unsigned k_portRights =
    SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_READ | SND_SEQ_PORT_CAP_SUBS_WRITE;
} // namespace

void CALSADeviceTransport::Closer::operator()(snd_midi_event_t* encoder) const
{
    snd_midi_event_free(encoder);
}

CALSADeviceTransport::CALSADeviceTransport(int cables) : m_ports(static_cast<size_t>(cables)) {}

CALSADeviceTransport::~CALSADeviceTransport()
{
    if (m_device)
        m_device->unplug();
}

QString CALSADeviceTransport::open(CSimulatedDevice& device)
{
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
        const std::span<const unsigned char> bytes = m_decoder.decode(*event);
        if (event->dest.port == m_ports.back() && !bytes.empty())
            m_device->receive(QByteArray(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())));
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
        const long taken = snd_midi_event_encode(m_encoder.get(), bytes, left, &event);
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
    int status = openSequencer(&m_sequencer, SND_SEQ_OPEN_DUPLEX, qPrintable(k_jxPortName));
    if (status < 0)
        return alsaError("cannot open the ALSA sequencer", status);
    snd_midi_event_t* encoder = nullptr;
    status = snd_midi_event_new(k_encoderBuffer, &encoder);
    if (status >= 0) {
        m_encoder.reset(encoder);
        status = m_decoder.initialize();
    }
    return status < 0 ? alsaError("cannot create an ALSA MIDI coder", status) : QString();
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

void CALSADeviceTransport::sendEvent(snd_seq_event_t& event)
{
    snd_seq_ev_set_source(&event, static_cast<unsigned char>(m_ports.back()));
    snd_seq_ev_set_subs(&event);
    snd_seq_ev_set_direct(&event);
    // Nothing waits on its way: a status says that one of the listeners has no room for the event, which all of the
    // others have got by then. Sent again, it would reach those a second time.
    snd_seq_event_output_direct(m_sequencer.get(), &event);
}
