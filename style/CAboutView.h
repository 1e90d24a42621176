#pragma once

#include "style/CInfoView.h"

/// Says what the editor is: drops over the window with a bounce, and rises again when its close button is clicked
/// or Escape is pressed.
///
/// Threads  GUI thread only.
/// Owns     its button, as a child.
class CAboutView : public CInfoView
{
    Q_OBJECT

  public:
    /// window   borrowed; locked as long as this view lives.
    CAboutView(QWidget* parent, QWidget* window, QPixmap background);

    /// To be called once, before everything below.
    void initialize(QString editorName, QString version, QString copyright);

    void showView();

  public slots:
    void hideView(); ///< rises and closes; while it already rises, nothing happens
};
