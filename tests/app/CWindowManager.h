#pragma once

#include "tests/support/WaitFor.h"

#include <QProcess>
#include <QTest>
#include <QWindow>

/// A real window manager on the test's own display, and what stands in front of what there.
class CWindowManager
{
  public:
    CWindowManager()
    {
        m_openbox.setStandardOutputFile(QProcess::nullDevice());
        m_openbox.setStandardErrorFile(QProcess::nullDevice());
        m_openbox.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
        QVERIFY(m_openbox.waitForStarted());
        QTRY_VERIFY(ask({QStringLiteral("xprop"), QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")})
                        .contains("window id"));
    }
    ~CWindowManager()
    {
        m_openbox.terminate();
        m_openbox.waitForFinished();
    }
    CWindowManager(const CWindowManager&) = delete;
    CWindowManager& operator=(const CWindowManager&) = delete;

    /// Whether one window is on the screen nearer to the user than the other, as the X server has them.
    [[nodiscard]] static bool isInFront(const QWindow* front, const QWindow* back)
    {
        const QList<QByteArray> stack = windowsFromTheTop();
        const qsizetype first = stack.indexOf(onTheRoot(front->winId()));
        const qsizetype second = stack.indexOf(onTheRoot(back->winId()));
        return first >= 0 && second >= 0 && first < second;
    }

  private:
    static QByteArray ask(QStringList command)
    {
        QProcess process;
        const QString program = command.takeFirst();
        process.start(program, command);
        [&] { QVERIFY2(process.waitForFinished(), qPrintable(program)); }();
        return process.readAllStandardOutput();
    }

    static QList<QByteArray> lines(const QStringList& command)
    {
        return ask(command).split('\n');
    }

    /// The children of the root window.
    static QList<QByteArray> windowsFromTheTop()
    {
        QList<QByteArray> windows;
        const QList<QByteArray> all =
            lines({QStringLiteral("xwininfo"), QStringLiteral("-root"), QStringLiteral("-children")});
        for (const QByteArray& line : all) {
            if (line.startsWith("     0x"))
                windows.append(line.trimmed().split(' ').first());
        }
        return windows;
    }

    /// The window itself or the frame around it, whichever is a child of the root window.
    static QByteArray onTheRoot(WId id)
    {
        QByteArray window = "0x" + QByteArray::number(qulonglong(id), 16);
        while (true) {
            const QList<QByteArray> told = lines({QStringLiteral("xwininfo"), QStringLiteral("-id"),
                                                  QString::fromLatin1(window), QStringLiteral("-children")});
            const auto parent = std::ranges::find_if(
                told, [](const QByteArray& line) { return line.startsWith("  Parent window id: "); });
            if (parent == told.end() || parent->contains("(the root window)"))
                return window;
            window = parent->trimmed().split(' ').at(3);
        }
    }

    QProcess m_openbox;
};
