#pragma once

#include <QByteArray>
#include <QStringList>

class CSimulatedDevice;
struct DeviceCommand;

/// The conversation with the user of the command-line device: lines in, lines out.
///
/// Device   borrowed; outlives the console.
class CDeviceConsole
{
  public:
    explicit CDeviceConsole(CSimulatedDevice& device);

    /// Carries out one line; the result is what to print, without line breaks.
    [[nodiscard]] QStringList execute(const QByteArray& line);

    /// The messages since the last call, a line each.
    [[nodiscard]] QStringList news();

    [[nodiscard]] bool wantsToQuit() const;

  private:
    [[nodiscard]] QStringList execute(const DeviceCommand& command);
    [[nodiscard]] QStringList show() const;

    CSimulatedDevice& m_device;
    qint64 m_nextTraffic = 0;
    bool m_wantsToQuit = false;
};
