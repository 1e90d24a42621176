#pragma once

#include "device/CMemAPIWrapper.h"
#include "tests/support/SimulatedDeviceFixture.h"

#include <QFile>
#include <QTemporaryDir>

inline const QByteArray k_oldBytes = "the old file";

inline QByteArray document(const QByteArray& controlView)
{
    return "<!DOCTYPE KTZJXEditor><parameters version=\"1.0\"><controlview>" + controlView +
           "</controlview></parameters>";
}

/// The settings of one knob, whole, under its ids: the example's values are 10, 0, 0, 127, 1.
inline ParamList knobList(int knob, const QList<QVariant>& values = {10, 0, 0, 127, 1})
{
    ParamList list;
    for (qsizetype i = 0; i < values.size(); ++i)
        list.insert(QString::number(k_settingCategories.at(static_cast<std::size_t>(i)) + knob), values.at(i));
    return list;
}

/// The list as a file gives it back: every value as text.
inline ParamList asText(const ParamList& list)
{
    ParamList texts;
    for (auto it = list.cbegin(); it != list.cend(); ++it) {
        const bool isMap = it.value().typeId() == QMetaType::QVariantMap;
        texts.insert(it.key(), isMap ? QVariant(asText(it.value().toMap())) : QVariant(it.value().toString()));
    }
    return texts;
}

/// The factory preset of all knobs.
inline ParamList factoryList()
{
    ParamList list;
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        QList<QVariant> values;
        for (const int value : k_defaultParamList.at(static_cast<std::size_t>(knob)))
            values.append(value);
        list.insert(QString::number(knob), knobList(knob, values));
    }
    return list;
}

/// A device memory without a device, which holds the factory preset unchanged, and a folder for files.
struct SettingsFixture
{
    SettingsFixture()
    {
        memory.initialize();
        memory.setParamList(factoryList());
        memory.setDirty(false);
    }

    [[nodiscard]] QString path(const QString& name) const
    {
        return folder.filePath(name);
    }

    /// Makes a file of these bytes and gives its path.
    [[nodiscard]] QString file(const QString& name, const QByteArray& bytes) const
    {
        QFile made(path(name));
        const bool written = made.open(QIODevice::WriteOnly) && made.write(bytes) == bytes.size();
        if (!written)
            qFatal("%s cannot be written", qPrintable(name));
        return made.fileName();
    }

    [[nodiscard]] static QByteArray bytesOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    SimulatedDeviceFixture system;
    CMemAPIWrapper memory;
    QTemporaryDir folder;
};
