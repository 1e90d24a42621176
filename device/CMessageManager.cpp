#include "device/CMessageManager.h"

#include <algorithm>

namespace
{
constexpr unsigned char k_sysExBegin = 0xF0;

/// From the first byte through the first end, or up to the next beginning; everything if there is neither.
std::span<const unsigned char> firstPiece(std::span<const unsigned char> bytes)
{
    if (bytes.front() == k_sysExEnd)
        return bytes.first(1);
    const auto mark = std::find_if(bytes.begin() + 1, bytes.end(),
                                   [](unsigned char byte) { return byte == k_sysExBegin || byte == k_sysExEnd; });
    const auto length = static_cast<std::size_t>(mark - bytes.begin());
    return bytes.first(mark != bytes.end() && *mark == k_sysExEnd ? length + 1 : length);
}
} // namespace

int CMessageManager::getMessageLen(int type) const
{
    switch (type) {
    case k_startMessage:
    case k_keepMessage:
    case k_endMessage:
        return getConnectionMessageLen();
    default:
        return 0;
    }
}

bool CMessageManager::createMessage(int type, const ParamList& /*data*/, unsigned char* buf, int* len) const
{
    switch (type) {
    case k_startMessage:
        return createStartMessage(buf, len);
    case k_keepMessage:
        return createKeepMessage(buf, len);
    case k_endMessage:
        return createEndMessage(buf, len);
    default:
        return false;
    }
}

bool CMessageManager::parseMessageForMac(const unsigned char* bytes, int len, int* type, ParamList* data)
{
    if (bytes == nullptr || len <= 0 || type == nullptr)
        return false;

    bool result = false;
    for (std::span rest(bytes, static_cast<std::size_t>(len)); !rest.empty();) {
        const std::span<const unsigned char> piece = firstPiece(rest);
        // Only a new beginning empties the buffer: what strays in after an end is dropped by the next message.
        if (piece.front() == k_sysExBegin)
            m_receiveBuffer.resize(0);
        appendToReceiveBuffer(piece);
        if (piece.back() == k_sysExEnd)
            result = parseMessage(reinterpret_cast<const unsigned char*>(m_receiveBuffer.constData()),
                                  static_cast<int>(m_receiveBuffer.size()), type, data);
        rest = rest.subspan(piece.size());
    }
    return result;
}

void CMessageManager::appendToReceiveBuffer(std::span<const unsigned char> piece)
{
    // An endless message must not fill the memory. Beyond the limit each byte replaces the one before it, which
    // decodes to the same: a message's meaning is in its first bytes and its last.
    const auto room = static_cast<std::size_t>(k_receiveBufferLimit - m_receiveBuffer.size());
    const std::span<const unsigned char> kept = piece.first(std::min(piece.size(), room));
    m_receiveBuffer.append(reinterpret_cast<const char*>(kept.data()), static_cast<qsizetype>(kept.size()));
    if (kept.size() < piece.size())
        m_receiveBuffer.back() = static_cast<char>(piece.back());
}
