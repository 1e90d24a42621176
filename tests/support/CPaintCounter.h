#pragma once

#include <QObject>
#include <QPaintEvent>
#include <QRegion>

#include <map>

/// Counts the paint events of the widgets that it filters the events of.
class CPaintCounter : public QObject
{
  public:
    std::map<QObject*, int> paints; ///< of those that had any
    QRegion painted;                ///< by all of them, each in its own coordinates

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++paints[watched];
            painted += static_cast<QPaintEvent*>(event)->region();
        }
        return QObject::eventFilter(watched, event);
    }
};
