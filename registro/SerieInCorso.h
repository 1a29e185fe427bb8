#pragma once

#include "registro/SerieRegistrata.h"

#include <optional>

struct StatoCondiviso;

// Builds the series in progress from what the drill screen reports: the
// counts and total time of this series only (the drill keeps its right and
// wrong counts across "Ricomincia"), each closed exercise's record line and
// seconds. No window, no database.
class SerieInCorso
{
public:
    // `verifica` is the code of a series of given exercises, taken by
    // `alunno`; both empty for a drawn series.
    void inizia(const StatoCondiviso &s, const QDateTime &adesso, const QString &postazione,
                const QString &verifica = {}, const QString &alunno = {});
    // How the exercise just closed went, from what the drill left in the state.
    static int esito(const StatoCondiviso &s);
    void chiudiEsercizio(const StatoCondiviso &s);
    // The finished series, or nothing when none was in progress.
    std::optional<SerieRegistrata> termina(const StatoCondiviso &s, const QDateTime &adesso);
    // The series left before its end, when it has at least one closed exercise.
    std::optional<SerieRegistrata> lascia(const StatoCondiviso &s, const QDateTime &adesso);

    bool inCorso() const { return m_inCorso; }
    // Name and grade go to the series in progress, or else to the last one
    // ended; that one is returned to be written again.
    std::optional<SerieRegistrata> assegnaNome(const QString &nome);
    std::optional<SerieRegistrata> assegnaValutazione(const QString &nome, const QString &parola);

private:
    void aggiorna(const StatoCondiviso &s, const QDateTime &adesso);
    std::optional<SerieRegistrata> chiudi(const StatoCondiviso &s, const QDateTime &adesso,
                                          bool terminata);

    SerieRegistrata m_serie;
    std::optional<SerieRegistrata> m_ultima;
    bool m_inCorso = false;
    int m_esatteIniziali = 0;
    int m_errateIniziali = 0;
};
