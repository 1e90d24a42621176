#pragma once

#include <alsa/asoundlib.h>

#include <array>
#include <memory>
#include <span>

/// Turns sequencer events into the MIDI bytes that they stand for. Never allocates after initialize().
class CALSAEventDecoder
{
  public:
    /// The result is 0, or libasound's negative status.
    [[nodiscard]] int initialize();

    /// The event's bytes: those of a SysEx event are a whole message or a piece of one, those of any other event a
    /// whole message with its status byte. Empty for an event that is no MIDI. Valid until the next call, and as long
    /// as the event is.
    [[nodiscard]] std::span<const unsigned char> decode(const snd_seq_event_t& event);

  private:
    struct Closer
    {
        void operator()(snd_midi_event_t* coder) const;
    };

    std::unique_ptr<snd_midi_event_t, Closer> m_coder;
    std::array<unsigned char, 16> m_bytes{}; // a 14-bit parameter change, the longest, is 12 bytes
};
