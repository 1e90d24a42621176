#pragma once

#include <QPixmap>
#include <QString>

class QPainter;

/// What the splash and the about view show alike: the background and three lines of text.
struct CInfoFace
{
    QPixmap background; ///< at its logical size; null leaves the view to what lies below
    QString editorName;
    QString version;
    QString copyright;

    /// Draws the background at (0, 0) and the lines in white at their places, in the painter's font.
    void paintBackground(QPainter* painter) const;
    void paintText(QPainter* painter) const;
};
