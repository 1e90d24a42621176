#include "app/Manual.h"
#include "app/common/Constants.h"
#include "tests/support/CTestCase.h"

#include <QTemporaryDir>

namespace
{
/// A folder of manuals with one in each of these languages.
void addManuals(const QString& folder, const QStringList& languages)
{
    for (const QString& language : languages) {
        QVERIFY(QDir(folder).mkpath(language));
        QFile manual(folder + u'/' + language + u'/' + k_manualFileName);
        QVERIFY(manual.open(QIODevice::WriteOnly));
    }
}
} // namespace

class TestManual : public CTestCase
{
    Q_OBJECT

  private slots:
    void fileName();
    void systemLanguageComesFirst();
    void fallsBackToEnglish();
    void languageElsewhereComesBeforeEnglish();
    void missingManual();
    void foldersAreBesideTheProgramAndUnderThePrefix();
    void openingAMissingManualFails();
};

void TestManual::fileName()
{
    QCOMPARE(k_manualFileName, QStringLiteral("KTZ-JX_Editor_OperationManual.pdf"));
}

void TestManual::systemLanguageComesFirst()
{
    const QTemporaryDir folder;
    addManuals(folder.path(), {QStringLiteral("English"), QStringLiteral("German")});
    QCOMPARE(Manual::find(QStringLiteral("German"), {folder.path()}),
             folder.filePath(QStringLiteral("German/") + k_manualFileName));
}

void TestManual::fallsBackToEnglish()
{
    const QTemporaryDir folder;
    addManuals(folder.path(), {QStringLiteral("English")});
    QCOMPARE(Manual::find(QStringLiteral("German"), {folder.path()}),
             folder.filePath(QStringLiteral("English/") + k_manualFileName));
}

void TestManual::languageElsewhereComesBeforeEnglish()
{
    const QTemporaryDir first;
    const QTemporaryDir second;
    addManuals(first.path(), {QStringLiteral("English")});
    addManuals(second.path(), {QStringLiteral("German")});
    QCOMPARE(Manual::find(QStringLiteral("German"), {first.path(), second.path()}),
             second.filePath(QStringLiteral("German/") + k_manualFileName));
}

void TestManual::missingManual()
{
    const QTemporaryDir folder;
    QVERIFY(Manual::find(QStringLiteral("German"), {folder.path()}).isEmpty());
    QVERIFY(Manual::find(QStringLiteral("German"), {}).isEmpty());
    // A folder of that name is no manual.
    QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("English/") + k_manualFileName));
    QVERIFY(Manual::find(QStringLiteral("German"), {folder.path()}).isEmpty());
}

void TestManual::foldersAreBesideTheProgramAndUnderThePrefix()
{
    const QStringList folders = Manual::folders();
    QCOMPARE(folders.size(), 2);
    QCOMPARE(folders[0], QCoreApplication::applicationDirPath() + QStringLiteral("/manual"));
    QCOMPARE(QDir::cleanPath(folders[1]), QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                                          QStringLiteral("/../share/ktz-jx-editor/manual")));
}

void TestManual::openingAMissingManualFails()
{
    QVERIFY(!Manual::open()); // there is none beside this test
}

QTEST_GUILESS_MAIN(TestManual)
#include "TestManual.moc"
