#pragma once

#include "device/CParamManager.h"

/// Two-level table of the device: knob number -> that knob's parameter list.
class CParamManagerWrapper : public CParamManager
{
  public:
    using CParamManager::getParam;
    using CParamManager::setParam;

    /// A copy; empty for a knob that has no list.
    [[nodiscard]] ParamList getParamListFromKnob(int knob) const;

    [[nodiscard]] int getParam(int knob, int id) const;
    void setParam(int knob, int id, int value);

    /// Puts the list's values under the keys that the knob has now, by position in key order, so that a list copied
    /// from one knob fits another. Stops at the shorter one's end: the knob's keys beyond it are dropped, and a knob
    /// without a list stays without.
    void setParamListToKnob(int knob, const ParamList& list);
};
