#pragma once

#include "device/CMemAPIProxy.h"

#include <QWidget>

#include <optional>

class CSpinButton;
class QAbstractSlider;

inline const QString k_spinImage = QStringLiteral(":/images/ktz_spin.png");

/// A slider with a spin button beside it, kept in step, that edit one parameter together. The editor is bound to the
/// parameter, its two parts are not.
///
/// Units    logical pixels.      Threads  GUI thread only.
/// Failure  an edit that the memory takes back is never shown: both parts fall back to the memory's value.
class CSlideEditor : public QWidget, public CMemAPIProxy
{
    Q_OBJECT
    Q_PROPERTY(int controllerID READ controllerID WRITE setControllerID)

  public:
    explicit CSlideEditor(QWidget* parent = nullptr);
    ~CSlideEditor() override;

    using CMemAPIProxy::initialize;

    /// Once. The spin button takes the slider's range and value.
    ///
    /// slider         becomes a child; null for a spin button alone.
    /// rect           the slider's place in this editor's parent; the editor is 10 higher above and below, 6 wider.
    /// spinOverlaps   whether the slider keeps its whole width below the spin button.
    void initialize(QAbstractSlider* slider, const QRect& rect, bool spinOverlaps);

    /// Moves the editor so that the slider's corner is at this point of the parent.
    void moveSlider(int x, int y);

    /// Of a text slider, shown and typed. No effect on other sliders.
    void setSliderTextColor(const QColor& color);

    void focusOnSlider();

    /// Takes the keys and is selected, as by a click.
    void goTo();

    /// A child; null where there is none.
    [[nodiscard]] QAbstractSlider* slider() const;

    /// The slider's value; 0 and no effect without a slider.
    [[nodiscard]] int getValue() const;
    void setValue(int value);

    /// Shows the memory's value. One outside the slider's range is brought into it, in the memory, on the device and
    /// here: what is shown is what counts.
    void updateMemAPI() override;

  public slots:
    void editorSelect();

    /// Writes the value and brings both parts to it, unless both show the same already.
    void valueChange(int value);

  signals:
    void selected(QWidget* editor);
    void valueChanged(int value);

  protected:
    /// A digit that neither part has taken begins to type.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void connectPart(QAbstractSlider* part);
    void takeFocus(int action);

    QAbstractSlider* m_slider = nullptr; ///< child
    CSpinButton* m_spinButton = nullptr; ///< child
    std::optional<int> m_reloaded;       ///< the memory's value, until it is shown
};
