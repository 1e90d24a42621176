#pragma once

#include "ctl/CDeviceAccess.h"
#include "ctl/CtlContext.h"

#include <memory>

/// Where settings come from: the device, the factory or a file. The device is connected at its first use, and until the
/// end of this object.
///
/// Failure  is said on standard error; the status is what the command ends with.
class CSettingsSources
{
  public:
    explicit CSettingsSources(const CtlContext& context);

    /// source   "device", "factory", or a file's name. A file that is called like one of these is "./device".
    [[nodiscard]] CtlStatus read(const QString& source, SettingsTable* table);

    [[nodiscard]] CtlStatus readFile(const QString& name, SettingsTable* table);

    /// Connects the device, unless it is; as long as the user wants that to be tried.
    [[nodiscard]] CtlStatus openDevice();

    /// Borrowed; after openDevice().
    [[nodiscard]] CDeviceAccess& device();

  private:
    [[nodiscard]] std::unique_ptr<CDeviceAccess> makeDevice() const;

    const CtlContext& m_context;
    std::unique_ptr<CDeviceAccess> m_device;
};

inline const QString k_deviceSource = QStringLiteral("device");
inline const QString k_factorySource = QStringLiteral("factory");
