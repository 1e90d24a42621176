#pragma once

#include <functional>
#include <memory>

class CSingleEditor;
class QWidget;

/// Makes a window that comes up beside the editor's and goes with it.
using CompanionMaker = std::function<std::unique_ptr<QWidget>()>;

/// Makes what keeps a session to one editor, or null.
using SingleEditorMaker = std::function<std::unique_ptr<CSingleEditor>()>;

/// The editor from its start to its end; what main() does, on the main thread. Blocks as long as the editor runs.
///
/// argv  as a CCommandLine leaves it: program, options of the toolkit, the path of a settings file that is opened when
/// the splash has finished, or none. makeCompanion is called once the application object and its style exist, before
/// the editor's window; null for none. makeSingleEditor is null for one of many, each with a device of its own;
/// otherwise a second start hands its file to the running one, and ends with 0, or with 1 if that one does not answer.
/// The result is the exit status: 1 if the event loop ended with any other code than 0, else 0.
int runEditor(int argc, char** argv, const CompanionMaker& makeCompanion = {},
              const SingleEditorMaker& makeSingleEditor = {});
