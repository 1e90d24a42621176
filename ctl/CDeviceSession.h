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

    /// The moment is the end of the device's answer to readAll(): a device says by itself what changes. Where it did
    /// not say all values, it is now.
    [[nodiscard]] CtlStatus beginWatch(SettingsTable* held) override;

  protected:
    [[nodiscard]] CtlStatus writeKnob(std::size_t knob, const KnobSettingsRow& given) override;

  private:
    /// What the device says when it is asked for everything.
    struct Answer
    {
        void take(const KnobNews& said);
        [[nodiscard]] bool hasSettings() const;
        [[nodiscard]] bool isWhole() const; ///< with values

        SettingsTable settings;
        std::set<std::size_t> values; ///< the knobs whose value was said
        bool isOver = false;          ///< whole, or not waited for any longer
    };

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
    [[nodiscard]] Answer answer() const; ///< as it is now
    void traceMessage(const char* direction, const QByteArray& message);

    void messageSent(const QByteArray& message) override;
    void messageReceived(const QByteArray& message, int type, const ParamList& data) override;
    void messageTaken(const ParamList& data) override;

    bool m_isAnswered = false; ///< the device expects an end message

    mutable CMutex m_answerMutex; ///< guards the answer
    Answer m_answer;

    // The memory is destroyed last: the others watch it.
    std::unique_ptr<CDeviceMemory> m_memory;
    std::unique_ptr<CWatch> m_watch;
    std::unique_ptr<CReceptionMonitor> m_reception;
};
