#include "registro/SerieInCorso.h"

#include "core/StatoCondiviso.h"

#include <QUuid>

namespace {

// "?" is the name screen's empty name.
bool nomeValido(const QString &nome)
{
    const QString n = nome.trimmed();
    return !n.isEmpty() && n != QLatin1String("?");
}

} // namespace

void SerieInCorso::inizia(const StatoCondiviso &s, const QDateTime &adesso,
                          const QString &postazione, const QString &verifica, const QString &alunno)
{
    m_serie = SerieRegistrata{};
    m_serie.codice = QUuid::createUuid().toString(QUuid::WithoutBraces);
    m_serie.inizio = adesso;
    m_serie.postazione = postazione;
    m_serie.verifica = verifica;
    if (nomeValido(alunno))
        m_serie.nome = alunno.trimmed();
    m_esatteIniziali = s.RisposteEsatte;
    m_errateIniziali = s.RisposteErrate;
    m_inCorso = true;
    aggiorna(s, adesso);
}

void SerieInCorso::aggiorna(const StatoCondiviso &s, const QDateTime &adesso)
{
    m_serie.fine = adesso;
    m_serie.tipoNumeri = s.TipoNumeri;
    m_serie.numeri = s.DescrizioneNumeri.trimmed();
    m_serie.famiglia = s.FamigliaSimboli;
    QStringList simboli;
    for (const QString &simbolo : {s.Simbolo1, s.Simbolo2, s.Simbolo3, s.Simbolo4})
        if (!simbolo.trimmed().isEmpty())
            simboli << simbolo.trimmed();
    m_serie.simboli = simboli.join(QLatin1Char(' '));
    m_serie.ordine = s.DescrizioneSimboli.trimmed();
    m_serie.esatte = s.RisposteEsatte - m_esatteIniziali;
    m_serie.errate = s.RisposteErrate - m_errateIniziali;
    m_serie.tempoTotale = 0;
    for (const SerieRegistrata::Esercizio &e : m_serie.esercizi)
        m_serie.tempoTotale += e.secondi;
}

void SerieInCorso::chiudiEsercizio(const StatoCondiviso &s)
{
    if (!m_inCorso)
        return;
    const int n = s.NumeroEsercizio;
    SerieRegistrata::Esercizio e{n, s.Operazioni[n], s.TempoParziale};
    if (!m_serie.verifica.isEmpty())
        e.esito = esito(s);
    m_serie.esercizi.append(e);
    m_serie.numeroEsercizi = int(m_serie.esercizi.size());
}

std::optional<SerieRegistrata> SerieInCorso::chiudi(const StatoCondiviso &s,
                                                    const QDateTime &adesso, bool terminata)
{
    if (!m_inCorso)
        return std::nullopt;
    m_inCorso = false;
    // A verifica left before its first answer is kept too: the teacher sees
    // who began it.
    if (!terminata && m_serie.esercizi.isEmpty() && m_serie.verifica.isEmpty())
        return std::nullopt;
    aggiorna(s, adesso);
    m_serie.terminata = terminata;
    m_ultima = m_serie;
    return m_serie;
}

int SerieInCorso::esito(const StatoCondiviso &s)
{
    // The last check set Segno: blanks when it was right. Tentativi counts
    // the "No" said to help: one lets the pupil try again, two make the
    // program step in.
    if (s.Segno == QLatin1String("  "))
        return s.Tentativi == 0 ? SerieRegistrata::PrimoTentativo
                                : SerieRegistrata::SecondoTentativo;
    return s.Tentativi >= 2 ? SerieRegistrata::SoluzioneData : SerieRegistrata::SoluzioneChiesta;
}

std::optional<SerieRegistrata> SerieInCorso::termina(const StatoCondiviso &s,
                                                     const QDateTime &adesso)
{
    return chiudi(s, adesso, true);
}

std::optional<SerieRegistrata> SerieInCorso::lascia(const StatoCondiviso &s,
                                                    const QDateTime &adesso)
{
    return chiudi(s, adesso, false);
}

std::optional<SerieRegistrata> SerieInCorso::assegnaNome(const QString &nome)
{
    if (!nomeValido(nome))
        return std::nullopt;
    if (m_inCorso) {
        m_serie.nome = nome.trimmed();
        return std::nullopt;
    }
    if (!m_ultima || m_ultima->nome == nome.trimmed())
        return std::nullopt;
    m_ultima->nome = nome.trimmed();
    return m_ultima;
}

std::optional<SerieRegistrata> SerieInCorso::assegnaValutazione(const QString &nome,
                                                                const QString &parola)
{
    SerieRegistrata *serie = m_inCorso ? &m_serie : (m_ultima ? &*m_ultima : nullptr);
    if (!serie)
        return std::nullopt;
    if (nomeValido(nome))
        serie->nome = nome.trimmed();
    serie->valutazione = parola;
    if (m_inCorso)
        return std::nullopt;
    return m_ultima;
}
