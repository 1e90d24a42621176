#pragma once

#include <QPixmap>

/// A picture of the skin in the variant for a screen's density, loaded once and shared. Null if there is no such
/// picture.
///
/// path    of the plain picture, as ":images/name.png"; denser ones lie beside it as "name@2x.png" and "name@3x.png".
/// ratio   device pixels per logical pixel. The densest variant up to the next whole ratio is taken, so that a picture
///         is scaled down rather than up; its own ratio is set, so that it has the plain one's logical size.
[[nodiscard]] QPixmap skinPixmap(const QString& path, qreal ratio);

/// The same for the densest of the user's screens.
[[nodiscard]] QPixmap skinPixmap(const QString& path);
