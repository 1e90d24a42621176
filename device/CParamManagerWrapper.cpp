#include "device/CParamManagerWrapper.h"

#include <mutex>

ParamList CParamManagerWrapper::getParamListFromKnob(int knob) const
{
    const std::scoped_lock guard(m_mutex);
    return m_list.value(QString::number(knob)).toMap();
}

int CParamManagerWrapper::getParam(int knob, int id) const
{
    const std::scoped_lock guard(m_mutex);
    return getParamListFromKnob(knob).value(QString::number(id)).toInt();
}

void CParamManagerWrapper::setParam(int knob, int id, int value)
{
    const std::scoped_lock guard(m_mutex);
    ParamList list = getParamListFromKnob(knob);
    list.insert(QString::number(id), value);
    m_list.insert(QString::number(knob), list);
    m_dirty = true;
}

void CParamManagerWrapper::setParamListToKnob(int knob, const ParamList& list)
{
    const std::scoped_lock guard(m_mutex);
    const ParamList present = getParamListFromKnob(knob);
    ParamList placed;
    auto source = list.cbegin();
    for (auto target = present.cbegin(); target != present.cend() && source != list.cend(); ++target, ++source)
        placed.insert(target.key(), source.value());
    m_list.insert(QString::number(knob), placed);
    m_dirty = true;
}
