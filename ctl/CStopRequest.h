#pragma once

#include <QObject>

#include <array>
#include <atomic>

class QSocketNotifier;

/// The wish that a command ends before it is done, as a signal or a test has it.
///
/// Threads  request(): any, also inside a signal handler. isRequested() and number(): any. requested() is emitted from
///          the event loop of the thread that made the object.
class CStopRequest : public QObject
{
    Q_OBJECT

  public:
    CStopRequest();
    ~CStopRequest() override;

    /// number   the signal's, at least 1. The first one counts.
    void request(int number);

    [[nodiscard]] bool isRequested() const;
    [[nodiscard]] int number() const; ///< 0 without a request

  signals:
    void requested();

  private:
    std::atomic<int> m_number = 0;
    std::array<int, 2> m_pipe{-1, -1}; ///< or none, where the system has none left: then only a look finds the request
    QSocketNotifier* m_notifier = nullptr;
};
