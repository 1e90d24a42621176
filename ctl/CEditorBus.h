#pragma once

#include "ctl/EditorBusTimes.h"

#include <QByteArray>
#include <QString>
#include <QVariantList>

#include <functional>
#include <memory>

/// Who hears of the running editor. Called from the event loop of the thread that made the connection.
class CEditorListener
{
  public:
    virtual ~CEditorListener() = default;

    /// To each question, in any order.
    ///
    /// error    the name of what went wrong, as app/common/EditorBus.h or the bus itself has it; empty for nothing.
    /// bytes    what the editor answered, if anything.
    virtual void answered(const QString& error, const QByteArray& bytes) = 0;

    virtual void turned(int knob, int value) = 0;
    virtual void changed(int knob, const QByteArray& settings) = 0;
    virtual void lost() = 0; ///< the editor, or the device that it had
};

/// A connection to the session bus, to ask the running editor there. Pure, so that it can come out of a library that is
/// loaded when it is needed: the program itself does without the bus.
class CEditorBus
{
  public:
    virtual ~CEditorBus() = default;

    /// Asks for a method of app/common/EditorBus.h; the listener gets the answer. An editor that has ended is not
    /// started for it.
    virtual void ask(const QString& method, const QVariantList& arguments) = 0;
};

/// Connects with the session bus; the listener is borrowed and outlives the connection. Null where there is no bus, or
/// none that answers in time.
using EditorBusMaker = std::function<std::unique_ptr<CEditorBus>(CEditorListener& listener, const EditorBusTimes&)>;
