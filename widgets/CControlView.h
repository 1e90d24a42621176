#pragma once

#include <QList>
#include <QWidget>

#include <optional>

class CKnobLED;
class CMemAPIWrapper;
class CSlideEditor;
class QMimeData;

/// The page of one knob: its LED ring and an editor for each of its settings. Remembers which of these controls was
/// selected last, and copies and pastes that control's setting through the system clipboard.
///
/// Keys       the page takes them for the whole knob, since the ring is only a display: it has the focus then.
/// Clipboard  each control has a format of its own. A setting is its value as stored, as decimal text. A knob is a mark
///            alone: its settings stay in the memory's copy buffer, so that only this process can paste it.
/// Memory     borrowed; null for none. It is used by commands alone, so it may go before this widget does.
class CControlView : public QWidget
{
    Q_OBJECT

  public:
    /// parent   the main window, with the slots setEditMenuEnable(), copy() and paste().
    CControlView(QWidget* parent, CMemAPIWrapper* memory);

    /// Builds the page and writes the knob's factory settings into the memory. Once.
    void initialize(int knob);

    /// Writes the knob's factory settings, and 0 as its value, into the memory; tells neither observers nor the device.
    void setAllDefaultParamsToMemAPI();

    /// Whether a page has put this there, of this editor or of another one.
    [[nodiscard]] static bool isCopied(const QMimeData& mimeData);

    [[nodiscard]] bool canCopy() const;

    /// Whether the clipboard holds what the selected control takes. Asks the clipboard only when it or the selection
    /// has changed: its owner may be another program, and every step of a drag wants to know.
    [[nodiscard]] bool canPaste() const;

    [[nodiscard]] int knob() const;

    /// The page's own name as it is spoken.
    [[nodiscard]] QString name() const;

    /// As it is spoken; empty for an editor of another page.
    [[nodiscard]] QString nameOf(const CSlideEditor* editor) const;

    /// The editor of a setting; null for a category that is none.
    [[nodiscard]] CSlideEditor* editorOf(int category) const;

    /// In the order of reading, from the page's top.
    [[nodiscard]] QList<CSlideEditor*> editorsFromTheTop() const;

    /// The editor on which copy() and paste() act; null for the whole knob.
    [[nodiscard]] CSlideEditor* selectedEditor() const;

    /// Where the mark around the selected control is, on the page.
    [[nodiscard]] QRect markRect() const;

    /// Whether the selected control is marked. False until it is set.
    void setMarked(bool isMarked);
    [[nodiscard]] bool isMarked() const;

    /// Whether something lies over the page, so that nobody reaches it; those who listen are told. False until it is
    /// set.
    void setCovered(bool isCovered);
    [[nodiscard]] bool isCovered() const;

    /// Takes the keys and selects the whole knob, as a click on its ring does.
    void goTo();

    /// Repaints the mark: the focus may have gone to the selected control, or left it.
    void updateMark();

    /// Act on the selected control: the whole knob until one is selected. Nothing happens where something is missing.
    void copy();
    void paste();

    /// Offers Copy and Paste through the parent's commands. Returns when the menu has closed.
    void showContextMenu(const QPoint& globalPos);

    /// A context menu of one of the page's controls also selects it.
    bool eventFilter(QObject* object, QEvent* event) override;

  public slots:
    void sliderSelect(QWidget* slider);
    void knobSelect();

  signals:
    void selected(int numOfKnob);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void createKnob();
    void createEditors();
    void watchEditor(CSlideEditor* editor);
    void select(int control, QWidget* widget);

    /// As canPaste(), asked anew.
    [[nodiscard]] bool isClipboardForSelected() const;

    CMemAPIWrapper* m_memory;
    int m_numOfKnob = 0;
    // Children
    CKnobLED* m_knob = nullptr;
    QList<CSlideEditor*> m_editors; ///< in the order of the settings
    int m_selectedControl = 0;      ///< 0 for the knob, from 1 for the editors
    QWidget* m_selectedSlider = nullptr;
    mutable std::optional<bool> m_canPaste; ///< nothing until it is asked
    bool m_isMarked = false;
    bool m_isCovered = false;
};
