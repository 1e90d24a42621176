#include "tests/support/CFileDialogAnswer.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

CFileDialogAnswer::CFileDialogAnswer(const QStringList& names) : m_names(names)
{
    startTimer(5);
}

const QList<CFileDialogAnswer::Dialog>& CFileDialogAnswer::dialogs() const
{
    return m_dialogs;
}

void CFileDialogAnswer::timerEvent(QTimerEvent* /*e*/)
{
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible())
        return;
    auto* edit = dialog->findChild<QLineEdit*>();
    if (!edit->hasFocus()) {
        // The dialog follows what is typed only while the field has the focus.
        dialog->activateWindow();
        edit->setFocus();
        return;
    }
    m_dialogs.append({dialog->windowTitle(), dialog->directory().absolutePath(), edit->text(), dialog->nameFilters(),
                      dialog->acceptMode() == QFileDialog::AcceptSave, dialog->parentWidget() != nullptr,
                      !dialog->testOption(QFileDialog::DontConfirmOverwrite)});
    answer(*dialog, m_names.isEmpty() ? QString() : m_names.takeFirst());
}

void CFileDialogAnswer::answer(QFileDialog& dialog, const QString& name)
{
    if (name.isNull()) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        return;
    }
    auto* edit = dialog.findChild<QLineEdit*>();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, name);
    const auto button =
        dialog.acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save : QDialogButtonBox::Open;
    QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}
