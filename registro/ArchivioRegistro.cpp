#include "registro/ArchivioRegistro.h"

#include "registro/ModuloArchivio.h"

ArchivioRegistro::ArchivioRegistro(const ImpostazioniRegistro &impostazioni,
                                   const QString &nomeConnessione)
    : m_impostazioni(impostazioni), m_nomeConnessione(nomeConnessione)
{
}

ArchivioRegistro::~ArchivioRegistro() = default;

MotoreArchivio *ArchivioRegistro::motore()
{
    if (m_motore || !m_errore.isEmpty())
        return m_motore.get();
    const ModuloArchivio::Caricato &modulo = ModuloArchivio::diQuestoProgramma();
    if (modulo.crea)
        m_motore.reset(modulo.crea(VersioneInterfacciaArchivio, m_impostazioni, m_nomeConnessione));
    if (!m_motore)
        m_errore = modulo.crea ? QStringLiteral("il modulo del registro è di un'altra versione di "
                                                "Quadrivo: reinstallare Quadrivo")
                               : modulo.errore;
    return m_motore.get();
}

template <class T> T ArchivioRegistro::senzaMotore(Esito *esito) const
{
    if (esito)
        *esito = Errore;
    return {};
}

ArchivioRegistro::Esito ArchivioRegistro::apri()
{
    MotoreArchivio *m = motore();
    return m ? m->apri() : Errore;
}

bool ArchivioRegistro::aperto() const
{
    return m_motore && m_motore->aperto();
}

void ArchivioRegistro::chiudi()
{
    if (m_motore)
        m_motore->chiudi();
}

ArchivioRegistro::Esito ArchivioRegistro::scrivi(const SerieRegistrata &serie)
{
    MotoreArchivio *m = motore();
    return m ? m->scrivi(serie) : Errore;
}

QList<SerieRegistrata> ArchivioRegistro::elenco(const Filtro &filtro, Esito *esito)
{
    MotoreArchivio *m = motore();
    return m ? m->elenco(filtro, esito) : senzaMotore<QList<SerieRegistrata>>(esito);
}

QList<SerieRegistrata::Esercizio> ArchivioRegistro::righe(const QString &codice, Esito *esito)
{
    MotoreArchivio *m = motore();
    return m ? m->righe(codice, esito) : senzaMotore<QList<SerieRegistrata::Esercizio>>(esito);
}

QList<SerieRegistrata> ArchivioRegistro::tutte(Esito *esito)
{
    MotoreArchivio *m = motore();
    return m ? m->tutte(esito) : senzaMotore<QList<SerieRegistrata>>(esito);
}

QList<ArchivioRegistro::VoceVerifica> ArchivioRegistro::verifiche(Esito *esito)
{
    MotoreArchivio *m = motore();
    return m ? m->verifiche(esito) : senzaMotore<QList<VoceVerifica>>(esito);
}

QList<SerieRegistrata> ArchivioRegistro::serieDiVerifica(const QString &verifica, Esito *esito)
{
    MotoreArchivio *m = motore();
    return m ? m->serieDiVerifica(verifica, esito) : senzaMotore<QList<SerieRegistrata>>(esito);
}

ArchivioRegistro::Esito ArchivioRegistro::elimina(const QString &codice)
{
    MotoreArchivio *m = motore();
    return m ? m->elimina(codice) : Errore;
}

ArchivioRegistro::Esito ArchivioRegistro::eliminaAlunno(const QString &nome, int *quante)
{
    if (MotoreArchivio *m = motore())
        return m->eliminaAlunno(nome, quante);
    if (quante)
        *quante = 0;
    return Errore;
}

QString ArchivioRegistro::ultimoErrore() const
{
    return m_motore ? m_motore->ultimoErrore() : m_errore;
}

QString ArchivioRegistro::messoDaParte() const
{
    return m_motore ? m_motore->messoDaParte() : QString();
}

QSqlDatabase *ArchivioRegistro::database()
{
    MotoreArchivio *m = motore();
    return m ? &m->database() : nullptr;
}
