#include "app/Manual.h"
#include "app/common/Constants.h"
#include "tests/support/CTestCase.h"

#include <QTemporaryDir>

#include <optional>

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
    void init();
    void cleanup();

    void fileName();
    void systemLanguageComesFirst();
    void fallsBackToEnglish();
    void languageElsewhereComesBeforeEnglish();
    void missingManual();
    void foldersAreBesideTheProgramUnderThePrefixAndInTheBundle();
    void languagesOfABundle();
    void openingAMissingManualFails();
    void launcherTellsWhetherItOpens_data();
    void launcherTellsWhetherItOpens();
    void launcherGetsThePathAlone();
    void missingLauncherFails();
    void launcherThatBecomesTheViewerIsLeftAlone();
    void nobodyIsToldOnceTheWindowIsGone();

  private:
    /// Makes this shell script the desktop's launcher, in a folder that PATH begins with, and runs it on a document.
    void launch(const QByteArray& script, std::chrono::milliseconds patience = std::chrono::minutes(1));

    std::optional<QTemporaryDir> m_folder;
    std::optional<QObject> m_window;
    int m_failures = 0;
    QByteArray m_path;
};

void TestManual::init()
{
    CTestCase::init();
    m_folder.emplace();
    m_window.emplace();
    m_failures = 0;
    m_path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(m_folder->path()) + ':' + m_path);
}

void TestManual::cleanup()
{
    qputenv("PATH", m_path);
}

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

void TestManual::foldersAreBesideTheProgramUnderThePrefixAndInTheBundle()
{
    const QStringList folders = Manual::folders();
    QCOMPARE(folders.size(), 3);
    QCOMPARE(folders[0], QCoreApplication::applicationDirPath() + QStringLiteral("/manual"));
    QCOMPARE(QDir::cleanPath(folders[1]), QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                                          QStringLiteral("/../share/ktz-jx-editor/manual")));
    QCOMPARE(QDir::cleanPath(folders[2]),
             QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../Resources")));
}

void TestManual::languagesOfABundle()
{
    const QTemporaryDir folder;
    addManuals(folder.path(), {QStringLiteral("English.lproj"), QStringLiteral("German.lproj")});
    QCOMPARE(Manual::find(QStringLiteral("German"), {folder.path()}),
             folder.filePath(QStringLiteral("German.lproj/") + k_manualFileName));
    QCOMPARE(Manual::find(QStringLiteral("French"), {folder.path()}),
             folder.filePath(QStringLiteral("English.lproj/") + k_manualFileName));
}

void TestManual::openingAMissingManualFails()
{
    Manual::open(&*m_window, [this] { ++m_failures; }); // there is none beside this test
    QCOMPARE(m_failures, 1);
}

void TestManual::launch(const QByteArray& script, std::chrono::milliseconds patience)
{
    QFile launcher(m_folder->filePath(QStringLiteral("xdg-open")));
    QVERIFY(launcher.open(QIODevice::WriteOnly));
    launcher.write("#!/bin/sh\ncd '" + QFile::encodeName(m_folder->path()) + "'\n" + script + "\n");
    launcher.close();
    QVERIFY(launcher.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    Manual::launch(
        QStringLiteral("/a folder/manual.pdf"), &*m_window, [this] { ++m_failures; }, patience);
}

void TestManual::launcherTellsWhetherItOpens_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<int>("failures");
    QTest::newRow("opened") << QByteArray("exit 0") << 0;
    QTest::newRow("nothing shows it") << QByteArray("exit 3") << 1;
    QTest::newRow("crashed") << QByteArray("kill -9 $$") << 1;
}

void TestManual::launcherTellsWhetherItOpens()
{
    QFETCH(QByteArray, end);
    QFETCH(int, failures);
    // It waits for the test, which would hang if the launcher were waited for.
    launch("touch running; until [ -e go ]; do sleep 0.01; done; " + end);
    QCOMPARE(m_failures, 0);
    QTRY_VERIFY(QFile::exists(m_folder->filePath(QStringLiteral("running"))));
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("go")));
    QTRY_COMPARE(m_window->children().size(), 0); // its end has been seen
    QCOMPARE(m_failures, failures);
}

void TestManual::launcherGetsThePathAlone()
{
    launch("printf '%s\\n' $# \"$1\" >arguments.new; mv arguments.new arguments");
    QFile arguments(m_folder->filePath(QStringLiteral("arguments")));
    QTRY_VERIFY(arguments.exists());
    QVERIFY(arguments.open(QIODevice::ReadOnly));
    QCOMPARE(arguments.readAll(), QByteArray("1\n/a folder/manual.pdf\n"));
}

void TestManual::missingLauncherFails()
{
    qputenv("PATH", QFile::encodeName(m_folder->path()));
    Manual::launch(QStringLiteral("manual.pdf"), &*m_window, [this] { ++m_failures; });
    QCOMPARE(m_failures, 1);

    // One that the system can't run.
    QFile launcher(m_folder->filePath(QStringLiteral("xdg-open")));
    QVERIFY(launcher.open(QIODevice::WriteOnly));
    launcher.write("#!/nowhere/shell\n");
    launcher.close();
    QVERIFY(launcher.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    Manual::launch(QStringLiteral("manual.pdf"), &*m_window, [this] { ++m_failures; });
    QTRY_COMPARE(m_failures, 2);
}

void TestManual::launcherThatBecomesTheViewerIsLeftAlone()
{
    launch("touch running; until [ -e go ]; do sleep 0.01; done; touch ended; exit 3", std::chrono::milliseconds(1));
    QTRY_COMPARE(m_window->children().size(), 0);
    QTRY_VERIFY(QFile::exists(m_folder->filePath(QStringLiteral("running"))));
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("go")));
    QTRY_VERIFY(QFile::exists(m_folder->filePath(QStringLiteral("ended"))));
    QTest::qWait(50);
    QCOMPARE(m_failures, 0);
}

void TestManual::nobodyIsToldOnceTheWindowIsGone()
{
    launch("touch running; until [ -e go ]; do sleep 0.01; done; touch ended; exit 3");
    QTRY_VERIFY(QFile::exists(m_folder->filePath(QStringLiteral("running"))));
    m_window.reset();
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("go")));
    QTRY_VERIFY(QFile::exists(m_folder->filePath(QStringLiteral("ended"))));
    QTest::qWait(50);
    QCOMPARE(m_failures, 0);
}

KTZ_TEST(QCoreApplication, TestManual)
#include "TestManual.moc"
