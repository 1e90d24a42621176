#include "app/CCommandLine.h"
#include "app/CSingleEditor.h"
#include "app/RunEditor.h"

int main(int argc, char** argv)
{
    CCommandLine commandLine(QStringLiteral("ktz-jx-editor"),
                             QStringLiteral("Shows and changes the settings of a KTZ-JX."));
    if (const std::optional<int> status = commandLine.parse(argc, argv))
        return *status;
    return runEditor(commandLine.argc(), commandLine.argv(), {}, makeSingleEditor);
}
