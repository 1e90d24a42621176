#include "file/CFile.h"

#include "app/common/CMessageBox.h"
#include "app/common/Constants.h"
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
    return checkSaveFile() &&
           openFile(QFileDialog::getOpenFileName(nullptr, k_openDialogTitle, m_currentPath, getExtension()));
}

bool CFile::openFile(const QString& name)
{
    if (name.isEmpty())
        return false;
    const bool wasDirty = m_memory != nullptr && m_memory->isDirty();
    const QString error = read(name);
    if (!error.isEmpty()) {
        // What was read before the fault is in the memory, but it is no edit of the user's.
        if (m_memory != nullptr)
            m_memory->setDirty(wasDirty);
        CMessageBox::warning(m_parent, k_openDialogTitle, error, QMessageBox::Ok, QMessageBox::Ok);
        return false;
    }
    fileIsCurrent(name);
    return true;
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
        name = QFileDialog::getSaveFileName(nullptr, k_saveDialogTitle, name, getExtension(), nullptr,
                                            QFileDialog::DontConfirmOverwrite);
        if (name.isEmpty())
            return name;
        if (QFileInfo(name).suffix().isEmpty())
            name += suffixOfFilter(getExtension());
        const QFileInfo info(name);
        if (!info.exists() ||
            CMessageBox::question(m_parent, k_saveDialogTitle, k_fileExists.arg(info.fileName()),
                                  QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes)
            return name;
    }
}

bool CFile::writeAndTell(const QString& name)
{
    const QString error = write(name);
    if (!error.isEmpty()) {
        CMessageBox::warning(m_parent, k_saveDialogTitle, error, QMessageBox::Ok, QMessageBox::Ok);
        return false;
    }
    fileIsCurrent(name);
    return true;
}

void CFile::fileIsCurrent(const QString& name)
{
    m_currentPath = name;
    if (m_memory != nullptr)
        m_memory->setDirty(false);
}
