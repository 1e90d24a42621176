#pragma once

#include "ctl/CDeviceAccess.h"
#include "ctl/CEditorBus.h"

/// The device by way of the editor, which has the connection and does what it is asked as an edit by hand: its pages
/// follow, its file counts as changed.
///
/// Failure  NoDevice also where the editor cannot be asked, is not connected, or is busy with its user.
class CEditorSession : public CDeviceAccess, private CEditorListener
{
    Q_OBJECT

  public:
    CEditorSession(const Options& options, const CtlTimes& times, CConsole& console, const CStopRequest& stop,
                   EditorBusMaker makeBus);

    [[nodiscard]] CtlStatus open(QDeadlineTimer deadline) override;
    [[nodiscard]] SettingsTable settings() const override;
    [[nodiscard]] CtlStatus readAll() override;
    [[nodiscard]] CtlStatus beginWatch(SettingsTable* held) override;

  protected:
    [[nodiscard]] CtlStatus writeKnob(std::size_t knob, const KnobSettingsRow& given) override;

  private:
    /// Asks and waits; m_answer is what the editor said. An edit is waited for though a stop is requested.
    [[nodiscard]] CtlStatus ask(const QString& method, const QVariantList& edit = {});
    [[nodiscard]] CtlStatus askForSettings(const QString& method);
    [[nodiscard]] CtlStatus refused();

    void answered(const QString& error, const QByteArray& bytes) override;
    void turned(int knob, int value) override;
    void changed(int knob, const QByteArray& settings) override;
    void lost() override;

    const EditorBusMaker m_makeBus;
    QDeadlineTimer m_deadline; ///< until which a user is waited for who keeps the editor busy
    SettingsTable m_held;
    bool m_isAnswered = false;
    QString m_refusal; ///< the error's name
    QByteArray m_answer;
    std::unique_ptr<CEditorBus> m_bus; ///< goes first: it calls this object
};
