#pragma once

#include "ctl/CEditorBus.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QObject>

/// The running editor on the session bus.
class CSessionBusEditor : public QObject, public CEditorBus
{
    Q_OBJECT

  public:
    /// See EditorBusMaker.
    [[nodiscard]] static CEditorBus* connectToBus(CEditorListener& listener, const EditorBusTimes& times);
    ~CSessionBusEditor() override;

    void ask(const QString& method, const QVariantList& arguments) override;

  private slots:
    void answer(QDBusPendingCallWatcher* call);
    void turned(int knob, int value);
    void changed(int knob, const QByteArray& settings);
    void lost();

  private:
    CSessionBusEditor(const QDBusConnection& bus, CEditorListener& listener, std::chrono::milliseconds patience);

    QDBusConnection m_bus;
    CEditorListener& m_listener;
    const std::chrono::milliseconds m_patience;
};
