#include "app/common/Constants.h"
#include "ctl/CConsole.h"
#include "ctl/CtlCommands.h"
#include "ctl/SettingsText.h"
#include "midi/CMIDIPort.h"

#include <QJsonObject>

#include <functional>

namespace
{
/// The ports of one direction, under the names that the rules give them.
struct Direction
{
    const char* name;
    int count;
    std::function<QString(int)> nameOf;
    int used; ///< index, or -1
};

QString toText(const Direction& direction)
{
    QString lines;
    for (int index = 0; index < direction.count; ++index)
        lines += QStringLiteral("%1\t%2%3\n")
                     .arg(QLatin1StringView(direction.name), direction.nameOf(index),
                          index == direction.used ? QStringLiteral("\tused") : QString());
    return lines;
}

QJsonArray toJson(const Direction& direction)
{
    QJsonArray ports;
    for (int index = 0; index < direction.count; ++index)
        ports.append(QJsonObject{{QStringLiteral("name"), direction.nameOf(index)},
                                 {QStringLiteral("used"), index == direction.used}});
    return ports;
}
} // namespace

CtlStatus runPorts(const CtlContext& context)
{
    CMIDIPort ports;
    const int sources = ports.createInputPortList();
    const int destinations = ports.createOutputPortList();
    const QString& wanted = context.arguments.port;
    int source = ports.getInputPortByName(wanted);
    int destination = ports.getOutputPortByName(wanted);
    // One alone is of no use.
    if (source < 0 || destination < 0)
        source = destination = -1;
    const Direction in{"source", sources, [&](int i) { return ports.getInputPortNameFromSystemByIndex(i); }, source};
    const Direction out{"destination", destinations, [&](int i) { return ports.getOutputPortNameFromSystemByIndex(i); },
                        destination};
    if (context.arguments.json)
        context.console.print(SettingsText::document(
            {{QStringLiteral("sources"), toJson(in)}, {QStringLiteral("destinations"), toJson(out)}}));
    else
        context.console.print(toText(in) + toText(out));
    if (source < 0 && !context.arguments.quiet)
        context.console.complain(QStringLiteral("there is no pair of ports named \"%1\"").arg(wanted));
    return CtlStatus::Done;
}
