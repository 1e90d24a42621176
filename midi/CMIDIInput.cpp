#include "midi/CMIDIInput.h"

#include "midi/CCircularBuffer.h"
#include "midi/CMIDIThread.h"
#include "midi/CMIDITransportObserver.h"

#include <algorithm>
#include <array>
#include <mutex>

namespace
{
/// Bytes of the delivery buffer that are zeroed before each drain: no message of the device is longer.
constexpr int k_zeroedBytes = 4096;
} // namespace

CMIDIInput::CMIDIInput() = default;
CMIDIInput::~CMIDIInput() = default;

int CMIDIInput::initialize()
{
    m_ring = std::make_unique<CCircularBuffer>(true);
    m_thread = std::make_unique<CMIDIThread>(this);
    return 0;
}

void CMIDIInput::registerObserver(CMIDITransportObserver* observer)
{
    m_observer = observer;
}

void CMIDIInput::unregisterObserver()
{
    m_observer = nullptr;
}

bool CMIDIInput::isMIDIConnect() const
{
    return m_connected;
}

void CMIDIInput::setConnected(bool connected)
{
    m_connected = connected;
}

void CMIDIInput::messageReceived()
{
    if (!m_ring)
        return;
    std::array<unsigned char, k_largestRecord> buffer;
    std::fill_n(buffer.begin(), k_zeroedBytes, static_cast<unsigned char>(0));
    int size = k_zeroedBytes;

    // One lock for the question and the read.
    const auto takeRecord = [&] {
        const std::scoped_lock lock(*m_ring);
        if (m_ring->avail() == 0)
            return false;
        readMessageFromBuffer(buffer.data(), &size);
        return true;
    };
    // Taken before the drain, so that everything that came before a note is delivered before it. A note that comes
    // during the drain brings a wake-up of its own.
    const bool overran = m_overran.exchange(false);
    const bool ended = m_ended.exchange(false);
    while (takeRecord()) {
        if (CMIDITransportObserver* observer = m_observer)
            observer->messageReceived(buffer.data(), size);
    }
    CMIDITransportObserver* observer = m_observer;
    if (overran && observer != nullptr)
        observer->receptionOverran();
    if (ended && observer != nullptr)
        observer->receptionEnded();
}

bool CMIDIInput::writeRecord(const unsigned char* data, quint16 length)
{
    if (!m_ring || length == 0)
        return false;
    constexpr int headerSize = sizeof length;
    const std::scoped_lock lock(*m_ring);
    if (m_ring->space() < headerSize + length) {
        noteOverrun();
        return false;
    }
    m_ring->write(reinterpret_cast<const unsigned char*>(&length), headerSize);
    m_ring->write(data, length);
    return true;
}

void CMIDIInput::readRecord(unsigned char* data, int* size)
{
    if (data == nullptr || size == nullptr || !m_ring)
        return;
    quint16 length = 0;
    const std::scoped_lock lock(*m_ring);
    m_ring->read(reinterpret_cast<unsigned char*>(&length), sizeof length);
    m_ring->read(data, length);
    *size = (*size & ~0xFFFF) | length;
}

void CMIDIInput::noteOverrun()
{
    m_overran = true;
}

void CMIDIInput::noteEnd()
{
    m_ended = true;
}

void CMIDIInput::wakeDelivery()
{
    if (m_thread)
        m_thread->wake();
}

void CMIDIInput::startDelivery()
{
    m_overran = false;
    m_ended = false;
    if (m_thread)
        m_thread->start(QThread::TimeCriticalPriority);
}

void CMIDIInput::stopDelivery()
{
    if (m_thread)
        m_thread->stop();
}

CCircularBuffer* CMIDIInput::ring() const
{
    return m_ring.get();
}
