#include "device/CMessageManager.h"

namespace
{
constexpr unsigned char k_sysExBegin = 0xF0;
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
    for (int i = 0; i < len; ++i) {
        // Only a new beginning empties the buffer: what strays in after an end is dropped by the next message.
        if (bytes[i] == k_sysExBegin)
            m_receiveBuffer.clear();
        appendToReceiveBuffer(bytes[i]);
        if (bytes[i] == k_sysExEnd)
            result = parseMessage(reinterpret_cast<const unsigned char*>(m_receiveBuffer.constData()),
                                  static_cast<int>(m_receiveBuffer.size()), type, data);
    }
    return result;
}

void CMessageManager::appendToReceiveBuffer(unsigned char byte)
{
    // An endless message must not fill the memory. Beyond the limit each byte replaces the one before it, which
    // decodes to the same: a message's meaning is in its first bytes and its last.
    if (m_receiveBuffer.size() == k_receiveBufferLimit)
        m_receiveBuffer.back() = static_cast<char>(byte);
    else
        m_receiveBuffer.append(static_cast<char>(byte));
}
