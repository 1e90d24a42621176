#pragma once

#include "midi/alsa/ALSASequencer.h"
#include "midi/alsa/CALSAEventDecoder.h"
#include "simulator/transports/CPolledTransport.h"

#include <memory>
#include <vector>

/// The device as a client of the ALSA sequencer, "Trellwick KTZ-JX" with ports from "Port1" on. The last one speaks;
/// what comes to the others is read and dropped.
class CALSADeviceTransport : public CPolledTransport
{
  public:
    /// cables   number of ports, at least 1.
    explicit CALSADeviceTransport(int cables);
    ~CALSADeviceTransport() override;

    [[nodiscard]] QString open(CSimulatedDevice& device) override;
    [[nodiscard]] QString description() const override;
    [[nodiscard]] std::vector<pollfd> descriptors() const override;
    [[nodiscard]] bool process() override;

    void deviceSent(CSimulatedDevice& device, const QByteArray& packet) override;
    void deviceUnplugged(CSimulatedDevice& device) override;

  private:
    struct Closer
    {
        void operator()(snd_midi_event_t* encoder) const;
    };

    [[nodiscard]] QString createClient();
    [[nodiscard]] QString createPorts();
    void sendEvent(snd_seq_event_t& event);

    CSimulatedDevice* m_device = nullptr;
    ALSASequencer m_sequencer;
    CALSAEventDecoder m_decoder;
    std::unique_ptr<snd_midi_event_t, Closer> m_encoder;
    std::vector<int> m_ports;
};
