#include "app/Manual.h"

#include "app/common/Constants.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QLocale>
#include <QUrl>

QStringList Manual::folders()
{
    const QString programFolder = QCoreApplication::applicationDirPath();
    return {programFolder + QStringLiteral("/manual"),
            programFolder + QStringLiteral("/../share/ktz-jx-editor/manual")};
}

QString Manual::find(const QString& language, const QStringList& folders)
{
    for (const QString& localisation : {language, QStringLiteral("English")}) {
        for (const QString& folder : folders) {
            const QFileInfo manual(folder + u'/' + localisation + u'/' + k_manualFileName);
            if (manual.isFile())
                return manual.absoluteFilePath();
        }
    }
    return {};
}

bool Manual::open()
{
    const QString path = find(QLocale::languageToString(QLocale::system().language()), folders());
    return !path.isEmpty() && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}
