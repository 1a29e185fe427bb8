#include "registro/SchemaRegistro.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

namespace {

QStringList passo(int versione)
{
    switch (versione) {
    case 1:
        return {
            QStringLiteral("CREATE TABLE registro_versione (versione INTEGER NOT NULL)"),
            QStringLiteral("INSERT INTO registro_versione (versione) VALUES (0)"),
            QStringLiteral("CREATE TABLE serie ("
                           "codice TEXT PRIMARY KEY, "
                           "inizio TEXT NOT NULL, "
                           "fine TEXT NOT NULL, "
                           "nome TEXT NOT NULL DEFAULT '', "
                           "tipo_numeri INTEGER NOT NULL, "
                           "numeri TEXT NOT NULL, "
                           "famiglia INTEGER NOT NULL, "
                           "simboli TEXT NOT NULL, "
                           "ordine TEXT NOT NULL, "
                           "esercizi INTEGER NOT NULL, "
                           "esatte INTEGER NOT NULL, "
                           "errate INTEGER NOT NULL, "
                           "tempo_totale DOUBLE PRECISION NOT NULL, "
                           "terminata INTEGER NOT NULL, "
                           "valutazione TEXT NOT NULL DEFAULT '')"),
            QStringLiteral("CREATE TABLE esercizi ("
                           "codice_serie TEXT NOT NULL, "
                           "numero INTEGER NOT NULL, "
                           "riga TEXT NOT NULL, "
                           "secondi DOUBLE PRECISION NOT NULL, "
                           "PRIMARY KEY (codice_serie, numero))"),
        };
    case 2:
        return {
            QStringLiteral("ALTER TABLE serie ADD COLUMN postazione TEXT NOT NULL DEFAULT ''"),
            QStringLiteral("CREATE INDEX serie_inizio ON serie (inizio)"),
            QStringLiteral("CREATE INDEX serie_nome ON serie (nome)"),
        };
    case 3:
        return {
            QStringLiteral("ALTER TABLE serie ADD COLUMN verifica TEXT NOT NULL DEFAULT ''"),
            QStringLiteral("ALTER TABLE esercizi ADD COLUMN esito INTEGER NOT NULL DEFAULT 0"),
            QStringLiteral("CREATE INDEX serie_verifica ON serie (verifica)"),
        };
    default:
        return {};
    }
}

} // namespace

int SchemaRegistro::versione(QSqlDatabase &db, QString *errore)
{
    if (!db.tables().contains(QStringLiteral("registro_versione")))
        return db.lastError().isValid() && !db.isOpen() ? -1 : 0;
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("SELECT versione FROM registro_versione")) || !q.next()) {
        if (errore)
            *errore = q.lastError().text();
        return -1;
    }
    return q.value(0).toInt();
}

bool SchemaRegistro::prepara(QSqlDatabase &db, QString *errore, int finoA)
{
    const int attuale = versione(db, errore);
    if (attuale < 0)
        return false;
    if (attuale > Versione) {
        if (errore)
            *errore = QStringLiteral("il registro è della versione %1, più recente di questo "
                                     "programma (%2)")
                          .arg(attuale)
                          .arg(Versione);
        return false;
    }
    if (attuale >= finoA)
        return true;
    if (!db.transaction()) {
        if (errore)
            *errore = db.lastError().text();
        return false;
    }
    QSqlQuery q(db);
    for (int v = attuale + 1; v <= finoA; ++v) {
        QStringList istruzioni = passo(v);
        istruzioni << QStringLiteral("UPDATE registro_versione SET versione = %1").arg(v);
        for (const QString &istruzione : istruzioni)
            if (!q.exec(istruzione)) {
                if (errore)
                    *errore = q.lastError().text();
                db.rollback();
                return false;
            }
    }
    if (!db.commit()) {
        if (errore)
            *errore = db.lastError().text();
        db.rollback();
        return false;
    }
    return true;
}
