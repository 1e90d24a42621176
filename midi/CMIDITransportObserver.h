#pragma once

/// Takes what an input port received.
class CMIDITransportObserver
{
  public:
    virtual ~CMIDITransportObserver() = default;

    /// One received record, exactly as it arrived: a whole message, a piece of one, or several.
    ///
    /// data     borrowed for the call.      size     bytes, at least 1.
    /// Threads  called on the input's delivery thread.
    /// The result says whether the record ended a message that was understood; the caller does not look at it.
    virtual bool messageReceived(const unsigned char* data, int size) = 0;
};
