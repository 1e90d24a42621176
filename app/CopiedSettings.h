#pragma once

/// Settings that an editor has copied, as the system clipboard holds them. GUI thread only.
namespace CopiedSettings
{
/// Empties the clipboard if an editor's settings are on it. What any other program put there is the user's and stays.
/// Waits for the program that owns the clipboard to name its formats.
void removeFromClipboard();
} // namespace CopiedSettings
