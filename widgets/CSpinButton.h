#pragma once

#include "device/CMemAPIProxy.h"
#include "widgets/StripBuffer.h"

#include <QAbstractSlider>

class COnOffButton;
class QTimer;

/// An up half and a down half that step a parameter between the slider's minimum and maximum.
///
/// Picture  5 rows: at the minimum, between the limits, up half pressed, down half pressed, at the maximum.
/// Threads  GUI thread only.
/// Failure  an edit that the memory takes back is never shown: the value falls back to the memory's.
class CSpinButton : public QAbstractSlider, public StripBuffer, public CMemAPIProxy
{
    Q_OBJECT
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment)
    Q_PROPERTY(QPixmap combinedImage READ combinedImage WRITE setCombinedImage)
    Q_PROPERTY(int imageCategories READ imageCategories WRITE setImageCategories)
    Q_PROPERTY(int controllerID READ controllerID WRITE setControllerID)

  public:
    explicit CSpinButton(QWidget* parent = nullptr);
    ~CSpinButton() override;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    void updateMemAPI() override;

  public slots:
    /// Shows the halves as they are held down, and ends a flash.
    void checkUpdate();

    /// Writes the value and redraws.
    void updateValue();

    void stepDown();
    void stepUp();

  protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void sliderChange(SliderChange change) override;
    [[nodiscard]] int imageRows() const override;
    [[nodiscard]] int imageRow() const override;

  private:
    [[nodiscard]] COnOffButton* createHalf(const char* stepSlot);
    void layoutHalves();
    void flash(bool up);

    COnOffButton* m_upButton;   ///< child, an invisible area: this widget draws both halves
    COnOffButton* m_downButton; ///< likewise
    QTimer* m_flashTimer;       ///< child
    bool m_upShownDown;
    bool m_downShownDown;
};
