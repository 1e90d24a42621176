#include "app/common/Constants.h"
#include "file/CDocumentGuard.h"
#include "file/CFileWrapper.h"
#include "tests/file/SettingsFixture.h"
#include "tests/support/CTestCase.h"
#include "tests/support/MemoryIsSanitized.h"

#include <QDir>
#include <QFileInfo>
#include <QStringEncoder>

#include <functional>
#include <optional>

#include <fcntl.h>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr qint64 k_timeLimit = 2000;        // milliseconds
constexpr qint64 k_memoryLimit = 64 * 1024; // kilobytes

/// A figure of /proc/self/status in kilobytes; -1 when the system does not tell.
qint64 statusFigure(const QByteArray& name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).simplified().split(' ').first().toLongLong();
    }
    return -1;
}

/// Kilobytes by which this process grows at most while something runs; -1 when the system does not tell.
qint64 peakOf(const std::function<void()>& run)
{
    malloc_trim(0);
    QFile reset(QStringLiteral("/proc/self/clear_refs"));
    // Forgets the earlier peak.
    if (!reset.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || reset.write("5") != 1)
        return -1;
    const qint64 before = statusFigure("VmRSS");
    run();
    const qint64 peak = statusFigure("VmHWM");
    return before < 0 || peak < 0 ? -1 : peak - before;
}
} // namespace

/// Files that somebody made to hurt, or that are not what their names say: each is refused, or read, in 2 s and 64 MiB.
class TestHostileFiles : public CTestCase
{
    Q_OBJECT

  private slots:
    void init();

    void peakIsSeen();
    void hostileDocuments_data();
    void hostileDocuments();
    void hugeFiles_data();
    void hugeFiles();
    void documentsAtTheLimits_data();
    void documentsAtTheLimits();
    void namesThatAreNoText_data();
    void namesThatAreNoText();
    void deviceNodes();

  private:
    /// Reads a file within the limits. The result is the message for the user.
    [[nodiscard]] QString readWithinLimits(const QString& path);

    std::optional<SettingsFixture> m_settings;
};

void TestHostileFiles::init()
{
    CTestCase::init();
    m_settings.emplace();
}

QString TestHostileFiles::readWithinLimits(const QString& path)
{
    CFileWrapper file(nullptr, &m_settings->memory);
    QString error;
    QElapsedTimer timer;
    timer.start();
    const qint64 peak = peakOf([&] { error = file.read(path); });
    const qint64 elapsed = timer.elapsed();
    [&] {
        QVERIFY2(elapsed < k_timeLimit, qPrintable(QStringLiteral("%1 ms").arg(elapsed)));
        if (!k_memoryIsSanitized)
            QVERIFY2(peak >= 0 && peak < k_memoryLimit, qPrintable(QStringLiteral("%1 KiB").arg(peak)));
    }();
    return error;
}

void TestHostileFiles::peakIsSeen()
{
    if (k_memoryIsSanitized)
        QSKIP("a sanitizer's own memory would be measured");
    const qint64 peak = peakOf([] {
        const QByteArray block(80 * 1024 * 1024, 'x'); // gone at once
        QVERIFY(block.endsWith('x'));
    });
    QVERIFY(peak > k_memoryLimit);
    QVERIFY(peakOf([] {}) < 1024);
}

void TestHostileFiles::hostileDocuments_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char* name, const QByteArray& bytes) { QTest::newRow(name) << bytes; };
    const auto inSubset = [](const QByteArray& subset, const QByteArray& text) {
        return "<!DOCTYPE KTZJXEditor [" + subset + "]>" + document("<key1>" + text + "</key1>").mid(23);
    };

    row("100,000 nested elements",
        document(QByteArray("<a>").repeated(100'000) + QByteArray("</a>").repeated(100'000)));
    row("a million nested elements", document(QByteArray("<a>").repeated(1'000'000)));
    row("100,000 sibling elements", document(QByteArray("<a>1</a>").repeated(100'000)));
    row("100,000 comments", document(QByteArray("<!---->").repeated(100'000)));
    row("100,000 pieces of CDATA", document("<key1>" + QByteArray("<![CDATA[1]]>").repeated(100'000) + "</key1>"));

    QByteArray attributes;
    for (int i = 0; i < 100'000; ++i)
        attributes += " a" + QByteArray::number(i) + "=''";
    row("100,000 attributes", document("<key1" + attributes + ">1</key1>"));

    QByteArray laughs = "<!ENTITY a0 'ha'>";
    for (int i = 1; i < 30; ++i)
        laughs += "<!ENTITY a" + QByteArray::number(i) + " '&a" + QByteArray::number(i - 1) + ";&a" +
                  QByteArray::number(i - 1) + ";'>";
    row("entities in entities", inSubset(laughs, "&a29;"));
    row("one long entity, often",
        inSubset("<!ENTITY a '" + QByteArray(4000, 'x') + "'>", QByteArray("&a;").repeated(200'000)));
    row("an entity that names a file", inSubset("<!ENTITY a SYSTEM 'file:///etc/hostname'>", "&a;"));
    row("a subset hidden in UTF-16", [] {
        QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
        const QString text = "<!DOCTYPE KTZJXEditor [<!ENTITY a '1'>]><parameters version='1.0'><controlview><key1>"
                             "&a;</key1></controlview></parameters>";
        return QByteArray(encoder(text));
    }());
    row("a subset hidden in UTF-7",
        "<?xml version='1.0' encoding='UTF-7'?>+ADwAIQ-DOCTYPE KTZJXEditor +AFsAPAAh-ENTITY a '1'+AD4AXQA+-"
        "<parameters version='1.0'><controlview><key1>1</key1></controlview></parameters>");
    row("a megabyte of text and more", document("<key1>" + QByteArray(1024 * 1024, '1') + "</key1>"));
    row("zeros", QByteArray(500'000, '\0'));
}

void TestHostileFiles::hostileDocuments()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(readWithinLimits(m_settings->file("hostile.CJX", bytes)), k_openError);
    QCOMPARE(m_settings->memory.getParamList(), factoryList());
}

void TestHostileFiles::hugeFiles_data()
{
    QTest::addColumn<QByteArray>("start"); // zeros, for which the disk has no room to give, follow
    QTest::addColumn<qint64>("size");
    const qint64 gigabyte = qint64{1024} * 1024 * 1024;
    QTest::newRow("a gigabyte of nothing") << QByteArray() << gigabyte;
    QTest::newRow("a gigabyte behind a whole document") << document("<key1><key1101>1</key1101></key1>") << gigabyte;
    QTest::newRow("a gigabyte in a value") << document("<key1>").chopped(26) << gigabyte;
    QTest::newRow("one byte too long") << document("<key1><key1101>1</key1101></key1>")
                                       << CDocumentGuard::k_sizeLimit + 1;
}

void TestHostileFiles::hugeFiles()
{
    QFETCH(QByteArray, start);
    QFETCH(qint64, size);
    const QString path = m_settings->file("huge.CJX", start);
    QVERIFY(QFile::resize(path, size));
    QCOMPARE(readWithinLimits(path), k_openError);
    QCOMPARE(m_settings->memory.getParamList(), factoryList());
}

void TestHostileFiles::documentsAtTheLimits_data()
{
    QTest::addColumn<QByteArray>("bytes");
    // Two namesakes at each level: read again for each of them, the innermost would be read a thousand million times.
    constexpr int levels = 30;
    QTest::newRow("namesakes in namesakes") << document(QByteArray("<a>").repeated(levels) + "1" +
                                                        QByteArray("</a><a>1</a>").repeated(levels - 1) + "</a>");
    // As many siblings as the guard lets through, with names that differ only at the end of half a kilobyte.
    QByteArray siblings;
    for (int i = 0; i < 990; ++i) {
        const QByteArray name = "a" + QByteArray(500, 'x') + QByteArray::number(i);
        siblings += "<" + name + ">1</" + name + ">";
    }
    QTest::newRow("as many elements as are let through") << document(siblings);
    const qsizetype room = CDocumentGuard::k_sizeLimit - document("<key1></key1>").size();
    QTest::newRow("a value as long as a file may be") << document("<key1>" + QByteArray(room, '1') + "</key1>");
    QTest::newRow("character references as many as a file may have")
        << document("<key1>" + QByteArray("&#49;").repeated(room / 5) + "</key1>");
    QByteArray attributes;
    for (int i = 1; i < CDocumentGuard::k_attributeLimit; ++i)
        attributes += " a" + QByteArray::number(i) + "='" + QByteArray(10'000, 'x') + "'";
    QTest::newRow("attributes as many as are let through") << document("<key1" + attributes + ">1</key1>");
}

void TestHostileFiles::documentsAtTheLimits()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(bytes.size() <= CDocumentGuard::k_sizeLimit);
    QCOMPARE(readWithinLimits(m_settings->file("limit.CJX", bytes)), QString());
    QCOMPARE(m_settings->memory.getParamList(), ParamList());
}

void TestHostileFiles::namesThatAreNoText_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("a byte that is in no text") << QByteArray("a\xff.CJX");
    QTest::newRow("half a character") << QByteArray("a\xc3.CJX");
    QTest::newRow("too long a form of a slash") << QByteArray("a\xc0\xaf.CJX");
    QTest::newRow("half of a pair") << QByteArray("a\xed\xa0\x80.CJX");
}

void TestHostileFiles::namesThatAreNoText()
{
    // A name is text to the toolkit. What such a file has as one names no file at all: it is neither read nor replaced.
    QFETCH(QByteArray, name);
    const QByteArray bytes = document("<key1><key1101>1</key1101></key1>");
    const QByteArray path = QFile::encodeName(m_settings->folder.path()) + '/' + name;
    const int descriptor = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    QVERIFY(descriptor >= 0);
    QCOMPARE(::write(descriptor, bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
    QCOMPARE(::close(descriptor), 0);

    const QString asText = QString::fromLocal8Bit(path);
    QCOMPARE(readWithinLimits(asText), k_openError);
    QCOMPARE(m_settings->memory.getParamList(), factoryList());
    CFileWrapper file(nullptr, &m_settings->memory);
    QCOMPARE(file.write(asText), QString());
    struct stat status = {};
    QCOMPARE(::stat(path.constData(), &status), 0);
    QCOMPARE(status.st_size, bytes.size());
    QCOMPARE(file.read(asText), QString());  // another file, in the place of the signs that are none
    QCOMPARE(::unlink(path.constData()), 0); // the folder cannot be cleared of it
}

void TestHostileFiles::deviceNodes()
{
    for (const char* name : {"/dev/zero", "/dev/null", "/dev/full", "/dev/tty", "/dev/random", "/dev/stdin"})
        QCOMPARE(readWithinLimits(QString::fromLatin1(name)), k_openError);
    QCOMPARE(m_settings->memory.getParamList(), factoryList());
}

KTZ_TEST(QCoreApplication, TestHostileFiles)
#include "TestHostileFiles.moc"
