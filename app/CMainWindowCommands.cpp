#include "app/CMainWindow.h"

#include "app/CListening.h"
#include "app/CMenuManager.h"
#include "app/Manual.h"
#include "app/common/CMessageBox.h"
#include "app/common/Constants.h"
#include "device/CMemAPIWrapper.h"
#include "file/CFileWrapper.h"
#include "widgets/CControlView.h"
#include "widgets/CLineEdit.h"
#include "widgets/CSlideEditor.h"

void CMainWindow::open()
{
    finishTyping();
    if (m_file && m_file->openFile() && m_memory)
        m_memory->updateAndSendAllKnobs();
}

void CMainWindow::applicationFileOpen()
{
    if (m_applicationFilePath.isEmpty() || !m_file)
        return;
    finishTyping();
    // Nothing can have been edited during the start-up. A request that comes while the question is open replaces the
    // path; one that comes later, while a failure is told, is pending anew.
    const bool goOn = m_initializing || m_file->checkSaveFile();
    m_applicationFilePending = false;
    if (!goOn)
        return;
    if (m_file->openFile(m_applicationFilePath) && m_memory)
        m_memory->updateAndSendAllKnobs();
}

void CMainWindow::save()
{
    finishTyping();
    // The file object has told the user of a failure.
    if (m_file)
        static_cast<void>(m_file->saveFile());
}

void CMainWindow::saveAs()
{
    finishTyping();
    if (m_file)
        static_cast<void>(m_file->saveAsFile());
}

CControlView* CMainWindow::selectedControlView() const
{
    return m_views.value(m_selectedView, nullptr);
}

void CMainWindow::finishTyping()
{
    if (auto* field = qobject_cast<CLineEdit*>(focusWidget()))
        field->accept();
}

void CMainWindow::sayOfSelected(const QString& what)
{
    const CControlView* view = selectedControlView();
    if (view == nullptr || m_listening == nullptr)
        return;
    const CSlideEditor* editor = view->selectedEditor();
    const QString control =
        editor != nullptr ? view->name() + QLatin1String(", ") + view->nameOf(editor) : view->name();
    m_listening->say(control + QLatin1Char(' ') + what);
}

void CMainWindow::copy()
{
    finishTyping();
    CControlView* view = selectedControlView();
    if (view == nullptr || !view->canCopy())
        return;
    view->copy();
    sayOfSelected(QStringLiteral("copied"));
}

void CMainWindow::paste()
{
    finishTyping();
    CControlView* view = selectedControlView();
    if (view == nullptr || !view->canPaste())
        return;
    view->paste();
    sayOfSelected(QStringLiteral("pasted"));
}

void CMainWindow::setEditMenuEnable()
{
    const CControlView* view = selectedControlView();
    m_menuManager->setMenuItemEnabledByID(CMenuManager::k_copyItem, view != nullptr && view->canCopy());
    m_menuManager->setMenuItemEnabledByID(CMenuManager::k_pasteItem, view != nullptr && view->canPaste());
}

void CMainWindow::conViewSelect(int index)
{
    m_selectedView = index;
    for (int knob = 0; knob < m_views.size(); ++knob)
        m_views[knob]->setMarked(knob == index);
}

void CMainWindow::revert()
{
    finishTyping();
    if (m_memory && CMessageBox::question(this, k_revertTitle, k_revertMessage, QMessageBox::Yes | QMessageBox::No,
                                          QMessageBox::No) == QMessageBox::Yes)
        m_memory->revertParams();
}

void CMainWindow::factoryReset()
{
    finishTyping();
    if (m_memory && CMessageBox::question(this, k_resetTitle, k_resetMessage, QMessageBox::Yes | QMessageBox::No,
                                          QMessageBox::No) == QMessageBox::Yes) {
        setAllDefaultParamsToMemAPI();
        // The observers know of the preset already.
        for (int knob = 0; knob < k_numOfKnobs; ++knob)
            m_memory->sendKnob(knob);
    }
}

void CMainWindow::manual()
{
    Manual::open(this,
                 [this] { CMessageBox::warning(this, QString(), k_errorManual, QMessageBox::Ok, QMessageBox::Ok); });
}
