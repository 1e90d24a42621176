#include "app/CCommandLine.h"

#include "app/common/VersionText.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

namespace
{
constexpr int k_done = 0;
constexpr int k_notWritten = 1;
constexpr int k_wrongUse = 2;

constexpr QLatin1String k_helpOption("help");
constexpr QLatin1String k_versionOption("version");

struct ToolkitOption
{
    const char* name;
    bool hasValue;
};

// The toolkit takes these from the command line when the application object is made, each with one dash or two.
constexpr std::array<ToolkitOption, 20> k_toolkitOptions{{
    {"display", true},       {"dograb", false},  {"geometry", true},        {"icon", true},
    {"name", true},          {"nograb", false},  {"platform", true},        {"platformpluginpath", true},
    {"platformtheme", true}, {"plugin", true},   {"qwindowgeometry", true}, {"qwindowicon", true},
    {"qwindowtitle", true},  {"reverse", false}, {"session", true},         {"style", true},
    {"stylesheet", true},    {"title", true},    {"visual", true},          {"widgetcount", false},
}};

// Names of files are bytes, the parser's words are text: as Latin-1 every byte is a character and comes back as it was.
QString toText(const char* bytes)
{
    return QString::fromLatin1(bytes);
}

int print(const QString& text)
{
    const bool written = std::fputs(text.toUtf8().constData(), stdout) >= 0 && std::fflush(stdout) == 0;
    return written ? k_done : k_notWritten;
}
} // namespace

CCommandLine::CCommandLine(const QString& name, const QString& purpose) : m_name(name)
{
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    m_parser.setApplicationDescription(purpose);
    m_parser.addOptions({
        {{QStringLiteral("h"), k_helpOption}, QStringLiteral("Shows this text.")},
        {{QStringLiteral("v"), k_versionOption}, QStringLiteral("Shows the version.")},
    });
    m_parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("A settings file to open."),
                                   QStringLiteral("[file]"));
    for (const ToolkitOption& known : k_toolkitOptions) {
        QCommandLineOption option(QString::fromLatin1(known.name));
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        if (known.hasValue)
            option.setValueName(QStringLiteral("value"));
        m_parser.addOption(option);
    }
}

void CCommandLine::addOption(const QString& name, const QString& valueName, const QString& description)
{
    m_parser.addOption({name, description, valueName});
}

std::optional<int> CCommandLine::parse(int argc, char** argv)
{
    QStringList words;
    for (int i = 0; i < argc; ++i)
        words.append(toText(argv[i]));
    if (words.isEmpty())
        words.append(m_name); // whoever started it gave it not even a name
    const bool understood = m_parser.parse(words);
    if (understood && m_parser.isSet(k_helpOption)) {
        // The parser asks it for the program's name, and it asks for no display.
        const QCoreApplication application(argc, argv);
        return print(m_parser.helpText());
    }
    if (understood && m_parser.isSet(k_versionOption))
        return print(versionText(m_name));
    const QString wrong = understood ? mistake() : m_parser.errorText();
    if (!wrong.isEmpty()) {
        const QByteArray line = (m_name + QStringLiteral(": ") + wrong.simplified()).toLatin1();
        std::fprintf(stderr, "%s\n", line.constData());
        return k_wrongUse;
    }
    keepForEditor(words.first());
    return std::nullopt;
}

QString CCommandLine::mistake() const
{
    return m_parser.positionalArguments().size() > 1 ? QStringLiteral("Only one file can be opened.") : QString();
}

void CCommandLine::keepForEditor(const QString& program)
{
    m_left.push_back(program.toLatin1());
    for (const ToolkitOption& known : k_toolkitOptions) {
        const QString name = QString::fromLatin1(known.name);
        const QStringList values = m_parser.values(name);
        if (!known.hasValue && m_parser.isSet(name))
            m_left.push_back(QByteArray("-") + known.name);
        for (const QString& value : values) {
            m_left.push_back(QByteArray("-") + known.name);
            m_left.push_back(value.toLatin1());
        }
    }
    for (const QString& file : m_parser.positionalArguments()) {
        const QByteArray path = file.toLatin1();
        // The toolkit would take a name with a dash for an option.
        m_left.push_back(path.startsWith('-') ? "./" + path : path);
    }
    std::ranges::transform(m_left, std::back_inserter(m_argv), [](QByteArray& word) { return word.data(); });
    m_argv.push_back(nullptr);
}

bool CCommandLine::isSet(const QString& name) const
{
    return m_parser.isSet(name);
}

QByteArray CCommandLine::valueOf(const QString& name) const
{
    return m_parser.value(name).toLatin1();
}

bool CCommandLine::hasFile() const
{
    return !m_parser.positionalArguments().isEmpty();
}

int CCommandLine::argc() const
{
    return static_cast<int>(m_left.size());
}

char** CCommandLine::argv()
{
    return m_argv.data();
}
