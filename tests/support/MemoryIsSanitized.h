#pragma once

/// Whether a sanitizer watches the memory. It keeps what was freed, to notice who uses it still, and has memory of its
/// own, so that what the process holds says nothing.
#ifdef KTZ_SANITIZED
inline constexpr bool k_memoryIsSanitized = true;
#else
inline constexpr bool k_memoryIsSanitized = false;
#endif
