#pragma once

class QPainter;
class QRect;

/// The mark around the control that was selected last, on which Copy and Paste act: its four corners, which close to a
/// frame while the control also takes the keys. The shape says which, so that no colour is needed.
///
/// Units    logical pixels; the lines are whole device pixels at every ratio.
/// Threads  GUI thread only.
namespace SelectionMark
{
enum class Shape
{
    Corners,
    Frame
};

/// outer   the rectangle on whose inside the lines lie.
void paint(QPainter& painter, const QRect& outer, Shape shape);
} // namespace SelectionMark
