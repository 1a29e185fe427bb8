#pragma once

#include "registro/ImpostazioniRegistro.h"
#include "registro/SerieRegistrata.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

class QSqlDatabase;

// What the register's storage answers and takes, shared by the program's
// side (ArchivioRegistro) and the SQL side (ArchivioSql).
struct TipiArchivio
{
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

    // A time as the register stores it.
    static constexpr char FormatoData[] = "yyyy-MM-ddTHH:mm:ss";
    static QString testoData(const QDateTime &t) { return t.toString(QLatin1String(FormatoData)); }
};

// The storage itself: made by the module that holds the SQL code, so that
// Qt's SQL library is loaded when the register is first opened, not when
// the program starts. ArchivioRegistro documents each call.
class MotoreArchivio : public TipiArchivio
{
public:
    virtual ~MotoreArchivio() = default;

    virtual Esito apri() = 0;
    virtual bool aperto() const = 0;
    virtual void chiudi() = 0;
    virtual Esito scrivi(const SerieRegistrata &serie) = 0;
    virtual QList<SerieRegistrata> elenco(const Filtro &filtro, Esito *esito) = 0;
    virtual QList<SerieRegistrata::Esercizio> righe(const QString &codice, Esito *esito) = 0;
    virtual QList<SerieRegistrata> tutte(Esito *esito) = 0;
    virtual QList<VoceVerifica> verifiche(Esito *esito) = 0;
    virtual QList<SerieRegistrata> serieDiVerifica(const QString &verifica, Esito *esito) = 0;
    virtual Esito elimina(const QString &codice) = 0;
    virtual Esito eliminaAlunno(const QString &nome, int *quante) = 0;
    virtual QString ultimoErrore() const = 0;
    virtual QString messoDaParte() const = 0;
    virtual QSqlDatabase &database() = 0;
};

// The module's one entry point. `interfaccia` is the caller's
// VersioneInterfacciaArchivio: a module built from other sources answers
// null rather than be called through a table it does not have.
inline constexpr int VersioneInterfacciaArchivio = 1;
inline constexpr char NomeCreaArchivio[] = "quadrivo_archivio_crea";
using CreaArchivio = MotoreArchivio *(int interfaccia, const ImpostazioniRegistro &impostazioni,
                                      const QString &nomeConnessione);
extern "C" CreaArchivio quadrivo_archivio_crea;
