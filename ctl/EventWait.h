#pragma once

#include <QDeadlineTimer>

#include <functional>

/// Runs this thread's event loop until the condition holds or the deadline has passed. The condition is asked after
/// each event, so whatever changes it has to be one, or to post one.
///
/// The result is the condition's last answer.
bool waitForEvents(const std::function<bool()>& condition, QDeadlineTimer deadline);
