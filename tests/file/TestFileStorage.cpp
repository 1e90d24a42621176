#include "app/common/Constants.h"
#include "file/CFileWrapper.h"
#include "file/RegularFile.h"
#include "tests/file/SettingsFixture.h"
#include "tests/support/CTestCase.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr auto k_readableByAll = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
constexpr auto k_writableByAll = k_readableByAll | QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
constexpr auto k_enterableByAll = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;

/// While it lives, this process can write only so many bytes into a file, and gets an error beyond.
class CWriteLimit
{
  public:
    explicit CWriteLimit(rlim_t bytes)
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit{bytes, m_old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~CWriteLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_handler);
    }

    CWriteLimit(const CWriteLimit&) = delete;
    CWriteLimit& operator=(const CWriteLimit&) = delete;

  private:
    rlimit m_old{};
    void (*m_handler)(int) = nullptr;
};

/// While it lives, this process has an ordinary user's rights, also where tests are run by root.
class COrdinaryUser
{
  public:
    COrdinaryUser()
    {
#ifdef Q_OS_LINUX
        m_wasRoot = ::geteuid() == 0;
        if (m_wasRoot && ::setresuid(k_nobody, k_nobody, 0) != 0)
            qFatal("cannot become an ordinary user");
#endif
    }

    ~COrdinaryUser()
    {
#ifdef Q_OS_LINUX
        if (m_wasRoot && ::setresuid(0, 0, 0) != 0)
            qFatal("cannot become root again");
#endif
    }

    COrdinaryUser(const COrdinaryUser&) = delete;
    COrdinaryUser& operator=(const COrdinaryUser&) = delete;

  private:
    static constexpr uid_t k_nobody = 65534;
    [[maybe_unused]] bool m_wasRoot = false;
};
} // namespace

class TestFileStorage : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();
    void cleanup();

    void startsWithoutPath();
    void initializeMakesTheDocumentsFolder();
    void initializeKeepsTheOldPathWithoutFolder();

    void writeReplacesTheFileWhole();
    void writeKeepsThePermissions();
    void writeThatFailsPartWayLeavesTheOldFile();
    void writeThatFailsPartWayLeavesNoNewFile();
    void failedCreateDataLeavesAnEmptyFile();
    void writeRefusesWhatIsNoFile_data();
    void writeRefusesWhatIsNoFile();
    void writeIntoAReadOnlyFolderLeavesTheOldFile();
    void writeOverAReadOnlyFileLeavesIt();
    void writeWhileAnotherHasItOpen_data();
    void writeWhileAnotherHasItOpen();

    void writeThroughALinkKeepsTheLink_data();
    void writeThroughALinkKeepsTheLink();
    void writeThroughALinkToANameThatIsNoTextFails_data();
    void writeThroughALinkToANameThatIsNoTextFails();
    void writeThroughALinkOutOfALinkedFolder_data();
    void writeThroughALinkOutOfALinkedFolder();
    void writeThroughLinksWithoutEndFails();

    void readRefusesWhatIsNoFile_data();
    void readRefusesWhatIsNoFile();
    void readFollowsLinks();
    void readWithoutPermissionFails();
    void readStopsAtTheSizeLimit_data();
    void readStopsAtTheSizeLimit();
    void namesOfEveryKind_data();
    void namesOfEveryKind();

  private:
    /// What lies in the folder besides the given names: leftovers of a write.
    [[nodiscard]] QStringList leftovers(const QStringList& expected) const;

    std::optional<SettingsFixture> m_settings;
    QByteArray m_written; // what a successful write gives
};

void TestFileStorage::init()
{
    CTestCase::init();
    QTest::failOnWarning(QRegularExpression(".*"));
    m_settings.emplace();
    CFileWrapper file(nullptr, &m_settings->memory);
    const QString path = m_settings->path("model.CJX");
    QCOMPARE(file.write(path), QString());
    m_written = SettingsFixture::bytesOf(path);
    QVERIFY(m_written.size() > 1000);
    QVERIFY(QFile::remove(path));
}

void TestFileStorage::cleanup()
{
    m_settings.reset();
}

QStringList TestFileStorage::leftovers(const QStringList& expected) const
{
    QStringList found = QDir(m_settings->folder.path())
                            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& name : expected)
        found.removeAll(name);
    return found;
}

void TestFileStorage::startsWithoutPath()
{
    const CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.currentPath(), QString());
}

void TestFileStorage::initializeMakesTheDocumentsFolder()
{
    qputenv("HOME", QFile::encodeName(m_settings->path("home")));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_settings->path("home/.config")));
    CFileWrapper file(nullptr, &m_settings->memory);
    file.initialize();
    QCOMPARE(file.currentPath(), m_settings->path("home/Documents"));
    QVERIFY(QFileInfo(file.currentPath()).isDir());
}

void TestFileStorage::initializeKeepsTheOldPathWithoutFolder()
{
    qputenv("HOME", QFile::encodeName(m_settings->file("home", "a file, not a folder")));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_settings->path("home/.config")));
    CFileWrapper file(nullptr, &m_settings->memory);
    file.initialize();
    QCOMPARE(file.currentPath(), QString());
}

void TestFileStorage::writeReplacesTheFileWhole()
{
    // A longer old file leaves nothing behind.
    const QString path = m_settings->file("a.CJX", QByteArray(100'000, 'x'));
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(path), QString());
    QCOMPARE(SettingsFixture::bytesOf(path), m_written);
    QCOMPARE(leftovers({"a.CJX"}), QStringList());
}

void TestFileStorage::writeKeepsThePermissions()
{
    const QString path = m_settings->file("a.CJX", k_oldBytes);
    const auto permissions =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadUser | QFile::WriteUser;
    QVERIFY(QFile::setPermissions(path, permissions));
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(path), QString());
    QCOMPARE(QFile::permissions(path), permissions);
}

void TestFileStorage::writeThatFailsPartWayLeavesTheOldFile()
{
    CFileWrapper file(nullptr, &m_settings->memory);
    const QString path = m_settings->file("a.CJX", k_oldBytes);
    const qsizetype length = m_written.size();
    for (qsizetype n = 0; n < length; ++n) {
        QString error;
        {
            const CWriteLimit limit(static_cast<rlim_t>(n));
            error = file.write(path);
        }
        QCOMPARE(error, k_saveError);
        QCOMPARE(SettingsFixture::bytesOf(path), k_oldBytes);
    }
    QCOMPARE(leftovers({"a.CJX"}), QStringList());
    {
        const CWriteLimit limit(static_cast<rlim_t>(length));
        QCOMPARE(file.write(path), QString());
    }
    QCOMPARE(SettingsFixture::bytesOf(path), m_written);
}

void TestFileStorage::writeThatFailsPartWayLeavesNoNewFile()
{
    CFileWrapper file(nullptr, &m_settings->memory);
    {
        const CWriteLimit limit(100);
        QCOMPARE(file.write(m_settings->path("a.CJX")), k_saveError);
    }
    QCOMPARE(leftovers({}), QStringList());
}

void TestFileStorage::failedCreateDataLeavesAnEmptyFile()
{
    const QString path = m_settings->file("a.CJX", k_oldBytes);
    CFileWrapper file(nullptr, nullptr);
    QCOMPARE(file.write(path), k_saveError);
    QVERIFY(QFileInfo::exists(path));
    QCOMPARE(SettingsFixture::bytesOf(path), QByteArray());
    QCOMPARE(leftovers({"a.CJX"}), QStringList());
}

void TestFileStorage::writeRefusesWhatIsNoFile_data()
{
    QTest::addColumn<QString>("name"); // relative ones lie in the test's folder
    QTest::newRow("no name") << "";
    QTest::newRow("folder") << "folder";
    QTest::newRow("FIFO that nobody reads") << "fifo";
    QTest::newRow("link to a folder") << "link-to-folder";
    QTest::newRow("link to a FIFO") << "link-to-fifo";
    QTest::newRow("link into a missing folder") << "link-to-missing";
    QTest::newRow("full device") << "full";
    QTest::newRow("missing folder") << "missing/a.CJX";
    QTest::newRow("a file as folder") << "file/a.CJX";
    QTest::newRow("file system that takes no files") << "/proc/a.CJX";
    QTest::newRow("name longer than the file system's") << QString(300, 'a') + ".CJX";
}

void TestFileStorage::writeRefusesWhatIsNoFile()
{
    QFETCH(QString, name);
    QVERIFY(QDir(m_settings->folder.path()).mkdir("folder"));
    QCOMPARE(::mkfifo(QFile::encodeName(m_settings->path("fifo")).constData(), 0600), 0);
    // Who may make a device may also replace the system's, if the write does not refuse: such a test gets its own.
    const QString full = m_settings->path("full");
    struct stat status = {};
    if (::stat("/dev/full", &status) != 0 ||
        ::mknod(QFile::encodeName(full).constData(), S_IFCHR | 0600, status.st_rdev) != 0)
        QVERIFY(QFile::link("/dev/full", full));
    QVERIFY(QFile::link("folder", m_settings->path("link-to-folder")));
    QVERIFY(QFile::link("fifo", m_settings->path("link-to-fifo")));
    QVERIFY(QFile::link("missing/a.CJX", m_settings->path("link-to-missing")));
    QCOMPARE(m_settings->file("file", k_oldBytes), m_settings->path("file"));
    const QString path = name.isEmpty() || name.startsWith('/') ? name : m_settings->path(name);
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(path), k_saveError);
    QCOMPARE(leftovers({"folder", "fifo", "file", "full", "link-to-folder", "link-to-fifo", "link-to-missing"}),
             QStringList());
    QVERIFY(QFileInfo(m_settings->path("folder")).isDir());
    QVERIFY(!QFileInfo(m_settings->path("fifo")).isFile());
    QVERIFY(QFileInfo(m_settings->path("link-to-fifo")).isSymLink());
    QVERIFY(!QFileInfo(full).isFile());
}

void TestFileStorage::writeIntoAReadOnlyFolderLeavesTheOldFile()
{
    const QString path = m_settings->file("a.CJX", k_oldBytes);
    QVERIFY(QFile::setPermissions(path, k_writableByAll));
    QVERIFY(QFile::setPermissions(m_settings->folder.path(), k_readableByAll | k_enterableByAll));
    CFileWrapper file(nullptr, &m_settings->memory);
    {
        const COrdinaryUser user;
        QCOMPARE(file.write(path), k_saveError);
        QCOMPARE(file.write(m_settings->path("new.CJX")), k_saveError);
    }
    QCOMPARE(SettingsFixture::bytesOf(path), k_oldBytes);
    QCOMPARE(leftovers({"a.CJX"}), QStringList());

    QVERIFY(QFile::setPermissions(m_settings->folder.path(), k_writableByAll | k_enterableByAll));
    const COrdinaryUser user;
    QCOMPARE(file.write(path), QString());
}

void TestFileStorage::writeOverAReadOnlyFileLeavesIt()
{
    const QString path = m_settings->file("a.CJX", k_oldBytes);
    QVERIFY(QFile::setPermissions(path, k_readableByAll));
    QVERIFY(QFile::setPermissions(m_settings->folder.path(), k_writableByAll | k_enterableByAll));
    CFileWrapper file(nullptr, &m_settings->memory);
    {
        const COrdinaryUser user;
        QCOMPARE(file.write(path), k_saveError);
    }
    QCOMPARE(SettingsFixture::bytesOf(path), k_oldBytes);
    QCOMPARE(leftovers({"a.CJX"}), QStringList());
}

void TestFileStorage::writeWhileAnotherHasItOpen_data()
{
    QTest::addColumn<QIODevice::OpenMode>("mode");
    QTest::newRow("to read") << QIODevice::OpenMode(QIODevice::ReadOnly);
    QTest::newRow("to write") << QIODevice::OpenMode(QIODevice::ReadWrite | QIODevice::Unbuffered);
}

void TestFileStorage::writeWhileAnotherHasItOpen()
{
    QFETCH(QIODevice::OpenMode, mode);
    const QString path = m_settings->file("a.CJX", k_oldBytes);
    QFile other(path);
    QVERIFY(other.open(mode));
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(path), QString());
    QCOMPARE(other.readAll(), k_oldBytes); // it keeps the file that it opened
    if (mode.testFlag(QIODevice::WriteOnly))
        QCOMPARE(other.write("more"), 4);
    QCOMPARE(SettingsFixture::bytesOf(path), m_written);
}

void TestFileStorage::writeThroughALinkKeepsTheLink_data()
{
    QTest::addColumn<QStringList>("links"); // each names the next, the last one names the file
    QTest::addColumn<bool>("exists");
    QTest::newRow("link") << QStringList{"link"} << true;
    QTest::newRow("link to a link") << QStringList{"link", "second"} << true;
    QTest::newRow("link into nothing makes the file") << QStringList{"link"} << false;
    QTest::newRow("link to a link into nothing") << QStringList{"link", "second"} << false;
}

void TestFileStorage::writeThroughALinkKeepsTheLink()
{
    QFETCH(QStringList, links);
    QFETCH(bool, exists);
    // Relative links, from another folder.
    QVERIFY(QDir(m_settings->folder.path()).mkdir("elsewhere"));
    const QString target = m_settings->path("elsewhere/a.CJX");
    if (exists)
        QCOMPARE(m_settings->file("elsewhere/a.CJX", k_oldBytes), target);
    for (qsizetype i = 0; i < links.size(); ++i) {
        const QString next = i + 1 < links.size() ? links.at(i + 1) : QString("elsewhere/a.CJX");
        QVERIFY(QFile::link(next, m_settings->path(links.at(i))));
    }

    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(m_settings->path(links.first())), QString());
    for (const QString& link : links)
        QVERIFY(QFileInfo(m_settings->path(link)).isSymLink());
    QVERIFY(!QFileInfo(target).isSymLink());
    QCOMPARE(SettingsFixture::bytesOf(target), m_written);
    QCOMPARE(leftovers(links + QStringList{"elsewhere"}), QStringList());
}

void TestFileStorage::writeThroughALinkToANameThatIsNoTextFails_data()
{
    QTest::addColumn<bool>("exists");
    QTest::addColumn<bool>("isBehindASecondLink");
    QTest::newRow("file") << true << false;
    QTest::newRow("nothing") << false << false;
    QTest::newRow("file, behind a second link") << true << true;
    QTest::newRow("nothing, behind a second link") << false << true;
}

void TestFileStorage::writeThroughALinkToANameThatIsNoTextFails()
{
    QFETCH(bool, exists);
    QFETCH(bool, isBehindASecondLink);
    // Under the text that comes nearest to its name it would be another file, and this one would stay as it was.
    const std::filesystem::path file = m_settings->path("set-").toStdString() + "\xff.CJX";
    if (exists)
        std::ofstream(file) << "the old file";
    QString link = m_settings->path("link.CJX");
    std::filesystem::create_symlink(file, link.toStdString());
    if (isBehindASecondLink) {
        QVERIFY(QFile::link("link.CJX", m_settings->path("second.CJX")));
        link = m_settings->path("second.CJX");
    }
    CFileWrapper settings(nullptr, &m_settings->memory);
    QCOMPARE(settings.write(link), k_saveError);
    QCOMPARE(std::filesystem::exists(file), exists);
    if (exists)
        QCOMPARE(std::filesystem::file_size(file), std::uintmax_t{12});
    const auto isOther = [&](const auto& entry) { return entry.path() != file && !entry.is_symlink(); };
    QCOMPARE(std::ranges::count_if(std::filesystem::directory_iterator(file.parent_path()), isOther), 0);
    std::filesystem::remove(file); // the toolkit, which removes the folder, cannot
}

void TestFileStorage::writeThroughALinkOutOfALinkedFolder_data()
{
    QTest::addColumn<bool>("exists");
    QTest::newRow("file") << true;
    QTest::newRow("nothing") << false;
}

void TestFileStorage::writeThroughALinkOutOfALinkedFolder()
{
    // ".." is the folder above the one that is linked, and not the one that the link is in.
    QFETCH(bool, exists);
    QVERIFY(QDir(m_settings->folder.path()).mkpath("above/folder"));
    const QString target = m_settings->path("above/a.CJX");
    if (exists)
        QCOMPARE(m_settings->file("above/a.CJX", k_oldBytes), target);
    QVERIFY(QFile::link("above/folder", m_settings->path("linked")));
    // The toolkit would make a link without "..".
    std::filesystem::create_symlink("linked/../a.CJX", m_settings->path("link").toStdString());
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(m_settings->path("link")), QString());
    QCOMPARE(SettingsFixture::bytesOf(target), m_written);
    QVERIFY(QFileInfo(m_settings->path("link")).isSymLink());
    QCOMPARE(leftovers({"above", "linked", "link"}), QStringList());
}

void TestFileStorage::writeThroughLinksWithoutEndFails()
{
    QVERIFY(QFile::link("second", m_settings->path("first")));
    QVERIFY(QFile::link("first", m_settings->path("second")));
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(m_settings->path("first")), k_saveError);
    QCOMPARE(file.read(m_settings->path("first")), k_openError);
    QVERIFY(QFileInfo(m_settings->path("first")).isSymLink());
    QCOMPARE(leftovers({"first", "second"}), QStringList());
}

void TestFileStorage::readRefusesWhatIsNoFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no name") << "";
    QTest::newRow("missing") << "missing.CJX";
    QTest::newRow("folder") << "folder";
    QTest::newRow("FIFO that nobody writes") << "fifo";
    QTest::newRow("endless device") << "/dev/zero";
    QTest::newRow("empty device") << "/dev/null";
    QTest::newRow("link into nothing") << "dangling";
    QTest::newRow("link to a FIFO") << "link-to-fifo";
    QTest::newRow("a file as folder") << "file/a.CJX";
}

void TestFileStorage::readRefusesWhatIsNoFile()
{
    QFETCH(QString, name);
    QVERIFY(QDir(m_settings->folder.path()).mkdir("folder"));
    QCOMPARE(::mkfifo(QFile::encodeName(m_settings->path("fifo")).constData(), 0600), 0);
    QVERIFY(QFile::link("nothing", m_settings->path("dangling")));
    QVERIFY(QFile::link("fifo", m_settings->path("link-to-fifo")));
    QCOMPARE(m_settings->file("file", m_written), m_settings->path("file"));
    const QString path = name.isEmpty() || name.startsWith('/') ? name : m_settings->path(name);
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.read(path), k_openError);
    QCOMPARE(m_settings->memory.getParamList(), factoryList());
}

void TestFileStorage::readFollowsLinks()
{
    const QString path = m_settings->file("a.CJX", m_written);
    QVERIFY(QFile::link(path, m_settings->path("first")));
    QVERIFY(QFile::link("first", m_settings->path("second")));
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.read(m_settings->path("second")), QString());
}

void TestFileStorage::readWithoutPermissionFails()
{
    const QString path = m_settings->file("a.CJX", m_written);
    QVERIFY(QFile::setPermissions(m_settings->folder.path(), k_writableByAll | k_enterableByAll));
    QVERIFY(QFile::setPermissions(path, QFile::WriteOwner));
    CFileWrapper file(nullptr, &m_settings->memory);
    {
        const COrdinaryUser user;
        QCOMPARE(file.read(path), k_openError);
    }
    QVERIFY(QFile::setPermissions(path, k_readableByAll));
    const COrdinaryUser user;
    QCOMPARE(file.read(path), QString());
}

void TestFileStorage::readStopsAtTheSizeLimit_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<bool>("read");
    QTest::newRow("empty") << qint64(0) << true;
    QTest::newRow("at the limit") << qint64(1000) << true;
    QTest::newRow("one more") << qint64(1001) << false;
    QTest::newRow("eight gigabytes with nothing in them") << qint64(8) * 1024 * 1024 * 1024 << false;
}

void TestFileStorage::readStopsAtTheSizeLimit()
{
    QFETCH(qint64, size);
    QFETCH(bool, read);
    const QString path = m_settings->path("a.CJX");
    QFile made(path);
    QVERIFY(made.open(QIODevice::WriteOnly));
    QVERIFY(made.resize(size));
    made.close();
    const std::optional<QByteArray> bytes = readRegularFile(path, 1000);
    QCOMPARE(bytes.has_value(), read);
    if (read)
        QCOMPARE(bytes->size(), size);
}

void TestFileStorage::namesOfEveryKind_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("space") << "my set.CJX";
    QTest::newRow("newline") << "my\nset.CJX";
    QTest::newRow("quotes and signs") << "\"a\" & <b> %1 #?.CJX";
    QTest::newRow("other alphabets") << QString::fromUtf8("\u00e9\u4e2d\u6587.CJX");
    QTest::newRow("dot first") << ".CJX";
    QTest::newRow("hyphen first") << "-a.CJX";
    QTest::newRow("no suffix") << "a";
}

void TestFileStorage::namesOfEveryKind()
{
    QFETCH(QString, name);
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(m_settings->path(name)), QString());
    QCOMPARE(leftovers({name}), QStringList());
    QCOMPARE(SettingsFixture::bytesOf(m_settings->path(name)), m_written);
    QCOMPARE(file.read(m_settings->path(name)), QString());
}

KTZ_TEST(QCoreApplication, TestFileStorage)
#include "TestFileStorage.moc"
