#pragma once

#include <QPixmap>

/// The picture in three bytes a pixel, for large ones through which nothing shines: a quarter less memory. What is
/// transparent in it becomes black. Its ratio stays.
[[nodiscard]] QPixmap opaquePixmap(const QImage& picture);
