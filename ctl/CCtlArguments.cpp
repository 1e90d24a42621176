#include "ctl/CCtlArguments.h"

#include "app/common/Constants.h"
#include "ctl/SettingNames.h"

#include <QCommandLineParser>

#include <array>
#include <cmath>

namespace
{
using Command = CCtlArguments::Command;
using Option = CCtlArguments::Option;
using Name = CtlArguments::Command;

constexpr CCtlArguments::Options k_reading = CCtlArguments::Options(Option::Json) | Option::Port | Option::Device;
constexpr CCtlArguments::Options k_writing = k_reading | Option::Writing;

constexpr std::array k_commands{
    Command{Name::Ports, "ports", "", "every MIDI port, and the pair that would be used", 0, 0,
            CCtlArguments::Options(Option::Json) | Option::Port},
    Command{Name::Show, "show", "[SOURCE]", "a table of all settings", 0, 1, k_reading},
    Command{Name::Get, "get", "KNOB[.SETTING]...", "single values, one a line", 1, -1, k_reading},
    Command{Name::Set, "set", "KNOB.SETTING=VALUE...", "changes settings of the device", 1, -1, k_writing},
    Command{Name::Save, "save", "FILE", "writes what the device holds to a file", 1, 1,
            CCtlArguments::Options(Option::Port) | Option::Device},
    Command{Name::Load, "load", "FILE", "puts a file's settings onto the device", 1, 1, k_writing},
    Command{Name::Copy, "copy", "KNOB KNOB...", "puts the first knob's settings onto the others", 2, -1, k_writing},
    Command{Name::Reset, "reset", "[KNOB...]", "puts the factory preset onto the device", 0, -1, k_writing},
    Command{Name::Diff, "diff", "SOURCE SOURCE", "the settings that differ", 2, 2, k_reading},
    Command{Name::Check, "check", "FILE...", "what is wrong with settings files", 1, -1, Option::Json},
    Command{Name::Watch, "watch", "", "every turn and every change as it arrives", 0, 0, k_reading | Option::Watching},
};

struct OptionText
{
    const char* name;
    const char* value; ///< null: it takes none
    const char* help;
    CCtlArguments::Options of; ///< none: of every command
};

constexpr std::array k_options{
    OptionText{"json", nullptr, "Prints JSON.", Option::Json},
    OptionText{"port", "NAME", "Uses the port of this name instead of the device's own.", Option::Port},
    OptionText{"wait", "SECONDS", "Waits so long for a device, and for its answer.", Option::Device},
    OptionText{"force", nullptr, "Goes on though another program has the device.", Option::Device},
    OptionText{"verbose", nullptr, "Tells every message on standard error.", Option::Device},
    OptionText{"verify", nullptr, "Asks the device afterwards what it holds; this is the default.", Option::Writing},
    OptionText{"no-verify", nullptr, "Does not.", Option::Writing},
    OptionText{"dry-run", nullptr, "Prints the messages that would change the device, and sends none of them.",
               Option::Writing},
    OptionText{"count", "N", "Ends after so many lines.", Option::Watching},
    OptionText{"for", "SECONDS", "Ends after so long.", Option::Watching},
    OptionText{"quiet", nullptr, "Prints nothing but what was asked for, and errors.", {}},
    OptionText{"help", nullptr, "Shows this text.", {}},
    OptionText{"version", nullptr, "Shows the version.", {}},
};

void describe(QCommandLineParser& parser)
{
    for (const OptionText& option : k_options) {
        QStringList names{QString::fromLatin1(option.name)};
        if (names.constFirst() == QStringLiteral("help"))
            names.prepend(QStringLiteral("h"));
        parser.addOption({names, QString::fromLatin1(option.help), QString::fromLatin1(option.value)});
    }
}

CCtlArguments::Result refusal(const QString& error)
{
    return {{}, error};
}

CCtlArguments::Result unknownOption(const QString& name)
{
    QStringList names;
    for (const OptionText& option : k_options)
        names.append(QStringLiteral("--") + QLatin1StringView(option.name));
    const QString typed = (name.size() > 1 ? QStringLiteral("--") : QStringLiteral("-")) + name;
    return refusal(QStringLiteral("unknown option \"%1\"").arg(typed) + nearNameQuestion(typed, names));
}

const Command* commandNamed(const QString& name)
{
    const auto* const found = std::ranges::find_if(
        k_commands, [&](const Command& command) { return name == QLatin1StringView(command.name); });
    return found != k_commands.end() ? found : nullptr;
}

CCtlArguments::Result unknownCommand(const QString& name)
{
    QStringList names;
    for (const Command& command : k_commands)
        names.append(QString::fromLatin1(command.name));
    return refusal(QStringLiteral("unknown command \"%1\"").arg(name) + nearNameQuestion(name, names));
}

/// A time of up to a day; nothing for any other text.
std::optional<std::chrono::milliseconds> seconds(const QString& text)
{
    constexpr double k_most = 86400;
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value) || value < 0 || value > k_most)
        return {};
    return std::chrono::milliseconds(std::llround(value * 1000));
}

/// What the options say, into the arguments. The result says what is wrong with one.
QString takeOptions(const QCommandLineParser& parser, CtlArguments* arguments)
{
    const auto isSet = [&](const char* name) { return parser.isSet(QString::fromLatin1(name)); };
    const auto value = [&](const char* name) { return parser.value(QString::fromLatin1(name)); };
    arguments->json = isSet("json");
    arguments->force = isSet("force");
    arguments->quiet = isSet("quiet");
    arguments->verbose = isSet("verbose");
    arguments->dryRun = isSet("dry-run");
    arguments->verify = !isSet("no-verify");
    if (isSet("verify") && isSet("no-verify"))
        return QStringLiteral("--verify and --no-verify exclude each other");
    if (isSet("quiet") && isSet("verbose"))
        return QStringLiteral("--quiet and --verbose exclude each other");
    arguments->port = isSet("port") ? value("port") : k_jxEditorPortName;
    if (arguments->port.isEmpty())
        return QStringLiteral("--port needs the name of a port; \"ktz-jxctl ports\" lists them");
    if (isSet("wait") && !(arguments->wait = seconds(value("wait"))))
        return QStringLiteral("--wait needs a number of seconds, 0 to 86400");
    if (isSet("for") && !(arguments->watchTime = seconds(value("for"))))
        return QStringLiteral("--for needs a number of seconds, 0 to 86400");
    if (isSet("count")) {
        arguments->count = value("count").toInt();
        if (arguments->count < 1)
            return QStringLiteral("--count needs a number from 1 on");
    }
    return {};
}

QString withoutFullStop(const QString& text)
{
    return text.endsWith(u'.') ? text.chopped(1) : text;
}

QString misplacedOption(const QCommandLineParser& parser, const Command& command)
{
    for (const OptionText& option : k_options) {
        const bool isOfAll = option.of == CCtlArguments::Options();
        if (!isOfAll && !command.options.testAnyFlags(option.of) && parser.isSet(QString::fromLatin1(option.name)))
            return QStringLiteral("\"%1\" has no --%2")
                .arg(QLatin1StringView(command.name), QLatin1StringView(option.name));
    }
    return {};
}

QString wrongNumberOfOperands(const Command& command, qsizetype number)
{
    if (number >= command.least && (command.most < 0 || number <= command.most))
        return {};
    return QStringLiteral("usage: ktz-jxctl %1")
        .arg(QStringLiteral("%1 %2")
                 .arg(QLatin1StringView(command.name), QLatin1StringView(command.operands))
                 .trimmed());
}
} // namespace

CCtlArguments::Result CCtlArguments::parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    // An option without its value is set and empty.
    const bool isParsed = parser.parse(QStringList(QString()) + arguments);
    if (!parser.unknownOptionNames().isEmpty())
        return unknownOption(parser.unknownOptionNames().constFirst());

    Result result;
    result.arguments.port = k_jxEditorPortName;
    if (parser.isSet(QStringLiteral("help")))
        return result;
    if (parser.isSet(QStringLiteral("version"))) {
        result.arguments.command = Name::Version;
        return result;
    }
    QStringList operands = parser.positionalArguments();
    if (operands.isEmpty())
        return refusal(QStringLiteral("a command is missing; --help lists them"));
    const QString name = operands.takeFirst();
    const Command* command = commandNamed(name);
    if (command == nullptr)
        return unknownCommand(name);
    QString error = isParsed ? QString() : withoutFullStop(parser.errorText());
    if (error.isEmpty())
        error = misplacedOption(parser, *command);
    if (error.isEmpty())
        error = wrongNumberOfOperands(*command, operands.size());
    if (error.isEmpty())
        error = takeOptions(parser, &result.arguments);
    if (!error.isEmpty())
        return refusal(error);
    result.arguments.command = command->command;
    result.arguments.operands = operands;
    return result;
}

QString CCtlArguments::help()
{
    QString text = QStringLiteral("Usage: ktz-jxctl [OPTION...] COMMAND [OPERAND...]\n"
                                  "The KTZ-JX from the command line.\n\nCommands:\n");
    for (const Command& command : k_commands) {
        const QString use =
            QStringLiteral("%1 %2").arg(QLatin1StringView(command.name), QLatin1StringView(command.operands));
        text += QStringLiteral("  %1%2\n").arg(use, -27).arg(QLatin1StringView(command.help));
    }
    text += QStringLiteral("\nA KNOB is 1 to 8, a range such as 1-4, or all. A SETTING is %1.\n"
                           "A SOURCE is device (the default), factory, or a file.\n\nOptions:\n")
                .arg(SettingNames::all().join(QStringLiteral(", ")));
    for (const OptionText& option : k_options) {
        QString use = QStringLiteral("--") + QLatin1StringView(option.name);
        if (option.value != nullptr)
            use += u' ' + QString::fromLatin1(option.value);
        text += QStringLiteral("  %1%2\n").arg(use, -27).arg(QLatin1StringView(option.help));
    }
    return text + QStringLiteral("\nStatus: 0 done, 1 different, 2 wrong use, 3 no device, 4 no answer or lost,\n"
                                 "5 the device holds something else, 6 a file cannot be read or written.\n");
}

std::span<const CCtlArguments::Command> CCtlArguments::commands()
{
    return k_commands;
}
