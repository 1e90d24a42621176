#include "device/CMessageManagerWrapper.h"

#include <algorithm>
#include <array>
#include <span>

namespace
{
constexpr std::array<unsigned char, 7> k_header{0xF0, 0x43, 0x10, 0x3E, 0x18, 0x05, 0x02};
constexpr std::array<unsigned char, 10> k_requestAllParam{0xF0, 0x43, 0x30, 0x3E, 0x18, 0x05, 0x02, 0x00, 0x7F, 0xF7};

constexpr int k_typeOffset = 7;
constexpr int k_knobOffset = 8;
constexpr int k_firstValueOffset = 9;

constexpr int k_connectionMessageLen = 9;
constexpr int k_noticeValueMessageLen = 11;
constexpr int k_changeParamMessageLen = k_firstValueOffset + static_cast<int>(k_numOfSettings) + 1;

bool hasRoom(const unsigned char* buf, const int* len, int needed)
{
    return buf != nullptr && len != nullptr && *len >= needed;
}

void fill(std::span<const unsigned char> message, unsigned char* buf, int* len)
{
    std::ranges::copy(message, buf);
    *len = static_cast<int>(message.size());
}

bool createConnectionMessage(MessageType type, unsigned char* buf, int* len)
{
    if (!hasRoom(buf, len, k_connectionMessageLen))
        return false;
    std::array<unsigned char, k_connectionMessageLen> message{};
    std::ranges::copy(k_header, message.begin());
    message[k_typeOffset] = static_cast<unsigned char>(type);
    message.back() = k_sysExEnd;
    fill(message, buf, len);
    return true;
}
} // namespace

int CMessageManagerWrapper::getMessageLen(int type) const
{
    switch (type) {
    case k_changeParamMessage:
        static_assert(k_changeParamMessageLen < k_receiveBufferLimit);
        return k_changeParamMessageLen;
    case k_requestAllParamMessage:
        return static_cast<int>(k_requestAllParam.size());
    default:
        return CMessageManager::getMessageLen(type);
    }
}

bool CMessageManagerWrapper::createMessage(int type, const ParamList& data, unsigned char* buf, int* len) const
{
    if (type == k_changeParamMessage && createChangeParamMessage(data, buf, len))
        return true;
    return CMessageManager::createMessage(type, data, buf, len);
}

int CMessageManagerWrapper::getConnectionMessageLen() const
{
    return k_connectionMessageLen;
}

bool CMessageManagerWrapper::createStartMessage(unsigned char* buf, int* len) const
{
    return createConnectionMessage(k_startMessage, buf, len);
}

bool CMessageManagerWrapper::createKeepMessage(unsigned char* buf, int* len) const
{
    return createConnectionMessage(k_keepMessage, buf, len);
}

bool CMessageManagerWrapper::createEndMessage(unsigned char* buf, int* len) const
{
    return createConnectionMessage(k_endMessage, buf, len);
}

bool CMessageManagerWrapper::createRequestAllParamMessage(unsigned char* buf, int* len) const
{
    if (!hasRoom(buf, len, static_cast<int>(k_requestAllParam.size())))
        return false;
    fill(k_requestAllParam, buf, len);
    return true;
}

bool CMessageManagerWrapper::createChangeParamMessage(const ParamList& data, unsigned char* buf, int* len) const
{
    if (!hasRoom(buf, len, k_changeParamMessageLen) || data.isEmpty())
        return false;
    const int knob = data.firstKey().toInt();
    const ParamList settings = data.first().toMap();

    std::array<unsigned char, k_changeParamMessageLen> message{};
    std::ranges::copy(k_header, message.begin());
    message[k_typeOffset] = k_changeParamMessage;
    message[k_knobOffset] = static_cast<unsigned char>(knob);
    std::ranges::transform(k_settingCategories, message.begin() + k_firstValueOffset, [&](int category) {
        return static_cast<unsigned char>(settings.value(paramKey(category + knob)).toInt());
    });
    message.back() = k_sysExEnd;
    fill(message, buf, len);
    return true;
}

bool CMessageManagerWrapper::checkMessageHeader(const unsigned char* msg, int len)
{
    return msg != nullptr && len >= static_cast<int>(k_header.size()) &&
           std::equal(k_header.begin(), k_header.end(), msg);
}

bool CMessageManagerWrapper::parseMessage(const unsigned char* msg, int len, int* type, ParamList* data) const
{
    if (msg == nullptr || len <= k_typeOffset || type == nullptr || !checkMessageHeader(msg, len))
        return false;

    bool parsed = false;
    switch (msg[k_typeOffset]) {
    case k_startMessage:
    case k_keepMessage:
    case k_endMessage:
        parsed = true;
        break;
    case k_changeParamMessage:
        parsed = parseChangeParamMessage(msg, len, data);
        break;
    case k_noticeValueMessage:
        parsed = parseNoticeValueMessage(msg, len, data);
        break;
    default:
        return false;
    }
    *type = msg[k_typeOffset];
    return parsed && msg[len - 1] == k_sysExEnd;
}

bool CMessageManagerWrapper::parseChangeParamMessage(const unsigned char* msg, int len, ParamList* data)
{
    if (msg == nullptr || data == nullptr || len < k_changeParamMessageLen)
        return false;
    const int knob = msg[k_knobOffset];
    ParamList settings;
    for (std::size_t i = 0; i < k_settingCategories.size(); ++i)
        settings.insert(paramKey(k_settingCategories[i] + knob), static_cast<int>(msg[k_firstValueOffset + i]));
    data->insert(paramKey(knob), settings);
    return true;
}

bool CMessageManagerWrapper::parseNoticeValueMessage(const unsigned char* msg, int len, ParamList* data)
{
    if (msg == nullptr || data == nullptr || len < k_noticeValueMessageLen)
        return false;
    data->insert(paramKey(k_knobValueCategory + msg[k_knobOffset]), static_cast<int>(msg[k_firstValueOffset]));
    return true;
}
