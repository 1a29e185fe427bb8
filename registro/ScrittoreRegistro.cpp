#include "registro/ScrittoreRegistro.h"

#include <QFile>
#include <QTimer>

#include <algorithm>

ScrittoreRegistro::ScrittoreRegistro(const ImpostazioniRegistro &impostazioni,
                                     int intervalloRiprova)
    : m_impostazioni(impostazioni), m_intervallo(intervalloRiprova)
{
}

ScrittoreRegistro::~ScrittoreRegistro() = default;

int ScrittoreRegistro::inAttesa() const
{
    int n = int(m_memoria.size());
    if (m_coda && m_coda->aperto()) {
        QList<SerieRegistrata> inCoda = m_coda->elenco({});
        n += int(inCoda.size());
    }
    return n;
}

void ScrittoreRegistro::scrivi(const SerieRegistrata &serie)
{
    if (!m_archivio)
        m_archivio = std::make_unique<ArchivioRegistro>(m_impostazioni,
                                                        QStringLiteral("registro-scrittura"));
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

bool ScrittoreRegistro::svuota()
{
    // What waits in the local file goes first, in the order it came.
    if (m_impostazioni.tipo == ImpostazioniRegistro::PostgreSQL) {
        if (!m_coda)
            m_coda = std::make_unique<ArchivioRegistro>(
                ImpostazioniRegistro::sqlite(m_impostazioni.coda), QStringLiteral("registro-coda"));
        if (QFile::exists(m_impostazioni.coda) && m_coda->apri() == ArchivioRegistro::Ok) {
            QList<SerieRegistrata> inCoda = m_coda->tutte();
            std::reverse(inCoda.begin(), inCoda.end());
            for (const SerieRegistrata &s : inCoda) {
                const ArchivioRegistro::Esito e = m_archivio->scrivi(s);
                if (e != ArchivioRegistro::Ok) {
                    segnala(e);
                    // What came meanwhile waits in the file with the rest.
                    const QList<SerieRegistrata> nuove = m_memoria;
                    for (const SerieRegistrata &n : nuove)
                        accoda(n);
                    accoda({});
                    return false;
                }
                m_coda->elimina(s.codice);
                emit scritta(s.codice);
            }
        }
    }
    while (!m_memoria.isEmpty()) {
        const SerieRegistrata s = m_memoria.first();
        const ArchivioRegistro::Esito e = m_archivio->scrivi(s);
        if (!m_archivio->messoDaParte().isEmpty() &&
            m_archivio->messoDaParte() != m_messoDaParteDetto) {
            m_messoDaParteDetto = m_archivio->messoDaParte();
            emit problema(ArchivioRegistro::Danneggiato, m_archivio->ultimoErrore(),
                          m_archivio->messoDaParte());
        }
        if (e != ArchivioRegistro::Ok) {
            segnala(e);
            accoda(s);
            return false;
        }
        m_memoria.removeFirst();
        emit scritta(s.codice);
    }
    if (m_timer)
        m_timer->stop();
    if (m_inDifficolta) {
        m_inDifficolta = false;
        emit ripreso();
    }
    return true;
}

void ScrittoreRegistro::accoda(const SerieRegistrata &serie)
{
    // For a server, what waits is kept on disk too, so leaving the program
    // loses nothing.
    if (!serie.codice.isEmpty() && m_impostazioni.tipo == ImpostazioniRegistro::PostgreSQL &&
        m_coda && m_coda->scrivi(serie) == ArchivioRegistro::Ok)
        for (qsizetype i = 0; i < m_memoria.size(); ++i)
            if (m_memoria[i].codice == serie.codice)
                m_memoria.removeAt(i--);
    if (!m_timer) {
        m_timer = new QTimer(this);
        connect(m_timer, &QTimer::timeout, this, &ScrittoreRegistro::riprova);
    }
    m_timer->start(m_intervallo);
}

void ScrittoreRegistro::segnala(int esito)
{
    m_inDifficolta = true;
    emit problema(esito, m_archivio->ultimoErrore(), QString());
}

void ScrittoreRegistro::chiudi()
{
    if (m_timer)
        m_timer->stop();
    if (m_archivio && !m_memoria.isEmpty())
        svuota();
    if (m_timer)
        m_timer->stop();
    m_archivio.reset();
    m_coda.reset();
}
