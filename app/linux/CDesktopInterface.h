#pragma once

#include "app/ActivationToken.h"

#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantList>

#include <atomic>

/// What the editor is to the desktop on the session bus: its interface org.freedesktop.Application.
///
/// Threads  lives in a thread that does nothing else, so that a caller has its answer at once, even while the GUI
///          thread waits for the device. refuse(): any thread.
class CDesktopInterface : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    /// From now on callers get an error: the editor ends and can take no more files.
    void refuse();

  signals:
    /// The user wants the window, and the file in it if the path, bytes as the system has them, is not empty.
    void requested(const QByteArray& path, const ActivationToken& token);

    // NOLINTBEGIN(readability-identifier-naming): the names are the interface's
  public slots:
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);

    /// The window shows one file: the last one.
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);

    /// There are no actions besides; whoever names one wants the window at least.
    Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameter,
                                     const QVariantMap& platformData);
    // NOLINTEND(readability-identifier-naming)

  private:
    void request(const QByteArray& path, const QVariantMap& platformData);

    std::atomic<bool> m_refusing = false;
};
