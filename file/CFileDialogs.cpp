#include "file/CFile.h"

#include "app/common/CMessageBox.h"
#include "app/common/CWindowSize.h"
#include "app/common/Constants.h"
#include "app/common/Utilities.h"
#include "device/CMemAPI.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace
{
// ".CJX" of "KTZ-JX files (*.CJX)".
QString suffixOfFilter(const QString& filter)
{
    return filter.section(u'*', 1).section(u')', 0, 0);
}

/// Shows a dialog for one file on this machine. Empty: cancelled. The toolkit's calls that do all this at once leave no
/// way to say in front of which window the dialog belongs.
QString chosenName(QFileDialog& dialog, const QWidget* window)
{
    dialog.setSupportedSchemes({QStringLiteral("file")});
    Utilities::standInFrontOf(window, &dialog);
    new CWindowSize(&dialog);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}
} // namespace

bool CFile::checkSaveFile()
{
    if (m_memory == nullptr || !m_memory->isDirty())
        return true;
    const int answer = CMessageBox::question(
        m_parent, QString(), k_checkSave, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
    if (answer == QMessageBox::Yes)
        return saveFile();
    return answer != QMessageBox::Cancel;
}

bool CFile::openFile()
{
    if (!checkSaveFile())
        return false;
    QFileDialog dialog(nullptr, k_openDialogTitle, m_currentPath, getExtension());
    dialog.setFileMode(QFileDialog::ExistingFile);
    return openFile(chosenName(dialog, m_parent));
}

bool CFile::openFile(const QString& name)
{
    if (name.isEmpty())
        return false;
    QString error;
    const auto load = [&] {
        error = read(name);
        return error.isEmpty();
    };
    if (m_memory != nullptr ? m_memory->loadParamList(load) : load()) {
        m_currentPath = name;
        return true;
    }
    CMessageBox::warning(m_parent, k_openDialogTitle, error, QMessageBox::Ok, QMessageBox::Ok);
    return false;
}

bool CFile::saveFile()
{
    return QFileInfo(m_currentPath).isFile() ? writeAndTell(m_currentPath) : saveAsFile();
}

bool CFile::saveAsFile()
{
    const QString name = askForSaveName();
    return !name.isEmpty() && writeAndTell(name);
}

QString CFile::askForSaveName() const
{
    QString name = m_currentPath;
    if (QFileInfo(name).isDir())
        name = QDir(name).filePath(k_defaultFileName);
    while (true) {
        // The dialog's own overwrite question is off: ours follows.
        QFileDialog dialog(nullptr, k_saveDialogTitle, name, getExtension());
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
        name = chosenName(dialog, m_parent);
        if (name.isEmpty())
            return name;
        // Any other suffix is part of the name ("set 1.0"), and the dialog would hide such a file.
        const QString suffix = suffixOfFilter(getExtension());
        if (!name.endsWith(suffix, Qt::CaseInsensitive))
            name += suffix;
        const QFileInfo info(name);
        if (!info.exists() ||
            CMessageBox::question(m_parent, k_saveDialogTitle, k_fileExists.arg(info.fileName()),
                                  QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes)
            return name;
    }
}

bool CFile::writeAndTell(const QString& name)
{
    const bool wasDirty = m_memory != nullptr && m_memory->isDirty();
    // Before the file is made: what the device reports from here on may not be in it, and keeps its mark.
    if (m_memory != nullptr)
        m_memory->setDirty(false);
    const QString error = write(name);
    if (error.isEmpty()) {
        m_currentPath = name;
        return true;
    }
    if (wasDirty)
        m_memory->setDirty(true);
    CMessageBox::warning(m_parent, k_saveDialogTitle, error, QMessageBox::Ok, QMessageBox::Ok);
    return false;
}
