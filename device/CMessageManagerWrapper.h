#pragma once

#include "device/CMessageManager.h"

/// Every byte of the device's protocol.
class CMessageManagerWrapper : public CMessageManager
{
  public:
    [[nodiscard]] int getMessageLen(int type) const override;
    [[nodiscard]] bool createMessage(int type, const ParamList& data, unsigned char* buf, int* len) const override;
    [[nodiscard]] bool parseMessage(const unsigned char* msg, int len, int* type, ParamList* data) const override;
    [[nodiscard]] int getConnectionMessageLen() const override;
    [[nodiscard]] bool createStartMessage(unsigned char* buf, int* len) const override;
    [[nodiscard]] bool createKeepMessage(unsigned char* buf, int* len) const override;
    [[nodiscard]] bool createEndMessage(unsigned char* buf, int* len) const override;

    /// Whether the bytes begin with the header of every message that the device sends.
    [[nodiscard]] static bool checkMessageHeader(const unsigned char* msg, int len);

    /// createMessage() does not know this one: it has no data and a header of its own.
    [[nodiscard]] bool createRequestAllParamMessage(unsigned char* buf, int* len) const;

    /// The message of data's first knob. A setting that its list lacks is sent as 0; an empty map gives false.
    [[nodiscard]] bool createChangeParamMessage(const ParamList& data, unsigned char* buf, int* len) const;

    /// { knob -> its settings }, replacing an earlier entry of that knob. The closing byte is not looked at.
    [[nodiscard]] static bool parseChangeParamMessage(const unsigned char* msg, int len, ParamList* data);

    /// { 1000 + knob -> value }. The closing byte is not looked at.
    [[nodiscard]] static bool parseNoticeValueMessage(const unsigned char* msg, int len, ParamList* data);
};
