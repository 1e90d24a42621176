#include "app/RunEditor.h"

#include "app/AccessibleEditor.h"
#include "app/ApplicationLook.h"
#include "app/CApplication.h"
#include "app/CFatalMessageGuard.h"
#include "app/CMainWindow.h"
#include "app/CSingleEditor.h"
#include "app/LocalFile.h"

#include <cstdio>
#include <optional>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace
{
// Blocks as large as a picture of the window go back to the system when they are freed. The C library would raise this
// limit with the first of them, and keep the memory of all that follow. The threads beside this one, which need little,
// share a heap instead of having one each.
void keepMemorySmall()
{
#ifdef __GLIBC__
    mallopt(M_MMAP_THRESHOLD, 128 * 1024); // NOLINT(concurrency-mt-unsafe): no other thread runs yet
    mallopt(M_ARENA_MAX, 2);               // NOLINT(concurrency-mt-unsafe): as above
#endif
}
} // namespace

int runEditor(int argc, char** argv, const CompanionMaker& makeCompanion, const SingleEditorMaker& makeSingleEditor)
{
    keepMemorySmall();
    const ActivationToken token = ActivationToken::fromEnvironment();
    std::optional<CFatalMessageGuard> fatalMessages(std::in_place, argc > 0 ? argv[0] : nullptr);
    CApplication application(argc, argv);
    fatalMessages.reset();
    ActivationToken::clearEnvironment();
    const QByteArray file(argc > 1 ? argv[1] : nullptr);
    const std::unique_ptr<CSingleEditor> singleEditor = makeSingleEditor ? makeSingleEditor() : nullptr;
    if (singleEditor) {
        QObject::connect(
            singleEditor.get(), &CSingleEditor::requested, &application,
            [](const QByteArray& path, const auto& its) { CApplication::handleRequest(LocalFile::toName(path), its); });
        const CSingleEditor::Start start = singleEditor->start(file, token);
        if (start == CSingleEditor::Start::Unanswered)
            std::fputs("ktz-jx-editor: the editor that is running does not answer; close it first\n", stderr);
        if (start != CSingleEditor::Start::Editor)
            return start == CSingleEditor::Start::HandedOver ? 0 : 1;
    }

    applyApplicationLook();
    QApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    AccessibleEditor::install();
    // The order on the screen: the companion first, so that the editor comes up in front of it.
    [[maybe_unused]] const std::unique_ptr<QWidget> companion = makeCompanion ? makeCompanion() : nullptr;

    int result = 0;
    {
        CMainWindow mainWindow;
        mainWindow.initialize();
        mainWindow.setApplicationFilePath(LocalFile::toName(file));
        mainWindow.setVisible(true);
        if (!token.isEmpty())
            token.bringToFront(mainWindow);
        g_mainWindow = &mainWindow;
        if (singleEditor)
            singleEditor->offerDevice(mainWindow);
        QObject::connect(&application, SIGNAL(lastWindowClosed()), &application, SLOT(quit()));
        result = QApplication::exec();
        g_mainWindow = nullptr;
        if (singleEditor)
            singleEditor->refuse();
    }
    return result != 0 ? 1 : 0;
}
