#pragma once

class QAccessibleEvent;
class QObject;

/// What assistive technology is told of the editor: one object for each thing that a person knows.
///
/// Cost     the toolkit makes an interface for every widget that it shows, whether or not somebody listens; these take
///          their places. Events go nowhere until somebody listens.
/// Threads  GUI thread only.
namespace AccessibleEditor
{
/// Once, with an application; further calls do nothing. Events go on to the handler that was there before.
void install();

/// The object by which this one is told: for a part of a field the field, for all else itself.
[[nodiscard]] QObject* told(QObject* object);

/// An object's value has changed: tells so now or soon, a few times a second at most.
void tellValue(QObject* object);

/// The handler of every event, while somebody listens: passes those of the parts of a field on as the field's own.
void tell(QAccessibleEvent* event);
} // namespace AccessibleEditor
