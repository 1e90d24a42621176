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

    /// Something that was received has been lost, in one or more places among the records of the last drain: whoever
    /// mirrors the sender's state has to ask for it again. Once for each drain at most, after its records.
    /// Threads  called on the input's delivery thread.
    virtual void receptionOverran() {}

    /// Nothing will be received any more, though the port is still open: the system's own reading has failed for good.
    /// Once for each opening of the port, after the last record. The port is not to be closed from inside the call,
    /// since closing waits for the delivery thread.
    /// Threads  called on the input's delivery thread.
    virtual void receptionEnded() {}
};
