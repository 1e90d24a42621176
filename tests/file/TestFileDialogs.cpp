#include "app/common/Constants.h"
#include "file/CFileWrapper.h"
#include "tests/file/SettingsFixture.h"
#include "tests/support/CFileDialogAnswer.h"
#include "tests/support/CMessageBoxAnswer.h"
#include "tests/support/CTestCase.h"

#include <QApplication>

#include <functional>
#include <optional>

namespace
{
const QString k_cancel;

QByteArray settingsFile(const QByteArray& controlView)
{
    return "<!DOCTYPE KTZJXEditor><parameters version=\"1.0\"><controlview>" + controlView +
           "</controlview></parameters>";
}

const QByteArray k_goodFile = settingsFile("<key3><key1103>55</key1103></key3>");
const QByteArray k_halfBrokenFile = settingsFile("<key0><key1100>1</key1100></key0><key1/>");
} // namespace

class TestFileDialogs : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void init();
    void cleanup();

    void checkSaveFileAsksNothing_data();
    void checkSaveFileAsksNothing();
    void checkSaveFileAsksAboutChanges();
    void checkSaveFile_data();
    void checkSaveFile();

    void openFileShowsTheDialog();
    void openFileStartsWhereTheLastFileWas();
    void openFileCancelled();
    void openFileByName();
    void openFileByEmptyNameDoesNothing();
    void openFileFails_data();
    void openFileFails();
    void openFileAsksAboutChangesFirst_data();
    void openFileAsksAboutChangesFirst();

    void saveFileRightAfterStartProposesUntitled();
    void saveFileWithoutFolderProposesNothing();
    void saveFileOverwritesTheCurrentFileWithoutAsking();
    void saveFileOfADeletedFileAsksForAName();
    void saveFileFails();
    void changeDuringAWriteKeepsItsMark_data();
    void changeDuringAWriteKeepsItsMark();
    void reportDuringAReadKeepsItsMark_data();
    void reportDuringAReadKeepsItsMark();

    void saveAsFileCancelled();
    void saveAsFileAddsTheSuffix_data();
    void saveAsFileAddsTheSuffix();
    void saveAsFileAsksBeforeItOverwrites_data();
    void saveAsFileAsksBeforeItOverwrites();
    void saveAsFileAsksAgainAfterNo();
    void saveAsFileAsksAfterTheSuffixIsAdded();
    void nameWithADotIsAskedAboutWithItsSuffix();
    void saveAsFileOverAFolderFails();
    void saveAsFileFails();

  private:
    /// A file object whose current path is this folder's file of that name.
    [[nodiscard]] QString savedAs(CFileWrapper& file, const QString& name) const;

    std::optional<SettingsFixture> m_settings;
    std::optional<QWidget> m_window;
    std::optional<CMessageBoxAnswer> m_boxes;
};

void TestFileDialogs::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void TestFileDialogs::init()
{
    CTestCase::init();
    m_settings.emplace();
    m_window.emplace();
    m_boxes.emplace(QMessageBox::Ok);
    qputenv("HOME", QFile::encodeName(m_settings->path("home")));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_settings->path("home/.config")));
}

void TestFileDialogs::cleanup()
{
    m_boxes.reset();
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

QString TestFileDialogs::savedAs(CFileWrapper& file, const QString& name) const
{
    CFileDialogAnswer dialogs({m_settings->path(name)});
    [&] { QVERIFY(file.saveAsFile()); }();
    return file.currentPath();
}

void TestFileDialogs::checkSaveFileAsksNothing_data()
{
    QTest::addColumn<bool>("hasMemory");
    QTest::newRow("no memory") << false;
    QTest::newRow("no changes") << true;
}

void TestFileDialogs::checkSaveFileAsksNothing()
{
    QFETCH(bool, hasMemory);
    CFileWrapper file(&*m_window, hasMemory ? &m_settings->memory : nullptr);
    QVERIFY(file.checkSaveFile());
    QCOMPARE(m_boxes->boxes().size(), 0);
}

void TestFileDialogs::checkSaveFileAsksAboutChanges()
{
    m_settings->memory.setDirty(true);
    m_boxes->setAnswer(QMessageBox::No);
    CFileWrapper file(&*m_window, &m_settings->memory);
    QVERIFY(file.checkSaveFile());
    QCOMPARE(m_boxes->boxes().size(), 1);
    const CMessageBoxAnswer::Box box = m_boxes->boxes().first();
    QCOMPARE(box.title, QString());
    QCOMPARE(box.text, QString("The parameter is modified.\r\nSave?"));
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    QCOMPARE(box.defaultButton, QMessageBox::Yes);
    QCOMPARE(box.parent, &*m_window);
}

void TestFileDialogs::checkSaveFile_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("goOn");
    QTest::addColumn<bool>("saved");
    QTest::newRow("yes, saved") << QMessageBox::Yes << "a.CJX" << true << true;
    QTest::newRow("yes, but no name") << QMessageBox::Yes << k_cancel << false << false;
    QTest::newRow("no") << QMessageBox::No << k_cancel << true << false;
    QTest::newRow("cancel") << QMessageBox::Cancel << k_cancel << false << false;
    QTest::newRow("closed") << QMessageBox::NoButton << k_cancel << false << false;
}

void TestFileDialogs::checkSaveFile()
{
    QFETCH(QMessageBox::StandardButton, answer);
    QFETCH(QString, name);
    QFETCH(bool, saved);
    m_settings->memory.setDirty(true);
    m_boxes->setAnswer(answer);
    const QString path = m_settings->path("a.CJX");
    CFileDialogAnswer dialogs({name.isNull() ? name : path});
    CFileWrapper file(&*m_window, &m_settings->memory);
    QTEST(file.checkSaveFile(), "goOn");
    QCOMPARE(QFileInfo::exists(path), saved);
    QCOMPARE(m_settings->memory.isDirty(), !saved);
    QCOMPARE(m_boxes->boxes().size(), 1);
    QCOMPARE(dialogs.dialogs().size(), answer == QMessageBox::Yes ? 1 : 0);
}

void TestFileDialogs::openFileShowsTheDialog()
{
    const QString path = m_settings->file("a.CJX", k_goodFile);
    CFileWrapper file(&*m_window, &m_settings->memory);
    file.initialize();
    const QString documents = file.currentPath();
    CFileDialogAnswer dialogs({path});
    QVERIFY(file.openFile());
    QCOMPARE(file.currentPath(), path);
    QCOMPARE(m_settings->memory.getParam(1103), 55);
    QVERIFY(!m_settings->memory.isDirty());
    QCOMPARE(m_boxes->boxes().size(), 0);

    QCOMPARE(dialogs.dialogs().size(), 1);
    const CFileDialogAnswer::Dialog dialog = dialogs.dialogs().first();
    QCOMPARE(dialog.title, QString("Open file"));
    QCOMPARE(dialog.folder, documents);
    QCOMPARE(dialog.filters, QStringList{"KTZ-JX files (*.CJX)"});
    QVERIFY(!dialog.saves);
    QVERIFY(!dialog.hasParent);
}

void TestFileDialogs::openFileStartsWhereTheLastFileWas()
{
    QVERIFY(QDir(m_settings->folder.path()).mkdir("sets"));
    CFileWrapper file(&*m_window, &m_settings->memory);
    QVERIFY(file.openFile(m_settings->file("sets/a.CJX", k_goodFile)));
    CFileDialogAnswer dialogs({k_cancel});
    QVERIFY(!file.openFile());
    QCOMPARE(dialogs.dialogs().first().folder, m_settings->path("sets"));
}

void TestFileDialogs::openFileCancelled()
{
    CFileWrapper file(&*m_window, &m_settings->memory);
    file.initialize();
    const QString before = file.currentPath();
    CFileDialogAnswer dialogs({k_cancel});
    QVERIFY(!file.openFile());
    QCOMPARE(dialogs.dialogs().size(), 1);
    QCOMPARE(m_boxes->boxes().size(), 0);
    QCOMPARE(file.currentPath(), before);
    QCOMPARE(m_settings->memory.getParamList(), factoryList());
}

void TestFileDialogs::openFileByName()
{
    const QString path = m_settings->file("a.CJX", k_goodFile);
    CFileWrapper file(&*m_window, &m_settings->memory);
    m_settings->memory.setDirty(true);
    QVERIFY(file.openFile(path));
    QCOMPARE(file.currentPath(), path);
    QVERIFY(!m_settings->memory.isDirty()); // and nobody was asked
    QCOMPARE(m_boxes->boxes().size(), 0);
}

void TestFileDialogs::openFileByEmptyNameDoesNothing()
{
    CFileWrapper file(&*m_window, &m_settings->memory);
    QVERIFY(!file.openFile(QString()));
    QCOMPARE(m_boxes->boxes().size(), 0);
}

void TestFileDialogs::openFileFails_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("wasDirty");
    QTest::addColumn<bool>("replaced"); // what was read before the fault is in the memory
    QTest::newRow("not a settings file") << k_oldBytes << false << false;
    QTest::newRow("not a settings file, changes before") << k_oldBytes << true << false;
    QTest::newRow("fault part-way") << k_halfBrokenFile << false << true;
    QTest::newRow("fault part-way, changes before") << k_halfBrokenFile << true << true;
}

void TestFileDialogs::openFileFails()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, wasDirty);
    QFETCH(bool, replaced);
    CFileWrapper file(&*m_window, &m_settings->memory);
    file.initialize();
    const QString before = file.currentPath();
    m_settings->memory.setDirty(wasDirty);
    QVERIFY(!file.openFile(m_settings->file("a.CJX", bytes)));
    QCOMPARE(file.currentPath(), before);
    QCOMPARE(m_settings->memory.isDirty(), wasDirty);
    // What was read before the fault counts, and the rest is what it was.
    ParamList expected = factoryList();
    if (replaced)
        expected["0"] = knobList(0, {"1", 0, 127, 0, 0});
    QCOMPARE(m_settings->memory.getParamList(), expected);

    QCOMPARE(m_boxes->boxes().size(), 1);
    const CMessageBoxAnswer::Box box = m_boxes->boxes().first();
    QCOMPARE(box.title, QString("Open file"));
    QCOMPARE(box.text, QString("Failed to open the data."));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.defaultButton, QMessageBox::Ok);
    QCOMPARE(box.parent, &*m_window);
}

void TestFileDialogs::openFileAsksAboutChangesFirst_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<bool>("opened");
    QTest::newRow("no") << QMessageBox::No << true;
    QTest::newRow("cancel stops the open") << QMessageBox::Cancel << false;
}

void TestFileDialogs::openFileAsksAboutChangesFirst()
{
    QFETCH(QMessageBox::StandardButton, answer);
    QFETCH(bool, opened);
    m_settings->memory.setDirty(true);
    m_boxes->setAnswer(answer);
    CFileDialogAnswer dialogs({m_settings->file("a.CJX", k_goodFile)});
    CFileWrapper file(&*m_window, &m_settings->memory);
    QCOMPARE(file.openFile(), opened);
    QCOMPARE(dialogs.dialogs().size(), opened ? 1 : 0);
    QCOMPARE(m_settings->memory.isDirty(), !opened);
    QCOMPARE(m_boxes->boxes().size(), 1);
}

void TestFileDialogs::saveFileRightAfterStartProposesUntitled()
{
    CFileWrapper file(&*m_window, &m_settings->memory);
    file.initialize();
    const QString documents = file.currentPath();
    m_settings->memory.setDirty(true);
    const QString path = m_settings->path("a.CJX");
    CFileDialogAnswer dialogs({path});
    QVERIFY(file.saveFile());
    QVERIFY(QFileInfo(path).isFile());
    QCOMPARE(file.currentPath(), path);
    QVERIFY(!m_settings->memory.isDirty());

    QCOMPARE(dialogs.dialogs().size(), 1);
    const CFileDialogAnswer::Dialog dialog = dialogs.dialogs().first();
    QCOMPARE(dialog.title, QString("Save file"));
    QCOMPARE(dialog.folder, documents);
    QCOMPARE(dialog.proposedName, QString("untitled"));
    QCOMPARE(dialog.filters, QStringList{"KTZ-JX files (*.CJX)"});
    QVERIFY(dialog.saves);
    QVERIFY(!dialog.hasParent);
    QVERIFY(!dialog.asksBeforeOverwrite);
}

void TestFileDialogs::saveFileWithoutFolderProposesNothing()
{
    CFileWrapper file(&*m_window, &m_settings->memory);
    CFileDialogAnswer dialogs({k_cancel});
    QVERIFY(!file.saveFile());
    QCOMPARE(dialogs.dialogs().first().proposedName, QString());
}

void TestFileDialogs::saveFileOverwritesTheCurrentFileWithoutAsking()
{
    CFileWrapper file(&*m_window, &m_settings->memory);
    const QString path = savedAs(file, "a.CJX");
    const QByteArray before = SettingsFixture::bytesOf(path);
    m_settings->memory.setParam(1103, 99);
    QVERIFY(m_settings->memory.isDirty());

    CFileDialogAnswer dialogs({});
    QVERIFY(file.saveFile());
    QCOMPARE(dialogs.dialogs().size(), 0);
    QCOMPARE(m_boxes->boxes().size(), 0);
    QVERIFY(!m_settings->memory.isDirty());
    QCOMPARE(SettingsFixture::bytesOf(path), QByteArray(before).replace("<key1103>7<", "<key1103>99<"));
}

void TestFileDialogs::saveFileOfADeletedFileAsksForAName()
{
    CFileWrapper file(&*m_window, &m_settings->memory);
    QVERIFY(QFile::remove(savedAs(file, "a.CJX")));
    CFileDialogAnswer dialogs({k_cancel});
    QVERIFY(!file.saveFile());
    QCOMPARE(dialogs.dialogs().size(), 1);
    QCOMPARE(dialogs.dialogs().first().proposedName, QString("a.CJX"));
    QVERIFY(!QFileInfo::exists(file.currentPath()));
}

void TestFileDialogs::saveFileFails()
{
    // The current path still names a file, but in a place that takes none.
    CFileWrapper file(&*m_window, &m_settings->memory);
    const QString path = savedAs(file, "a.CJX");
    QVERIFY(QFile::remove(path));
    QVERIFY(QFile::link("/proc/self/comm", path));
    m_settings->memory.setDirty(true);
    QVERIFY(!file.saveFile());
    QCOMPARE(file.currentPath(), path);
    QVERIFY(m_settings->memory.isDirty());

    QCOMPARE(m_boxes->boxes().size(), 1);
    const CMessageBoxAnswer::Box box = m_boxes->boxes().first();
    QCOMPARE(box.title, QString("Save file"));
    QCOMPARE(box.text, QString("Failed to save."));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.defaultButton, QMessageBox::Ok);
    QCOMPARE(box.parent, &*m_window);
}

namespace
{
/// A settings file during whose writing and reading something happens, and which may then fail.
class CInterruptedFile : public CFileWrapper
{
  public:
    CInterruptedFile(QWidget* window, CMemAPIWrapper* memory, std::function<void()> interruption, bool fails)
        : CFileWrapper(window, memory), m_interruption(std::move(interruption)), m_fails(fails)
    {
    }

    QString createData(QDomDocument* document) override
    {
        QString error = CFileWrapper::createData(document);
        m_interruption();
        return m_fails ? k_saveError : error;
    }

    QString parseData(const QDomDocument& document) override
    {
        QString error = CFileWrapper::parseData(document);
        m_interruption();
        return m_fails ? k_openError : error;
    }

  private:
    std::function<void()> m_interruption;
    bool m_fails;
};
} // namespace

void TestFileDialogs::changeDuringAWriteKeepsItsMark_data()
{
    QTest::addColumn<bool>("wasDirty");
    QTest::addColumn<bool>("changes");
    QTest::addColumn<bool>("fails");
    QTest::addColumn<bool>("isDirty");
    QTest::newRow("nothing changed") << false << false << false << false;
    QTest::newRow("changed before") << true << false << false << false;
    QTest::newRow("changed meanwhile") << false << true << false << true;
    QTest::newRow("changed before and meanwhile") << true << true << false << true;
    QTest::newRow("nothing changed, write fails") << false << false << true << false;
    QTest::newRow("changed before, write fails") << true << false << true << true;
    QTest::newRow("changed meanwhile, write fails") << false << true << true << true;
}

void TestFileDialogs::changeDuringAWriteKeepsItsMark()
{
    QFETCH(bool, wasDirty);
    QFETCH(bool, changes);
    QFETCH(bool, fails);
    CMemAPIWrapper& memory = m_settings->memory;
    memory.setDirty(wasDirty);
    const auto change = [&] {
        if (changes)
            memory.setParam(1103, 99);
    };
    CInterruptedFile file(&*m_window, &memory, change, fails);
    CFileDialogAnswer dialogs({m_settings->path("set.CJX")});
    QCOMPARE(file.saveAsFile(), !fails);
    QTEST(memory.isDirty(), "isDirty");
}

void TestFileDialogs::reportDuringAReadKeepsItsMark_data()
{
    QTest::addColumn<bool>("fails");
    QTest::newRow("read") << false;
    QTest::newRow("read fails") << true;
}

void TestFileDialogs::reportDuringAReadKeepsItsMark()
{
    QFETCH(bool, fails);
    SimulatedDeviceFixture system;
    system.plug();
    CMemAPIWrapper memory;
    memory.initialize();
    memory.setParamList(factoryList());
    memory.setDirty(false);
    // The list has one knob by then, and that has no channel: the report waits until it has everything.
    system.device.setSettings(3, {44, 5, 100, 20, 2});
    CInterruptedFile file(
        &*m_window, &memory, [&] { system.device.reportSettings(3); }, fails);
    QCOMPARE(file.openFile(m_settings->file("set.CJX", k_goodFile)), !fails);
    QTRY_COMPARE(memory.getParam(1503), 2);
    QVERIFY(memory.isDirty());
    QCOMPARE(memory.getParamList().value("3").toMap(), knobList(3, {44, 5, 100, 20, 2}));
    QCOMPARE(memory.getParamList().value("4"), factoryList().value("4"));
}

void TestFileDialogs::saveAsFileCancelled()
{
    CFileWrapper file(&*m_window, &m_settings->memory);
    const QString path = savedAs(file, "a.CJX");
    m_settings->memory.setDirty(true);
    CFileDialogAnswer dialogs({k_cancel});
    QVERIFY(!file.saveAsFile());
    QCOMPARE(dialogs.dialogs().first().proposedName, QString("a.CJX"));
    QCOMPARE(file.currentPath(), path);
    QVERIFY(m_settings->memory.isDirty());
    QCOMPARE(m_boxes->boxes().size(), 0);
}

void TestFileDialogs::saveAsFileAddsTheSuffix_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("made");
    QTest::newRow("no suffix") << "my set"
                               << "my set.CJX";
    QTest::newRow("the suffix") << "a.CJX"
                                << "a.CJX";
    QTest::newRow("the suffix in lower case") << "a.cjx"
                                              << "a.cjx";
    QTest::newRow("another suffix") << "a.xml"
                                    << "a.xml.CJX";
    QTest::newRow("a dot that begins no suffix") << "set 1.0"
                                                 << "set 1.0.CJX";
    QTest::newRow("a dot at the end") << "set."
                                      << "set..CJX";
    QTest::newRow("the suffix's letters without its dot") << "aCJX"
                                                          << "aCJX.CJX";
}

void TestFileDialogs::saveAsFileAddsTheSuffix()
{
    QFETCH(QString, typed);
    QFETCH(QString, made);
    CFileWrapper file(&*m_window, &m_settings->memory);
    QCOMPARE(savedAs(file, typed), m_settings->path(made));
    QCOMPARE(QDir(m_settings->folder.path()).entryList(QDir::Files), QStringList{made});
}

void TestFileDialogs::saveAsFileAsksBeforeItOverwrites_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<bool>("saved");
    QTest::newRow("yes") << QMessageBox::Yes << true;
    QTest::newRow("no") << QMessageBox::No << false;
    QTest::newRow("closed") << QMessageBox::NoButton << false;
}

void TestFileDialogs::saveAsFileAsksBeforeItOverwrites()
{
    QFETCH(QMessageBox::StandardButton, answer);
    QFETCH(bool, saved);
    const QString path = m_settings->file("a.CJX", k_oldBytes);
    m_boxes->setAnswer(answer);
    CFileDialogAnswer dialogs({path, k_cancel});
    CFileWrapper file(&*m_window, &m_settings->memory);
    QCOMPARE(file.saveAsFile(), saved);
    QCOMPARE(SettingsFixture::bytesOf(path) == k_oldBytes, !saved);
    QCOMPARE(dialogs.dialogs().size(), saved ? 1 : 2);

    QCOMPARE(m_boxes->boxes().size(), 1);
    const CMessageBoxAnswer::Box box = m_boxes->boxes().first();
    QCOMPARE(box.title, QString("Save file"));
    QCOMPARE(box.text, QString("\"a.CJX\" already exists.\r\nThe data will be overwritten.\r\nContinue?"));
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QCOMPARE(box.parent, &*m_window);
}

void TestFileDialogs::saveAsFileAsksAgainAfterNo()
{
    QVERIFY(QDir(m_settings->folder.path()).mkdir("sets"));
    const QString old = m_settings->file("sets/old.CJX", k_oldBytes);
    m_boxes->setAnswer(QMessageBox::No);
    CFileDialogAnswer dialogs({old, m_settings->path("sets/new.CJX")});
    CFileWrapper file(&*m_window, &m_settings->memory);
    QVERIFY(file.saveAsFile());
    QCOMPARE(file.currentPath(), m_settings->path("sets/new.CJX"));
    QCOMPARE(SettingsFixture::bytesOf(old), k_oldBytes);
    QCOMPARE(dialogs.dialogs().size(), 2);
    QCOMPARE(dialogs.dialogs().last().folder, m_settings->path("sets"));
    QCOMPARE(dialogs.dialogs().last().proposedName, QString("old.CJX")); // the name just chosen
}

void TestFileDialogs::saveAsFileAsksAfterTheSuffixIsAdded()
{
    const QString old = m_settings->file("old.CJX", k_oldBytes);
    m_boxes->setAnswer(QMessageBox::Yes);
    CFileDialogAnswer dialogs({m_settings->path("old")});
    CFileWrapper file(&*m_window, &m_settings->memory);
    QVERIFY(file.saveAsFile());
    QCOMPARE(m_boxes->boxes().size(), 1);
    QVERIFY(m_boxes->boxes().first().text.startsWith("\"old.CJX\" already exists."));
    QVERIFY(SettingsFixture::bytesOf(old) != k_oldBytes);
    QVERIFY(!QFileInfo::exists(m_settings->path("old")));
}

void TestFileDialogs::nameWithADotIsAskedAboutWithItsSuffix()
{
    const QString old = m_settings->file("set 1.0.CJX", k_oldBytes);
    m_boxes->setAnswer(QMessageBox::Yes);
    CFileDialogAnswer dialogs({m_settings->path("set 1.0")});
    CFileWrapper file(&*m_window, &m_settings->memory);
    QVERIFY(file.saveAsFile());
    QCOMPARE(m_boxes->boxes().size(), 1);
    QVERIFY(m_boxes->boxes().first().text.startsWith("\"set 1.0.CJX\" already exists."));
    QVERIFY(SettingsFixture::bytesOf(old) != k_oldBytes);
}

void TestFileDialogs::saveAsFileOverAFolderFails()
{
    // The dialog enters a folder whose whole name is typed; one that only the added suffix hits is no file to replace.
    QVERIFY(QDir(m_settings->folder.path()).mkdir("sets.CJX"));
    m_boxes->setAnswer(QMessageBox::Yes);
    CFileDialogAnswer dialogs({m_settings->path("sets")});
    CFileWrapper file(&*m_window, &m_settings->memory);
    QVERIFY(!file.saveAsFile());
    QVERIFY(QFileInfo(m_settings->path("sets.CJX")).isDir());
    QCOMPARE(dialogs.dialogs().size(), 1);
    QCOMPARE(m_boxes->boxes().size(), 2);
    QCOMPARE(m_boxes->boxes().last().text, QString("Failed to save."));
    QCOMPARE(file.currentPath(), QString());
}

void TestFileDialogs::saveAsFileFails()
{
    CFileWrapper file(&*m_window, &m_settings->memory);
    file.initialize();
    const QString before = file.currentPath();
    m_settings->memory.setDirty(true);
    // A link to where no file can be made.
    QVERIFY(QFile::link("/proc/a.CJX", m_settings->path("a.CJX")));
    CFileDialogAnswer dialogs({m_settings->path("a.CJX")});
    QVERIFY(!file.saveAsFile());
    QCOMPARE(dialogs.dialogs().size(), 1);
    QCOMPARE(m_boxes->boxes().size(), 1);
    QCOMPARE(m_boxes->boxes().first().title, QString("Save file"));
    QCOMPARE(m_boxes->boxes().first().text, QString("Failed to save."));
    QCOMPARE(file.currentPath(), before);
    QVERIFY(m_settings->memory.isDirty());
}

KTZ_TEST(QApplication, TestFileDialogs)
#include "TestFileDialogs.moc"
