#pragma once

/// Hears that something it watches has changed, and reads the new value itself.
class CMemAPIObserver
{
  public:
    virtual ~CMemAPIObserver() = default;

    /// Threads  the GUI thread for edits, the MIDI delivery thread for what the device reports.
    virtual void paramChanged() = 0;
};
