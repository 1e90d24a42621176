// set, load, copy, reset: what changes the device. Each says which settings it wants; the rest is the same for all.

#include "ctl/CConsole.h"
#include "ctl/CDeviceMemory.h"
#include "ctl/CSettingsSources.h"
#include "ctl/CtlCommands.h"
#include "ctl/KnobAddress.h"
#include "ctl/SettingNames.h"
#include "ctl/SettingsText.h"

#include <QJsonObject>

namespace
{
/// What became of a change.
struct WriteReport
{
    CtlStatus status = CtlStatus::Done;
    QString error; ///< empty when all went well
    QList<int> sent;
    QList<int> left;
    bool isVerified = false;
    QList<SettingDifference> differences; ///< sent, held
};

/// What the device lacks of the wanted settings.
QList<SettingDifference> notHeld(const SettingsTable& wanted, const SettingsTable& held)
{
    QList<SettingDifference> found = SettingsText::differences(wanted, held);
    found.removeIf([](const SettingDifference& difference) { return !difference.first; });
    return found;
}

WriteReport send(const CtlContext& context, CDeviceAccess& device, const SettingsTable& wanted)
{
    WriteReport report;
    report.status = device.write(wanted, &report.sent, &report.left);
    const bool isToVerify = context.arguments.verify && !report.sent.isEmpty();
    if (report.status == CtlStatus::Done && isToVerify) {
        report.status = device.readAll();
        report.isVerified = report.status == CtlStatus::Done;
    }
    if (report.status != CtlStatus::Done) {
        report.error = device.error();
        return report;
    }
    if (report.isVerified)
        report.differences = notHeld(wanted, device.settings());
    if (!report.differences.isEmpty()) {
        report.status = CtlStatus::NotHeld;
        report.error = QStringLiteral("the device holds something else than was sent");
    }
    return report;
}

void printReport(const CtlContext& context, const WriteReport& report)
{
    if (context.arguments.json) {
        context.console.print(
            SettingsText::document({{QStringLiteral("sent"), SettingsText::knobsToJson(report.sent)},
                                    {QStringLiteral("unsent"), SettingsText::knobsToJson(report.left)},
                                    {QStringLiteral("verified"), report.isVerified},
                                    {QStringLiteral("differences"), SettingsText::toJson(report.differences)}}));
        return;
    }
    QString lines;
    for (const SettingDifference& difference : report.differences)
        lines += QStringLiteral("%1.%2: sent %3, held %4\n")
                     .arg(difference.knob + 1)
                     .arg(SettingNames::nameOf(difference.setting),
                          SettingsText::valueText(difference.setting, difference.first),
                          SettingsText::valueText(difference.setting, difference.second));
    if (report.status == CtlStatus::Done && !context.arguments.quiet) {
        lines += report.sent.isEmpty()
                     ? QStringLiteral("nothing to send: the device holds it already\n")
                     : QStringLiteral("sent to knobs %1%2\n")
                           .arg(SettingsText::knobsInWords(report.sent),
                                report.isVerified ? QStringLiteral("; the device holds it") : QString());
    }
    context.console.print(lines);
}

QString withProgress(const WriteReport& report)
{
    QString text = report.error;
    if (report.status == CtlStatus::NotHeld || (report.sent.isEmpty() && report.left.isEmpty()))
        return text;
    const auto knobs = [](const QList<int>& list) {
        return list.isEmpty() ? QStringLiteral("none") : SettingsText::knobsInWords(list);
    };
    return text + QStringLiteral("; knobs sent: %1; not sent: %2").arg(knobs(report.sent), knobs(report.left));
}

/// What would be sent to a device that holds something.
void printMessages(const CtlContext& context, const SettingsTable& wanted, const SettingsTable& held)
{
    QString lines;
    QJsonArray array;
    const QList<int> knobs = knobsThatDiffer(wanted, held);
    for (const int number : knobs) {
        const auto knob = std::size_t(number);
        const QByteArray message = CDeviceMemory::changeMessage(knob, overlaid(held[knob], wanted[knob]));
        const QString bytes = QString::fromLatin1(message.toHex(' ').toUpper());
        lines += QStringLiteral("%1  %2\n").arg(bytes, CDeviceMemory::nameOf(message));
        array.append(
            QJsonObject{{QStringLiteral("bytes"), bytes}, {QStringLiteral("name"), CDeviceMemory::nameOf(message)}});
    }
    context.console.print(context.arguments.json ? SettingsText::document({{QStringLiteral("messages"), array}})
                                                 : lines);
}

CtlStatus sendToDevice(const CtlContext& context, CSettingsSources& sources, const SettingsTable& wanted)
{
    CDeviceAccess& device = sources.device();
    if (context.arguments.dryRun) {
        printMessages(context, wanted, device.settings());
        return CtlStatus::Done;
    }
    const WriteReport report = send(context, device, wanted);
    printReport(context, report);
    return report.status == CtlStatus::Done ? report.status : fail(context, report.status, withProgress(report));
}

/// The knobs that operands name, counted from 0, without their settings.
QString parseKnobs(const QStringList& operands, QList<std::size_t>* knobs)
{
    for (const QString& operand : operands) {
        KnobAddress address;
        if (QString error = KnobAddresses::parse(operand, &address); !error.isEmpty())
            return error;
        if (!address.isWholeKnob)
            return QStringLiteral("\"%1\" is no knob: 1 to %2, such as 3, 1-4 or all").arg(operand).arg(k_numOfKnobs);
        for (std::size_t knob = address.firstKnob; knob <= address.lastKnob; ++knob)
            knobs->append(knob);
    }
    return {};
}
} // namespace

CtlStatus runSet(const CtlContext& context)
{
    SettingsTable wanted;
    for (const QString& operand : context.arguments.operands) {
        if (const QString error = KnobAddresses::parseAssignment(operand, &wanted); !error.isEmpty())
            return fail(context, CtlStatus::WrongUse, error);
    }
    CSettingsSources sources(context);
    const CtlStatus status = sources.openDevice();
    return status == CtlStatus::Done ? sendToDevice(context, sources, wanted) : status;
}

CtlStatus runLoad(const CtlContext& context)
{
    CSettingsSources sources(context);
    SettingsTable wanted;
    CtlStatus status = sources.readFile(context.arguments.operands.constFirst(), &wanted);
    if (status == CtlStatus::Done)
        status = sources.openDevice();
    return status == CtlStatus::Done ? sendToDevice(context, sources, wanted) : status;
}

CtlStatus runCopy(const CtlContext& context)
{
    QList<std::size_t> from;
    QList<std::size_t> to;
    QString error = parseKnobs(context.arguments.operands.first(1), &from);
    if (error.isEmpty())
        error = parseKnobs(context.arguments.operands.sliced(1), &to);
    if (error.isEmpty() && from.size() != 1)
        error = QStringLiteral("copy takes the settings of one knob, 1 to 8");
    if (!error.isEmpty())
        return fail(context, CtlStatus::WrongUse, error);
    CSettingsSources sources(context);
    const CtlStatus status = sources.openDevice();
    if (status != CtlStatus::Done)
        return status;
    const SettingsTable held = sources.device().settings();
    SettingsTable wanted;
    for (const std::size_t knob : to)
        wanted[knob] = held[from.constFirst()];
    return sendToDevice(context, sources, wanted);
}

CtlStatus runReset(const CtlContext& context)
{
    QList<std::size_t> knobs;
    const QStringList& operands = context.arguments.operands;
    const QString error = parseKnobs(operands.isEmpty() ? QStringList(QStringLiteral("all")) : operands, &knobs);
    if (!error.isEmpty())
        return fail(context, CtlStatus::WrongUse, error);
    const SettingsTable factory = factoryTable();
    SettingsTable wanted;
    for (const std::size_t knob : knobs)
        wanted[knob] = factory[knob];
    CSettingsSources sources(context);
    const CtlStatus status = sources.openDevice();
    return status == CtlStatus::Done ? sendToDevice(context, sources, wanted) : status;
}
