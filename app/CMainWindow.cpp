#include "app/CMainWindow.h"

#include "app/CListening.h"
#include "app/CMenuManager.h"
#include "app/CopiedSettings.h"
#include "app/common/CWindowSize.h"
#include "app/common/Constants.h"
#include "app/common/SkinPixmap.h"
#include "app/common/Utilities.h"
#include "app/common/WindowSystem.h"
#include "connection/CConnectionMonitor.h"
#include "connection/CReceptionMonitor.h"
#include "connection/CStartConnectionManager.h"
#include "device/CMemAPIProxy.h"
#include "device/CMemAPIWrapper.h"
#include "file/CFileWrapper.h"
#include "style/CAboutView.h"
#include "style/COnlineMark.h"
#include "style/CSplashView.h"
#include "ui_MainWindow.h"
#include "widgets/CControlView.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QPainter>
#include <QThread>

#include <array>
#include <vector>

namespace
{
constexpr QSize k_controlViewSize(87, 279);
constexpr std::array<QRect, k_numOfKnobs> k_ControlViewRect{
    QRect(QPoint(23, 58), k_controlViewSize),   QRect(QPoint(126, 58), k_controlViewSize),
    QRect(QPoint(229, 58), k_controlViewSize),  QRect(QPoint(332, 58), k_controlViewSize),
    QRect(QPoint(23, 341), k_controlViewSize),  QRect(QPoint(126, 341), k_controlViewSize),
    QRect(QPoint(229, 341), k_controlViewSize), QRect(QPoint(332, 341), k_controlViewSize),
};
constexpr QRect k_viewRect(12, 45, 421, 580);
constexpr QPoint k_onlineMarkPos(403, 6);

constexpr char k_backImagePath[] = ":/images/ktz_back.png";
constexpr char k_closeButtonImagePath[] = ":/images/ktz_btn_close.png";
constexpr char k_minimumButtonImagePath[] = ":/images/ktz_btn_minimum.png";
constexpr char k_pinButtonImagePath[] = ":/images/ktz_btn_pin.png";
constexpr char k_mainWindowImagePath[] = ":images/ktz_jx_main_window.png";
constexpr char k_infoImagePath[] = ":images/ktz_jx_info_view.png";

/// All that binds something below the widget to the memory.
std::vector<CMemAPIProxy*> proxiesBelow(const QWidget* widget)
{
    std::vector<CMemAPIProxy*> proxies;
    const QObjectList all = widget->findChildren<QObject*>();
    for (QObject* below : all) {
        if (auto* proxy = dynamic_cast<CMemAPIProxy*>(below))
            proxies.push_back(proxy);
    }
    return proxies;
}
} // namespace

CMainWindow::CMainWindow(const ConnectionTimes& times, const SplashTimes& splashTimes)
    : CFrame(nullptr, Qt::FramelessWindowHint), m_times(times), m_splashTimes(splashTimes)
{
}

CMainWindow::~CMainWindow()
{
    if (m_memory && m_memory->isConnected())
        endEditOperation();
    // The views unlock the window when they go, so that the window has to be whole then.
    delete m_splash;
    delete m_about;
    // Widgets and monitor live longer than the memory in the window's tree; from here on none of them reaches it. The
    // monitor may still be running: a window can close before the device's first answer.
    delete m_connectionMonitor;
    delete m_receptionMonitor;
    for (CMemAPIProxy* proxy : proxiesBelow(this)) {
        proxy->unregisterObserverFromMemAPI();
        proxy->initialize(nullptr);
    }
    QGuiApplication::clipboard()->disconnect(this);
    qApp->disconnect(this);
    m_memory.reset();
    m_menuManager.reset();
    m_file.reset();
    CopiedSettings::removeFromClipboard(); // they never outlive the run
}

void CMainWindow::initialize()
{
    m_initializing = true;
    Qt::WindowFlags flags = windowFlags();
    flags &= ~(Qt::WindowTitleHint | Qt::WindowMaximizeButtonHint);
    setWindowFlags(flags | Qt::FramelessWindowHint);

    // The skin covers the whole window.
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_form = std::make_unique<Ui_MainWindow>();
    m_form->setupUi(this);
    new CWindowSize(this);
    setBackgroundPixmap(largeSkinPixmap(k_backImagePath));
    m_form->closeWindowBtn->setCombinedImage(skinPixmap(k_closeButtonImagePath));
    m_form->minimizeWindowBtn->setCombinedImage(skinPixmap(k_minimumButtonImagePath));
    m_form->holdWindowInFrontBtn->setCombinedImage(skinPixmap(k_pinButtonImagePath));
    Utilities::adjustFont(this);
    if (!WindowSystem::current().keepsWindowsInFront())
        Utilities::disableVisibly(m_form->holdWindowInFrontBtn);
    connect(m_form->holdWindowInFrontBtn, SIGNAL(toggled(bool)), this, SLOT(callStaysOnTop(bool)));
    // Those of an earlier run cannot be pasted: the memory that held them is gone.
    CopiedSettings::removeFromClipboard();

    m_menuManager = std::make_unique<CMenuManager>();
    m_menuManager->initialize(this);
    m_memory = std::make_unique<CMemAPIWrapper>();
    m_memory->initialize();
    m_file = std::make_unique<CFileWrapper>(this, m_memory.get());
    m_file->initialize();

    createControlViews();
    // Another window's copy, or this one's own by a shortcut, can be pasted without a selection before. The pages hear
    // of it first.
    connect(QGuiApplication::clipboard(), SIGNAL(dataChanged()), this, SLOT(setEditMenuEnable()));
    initializeSubController(this);
    m_listening = new CListening(this);
    setAllDefaultParamsToMemAPI();
    createOnlineMark();
    m_overlay = new QWidget(this);
    m_overlay->setGeometry(k_viewRect);
    m_overlay->hide();
    createShortcuts();
    connect(qApp, &QApplication::focusChanged, this, &CMainWindow::showFocus);
    // Draws the window's face, and so lets go of the large picture it takes, before the splash loads another.
    ensurePolished();
    showSplash();
    createConnectionMonitors();

    const bool deviceFound = m_memory->isConnectOutput();
    if (deviceFound) {
        startEditOperation();
        // A request that could not be sent leaves the defaults; the keep-alive notices a lost device.
        m_memory->requestAllParam();
    }
    m_menuManager->setMenuItemEnabledByID(CMenuManager::k_revertItem, deviceFound);
    m_menuManager->setMenuItemEnabledByID(CMenuManager::k_resetItem, deviceFound);
    if (m_splash)
        m_splash->editorReady();
}

void CMainWindow::createControlViews()
{
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        auto* view = new CControlView(this, m_memory.get());
        view->initialize(knob);
        view->setGeometry(k_ControlViewRect[static_cast<std::size_t>(knob)]);
        m_views.append(view);
        connect(view, SIGNAL(selected(int)), this, SLOT(conViewSelect(int)));
    }
    conViewSelect(m_selectedView);
}

void CMainWindow::initializeSubController(QWidget* widget)
{
    for (CMemAPIProxy* proxy : proxiesBelow(widget)) {
        proxy->initialize(m_memory.get());
        proxy->setPortName(k_jxEditorPortName);
    }
}

void CMainWindow::setAllDefaultParamsToMemAPI()
{
    for (int knob = 0; knob < m_views.size(); ++knob) {
        m_views[knob]->setAllDefaultParamsToMemAPI();
        m_memory->updateKnob(knob);
    }
}

void CMainWindow::createOnlineMark()
{
    m_onlineMark = new COnlineMark(this);
    m_onlineMark->initialize();
    m_onlineMark->move(k_onlineMarkPos);
}

void CMainWindow::createConnectionMonitors()
{
    m_connectionMonitor = new CConnectionMonitor(this, m_memory.get(), k_jxEditorPortName, m_times);
    connect(m_connectionMonitor, SIGNAL(connected()), m_onlineMark, SLOT(turnOn()));
    connect(m_connectionMonitor, SIGNAL(disconnected()), this, SLOT(disconnectDevice()));
    m_receptionMonitor = new CReceptionMonitor(this, m_memory.get(), m_times);
}

void CMainWindow::showSplash()
{
    if (m_lockCount >= 1 || m_overlay == nullptr)
        return;
    m_splash = new CSplashView(m_overlay, this, largeSkinPixmap(k_infoImagePath), m_splashTimes);
    m_splash->initialize(k_editorName, k_version, k_copyright);
    connect(m_splash, SIGNAL(finished()), this, SLOT(backupMemAPI()));
    connect(m_splash, SIGNAL(finished()), this, SLOT(applicationFileOpen()));
    connect(m_splash, SIGNAL(finished()), this, SLOT(endInitialize()));
    showOverlay(m_splash);
    m_splash->showView();
}

void CMainWindow::about()
{
    if (m_lockCount >= 1 || m_overlay == nullptr)
        return;
    m_about = new CAboutView(m_overlay, this, largeSkinPixmap(k_infoImagePath));
    m_about->initialize(k_editorName, k_version, k_copyright);
    showOverlay(m_about);
    m_about->showView();
}

void CMainWindow::showOverlay(CInfoView* view)
{
    connect(view, SIGNAL(closed()), m_overlay, SLOT(hide()));
    view->setAttribute(Qt::WA_DeleteOnClose);
    view->setGeometry(QRect(QPoint(0, 0), k_viewRect.size()));
    m_overlay->raise();
    m_overlay->show();
}

void CMainWindow::startEditOperation()
{
    CStartConnectionManager startManager(m_memory.get(), k_jxEditorPortName, m_times);
    if (startManager.sendStartMessage() && m_connectionMonitor != nullptr)
        m_connectionMonitor->start();
}

void CMainWindow::endEditOperation()
{
    if (m_connectionMonitor != nullptr)
        m_connectionMonitor->stop();
    // The device notices by itself if this does not reach it.
    if (m_memory)
        m_memory->sendMessage(k_endMessage, 0);
}

void CMainWindow::setApplicationFilePath(const QString& path)
{
    m_applicationFilePath = path;
    m_applicationFilePending = !path.isEmpty();
}

bool CMainWindow::isApplicationFilePending() const
{
    return m_applicationFilePending;
}

bool CMainWindow::isInitializing() const
{
    return m_initializing;
}

bool CMainWindow::isFree() const
{
    // A dialog of the desktop's own is no widget, but an event loop inside the editor's.
    return !m_initializing && QApplication::activeModalWidget() == nullptr &&
           QApplication::activePopupWidget() == nullptr && QThread::currentThread()->loopLevel() <= 1;
}

CMemAPIWrapper& CMainWindow::memory() const
{
    return *m_memory;
}

CConnectionMonitor& CMainWindow::connectionMonitor() const
{
    return *m_connectionMonitor;
}

void CMainWindow::backupMemAPI()
{
    m_memory->backupParams();
}

void CMainWindow::endInitialize()
{
    m_memory->setDirty(false);
    m_initializing = false;
    setFocus();
}

void CMainWindow::disconnectDevice()
{
    m_onlineMark->turnOff();
    m_menuManager->setMenuItemEnabledByID(CMenuManager::k_revertItem, false);
    m_menuManager->setMenuItemEnabledByID(CMenuManager::k_resetItem, false);
}

void CMainWindow::setCloseButtonEnabled(bool isEnable)
{
    m_form->closeWindowBtn->setVisible(isEnable);
}

void CMainWindow::windowLock()
{
    if (m_lockCount > 0) {
        ++m_lockCount;
        return;
    }
    m_menuManager->setMenuBarEnabled(false);
    for (CControlView* view : std::as_const(m_views))
        view->setCovered(true);
    m_focusBeforeLock = focusWidget();
    m_lockCount = 1;
}

void CMainWindow::windowUnlock()
{
    --m_lockCount;
    if (m_lockCount > 0)
        return;
    m_menuManager->setMenuBarEnabled(true);
    for (CControlView* view : std::as_const(m_views))
        view->setCovered(false);
    // Whether or not a cursor was set while the window was locked.
    QGuiApplication::restoreOverrideCursor();
    m_lockCount = 0;
    // The view that had the keys meanwhile goes.
    if (m_focusBeforeLock && m_overlay != nullptr && m_overlay->isAncestorOf(focusWidget()))
        m_focusBeforeLock->setFocus();
}

void CMainWindow::closeEvent(QCloseEvent* e)
{
    finishTyping();
    const bool asks = !m_initializing && m_file;
    // Who asks for a file while the question is open wants the editor after all.
    if (asks && (!m_file->checkSaveFile() || m_applicationFilePending))
        e->ignore();
    else
        e->accept();
}

void CMainWindow::paintDoubleBuffer(QPainter* painter)
{
    CFrame::paintDoubleBuffer(painter);
    const QPixmap foreground = largeSkinPixmap(k_mainWindowImagePath, devicePixelRatioF());
    painter->drawPixmap(QPointF(0, height() - foreground.deviceIndependentSize().height()), foreground);
}
