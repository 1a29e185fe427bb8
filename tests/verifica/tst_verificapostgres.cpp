#include "classe/CodiceScheda.h"
#include "registro/ArchivioRegistro.h"
#include "registro/SchemaRegistro.h"
#include "registro/TabellaVerifica.h"
#include "support/PrivatePostgres.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTest>

// A lab: every computer writes its pupils' verifiche to one PostgreSQL
// register, which a program of the earlier version had started; the
// teacher's table merges them by code.
class TestVerificaPostgres : public QObject
{
    Q_OBJECT

    PrivatePostgres server;
    QTemporaryDir locale;

    ImpostazioniRegistro impostazioni()
    {
        return ImpostazioniRegistro::daRiga(
            QStringLiteral("postgresql host=%1 port=%2 dbname=%3 user=%4")
                .arg(server.socketDir())
                .arg(server.port())
                .arg(server.database(), server.user()),
            locale.path());
    }

private slots:
    void initTestCase() { QVERIFY2(server.start(), qPrintable(server.error())); }

    void unRegistroDellaVersione2_siAggiorna_eIPcSiUnisconoPerCodice()
    {
        // The register as the earlier version left it, with a series.
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), "v2");
            db.setHostName(server.socketDir());
            db.setPort(server.port());
            db.setDatabaseName(server.database());
            db.setUserName(server.user());
            QVERIFY2(db.open(), qPrintable(db.lastError().text()));
            QString errore;
            QVERIFY2(SchemaRegistro::prepara(db, &errore, 2), qPrintable(errore));
            QSqlQuery q(db);
            QVERIFY(q.exec("INSERT INTO serie (codice, inizio, fine, nome, tipo_numeri, numeri, "
                           "famiglia, simboli, ordine, esercizi, esatte, errate, tempo_totale, "
                           "terminata, valutazione, postazione) VALUES ('vecchia', "
                           "'2026-10-01T09:00:00', '2026-10-01T09:05:00', 'LUCA', 1, 'n', 3, "
                           "'uk h da u', 'o', 1, 1, 0, 12, 1, 'OTTIMO', 'pc9')"));
            QVERIFY(q.exec("INSERT INTO esercizi VALUES ('vecchia', 1, 'riga uno', 12)"));
            db.close();
        }
        QSqlDatabase::removeDatabase("v2");

        CodiceScheda::Scelta scelta;
        scelta.righe = 10;
        scelta.seme = 5;
        const QString codice = CodiceScheda::Componi(scelta);
        // Three computers, each with its own connection, write at once.
        const QDateTime ora(QDate(2026, 11, 20), QTime(9, 0));
        for (int pc = 1; pc <= 3; ++pc) {
            ArchivioRegistro a(impostazioni(), QStringLiteral("pc%1").arg(pc));
            QCOMPARE(a.apri(), ArchivioRegistro::Ok);
            SerieRegistrata s;
            s.codice = QStringLiteral("serie-pc%1").arg(pc);
            s.inizio = ora.addSecs(pc * 10);
            s.fine = s.inizio.addSecs(300);
            s.nome = pc == 3 ? QStringLiteral("ADA") : QStringLiteral("ALUNNO %1").arg(pc);
            s.postazione = QStringLiteral("pc%1").arg(pc);
            s.verifica = codice;
            for (int n = 1; n <= 10; ++n)
                s.esercizi.append({n, QString(), double(n), n == pc ? 3 : 1});
            s.terminata = true;
            QCOMPARE(a.scrivi(s), ArchivioRegistro::Ok);
            if (pc == 3) {
                s.codice = QStringLiteral("serie-pc3-prima");
                s.inizio = ora;
                QCOMPARE(a.scrivi(s), ArchivioRegistro::Ok);
            }
        }

        ArchivioRegistro docente(impostazioni(), QStringLiteral("docente"));
        QCOMPARE(docente.apri(), ArchivioRegistro::Ok);
        QCOMPARE(SchemaRegistro::versione(*docente.database()), 3);
        QVERIFY(docente.database()->record("esercizi").contains("esito"));
        const auto vecchie = docente.elenco({});
        QCOMPARE(vecchie.size(), 5);
        const auto voci = docente.verifiche();
        QCOMPARE(voci.size(), 1);
        QCOMPARE(voci.first().codice, codice);
        QCOMPARE(voci.first().serie, 4);
        QCOMPARE(voci.first().alunni, 3);
        const TabellaVerifica t =
            TabellaVerifica::Costruisci(codice, docente.serieDiVerifica(codice));
        QCOMPARE(t.righe.size(), 4);
        QCOMPARE(TabellaVerifica::NomeRiga(t.righe[0]), QStringLiteral("ADA"));
        QCOMPARE(TabellaVerifica::NomeRiga(t.righe[1]), QStringLiteral("ADA (2° tentativo)"));
        QCOMPARE(t.righe[1].postazione, QStringLiteral("pc3"));
        QCOMPARE(t.righe[3].postazione, QStringLiteral("pc2"));
        QCOMPARE(t.esattePrimoTentativo, QList<int>({3, 3, 2, 4, 4, 4, 4, 4, 4, 4}));
        QCOMPARE(t.piuDifficile, 2);
        // The series from before is still there, unchanged.
        QList<SerieRegistrata> tutte = docente.tutte();
        const auto vecchia = std::find_if(tutte.begin(), tutte.end(), [](const auto &s) {
            return s.codice == QLatin1String("vecchia");
        });
        QVERIFY(vecchia != tutte.end());
        QCOMPARE(vecchia->verifica, QString());
        QCOMPARE(vecchia->esercizi.first().esito, 0);
    }
};

QTEST_MAIN(TestVerificaPostgres)
#include "tst_verificapostgres.moc"
