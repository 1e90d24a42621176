#pragma once

#include "style/CInfoFace.h"
#include "widgets/COverlapView.h"

class COnOffButton;
class QPropertyAnimation;

/// Says what the editor is: drops over the window with a bounce, and rises again when its close button is clicked
/// or Escape is pressed.
///
/// Units    logical pixels.      Threads  GUI thread only.
/// Owns     its button and its animation, as children. Whoever creates it sets Qt::WA_DeleteOnClose.
class CAboutView : public COverlapView
{
    Q_OBJECT
    Q_PROPERTY(int animVariable READ getAnimVariable WRITE setAnimVariable)

  public:
    /// window   borrowed; locked as long as this view lives.
    CAboutView(QWidget* parent, QWidget* window, QPixmap background);

    /// To be called once, before everything below.
    void initialize(QString editorName, QString version, QString copyright);

    void showView();

    /// How far the view is above its place.
    [[nodiscard]] int getAnimVariable() const;
    void setAnimVariable(int v);

  public slots:
    void hideView(); ///< rises and closes; while it already rises, nothing happens
    void closeView();

  signals:
    void closed();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    CInfoFace m_face;
    COnOffButton* m_closeButton = nullptr;
    QPropertyAnimation* m_dropAnimation = nullptr;
    int m_animVariable = 0;
    bool m_rising = false;
};
