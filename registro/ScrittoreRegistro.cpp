#include "registro/ScrittoreRegistro.h"

#include <QFile>
#include <QTimer>

#include <algorithm>

ScrittoreRegistro::ScrittoreRegistro(const ImpostazioniRegistro &impostazioni,
                                     int intervalloRiprova)
    : m_impostazioni(impostazioni), m_intervallo(intervalloRiprova)
{
    if (!m_impostazioni.attesa.isEmpty())
        m_attesa = std::make_unique<AttesaRegistro>(m_impostazioni.attesa);
}

ScrittoreRegistro::~ScrittoreRegistro() = default;

int ScrittoreRegistro::inAttesa() const
{
    int n = int(m_memoria.size());
    if (m_attesa)
        n += int(m_attesa->tutte().size());
    if (m_coda && m_coda->aperto()) {
        QList<SerieRegistrata> inCoda = m_coda->elenco({});
        n += int(inCoda.size());
    }
    return n;
}

void ScrittoreRegistro::apriArchivio()
{
    if (!m_archivio)
        m_archivio = std::make_unique<ArchivioRegistro>(m_impostazioni,
                                                        QStringLiteral("registro-scrittura"));
}

void ScrittoreRegistro::scrivi(const SerieRegistrata &serie)
{
    apriArchivio();
    // A newer copy of the same series replaces the one waiting.
    for (qsizetype i = 0; i < m_memoria.size(); ++i)
        if (m_memoria[i].codice == serie.codice)
            m_memoria.removeAt(i--);
    m_memoria.append(serie);
    svuota();
}

void ScrittoreRegistro::riprova()
{
    if (m_archivio)
        svuota();
}

void ScrittoreRegistro::riprendi()
{
    const bool coda = m_impostazioni.tipo == ImpostazioniRegistro::PostgreSQL &&
                      !m_impostazioni.coda.isEmpty() && QFile::exists(m_impostazioni.coda);
    if (!coda && (!m_attesa || m_attesa->vuota()))
        return;
    apriArchivio();
    svuota();
}

ArchivioRegistro::Esito ScrittoreRegistro::scriviUna(const SerieRegistrata &s)
{
    const ArchivioRegistro::Esito e = m_archivio->scrivi(s);
    if (!m_archivio->messoDaParte().isEmpty() &&
        m_archivio->messoDaParte() != m_messoDaParteDetto) {
        m_messoDaParteDetto = m_archivio->messoDaParte();
        emit problema(ArchivioRegistro::Danneggiato, m_archivio->ultimoErrore(),
                      m_archivio->messoDaParte(), QString());
    }
    if (e == ArchivioRegistro::Ok)
        emit scritta(s.codice);
    return e;
}

bool ScrittoreRegistro::svuota()
{
    // What an earlier version kept for the server goes first.
    if (m_impostazioni.tipo == ImpostazioniRegistro::PostgreSQL && !m_impostazioni.coda.isEmpty() &&
        QFile::exists(m_impostazioni.coda)) {
        if (!m_coda)
            m_coda = std::make_unique<ArchivioRegistro>(
                ImpostazioniRegistro::sqlite(m_impostazioni.coda), QStringLiteral("registro-coda"));
        if (m_coda->apri() == ArchivioRegistro::Ok) {
            QList<SerieRegistrata> inCoda = m_coda->tutte();
            std::reverse(inCoda.begin(), inCoda.end());
            for (const SerieRegistrata &s : inCoda) {
                const ArchivioRegistro::Esito e = scriviUna(s);
                if (e != ArchivioRegistro::Ok)
                    return fallita(e);
                m_coda->elimina(s.codice);
            }
            // Emptied: the folder takes over, and the next start has
            // nothing to look for here.
            m_coda.reset();
            for (const char *suffisso : {"", "-wal", "-shm", "-journal"})
                QFile::remove(m_impostazioni.coda + QLatin1String(suffisso));
        }
    }
    // Then what waits in the folder, oldest first: each file goes only once
    // its series is in the register, so an interruption sends it again and
    // the register, keyed by the code, still holds it once.
    if (m_attesa) {
        const QList<SerieRegistrata> inAttesa = m_attesa->tutte();
        for (const SerieRegistrata &s : inAttesa) {
            const ArchivioRegistro::Esito e = scriviUna(s);
            if (e != ArchivioRegistro::Ok)
                return fallita(e);
            m_attesa->togli(s.codice);
        }
    }
    while (!m_memoria.isEmpty()) {
        const ArchivioRegistro::Esito e = scriviUna(m_memoria.first());
        if (e != ArchivioRegistro::Ok)
            return fallita(e);
        m_memoria.removeFirst();
    }
    if (m_timer)
        m_timer->stop();
    if (m_inDifficolta) {
        m_inDifficolta = false;
        emit ripreso();
    }
    return true;
}

bool ScrittoreRegistro::fallita(ArchivioRegistro::Esito esito)
{
    // What waits is put on disk before the user is told where it is.
    mettiInAttesa();
    m_inDifficolta = true;
    emit problema(esito, m_archivio->ultimoErrore(), QString(),
                  m_memoria.isEmpty() && m_attesa ? m_attesa->cartella() : QString());
    if (!m_timer) {
        m_timer = new QTimer(this);
        connect(m_timer, &QTimer::timeout, this, &ScrittoreRegistro::riprova);
    }
    m_timer->start(m_intervallo);
    return false;
}

void ScrittoreRegistro::mettiInAttesa()
{
    if (!m_attesa)
        return;
    for (qsizetype i = 0; i < m_memoria.size(); ++i)
        if (m_attesa->metti(m_memoria[i]))
            m_memoria.removeAt(i--);
}

void ScrittoreRegistro::chiudi()
{
    if (m_timer)
        m_timer->stop();
    // A register in trouble is not waited for again: what is in memory goes
    // to the folder, for the next start.
    if (m_archivio && !m_memoria.isEmpty() && !m_inDifficolta)
        svuota();
    mettiInAttesa();
    if (m_timer)
        m_timer->stop();
    m_archivio.reset();
    m_coda.reset();
}
