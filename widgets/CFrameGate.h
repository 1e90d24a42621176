#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

/// Lets repaint requests through at most once in a frame of the screen, the last one always, and at once when the gate
/// has been quiet. Nothing runs while no request waits.
///
/// Frames are counted by the clock, for every gate alike: requests that wait at several gates pass together, so that
/// the window goes to the screen once for all of them.
///
/// Threads  that of the object.
class CFrameGate : public QObject
{
    Q_OBJECT

  public:
    /// Time that never goes back, counted from any moment.
    using Clock = std::function<std::chrono::milliseconds()>;

    /// Of a frame: the shortest whole time that keeps to 60 in any second.
    static constexpr std::chrono::milliseconds k_interval{17};

    explicit CFrameGate(QObject* parent = nullptr, Clock clock = monotonicClock);

    /// Has frame() emitted, now or when the present frame is over.
    void request();

    /// Whether a request waits.
    [[nodiscard]] bool isPending() const;

  signals:
    void frame();

  private:
    static std::chrono::milliseconds monotonicClock();
    void open();

    Clock m_clock;
    std::chrono::milliseconds::rep m_lastFrame = -1; ///< number, from the clock's zero
    QTimer m_timer{this};
};
