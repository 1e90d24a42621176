#pragma once

/// Makes the skin's three font families (k_fontGLT7Bold, k_fontGLT8, k_fontGLT10Bold) known to the application, from
/// the resource bundle `common_images`, which has to be registered before.
///
/// Threads  GUI thread, after the application object exists. A second call changes nothing.
/// false    a font file is missing or unreadable; the others are registered all the same.
[[nodiscard]] bool registerSkinFonts();
