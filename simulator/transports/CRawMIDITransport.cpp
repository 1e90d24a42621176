#include "simulator/transports/CRawMIDITransport.h"

#include "midi/alsa/ALSASequencer.h"
#include "simulator/device/CSimulatedDevice.h"
#include "simulator/device/PrintableText.h"
#include "simulator/transports/ALSAError.h"

#include <array>

void CRawMIDITransport::Closer::operator()(snd_rawmidi_t* port) const
{
    snd_rawmidi_close(port);
}

CRawMIDITransport::CRawMIDITransport(const QByteArray& name) : m_name(name) {}

CRawMIDITransport::~CRawMIDITransport()
{
    if (m_device)
        m_device->unplug();
}

QString CRawMIDITransport::open(CSimulatedDevice& device)
{
    silenceALSA();
    snd_rawmidi_t* input = nullptr;
    snd_rawmidi_t* output = nullptr;
    const int status = snd_rawmidi_open(&input, &output, m_name.constData(), SND_RAWMIDI_NONBLOCK);
    if (status < 0)
        return alsaError("cannot open " + description().toLatin1(), status);
    m_input.reset(input);
    m_output.reset(output);
    device.plug(*this);
    m_device = &device;
    return {};
}

QString CRawMIDITransport::description() const
{
    return QStringLiteral("raw MIDI device %1").arg(printableText(m_name));
}

std::vector<pollfd> CRawMIDITransport::descriptors() const
{
    std::vector<pollfd> waits;
    if (m_input)
        addDescriptors(m_input, waits);
    if (m_output && !m_kept.isEmpty())
        addDescriptors(m_output, waits);
    return waits;
}

bool CRawMIDITransport::process()
{
    return writeKept() && readAll();
}

void CRawMIDITransport::deviceSent(CSimulatedDevice&, const QByteArray& packet)
{
    if (m_kept.size() + packet.size() <= k_mostKept)
        m_kept += packet;
    // A failure shows at the next process(), which tries what is left again.
    static_cast<void>(writeKept());
}

void CRawMIDITransport::deviceUnplugged(CSimulatedDevice&)
{
    m_input.reset();
    m_output.reset();
    m_kept.clear();
    m_device = nullptr;
}

void CRawMIDITransport::addDescriptors(const Port& port, std::vector<pollfd>& waits)
{
    const size_t first = waits.size();
    const int count = snd_rawmidi_poll_descriptors_count(port.get());
    waits.resize(first + static_cast<size_t>(count));
    snd_rawmidi_poll_descriptors(port.get(), waits.data() + first, static_cast<unsigned>(count));
}

bool CRawMIDITransport::readAll()
{
    std::array<char, 4096> bytes = {};
    while (m_input) {
        const ssize_t count = snd_rawmidi_read(m_input.get(), bytes.data(), bytes.size());
        if (count == -EAGAIN || count == 0)
            return true;
        if (count < 0)
            return false;
        m_device->receive(QByteArray(bytes.data(), count));
    }
    return true;
}

bool CRawMIDITransport::writeKept()
{
    while (m_output && !m_kept.isEmpty()) {
        const ssize_t count = snd_rawmidi_write(m_output.get(), m_kept.constData(), static_cast<size_t>(m_kept.size()));
        if (count == -EAGAIN || count == 0)
            return true;
        if (count < 0)
            return false;
        m_kept.remove(0, count);
    }
    return true;
}
