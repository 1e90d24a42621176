#pragma once

#include "midi/CMIDIPort.h"

/// Lists only the ports whose name contains k_jxPortName; the results still count all of the system's ports.
class CMIDIPortWrapper : public CMIDIPort
{
  public:
    int createInputPortList() override;
    int createOutputPortList() override;

  private:
    static void keepDevicePorts(PortList* list);
};
