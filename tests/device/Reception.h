#pragma once

#include "device/CMemAPI.h"

#include <QByteArray>

inline const unsigned char* raw(const QByteArray& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}

/// Hands a record, given in hexadecimal, to a memory as an input port does.
inline bool receive(CMemAPI& memory, const char* hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    return memory.messageReceived(raw(bytes), static_cast<int>(bytes.size()));
}
