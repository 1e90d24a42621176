#pragma once

#include "midi/CMIDIInput.h"
#include "midi/alsa/ALSASequencer.h"
#include "midi/alsa/CALSAEventDecoder.h"

#include <thread>

/// An input port on the ALSA sequencer, with a client of its own.
///
/// Threads  the reading thread takes events from the sequencer and puts their bytes into the ring. It runs from
///          openPort() to closePort(), asleep while nothing comes, and never with a lower priority than the delivery
///          thread: otherwise the sequencer's queue would overflow while the ring stands empty.
/// Failure  a flood beyond the sequencer's queue loses what the queue held. A read error can be over with its event;
///          reading ends for good when k_readAttempts of them came without a success between, which takes no time, or
///          when the sequencer itself fails. The observer hears of each. Status values are libasound's.
class CMIDIInput_ALSA : public CMIDIInput
{
  public:
    CMIDIInput_ALSA();
    ~CMIDIInput_ALSA() override;

    int initialize() override;
    [[nodiscard]] bool openPort(int index) override;
    void closePort() override;
    void readMessageFromBuffer(unsigned char* data, int* size) override;

    /// Errors in a row after which reading has ended.
    static constexpr int k_readAttempts = 8;

  private:
    [[nodiscard]] int createClient();
    [[nodiscard]] bool startReading(); ///< false: the system gives no more threads
    void stopReading();

    /// What the reading thread does until it is stopped. false: reading has failed for good.
    [[nodiscard]] bool readEvents();

    /// Stores what the sequencer holds now and wakes the delivery thread once. false: the last read failed.
    [[nodiscard]] bool readBatch();
    void store(const snd_seq_event_t& event);

    ALSASequencer m_sequencer;
    CALSAEventDecoder m_decoder;
    int m_port = -1;
    int m_stopSignal = -1; // an eventfd while the port is open
    std::thread m_reader;  // joinable while the port is open
};
