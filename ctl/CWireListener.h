#pragma once

#include "device/DeviceParams.h"

#include <QByteArray>

/// Who hears every message that passes between a memory and its device.
class CWireListener
{
  public:
    virtual ~CWireListener() = default;

    virtual void messageSent(const QByteArray& message) = 0; ///< any thread, before it is on its way

    /// Whole, of whatever kind. Delivery thread, before the memory knows what it says.
    virtual void messageReceived(const QByteArray& message, int type, const ParamList& data) = 0;

    /// The memory holds now what was received. Delivery thread.
    virtual void messageTaken(const ParamList& data) = 0;
};
