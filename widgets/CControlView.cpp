#include "widgets/CControlView.h"

#include "app/common/Constants.h"
#include "app/common/SkinPixmap.h"
#include "app/common/Utilities.h"
#include "device/CMemAPIWrapper.h"
#include "widgets/CImageSlider.h"
#include "widgets/CKnobLED.h"
#include "widgets/CSlideEditor.h"
#include "widgets/CTextSlider.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QPointer>

#include <array>

namespace
{
/// The controls of a page by their codes: whose setting they are, and the clipboard format of that.
struct Control
{
    int category;
    const QString* mimeType;
};
constexpr std::array<Control, 6> k_controls{{
    {k_knobValueCategory, &k_mimeType_Knob},
    {k_ccNumCategory, &k_mimeType_CCNum},
    {k_midiChCategory, &k_mimeType_MIDICh},
    {k_maxCategory, &k_mimeType_Max},
    {k_minCategory, &k_mimeType_Min},
    {k_ledTypeCategory, &k_mimeType_LEDType},
}};
constexpr int k_wholeKnob = 0;

constexpr int k_maxValue = 127;
constexpr int k_maxMIDICh = 15;
constexpr int k_numOfLEDTypes = 4;

/// The code of the control for a category; the whole knob for any unknown one.
int controlOf(int category)
{
    for (std::size_t code = 0; code < k_controls.size(); ++code) {
        if (k_controls[code].category == category)
            return static_cast<int>(code);
    }
    return k_wholeKnob;
}

const QString& mimeTypeOf(int control)
{
    return *k_controls[static_cast<std::size_t>(control)].mimeType;
}

/// What this process put on the clipboard for the knob that it copied last; null once that is gone. A knob copied in
/// another editor looks the same, but stands for settings that are not here.
QPointer<const QMimeData>& ownKnobMark()
{
    static QPointer<const QMimeData> mark;
    return mark;
}
} // namespace

CControlView::CControlView(QWidget* parent, CMemAPIWrapper* memory) : QWidget(parent), m_memory(memory) {}

void CControlView::initialize(int knob)
{
    Q_ASSERT(isKnob(knob));
    m_numOfKnob = knob;
    createKnob();

    m_ccNumEditor = createEditor(createTextSlider(k_maxValue), k_ccNumRect, true, k_ccNumCategory);
    CTextSlider* midiChSlider = createTextSlider(k_maxMIDICh);
    midiChSlider->setOffset(1.0); // stored from 0, shown from 1
    m_midiChEditor = createEditor(midiChSlider, k_midiChRect, true, k_midiChCategory);
    m_maxEditor = createEditor(createTextSlider(k_maxValue), k_maxRect, true, k_maxCategory);
    m_minEditor = createEditor(createTextSlider(k_maxValue), k_minRect, true, k_minCategory);

    auto* ledTypeSlider = new CImageSlider(this);
    ledTypeSlider->setImage(skinPixmap(k_knobLEDTypeImagePath));
    ledTypeSlider->setTotalImages(k_numOfLEDTypes);
    m_ledTypeEditor = createEditor(ledTypeSlider, k_ledTypeRect, false, k_ledTypeCategory);
    connect(m_ledTypeEditor, SIGNAL(valueChanged(int)), m_knob, SLOT(updateLED()));

    for (CSlideEditor* editor : {m_ccNumEditor, m_midiChEditor, m_maxEditor, m_minEditor, m_ledTypeEditor})
        watchEditor(editor);
    setAllDefaultParamsToMemAPI();
    Utilities::adjustFont(this);
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

CTextSlider* CControlView::createTextSlider(int maximum)
{
    auto* slider = new CTextSlider(this);
    slider->setAlignment(Qt::AlignCenter);
    slider->setDirectEdit(true);
    slider->setRange(0, maximum);
    return slider;
}

CSlideEditor* CControlView::createEditor(QAbstractSlider* slider, const QRect& rect, bool spinOverlaps, int category)
{
    auto* editor = new CSlideEditor(this);
    editor->initialize(slider, rect, spinOverlaps);
    editor->setControllerID(category + m_numOfKnob);
    return editor;
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
    const std::array editors{m_ccNumEditor, m_midiChEditor, m_maxEditor, m_minEditor, m_ledTypeEditor};
    const auto& defaults = k_defaultParamList[static_cast<std::size_t>(m_numOfKnob)];
    for (std::size_t i = 0; i < editors.size(); ++i) {
        if (editors[i] != nullptr)
            m_memory->setParam(editors[i]->controllerID(), defaults[i]);
    }
}

void CControlView::knobSelect()
{
    m_selectedControl = k_wholeKnob;
    m_selectedSlider = m_knob;
    emit selected(m_numOfKnob);
}

void CControlView::sliderSelect(QWidget* slider)
{
    const auto* editor = qobject_cast<CSlideEditor*>(slider);
    if (editor == nullptr)
        return;
    m_selectedControl = controlOf(editor->controllerID() - m_numOfKnob);
    m_selectedSlider = slider;
    emit selected(m_numOfKnob);
}

CSlideEditor* CControlView::selectedEditor() const
{
    return qobject_cast<CSlideEditor*>(m_selectedSlider);
}

bool CControlView::canCopy() const
{
    return true;
}

bool CControlView::canPaste() const
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
    if (!canPaste())
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
