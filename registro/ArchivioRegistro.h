#pragma once

#include "registro/ImpostazioniRegistro.h"
#include "registro/SerieRegistrata.h"

#include <QDate>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

class QSqlError;

// The register's storage: one connection to the SQLite file or the
// PostgreSQL server, the schema brought up to date when it opens, and the
// reads and writes of the register. Every value is bound, never pasted into
// a statement. A connection belongs to the thread that opened it.
class ArchivioRegistro
{
public:
    enum Esito
    {
        Ok,
        NonRaggiungibile, // no server, or no place for the file
        SolaLettura,
        Bloccato,       // another program holds the file
        Danneggiato,    // not a database, or a damaged one
        VersioneFutura, // written by a newer Quadrivo
        Errore,
    };

    struct Filtro
    {
        QString nome;  // part of the name, any case
        QDate dal, al; // inclusive; invalid: no bound
    };

    // A code of the verifiche taken: when it was first taken and by how many.
    struct VoceVerifica
    {
        QString codice;
        QDateTime primaVolta;
        int serie = 0;
        int alunni = 0; // different names
    };

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
    QString ultimoErrore() const { return m_errore; }
    QString messoDaParte() const { return m_messoDaParte; }
    QSqlDatabase &database() { return m_db; }

    static QString testoData(const QDateTime &t);

private:
    Esito scriviSerie(const SerieRegistrata &serie);
    static bool cancellaSerie(QSqlQuery &q, const QString &codice);
    Esito apriSQLite();
    Esito apriPostgreSQL();
    Esito prepara();
    Esito fallito(const QSqlError &errore);
    // The end of a read: its outcome to `esito`, when asked for.
    void fineLettura(Esito e, Esito *esito);
    bool mettiDaParte();

    ImpostazioniRegistro m_impostazioni;
    QString m_nomeConnessione;
    QSqlDatabase m_db;
    QString m_errore;
    QString m_messoDaParte;
};
