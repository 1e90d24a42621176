#pragma once

#include "app/common/CMutex.h"
#include "connection/CConnectionWatch.h"
#include "connection/CReceptionMonitor.h"
#include "ctl/CDeviceAccess.h"
#include "ctl/CDeviceMemory.h"
#include "ctl/CWireListener.h"

#include <set>

/// The time from start to end message with a device: finds it, shakes hands, keeps the connection, reads everything,
/// writes what is different.
///
/// Failure  whatever happened, the destructor sends the end message to a device that has answered, and closes the
///          ports.
class CDeviceSession : public CDeviceAccess, private CWireListener
{
    Q_OBJECT

  public:
    using CDeviceAccess::CDeviceAccess;
    ~CDeviceSession() override;

    [[nodiscard]] CtlStatus open(QDeadlineTimer deadline) override;
    [[nodiscard]] SettingsTable settings() const override;
    [[nodiscard]] CtlStatus readAll() override;

  protected:
    [[nodiscard]] CtlStatus writeKnob(std::size_t knob, const KnobSettingsRow& given) override;
    [[nodiscard]] CtlStatus askForNews() override; ///< a device says by itself what changes

  private:
    class CWatch : public CConnectionWatch
    {
      public:
        CWatch(CDeviceSession* session, const ConnectionTimes& times);
        ~CWatch() override;

      protected:
        void tellLoss() override;

      private:
        CDeviceSession* m_session;
    };

    [[nodiscard]] CtlStatus find();
    [[nodiscard]] CtlStatus openPorts();
    [[nodiscard]] CtlStatus checkIsFree();
    [[nodiscard]] CtlStatus shakeHands(QDeadlineTimer deadline);
    [[nodiscard]] CtlStatus watchConnection();
    [[nodiscard]] bool isSaidOfAll(const std::set<int>& knobs) const;
    void traceMessage(const char* direction, const QByteArray& message);

    void messageSent(const QByteArray& message) override;
    void messageReceived(const QByteArray& message, int type, const ParamList& data) override;
    void messageTaken(int type, const ParamList& data) override;

    bool m_isAnswered = false; ///< the device expects an end message

    mutable CMutex m_mutex;       ///< guards the next two
    std::set<int> m_settingsSaid; ///< knobs
    std::set<int> m_valuesSaid;

    // The memory is destroyed last: the others watch it.
    std::unique_ptr<CDeviceMemory> m_memory;
    std::unique_ptr<CWatch> m_watch;
    std::unique_ptr<CReceptionMonitor> m_reception;
};
