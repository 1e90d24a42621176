#pragma once

#include "tests/app/EditorFixture.h"

#include <QFont>
#include <QImage>
#include <QMessageBox>

#include <functional>

class QMenu;

/// The editor in the states by which its look is judged, and pictures of them. Every motion has come to its end and the
/// pointer is over nothing, so that a scene always looks the same.
///
/// Pictures are what the widgets draw, at the process's device pixel ratio, RGB32.
class CSkinScenes : public EditorFixture
{
  public:
    /// Before the application object: nothing of the user's desktop (theme, icons, dark colours) gets into a picture.
    static void prepareProcess();

    /// A font of the skin, for what is otherwise written in the desktop's font, which is another on every machine.
    [[nodiscard]] static QFont dialogFont();

    /// The scenes of which there are reference pictures.
    [[nodiscard]] static QStringList names();

    /// A picture of one of them, of an editor that is started for it.
    [[nodiscard]] static QImage take(const QString& name);

    CSkinScenes();

    CMainWindow& startOffline();

    /// With a device in which every knob has other settings; all six states of the rings and all four types occur.
    CMainWindow& startOnline();

    /// The splash after half of its time.
    CMainWindow& startSplash();

    /// Drops the about view into the window.
    void openAbout() const;

    /// Opens a menu of the bar with this item selected, or none.
    [[nodiscard]] QMenu* openMenu(const QString& title, const QString& selectedItem = {}) const;

    /// The window with what hangs over it: menus and popups.
    [[nodiscard]] QImage picture() const;

    [[nodiscard]] static QImage pictureOf(QWidget* widget);

    /// Calls open(), which returns only when the popup or dialog that it opens has been closed, and meanwhile look()
    /// with that widget; closes it then.
    static void whileOpen(const std::function<void()>& open, const std::function<void(QWidget*)>& look);

    /// A message box with one of the editor's texts, Yes and No. Returns when it has been closed.
    void openMessageBox(const QString& text) const;

    /// Brings every motion under way to its end.
    void settle() const;
};
