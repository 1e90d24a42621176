#pragma once

#include <QWidget>

/// A window that counts the locks of the views over it.
class CLockedWindow : public QWidget
{
    Q_OBJECT

  public:
    int m_locks = 0;

  public slots:
    void windowLock()
    {
        ++m_locks;
    }

    void windowUnlock()
    {
        --m_locks;
    }
};
