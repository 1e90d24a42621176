#pragma once

#include "connection/ConnectionTimes.h"
#include "style/SplashTimes.h"
#include "widgets/CFrame.h"

#include <QPoint>
#include <QPointer>
#include <QVector>

#include <memory>

class CAboutView;
class CConnectionMonitor;
class CControlView;
class CFileWrapper;
class CInfoView;
class CListening;
class CMemAPIWrapper;
class CMenuManager;
class CReceptionMonitor;
class COnlineMark;
class CSplashView;
class Ui_MainWindow;

/// The editor's one window: the skinned frame with eight knob pages, its own menu bar and buttons, the online mark, and
/// the overlay of the splash and about views. Starts and ends the connection and carries out every command.
///
/// Threads  GUI thread only.
/// Owns     the device memory, the settings file object and the menu manager; everything else is in its widget tree.
class CMainWindow : public CFrame
{
    Q_OBJECT

  public:
    explicit CMainWindow(const ConnectionTimes& times = {}, const SplashTimes& splashTimes = {});

    /// Ends the connection, with an end message while the device answers, and takes copied settings off the
    /// clipboard.
    ~CMainWindow() override;

    /// Builds the window and, if the device's output port is there, connects. Blocks until the device has answered.
    void initialize();

    /// Binds every proxy below the widget to the memory and to the device's port.
    void initializeSubController(QWidget* widget);

    void setAllDefaultParamsToMemAPI();
    void showSplash();
    void startEditOperation();
    void endEditOperation();

    /// The settings file that the next applicationFileOpen() opens.
    void setApplicationFilePath(const QString& path);

    /// Whether that file waits to be opened: false once it is being opened, or the user has given it up.
    [[nodiscard]] bool isApplicationFilePending() const;

    /// Whether the start-up still lasts: true until the splash has finished.
    [[nodiscard]] bool isInitializing() const;

    /// Whether nothing is in the way of a command from outside: neither the start-up nor a question, dialog or menu.
    [[nodiscard]] bool isFree() const;

    /// Borrowed; from initialize() on.
    [[nodiscard]] CMemAPIWrapper& memory() const;
    [[nodiscard]] CConnectionMonitor& connectionMonitor() const;

  public slots:
    void windowLock();
    void windowUnlock();
    void setCloseButtonEnabled(bool isEnable);
    void callStaysOnTop(bool isTop);
    void setEditMenuEnable();
    void disconnectDevice();
    void open();
    void save();
    void saveAs();
    void copy();
    void paste();
    void revert();
    void factoryReset();
    void manual();
    void about();
    void conViewSelect(int index);
    void backupMemAPI();
    void applicationFileOpen();
    void endInitialize();

  protected:
    bool event(QEvent* e) override;

    /// Goes through the window's buttons and the fields of all pages, page by page from the top, whatever their focus
    /// policies say of a key. A field that it comes to is selected. false: the window is locked or hidden.
    bool focusNextPrevChild(bool next) override;

    /// By a key: the menu of the selected control, where no field has asked for its own.
    void contextMenuEvent(QContextMenuEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    void paintDoubleBuffer(QPainter* painter) override;

  private:
    void createControlViews();
    void createOnlineMark();
    void createConnectionMonitors();
    void createShortcuts();

    /// Selects the whole knob, and gives its page the keys.
    void goToPage(int knob);

    /// Asks for a context menu as the keyboard's menu key does.
    void requestContextMenu();

    /// What the focus goes through: the buttons, then each page, which stands for its knob, and its editors.
    [[nodiscard]] QWidgetList places() const;

    /// Of these, where the focus is, or else the selected control.
    [[nodiscard]] qsizetype presentPlace(const QWidgetList& places) const;

    /// Where the mark of what the keys go to, or of the selected control, is in the window.
    [[nodiscard]] QRect markedRect() const;

    /// Moves the window no further than it takes to show a part of it whole, where programs may place windows.
    void bringOnScreen(const QRect& part);

    /// Repaints the marks that tell what has the focus.
    void showFocus(QWidget* before, QWidget* now);

    /// Raises the overlay for a view that fills it, until the view closes and goes.
    void showOverlay(CInfoView* view);
    [[nodiscard]] CControlView* selectedControlView() const;

    /// Tells those who listen what has been done to the selected control.
    void sayOfSelected(const QString& what);

    /// Accepts a number that is being typed, so that no command misses it.
    void finishTyping();

    std::unique_ptr<Ui_MainWindow> m_form;
    std::unique_ptr<CMemAPIWrapper> m_memory;
    std::unique_ptr<CMenuManager> m_menuManager;
    std::unique_ptr<CFileWrapper> m_file;
    int m_lockCount = 0;
    bool m_dragging = false;
    bool m_initializing = false;
    QPoint m_dragOffset; ///< where in the window it was grabbed
    QVector<CControlView*> m_views;
    COnlineMark* m_onlineMark = nullptr;
    CConnectionMonitor* m_connectionMonitor = nullptr;
    CReceptionMonitor* m_receptionMonitor = nullptr;
    CListening* m_listening = nullptr;
    QWidget* m_overlay = nullptr;
    QPointer<CSplashView> m_splash;
    QPointer<CAboutView> m_about;
    QPointer<QWidget> m_focusBeforeLock;
    int m_selectedView = 0;
    QString m_applicationFilePath;
    bool m_applicationFilePending = false;
    ConnectionTimes m_times;
    SplashTimes m_splashTimes;
};
