#pragma once

#include "ctl/bus/CSessionBusEditor.h"

#include <QTimer>

#include <utility>

/// A connection to the session bus that tells when the editor has agreed to be watched: every later report is heard.
class CWatchedBus : public CEditorBus, private CEditorListener
{
  public:
    /// listener   borrowed, as every bus has it.
    /// agreed     called from the event loop, once for each watch.
    static std::unique_ptr<CEditorBus> make(CEditorListener& listener, const EditorBusTimes& times,
                                            const std::function<void()>& agreed)
    {
        auto bus = std::unique_ptr<CWatchedBus>(new CWatchedBus(listener, agreed));
        bus->m_bus.reset(CSessionBusEditor::connectToBus(*bus, times));
        if (!bus->m_bus)
            return nullptr;
        return bus;
    }

    void ask(const QString& method, const QVariantList& arguments) override
    {
        m_isWatch = method == QLatin1String("Watch");
        m_bus->ask(method, arguments);
    }

  private:
    CWatchedBus(CEditorListener& listener, std::function<void()> agreed)
        : m_listener(listener), m_agreed(std::move(agreed))
    {
    }

    void answered(const QString& error, const QByteArray& bytes) override
    {
        m_listener.answered(error, bytes);
        if (m_isWatch && error.isEmpty())
            QTimer::singleShot(0, m_agreed);
    }

    void turned(int knob, int value) override
    {
        m_listener.turned(knob, value);
    }

    void changed(int knob, const QByteArray& settings) override
    {
        m_listener.changed(knob, settings);
    }

    void lost() override
    {
        m_listener.lost();
    }

    CEditorListener& m_listener;
    const std::function<void()> m_agreed;
    std::unique_ptr<CEditorBus> m_bus;
    bool m_isWatch = false;
};
