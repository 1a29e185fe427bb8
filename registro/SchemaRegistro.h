#pragma once

#include <QString>

class QSqlDatabase;

// The register's tables, versioned. Each version is one step from the one
// before; a new database runs them all, an older one the steps it lacks, in
// one transaction. The same statements serve SQLite and PostgreSQL.
//
// 1: series (serie) and their record lines (esercizi).
// 2: the machine a series was done on (postazione), and indexes on date and
//    name so the teacher's view opens quickly on years of series.
// 3: verifiche: the class set's code a series was taken from (serie.verifica,
//    indexed: a class's results are read by it) and how each exercise closed
//    (esercizi.esito).
class SchemaRegistro
{
public:
    static constexpr int Versione = 3;

    // The version the database is at; 0 when it has no register yet, -1 on
    // an error (`errore` says which).
    static int versione(QSqlDatabase &db, QString *errore = nullptr);
    // Brings the database to `finoA` (tests build older ones this way).
    // False with `errore` set on failure, or when the database is newer than
    // this program knows.
    static bool prepara(QSqlDatabase &db, QString *errore = nullptr, int finoA = Versione);
};
