#pragma once

#include <alsa/asoundlib.h>

#include <memory>

struct ALSASequencerCloser
{
    void operator()(snd_seq_t* sequencer) const;
};

/// A client of the system's sequencer; null when closed. Closing takes its ports and subscriptions with it.
using ALSASequencer = std::unique_ptr<snd_seq_t, ALSASequencerCloser>;

/// Makes a client of the system's sequencer whose calls never wait. Its name, "KTZ-JX Editor", tells a user who looks
/// at the system's connections whose it is.
///
/// streams   SND_SEQ_OPEN_INPUT, SND_SEQ_OPEN_OUTPUT or SND_SEQ_OPEN_DUPLEX.
/// From the first call on, libasound prints no errors of its own in this process.
/// The result is 0, or libasound's negative status with *sequencer closed: there is no sequencer, or it is full.
[[nodiscard]] int openSequencer(ALSASequencer* sequencer, int streams);
