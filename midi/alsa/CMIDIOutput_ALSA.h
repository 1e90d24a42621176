#pragma once

#include "midi/CMIDIOutput.h"
#include "midi/alsa/ALSASequencer.h"

#include <optional>

/// An output port on the ALSA sequencer, with a client of its own. Status values are libasound's.
///
/// A packet goes out as a SysEx event, whose bytes the sequencer passes on as they are. The sequencer reports success
/// for what it sends to nobody, so each packet first asks whether the destination is still subscribed: once the device
/// has been unplugged, sendMessage() gives false until the port is opened anew.
class CMIDIOutput_ALSA : public CMIDIOutput
{
  public:
    int initialize() override;
    [[nodiscard]] bool openPort(int index) override;
    void closePort() override;
    [[nodiscard]] bool sendMessage(const unsigned char* data, int size) override;

  private:
    [[nodiscard]] bool sendPacket(const unsigned char* data, int size);
    [[nodiscard]] bool isSubscribed();

    ALSASequencer m_sequencer;
    int m_port = -1;
    std::optional<snd_seq_addr_t> m_destination;
};
