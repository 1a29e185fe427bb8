#include "registro/ArchivioSql.h"

#include "registro/SchemaRegistro.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString Formato = QLatin1String(TipiArchivio::FormatoData);

const QString Colonne = QStringLiteral(
    "codice, inizio, fine, nome, tipo_numeri, numeri, famiglia, simboli, ordine, esercizi, "
    "esatte, errate, tempo_totale, terminata, valutazione, postazione, verifica");

// The stored form read by hand: QDateTime::fromString with a format would
// take most of the time the view needs to open on years of series.
QDateTime leggiData(const QString &t)
{
    if (t.size() != 19)
        return QDateTime::fromString(t, Formato);
    const QStringView v(t);
    const QDate d(v.mid(0, 4).toInt(), v.mid(5, 2).toInt(), v.mid(8, 2).toInt());
    const QTime o(v.mid(11, 2).toInt(), v.mid(14, 2).toInt(), v.mid(17, 2).toInt());
    // Local time costs a time-zone lookup each; the day's offset, once per
    // day, gives the same instant and the same wall-clock fields.
    static thread_local QHash<QDate, int> scarti;
    auto i = scarti.constFind(d);
    if (i == scarti.cend())
        i = scarti.insert(d, QDateTime(d, QTime(12, 0)).offsetFromUtc());
    const QDateTime locale(d, o, Qt::OffsetFromUTC, *i);
    // Near a change of summer time the noon offset may not hold.
    if (o.hour() < 4)
        return QDateTime(d, o);
    return locale;
}

SerieRegistrata leggiSerie(const QSqlQuery &q)
{
    SerieRegistrata s;
    s.codice = q.value(0).toString();
    s.inizio = leggiData(q.value(1).toString());
    s.fine = leggiData(q.value(2).toString());
    s.nome = q.value(3).toString();
    s.tipoNumeri = q.value(4).toInt();
    s.numeri = q.value(5).toString();
    s.famiglia = q.value(6).toInt();
    s.simboli = q.value(7).toString();
    s.ordine = q.value(8).toString();
    s.numeroEsercizi = q.value(9).toInt();
    s.esatte = q.value(10).toInt();
    s.errate = q.value(11).toInt();
    s.tempoTotale = q.value(12).toDouble();
    s.terminata = q.value(13).toInt() != 0;
    s.valutazione = q.value(14).toString();
    s.postazione = q.value(15).toString();
    s.verifica = q.value(16).toString();
    return s;
}

// An empty text is stored as such, not as NULL.
QString testo(const QString &v)
{
    return v.isNull() ? QStringLiteral("") : v;
}

// Wildcards typed in a name are meant literally.
QString modelloLike(const QString &nome)
{
    QString m = nome.trimmed().toLower();
    m.replace(QLatin1String("!"), QLatin1String("!!"));
    m.replace(QLatin1String("%"), QLatin1String("!%"));
    m.replace(QLatin1String("_"), QLatin1String("!_"));
    return QLatin1Char('%') + m + QLatin1Char('%');
}

} // namespace

ArchivioSql::ArchivioSql(const ImpostazioniRegistro &impostazioni, const QString &nomeConnessione)
    : m_impostazioni(impostazioni), m_nomeConnessione(nomeConnessione)
{
}

ArchivioSql::~ArchivioSql()
{
    chiudi();
}

bool ArchivioSql::aperto() const
{
    return m_db.isValid() && m_db.isOpen();
}

void ArchivioSql::chiudi()
{
    if (!m_db.isValid())
        return;
    m_db.close();
    m_db = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_nomeConnessione);
}

ArchivioSql::Esito ArchivioSql::apri()
{
    if (aperto())
        return Ok;
    m_messoDaParte.clear();
    const Esito e =
        m_impostazioni.tipo == ImpostazioniRegistro::SQLite ? apriSQLite() : apriPostgreSQL();
    if (e != Ok)
        chiudi();
    return e;
}

ArchivioSql::Esito ArchivioSql::apriSQLite()
{
    const QString percorso = m_impostazioni.percorso;
    const QFileInfo info(percorso);
    if (!QDir().mkpath(info.absolutePath())) {
        m_errore = QStringLiteral("impossibile creare la cartella %1").arg(info.absolutePath());
        return NonRaggiungibile;
    }
    // Names of pupils: the file is the owner's alone, from its first byte.
    const QByteArray nativo = QFile::encodeName(percorso);
    const int fd = ::open(nativo.constData(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
    if (fd >= 0) {
        ::fchmod(fd, 0600);
        ::close(fd);
    } else if (!info.exists()) {
        m_errore = QStringLiteral("impossibile creare il file %1").arg(percorso);
        return NonRaggiungibile;
    }
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE"))) {
        m_errore = QStringLiteral("manca il driver SQLite di Qt");
        return Errore;
    }
    for (int tentativo = 0; tentativo < 2; ++tentativo) {
        m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_nomeConnessione);
        m_db.setDatabaseName(percorso);
        m_db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=100"));
        if (!m_db.open())
            return fallito(m_db.lastError());
        QSqlQuery prova(m_db);
        if (prova.exec(QStringLiteral("SELECT count(*) FROM sqlite_master"))) {
            prova.finish();
            // Only the last series in progress can be lost by a crash.
            QSqlQuery(m_db).exec(QStringLiteral("PRAGMA journal_mode=WAL"));
            return prepara();
        }
        const Esito e = fallito(prova.lastError());
        prova = QSqlQuery();
        if (e != Danneggiato || tentativo > 0)
            return e;
        chiudi();
        if (!mettiDaParte())
            return Danneggiato;
    }
    return Errore;
}

bool ArchivioSql::mettiDaParte()
{
    const QString percorso = m_impostazioni.percorso;
    const QString accanto =
        percorso + QStringLiteral(".danneggiato-") +
        QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    if (!QFile::rename(percorso, accanto)) {
        m_errore =
            QStringLiteral("il registro %1 è danneggiato e non si può spostare").arg(percorso);
        return false;
    }
    // The journal of the damaged file goes with it, not into the new one.
    for (const char *suffisso : {"-wal", "-shm", "-journal"})
        if (QFile::exists(percorso + QLatin1String(suffisso)))
            QFile::rename(percorso + QLatin1String(suffisso), accanto + QLatin1String(suffisso));
    m_messoDaParte = accanto;
    const int fd =
        ::open(QFile::encodeName(percorso).constData(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
    if (fd >= 0)
        ::close(fd);
    return true;
}

ArchivioSql::Esito ArchivioSql::apriPostgreSQL()
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL"))) {
        m_errore = QStringLiteral("manca il driver PostgreSQL di Qt");
        return Errore;
    }
    m_db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), m_nomeConnessione);
    m_db.setHostName(m_impostazioni.host);
    m_db.setPort(m_impostazioni.porta);
    m_db.setDatabaseName(m_impostazioni.database);
    m_db.setUserName(m_impostazioni.utente);
    // A server that does not answer must not hold the program for long.
    m_db.setConnectOptions(QStringLiteral("connect_timeout=3"));
    if (!m_db.open()) {
        m_errore = m_db.lastError().text();
        return NonRaggiungibile;
    }
    // A table locked by another program is waited for briefly, then told;
    // this thread must be free for the next attempt.
    QSqlQuery(m_db).exec(QStringLiteral("SET lock_timeout = 2000"));
    QSqlQuery(m_db).exec(QStringLiteral("SET statement_timeout = 20000"));
    return prepara();
}

ArchivioSql::Esito ArchivioSql::prepara()
{
    QString errore;
    if (SchemaRegistro::prepara(m_db, &errore))
        return Ok;
    m_errore = errore;
    if (SchemaRegistro::versione(m_db) > SchemaRegistro::Versione)
        return VersioneFutura;
    return fallito(m_db.lastError().isValid() ? m_db.lastError() : QSqlError(errore));
}

void ArchivioSql::fineLettura(Esito e, Esito *esito)
{
    // A lost server: the next call connects again.
    if (e == NonRaggiungibile)
        chiudi();
    if (esito)
        *esito = e;
}

ArchivioSql::Esito ArchivioSql::fallito(const QSqlError &errore)
{
    if (!errore.text().trimmed().isEmpty())
        m_errore = errore.text();
    if (m_impostazioni.tipo == ImpostazioniRegistro::PostgreSQL) {
        const QString stato = errore.nativeErrorCode();
        auto codice = [&](const char *c) {
            return stato == QLatin1String(c) || m_errore.contains(QStringLiteral("(%1)").arg(c));
        };
        // A read-only database, or a user who may only read.
        if (codice("25006") || codice("42501"))
            return SolaLettura;
        // A table locked by another session past lock_timeout.
        if (codice("55P03") || codice("57014"))
            return Bloccato;
        // A connection lost on the way: the server is gone, not the data.
        if (errore.type() == QSqlError::ConnectionError || !m_db.isOpen() ||
            m_errore.contains(QLatin1String("connection"), Qt::CaseInsensitive) ||
            m_errore.contains(QLatin1String("server closed"), Qt::CaseInsensitive))
            return NonRaggiungibile;
        return Errore;
    }
    switch (errore.nativeErrorCode().toInt() & 0xff) {
    case 5: // busy
    case 6: // locked
        return Bloccato;
    case 8: // read-only
        return SolaLettura;
    case 14: // cannot open
        return NonRaggiungibile;
    case 11: // corrupt
    case 26: // not a database
        return Danneggiato;
    default:
        return Errore;
    }
}

// A series' exercises, then the series itself; false with the error in `q`.
bool ArchivioSql::cancellaSerie(QSqlQuery &q, const QString &codice)
{
    for (const char *istruzione : {"DELETE FROM esercizi WHERE codice_serie = :codice",
                                   "DELETE FROM serie WHERE codice = :codice"}) {
        // On a server, preparing already takes the table's lock: a prepare
        // that fails is a failure, not an empty statement to run.
        if (!q.prepare(QLatin1String(istruzione)))
            return false;
        q.bindValue(QStringLiteral(":codice"), codice);
        if (!q.exec())
            return false;
    }
    return true;
}

ArchivioSql::Esito ArchivioSql::fineModifica(Esito e)
{
    // A connection lost goes; the next call opens a new one. A server's
    // session that failed goes too: the next one sees the database as it is
    // then (read-only lifted, rights granted).
    if (e == NonRaggiungibile ||
        (e != Ok && m_impostazioni.tipo == ImpostazioniRegistro::PostgreSQL))
        chiudi();
    return e;
}

ArchivioSql::Esito ArchivioSql::scrivi(const SerieRegistrata &s)
{
    return fineModifica(scriviSerie(s));
}

ArchivioSql::Esito ArchivioSql::iniziaTransazione()
{
    const Esito e = apri();
    if (e != Ok)
        return e;
    return m_db.transaction() ? Ok : fallito(m_db.lastError());
}

ArchivioSql::Esito ArchivioSql::annulla(const QSqlError &errore)
{
    const Esito esito = fallito(errore);
    m_db.rollback();
    return esito;
}

ArchivioSql::Esito ArchivioSql::scriviSerie(const SerieRegistrata &s)
{
    if (const Esito e = iniziaTransazione(); e != Ok)
        return e;
    QSqlQuery q(m_db);
    if (!cancellaSerie(q, s.codice))
        return annulla(q.lastError());
    const bool pronta =
        q.prepare(QStringLiteral("INSERT INTO serie (%1) VALUES (:codice, :inizio, :fine, :nome, "
                                 ":tipo_numeri, :numeri, :famiglia, :simboli, :ordine, :esercizi, "
                                 ":esatte, :errate, :tempo_totale, :terminata, :valutazione, "
                                 ":postazione, :verifica)")
                      .arg(Colonne));
    if (!pronta)
        return annulla(q.lastError());
    q.bindValue(QStringLiteral(":codice"), s.codice);
    q.bindValue(QStringLiteral(":inizio"), testoData(s.inizio));
    q.bindValue(QStringLiteral(":fine"), testoData(s.fine));
    q.bindValue(QStringLiteral(":nome"), testo(s.nome));
    q.bindValue(QStringLiteral(":tipo_numeri"), s.tipoNumeri);
    q.bindValue(QStringLiteral(":numeri"), testo(s.numeri));
    q.bindValue(QStringLiteral(":famiglia"), s.famiglia);
    q.bindValue(QStringLiteral(":simboli"), testo(s.simboli));
    q.bindValue(QStringLiteral(":ordine"), testo(s.ordine));
    q.bindValue(QStringLiteral(":esercizi"), s.quantiEsercizi());
    q.bindValue(QStringLiteral(":esatte"), s.esatte);
    q.bindValue(QStringLiteral(":errate"), s.errate);
    q.bindValue(QStringLiteral(":tempo_totale"), s.tempoTotale);
    q.bindValue(QStringLiteral(":terminata"), s.terminata ? 1 : 0);
    q.bindValue(QStringLiteral(":valutazione"), testo(s.valutazione));
    q.bindValue(QStringLiteral(":postazione"), testo(s.postazione));
    q.bindValue(QStringLiteral(":verifica"), testo(s.verifica));
    if (!q.exec())
        return annulla(q.lastError());
    if (!q.prepare(QStringLiteral("INSERT INTO esercizi (codice_serie, numero, riga, secondi, "
                                  "esito) VALUES (:codice, :numero, :riga, :secondi, :esito)")))
        return annulla(q.lastError());
    for (const SerieRegistrata::Esercizio &es : s.esercizi) {
        q.bindValue(QStringLiteral(":codice"), s.codice);
        q.bindValue(QStringLiteral(":numero"), es.numero);
        q.bindValue(QStringLiteral(":riga"), testo(es.riga));
        q.bindValue(QStringLiteral(":secondi"), es.secondi);
        q.bindValue(QStringLiteral(":esito"), es.esito);
        if (!q.exec())
            return annulla(q.lastError());
    }
    if (!m_db.commit())
        return annulla(m_db.lastError());
    return Ok;
}

QList<SerieRegistrata> ArchivioSql::elenco(const Filtro &filtro, Esito *esito)
{
    QList<SerieRegistrata> risultato;
    Esito e = apri();
    if (e == Ok) {
        QString sql = QStringLiteral("SELECT %1 FROM serie WHERE 1 = 1").arg(Colonne);
        if (!filtro.nome.trimmed().isEmpty())
            sql += QStringLiteral(" AND lower(nome) LIKE :nome ESCAPE '!'");
        if (filtro.dal.isValid())
            sql += QStringLiteral(" AND inizio >= :dal");
        if (filtro.al.isValid())
            sql += QStringLiteral(" AND inizio < :al");
        sql += QStringLiteral(" ORDER BY inizio DESC, codice DESC");
        QSqlQuery q(m_db);
        q.setForwardOnly(true);
        const bool pronta = q.prepare(sql);
        if (!filtro.nome.trimmed().isEmpty())
            q.bindValue(QStringLiteral(":nome"), modelloLike(filtro.nome));
        if (filtro.dal.isValid())
            q.bindValue(QStringLiteral(":dal"), filtro.dal.toString(Qt::ISODate));
        if (filtro.al.isValid())
            q.bindValue(QStringLiteral(":al"), filtro.al.addDays(1).toString(Qt::ISODate));
        if (pronta && q.exec()) {
            while (q.next())
                risultato.append(leggiSerie(q));
        } else {
            e = fallito(q.lastError());
        }
    }
    fineLettura(e, esito);
    return risultato;
}

QList<SerieRegistrata::Esercizio> ArchivioSql::righe(const QString &codice, Esito *esito)
{
    QList<SerieRegistrata::Esercizio> risultato;
    Esito e = apri();
    if (e == Ok) {
        QSqlQuery q(m_db);
        const bool pronta =
            q.prepare(QStringLiteral("SELECT numero, riga, secondi, esito FROM esercizi "
                                     "WHERE codice_serie = :codice ORDER BY numero"));
        q.bindValue(QStringLiteral(":codice"), codice);
        if (pronta && q.exec()) {
            while (q.next())
                risultato.append({q.value(0).toInt(), q.value(1).toString(), q.value(2).toDouble(),
                                  q.value(3).toInt()});
        } else {
            e = fallito(q.lastError());
        }
    }
    fineLettura(e, esito);
    return risultato;
}

QList<SerieRegistrata> ArchivioSql::tutte(Esito *esito)
{
    Esito e = Ok;
    QList<SerieRegistrata> risultato = elenco({}, &e);
    for (SerieRegistrata &s : risultato) {
        if (e != Ok)
            break;
        s.esercizi = righe(s.codice, &e);
    }
    if (esito)
        *esito = e;
    return e == Ok ? risultato : QList<SerieRegistrata>{};
}

QList<ArchivioSql::VoceVerifica> ArchivioSql::verifiche(Esito *esito)
{
    QList<VoceVerifica> risultato;
    Esito e = apri();
    if (e == Ok) {
        QSqlQuery q(m_db);
        q.setForwardOnly(true);
        if (q.exec(QStringLiteral("SELECT verifica, min(inizio), count(*), count(DISTINCT nome) "
                                  "FROM serie WHERE verifica <> '' GROUP BY verifica "
                                  "ORDER BY min(inizio) DESC, verifica"))) {
            while (q.next())
                risultato.append({q.value(0).toString(), leggiData(q.value(1).toString()),
                                  q.value(2).toInt(), q.value(3).toInt()});
        } else {
            e = fallito(q.lastError());
        }
    }
    fineLettura(e, esito);
    return risultato;
}

QList<SerieRegistrata> ArchivioSql::serieDiVerifica(const QString &verifica, Esito *esito)
{
    QList<SerieRegistrata> risultato;
    Esito e = apri();
    if (e == Ok) {
        QSqlQuery q(m_db);
        q.setForwardOnly(true);
        bool fatto = q.prepare(QStringLiteral("SELECT %1 FROM serie WHERE verifica = :verifica "
                                              "ORDER BY inizio, codice")
                                   .arg(Colonne));
        q.bindValue(QStringLiteral(":verifica"), verifica);
        QHash<QString, qsizetype> dove;
        if (fatto && (fatto = q.exec()))
            while (q.next()) {
                risultato.append(leggiSerie(q));
                dove.insert(risultato.last().codice, risultato.size() - 1);
            }
        // The exercises of all of them in one query.
        if (fatto)
            fatto = q.prepare(QStringLiteral(
                "SELECT e.codice_serie, e.numero, e.riga, e.secondi, e.esito FROM esercizi e "
                "JOIN serie s ON s.codice = e.codice_serie WHERE s.verifica = :verifica "
                "ORDER BY e.codice_serie, e.numero"));
        if (fatto) {
            q.bindValue(QStringLiteral(":verifica"), verifica);
            fatto = q.exec();
        }
        if (fatto) {
            while (q.next()) {
                const auto i = dove.constFind(q.value(0).toString());
                if (i != dove.cend())
                    risultato[*i].esercizi.append({q.value(1).toInt(), q.value(2).toString(),
                                                   q.value(3).toDouble(), q.value(4).toInt()});
            }
        } else {
            e = fallito(q.lastError());
            risultato.clear();
        }
    }
    fineLettura(e, esito);
    return risultato;
}

ArchivioSql::Esito ArchivioSql::elimina(const QString &codice)
{
    Esito e = iniziaTransazione();
    // The query ends before the session can be let go.
    if (e == Ok) {
        QSqlQuery q(m_db);
        if (!cancellaSerie(q, codice))
            e = annulla(q.lastError());
        else if (!m_db.commit())
            e = annulla(m_db.lastError());
    }
    return fineModifica(e);
}

ArchivioSql::Esito ArchivioSql::eliminaAlunno(const QString &nome, int *quante)
{
    Esito e = iniziaTransazione();
    if (e == Ok) {
        QSqlQuery q(m_db);
        bool fatto = q.prepare(QStringLiteral("DELETE FROM esercizi WHERE codice_serie IN "
                                              "(SELECT codice FROM serie WHERE nome = :nome)"));
        if (fatto) {
            q.bindValue(QStringLiteral(":nome"), nome);
            fatto = q.exec();
        }
        if (fatto)
            fatto = q.prepare(QStringLiteral("DELETE FROM serie WHERE nome = :nome"));
        if (fatto) {
            q.bindValue(QStringLiteral(":nome"), nome);
            fatto = q.exec();
        }
        const int righeTolte = fatto ? q.numRowsAffected() : 0;
        if (!fatto || !m_db.commit())
            e = annulla(fatto ? m_db.lastError() : q.lastError());
        else if (quante)
            *quante = righeTolte;
    }
    return fineModifica(e);
}

// The module's entry point (MotoreArchivio.h); also linked straight into
// the tests, which then make the storage without loading anything.
extern "C" __attribute__((visibility("default"))) MotoreArchivio *
quadrivo_archivio_crea(int interfaccia, const ImpostazioniRegistro &impostazioni,
                       const QString &nomeConnessione)
{
    if (interfaccia != VersioneInterfacciaArchivio)
        return nullptr;
    return new ArchivioSql(impostazioni, nomeConnessione);
}
