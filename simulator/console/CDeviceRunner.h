#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QStringList>

#include <cstdio>

class CDeviceConsole;
class CPolledTransport;
class CSimulatedDevice;

/// The loop of the command-line device: waits for MIDI and for commands, and moves the device's clock with real time.
///
/// Borrowed   everything; all of it outlives the runner.
class CDeviceRunner
{
  public:
    /// transport     open, with the device plugged in.
    /// input         descriptor of the commands, a line each.
    /// output        where every line goes, flushed at once, so that scripts can follow it.
    /// keepRunning   whether the end of the commands leaves the device running.
    CDeviceRunner(CSimulatedDevice& device, CPolledTransport& transport, int input, std::FILE* output,
                  bool keepRunning);

    /// Returns true when the commands say so or have ended, false when the other side has gone for good.
    [[nodiscard]] bool run();

  private:
    void waitForNews() const;
    void readCommands(CDeviceConsole& console);
    void executeLines(CDeviceConsole& console);
    [[nodiscard]] bool inputIsReady() const;
    void print(const QStringList& lines) const;

    CSimulatedDevice& m_device;
    CPolledTransport& m_transport;
    int m_input;
    std::FILE* m_output;
    bool m_keepRunning;
    bool m_inputEnded = false;
    QByteArray m_unfinishedLine;
    QElapsedTimer m_sinceStart;
};
