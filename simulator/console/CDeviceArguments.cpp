#include "simulator/console/CDeviceArguments.h"

#include "simulator/console/CCommandParser.h"
#include "simulator/device/PrintableText.h"
#include "simulator/transports/CableCount.h"

#include <QCommandLineParser>

namespace
{
constexpr QLatin1String k_alsa("alsa");
constexpr QLatin1String k_cables("cables");
constexpr QLatin1String k_panel("panel");
constexpr QLatin1String k_raw("raw");
constexpr QLatin1String k_keepRunning("keep-running");
constexpr QLatin1String k_help("help");
constexpr QLatin1String k_versionOption("version");

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral("A KTZ-JX as software, for the editor to find."));
    parser.addOptions({
        {k_alsa, QStringLiteral("As a client of the ALSA sequencer; what it does without options.")},
        {k_cables, QStringLiteral("With so many ports there, 1 to 3 (3), of which the last is the editor's."),
         QStringLiteral("N")},
        {k_panel,
         QStringLiteral("As a client of the sequencer with a window: knobs to turn, a cable to pull, a table of "
                        "its messages. Ends with the window.")},
        {k_raw, QStringLiteral("At a raw MIDI device, such as the far end of a USB gadget: hw:0,0,2."),
         QStringLiteral("DEVICE")},
        {k_keepRunning, QStringLiteral("Goes on when standard input has ended.")},
        {{QStringLiteral("h"), k_help}, QStringLiteral("Shows this text.")},
        {{QStringLiteral("v"), k_versionOption}, QStringLiteral("Shows the version.")},
    });
}

CDeviceArguments::Result refusal(const QString& error)
{
    return {{}, error};
}

CDeviceArguments::Result unknown(const QString& argument)
{
    return refusal(QStringLiteral("unknown argument \"%1\"; --help lists them").arg(printableText(argument.toUtf8())));
}
} // namespace

CDeviceArguments::Result CDeviceArguments::parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    // An option without its value is set and empty.
    parser.parse(QStringList(QString()) + arguments);
    if (!parser.unknownOptionNames().isEmpty()) {
        const QString name = parser.unknownOptionNames().constFirst();
        return unknown((name.size() > 1 ? QStringLiteral("--") : QStringLiteral("-")) + name);
    }
    if (!parser.positionalArguments().isEmpty())
        return unknown(parser.positionalArguments().constFirst());

    Result result;
    if (parser.isSet(k_cables)) {
        const std::optional<int> cables = cableCount(parser.value(k_cables));
        if (!cables)
            return refusal(QStringLiteral("--cables needs a number from 1 to %1").arg(k_mostCables));
        result.arguments.cables = *cables;
    }
    if (parser.isSet(k_raw)) {
        if (!parser.value(k_raw).startsWith(QStringLiteral("hw:")))
            return refusal(QStringLiteral("--raw needs a raw MIDI device, such as hw:0,0,2"));
        if (parser.isSet(k_alsa))
            return refusal(QStringLiteral("--alsa and --raw exclude each other"));
        if (parser.isSet(k_panel)) // its jack takes the port away, which nothing does here
            return refusal(QStringLiteral("--panel and --raw exclude each other"));
        result.arguments.port = DeviceArguments::Port::Raw;
        result.arguments.rawName = parser.value(k_raw).toUtf8();
    }
    result.arguments.panel = parser.isSet(k_panel);
    result.arguments.keepRunning = parser.isSet(k_keepRunning);
    result.arguments.help = parser.isSet(k_help);
    result.arguments.version = parser.isSet(k_versionOption);
    return result;
}

QString CDeviceArguments::help()
{
    QCommandLineParser parser;
    describe(parser);
    return parser.helpText() +
           QStringLiteral("\nWithout --panel it prints every message with its time in seconds, and takes commands on "
                          "standard input:\n\n") +
           CCommandParser::help();
}
