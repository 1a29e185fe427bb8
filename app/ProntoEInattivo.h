#pragma once

#include "app/SegnalePronto.h"

#include <QEvent>
#include <QObject>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <utility>

// Calls `done` once `window` has been painted for the first time and the
// events queued by then have run: the program is on screen and idle; a
// runner waiting for that moment is told first (SegnalePronto.h). Used by
// `--prova-avvio` to time a start-up from outside; header-only, so the
// benchmark's minimal Qt program measures itself the same way.
inline void quandoProntoEInattivo(QWidget *window, std::function<void()> done)
{
    struct PrimoDisegno : QObject
    {
        std::function<void()> done;
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::Paint && done) {
                QTimer::singleShot(0, [d = std::exchange(done, {})] {
                    segnalaPronto();
                    d();
                });
                deleteLater();
            }
            return false;
        }
    };
    auto *filter = new PrimoDisegno;
    filter->setParent(window);
    filter->done = std::move(done);
    window->installEventFilter(filter);
}
