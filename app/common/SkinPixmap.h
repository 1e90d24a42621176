#pragma once

#include <QPixmap>

/// A picture of the skin in the variant for a screen's density. Null if there is no such picture.
///
/// path    of the plain PNG file, as ":images/name.png"; denser ones lie beside it as "name@2x.png" and "name@3x.png".
/// ratio   device pixels per logical pixel. The densest variant up to the next whole ratio is taken, so that a picture
///         is scaled down rather than up; its own ratio is set, so that it has the plain one's logical size.
///
/// Kept in the application's pixmap cache and shared: for what many widgets show. All of these: GUI thread only, while
/// the application object lives.
[[nodiscard]] QPixmap skinPixmap(const QString& path, qreal ratio);

/// The same for the densest of the user's screens.
[[nodiscard]] QPixmap skinPixmap(const QString& path);

/// The same, but read with each call and gone with its user: for pictures as large as the window, of which the cache
/// would keep a megabyte each, and for strips of which only frames are kept. Opaque ones have three bytes a pixel where
/// they are stored so, a quarter less memory than what is drawn fastest.
[[nodiscard]] QPixmap largeSkinPixmap(const QString& path, qreal ratio);
[[nodiscard]] QPixmap largeSkinPixmap(const QString& path);
