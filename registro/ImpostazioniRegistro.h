#pragma once

#include <QString>

// Where the register is kept. By default a SQLite file in the user's data
// directory; for a lab, a PostgreSQL server named by one line, either in the
// environment variable QUADRIVO_REGISTRO or in registro.conf in the user's
// configuration directory:
//
//     postgresql host=server.scuola dbname=quadrivo user=maestra [port=5432]
//     sqlite /percorso/del/registro.sqlite
//
// The password is never kept here: PostgreSQL reads it from its own password
// file (~/.pgpass).
struct ImpostazioniRegistro
{
    enum Tipo
    {
        SQLite,
        PostgreSQL
    };

    Tipo tipo = SQLite;
    QString percorso; // SQLite: the file
    QString host, database, utente;
    int porta = 5432;
    // The local file where an earlier version kept series for the server;
    // what is found there is still sent.
    QString coda;
    // The folder where series wait while the register cannot take them
    // (empty: they wait in memory only).
    QString attesa;
    // Why the configured line was not taken (the default is used then).
    QString errore;

    // What to show the teacher: the file, or user@host/database.
    QString descrizione() const;

    static ImpostazioniRegistro sqlite(const QString &percorso);
    // One configuration line; on a mistake, `errore` says which.
    static ImpostazioniRegistro daRiga(const QString &riga, const QString &cartellaDati);
    // The environment variable, else the configuration file, else the default.
    static ImpostazioniRegistro dalSistema();
    static QString cartellaDati();
};
