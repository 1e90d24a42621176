#pragma once

#include <QLatin1StringView>
#include <QProcess>
#include <QTemporaryDir>

/// What an editor is called on its bus.
inline constexpr QLatin1StringView k_busName("org.ktzjx.Editor");

/// A session bus of the test's own: nothing of the machine's is reached by it, and nothing reaches it.
class CTestBus
{
  public:
    /// Starts it; isRunning() tells whether it did. The variables are for what the bus itself starts.
    explicit CTestBus(const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());
    ~CTestBus();
    CTestBus(const CTestBus&) = delete;
    CTestBus& operator=(const CTestBus&) = delete;

    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] QString address() const;

    /// Where its socket lies, as "bus".
    [[nodiscard]] QString folder() const;

    /// Has the bus start a program for a name; before anyone calls it.
    [[nodiscard]] bool addService(const QString& name, const QString& program) const;

    /// Whether some process owns the name.
    [[nodiscard]] bool hasOwner(const QString& name) const;

  private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};
