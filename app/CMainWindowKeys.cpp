#include "app/CMainWindow.h"

#include "app/CMenuManager.h"
#include "device/DeviceParams.h"
#include "ui_MainWindow.h"
#include "widgets/CControlView.h"
#include "widgets/CSlideEditor.h"
#include "widgets/SelectionMark.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QPainter>
#include <QShortcut>

#include <algorithm>

namespace
{
constexpr QMargins k_buttonMarkMargins{1, 1, 1, 1};

bool isButtonOf(const QWidget* widget, const QWidget* window)
{
    return qobject_cast<const COnOffButton*>(widget) != nullptr && widget->parent() == window;
}

QRect markAround(const QWidget& button)
{
    return button.geometry() + k_buttonMarkMargins;
}
} // namespace

void CMainWindow::createShortcuts()
{
    const auto add = [this](const QKeySequence& keys, auto handler) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, handler);
    };
    add(Qt::CTRL | Qt::Key_Q, &QWidget::close);
    add(Qt::CTRL | Qt::Key_M, &QWidget::showMinimized);
    add(Qt::CTRL | Qt::Key_T, [this] { m_form->holdWindowInFrontBtn->click(); });
    add(Qt::Key_F10, [this] { m_menuManager->openFirstMenu(); });
    add(Qt::SHIFT | Qt::Key_F10, &CMainWindow::requestContextMenu);
    for (int knob = 0; knob < k_numOfKnobs; ++knob)
        add(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + knob), [this, knob] { goToPage(knob); });
}

void CMainWindow::goToPage(int knob)
{
    if (m_lockCount > 0)
        return;
    m_views[knob]->goTo();
    bringOnScreen(markedRect());
}

QWidgetList CMainWindow::places() const
{
    QWidgetList places{m_form->closeWindowBtn, m_form->minimizeWindowBtn, m_form->holdWindowInFrontBtn};
    for (CControlView* view : m_views) {
        places.append(view);
        const QList<CSlideEditor*> editors = view->editorsFromTheTop();
        for (CSlideEditor* editor : editors)
            places.append(editor);
    }
    return places;
}

qsizetype CMainWindow::presentPlace(const QWidgetList& places) const
{
    for (const QWidget* place = focusWidget(); place != nullptr && place != this; place = place->parentWidget()) {
        const qsizetype index = places.indexOf(place);
        if (index >= 0)
            return index;
    }
    CControlView* view = selectedControlView();
    QWidget* editor = view->selectedEditor();
    return places.indexOf(editor != nullptr ? editor : view);
}

bool CMainWindow::focusNextPrevChild(bool next)
{
    if (m_lockCount > 0 || m_views.isEmpty())
        return false;
    const QWidgetList all = places();
    const qsizetype step = next ? 1 : all.size() - 1;
    const auto takesFocus = [](const QWidget* place) {
        return place->isVisible() && place->isEnabled() && qobject_cast<const CControlView*>(place) == nullptr;
    };
    const qsizetype present = presentPlace(all);
    qsizetype index = (present + step) % all.size();
    while (index != present && !takesFocus(all[index]))
        index = (index + step) % all.size();
    if (index == present)
        return false;

    if (auto* editor = qobject_cast<CSlideEditor*>(all[index]))
        editor->goTo();
    else
        all[index]->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    bringOnScreen(markedRect());
    return true;
}

QRect CMainWindow::markedRect() const
{
    if (const QWidget* focus = focusWidget(); isButtonOf(focus, this))
        return markAround(*focus);
    const CControlView* view = selectedControlView();
    return view->markRect().translated(view->pos());
}

void CMainWindow::requestContextMenu()
{
    QWidget* target = focusWidget() != nullptr ? focusWidget() : this;
    const QPoint place = target->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent request(QContextMenuEvent::Keyboard, place, target->mapToGlobal(place));
    QApplication::sendEvent(target, &request);
}

void CMainWindow::contextMenuEvent(QContextMenuEvent* e)
{
    CControlView* view = selectedControlView();
    if (e->reason() == QContextMenuEvent::Keyboard && m_lockCount == 0 && view != nullptr)
        view->showContextMenu(view->mapToGlobal(view->markRect().center()));
    else
        CFrame::contextMenuEvent(e);
}

void CMainWindow::showFocus(QWidget* before, QWidget* now)
{
    for (const QWidget* widget : {before, now}) {
        if (isButtonOf(widget, this))
            update(markAround(*widget));
    }
    if (CControlView* view = selectedControlView())
        view->updateMark();
}

bool CMainWindow::event(QEvent* e)
{
    const bool isHandled = CFrame::event(e);
    // Over the face, which is drawn seldom; the buttons lie over both.
    const QWidget* focus = focusWidget();
    if (e->type() == QEvent::Paint && isButtonOf(focus, this)) {
        QPainter painter(this);
        SelectionMark::paint(painter, markAround(*focus), SelectionMark::Shape::Frame);
    }
    return isHandled;
}
