#pragma once

#include "app/common/CMutex.h"
#include "midi/CMIDITransportObserver.h"

#include <QByteArrayList>
#include <QSemaphore>
#include <QThread>

#include <atomic>

/// Notes every record and the thread that brought it. Can be held up in the middle of a call.
class CRecordingObserver : public CMIDITransportObserver
{
  public:
    bool messageReceived(const unsigned char* data, int size) override
    {
        if (m_holding)
            holdUp();
        note(QByteArray(reinterpret_cast<const char*>(data), size));
        return true;
    }

    /// Noted among the records, as k_overran and k_ended.
    void receptionOverran() override
    {
        note(k_overran);
    }

    void receptionEnded() override
    {
        note(k_ended);
    }

    static constexpr auto k_overran = "(overran)";
    static constexpr auto k_ended = "(ended)";

    [[nodiscard]] QByteArrayList records() const
    {
        const std::scoped_lock lock(m_mutex);
        // Not shared with this object: ThreadSanitizer cannot see how Qt's own library counts the sharers.
        QByteArrayList copy;
        for (const QByteArray& record : m_records)
            copy.append(QByteArray(record.constData(), record.size()));
        return copy;
    }

    [[nodiscard]] int count() const
    {
        const std::scoped_lock lock(m_mutex);
        return static_cast<int>(m_records.size());
    }

    [[nodiscard]] QThread* thread() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_thread;
    }

    /// From now on every call waits for a go(); entered() returns once one has begun to wait.
    void hold()
    {
        m_holding = true;
    }

    void entered()
    {
        m_entered.acquire();
    }

    void go(int calls = 1)
    {
        m_go.release(calls);
    }

    void letGo()
    {
        m_holding = false;
        m_go.release(1);
    }

  private:
    void note(const QByteArray& record)
    {
        const std::scoped_lock lock(m_mutex);
        m_records.append(record);
        m_thread = QThread::currentThread();
    }

    void holdUp()
    {
        m_entered.release();
        m_go.acquire();
    }

    mutable CMutex m_mutex;
    QByteArrayList m_records;
    QThread* m_thread = nullptr;
    std::atomic<bool> m_holding = false;
    QSemaphore m_entered;
    QSemaphore m_go;
};
