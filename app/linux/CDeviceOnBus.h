#pragma once

#include "app/linux/CDeviceReports.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantList>

#include <chrono>
#include <set>

class CMainWindow;
class CMemAPIWrapper;

/// The window's device on the session bus; the interface, its arguments and its errors stand in
/// app/common/EditorBus.h.
///
/// Threads  GUI thread, so that a call comes between two events and waits while the thread is blocked.
/// Borrows  the window, which has been initialized and outlives this object.
class CDeviceOnBus : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.ktzjx.Editor.Device")

  public:
    /// bus        the connection that offers this object.
    /// patience   for what the device says when it is asked.
    CDeviceOnBus(CMainWindow& window, const QDBusConnection& bus,
                 std::chrono::milliseconds patience = std::chrono::seconds(3));

    // NOLINTBEGIN(readability-identifier-naming): the names are the interface's
  public slots:
    Q_SCRIPTABLE QByteArray Read();
    Q_SCRIPTABLE QByteArray Ask();
    Q_SCRIPTABLE void Write(int knob, const QByteArray& settings);
    Q_SCRIPTABLE void Watch();
    // NOLINTEND(readability-identifier-naming)

  private:
    struct Question
    {
        int number = 0;
        QDBusMessage call;
        std::set<int> knobs; ///< of which nothing has come yet
    };

    [[nodiscard]] bool refuseWithoutDevice();
    [[nodiscard]] QByteArray allSettings() const;
    void hear();
    void takeAnswer(int knob);
    void giveUp(int number);
    void tellLoss();
    void tellWatchers(const QString& signal, const QVariantList& arguments);

    CMainWindow& m_window;
    CMemAPIWrapper& m_memory;
    QDBusConnection m_connection;
    const std::chrono::milliseconds m_patience;
    CDeviceReports* m_reports = nullptr; ///< once somebody wants them; the window owns it
    QList<Question> m_questions;
    int m_lastQuestion = 0;
    QDBusServiceWatcher m_watchers; ///< its services are the callers of Watch()
};
