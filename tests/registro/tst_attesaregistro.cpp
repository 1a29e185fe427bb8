#include "ConfrontoSerie.h"
#include "registro/AttesaRegistro.h"
#include "support/FileTest.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {

SerieRegistrata serie(const QString &codice, const QString &nome, int esercizi, bool terminata)
{
    SerieRegistrata s;
    s.codice = codice;
    s.inizio = QDateTime(QDate(2026, 3, 9), QTime(10, 15, 30, 250));
    s.fine = s.inizio.addSecs(200 + esercizi);
    s.nome = nome;
    s.tipoNumeri = 2;
    s.numeri = QStringLiteral("Numeri interi fino a 99.999");
    s.famiglia = 3;
    s.simboli = QStringLiteral("uk h da u");
    s.ordine = QStringLiteral("in ordine");
    s.esatte = esercizi > 0 ? esercizi - 1 : 0;
    s.errate = esercizi > 0 ? 1 : 0;
    s.tempoTotale = 123.456789;
    s.terminata = terminata;
    s.valutazione = terminata ? QStringLiteral("Ottimo") : QString();
    s.postazione = QStringLiteral("aula-3");
    for (int n = 1; n <= esercizi; ++n)
        s.esercizi.append({n, QStringLiteral("%1  =  %1 u   \"giusto\" \\ è").arg(n * 7), n / 3.0});
    return s;
}

} // namespace

class TestAttesaRegistro : public QObject
{
    Q_OBJECT

private slots:
    void aWaitingSeriesReadsBackAsItWasWritten_data()
    {
        QTest::addColumn<SerieRegistrata>("serie");
        QTest::newRow("ended, named, graded") << serie("a1", "Giulia", 20, true);
        QTest::newRow("left, no name, no lines") << serie("b2", QString(), 0, false);
        QTest::newRow("name with quotes and accents")
            << serie("c3", QStringLiteral("D'Amico \"Nicolò\" x' OR '1'='1"), 3, true);
        QTest::newRow("code that looks like a path") << serie("../../fuori", "Ada", 1, false);
    }
    void aWaitingSeriesReadsBackAsItWasWritten()
    {
        QFETCH(SerieRegistrata, serie);
        QTemporaryDir dir;
        AttesaRegistro attesa(dir.filePath("attesa"));
        QVERIFY(attesa.vuota());
        QVERIFY2(attesa.metti(serie), qPrintable(attesa.errore()));
        QVERIFY(!attesa.vuota());
        // The code never leads outside the folder.
        QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{"attesa"});
        const QList<SerieRegistrata> lette = AttesaRegistro(dir.filePath("attesa")).tutte();
        QCOMPARE(lette.size(), 1);
        confrontaSerie(lette.first(), serie, DateSerie::Esatte);
        QVERIFY(attesa.togli(serie.codice));
        QVERIFY(attesa.vuota());
        QVERIFY(attesa.tutte().isEmpty());
    }

    void aNewerCopyReplacesTheOneWaiting()
    {
        QTemporaryDir dir;
        AttesaRegistro attesa(dir.filePath("attesa"));
        SerieRegistrata s = serie("x", QString(), 20, true);
        QVERIFY(attesa.metti(s));
        QVERIFY(attesa.metti(serie("y", "Ugo", 2, false)));
        s.nome = QStringLiteral("Marta");
        s.valutazione = QStringLiteral("Distinto");
        QVERIFY(attesa.metti(s));
        const QList<SerieRegistrata> lette = attesa.tutte();
        QCOMPARE(lette.size(), 2);
        const SerieRegistrata &x = lette[0].codice == "x" ? lette[0] : lette[1];
        QCOMPARE(x.nome, QStringLiteral("Marta"));
        QCOMPARE(x.valutazione, QStringLiteral("Distinto"));
    }

    void theFolderAndItsFilesAreTheOwnersOnly()
    {
        QTemporaryDir dir;
        AttesaRegistro attesa(dir.filePath("attesa"));
        QVERIFY(attesa.metti(serie("p", "Ada", 2, true)));
        const QFileInfo cartella(dir.filePath("attesa"));
        QCOMPARE(int(cartella.permissions() & 0x0777), 0x0700);
        const QStringList file = QDir(cartella.filePath()).entryList(QDir::Files);
        QCOMPARE(file.size(), 1);
        const QFileInfo f(QDir(cartella.filePath()).filePath(file.first()));
        QCOMPARE(int(f.permissions() & 0x0777), 0x0600);
        // Nothing half-written is left beside it.
        QCOMPARE(QDir(cartella.filePath())
                     .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden)
                     .size(),
                 1);
    }

    void aDamagedOrForeignFileIsNotTakenForASeries_data()
    {
        QTest::addColumn<QByteArray>("contenuto");
        QTest::newRow("cut short") << AttesaRegistro::inTesto(serie("t", "Ada", 3, true)).left(80);
        QTest::newRow("not json") << QByteArray("serie di Ada\n");
        QTest::newRow("newer format") << QByteArray(R"({"formato": 2, "codice": "z"})");
        QTest::newRow("no code") << QByteArray(
            R"({"formato": 1, "inizio": "2026-03-09T10:00:00.000"})");
    }
    void aDamagedOrForeignFileIsNotTakenForASeries()
    {
        QFETCH(QByteArray, contenuto);
        QTemporaryDir dir;
        AttesaRegistro attesa(dir.filePath("attesa"));
        QVERIFY(attesa.metti(serie("buona", "Ada", 2, true)));
        FileTest::writeAll(dir.filePath("attesa/rovinato.json"), contenuto);
        const QList<SerieRegistrata> lette = attesa.tutte();
        QCOMPARE(lette.size(), 1);
        QCOMPARE(lette.first().codice, QStringLiteral("buona"));
        // Left where it is, for whoever looks.
        QVERIFY(QFileInfo::exists(dir.filePath("attesa/rovinato.json")));
    }

    void anUnwritablePlaceSaysSo()
    {
        QTemporaryDir dir;
        FileTest::writeAll(dir.filePath("file"), "non una cartella");
        AttesaRegistro attesa(dir.filePath("file/attesa"));
        QVERIFY(!attesa.metti(serie("q", "Ada", 1, true)));
        QVERIFY(!attesa.errore().isEmpty());
        QVERIFY(attesa.vuota());
    }
};

QTEST_GUILESS_MAIN(TestAttesaRegistro)
#include "tst_attesaregistro.moc"
