#include "device/CParamManagerWrapper.h"

#include <mutex>

ParamList CParamManagerWrapper::getParamListFromKnob(int knob) const
{
    const std::scoped_lock guard(m_mutex);
    return m_list.value(paramKey(knob)).toMap();
}

int CParamManagerWrapper::getParam(int knob, int id) const
{
    const std::scoped_lock guard(m_mutex);
    const auto list = m_list.constFind(paramKey(knob));
    if (list == m_list.cend() || list->typeId() != QMetaType::QVariantMap)
        return 0;
    return static_cast<const ParamList*>(list->constData())->value(paramKey(id)).toInt();
}

void CParamManagerWrapper::setParam(int knob, int id, int value)
{
    const std::scoped_lock guard(m_mutex);
    ParamList list = getParamListFromKnob(knob);
    list.insert(paramKey(id), value);
    m_list.insert(paramKey(knob), list);
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
    m_list.insert(paramKey(knob), placed);
    m_dirty = true;
}
