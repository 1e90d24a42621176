#include "app/common/Constants.h"
#include "file/CFileWrapper.h"
#include "tests/file/SettingsFixture.h"
#include "tests/support/CTestCase.h"

#include <QDir>
#include <QFileInfo>

#include <optional>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace
{

bool put(const char* path, const QByteArray& text)
{
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) == text.size();
}

/// Gives this process mounts of its own, which nobody else sees and which end with it. To be called while it has one
/// thread. false: the system does not permit that.
bool takeOwnMounts()
{
    const QByteArray user = QByteArray::number(::getuid());
    const QByteArray group = QByteArray::number(::getgid());
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && put("/proc/self/setgroups", "deny") &&
           put("/proc/self/uid_map", "0 " + user + " 1") && put("/proc/self/gid_map", "0 " + group + " 1") &&
           ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

/// A file system in memory at a folder, as long as it lives.
class CSmallFileSystem
{
  public:
    CSmallFileSystem(const QString& folder, const char* size) : m_folder(QFile::encodeName(folder))
    {
        m_mounted = ::mount("none", m_folder.constData(), "tmpfs", 0, size) == 0;
    }

    ~CSmallFileSystem()
    {
        if (m_mounted)
            ::umount2(m_folder.constData(), MNT_DETACH);
    }

    CSmallFileSystem(const CSmallFileSystem&) = delete;
    CSmallFileSystem& operator=(const CSmallFileSystem&) = delete;

    [[nodiscard]] bool isMounted() const
    {
        return m_mounted;
    }

    [[nodiscard]] bool makeReadOnly() const
    {
        return ::mount("none", m_folder.constData(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

  private:
    QByteArray m_folder;
    bool m_mounted = false;
};

bool g_hasOwnMounts = false;
} // namespace

/// Settings files on file systems that are full or take nothing: the old file survives every failed save.
class TestFileSystems : public CTestCase
{
    Q_OBJECT

  private slots:
    void initTestCase();
    void init();

    void full_data();
    void full();
    void withoutRoomForAnotherFile();
    void readOnly();
    void behindALink();

  private:
    [[nodiscard]] QStringList names() const;

    std::optional<SettingsFixture> m_settings;
    QString m_folder; // of the file system
    QString m_path;
};

void TestFileSystems::initTestCase()
{
    if (!g_hasOwnMounts)
        QSKIP("this system does not let a process have mounts of its own");
}

void TestFileSystems::init()
{
    CTestCase::init();
    m_settings.emplace();
    m_folder = m_settings->path("small");
    m_path = m_settings->path("small/a.CJX");
    QVERIFY(QDir().mkdir(m_folder));
}

QStringList TestFileSystems::names() const
{
    return QDir(m_folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

void TestFileSystems::full_data()
{
    QTest::addColumn<QByteArray>("size");
    QTest::addColumn<bool>("saved");
    QTest::newRow("no page left") << QByteArray("nr_blocks=2") << false;
    QTest::newRow("a page left, which is enough") << QByteArray("nr_blocks=3") << true;
}

void TestFileSystems::full()
{
    QFETCH(QByteArray, size);
    QFETCH(bool, saved);
    const CSmallFileSystem small(m_folder, size.constData());
    QVERIFY(small.isMounted());
    QCOMPARE(m_settings->file("small/a.CJX", k_oldBytes), m_path);
    QCOMPARE(m_settings->file("small/other", QByteArray(4096, 'x')), m_settings->path("small/other"));
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(m_path), saved ? QString() : k_saveError);
    QCOMPARE(SettingsFixture::bytesOf(m_path) == k_oldBytes, !saved);
    QCOMPARE(names(), QStringList({"a.CJX", "other"}));

    QVERIFY(QFile::remove(m_settings->path("small/other")));
    QCOMPARE(file.write(m_path), QString());
    QCOMPARE(file.read(m_path), QString());
}

void TestFileSystems::withoutRoomForAnotherFile()
{
    const CSmallFileSystem small(m_folder, "nr_inodes=2"); // the folder and one file
    QVERIFY(small.isMounted());
    QCOMPARE(m_settings->file("small/a.CJX", k_oldBytes), m_path);
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(m_path), k_saveError);
    QCOMPARE(SettingsFixture::bytesOf(m_path), k_oldBytes);
    QCOMPARE(names(), QStringList{"a.CJX"});
}

void TestFileSystems::readOnly()
{
    const CSmallFileSystem small(m_folder, "size=1m");
    QVERIFY(small.isMounted());
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(m_path), QString());
    const QByteArray old = SettingsFixture::bytesOf(m_path);
    QVERIFY(small.makeReadOnly());
    m_settings->memory.setParam(1101, 99);
    QCOMPARE(file.write(m_path), k_saveError);
    QCOMPARE(file.write(m_settings->path("small/new.CJX")), k_saveError);
    QCOMPARE(SettingsFixture::bytesOf(m_path), old);
    QCOMPARE(names(), QStringList{"a.CJX"});
    QCOMPARE(file.read(m_path), QString());
    QCOMPARE(m_settings->memory.getParam(1101), 71);
}

void TestFileSystems::behindALink()
{
    // The new file has to be made beside the old one, and not beside the link on another file system.
    const CSmallFileSystem small(m_folder, "size=1m");
    QVERIFY(small.isMounted());
    QCOMPARE(m_settings->file("small/a.CJX", k_oldBytes), m_path);
    const QString link = m_settings->path("link.CJX");
    QVERIFY(QFile::link(m_path, link));
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(link), QString());
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(SettingsFixture::bytesOf(m_path) != k_oldBytes);
    QVERIFY(small.makeReadOnly());
    const QByteArray old = SettingsFixture::bytesOf(m_path);
    m_settings->memory.setParam(1101, 99);
    QCOMPARE(file.write(link), k_saveError);
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(SettingsFixture::bytesOf(m_path), old);
    QCOMPARE(names(), QStringList{"a.CJX"});
}

KTZ_TEST_MAIN(TestFileSystems)(int argc, char** argv)
{
    g_hasOwnMounts = takeOwnMounts();
    const QCoreApplication application(argc, argv);
    TestFileSystems test;
    return QTest::qExec(&test, argc, argv);
}

#include "TestFileSystems.moc"
