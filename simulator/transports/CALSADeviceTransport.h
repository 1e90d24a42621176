#pragma once

#include "simulator/transports/CPolledTransport.h"

#include <alsa/asoundlib.h>

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
        void operator()(snd_seq_t* sequencer) const;
        void operator()(snd_midi_event_t* coder) const;
    };

    [[nodiscard]] QString createClient();
    [[nodiscard]] QString createPorts();
    [[nodiscard]] QByteArray bytesOf(const snd_seq_event_t& event);
    void sendEvent(snd_seq_event_t& event);

    CSimulatedDevice* m_device = nullptr;
    std::unique_ptr<snd_seq_t, Closer> m_sequencer;
    std::unique_ptr<snd_midi_event_t, Closer> m_coder;
    std::vector<int> m_ports;
};
