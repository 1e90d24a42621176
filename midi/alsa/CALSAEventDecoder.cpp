#include "midi/alsa/CALSAEventDecoder.h"

#include <algorithm>

void CALSAEventDecoder::Closer::operator()(snd_midi_event_t* coder) const
{
    snd_midi_event_free(coder);
}

int CALSAEventDecoder::initialize()
{
    snd_midi_event_t* coder = nullptr;
    const int status = snd_midi_event_new(0, &coder); // decoding needs no buffer of its own
    if (status < 0)
        return status;
    m_coder.reset(coder);
    // Every record stands for itself, so it cannot lean on the status byte of the one before.
    snd_midi_event_no_status(coder, 1);
    return 0;
}

std::span<const unsigned char> CALSAEventDecoder::decode(const snd_seq_event_t& event)
{
    if (event.type == SND_SEQ_EVENT_SYSEX)
        return {static_cast<const unsigned char*>(event.data.ext.ptr), event.data.ext.len};
    const long size = snd_midi_event_decode(m_coder.get(), m_bytes.data(), static_cast<long>(m_bytes.size()), &event);
    return {m_bytes.data(), static_cast<std::size_t>(std::max(size, 0L))};
}
