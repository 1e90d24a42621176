#pragma once

#include <QtGlobal>

#include <atomic>
#include <memory>

class CCircularBuffer;
class CMIDIThread;
class CMIDITransportObserver;

/// An input port: what the MIDI service receives goes through a ring of records to one observer.
///
/// Record   2 bytes length (host order), then that many data bytes; no padding.
/// Threads  the MIDI service's thread writes records (writeRecord, wakeDelivery); the delivery thread reads them and
///          calls the observer (messageReceived); everything else belongs to the owner's thread.
/// Memory   the ring is allocated once, in initialize(); receiving and delivering never allocate.
/// Failure  a record that does not fit into the ring is dropped whole, and the observer told once the ring has been
///          drained. It is told too when nothing can come any more.
/// The owner calls closePort() before it destroys the object.
class CMIDIInput
{
  public:
    CMIDIInput();
    virtual ~CMIDIInput();
    CMIDIInput(const CMIDIInput&) = delete;
    CMIDIInput& operator=(const CMIDIInput&) = delete;

    /// Creates the ring and the delivery thread, which is not started yet. The platform's class sizes the ring.
    /// The result is the platform's status, 0 for success.
    virtual int initialize();

    /// Opens the source at an index of MIDIPlatform's list and starts the delivery thread.
    /// true, nothing changed: already open. false: the caller calls closePort().
    [[nodiscard]] virtual bool openPort(int index) = 0;

    /// Stops feeding, wakes and joins the delivery thread. The port can be opened again.
    virtual void closePort() = 0;

    /// Takes the oldest record out of the ring, whole.
    ///
    /// data     room for k_largestRecord bytes.
    /// size     its low-order 16 bits become the record's length; the upper ones stay, so the caller keeps them zero.
    /// Nothing happens when a pointer is null or there is no ring.
    virtual void readMessageFromBuffer(unsigned char* data, int* size) = 0;

    /// The one observer of this port: borrowed, null for none, replaces any earlier one.
    void registerObserver(CMIDITransportObserver* observer);
    void unregisterObserver();

    [[nodiscard]] bool isMIDIConnect() const;

    /// Drains the ring: hands every record to the observer, or drops it when there is none, and then tells it what the
    /// notes below say. Delivery thread only.
    void messageReceived();

    /// The largest record that a 16-bit length can name.
    static constexpr int k_largestRecord = 0xFFFF;

  protected:
    /// Bytes of the ring, enough for seconds of a flood.
    static constexpr int k_ringCapacity = 0x3C0000;

    /// Puts one record into the ring. A length of 0 makes no record.
    /// false: the ring has no room for the whole record, which is noted as lost, or does not exist; nothing was stored.
    bool writeRecord(const unsigned char* data, quint16 length);

    /// What readMessageFromBuffer() does on every platform.
    void readRecord(unsigned char* data, int* size);

    /// Notes for the observer, which hears of them after the records that are in the ring by now: something was lost;
    /// nothing comes any more. Called by whoever writes records; wakeDelivery() follows.
    void noteOverrun();
    void noteEnd();

    /// Wakes the delivery thread; called once after a batch of records and notes.
    void wakeDelivery();

    /// Forgets the notes of an earlier opening.
    void startDelivery();
    void stopDelivery();

    [[nodiscard]] CCircularBuffer* ring() const;
    void setConnected(bool connected);

  private:
    std::atomic<bool> m_connected = false;
    std::unique_ptr<CCircularBuffer> m_ring;
    std::unique_ptr<CMIDIThread> m_thread;
    std::atomic<CMIDITransportObserver*> m_observer = nullptr;
    std::atomic<bool> m_overran = false;
    std::atomic<bool> m_ended = false;
};
