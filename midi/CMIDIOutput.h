#pragma once

#include <atomic>
#include <chrono>
#include <functional>

/// An output port: sends whole messages, at once, on the caller's thread.
///
/// Threads  one call of openPort, closePort or sendMessage at a time; the connected flag may be used on any thread.
/// The owner calls closePort() before it destroys the object.
class CMIDIOutput
{
  public:
    CMIDIOutput() = default;
    virtual ~CMIDIOutput() = default;
    CMIDIOutput(const CMIDIOutput&) = delete;
    CMIDIOutput& operator=(const CMIDIOutput&) = delete;

    /// The result is the platform's status, 0 for success.
    virtual int initialize();

    /// Opens the destination at an index of MIDIPlatform's list.
    /// true, nothing changed: already open. false: the caller calls closePort().
    [[nodiscard]] virtual bool openPort(int index) = 0;

    /// Closes the port, which can be opened again.
    virtual void closePort() = 0;

    /// Sends one message to the open destination, in packets of at most k_packetLimit bytes.
    ///
    /// data   borrowed for the call, not null.      size   bytes, at least 1.
    /// Blocks k_packetPause between packets, none before the first or after the last.
    /// false, nothing sent: closed, not connected, null data, size 0.
    /// false, earlier packets already sent: the system refused a packet. There is no retry.
    [[nodiscard]] virtual bool sendMessage(const unsigned char* data, int size) = 0;

    /// The connected flag: set by openPort() and closePort(), and cleared from outside when the device is lost.
    [[nodiscard]] bool isMIDIConnect() const;
    void setMIDIConnection(bool connected);

    static constexpr int k_packetLimit = 256;
    static constexpr std::chrono::microseconds k_packetPause{100};

  protected:
    /// Hands one packet of 1 to k_packetLimit bytes, borrowed for the call, to the system. false: refused.
    using SendPacket = std::function<bool(const unsigned char* data, int size)>;

    /// What sendMessage() does on every platform once its own port is known to be open: checks the flag, the data and
    /// the size, and hands the message over packet by packet, with the pause between them. Results as in sendMessage().
    [[nodiscard]] bool sendInPackets(const unsigned char* data, int size, const SendPacket& sendPacket) const;

  private:
    std::atomic<bool> m_connected = false;
};
