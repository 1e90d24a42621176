#pragma once

#include <alsa/asoundlib.h>

#include <memory>

struct ALSASequencerCloser
{
    void operator()(snd_seq_t* sequencer) const;
};

/// A client of the system's sequencer; null when closed. Closing takes its ports and subscriptions with it.
using ALSASequencer = std::unique_ptr<snd_seq_t, ALSASequencerCloser>;

/// Name of this program's clients from now on; borrowed, for the rest of the process. It tells a user who looks at the
/// system's connections whose they are, and is the editor's until it is set.
void setClientName(const char* name);

/// Cells of a client's input queue, the most that the sequencer gives: a message of 11 bytes takes two. The default
/// loses everything after 100 messages.
inline constexpr std::size_t k_queueCells = 2000;

/// Makes a client of the system's sequencer whose calls never wait, with the longest input queue if it has an input.
///
/// streams      SND_SEQ_OPEN_INPUT, SND_SEQ_OPEN_OUTPUT or SND_SEQ_OPEN_DUPLEX.
/// clientName   null: the program's.
/// From the first call on, libasound prints no errors of its own in this process.
/// The result is 0, or libasound's negative status with *sequencer closed: there is no sequencer, or it is full.
[[nodiscard]] int openSequencer(ALSASequencer* sequencer, int streams, const char* clientName = nullptr);

/// From the first call on, libasound prints no errors of its own in this process: every failure is told once, by
/// whoever met it.
void silenceALSA();
