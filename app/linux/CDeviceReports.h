#pragma once

#include "device/CMemAPIObserver.h"
#include "device/DeviceParams.h"

#include <QByteArray>
#include <QObject>

#include <memory>
#include <vector>

class CMemAPIWrapper;

/// Tells what the memory hears of its knobs, as it came: each turn, and each time that all settings of a knob were put
/// into the table. An edit of a single field by hand is not among them.
///
/// Threads  GUI thread, on which the signals come too.
/// Memory   goes after the memory, which it borrows: that goes on to call an observer that shares its id with others,
///          also when it is unregistered. The parent sees to it.
class CDeviceReports : public QObject
{
    Q_OBJECT

  public:
    CDeviceReports(QObject* parent, CMemAPIWrapper& memory);

    /// A knob's settings in the order of k_settingParams.
    [[nodiscard]] static QByteArray settingsOf(const CMemAPIWrapper& memory, int knob);

  signals:
    void turned(int knob, int value);

    /// isDevices   the device has said them; else a file, a command or the like.
    void changed(int knob, const QByteArray& settings, bool isDevices);

  private:
    class CObserver : public CMemAPIObserver
    {
      public:
        CObserver(CDeviceReports& reports, int id) : m_reports(reports), m_id(id) {}
        void paramChanged() override;

      private:
        CDeviceReports& m_reports;
        const int m_id;
    };

    void tell(int id);

    CMemAPIWrapper& m_memory;
    std::vector<std::unique_ptr<CMemAPIObserver>> m_observers;
};
