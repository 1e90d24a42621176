#pragma once

#include <QFileDialog>
#include <QList>
#include <QObject>
#include <QStringList>

/// Waits in the event loop for file dialogs and answers each as a user does: types a name and presses the accept
/// button, or cancels with Escape. Keeps what they said; a dialog that nobody expects is cancelled and kept too.
class CFileDialogAnswer : public QObject
{
    Q_OBJECT

  public:
    /// The names to type, one a dialog; a null string cancels.
    explicit CFileDialogAnswer(const QStringList& names);

    struct Dialog
    {
        QString title;
        QString folder;
        QString proposedName;
        QStringList filters;
        bool saves = false;
        bool hasParent = false;
        bool asksBeforeOverwrite = false;
    };

    [[nodiscard]] const QList<Dialog>& dialogs() const;

  protected:
    void timerEvent(QTimerEvent* e) override;

  private:
    void answer(QFileDialog& dialog, const QString& name);

    QStringList m_names;
    QList<Dialog> m_dialogs;
};
