#include "app/linux/CDeviceReports.h"

#include "device/CMemAPIWrapper.h"

#include <QThread>

CDeviceReports::CDeviceReports(QObject* parent, CMemAPIWrapper& memory) : QObject(parent), m_memory(memory)
{
    for (int knob = 0; knob < k_numOfKnobs; ++knob) {
        // The settings of a knob are told in their order: with the last one all are known.
        for (const int category : {int(k_knobValueCategory), k_settingCategories.back()}) {
            m_observers.push_back(std::make_unique<CObserver>(*this, category + knob));
            m_memory.registerObserver(category + knob, m_observers.back().get());
        }
    }
}

QByteArray CDeviceReports::settingsOf(const CMemAPIWrapper& memory, int knob)
{
    QByteArray settings;
    for (const int category : k_settingCategories)
        settings.append(char(memory.getParam(category + knob)));
    return settings;
}

void CDeviceReports::CObserver::paramChanged()
{
    m_reports.tell(m_id);
}

void CDeviceReports::tell(int id)
{
    // Read here, where the report arrives: the GUI thread would find what a later one brought.
    const int knob = knobOfParam(id);
    const bool isDevices = QThread::currentThread() != thread();
    const auto later = [this](auto told) { QMetaObject::invokeMethod(this, told, Qt::QueuedConnection); };
    if (id - knob == k_knobValueCategory)
        later([this, knob, value = m_memory.getKnob(id)] { emit turned(knob, value); });
    else
        later([this, knob, isDevices, settings = settingsOf(m_memory, knob)] {
            emit changed(knob, settings, isDevices);
        });
}
