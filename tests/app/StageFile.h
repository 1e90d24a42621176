#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

/// A settings file in which every knob has other settings than the factory preset.
inline QString stageFile(const QTemporaryDir& folder)
{
    const QString path = folder.filePath(QStringLiteral("stage.CJX"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write("<!DOCTYPE KTZJXEditor>\n<parameters version=\"1.0\">\n<controlview>\n");
    for (int knob = 0; knob < 8; ++knob) {
        file.write(QStringLiteral("<key%1><key110%1>2%1</key110%1><key120%1>%1</key120%1><key130%1>10%1</key130%1>"
                                  "<key140%1>1%1</key140%1><key150%1>3</key150%1></key%1>\n")
                       .arg(knob)
                       .toLatin1());
    }
    file.write("</controlview>\n</parameters>\n");
    return path;
}

/// A settings file in which the CC number of knob 3 is the given one; the name's bytes need not be text.
inline QByteArray knobFile(const QTemporaryDir& folder, const QByteArray& name, int value)
{
    const QByteArray path = folder.path().toUtf8() + '/' + name;
    FILE* file = std::fopen(path.constData(), "w");
    if (file == nullptr)
        return {};
    std::fprintf(file,
                 "<!DOCTYPE KTZJXEditor><parameters version=\"1.0\"><controlview><key3><key1103>%d</key1103>"
                 "<key1203>1</key1203><key1303>2</key1303><key1403>3</key1403><key1503>1</key1503></key3>"
                 "</controlview></parameters>",
                 value);
    std::fclose(file);
    return path;
}
