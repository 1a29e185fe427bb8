#include "Registro.h"

#include "platform/Fonts.h"
#include "support/PrivatePostgres.h"

using namespace ScreenTest;

class TestRegistroPostgres : public QObject
{
    Q_OBJECT

    PrivatePostgres server;
    QTemporaryDir locale;

    ImpostazioniRegistro impostazioni()
    {
        ImpostazioniRegistro i = ImpostazioniRegistro::daRiga(
            QStringLiteral("postgresql host=%1 port=%2 dbname=%3 user=%4")
                .arg(server.socketDir())
                .arg(server.port())
                .arg(server.database(), server.user()),
            locale.path());
        return i;
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
        // Kept on this machine, in a file that outlives the program.
        ArchivioRegistro coda(ImpostazioniRegistro::sqlite(impostazioni().coda), "coda");
        QCOMPARE(coda.tutte().size(), 2);
        coda.chiudi();

        QVERIFY2(server.start(), qPrintable(server.error()));
        r.registro->riprova();
        r.registro->attendi();
        QCOMPARE(int(sulServer().size()), prima + 3);
        QCOMPARE(coda.tutte().size(), 0);
        QCOMPARE(r.t.notices->notices.size(), 2);
    }
};

QTEST_MAIN(TestRegistroPostgres)
#include "tst_registropostgres.moc"
