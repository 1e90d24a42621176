#include "tests/skin/CSkinScenes.h"

#include "app/common/CMessageBox.h"

#include <QCursor>
#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QTimer>

#include <algorithm>
#include <array>

namespace
{
constexpr QPoint k_nothingThere(300, 30); ///< a place in the window's head without any control

struct Knob
{
    KnobSettings settings;
    int value;
};
// The ring's states in this order: 0, 1, 3, 2, 4, 5, 1, 5.
constexpr std::array<Knob, 8> k_mixedKnobs{{
    {{74, 0, 127, 0, 0}, 0},
    {{71, 1, 100, 20, 0}, 20},
    {{10, 8, 64, 64, 1}, 50},
    {{0, 15, 0, 127, 2}, 40},
    {{127, 9, 88, 8, 3}, 50},
    {{46, 11, 111, 1, 3}, 64},
    {{91, 3, 96, 35, 1}, 100},
    {{93, 0, 127, 0, 0}, 127},
}};

struct Scene
{
    QString name;
    QImage (*picture)(CSkinScenes&);
};

const std::array k_scenes{
    Scene{QStringLiteral("offline"),
          [](CSkinScenes& editor) {
              editor.startOffline();
              return editor.picture();
          }},
    Scene{QStringLiteral("online"),
          [](CSkinScenes& editor) {
              editor.startOnline();
              return editor.picture();
          }},
    Scene{QStringLiteral("edit-menu"),
          [](CSkinScenes& editor) {
              editor.startOnline();
              static_cast<void>(editor.openMenu(k_editMenuString, k_revrtString));
              return editor.picture();
          }},
    Scene{QStringLiteral("context-menu"),
          [](CSkinScenes& editor) {
              editor.startOnline();
              QImage picture;
              const QPoint place = editor.page(1)->mapToGlobal(k_ccNumRect.center());
              editor.whileOpen([&] { editor.page(1)->showContextMenu(place); },
                               [&](QWidget*) { picture = editor.picture(); });
              return picture;
          }},
    Scene{QStringLiteral("about"),
          [](CSkinScenes& editor) {
              editor.startOnline();
              editor.openAbout();
              return editor.picture();
          }},
    Scene{QStringLiteral("splash"),
          [](CSkinScenes& editor) {
              editor.startSplash();
              return editor.picture();
          }},
    Scene{QStringLiteral("message-box"),
          [](CSkinScenes& editor) {
              editor.startOnline();
              QImage picture;
              editor.whileOpen([&] { editor.openMessageBox(k_resetMessage); },
                               [&](QWidget* box) { picture = editor.pictureOf(box); });
              return picture;
          }},
};
} // namespace

QStringList CSkinScenes::names()
{
    QStringList names;
    for (const Scene& scene : k_scenes)
        names.append(scene.name);
    return names;
}

QImage CSkinScenes::take(const QString& name)
{
    const auto scene = std::find_if(k_scenes.begin(), k_scenes.end(), [&](const Scene& s) { return s.name == name; });
    if (scene == k_scenes.end())
        qFatal("there is no scene %s", qPrintable(name));
    CSkinScenes editor;
    return scene->picture(editor);
}

void CSkinScenes::prepareProcess()
{
    qputenv("QT_QPA_PLATFORMTHEME", "none");
    qunsetenv("QT_STYLE_OVERRIDE");
}

QFont CSkinScenes::dialogFont()
{
    QFont font(k_fontGLT10Bold);
    font.setStyleHint(QFont::AnyStyle, QFont::NoAntialias);
    font.setPixelSize(10);
    return font;
}

CSkinScenes::CSkinScenes()
{
    QApplication::setFont(dialogFont());
    QApplication::setCursorFlashTime(0);
    QIcon::setThemeName(QStringLiteral("none"));
}

CMainWindow& CSkinScenes::startOffline()
{
    startWhole();
    QCursor::setPos(window->mapToGlobal(k_nothingThere));
    settle();
    return *window;
}

CMainWindow& CSkinScenes::startOnline()
{
    for (int knob = 0; knob < device.k_knobs; ++knob) {
        device.setSettings(knob, k_mixedKnobs[static_cast<std::size_t>(knob)].settings);
        device.setValue(knob, k_mixedKnobs[static_cast<std::size_t>(knob)].value);
    }
    plug();
    startWhole();
    waitUntilConnected();
    QCursor::setPos(window->mapToGlobal(k_nothingThere));
    settle();
    return *window;
}

CMainWindow& CSkinScenes::startSplash()
{
    start();
    auto* splash = window->findChild<CSplashView*>();
    for (int tick = 0; tick < 50; ++tick)
        splash->showTimeOver();
    return *window;
}

void CSkinScenes::openAbout() const
{
    window->about();
    settle();
}

QMenu* CSkinScenes::openMenu(const QString& title, const QString& selectedItem) const
{
    QAction* entry = action(title);
    const QPoint place = menuBar()->actionGeometry(entry).center();
    QTest::mouseClick(menuBar(), Qt::LeftButton, {}, place);
    QCursor::setPos(window->mapToGlobal(k_nothingThere));
    QMenu* menu = entry->menu();
    menu->setActiveAction(selectedItem.isEmpty() ? nullptr : action(selectedItem));
    return menu;
}

void CSkinScenes::settle() const
{
    const auto animations = window->findChildren<QPropertyAnimation*>();
    for (QPropertyAnimation* animation : animations) {
        if (animation->state() == QAbstractAnimation::Running)
            animation->setCurrentTime(animation->totalDuration());
    }
}

QImage CSkinScenes::pictureOf(QWidget* widget)
{
    return widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QImage CSkinScenes::picture() const
{
    QImage picture = pictureOf(window.get());
    QPainter painter(&picture);
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        if (widget->isVisible() && widget->windowType() == Qt::Popup)
            painter.drawImage(widget->pos() - window->pos(), pictureOf(widget));
    }
    painter.end();
    return picture;
}

void CSkinScenes::whileOpen(const std::function<void()>& open, const std::function<void(QWidget*)>& look)
{
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* opened = popup != nullptr ? popup : QApplication::activeModalWidget();
        // A box shows by its frame which button has the focus, so it has to have it.
        if (opened == nullptr || (popup == nullptr && !opened->isActiveWindow()))
            return;
        poll.stop();
        look(opened);
        opened->close();
    });
    poll.start(5);
    open();
}

void CSkinScenes::openMessageBox(const QString& text) const
{
    CMessageBox::question(window.get(), QString(), text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
}
