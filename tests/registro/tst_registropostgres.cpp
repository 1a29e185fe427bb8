#include "Registro.h"

#include "platform/Fonts.h"
#include "support/PrivatePostgres.h"
#include "support/Scadenze.h"

#include <QElapsedTimer>
#include <QScopeGuard>
#include <QSqlError>
#include <QSqlQuery>
#include <QTimer>

using namespace ScreenTest;

class TestRegistroPostgres : public QObject
{
    Q_OBJECT

    PrivatePostgres server;
    QTemporaryDir locale;

    ImpostazioniRegistro impostazioni(const QString &utente = {}, int porta = 0)
    {
        ImpostazioniRegistro i = ImpostazioniRegistro::daRiga(
            QStringLiteral("postgresql host=%1 port=%2 dbname=%3 user=%4")
                .arg(server.socketDir())
                .arg(porta ? porta : server.port())
                .arg(server.database(), utente.isEmpty() ? server.user() : utente),
            locale.path());
        return i;
    }

    AttesaRegistro attesa() { return AttesaRegistro(impostazioni().attesa); }

    // Statements run as the server's owner, on a session of their own, even
    // when the database has been made read-only.
    bool comeProprietario(const QStringList &istruzioni)
    {
        bool riuscito = true;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), "proprietario");
            db.setHostName(server.socketDir());
            db.setPort(server.port());
            db.setDatabaseName(server.database());
            db.setUserName(server.user());
            if (!db.open()) {
                qWarning() << db.lastError().text();
                riuscito = false;
            }
            QSqlQuery q(db);
            if (riuscito)
                q.exec(QStringLiteral("SET default_transaction_read_only = off"));
            for (const QString &istruzione : istruzioni)
                if (riuscito && !q.exec(istruzione)) {
                    qWarning() << istruzione << q.lastError().text();
                    riuscito = false;
                }
        }
        QSqlDatabase::removeDatabase("proprietario");
        return riuscito;
    }

    // The schema is there before the database is made difficult.
    void schemaPronto()
    {
        ArchivioRegistro a(impostazioni(), QStringLiteral("schema"));
        QCOMPARE(a.apri(), ArchivioRegistro::Ok);
    }

    QList<SerieRegistrata> sulServer()
    {
        ArchivioRegistro a(impostazioni(), QStringLiteral("verifica-server"));
        ArchivioRegistro::Esito e = ArchivioRegistro::Errore;
        QList<SerieRegistrata> s = a.tutte(&e);
        if (e != ArchivioRegistro::Ok)
            qWarning() << a.ultimoErrore();
        return s;
    }

private slots:
    void initTestCase()
    {
        Fonts::installSubstitutions();
        if (!server.start())
            QFAIL(qPrintable(server.error()));
    }
    void cleanup() { settle(); }

    void aConfigLineNeverTakesAPassword()
    {
        const ImpostazioniRegistro i = ImpostazioniRegistro::daRiga(
            "postgresql host=h dbname=d user=u password=segreta", locale.path());
        QCOMPARE(i.tipo, ImpostazioniRegistro::SQLite);
        QVERIFY(i.errore.contains(".pgpass"));
        QVERIFY(impostazioni().errore.isEmpty());
        QCOMPARE(impostazioni().tipo, ImpostazioniRegistro::PostgreSQL);
    }

    void aSeriesGoesToTheServerWithTheSameSchema()
    {
        ConRegistro r(impostazioni());
        r.giocaSerie();
        r.registro->attendi();
        const QList<SerieRegistrata> serie = sulServer();
        QCOMPARE(serie.size(), 1);
        QCOMPARE(serie.first().esercizi.size(), 20);
        QCOMPARE(serie.first().esatte, 19);
        QVERIFY(r.t.notices->notices.isEmpty());
        ArchivioRegistro a(impostazioni(), "filtro");
        QCOMPARE(a.elenco({QStringLiteral("x' OR '1'='1"), {}, {}}).size(), 0);
    }

    void aServerDownMidSessionKeepsTheSeriesLocallyAndSendsItLater()
    {
        const int prima = int(sulServer().size());
        ConRegistro r(impostazioni());
        r.giocaSerie(2);
        r.registro->attendi();
        QCOMPARE(int(sulServer().size()), prima + 1);

        server.stop();
        r.giocaSerie(3);
        r.giocaSerie(4);
        r.registro->attendi();
        QCOMPARE(r.t.notices->notices.size(), 1);
        QVERIFY2(r.t.notices->notices.first().contains("non risponde"),
                 qPrintable(r.t.notices->notices.first()));
        // Kept on this machine, in a folder that outlives the program.
        QVERIFY2(r.t.notices->notices.first().contains(impostazioni().attesa),
                 qPrintable(r.t.notices->notices.first()));
        QCOMPARE(attesa().tutte().size(), 2);

        QVERIFY2(server.start(), qPrintable(server.error()));
        r.registro->riprova();
        r.registro->attendi();
        QCOMPARE(int(sulServer().size()), prima + 3);
        QVERIFY(attesa().vuota());
        QCOMPARE(r.t.notices->notices.size(), 2);
    }

    void aSeriesWaitingForTheServerWhenTheProgramClosesIsSentAtTheNextStart()
    {
        schemaPronto();
        const int prima = int(sulServer().size());
        server.stop();
        auto riaccendi = qScopeGuard([this] { server.start(); });
        QList<SerieRegistrata> inAttesa;
        {
            ConRegistro r(impostazioni());
            r.giocaSerie();
            r.registro->attendi();
            QCOMPARE(r.t.notices->notices.size(), 1);
            inAttesa = attesa().tutte();
            QCOMPARE(inAttesa.size(), 1);
        }
        // Still there after the program closed, as the next start finds it.
        QCOMPARE(attesa().tutte().size(), 1);
        QVERIFY2(server.start(), qPrintable(server.error()));

        ConRegistro r(impostazioni());
        r.registro->attendi();
        QVERIFY(attesa().vuota());
        const QList<SerieRegistrata> serie = sulServer();
        QCOMPARE(int(serie.size()), prima + 1);
        const auto scritta = std::find_if(serie.begin(), serie.end(), [&](const auto &s) {
            return s.codice == inAttesa.first().codice;
        });
        QVERIFY(scritta != serie.end());
        confrontaSerie(*scritta, inAttesa.first());
        QCOMPARE(scritta->esercizi.size(), 20);
        QVERIFY(r.t.notices->notices.isEmpty());

        // Sent again after an interruption: still there once.
        QVERIFY(attesa().metti(inAttesa.first()));
        ConRegistro ancora(impostazioni());
        ancora.registro->attendi();
        QVERIFY(attesa().vuota());
        QCOMPARE(int(sulServer().size()), prima + 1);
    }

    void theQueueFileOfAnEarlierVersionIsSentAtTheNextStartAndRemoved()
    {
        schemaPronto();
        const int prima = int(sulServer().size());
        SerieRegistrata s;
        s.codice = QStringLiteral("coda-di-prima");
        s.inizio = QDateTime(QDate(2026, 10, 5), QTime(9, 30, 0));
        s.fine = s.inizio.addSecs(75);
        s.nome = QStringLiteral("LUCA");
        s.numeri = QStringLiteral("Scomponi: numeri interi");
        s.simboli = QStringLiteral("uk h da u");
        s.ordine = QStringLiteral("simboli decrescenti");
        s.esatte = 2;
        s.tempoTotale = 75;
        s.postazione = QStringLiteral("aula-2");
        s.esercizi = {{1, QStringLiteral("riga uno"), 30}, {2, QStringLiteral("riga due"), 45}};
        {
            ArchivioRegistro coda(ImpostazioniRegistro::sqlite(impostazioni().coda), "di-prima");
            QCOMPARE(coda.scrivi(s), ArchivioRegistro::Ok);
        }
        ConRegistro r(impostazioni());
        r.registro->attendi();
        const QList<SerieRegistrata> serie = sulServer();
        QCOMPARE(int(serie.size()), prima + 1);
        const auto scritta = std::find_if(serie.begin(), serie.end(),
                                          [&](const auto &x) { return x.codice == s.codice; });
        QVERIFY(scritta != serie.end());
        confrontaSerie(*scritta, s);
        QVERIFY(!QFile::exists(impostazioni().coda));
        QVERIFY(r.t.notices->notices.isEmpty());
    }

    void aServerUnreachableAtFirstUseIsToldOnceAndTheSeriesSentLater_data()
    {
        QTest::addColumn<bool>("portaSbagliata");
        QTest::newRow("wrong port") << true;
        QTest::newRow("server stopped") << false;
    }
    void aServerUnreachableAtFirstUseIsToldOnceAndTheSeriesSentLater()
    {
        QFETCH(bool, portaSbagliata);
        schemaPronto();
        const int prima = int(sulServer().size());
        if (!portaSbagliata)
            server.stop();
        auto riaccendi = qScopeGuard([this] { server.start(); });
        {
            ConRegistro r(impostazioni({}, portaSbagliata ? server.port() + 1 : 0));
            r.giocaSerie(2);
            r.giocaSerie(3);
            r.registro->attendi();
            // The drill went on: both series played, one message.
            QCOMPARE(r.t.notices->notices.size(), 1);
            const QString avviso = r.t.notices->notices.first();
            QVERIFY2(avviso.contains("non risponde") && avviso.contains(impostazioni().attesa),
                     qPrintable(avviso));
            QVERIFY(r.t.errors->errors.isEmpty());
            QCOMPARE(attesa().tutte().size(), 2);
            if (!portaSbagliata) {
                QVERIFY2(server.start(), qPrintable(server.error()));
                r.registro->riprova();
                r.registro->attendi();
                QVERIFY(attesa().vuota());
                QCOMPARE(r.t.notices->notices.size(), 2);
                QVERIFY(r.t.notices->notices.last().contains("in attesa sono state scritte"));
            }
        }
        // With the port put right, the next start sends them.
        ConRegistro r(impostazioni());
        r.registro->attendi();
        QVERIFY(attesa().vuota());
        QCOMPARE(int(sulServer().size()), prima + 2);
    }

    void aReadOnlyDatabaseIsToldOnceAndNothingLost_data()
    {
        QTest::addColumn<QString>("utente");
        QTest::addColumn<QStringList>("rendiDifficile");
        QTest::addColumn<QStringList>("rimedia");
        QTest::newRow("database read-only")
            << QString()
            << QStringList{"ALTER DATABASE quadrivo SET default_transaction_read_only = on"}
            << QStringList{"ALTER DATABASE quadrivo RESET default_transaction_read_only"};
        QTest::newRow("user who may only read")
            << QStringLiteral("lettore")
            << QStringList{"DROP OWNED BY lettore", "DROP ROLE IF EXISTS lettore",
                           "CREATE ROLE lettore LOGIN",
                           "GRANT SELECT ON serie, esercizi, registro_versione TO lettore"}
            << QStringList{"GRANT INSERT, DELETE ON serie, esercizi TO lettore"};
    }
    void aReadOnlyDatabaseIsToldOnceAndNothingLost()
    {
        QFETCH(QString, utente);
        QFETCH(QStringList, rendiDifficile);
        QFETCH(QStringList, rimedia);
        schemaPronto();
        const int prima = int(sulServer().size());
        if (!utente.isEmpty())
            comeProprietario({"DO $$ BEGIN IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = "
                              "'lettore') THEN CREATE ROLE lettore; END IF; END $$"});
        QVERIFY(comeProprietario(rendiDifficile));
        auto rimedio = qScopeGuard([&] { comeProprietario(rimedia); });

        ConRegistro r(impostazioni(utente));
        r.giocaSerie(2);
        r.giocaSerie(3);
        r.registro->attendi();
        QCOMPARE(r.t.notices->notices.size(), 1);
        const QString avviso = r.t.notices->notices.first();
        QVERIFY2(avviso.contains("sola lettura") && avviso.contains(impostazioni().attesa),
                 qPrintable(avviso));
        QVERIFY(r.t.errors->errors.isEmpty());
        QCOMPARE(attesa().tutte().size(), 2);
        QCOMPARE(int(sulServer().size()), prima);

        QVERIFY(comeProprietario(rimedia));
        r.registro->riprova();
        r.registro->attendi();
        QVERIFY(attesa().vuota());
        QCOMPARE(int(sulServer().size()), prima + 2);
        QCOMPARE(r.t.notices->notices.size(), 2);
        QVERIFY(r.t.notices->notices.last().contains("in attesa sono state scritte"));
    }

    void aTableLockedByAnotherSessionDoesNotHoldTheInterface()
    {
        schemaPronto();
        const int prima = int(sulServer().size());
        // Another copy of Quadrivo, or a teacher's query, holds the table.
        QSqlDatabase altra = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), "altra");
        altra.setHostName(server.socketDir());
        altra.setPort(server.port());
        altra.setDatabaseName(server.database());
        altra.setUserName(server.user());
        QVERIFY2(altra.open(), qPrintable(altra.lastError().text()));
        QVERIFY(altra.transaction());
        QSqlQuery blocco(altra);
        QVERIFY2(blocco.exec("LOCK TABLE serie IN ACCESS EXCLUSIVE MODE"),
                 qPrintable(blocco.lastError().text()));
        auto libera = qScopeGuard([&] {
            blocco = QSqlQuery();
            altra.rollback();
            altra.close();
            altra = QSqlDatabase();
            QSqlDatabase::removeDatabase("altra");
        });

        ConRegistro r(impostazioni());
        r.giocaSerie(2);
        // The writer now waits for the lock; the interface thread keeps
        // ticking every millisecond meanwhile.
        QVERIFY(r.t.notices->notices.isEmpty());
        QElapsedTimer orologio;
        qint64 ultimo = 0, pausaMassima = 0, battiti = 0;
        QTimer battito;
        battito.setTimerType(Qt::PreciseTimer);
        connect(&battito, &QTimer::timeout, [&] {
            const qint64 adesso = orologio.nsecsElapsed();
            pausaMassima = std::max(pausaMassima, adesso - ultimo);
            ultimo = adesso;
            ++battiti;
        });
        orologio.start();
        battito.start(1);
        QVERIFY(Scadenze::finche([&] { return !r.t.notices->notices.isEmpty(); }, 15000, 1));
        battito.stop();
        const double attesaMs = orologio.nsecsElapsed() / 1e6;
        qInfo("interface thread: %lld ticks in %.0f ms, longest pause %.1f ms", battiti, attesaMs,
              pausaMassima / 1e6);
        // Measured while the writer waited (its lock_timeout is 2 s); a
        // stalled interface would show the whole wait as one pause.
        QVERIFY2(attesaMs > 100, qPrintable(QString::number(attesaMs)));
        QVERIFY(battiti > 10);
#ifdef __SANITIZE_ADDRESS__
        const int pausaAmmessa = Scadenze::ms(100); // every call is slower there
#else
        const int pausaAmmessa = Scadenze::ms(25);
#endif
        QVERIFY2(pausaMassima / 1e6 < pausaAmmessa,
                 qPrintable(QStringLiteral("%1 ms").arg(pausaMassima / 1e6)));

        const QString avviso = r.t.notices->notices.first();
        QVERIFY2(avviso.contains("in uso") && avviso.contains(impostazioni().attesa),
                 qPrintable(avviso));
        QCOMPARE(attesa().tutte().size(), 1);

        libera.dismiss();
        blocco = QSqlQuery();
        QVERIFY(altra.rollback());
        altra.close();
        altra = QSqlDatabase();
        QSqlDatabase::removeDatabase("altra");
        r.registro->riprova();
        r.registro->attendi();
        QVERIFY(attesa().vuota());
        QCOMPARE(int(sulServer().size()), prima + 1);
        QCOMPARE(r.t.notices->notices.size(), 2);
    }

    // The view stays open while the server goes and comes back: whatever it
    // asks first fails as unreachable, and the same call once the server is
    // back connects again.
    void aCallAfterTheServerCameBackConnectsAgain_data()
    {
        QTest::addColumn<QString>("chiamata");
        for (const char *c : {"elenco", "righe", "verifiche", "elimina", "eliminaAlunno"})
            QTest::newRow(c) << QString::fromLatin1(c);
    }
    void aCallAfterTheServerCameBackConnectsAgain()
    {
        QFETCH(QString, chiamata);
        {
            ConRegistro r(impostazioni());
            r.giocaSerie(6);
            r.registro->attendi();
        }
        const QList<SerieRegistrata> prima = sulServer();
        QVERIFY(!prima.isEmpty());
        const SerieRegistrata serie = prima.last();
        QVERIFY(!serie.esercizi.isEmpty());

        ArchivioRegistro a(impostazioni(), QStringLiteral("vista"));
        using E = ArchivioRegistro::Esito;
        // Runs the call: how it went, and how many series or exercises it
        // read or removed.
        auto chiama = [&](int *quante) -> E {
            E e = ArchivioRegistro::Errore;
            if (chiamata == "elenco")
                *quante = int(a.elenco({}, &e).size());
            else if (chiamata == "righe")
                *quante = int(a.righe(serie.codice, &e).size());
            else if (chiamata == "verifiche")
                *quante = int(a.verifiche(&e).size());
            else if (chiamata == "elimina")
                e = a.elimina(serie.codice);
            else
                e = a.eliminaAlunno(serie.nome, quante);
            return e;
        };
        // Connected and working before the server goes; a read is made once
        // then, to compare with.
        const bool lettura = chiamata != "elimina" && chiamata != "eliminaAlunno";
        int lette = -1;
        QCOMPARE(lettura ? chiama(&lette) : a.apri(), ArchivioRegistro::Ok);
        QVERIFY(a.aperto());

        server.stop();
        auto riaccendi = qScopeGuard([this] {
            if (!server.running())
                server.start();
        });
        int quante = -1;
        QCOMPARE(chiama(&quante), ArchivioRegistro::NonRaggiungibile);

        QVERIFY2(server.start(), qPrintable(server.error()));
        quante = -1;
        QVERIFY2(chiama(&quante) == ArchivioRegistro::Ok, qPrintable(a.ultimoErrore()));
        if (lettura)
            QCOMPARE(quante, lette);
        if (chiamata == "elenco")
            QCOMPARE(quante, int(prima.size()));
        if (chiamata == "righe")
            QCOMPARE(quante, int(serie.esercizi.size()));
        if (chiamata == "eliminaAlunno")
            QVERIFY(quante >= 1);
        const QList<SerieRegistrata> dopo = sulServer();
        const bool rimasta = std::any_of(dopo.cbegin(), dopo.cend(), [&](const SerieRegistrata &s) {
            return s.codice == serie.codice;
        });
        QCOMPARE(rimasta, lettura);
    }
};

QTEST_MAIN(TestRegistroPostgres)
#include "tst_registropostgres.moc"
