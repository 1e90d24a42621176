#pragma once

#include "app/ActivationToken.h"

#include <QObject>

#include <chrono>
#include <memory>

class CMainWindow;

/// How long a start waits for others.
struct JoinTimes
{
    std::chrono::milliseconds bus{200};       ///< for the session bus's first word
    std::chrono::milliseconds handOver{5000}; ///< for the running editor to take the request, or to have ended
    std::chrono::milliseconds pause{20};      ///< before an editor that is ending is asked again
};

/// Sees to it that a session has one editor: two would share the device, and each one's end would end the other's
/// connection. The editor owns the name org.ktzjx.Editor on the session bus; whoever finds it taken hands its file to
/// the owner and ends. Without a session bus, or with one that does not answer in time, each start is an editor of its
/// own.
///
/// Threads  GUI thread; one of its own answers the bus, between start() and the destructor.
/// Memory   goes before the application object and after the window: the name is free once the device is.
class CSingleEditor : public QObject
{
    Q_OBJECT

  public:
    enum class Start
    {
        Editor,     ///< this process is the editor
        HandedOver, ///< the running editor has the request
        Unanswered, ///< there is a running editor that answers nothing: it may hold the device
    };

    explicit CSingleEditor(const JoinTimes& times = {});
    ~CSingleEditor() override;
    CSingleEditor(const CSingleEditor&) = delete;
    CSingleEditor& operator=(const CSingleEditor&) = delete;

    /// file  path of the file to open as this process's caller gave it, empty for none; only a running editor gets it.
    /// Once; needs the application object. Blocks for the times given, a moment as a rule.
    [[nodiscard]] Start start(const QByteArray& file, const ActivationToken& token);

    /// Lets programs on the bus read, change and watch the window's device, as app/common/EditorBus.h says, until
    /// refuse(). The window is borrowed until then. Once.
    void offerDevice(CMainWindow& window);

    /// Takes no more requests: their callers wait for this process's end and are the editor then.
    void refuse();

  signals:
    /// Another start, or the desktop, wants the window, and the file in it if the path is not empty. From the thread
    /// that answers the bus.
    void requested(const QByteArray& path, const ActivationToken& token);

  private:
    class CBus;
    JoinTimes m_times;
    std::unique_ptr<CBus> m_bus; ///< null without a session bus
};
