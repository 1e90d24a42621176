#pragma once

#include "app/CSingleEditor.h"

#include <chrono>

/// How long a start waits for others.
struct JoinTimes
{
    std::chrono::milliseconds bus{200};       ///< for the session bus's first word
    std::chrono::milliseconds handOver{5000}; ///< for the running editor to take the request, or to have ended
    std::chrono::milliseconds pause{20};      ///< before an editor that is ending is asked again
};

/// The editor owns the name org.ktzjx.Editor on the session bus; whoever finds it taken hands its file to the owner and
/// ends. Without a session bus, or with one that does not answer in time, each start is an editor of its own.
///
/// Threads  one of its own answers the bus, between start() and the destructor.
class CSingleEditorOnBus : public CSingleEditor
{
    Q_OBJECT

  public:
    explicit CSingleEditorOnBus(const JoinTimes& times = {});
    ~CSingleEditorOnBus() override;
    CSingleEditorOnBus(const CSingleEditorOnBus&) = delete;
    CSingleEditorOnBus& operator=(const CSingleEditorOnBus&) = delete;

    [[nodiscard]] Start start(const QByteArray& file, const ActivationToken& token) override;
    void offerDevice(CMainWindow& window) override;
    void refuse() override;

  private:
    class CBus;
    JoinTimes m_times;
    std::unique_ptr<CBus> m_bus; ///< null without a session bus
};
