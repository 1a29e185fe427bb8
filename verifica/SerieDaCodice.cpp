#include "verifica/SerieDaCodice.h"

#include "classe/UnitaClasse.h"

std::optional<CodiceScheda::Scelta> SerieDaCodice::Leggi(const QString &testo, QString *errore)
{
    QString perche;
    const auto scelta = CodiceScheda::Leggi(testo, &perche);
    if (scelta && scelta->righe > MassimoRighe)
        perche = QStringLiteral("Questo codice è di una scheda di %1 esercizi: si fa solo su "
                                "carta. Sullo schermo si fanno le schede di 10 o 20 esercizi.")
                     .arg(scelta->righe);
    else if (scelta)
        return scelta;
    if (errore)
        *errore = perche;
    return std::nullopt;
}

QString SerieDaCodice::DescrizioneNumeri(int tipoNumeri)
{
    // The start screen's own words for the same choice.
    switch (tipoNumeri) {
    case 2:
        return QStringLiteral(" Scomponi: numeri con la virgola");
    case 3:
        return QStringLiteral(" Scomponi: numeri interi e con la virgola");
    default:
        return QStringLiteral(" Scomponi: numeri interi");
    }
}

QString SerieDaCodice::DescrizioneSimboli(int unita)
{
    return QStringLiteral(" simboli ") + UnitaClasse::Descrizione(unita);
}

SerieDaCodice::SerieDaCodice(const CodiceScheda::Scelta &scelta, const QString &alunno,
                             StatoCondiviso &stato)
    : m_copia(RigheClasse().Costruisci(scelta)), m_alunno(alunno.trimmed()), m_prima(stato)
{
    stato.TipoNumeri = scelta.tipoNumeri;
    UnitaClasse::Applica(stato, scelta.unita);
    stato.DescrizioneNumeri = DescrizioneNumeri(scelta.tipoNumeri);
    stato.DescrizioneSimboli = DescrizioneSimboli(scelta.unita);
    // Exercise n of the series is row n of the sheet.
    stato.NumeroEsercizio = 0;
    stato.NomeAlunno = m_alunno;
}

void SerieDaCodice::esercizio(int numero, StatoCondiviso &stato)
{
    const RigheClasse::Esercizio &e = m_copia.esercizi.at(numero - 1);
    stato.TipoEsercizio = e.tipo;
    stato.TipoEstratto = e.tipoEstratto;
    stato.Numero = e.numero;
    stato.SimboloRichiesto = e.simboloRichiesto;
    stato.Risposta = e.risposta;
}

void SerieDaCodice::serieChiusa(StatoCondiviso &stato)
{
    // What belongs to the pupil and the run stays: the name, the right
    // answers counted for the certificate, the grade given.
    const QString nome = stato.NomeAlunno;
    const Int16 esatte = stato.EsatteComplessive;
    const QString valutazione = stato.Valutazione;
    stato = m_prima;
    stato.NomeAlunno = nome;
    stato.EsatteComplessive = esatte;
    stato.Valutazione = valutazione;
}
