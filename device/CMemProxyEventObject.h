#pragma once

#include <QObject>

class CMemAPIProxy;

/// Carries a proxy's notification to the thread that the proxy was built on, the GUI thread.
class CMemProxyEventObject : public QObject
{
    Q_OBJECT

  public:
    /// Borrows the proxy, which owns this object; null for none.
    explicit CMemProxyEventObject(CMemAPIProxy* proxy);

    /// Any thread; returns at once.
    void paramUpdate();

  public slots:
    void paramUpdateSlot();

  signals:
    void paramUpdateSignal();

  private:
    CMemAPIProxy* m_proxy;
};
