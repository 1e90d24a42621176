#pragma once

#include "device/DeviceParams.h"

#include <QByteArray>

#include <span>

/// Message types: their numbers are also byte 7 of the messages that carry one.
enum MessageType : int
{
    k_startMessage = 0,
    k_keepMessage = 1,
    k_endMessage = 2,
    k_changeParamMessage = 3,
    k_noticeValueMessage = 4,     ///< received only
    k_requestAllParamMessage = 5, ///< sent only
};

/// The last byte of every message.
constexpr unsigned char k_sysExEnd = 0xF7;

/// Device-independent half of the codec: dispatches by type and cuts incoming bytes into SysEx messages.
///
/// Buffers  the creators fill a caller's buffer; *len is its size on entry and the message's length on success.
/// Failure  false, nothing written: null buffer or length, too small a buffer, a type that cannot be created.
/// Threads  the creators may run on any thread; parseMessageForMac() on one thread at a time.
class CMessageManager
{
  public:
    virtual ~CMessageManager() = default;

    /// Bytes of a message of this type; 0 for a type that is never sent or does not exist.
    [[nodiscard]] virtual int getMessageLen(int type) const;

    [[nodiscard]] virtual bool createMessage(int type, const ParamList& data, unsigned char* buf, int* len) const;

    /// Decodes one whole message. On success *type is set; type and data may also have been written on failure.
    [[nodiscard]] virtual bool parseMessage(const unsigned char* msg, int len, int* type, ParamList* data) const = 0;

    [[nodiscard]] virtual int getConnectionMessageLen() const = 0;
    [[nodiscard]] virtual bool createStartMessage(unsigned char* buf, int* len) const = 0;
    [[nodiscard]] virtual bool createKeepMessage(unsigned char* buf, int* len) const = 0;
    [[nodiscard]] virtual bool createEndMessage(unsigned char* buf, int* len) const = 0;

    /// Takes the next bytes of the device's stream and decodes every message that ends in them, all into the same
    /// type and map, so that the type is the last one's. A message may begin in an earlier call.
    /// The result is that of the last message decoded; false when none ended here.
    bool parseMessageForMac(const unsigned char* bytes, int len, int* type, ParamList* data);

  protected:
    /// Bytes kept of one message. Every message that means something is shorter.
    static constexpr int k_receiveBufferLimit = 256;

  private:
    void appendToReceiveBuffer(std::span<const unsigned char> piece);

    QByteArray m_receiveBuffer;
};
