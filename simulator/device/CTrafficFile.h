#pragma once

#include <QFile>

class CSimulatedDevice;

/// Every message of a simulated device in a text file, a line each as trafficText() writes it.
///
/// Device   borrowed; outlives this object.
class CTrafficFile
{
  public:
    explicit CTrafficFile(CSimulatedDevice& device);

    /// Writes what has passed since the last call.
    ~CTrafficFile();
    CTrafficFile(const CTrafficFile&) = delete;
    CTrafficFile& operator=(const CTrafficFile&) = delete;

    /// Begins the file anew. false: it cannot be written.
    [[nodiscard]] bool open(const QString& path);

    /// Adds the messages since the last call; they are in the file when it returns.
    void update();

  private:
    CSimulatedDevice& m_device;
    QFile m_file;
    qint64 m_nextTraffic = 0;
};
