#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

class QObject;

/// The operation manual: a PDF document in one folder a language. GUI thread only.
namespace Manual
{
/// The folders that may hold manuals: beside the program, then under the prefix that it was installed to, then in the
/// bundle that it is a part of.
[[nodiscard]] QStringList folders();

/// The path of the manual in this language (its English name), or else in English, or else an empty string. The folder
/// of a language is called as it is, or with ".lproj" behind.
[[nodiscard]] QString find(const QString& language, const QStringList& folders);

/// Opens the manual in the system's language with the desktop's viewer.
/// failed   called on the GUI thread, during the call or later, if there is no manual or nothing opens it; not after
///          context, borrowed, is gone.
void open(QObject* context, const std::function<void()>& failed);

/// How long a desktop's launcher is listened to. One that still runs then has become the viewer itself: it is left to
/// its user, whatever it ends with.
inline constexpr std::chrono::seconds k_launcherPatience{10};

/// Opens a document with the desktop's launcher, xdg-open, and learns from its exit whether anything shows it: the
/// toolkit's own call tells only that a launcher was started. Does not wait. The launcher outlives the editor.
/// failed   as above, if there is no launcher, or it ends with another status than 0 in time.
void launch(const QString& path, QObject* context, const std::function<void()>& failed,
            std::chrono::milliseconds patience = k_launcherPatience);
} // namespace Manual
