#pragma once

#include <QString>

struct StatoCondiviso;

// What the screens tell the voice that reads the exercise aloud: a new
// question, a key pressed, the outcome, the solution shown, a letter of the
// name. The screens know nothing else of it. This base says nothing and is
// never on, so a context without a voice (most tests) runs the screens
// exactly as they are.
class Voce
{
public:
    virtual ~Voce() = default;

    // Reading aloud on or off (the start screen's menu "Voce").
    virtual bool attiva() const { return false; }
    virtual void setAttiva(bool) {}

    // The drill: a new question as shown ("473 da"), or the same again,
    // asked for with F2.
    virtual void domanda(const StatoCondiviso &, const QString &) {}
    // A keypad key, by its caption ("4", " uk ", "Cancella", "Verifica ").
    virtual void tasto(const StatoCondiviso &, const QString &) {}
    virtual void esatto(const StatoCondiviso &) {}
    // A wrong answer: the help is offered with it.
    virtual void errato(const StatoCondiviso &) {}
    // The second refusal of help: the program steps in.
    virtual void intervento(const StatoCondiviso &) {}
    // The right answer shown under the pupil's.
    virtual void soluzione(const StatoCondiviso &) {}
    // The name screen: a letter, a sign or "CANCELLA".
    virtual void lettera(const QString &) {}
};
