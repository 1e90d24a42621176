#pragma once

#include <functional>
#include <memory>

class QWidget;

/// Makes a window that comes up beside the editor's and goes with it.
using CompanionMaker = std::function<std::unique_ptr<QWidget>()>;

enum class Editors
{
    One, ///< for the device there is
    Any, ///< each with a device of its own
};

/// The editor from its start to its end; what main() does, on the main thread. Blocks as long as the editor runs.
///
/// argv  as a CCommandLine leaves it: program, options of the toolkit, the path of a settings file that is opened when
/// the splash has finished, or none. editors says whether a session has one editor: a second start hands its file to
/// the running one then, and ends with 0, or with 1 if that one does not answer. makeCompanion is called once the
/// application object and its style exist, before the editor's window; null for none. The result is the exit status: 1
/// if the event loop ended with any other code than 0, else 0.
int runEditor(int argc, char** argv, const CompanionMaker& makeCompanion = {}, Editors editors = Editors::Any);
