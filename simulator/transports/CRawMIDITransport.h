#pragma once

#include "simulator/transports/CPolledTransport.h"

#include <QByteArray>

#include <alsa/asoundlib.h>

#include <memory>

/// The device at a raw MIDI device of the system, such as the far end of a USB gadget.
///
/// What the other side does not take at once is kept, up to k_mostKept bytes; what is beyond is dropped in whole
/// packets.
class CRawMIDITransport : public CPolledTransport
{
  public:
    /// name   as ALSA has it, such as "hw:0,0,2" for card, device and subdevice.
    explicit CRawMIDITransport(const QByteArray& name);
    ~CRawMIDITransport() override;

    [[nodiscard]] QString open(CSimulatedDevice& device) override;
    [[nodiscard]] QString description() const override;
    [[nodiscard]] std::vector<pollfd> descriptors() const override;
    [[nodiscard]] bool process() override;

    void deviceSent(CSimulatedDevice& device, const QByteArray& packet) override;
    void deviceUnplugged(CSimulatedDevice& device) override;

    static constexpr qsizetype k_mostKept = 65536;

  private:
    struct Closer
    {
        void operator()(snd_rawmidi_t* port) const;
    };
    using Port = std::unique_ptr<snd_rawmidi_t, Closer>;

    static void addDescriptors(const Port& port, std::vector<pollfd>& waits);
    [[nodiscard]] bool readAll();
    [[nodiscard]] bool writeKept();

    QByteArray m_name;
    CSimulatedDevice* m_device = nullptr;
    Port m_input;
    Port m_output;
    QByteArray m_kept;
};
