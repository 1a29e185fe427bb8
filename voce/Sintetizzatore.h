#pragma once

#include <QString>
#include <functional>

// The speech engine the voice speaks through: one sentence at a time, each
// new one cutting the one still being said. It never waits for the sound.
class Sintetizzatore
{
public:
    virtual ~Sintetizzatore() = default;

    // Starts saying `frase`, stopping whatever was still being said.
    virtual void pronuncia(const QString &frase) = 0;
    // Stops whatever is being said.
    virtual void interrompi() = 0;

    // Told, on the interface thread, each time a sentence cannot be spoken
    // (no speech library, no Italian voice, no audio device), with the reason.
    std::function<void(const QString &motivo)> nonDisponibile;
};
