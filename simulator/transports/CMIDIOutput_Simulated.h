#pragma once

#include "midi/CMIDIOutput.h"
#include "midi/MIDIPlatform.h"

/// Output port of the simulated system.
class CMIDIOutput_Simulated : public CMIDIOutput
{
  public:
    [[nodiscard]] bool openPort(int index) override;
    void closePort() override;
    [[nodiscard]] bool sendMessage(const unsigned char* data, int size) override;

  private:
    MIDIEndpoint m_destination = 0;
};
