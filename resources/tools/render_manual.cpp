#include <QBuffer>
#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QHashFunctions>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QTextStream>
#include <QTextTable>
#include <QUrl>

/// Turns a manual in Markdown into a PDF document with numbered A4 pages, without a display.
///
///     render_manual MANUAL PICTURES PDF DATE
///
/// DATE, YYYYMMDD, is the document's: the same manual gives the same bytes on every day.
/// A picture in the manual is a file in the folder PICTURES; "name@3x.png" has three pixels to a unit of its size, and
/// "name.png#2/4" is the second of the four equal frames that lie one below the other in it. A rule ends the page.
///
/// Exit status 1, with a line on standard error, when the manual or a picture can't be read or the PDF can't be
/// written.

namespace
{

constexpr int k_fontSize = 9;      // points
constexpr qreal k_cellPadding = 3; // pixels, as all that follow
constexpr qreal k_itemSpace = 2;
constexpr qreal k_paragraphSpace = 6;
constexpr qreal k_headingSpace = 14;

bool complained = false;

/// Qt only warns of what it can't draw or write.
void noteComplaint(QtMsgType, const QMessageLogContext&, const QString& text)
{
    complained = true;
    QTextStream(stderr) << text << '\n';
}

QString readText(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QImage loadPicture(const QString& folder, const QString& name)
{
    const QString file = name.section(u'#', 0, 0);
    QImage picture(folder + u'/' + file); // takes the scale from its name
    if (file == name)
        return picture;
    const int frame = name.section(u'#', 1).section(u'/', 0, 0).toInt();
    const int frames = name.section(u'/', 1).toInt();
    if (frame < 1 || frame > frames)
        return {};
    const int height = picture.height() / frames;
    return picture.copy(0, (frame - 1) * height, picture.width(), height);
}

/// false: a picture of the manual can't be read.
bool loadPictures(QTextDocument& document, const QString& folder)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextImageFormat format = it.fragment().charFormat().toImageFormat();
            if (!format.isValid())
                continue;
            const QImage picture = loadPicture(folder, format.name());
            if (picture.isNull())
                return false;
            document.addResource(QTextDocument::ImageResource, QUrl(format.name()), picture);
        }
    }
    return true;
}

void styleTables(const QTextDocument& document)
{
    const QList<QTextFrame*> frames = document.rootFrame()->childFrames();
    for (QTextFrame* frame : frames) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (table == nullptr)
            continue;
        QTextTableFormat format = table->format();
        format.setBorder(1);
        format.setBorderBrush(Qt::lightGray);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderCollapse(true);
        format.setCellPadding(k_cellPadding);
        format.setTopMargin(k_paragraphSpace);
        format.setBottomMargin(k_paragraphSpace);
        table->setFormat(format);
    }
}

qreal spaceAbove(const QTextBlock& block)
{
    if (block.blockFormat().headingLevel() > 0)
        return k_headingSpace;
    return block.textList() != nullptr ? k_itemSpace : k_paragraphSpace;
}

/// Headings stand nearer to their own text than to what comes before.
void styleParagraphs(const QTextDocument& document)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QTextCursor cursor(block);
        if (cursor.currentTable() != nullptr)
            continue;
        QTextBlockFormat format = block.blockFormat();
        format.setTopMargin(spaceAbove(block));
        format.setBottomMargin(k_itemSpace);
        if (format.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth)) {
            format.clearProperty(QTextFormat::BlockTrailingHorizontalRulerWidth);
            format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysAfter);
        }
        cursor.setBlockFormat(format);
    }
}

/// The document with this date for the time at which it was written; no byte moves, since the file says where each part
/// begins. Empty: there is no such time in it.
QByteArray dated(QByteArray document, const QByteArray& date)
{
    const QByteArray key = "/CreationDate (D:";
    const qsizetype found = document.indexOf(key);
    return found < 0 ? QByteArray() : document.replace(found + key.size(), 14, date + "000000");
}

bool writePdf(const QTextDocument& document, const QString& name, const QByteArray& date)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setTitle(document.metaInformation(QTextDocument::DocumentTitle));
        writer.setPageSize(QPageSize(QPageSize::A4));
        document.print(&writer); // numbers the pages by itself
    }
    const QByteArray bytes = dated(buffer.data(), date);
    QSaveFile file(name);
    return !bytes.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The same bytes in every time zone, and each time: fonts are written in the order of a hash.
    qputenv("TZ", "UTC");
    QHashSeed::setDeterministicGlobalSeed();
    QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 5) {
        QTextStream(stderr) << "usage: render_manual MANUAL PICTURES PDF DATE\n";
        return 1;
    }
    qInstallMessageHandler(noteComplaint);

    const QString markdown = readText(arguments.at(1));
    QTextDocument document;
    QFont font(QStringLiteral("DejaVu Sans"), k_fontSize);
    font.setStyleHint(QFont::SansSerif);
    document.setDefaultFont(font);
    document.setMarkdown(markdown);
    document.setMetaInformation(QTextDocument::DocumentTitle, document.firstBlock().text());
    styleTables(document);
    styleParagraphs(document);

    if (!markdown.isEmpty() && loadPictures(document, arguments.at(2)) &&
        writePdf(document, arguments.at(3), arguments.at(4).toLatin1()) && !complained)
        return 0;
    QTextStream(stderr) << "render_manual: cannot render " << arguments.at(1) << " to " << arguments.at(3) << '\n';
    return 1;
}
