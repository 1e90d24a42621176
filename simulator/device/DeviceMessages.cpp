#include "simulator/device/DeviceMessages.h"

#include <QStringList>

namespace DeviceMessages
{
namespace
{
constexpr char k_end = '\xf7';

constexpr int k_typeByte = 7;
constexpr int k_knobByte = 8;
constexpr int k_firstValueByte = 9;

QByteArray header()
{
    return QByteArrayLiteral("\xf0\x43\x10\x3e\x18\x05\x02");
}

QByteArray message(Type type, const QByteArray& data = {})
{
    return header() + static_cast<char>(type) + data + k_end;
}

qsizetype lengthOf(Type type)
{
    switch (type) {
    case Type::ChangeParameter:
        return k_firstValueByte + static_cast<qsizetype>(k_deviceSettings.size()) + 1;
    case Type::NoticeValue:
        return 11;
    default:
        return 9;
    }
}

} // namespace

Type typeOf(const QByteArray& message)
{
    if (message == requestAll())
        return Type::RequestAll;
    if (message.size() <= k_typeByte || !message.startsWith(header()) || !message.endsWith(k_end))
        return Type::Other;
    const auto number = static_cast<unsigned char>(message.at(k_typeByte));
    if (number > static_cast<int>(Type::NoticeValue))
        return Type::Other;
    const Type type = static_cast<Type>(number);
    return message.size() == lengthOf(type) ? type : Type::Other;
}

QByteArray start()
{
    return message(Type::Start);
}

QByteArray keep()
{
    return message(Type::Keep);
}

QByteArray end()
{
    return message(Type::End);
}

QByteArray requestAll()
{
    return QByteArrayLiteral("\xf0\x43\x30\x3e\x18\x05\x02\x00\x7f\xf7");
}

QByteArray changeParameter(int knob, const KnobSettings& settings)
{
    QByteArray data(1, static_cast<char>(knob));
    for (const DeviceSetting& setting : k_deviceSettings)
        data += static_cast<char>(settings.*setting.member);
    return message(Type::ChangeParameter, data);
}

QByteArray noticeValue(int knob, int value)
{
    return message(Type::NoticeValue, QByteArray(1, static_cast<char>(knob)) + static_cast<char>(value));
}

int knobOf(const QByteArray& message)
{
    return static_cast<unsigned char>(message.at(k_knobByte));
}

KnobSettings settingsOf(const QByteArray& changeParameter)
{
    KnobSettings settings;
    int position = k_firstValueByte;
    for (const DeviceSetting& setting : k_deviceSettings)
        settings.*setting.member = static_cast<unsigned char>(changeParameter.at(position++));
    return settings;
}

int valueOf(const QByteArray& noticeValue)
{
    return static_cast<unsigned char>(noticeValue.at(k_firstValueByte));
}

QString valueInWords(const DeviceSetting& setting, int value)
{
    if (setting.valueNames.empty())
        return QString::number(value);
    const auto index = static_cast<std::size_t>(value);
    return index < setting.valueNames.size() ? QString::fromLatin1(setting.valueNames[index])
                                             : QStringLiteral("unknown");
}

QString settingsInWords(const KnobSettings& settings)
{
    QStringList words;
    for (const DeviceSetting& setting : k_deviceSettings) {
        const int value = settings.*setting.member;
        words += QStringLiteral("%1 %2").arg(QString::fromLatin1(setting.name)).arg(value);
        if (!setting.valueNames.empty())
            words.last() += QStringLiteral(" (%1)").arg(valueInWords(setting, value));
    }
    return words.join(QStringLiteral(", "));
}

QString inWords(const QByteArray& message)
{
    switch (typeOf(message)) {
    case Type::Start:
        return QStringLiteral("start");
    case Type::Keep:
        return QStringLiteral("keep");
    case Type::End:
        return QStringLiteral("end");
    case Type::RequestAll:
        return QStringLiteral("request all parameters");
    case Type::ChangeParameter:
        return QStringLiteral("change parameter: knob %1, %2")
            .arg(knobOf(message))
            .arg(settingsInWords(settingsOf(message)));
    case Type::NoticeValue:
        return QStringLiteral("notice value: knob %1, value %2").arg(knobOf(message)).arg(valueOf(message));
    case Type::Other:
        break;
    }
    return QStringLiteral("not a message of this device");
}
} // namespace DeviceMessages
