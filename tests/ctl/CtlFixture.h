#pragma once

#include "ctl/CStopRequest.h"
#include "ctl/CtlStatus.h"
#include "ctl/RunCtl.h"
#include "tests/support/CTestCase.h"
#include "tests/support/SimulatedDeviceFixture.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTimer>

using namespace std::chrono_literals;

/// What a run of the program left behind.
struct CtlOutcome
{
    int status = -1;
    QString output;
    QString errors;

    [[nodiscard]] QJsonObject json() const
    {
        return QJsonDocument::fromJson(output.toUtf8()).object();
    }
};

/// The program without a window in this process, with a simulated device that is plugged in or not.
struct CtlFixture : SimulatedDeviceFixture
{
    /// Small enough for a test, and long where a machine under load must not be taken for a fault.
    CtlTimes times{.connection = {.startInterval = 20s, .keepInterval = 3600s, .watchdog = 3600s, .requestPause = 1ms},
                   .startPause = 0ms,
                   .answer = 20s,
                   .values = 20s,
                   .lookPause = 2ms};

    CtlOutcome run(const QStringList& arguments)
    {
        QTemporaryFile output;
        QTemporaryFile errors;
        if (!output.open() || !errors.open())
            return {};
        CtlOutcome outcome;
        outcome.status = runCtl(arguments, output.handle(), errors.handle(), stop, times);
        outcome.output = textOf(output);
        outcome.errors = textOf(errors);
        return outcome;
    }

    [[nodiscard]] QString path(const QString& name) const
    {
        return folder.filePath(name);
    }

    [[nodiscard]] QString make(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
    }

    /// What the device got that changes it.
    [[nodiscard]] QList<QByteArray> changes() const
    {
        QList<QByteArray> found;
        for (const QByteArray& message : device.received()) {
            if (message.startsWith(QByteArray::fromHex("f043103e18050203")))
                found.append(message);
        }
        return found;
    }

    static QString textOf(QTemporaryFile& file)
    {
        QFile again(file.fileName());
        return again.open(QIODevice::ReadOnly) ? QString::fromUtf8(again.readAll()) : QString();
    }

    CStopRequest stop;
    QTemporaryDir folder;
};

inline const QByteArray k_startMessageBytes = QByteArray::fromHex("f043103e18050200f7");
inline const QByteArray k_keepMessageBytes = QByteArray::fromHex("f043103e18050201f7");
inline const QByteArray k_endMessageBytes = QByteArray::fromHex("f043103e18050202f7");
inline const QByteArray k_requestAllBytes = QByteArray::fromHex("f043303e180502007ff7");
