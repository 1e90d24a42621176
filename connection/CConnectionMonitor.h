#pragma once

#include "connection/CConnectionWatch.h"

/// The watch of a program with windows: a loss is told in a message box.
class CConnectionMonitor : public CConnectionWatch
{
    Q_OBJECT

  public:
    /// A parent that is a widget is also the parent of the warning about a loss.
    using CConnectionWatch::CConnectionWatch;
    ~CConnectionMonitor() override;

  protected:
    /// Blocks until the warning is answered.
    void tellLoss() override;
};
