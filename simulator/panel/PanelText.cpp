#include "simulator/panel/PanelText.h"

#include "simulator/device/DeviceMessages.h"

#include <QStringList>

namespace
{
QString settingText(const DeviceSetting& setting, const KnobSettings& settings)
{
    const int countedFrom = setting.member == &KnobSettings::channel ? 1 : 0;
    return QStringLiteral("%1 %2").arg(QString::fromLatin1(setting.label),
                                       DeviceMessages::valueInWords(setting, settings.*setting.member + countedFrom));
}

QString knobText(int knob, const QString& text)
{
    return QStringLiteral("Knob %1: %2").arg(knob + 1).arg(text);
}
} // namespace

QString PanelText::settings(const KnobSettings& settings)
{
    QStringList texts;
    for (const DeviceSetting& setting : k_deviceSettings)
        texts += settingText(setting, settings);
    return texts.join(QStringLiteral(", "));
}

QString PanelText::turned(int knob, const KnobSettings& settings, int value)
{
    return knobText(
        knob, QStringLiteral("CC %1, channel %2, value %3").arg(settings.cc).arg(settings.channel + 1).arg(value));
}

QString PanelText::meaning(const QByteArray& message)
{
    using namespace DeviceMessages;
    switch (typeOf(message)) {
    case Type::Start:
        return QStringLiteral("Start");
    case Type::Keep:
        return QStringLiteral("Keep-alive");
    case Type::End:
        return QStringLiteral("End");
    case Type::RequestAll:
        return QStringLiteral("Request for all settings");
    case Type::ChangeParameter:
        return knobText(knobOf(message), PanelText::settings(settingsOf(message)));
    case Type::NoticeValue:
        return knobText(knobOf(message), QStringLiteral("value %1").arg(valueOf(message)));
    case Type::Other:
        break;
    }
    return QStringLiteral("Not a message of this device");
}
