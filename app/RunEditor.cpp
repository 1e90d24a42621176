#include "app/RunEditor.h"

#include "app/CApplication.h"
#include "app/CMainWindow.h"
#include "app/DisplaySetup.h"
#include "app/common/SkinFonts.h"
#include "style/CJXStyle.h"

#include <QIcon>
#include <QScreen>

#include <optional>

int runEditor(int argc, char** argv, const CompanionMaker& makeCompanion)
{
    DisplaySetup::prepareEnvironment();
    std::optional<DisplaySetup::CFatalMessageGuard> fatalMessages(std::in_place);
    CApplication application(argc, argv);
    fatalMessages.reset();
    QApplication::setFont(
        DisplaySetup::dialogFont(QApplication::font(), QGuiApplication::primaryScreen()->logicalDotsPerInch()));

    QApplication::setStyle(new CJXStyle); // the application owns it from here on
    Q_INIT_RESOURCE(common_images);
    // Without a font of the skin its text appears in the desktop's: readable, if not as drawn.
    static_cast<void>(registerSkinFonts());
    QApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icon/ktz-jx-editor-64.png")));
    // The order on the screen: the companion first, so that the editor comes up in front of it.
    const std::unique_ptr<QWidget> companion = makeCompanion ? makeCompanion() : nullptr;

    int result = 0;
    {
        CMainWindow mainWindow;
        mainWindow.initialize();
        if (argc > 1 && argv[1] != nullptr)
            mainWindow.setApplicationFilePath(QString::fromLocal8Bit(argv[1]));
        mainWindow.setVisible(true);
        g_mainWindow = &mainWindow;
        QObject::connect(&application, SIGNAL(lastWindowClosed()), &application, SLOT(quit()));
        result = QApplication::exec();
    }
    return result != 0 ? 1 : 0;
}
