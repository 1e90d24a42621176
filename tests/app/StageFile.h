#pragma once

#include <QFile>
#include <QTemporaryDir>

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
