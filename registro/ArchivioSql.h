#pragma once

#include "registro/MotoreArchivio.h"

#include <QSqlDatabase>
#include <QSqlQuery>

class QSqlError;

// The register's storage on Qt's SQL library: one connection to the SQLite
// file or the PostgreSQL server, the schema brought up to date when it
// opens, and the reads and writes of the register. Every value is bound,
// never pasted into a statement. A connection belongs to the thread that
// opened it. Lives in the module libquadrivo_archivio, so the program links
// no SQL; reached through ArchivioRegistro.
class ArchivioSql final : public MotoreArchivio
{
public:
    ArchivioSql(const ImpostazioniRegistro &impostazioni, const QString &nomeConnessione);
    ~ArchivioSql() override;
    ArchivioSql(const ArchivioSql &) = delete;
    ArchivioSql &operator=(const ArchivioSql &) = delete;

    Esito apri() override;
    bool aperto() const override;
    void chiudi() override;
    Esito scrivi(const SerieRegistrata &serie) override;
    QList<SerieRegistrata> elenco(const Filtro &filtro, Esito *esito) override;
    QList<SerieRegistrata::Esercizio> righe(const QString &codice, Esito *esito) override;
    QList<SerieRegistrata> tutte(Esito *esito) override;
    QList<VoceVerifica> verifiche(Esito *esito) override;
    QList<SerieRegistrata> serieDiVerifica(const QString &verifica, Esito *esito) override;
    Esito elimina(const QString &codice) override;
    Esito eliminaAlunno(const QString &nome, int *quante) override;
    QString ultimoErrore() const override { return m_errore; }
    QString messoDaParte() const override { return m_messoDaParte; }
    QSqlDatabase &database() override { return m_db; }

private:
    Esito scriviSerie(const SerieRegistrata &serie);
    // Opens if needed and begins a transaction.
    Esito iniziaTransazione();
    // The failure of a transaction begun: its outcome, after the rollback.
    Esito annulla(const QSqlError &errore);
    static bool cancellaSerie(QSqlQuery &q, const QString &codice);
    Esito apriSQLite();
    Esito apriPostgreSQL();
    Esito prepara();
    Esito fallito(const QSqlError &errore);
    // The end of a read: its outcome to `esito`, when asked for.
    void fineLettura(Esito e, Esito *esito);
    // The end of a change: its outcome, once the session is let go if it
    // cannot serve the next call.
    Esito fineModifica(Esito e);
    bool mettiDaParte();

    ImpostazioniRegistro m_impostazioni;
    QString m_nomeConnessione;
    QSqlDatabase m_db;
    QString m_errore;
    QString m_messoDaParte;
};
