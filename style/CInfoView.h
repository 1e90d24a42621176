#pragma once

#include "widgets/COverlapView.h"

#include <QPixmap>
#include <QPoint>

class QPropertyAnimation;

/// What the splash and the about view share: the background, three lines of text over it, and a movement along one
/// line, by the property animVariable, at whose end the view closes.
///
/// Units    logical pixels.      Threads  GUI thread only.
/// Owns     its animation, as a child. Whoever creates it sets Qt::WA_DeleteOnClose.
class CInfoView : public COverlapView
{
    Q_OBJECT
    Q_PROPERTY(int animVariable READ getAnimVariable WRITE setAnimVariable)

  public:
    /// The three, from the top.
    [[nodiscard]] QStringList lines() const;

    /// How far the view is from its place.
    [[nodiscard]] int getAnimVariable() const;
    void setAnimVariable(int v);

  public slots:
    virtual void closeView();

  signals:
    void closed();

  protected:
    /// window      borrowed; locked as long as this view lives.
    /// background  at its logical size; null leaves the view to what lies below.
    /// direction   of the movement: the step that animVariable counts.
    CInfoView(QWidget* parent, QWidget* window, QPixmap background, const QPoint& direction);

    /// To be called once, before everything below.
    void initializeInfo(QString editorName, QString version, QString copyright);

    [[nodiscard]] QPropertyAnimation* animation() const;

    /// Moves the view, whose animVariable goes from one end to the other.
    void slide(int from, int to);

    /// Moves the view from its place, and closes it.
    void slideOut(int distance);
    [[nodiscard]] bool isSlidingOut() const;

    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QPixmap m_background;
    QString m_editorName;
    QString m_version;
    QString m_copyright;
    QPoint m_direction;
    QPropertyAnimation* m_animation = nullptr;
    int m_animVariable = 0;
    bool m_slidingOut = false;
};
