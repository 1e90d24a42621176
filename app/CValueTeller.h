#pragma once

#include <QBasicTimer>
#include <QList>
#include <QObject>
#include <QPointer>

#include <chrono>
#include <functional>

/// Tells of values that change, never faster than somebody can listen: the first at once, then each object's newest
/// value once an interval. No timer runs while nothing changes.
///
/// Threads  GUI thread only.
class CValueTeller : public QObject
{
  public:
    using Tell = std::function<void(QObject*)>;

    explicit CValueTeller(Tell tell, std::chrono::milliseconds interval = std::chrono::milliseconds(300));

    /// The object's value has changed. An object that goes before its turn is left out.
    void changed(QObject* object);

  protected:
    void timerEvent(QTimerEvent* event) override;

  private:
    Tell m_tell;
    std::chrono::milliseconds m_interval;
    QBasicTimer m_timer;
    QList<QPointer<QObject>> m_changed;
};
