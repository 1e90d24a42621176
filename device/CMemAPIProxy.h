#pragma once

#include "device/CMemAPIObserver.h"

#include <QString>

#include <memory>

class CMemAPI;
class CMemProxyEventObject;

/// Binds one widget to one parameter of the memory: carries its edits there and to the device, and tells it of changes
/// on the GUI thread.
///
/// Threads  paramChanged(): any. Everything else: GUI thread, on which the proxy is also built and destroyed.
/// Owns     nothing of the memory, which may be null. A proxy that is destroyed before the memory unregisters first.
class CMemAPIProxy : public CMemAPIObserver
{
  public:
    CMemAPIProxy();
    ~CMemAPIProxy() override;
    CMemAPIProxy(const CMemAPIProxy&) = delete;
    CMemAPIProxy& operator=(const CMemAPIProxy&) = delete;

    /// The parameter id; 0, which is never read, written or watched, until the owning view sets it.
    [[nodiscard]] int controllerID() const;
    void setControllerID(int id);

    /// Borrows the memory until the next call and, unless it is null, watches the id there.
    void initialize(CMemAPI* memory);

    /// The output that edits go to.
    void setPortName(const QString& name);

    void registerObserverToMemAPI();
    void unregisterObserverFromMemAPI();

    /// The memory's value; 0 without a memory.
    [[nodiscard]] int getParam() const;

    /// Stores an edit and, while the device answers, sends the whole knob.
    /// false: the device could not be told; the memory has its old value back and the caller shows that.
    [[nodiscard]] bool setParam(int value);

    /// On the GUI thread reloads the widget at once and closes an open popup, since the menu may speak of an older
    /// value; from any other thread it does the same there, later.
    void paramChanged() override;

    /// Shows the memory's value. GUI thread only.
    virtual void updateMemAPI() = 0;

  protected:
    [[nodiscard]] CMemAPI* memory() const;

  private:
    int m_id = 0;
    CMemAPI* m_memory = nullptr;
    QString m_portName;
    std::unique_ptr<CMemProxyEventObject> m_eventObject;
};
