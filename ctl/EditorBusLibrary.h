#pragma once

#include "ctl/CEditorBus.h"

/// Loads the library that knows the session bus, which lies with the editor's own, and connects there: an
/// EditorBusMaker. Null also where it is not installed.
[[nodiscard]] std::unique_ptr<CEditorBus> connectToEditorByLibrary(CEditorListener& listener,
                                                                   const EditorBusTimes& times);
