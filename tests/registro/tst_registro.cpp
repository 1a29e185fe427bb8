#include "Registro.h"

#include "certificate/FrmAttestato.h"
#include "platform/Fonts.h"
#include "registro/CsvRegistro.h"
#include "registro/SchemaRegistro.h"
#include "report/frmNome.h"
#include "support/FileTest.h"

#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

using namespace ScreenTest;

namespace {

void scriviNome(AppContext &ctx, const QString &nome)
{
    frmNome &f = ctx.form<frmNome>();
    QVERIFY(showActive(f));
    for (QChar c : nome)
        for (Control *k : f.Controls())
            if (k->name() == QLatin1String("Command1") && k->Caption() == QString(c)) {
                click(*k);
                break;
            }
    mouseDown(f.get<OptionButton>("Option4"));
    settle();
}

} // namespace

class TestRegistro : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }
    void cleanup() { settle(); }

    void aWholeSeriesIsRecordedWithItsLinesNameAndGrade()
    {
        ConRegistro r;
        r.giocaSerie();
        StatoCondiviso &s = r.t->stato;
        QCOMPARE(s.NumeroEsercizio.value(), 20);

        QList<SerieRegistrata> serie = r.registrate();
        QCOMPARE(serie.size(), 1);
        SerieRegistrata x = serie.first();
        QVERIFY(x.terminata);
        QCOMPARE(x.esatte, 19);
        QCOMPARE(x.errate, 1);
        QCOMPARE(x.esercizi.size(), 20);
        for (int n = 1; n <= 20; ++n) {
            QCOMPARE(x.esercizi[n - 1].numero, n);
            QCOMPARE(x.esercizi[n - 1].riga, s.Operazioni[n]);
        }
        QCOMPARE(x.esercizi[1].secondi, 5.0);
        QCOMPARE(x.esercizi[0].secondi, 3.0);
        QCOMPARE(x.tempoTotale, 62.0);
        QCOMPARE(x.famiglia, 3);
        QCOMPARE(x.simboli, QStringLiteral("uk h da u"));
        QCOMPARE(x.numeri, QStringLiteral("Scomponi: numeri interi"));
        QCOMPARE(x.ordine, QStringLiteral("simboli decrescenti"));
        QCOMPARE(x.inizio, QDateTime(QDate(2026, 11, 16), QTime(10, 0, 0)));
        QCOMPARE(x.fine, QDateTime(QDate(2026, 11, 16), QTime(10, 1, 2)));
        QVERIFY(x.nome.isEmpty());

        // The name screen, then the certificate: both go to that series.
        scriviNome(*r.t, QStringLiteral("ANNA"));
        QCOMPARE(s.NomeAlunno, QStringLiteral("ANNA"));
        r.t->form<FrmAttestato>();
        QCOMPARE(s.Valutazione, QStringLiteral("OTTIMO"));
        serie = r.registrate();
        QCOMPARE(serie.size(), 1);
        QCOMPARE(serie.first().nome, QStringLiteral("ANNA"));
        QCOMPARE(serie.first().valutazione, QStringLiteral("OTTIMO"));
        QCOMPARE(serie.first().esercizi.size(), 20);
        QVERIFY(r.t.notices->notices.isEmpty());
        QVERIFY(r.t.errors->errors.isEmpty());
    }

    void aSeriesLeftBeforeItsEndIsKeptAsUnfinished()
    {
        ConRegistro r;
        r.giocaSerie(3);
        QVERIFY(!r.t->screens().isLoaded<frmOperativo>());
        const QList<SerieRegistrata> serie = r.registrate();
        QCOMPARE(serie.size(), 1);
        QVERIFY(!serie.first().terminata);
        QCOMPARE(serie.first().esercizi.size(), 3);
        QCOMPARE(serie.first().esatte, 2);
        QCOMPARE(serie.first().errate, 1);
    }

    void aRestartRecordsTheNextSeriesWithItsOwnCounts()
    {
        ConRegistro r;
        r.giocaSerie();
        Alunno a(r.t);
        mouseDown(a.schermo().get<OptionButton>("optAvviso", 1)); // "Ricomincia"
        for (int n = 1; n <= 20; ++n) {
            if (n > 1) {
                a.prossimoEsercizio(8, 3, 3);
                a.avanti();
            }
            a.scriviGiusta();
            a.passano(2);
            a.verifica();
        }
        const QList<SerieRegistrata> serie = r.registrate();
        QCOMPARE(serie.size(), 2);
        // The drill's own counts go on across the restart; the register's do not.
        QCOMPARE(r.t->stato.RisposteEsatte.value(), 39);
        const SerieRegistrata &seconda =
            serie.first().inizio > serie.last().inizio ? serie.first() : serie.last();
        QCOMPARE(seconda.esatte, 20);
        QCOMPARE(seconda.errate, 0);
        QCOMPARE(seconda.tempoTotale, 40.0);
    }

    void withoutARegisterTheDrillRecordsNothingAnywhere()
    {
        TestContext t;
        QTemporaryDir casa;
        qputenv("XDG_DATA_HOME", casa.path().toLocal8Bit());
        Alunno a(t);
        a.preparaSerie(8);
        a.prossimeCifre(4, 7);
        QVERIFY(a.apri());
        a.scriviGiusta();
        a.verifica();
        a.esci();
        settle();
        QVERIFY(QDir(casa.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).isEmpty());
        QVERIFY(QSqlDatabase::connectionNames().isEmpty());
    }

    void theFileIsReadableByItsOwnerOnly()
    {
        ConRegistro r;
        r.giocaSerie(2);
        r.registro->attendi();
        QFileInfo info(r.file());
        QVERIFY(info.exists());
        QCOMPARE(info.permissions(), QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                         QFileDevice::ReadUser | QFileDevice::WriteUser);
    }

    void anOlderSchemaIsUpgradedKeepingItsSeries()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("vecchio.sqlite"));
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), "vecchio");
            db.setDatabaseName(file);
            QVERIFY(db.open());
            QString errore;
            QVERIFY2(SchemaRegistro::prepara(db, &errore, 1), qPrintable(errore));
            QCOMPARE(SchemaRegistro::versione(db), 1);
            QSqlQuery q(db);
            QVERIFY(q.exec("INSERT INTO serie (codice, inizio, fine, nome, tipo_numeri, numeri, "
                           "famiglia, simboli, ordine, esercizi, esatte, errate, tempo_totale, "
                           "terminata, valutazione) VALUES ('a1', '2026-10-01T09:00:00', "
                           "'2026-10-01T09:05:00', 'LUCA', 1, 'Scomponi: numeri interi', 3, "
                           "'uk h da u', 'simboli decrescenti', 1, 1, 0, 12, 1, 'OTTIMO')"));
            QVERIFY(q.exec("INSERT INTO esercizi VALUES ('a1', 1, 'riga uno', 12)"));
            QVERIFY(!db.record("serie").contains("postazione"));
            db.close();
        }
        QSqlDatabase::removeDatabase("vecchio");

        ArchivioRegistro archivio(ImpostazioniRegistro::sqlite(file), "nuovo");
        QCOMPARE(archivio.apri(), ArchivioRegistro::Ok);
        QCOMPARE(SchemaRegistro::versione(*archivio.database()), SchemaRegistro::Versione);
        QVERIFY(archivio.database()->record("serie").contains("postazione"));
        const QList<SerieRegistrata> serie = archivio.tutte();
        QCOMPARE(serie.size(), 1);
        QCOMPARE(serie.first().nome, QStringLiteral("LUCA"));
        QCOMPARE(serie.first().postazione, QString());
        QCOMPARE(serie.first().esercizi.size(), 1);
        QCOMPARE(serie.first().esercizi.first().riga, QStringLiteral("riga uno"));
        // Opening again changes nothing.
        archivio.chiudi();
        QCOMPARE(archivio.apri(), ArchivioRegistro::Ok);
        QCOMPARE(archivio.tutte().size(), 1);
    }

    void aRegisterFromANewerProgramIsLeftAlone()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("futuro.sqlite"));
        {
            ArchivioRegistro a(ImpostazioniRegistro::sqlite(file), "futuro");
            QCOMPARE(a.apri(), ArchivioRegistro::Ok);
            QVERIFY(QSqlQuery(*a.database()).exec("UPDATE registro_versione SET versione = 99"));
        }
        ArchivioRegistro a(ImpostazioniRegistro::sqlite(file), "futuro2");
        QCOMPARE(a.apri(), ArchivioRegistro::VersioneFutura);
        QVERIFY(a.ultimoErrore().contains("99"));
    }

    void aFilterTypedAsSqlFindsNothingAndHarmsNothing()
    {
        ConRegistro r;
        r.giocaSerie(2);
        r.t->registro().nomeAlunno(QStringLiteral("O'BRIEN"));
        QCOMPARE(r.registrate().size(), 1);
        ArchivioRegistro a(ImpostazioniRegistro::sqlite(r.file()), "filtro");
        for (const QString &f : {QStringLiteral("x' OR '1'='1"), QStringLiteral("%"),
                                 QStringLiteral("_"), QStringLiteral("'; DROP TABLE serie; --")}) {
            ArchivioRegistro::Esito e = ArchivioRegistro::Errore;
            QCOMPARE(a.elenco({f, {}, {}}, &e).size(), 0);
            QCOMPARE(e, ArchivioRegistro::Ok);
        }
        QCOMPARE(a.elenco({QStringLiteral("o'b"), {}, {}}).size(), 1);
        QCOMPARE(a.elenco({}).size(), 1);
        QCOMPARE(a.eliminaAlunno(QStringLiteral("x' OR '1'='1")), ArchivioRegistro::Ok);
        QCOMPARE(a.tutte().size(), 1);
    }

    void aDamagedFileIsPutAsideAndANewOneStarted()
    {
        ConRegistro r;
        QDir().mkpath(QFileInfo(r.file()).absolutePath());
        const QByteArray rovinato(4096, 'x');
        FileTest::writeAll(r.file(), rovinato);
        r.giocaSerie(2);
        QCOMPARE(r.registrate().size(), 1);
        QCOMPARE(r.t.notices->notices.size(), 1);
        const QString avviso = r.t.notices->notices.first();
        QVERIFY2(avviso.contains("danneggiato"), qPrintable(avviso));
        const QStringList accanto =
            QDir(QFileInfo(r.file()).absolutePath()).entryList({"registro.sqlite.danneggiato-*"});
        QCOMPARE(accanto.size(), 1);
        QVERIFY2(avviso.contains(accanto.first()), qPrintable(avviso));
        QCOMPARE(FileTest::readAll(QFileInfo(r.file()).absolutePath() + "/" + accanto.first()),
                 rovinato);
    }

    void aLockedFileIsToldOnceAndWrittenWhenFree()
    {
        ConRegistro r;
        {
            ArchivioRegistro crea(ImpostazioniRegistro::sqlite(r.file()), "crea");
            QCOMPARE(crea.apri(), ArchivioRegistro::Ok);
        }
        QSqlDatabase altro = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), "altro");
        altro.setDatabaseName(r.file());
        QVERIFY(altro.open());
        QVERIFY(QSqlQuery(altro).exec("BEGIN EXCLUSIVE"));

        r.giocaSerie(2);
        r.giocaSerie(3);
        r.registro->attendi();
        QCOMPARE(r.t.notices->notices.size(), 1);
        QVERIFY2(r.t.notices->notices.first().contains("in uso"),
                 qPrintable(r.t.notices->notices.first()));

        QVERIFY(QSqlQuery(altro).exec("ROLLBACK"));
        altro.close();
        altro = QSqlDatabase();
        QSqlDatabase::removeDatabase("altro");
        r.registro->riprova();
        QCOMPARE(r.registrate().size(), 2);
        QCOMPARE(r.t.notices->notices.size(), 2);
        QVERIFY(r.t.notices->notices.last().contains("in attesa sono state scritte"));
    }

    void aReadOnlyPlaceIsToldOnceAndTheSeriesWaits()
    {
        ConRegistro r;
        const QString cartella = QFileInfo(r.file()).absolutePath();
        QDir().mkpath(cartella);
        ReadOnlyDir solaLettura(cartella);
        if (!solaLettura.holds())
            QSKIP("this file system cannot make a directory read-only");
        r.giocaSerie(2);
        r.giocaSerie(2);
        r.registro->attendi();
        QCOMPARE(r.t.notices->notices.size(), 1);
        QVERIFY2(r.t.notices->notices.first().contains(cartella),
                 qPrintable(r.t.notices->notices.first()));
        solaLettura.release();
        r.registro->riprova();
        QCOMPARE(r.registrate().size(), 2);
    }

    void aSeriesWaitingWhenTheProgramClosesIsWrittenAtTheNextStart()
    {
        QTemporaryDir dir;
        const ImpostazioniRegistro i = ImpostazioniRegistro::daRiga(
            QStringLiteral("sqlite %1").arg(dir.filePath("registro.sqlite")), dir.filePath("dati"));
        QVERIFY(i.errore.isEmpty());
        QCOMPARE(i.attesa, dir.filePath("dati/registro-in-attesa"));
        {
            ArchivioRegistro crea(i, "crea");
            QCOMPARE(crea.apri(), ArchivioRegistro::Ok);
        }
        // Another program holds the file for the whole first run.
        QSqlDatabase altro = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), "altro");
        altro.setDatabaseName(i.percorso);
        QVERIFY(altro.open());
        QVERIFY(QSqlQuery(altro).exec("BEGIN EXCLUSIVE"));

        QStringList righe;
        QList<SerieRegistrata> attesa;
        {
            auto r = std::make_unique<ConRegistro>(i);
            r->giocaSerie();
            scriviNome(*r->t, QStringLiteral("ANNA"));
            r->t->form<FrmAttestato>();
            for (int n = 1; n <= 20; ++n)
                righe << r->t->stato.Operazioni[n];
            r->registro->attendi();
            QCOMPARE(r->t.notices->notices.size(), 1);
            const QString avviso = r->t.notices->notices.first();
            QVERIFY2(avviso.contains("in uso") && avviso.contains(i.attesa) &&
                         avviso.contains("anche se Quadrivo viene chiuso"),
                     qPrintable(avviso));
            QVERIFY(r->t.errors->errors.isEmpty());
            attesa = AttesaRegistro(i.attesa).tutte();
            QCOMPARE(attesa.size(), 1);
            QCOMPARE(attesa.first().nome, QStringLiteral("ANNA"));
            QCOMPARE(attesa.first().valutazione, QStringLiteral("OTTIMO"));
            // The program closes while the file is still held.
        }
        QCOMPARE(AttesaRegistro(i.attesa).tutte().size(), 1);
        QVERIFY(QSqlQuery(altro).exec("ROLLBACK"));
        altro.close();
        altro = QSqlDatabase();
        QSqlDatabase::removeDatabase("altro");

        // The next start writes it, with nothing played.
        for (int avvio = 0; avvio < 2; ++avvio) {
            ConRegistro r(i);
            const QList<SerieRegistrata> serie = r.registrate();
            QCOMPARE(serie.size(), 1);
            confrontaSerie(serie.first(), attesa.first());
            QCOMPARE(serie.first().esercizi.size(), 20);
            for (int n = 1; n <= 20; ++n)
                QCOMPARE(serie.first().esercizi[n - 1].riga, righe[n - 1]);
            QVERIFY(AttesaRegistro(i.attesa).vuota());
            QVERIFY(r.t.notices->notices.isEmpty());
            // As if the program had ended between writing the series and
            // taking its file away: sent again, still there once.
            QVERIFY(AttesaRegistro(i.attesa).metti(attesa.first()));
        }
    }

    void anUnreachablePlaceIsToldOnceAndTheDrillGoesOn()
    {
        QTemporaryDir dir;
        FileTest::writeAll(dir.filePath("file"), "non una cartella");
        ConRegistro r(ImpostazioniRegistro::sqlite(dir.filePath("file/registro.sqlite")));
        r.giocaSerie();
        r.registro->attendi();
        Alunno a(r.t);
        QVERIFY(a.inPrimoPiano("fraAvviso"));
        QCOMPARE(r.t.notices->notices.size(), 1);
        QVERIFY(r.t.notices->notices.first().contains("impossibile scrivere"));
        QVERIFY(r.t.errors->errors.isEmpty());
    }

    void aMistakenSettingLineIsToldOnceAndTheDefaultFileServes()
    {
        QTemporaryDir dir;
        const ImpostazioniRegistro i =
            ImpostazioniRegistro::daRiga("postgresql host=server dbname=quadrivo", dir.path());
        QCOMPARE(i.tipo, ImpostazioniRegistro::SQLite);
        QVERIFY(!i.errore.isEmpty());
        ConRegistro r(i);
        r.giocaSerie(2);
        r.giocaSerie(2);
        QCOMPARE(r.registrate().size(), 2);
        QCOMPARE(r.t.notices->notices.size(), 1);
        QVERIFY(r.t.notices->notices.first().contains("impostazione non valida"));
    }

    void theCsvReadsBackWithItalianColumns()
    {
        SerieRegistrata s;
        s.inizio = QDateTime(QDate(2026, 11, 16), QTime(9, 30, 5));
        s.nome = QStringLiteral("NICCOLÒ; \"IL\" PRIMO");
        s.numeri = QStringLiteral("Scomponi: numeri con la virgola");
        s.simboli = QStringLiteral("u d c m");
        s.ordine = QStringLiteral("simboli decrescenti");
        s.esatte = 17;
        s.errate = 4;
        s.tempoTotale = 95;
        s.numeroEsercizi = 20;
        s.terminata = true;
        s.valutazione = QStringLiteral("DISTINTO");
        const QByteArray testo = CsvRegistro::testo({s, s});
        QVERIFY(testo.startsWith("\xEF\xBB\xBF"));
        const QList<QStringList> righe = CsvRegistro::leggi(testo);
        QCOMPARE(righe.size(), 3);
        QCOMPARE(righe[0], CsvRegistro::intestazione());
        QCOMPARE(righe[0][2], QStringLiteral("Alunno"));
        QCOMPARE(righe[1][0], QStringLiteral("16/11/2026"));
        QCOMPARE(righe[1][1], QStringLiteral("09:30:05"));
        QCOMPARE(righe[1][2], s.nome);
        QCOMPARE(righe[1][7], QStringLiteral("17"));
        QCOMPARE(righe[1][10], QStringLiteral("4,8"));
        QCOMPARE(righe[1][12], QStringLiteral("sì"));
        QCOMPARE(righe[2], righe[1]);
    }
};

QTEST_MAIN(TestRegistro)
#include "tst_registro.moc"
