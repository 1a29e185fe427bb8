#include "classe/CodiceScheda.h"
#include "registro/Registro.h"
#include "registro/SchemaRegistro.h"
#include "verifica/SerieDaCodice.h"

#include <QSqlQuery>
#include <QSqlRecord>

using namespace ScreenTest;

namespace {

CodiceScheda::Scelta scelta(int righe = 10)
{
    CodiceScheda::Scelta s;
    s.tipoNumeri = 1;
    s.unita = 1;
    s.righe = righe;
    s.seme = 2024;
    return s;
}

} // namespace

// What the register keeps of a verifica: its code, the pupil, and how each
// exercise closed, with its seconds.
class TestRegistroVerifica : public QObject
{
    Q_OBJECT

    void entra(ConRegistro &r, const QString &nome)
    {
        r.t->setFonteEsercizi(std::make_unique<SerieDaCodice>(scelta(), nome, r.t->stato));
        r.t.clock->setSecondsSinceMidnight(36000);
        Alunno a(r.t);
        QVERIFY(a.apri());
    }

private slots:
    void cleanup() { settle(); }

    void iQuattroEsiti_conISecondi()
    {
        ConRegistro r;
        entra(r, QStringLiteral("ADA"));
        Alunno a(r.t);
        const QString codice = r.t->fonteEsercizi()->codice();
        // 1: right at once.
        a.scriviGiusta();
        a.passano(3);
        a.verifica();
        a.avanti();
        // 2: wrong, "No", then right.
        a.scrivi(QStringLiteral("1"));
        a.verifica();
        a.no();
        a.scriviGiusta();
        a.passano(4);
        a.verifica();
        a.avanti();
        // 3: wrong, "Si".
        a.scrivi(QStringLiteral("1"));
        a.verifica();
        a.passano(5.5);
        a.si();
        a.avanti();
        // 4: wrong twice, "No" twice: "Intervengo io".
        a.scrivi(QStringLiteral("1"));
        a.verifica();
        a.no();
        a.scrivi(QStringLiteral("2"));
        a.verifica();
        a.passano(6);
        a.no();
        QVERIFY(a.inPrimoPiano("fraIntervento"));
        a.ok();
        // Left after the fourth: six not reached.
        a.esci();
        settle();
        QVERIFY(!r.t->fonteEsercizi());

        const QList<SerieRegistrata> serie = r.registrate();
        QCOMPARE(serie.size(), 1);
        const SerieRegistrata &s = serie.first();
        QCOMPARE(s.verifica, codice);
        QCOMPARE(s.nome, QStringLiteral("ADA"));
        QVERIFY(!s.terminata);
        QCOMPARE(s.esercizi.size(), 4);
        const int esiti[] = {SerieRegistrata::PrimoTentativo, SerieRegistrata::SecondoTentativo,
                             SerieRegistrata::SoluzioneChiesta, SerieRegistrata::SoluzioneData};
        const double secondi[] = {3, 4, 5, 6};
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(s.esercizi[i].numero, i + 1);
            QCOMPARE(s.esercizi[i].esito, esiti[i]);
            QCOMPARE(s.esercizi[i].secondi, secondi[i]);
        }
    }

    void unaVerificaLasciataSubito_restaNelRegistro()
    {
        ConRegistro r;
        entra(r, QStringLiteral("BEA"));
        Alunno a(r.t);
        a.schermo().close();
        settle();
        const QList<SerieRegistrata> serie = r.registrate();
        QCOMPARE(serie.size(), 1);
        QCOMPARE(serie.first().nome, QStringLiteral("BEA"));
        QVERIFY(serie.first().esercizi.isEmpty());
        QVERIFY(!serie.first().verifica.isEmpty());
    }

    void unaSerieNormale_nonHaNeCodiceNeEsiti()
    {
        ConRegistro r;
        r.giocaSerie(3);
        const QList<SerieRegistrata> serie = r.registrate();
        QCOMPARE(serie.size(), 1);
        QVERIFY(serie.first().verifica.isEmpty());
        for (const SerieRegistrata::Esercizio &e : serie.first().esercizi)
            QCOMPARE(e.esito, int(SerieRegistrata::Sconosciuto));
        // The file of a series waiting for the register is as before.
        const QByteArray attesa = AttesaRegistro::inTesto(serie.first());
        QVERIFY(!attesa.contains("verifica"));
        QVERIFY(!attesa.contains("esito"));
    }

    void inAttesa_codiceEdEsitiSiConservano()
    {
        SerieRegistrata s;
        s.codice = QStringLiteral("abc");
        s.inizio = QDateTime(QDate(2026, 11, 2), QTime(9, 0));
        s.fine = s.inizio.addSecs(60);
        s.verifica = QStringLiteral("K7Q-3PZ");
        s.esercizi = {{1, QStringLiteral("uno"), 3, SerieRegistrata::SoluzioneData}};
        const auto letta = AttesaRegistro::daTesto(AttesaRegistro::inTesto(s));
        QVERIFY(letta);
        QCOMPARE(letta->verifica, s.verifica);
        QCOMPARE(letta->esercizi.first().esito, int(SerieRegistrata::SoluzioneData));
    }

    void unRegistroDellaVersione2_siAggiornaSenzaPerdereNulla()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("v2.sqlite"));
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), "v2");
            db.setDatabaseName(file);
            QVERIFY(db.open());
            QString errore;
            QVERIFY2(SchemaRegistro::prepara(db, &errore, 2), qPrintable(errore));
            QSqlQuery q(db);
            QVERIFY(q.exec("INSERT INTO serie (codice, inizio, fine, nome, tipo_numeri, numeri, "
                           "famiglia, simboli, ordine, esercizi, esatte, errate, tempo_totale, "
                           "terminata, valutazione, postazione) VALUES ('a1', "
                           "'2026-10-01T09:00:00', '2026-10-01T09:05:00', 'LUCA', 1, 'n', 3, "
                           "'uk h da u', 'o', 1, 1, 0, 12, 1, 'OTTIMO', 'pc1')"));
            QVERIFY(q.exec("INSERT INTO esercizi VALUES ('a1', 1, 'riga uno', 12)"));
            QVERIFY(!db.record("serie").contains("verifica"));
            db.close();
        }
        QSqlDatabase::removeDatabase("v2");
        ArchivioRegistro archivio(ImpostazioniRegistro::sqlite(file), "v3");
        QCOMPARE(archivio.apri(), ArchivioRegistro::Ok);
        QCOMPARE(SchemaRegistro::versione(*archivio.database()), 3);
        QVERIFY(archivio.database()->record("esercizi").contains("esito"));
        const QList<SerieRegistrata> serie = archivio.tutte();
        QCOMPARE(serie.size(), 1);
        QCOMPARE(serie.first().postazione, QStringLiteral("pc1"));
        QCOMPARE(serie.first().verifica, QString());
        QCOMPARE(serie.first().esercizi.first().esito, 0);
        QCOMPARE(serie.first().esercizi.first().riga, QStringLiteral("riga uno"));
    }
};

QTEST_MAIN(TestRegistroVerifica)
#include "tst_registroverifica.moc"
