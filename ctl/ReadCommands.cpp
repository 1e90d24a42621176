// show, get, diff, save: what reads settings and leaves the device as it is.

#include "ctl/CConsole.h"
#include "ctl/CDeviceMemory.h"
#include "ctl/CSettingsSources.h"
#include "ctl/CtlCommands.h"
#include "ctl/KnobAddress.h"
#include "ctl/SettingNames.h"
#include "ctl/SettingsText.h"
#include "file/CFileWrapper.h"

#include <QJsonObject>

CtlStatus runShow(const CtlContext& context)
{
    const QString source = context.arguments.operands.value(0, k_deviceSource);
    CSettingsSources sources(context);
    SettingsTable table;
    const CtlStatus status = sources.read(source, &table);
    if (status != CtlStatus::Done)
        return status;
    if (context.arguments.json)
        context.console.print(SettingsText::document(
            {{QStringLiteral("source"), source}, {QStringLiteral("knobs"), SettingsText::toJson(table)}}));
    else
        SettingsText::printTable(context.console, table);
    return CtlStatus::Done;
}

CtlStatus runGet(const CtlContext& context)
{
    QList<KnobAddress> addresses;
    for (const QString& operand : context.arguments.operands) {
        KnobAddress address;
        if (const QString error = KnobAddresses::parse(operand, &address); !error.isEmpty())
            return fail(context, CtlStatus::WrongUse, error);
        addresses.append(address);
    }
    CSettingsSources sources(context);
    SettingsTable table;
    const CtlStatus status = sources.read(k_deviceSource, &table);
    if (status != CtlStatus::Done)
        return status;

    QString lines;
    QJsonArray values;
    for (const KnobAddress& address : addresses) {
        for (std::size_t knob = address.firstKnob; knob <= address.lastKnob; ++knob) {
            for (const std::size_t setting : address.settings) {
                const int value = table[knob][setting].value_or(0);
                lines += SettingNames::valueText(setting, value) + u'\n';
                values.append(QJsonObject{{QStringLiteral("knob"), int(knob) + 1},
                                          {QStringLiteral("setting"), SettingNames::nameOf(setting)},
                                          {QStringLiteral("value"), SettingNames::valueJson(setting, value)}});
            }
        }
    }
    context.console.print(context.arguments.json ? SettingsText::document({{QStringLiteral("values"), values}})
                                                 : lines);
    return CtlStatus::Done;
}

CtlStatus runDiff(const CtlContext& context)
{
    CSettingsSources sources(context);
    const QString& first = context.arguments.operands[0];
    const QString& second = context.arguments.operands[1];
    SettingsTable tables[2];
    // Files first: a device is not asked for what cannot be compared.
    const bool isDeviceFirst = first == k_deviceSource;
    for (const int i : {isDeviceFirst ? 1 : 0, isDeviceFirst ? 0 : 1}) {
        const CtlStatus status = sources.read(context.arguments.operands[i], &tables[i]);
        if (status != CtlStatus::Done)
            return status;
    }
    const QList<SettingDifference> found = SettingsText::differences(tables[0], tables[1]);
    if (context.arguments.json) {
        context.console.print(SettingsText::document({{QStringLiteral("first"), first},
                                                      {QStringLiteral("second"), second},
                                                      {QStringLiteral("differences"), SettingsText::toJson(found)}}));
    } else if (!context.arguments.quiet) {
        QString lines;
        for (const SettingDifference& difference : found)
            lines += SettingsText::toText(difference) + u'\n';
        context.console.print(lines);
    }
    return found.isEmpty() ? CtlStatus::Done : CtlStatus::Different;
}

CtlStatus runSave(const CtlContext& context)
{
    CSettingsSources sources(context);
    const CtlStatus status = sources.openDevice();
    if (status != CtlStatus::Done)
        return status;
    const QString& name = context.arguments.operands.constFirst();
    CDeviceMemory memory;
    memory.take(sources.device().settings());
    if (!CFileWrapper(nullptr, &memory).write(name).isEmpty())
        return fail(context, CtlStatus::FileError, name + QStringLiteral(": cannot be written"));
    if (!context.arguments.quiet)
        context.console.print(QStringLiteral("saved to %1\n").arg(name));
    return CtlStatus::Done;
}
