#include "simulator/console/CDeviceArguments.h"

#include "simulator/console/CCommandParser.h"
#include "simulator/device/PrintableText.h"

namespace
{
CDeviceArguments::Result refusal(const QString& error)
{
    return {{}, error};
}
} // namespace

CDeviceArguments::Result CDeviceArguments::parse(const QList<QByteArray>& arguments)
{
    Result result;
    bool alsa = false;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (*argument == "--help" || *argument == "-h") {
            result.arguments.help = true;
        } else if (*argument == "--alsa") {
            alsa = true;
        } else if (*argument == "--cables") {
            const QByteArray number = ++argument == arguments.end() ? QByteArray() : *argument;
            if (number.size() != 1 || number[0] < '1' || number[0] > '3')
                return refusal(QStringLiteral("--cables needs a number from 1 to 3"));
            result.arguments.cables = number[0] - '0';
        } else if (*argument == "--keep-running") {
            result.arguments.keepRunning = true;
        } else if (*argument == "--raw") {
            if (++argument == arguments.end() || !argument->startsWith("hw:"))
                return refusal(QStringLiteral("--raw needs a raw MIDI device, such as hw:0,0,2"));
            result.arguments.port = DeviceArguments::Port::Raw;
            result.arguments.rawName = *argument;
        } else {
            return refusal(QStringLiteral("unknown argument \"%1\"; --help lists them").arg(printableText(*argument)));
        }
    }
    if (alsa && result.arguments.port == DeviceArguments::Port::Raw)
        return refusal(QStringLiteral("--alsa and --raw exclude each other"));
    return result;
}

QString CDeviceArguments::help()
{
    return QStringLiteral("ktz-jx-device [--alsa [--cables N] | --raw hw:CARD,DEVICE,SUBDEVICE] [--keep-running]\n"
                          "A KTZ-JX as software, for the editor to find.\n"
                          "\n"
                          "  --alsa           as a client of the ALSA sequencer (what it does without arguments)\n"
                          "  --cables N       with N ports there, 1 to 3, of which the last is the editor's (3)\n"
                          "  --raw DEVICE     at a raw MIDI device, such as the far end of a USB gadget\n"
                          "  --keep-running   goes on when standard input has ended\n"
                          "  --help           shows this text\n"
                          "\n"
                          "It prints every message with its time in seconds, and takes commands on standard input:\n"
                          "\n") +
           CCommandParser::help();
}
