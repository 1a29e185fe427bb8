#pragma once

#include "core/Voce.h"
#include "voce/ImpostazioniUtente.h"

#include <QObject>
#include <memory>
#include <optional>

class Services;
class Sintetizzatore;

// The voice of the program: what the drill and the name screen show, said
// in Italian words through a speech engine. Off, it says nothing and loads
// nothing. When the engine cannot speak, the user is told once that the
// voice is not available, and the program goes on silently.
class LetturaVoce : public Voce
{
public:
    // With `impostazioni` the switch is read from there and kept there.
    LetturaVoce(Services &services, std::unique_ptr<Sintetizzatore> motore,
                std::optional<ImpostazioniUtente> impostazioni = std::nullopt);
    ~LetturaVoce() override;

    static const QString NonDisponibile;

    bool attiva() const override { return m_attiva; }
    void setAttiva(bool attiva) override;

    void domanda(const StatoCondiviso &s, const QString &testo) override;
    void tasto(const StatoCondiviso &s, const QString &caption) override;
    void esatto(const StatoCondiviso &s) override;
    void errato(const StatoCondiviso &s) override;
    void intervento(const StatoCondiviso &s) override;
    void soluzione(const StatoCondiviso &s) override;
    void lettera(const QString &testo) override;

    // The sentences, as the voice makes them (also for tests).
    static QString fraseDomanda(const StatoCondiviso &s, const QString &testo);
    static QString fraseTasto(const StatoCondiviso &s, const QString &caption);
    static QString fraseSoluzione(const StatoCondiviso &s);

    Sintetizzatore &sintetizzatore() { return *m_motore; }

private:
    void di(const QString &frase);
    // A command key's words go with what it brings about ("Verifica la
    // risposta. Esatto"): said on their own only if nothing follows at once.
    void premetti(const QString &frase);
    void nonDisponibile(const QString &motivo);

    Services &m_services;
    std::unique_ptr<Sintetizzatore> m_motore;
    std::optional<ImpostazioniUtente> m_impostazioni;
    bool m_attiva = false;
    bool m_muta = false;
    bool m_avvisato = false;
    QString m_premessa;
    // Context of the deferred calls: they die with this object.
    std::unique_ptr<QObject> m_contesto;
};
