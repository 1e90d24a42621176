#pragma once

#include "tests/fakes/alsa/FakeALSA.h"

inline constexpr int k_editorPort = 2; ///< of a device with three

/// A port of another program, connected both ways to one port of the device's client.
class COtherClient
{
  public:
    COtherClient(int deviceClient, int devicePort)
    {
        if (snd_seq_open(&m_sequencer, "default", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK) < 0)
            qFatal("no fake sequencer");
        client = snd_seq_client_id(m_sequencer);
        port = snd_seq_create_simple_port(m_sequencer, "Other", FakeALSA::k_both, SND_SEQ_PORT_TYPE_APPLICATION);
        connected = snd_seq_connect_to(m_sequencer, port, deviceClient, devicePort) == 0 &&
                    snd_seq_connect_from(m_sequencer, port, deviceClient, devicePort) == 0;
    }

    ~COtherClient()
    {
        snd_seq_close(m_sequencer);
    }

    COtherClient(const COtherClient&) = delete;
    COtherClient& operator=(const COtherClient&) = delete;

    void send(const QByteArray& message) const
    {
        FakeALSA::send(client, port, message);
    }

    [[nodiscard]] QByteArrayList received() const
    {
        return FakeALSA::received(client, port);
    }

    int client = 0;
    int port = 0;
    bool connected = false;

  private:
    snd_seq_t* m_sequencer = nullptr;
};
