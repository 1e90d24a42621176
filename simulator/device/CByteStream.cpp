#include "simulator/device/CByteStream.h"

#include <utility>

namespace
{
constexpr unsigned char k_sysEx = 0xf0;
constexpr unsigned char k_endOfSysEx = 0xf7;
constexpr unsigned char k_firstStatus = 0x80;
constexpr unsigned char k_firstRealTime = 0xf8;
} // namespace

QList<QByteArray> CByteStream::feed(const QByteArray& bytes)
{
    for (const char byte : bytes)
        feedByte(byte);
    endOther();
    return std::exchange(m_pieces, {});
}

void CByteStream::clear()
{
    m_message.clear();
}

void CByteStream::feedByte(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    if (value == k_sysEx) {
        endMessage();
        m_message = QByteArray(1, byte);
    } else if (m_message.isEmpty() || value >= k_firstRealTime) {
        addOther(byte);
    } else if (value == k_endOfSysEx || value < k_firstStatus) {
        addToMessage(byte);
    } else {
        endMessage();
        addOther(byte);
    }
}

void CByteStream::addToMessage(char byte)
{
    m_message += byte;
    if (static_cast<unsigned char>(byte) == k_endOfSysEx || m_message.size() == k_longest)
        endMessage();
}

void CByteStream::addOther(char byte)
{
    m_other += byte;
}

void CByteStream::endMessage()
{
    endOther();
    if (!m_message.isEmpty())
        m_pieces += std::exchange(m_message, {});
}

void CByteStream::endOther()
{
    if (!m_other.isEmpty())
        m_pieces += std::exchange(m_other, {});
}
