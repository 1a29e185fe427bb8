#pragma once

#include "registro/MotoreArchivio.h"

#include <memory>

// The register's storage as the program uses it. The work is done by the
// SQL side (ArchivioSql), made on first use from the module that holds it
// (ModuloArchivio): the program does not link Qt's SQL library, so starting
// it costs nothing of the register. Without the module every call fails
// with Errore and ultimoErrore() says what is missing; nothing is written,
// so the series wait for the register as when it cannot be reached.
// A call that finds the server gone fails with NonRaggiungibile and lets
// the connection go: the next call connects again.
class ArchivioRegistro : public TipiArchivio
{
public:
    ArchivioRegistro(const ImpostazioniRegistro &impostazioni, const QString &nomeConnessione);
    ~ArchivioRegistro();
    ArchivioRegistro(const ArchivioRegistro &) = delete;
    ArchivioRegistro &operator=(const ArchivioRegistro &) = delete;

    // Opens (once) and prepares the schema. A SQLite file that is not a
    // database is renamed aside and a new one started: messoDaParte() then
    // says where the old one went.
    Esito apri();
    bool aperto() const;
    void chiudi();

    // Writes the series, replacing an earlier copy with the same code, in
    // one transaction.
    Esito scrivi(const SerieRegistrata &serie);
    // The series matching the filter, newest first, without their lines.
    QList<SerieRegistrata> elenco(const Filtro &filtro, Esito *esito = nullptr);
    QList<SerieRegistrata::Esercizio> righe(const QString &codice, Esito *esito = nullptr);
    // Every series with its lines (the queue handed on to the server).
    QList<SerieRegistrata> tutte(Esito *esito = nullptr);
    // The codes taken as verifiche, the most recent first.
    QList<VoceVerifica> verifiche(Esito *esito = nullptr);
    // Every series taken from that code, whichever computer wrote it, with
    // its exercises; oldest first.
    QList<SerieRegistrata> serieDiVerifica(const QString &verifica, Esito *esito = nullptr);
    Esito elimina(const QString &codice);
    // Deletes all series of the pupil; `quante` is how many went.
    Esito eliminaAlunno(const QString &nome, int *quante = nullptr);

    const ImpostazioniRegistro &impostazioni() const { return m_impostazioni; }
    QString ultimoErrore() const;
    QString messoDaParte() const;
    // The connection, for checks of the schema; null without the module.
    QSqlDatabase *database();

private:
    // The storage, made at the first call that needs it.
    MotoreArchivio *motore();
    // A read without storage: empty, with the failure in `esito`.
    template <class T> T senzaMotore(Esito *esito) const;

    ImpostazioniRegistro m_impostazioni;
    QString m_nomeConnessione;
    std::unique_ptr<MotoreArchivio> m_motore;
    QString m_errore; // why there is no storage
};
