#pragma once

#include "device/CMemAPIProxyWrapper.h"

#include <QObject>

class CKnobLED;

/// Hears of every value that the device reports for a knob, while somebody listens to the ring.
///
/// Threads  GUI thread only.
class CRingWatch : public QObject, public CMemAPIProxyWrapper
{
    Q_OBJECT

  public:
    /// ring   becomes the parent. Whoever makes this binds it to the memory, and registers it.
    explicit CRingWatch(CKnobLED* ring);
    ~CRingWatch() override;

    void updateMemAPI() override;

  signals:
    /// Also for a value that is the same.
    void valueReported(QObject* ring);
};
