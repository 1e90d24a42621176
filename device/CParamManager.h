#pragma once

#include "app/common/CMutex.h"
#include "device/DeviceParams.h"

/// Flat table of values under the decimal text of their ids.
///
/// Threads  any; every operation holds the table's mutex for its whole run.
/// Values   any int is stored as given; a missing key reads as 0.
class CParamManager
{
  public:
    CParamManager() = default;
    virtual ~CParamManager() = default;
    CParamManager(const CParamManager&) = delete;
    CParamManager& operator=(const CParamManager&) = delete;

    [[nodiscard]] int getParam(int id) const;
    void setParam(int id, int value);

    [[nodiscard]] ParamList getParamList() const;
    void setParamList(const ParamList& list);

    /// The changed flag: set by every write, also of an unchanged value, and cleared from outside.
    [[nodiscard]] bool isDirty() const;
    void setDirty(bool dirty);

    /// The table's mutex, for std::scoped_lock: several operations become one for every other thread.
    void lock();
    void unlock();

  protected:
    ParamList m_list;
    mutable CRecursiveMutex m_mutex;
    bool m_dirty = false;
};
