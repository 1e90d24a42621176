#pragma once

#include "app/ActivationToken.h"

#include <QObject>

#include <memory>

class CMainWindow;

/// Sees to it that a session has one editor: two would share the device, and each one's end would end the other's
/// connection. Whoever comes second hands its file to the first and ends.
///
/// Threads  GUI thread.
/// Memory   goes before the application object and after the window: the session is free for another once the device
/// is.
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

    /// file  path of the file to open as this process's caller gave it, empty for none; only a running editor gets it.
    /// Once; needs the application object. Blocks for a moment as a rule, for seconds where the other does not answer.
    [[nodiscard]] virtual Start start(const QByteArray& file, const ActivationToken& token) = 0;

    /// Lets other programs read, change and watch the window's device, as app/common/EditorBus.h says, until refuse().
    /// The window is borrowed until then. Once.
    virtual void offerDevice(CMainWindow& window) = 0;

    /// Takes no more requests: their callers wait for this process's end and are the editor then.
    virtual void refuse() = 0;

  signals:
    /// Another start, or the desktop, wants the window, and the file in it if the path is not empty. From any thread.
    void requested(const QByteArray& path, const ActivationToken& token);
};

/// The desktop's way. Null where the system itself keeps one instance of an application.
[[nodiscard]] std::unique_ptr<CSingleEditor> makeSingleEditor();
