#include "app/Manual.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTextStream>

/// Prints the path of the manual in the system's language as the editor would find it if it lay where this program
/// lies. Exit status 1 when there is none.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString path = Manual::find(QLocale::languageToString(QLocale::system().language()), Manual::folders());
    QTextStream(stdout) << path << '\n';
    return path.isEmpty() ? 1 : 0;
}
