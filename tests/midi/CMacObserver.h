#pragma once

#include "app/common/CMutex.h"
#include "midi/CMIDITransportObserver.h"

#include <QByteArray>
#include <QList>

#include <string>
#include <vector>

/// Keeps what an input port delivers. Delivery on one thread, records() on another; they share no data of Qt's, whose
/// reference counts ThreadSanitizer does not see.
class CMacObserver : public CMIDITransportObserver
{
  public:
    bool messageReceived(const unsigned char* data, int size) override
    {
        const std::scoped_lock lock(m_mutex);
        m_records.emplace_back(data, data + size);
        return true;
    }

    [[nodiscard]] QList<QByteArray> records() const
    {
        const std::scoped_lock lock(m_mutex);
        QList<QByteArray> copies;
        for (const std::string& record : m_records)
            copies.append(QByteArray::fromStdString(record));
        return copies;
    }

  private:
    mutable CMutex m_mutex;
    std::vector<std::string> m_records;
};
