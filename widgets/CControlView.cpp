#include "widgets/CControlView.h"

#include "app/common/Constants.h"
#include "app/common/SkinPixmap.h"
#include "app/common/Utilities.h"
#include "device/CMemAPIWrapper.h"
#include "widgets/CImageSlider.h"
#include "widgets/CKnobLED.h"
#include "widgets/CSlideEditor.h"
#include "widgets/CTextSlider.h"
#include "widgets/SelectionMark.h"

#include <QAccessible>
#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <array>
#include <utility>

namespace
{
/// The editor of one setting. What it can be set to is the setting's own range.
struct Editor
{
    ParamCategory category;
    // cppcheck-suppress unusedStructMember ; nameOf() reads it
    const char* name; ///< as it is spoken
    QRect place;
    const QString* mimeType; ///< in which the setting is copied
    const QString* pictures; ///< a strip with one for each value, which the editor shows; null for the number
    int shownOffset;         ///< of the number that is shown from the one that is stored
};

/// In the order of the settings, in which they are also built.
constexpr std::array k_editors{
    Editor{k_ccNumCategory, "CC number", k_ccNumRect, &k_mimeType_CCNum, nullptr, 0},
    Editor{k_midiChCategory, "MIDI channel", k_midiChRect, &k_mimeType_MIDICh, nullptr, 1},
    Editor{k_maxCategory, "Maximum", k_maxRect, &k_mimeType_Max, nullptr, 0},
    Editor{k_minCategory, "Minimum", k_minRect, &k_mimeType_Min, nullptr, 0},
    Editor{k_ledTypeCategory, "LED type", k_ledTypeRect, &k_mimeType_LEDType, &k_knobLEDTypeImagePath, 0},
};
static_assert(std::ranges::equal(k_editors, k_settingParams, {}, &Editor::category, &SettingParam::category),
              "a page has one editor for each setting");

// The controls of a page by their codes: the knob, then the editors.
constexpr int k_wholeKnob = 0;
constexpr int k_firstEditor = 1;

// The mark takes in what belongs to the control on the skin: the knob's number, a field's caption.
constexpr QRect k_knobMarkRect{1, 1, 85, 88};
constexpr QMargins k_editorMarkMargins{5, 13, 6, 5};
constexpr QMargins k_widestMarkLine{2, 2, 2, 2}; // at any ratio

/// The code of the control for a category; the whole knob for any unknown one.
int controlOf(int category)
{
    const auto* found = std::ranges::find(k_editors, category, &Editor::category);
    return found != k_editors.end() ? k_firstEditor + static_cast<int>(found - k_editors.begin()) : k_wholeKnob;
}

const QString& mimeTypeOf(int control)
{
    return control == k_wholeKnob ? k_mimeType_Knob
                                  : *k_editors[static_cast<std::size_t>(control - k_firstEditor)].mimeType;
}

QAbstractSlider* createSlider(const Editor& editor, int highest, QWidget* parent)
{
    if (editor.pictures != nullptr) {
        auto* slider = new CImageSlider(parent);
        slider->setImage(skinPixmap(*editor.pictures));
        slider->setTotalImages(highest + 1);
        return slider;
    }
    auto* slider = new CTextSlider(parent);
    slider->setAlignment(Qt::AlignCenter);
    slider->setDirectEdit(true);
    slider->setRange(0, highest);
    slider->setOffset(editor.shownOffset);
    return slider;
}

/// What this process put on the clipboard for the knob that it copied last; null once that is gone. A knob copied in
/// another editor looks the same, but stands for settings that are not here.
QPointer<const QMimeData>& ownKnobMark()
{
    static QPointer<const QMimeData> mark;
    return mark;
}
} // namespace

CControlView::CControlView(QWidget* parent, CMemAPIWrapper* memory) : QWidget(parent), m_memory(memory)
{
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, [this] { m_canPaste.reset(); });
}

void CControlView::initialize(int knob)
{
    Q_ASSERT(isKnob(knob));
    m_numOfKnob = knob;
    createKnob();
    createEditors();
    for (CSlideEditor* editor : std::as_const(m_editors))
        watchEditor(editor);
    setAllDefaultParamsToMemAPI();
    Utilities::adjustFont(this);
}

int CControlView::knob() const
{
    return m_numOfKnob;
}

void CControlView::createKnob()
{
    m_knob = new CKnobLED(this);
    m_knob->setGeometry(k_knobRect);
    m_knob->setControllerID(k_knobValueCategory + m_numOfKnob);
    m_knob->registerObserverToMemAPI();
    m_knob->installEventFilter(this);
    connect(m_knob, SIGNAL(selected()), this, SLOT(knobSelect()));
    connect(m_knob, SIGNAL(selected()), parentWidget(), SLOT(setEditMenuEnable()));
}

void CControlView::createEditors()
{
    for (std::size_t i = 0; i < k_editors.size(); ++i) {
        const Editor& row = k_editors[i];
        auto* editor = new CSlideEditor(this);
        const bool spinOverlaps = row.pictures == nullptr;
        editor->initialize(createSlider(row, k_settingParams[i].highest, this), row.place, spinOverlaps);
        editor->setControllerID(row.category + m_numOfKnob);
        if (row.category == k_ledTypeCategory)
            connect(editor, SIGNAL(valueChanged(int)), m_knob, SLOT(updateLED()));
        m_editors.append(editor);
    }
}

void CControlView::watchEditor(CSlideEditor* editor)
{
    editor->registerObserverToMemAPI();
    editor->installEventFilter(this);
    connect(editor, SIGNAL(selected(QWidget*)), this, SLOT(sliderSelect(QWidget*)));
    connect(editor, SIGNAL(selected(QWidget*)), parentWidget(), SLOT(setEditMenuEnable()));
}

void CControlView::setAllDefaultParamsToMemAPI()
{
    if (m_memory == nullptr)
        return;
    if (m_knob != nullptr)
        m_memory->setKnob(m_knob->controllerID(), 0);
    const auto* value = k_defaultParamList[static_cast<std::size_t>(m_numOfKnob)].begin();
    for (const CSlideEditor* editor : std::as_const(m_editors))
        m_memory->setParam(editor->controllerID(), *value++);
}

QString CControlView::name() const
{
    return QStringLiteral("Knob %1").arg(m_numOfKnob + 1);
}

QString CControlView::nameOf(const CSlideEditor* editor) const
{
    const qsizetype index = m_editors.indexOf(editor);
    return index >= 0 ? QLatin1String(k_editors[static_cast<std::size_t>(index)].name) : QString();
}

CSlideEditor* CControlView::editorOf(int category) const
{
    return m_editors.value(controlOf(category) - k_firstEditor, nullptr);
}

QList<CSlideEditor*> CControlView::editorsFromTheTop() const
{
    QList<CSlideEditor*> editors = m_editors;
    std::ranges::sort(editors, {}, &QWidget::y);
    return editors;
}

void CControlView::select(int control, QWidget* widget)
{
    // Every step of a drag selects what it turns.
    if (control != m_selectedControl || widget != m_selectedSlider) {
        updateMark();
        m_selectedControl = control;
        m_selectedSlider = widget;
        m_canPaste.reset();
        updateMark();
    }
    emit selected(m_numOfKnob);
}

void CControlView::knobSelect()
{
    select(k_wholeKnob, m_knob);
}

void CControlView::sliderSelect(QWidget* slider)
{
    const auto* editor = qobject_cast<CSlideEditor*>(slider);
    if (editor == nullptr)
        return;
    select(controlOf(editor->controllerID() - m_numOfKnob), slider);
}

CSlideEditor* CControlView::selectedEditor() const
{
    return qobject_cast<CSlideEditor*>(m_selectedSlider);
}

QRect CControlView::markRect() const
{
    if (m_selectedControl == k_wholeKnob)
        return k_knobMarkRect;
    return k_editors[static_cast<std::size_t>(m_selectedControl - k_firstEditor)].place + k_editorMarkMargins;
}

void CControlView::setMarked(bool isMarked)
{
    if (isMarked == m_isMarked)
        return;
    m_isMarked = isMarked;
    updateMark();
}

bool CControlView::isMarked() const
{
    return m_isMarked;
}

void CControlView::setCovered(bool isCovered)
{
    m_isCovered = isCovered;
    QWidgetList shown{this, m_knob};
    shown.append({m_editors.cbegin(), m_editors.cend()});
    for (QWidget* widget : std::as_const(shown)) {
        QAccessibleEvent told(widget, isCovered ? QAccessible::ObjectHide : QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&told);
    }
}

bool CControlView::isCovered() const
{
    return m_isCovered;
}

void CControlView::goTo()
{
    // First the focus, whose way ends what is typed elsewhere, and that selects too.
    setFocus(Qt::ShortcutFocusReason);
    emit m_knob->selected();
}

void CControlView::updateMark()
{
    // Its lines alone: a ring that follows the device is not painted once more for them.
    update(QRegion(markRect()) - markRect().marginsRemoved(k_widestMarkLine));
}

void CControlView::paintEvent(QPaintEvent* event)
{
    // What changes inside the mark, as a ring that follows the device does, needs none of its lines.
    if (!m_isMarked || markRect().marginsRemoved(k_widestMarkLine).contains(event->rect()))
        return;
    const QWidget* focus = window()->focusWidget();
    const CSlideEditor* editor = selectedEditor();
    const bool takesKeys = editor != nullptr ? editor->isAncestorOf(focus) : focus == this;
    QPainter painter(this);
    SelectionMark::paint(painter, markRect(), takesKeys ? SelectionMark::Shape::Frame : SelectionMark::Shape::Corners);
}

bool CControlView::isCopied(const QMimeData& mimeData)
{
    const auto holds = [&](const Editor& editor) { return mimeData.hasFormat(*editor.mimeType); };
    return mimeData.hasFormat(k_mimeType_Knob) || std::ranges::any_of(k_editors, holds);
}

bool CControlView::canCopy() const
{
    return true;
}

bool CControlView::canPaste() const
{
    if (!m_canPaste)
        m_canPaste = isClipboardForSelected();
    return *m_canPaste;
}

bool CControlView::isClipboardForSelected() const
{
    const QMimeData* mimeData = QGuiApplication::clipboard()->mimeData();
    return mimeData != nullptr && mimeData->hasFormat(mimeTypeOf(m_selectedControl)) &&
           (m_selectedControl != k_wholeKnob || mimeData == ownKnobMark());
}

void CControlView::copy()
{
    auto* mimeData = new QMimeData;
    const QString& mimeType = mimeTypeOf(m_selectedControl);
    if (m_selectedControl == k_wholeKnob) {
        if (m_memory != nullptr) {
            m_memory->copyParamListFromKnobValueList(m_numOfKnob);
            mimeData->setData(mimeType, QByteArray());
            ownKnobMark() = mimeData;
        }
    } else if (const CSlideEditor* editor = selectedEditor()) {
        mimeData->setData(mimeType, QByteArray::number(editor->getValue()));
    }
    QGuiApplication::clipboard()->setMimeData(mimeData);
}

void CControlView::paste()
{
    if (!isClipboardForSelected())
        return;
    if (m_selectedControl == k_wholeKnob) {
        if (m_memory != nullptr)
            m_memory->pasteParamListToKnobValueList(m_numOfKnob);
    } else if (CSlideEditor* editor = selectedEditor()) {
        const QByteArray text = QGuiApplication::clipboard()->mimeData()->data(mimeTypeOf(m_selectedControl));
        editor->setValue(text.toInt());
    }
}

bool CControlView::eventFilter(QObject* object, QEvent* event)
{
    auto* control = qobject_cast<QWidget*>(object);
    if (!isVisible() || event->type() != QEvent::ContextMenu || control == nullptr)
        return QWidget::eventFilter(object, event);
    const auto* request = static_cast<QContextMenuEvent*>(event);
    if (!control->rect().contains(request->pos()))
        return QWidget::eventFilter(object, event);

    // Through the control, so that the window hears of it as it does of a click.
    if (auto* editor = qobject_cast<CSlideEditor*>(control))
        editor->editorSelect();
    else
        emit m_knob->selected();
    showContextMenu(request->globalPos());
    return true;
}

void CControlView::showContextMenu(const QPoint& globalPos)
{
    // The page, and the menu with it, can go while the menu is open.
    const QPointer<QMenu> menu = new QMenu(this);
    menu->setFont(QFont(k_fontGLT7Bold));
    Utilities::adjustFont(menu);

    QAction* copyAction = menu->addAction(k_copyString);
    copyAction->setShortcut(QKeySequence(k_copyCommand));
    connect(copyAction, SIGNAL(triggered()), parentWidget(), SLOT(copy()));
    copyAction->setEnabled(canCopy());

    QAction* pasteAction = menu->addAction(k_pasteString);
    pasteAction->setShortcut(QKeySequence(k_pasteCommand));
    connect(pasteAction, SIGNAL(triggered()), parentWidget(), SLOT(paste()));
    pasteAction->setEnabled(canPaste());

    menu->exec(globalPos);
    delete menu.data();
}
