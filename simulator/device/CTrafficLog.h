#pragma once

#include <QByteArray>
#include <QList>

#include <deque>

/// One message that the device received, or one packet that it sent.
struct Traffic
{
    enum class Direction
    {
        ToDevice,
        FromDevice
    };

    qint64 number = 0; ///< counted from 0 over the log's whole life
    qint64 time = 0;   ///< milliseconds of the device's clock
    Direction direction = Direction::ToDevice;
    QByteArray bytes;
};

/// The last messages of both directions; older ones are forgotten, so that a device can run for days.
class CTrafficLog
{
  public:
    void add(qint64 time, Traffic::Direction direction, const QByteArray& bytes);

    /// What is still known from this number on, oldest first.
    [[nodiscard]] QList<Traffic> since(qint64 number) const;

    /// Forgets all; the numbers go on.
    void clear();

    static constexpr int k_limit = 20'000;

  private:
    std::deque<Traffic> m_entries;
    qint64 m_next = 0;
};
