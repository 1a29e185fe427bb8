#pragma once

#include "core/StatoCondiviso.h"
#include "platform/Services.h"

#include <QObject>

// One run of the program: the shared state block and the platform services.
// Every screen receives it at construction; a test builds a fresh one.
class AppContext : public QObject, public Services
{
    Q_OBJECT

public:
    explicit AppContext(QObject *parent = nullptr);

    StatoCondiviso stato;

    // The screen T, loaded (and its load handler run) if it was not.
    template <class T> T &form()
    {
        return screens().get<T>([this] { return new T(*this); });
    }

signals:
    // The generator drew an exercise type; the drill screen shows it.
    void tipoEsercizioGenerato(int tipo);
};
