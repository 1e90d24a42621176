#pragma once

#include "connection/ConnectionTimes.h"
#include "device/CMemAPIObserver.h"

#include <QString>

#include <atomic>

class CMemAPI;

/// The start handshake: repeats the start message until the device answers.
///
/// Threads  paramChanged(): MIDI delivery thread. Everything else: one thread, normally the GUI thread.
/// Borrows  the memory, which may be null and outlives this object. From construction to destruction this is the
///          memory's start-reply observer; the destructor waits for a reply that is being taken in.
class CStartConnectionManager : public CMemAPIObserver
{
  public:
    CStartConnectionManager(CMemAPI* memory, const QString& portName, const ConnectionTimes& times = {});
    ~CStartConnectionManager() override;
    CStartConnectionManager(const CStartConnectionManager&) = delete;
    CStartConnectionManager& operator=(const CStartConnectionManager&) = delete;

    /// Blocks until the device has answered, for ever if it does not: the caller knows that the device is there. An
    /// answer is seen at the end of a pause. A message that could not be sent is sent again like an unanswered one.
    /// The result of the last send; false when the answer had come before the first.
    [[nodiscard]] bool sendStartMessage();

    /// The steps of it, for a caller that gives up at last: one start message, and whether one was answered.
    /// false: not sent.
    [[nodiscard]] bool sendOnce();
    [[nodiscard]] bool isAnswered() const;

    void paramChanged() override;

  private:
    CMemAPI* m_memory;
    QString m_portName;
    std::atomic<bool> m_waiting = true;
    std::chrono::milliseconds m_startInterval;
};
