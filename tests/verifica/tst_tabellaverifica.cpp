#include "classe/CodiceScheda.h"
#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Menu.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "registro/ArchivioRegistro.h"
#include "registro/CsvRegistro.h"
#include "registro/CsvVerifica.h"
#include "registro/StampaVerifica.h"
#include "registro/TabellaVerifica.h"
#include "registro/frmRegistro.h"
#include "registro/frmVerifiche.h"
#include "support/PrintedPdf.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QAction>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

using namespace ScreenTest;

namespace {

using E = SerieRegistrata;
constexpr int N = TabellaVerifica::NonRaggiunto;

QString codiceDi(int righe, std::uint32_t seme)
{
    CodiceScheda::Scelta s;
    s.tipoNumeri = 1;
    s.unita = 1;
    s.righe = righe;
    s.seme = seme;
    return CodiceScheda::Componi(s);
}

// A series of a verifica: its outcomes in order (fewer than the code's rows
// when it was left), each exercise `secondi` seconds.
SerieRegistrata serie(const QString &verifica, const QString &nome, const QDateTime &inizio,
                      const QList<int> &esiti, const QString &postazione = "pc1",
                      double secondi = 4)
{
    static int n = 0;
    SerieRegistrata s;
    s.codice = QStringLiteral("s%1").arg(++n);
    s.inizio = inizio;
    s.fine = inizio.addSecs(120);
    s.nome = nome;
    s.tipoNumeri = 1;
    s.numeri = "Scomponi: numeri interi";
    s.famiglia = 3;
    s.simboli = "uk h da u";
    s.postazione = postazione;
    s.verifica = verifica;
    for (int i = 0; i < esiti.size(); ++i)
        s.esercizi.append({i + 1, QStringLiteral("riga %1").arg(i + 1), secondi + i, esiti[i]});
    s.terminata = !verifica.isEmpty() && esiti.size() == 10;
    return s;
}

const QDateTime Ora(QDate(2026, 11, 20), QTime(9, 0));

// The printed lines with their runs of blanks made one.
QStringList semplici(const PrintedPdf &pdf)
{
    QStringList r;
    for (const QString &l : pdf.lines())
        r << l.simplified();
    return r;
}

} // namespace

// The class's results on a verifica: from a register where several pupils
// took the code (one of them twice, one on another computer, one half way),
// on screen, as CSV and on paper.
class TestTabellaVerifica : public QObject
{
    Q_OBJECT

    QTemporaryDir dir;
    const QString codice = codiceDi(10, 77);
    const QString altro = codiceDi(20, 78);

    QString file() const { return dir.filePath("registro.sqlite"); }

    // E E S A I E E E E E ...: exercise 4 ("A" for two) is the hardest.
    void riempi()
    {
        QFile::remove(file());
        ArchivioRegistro a(ImpostazioniRegistro::sqlite(file()), "riempi");
        const QList<SerieRegistrata> tutte = {
            serie(codice, "CARLO", Ora, {1, 1, 2, 3, 1, 1, 1, 1, 1, 1}),
            serie(codice, "ADA", Ora.addSecs(60), {1, 2, 1, 3, 4, 1, 1, 1, 1, 1}, "pc2"),
            // Ada again, later: her second attempt.
            serie(codice, "ADA", Ora.addSecs(3600), {1, 1, 1, 1, 1, 1, 1, 1, 1, 1}, "pc2"),
            // Left after three.
            serie(codice, "BRUNO", Ora.addSecs(30), {1, 1, 4}, "pc3"),
            serie(altro, "ADA", Ora.addDays(1), {1, 1}),
            serie({}, "ADA", Ora.addDays(-1), {0, 0, 0}),
        };
        for (const SerieRegistrata &s : tutte)
            QCOMPARE(a.scrivi(s), ArchivioRegistro::Ok);
    }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }
    void init() { riempi(); }
    void cleanup() { settle(); }

    void codiciSvolti_elencati()
    {
        ArchivioRegistro a(ImpostazioniRegistro::sqlite(file()), "codici");
        ArchivioRegistro::Esito e = ArchivioRegistro::Errore;
        const auto voci = a.verifiche(&e);
        QCOMPARE(e, ArchivioRegistro::Ok);
        QCOMPARE(voci.size(), 2);
        QCOMPARE(voci[0].codice, altro);
        QCOMPARE(voci[1].codice, codice);
        QCOMPARE(voci[1].serie, 4);
        QCOMPARE(voci[1].alunni, 3);
        QCOMPARE(voci[1].primaVolta, Ora);
    }

    void tabellaDellaClasse_dueTentativiEUnaSerieLasciata()
    {
        ArchivioRegistro a(ImpostazioniRegistro::sqlite(file()), "tabella");
        const TabellaVerifica t = TabellaVerifica::Costruisci(codice, a.serieDiVerifica(codice));
        QCOMPARE(t.esercizi, 10);
        QCOMPARE(t.righe.size(), 4);
        QStringList nomi;
        for (const auto &r : t.righe)
            nomi << TabellaVerifica::NomeRiga(r);
        QCOMPARE(nomi, QStringList({"ADA", "ADA (2° tentativo)", "BRUNO", "CARLO"}));
        QCOMPARE(t.righe[0].postazione, QStringLiteral("pc2"));
        auto lettere = [&](int riga) {
            QString s;
            for (const auto &c : t.righe[riga].celle)
                s += TabellaVerifica::Lettera(c.esito);
            return s;
        };
        QCOMPARE(lettere(0), QStringLiteral("ESEAIEEEEE"));
        QCOMPARE(lettere(1), QStringLiteral("EEEEEEEEEE"));
        QCOMPARE(lettere(2), QStringLiteral("EEI-------"));
        QCOMPARE(lettere(3), QStringLiteral("EESAEEEEEE"));
        QCOMPARE(t.righe[2].celle[3].esito, N);
        QCOMPARE(t.righe[0].esatte, 8);
        QCOMPARE(t.righe[2].esatte, 2);
        QCOMPARE(t.righe[2].secondi, 4.0 + 5 + 6);
        QCOMPARE(t.righe[0].celle[4].secondi, 8.0);
        QCOMPARE(t.esattePrimoTentativo, QList<int>({4, 3, 2, 1, 2, 3, 3, 3, 3, 3}));
        QCOMPARE(t.piuDifficile, 3);
    }

    void aSchermo_coloriLettereSecondiETotali()
    {
        TestContext c;
        auto &f = (*c).screens().get<frmVerifiche>(
            [&] { return new frmVerifiche(*c, ImpostazioniRegistro::sqlite(file())); });
        QVERIFY(showActive(f));
        auto *modello = qobject_cast<QStandardItemModel *>(f.tabellaClasse()->model());
        QVERIFY(modello);
        // The most recent code is shown first; the class's is chosen.
        QCOMPARE(f.tabella().codice, altro);
        f.tabellaCodici()->setCurrentIndex(f.tabellaCodici()->model()->index(1, 0));
        QCOMPARE(f.tabella().codice, codice);
        QCOMPARE(modello->rowCount(), 5);
        QCOMPARE(modello->columnCount(), 13);
        QCOMPARE(modello->item(0, 0)->text(), QStringLiteral("ADA"));
        QCOMPARE(modello->item(1, 0)->text(), QStringLiteral("ADA (2° tentativo)"));
        QCOMPARE(modello->item(0, 4)->text(), QStringLiteral("A"));
        QCOMPARE(modello->item(0, 4)->toolTip(),
                 QStringLiteral("Esercizio 4: soluzione chiesta (Si), 7 secondi"));
        QCOMPARE(modello->item(0, 5)->text(), QStringLiteral("I"));
        QCOMPARE(modello->item(2, 5)->text(), QStringLiteral("-"));
        QCOMPARE(modello->item(2, 5)->toolTip(), QStringLiteral("Esercizio 5: non raggiunto"));
        // Each outcome its own colour.
        QSet<QRgb> colori;
        for (int col : {1, 2, 4, 5})
            colori.insert(modello->item(0, col)->background().color().rgb());
        colori.insert(modello->item(2, 5)->background().color().rgb());
        QCOMPARE(colori.size(), 5);
        QCOMPARE(modello->item(0, 11)->text(), QStringLiteral("8/10"));
        QCOMPARE(modello->item(4, 0)->text(), QStringLiteral("Esatte al 1° tentativo"));
        QCOMPARE(modello->item(4, 1)->text(), QStringLiteral("4"));
        QCOMPARE(modello->item(4, 4)->text(), QStringLiteral("1"));
        QCOMPARE(modello->horizontalHeaderItem(4)->text(), QStringLiteral("4*"));
        QVERIFY(modello->item(4, 4)->font().bold());
        f.Unload();
    }

    void csv_rilettoUgualeAllaTabella()
    {
        ArchivioRegistro a(ImpostazioniRegistro::sqlite(file()), "csv");
        const TabellaVerifica t = TabellaVerifica::Costruisci(codice, a.serieDiVerifica(codice));
        const QList<QStringList> righe = CsvRegistro::leggi(CsvVerifica::testo(t));
        QCOMPARE(righe.size(), 6);
        QCOMPARE(righe[0].mid(0, 3), QStringList({"Verifica", "Alunno", "Tentativo"}));
        QCOMPARE(righe[0][6], QStringLiteral("Es. 1"));
        QCOMPARE(righe[0][16], QStringLiteral("Sec. 1"));
        QCOMPARE(righe[1][1], QStringLiteral("ADA"));
        QCOMPARE(righe[2][2], QStringLiteral("2"));
        QCOMPARE(righe[1].mid(6, 10).join(QString()), QStringLiteral("ESEAIEEEEE"));
        QCOMPARE(righe[1][19], QStringLiteral("7"));
        QCOMPARE(righe[3][5 + 5 + 10 + 1], QString()); // Bruno never reached the 5th
        QCOMPARE(righe[3][26], QStringLiteral("2"));
        QCOMPARE(righe[3][28], QStringLiteral("no"));
        QCOMPARE(righe[5][1], QStringLiteral("Esatte al primo tentativo"));
        QCOMPARE(righe[5].mid(6, 10).join(QLatin1Char(',')), QStringLiteral("4,3,2,1,2,3,3,3,3,3"));

        // From the screen, into the folder the teacher chose.
        TestContext c;
        QTemporaryDir cartella;
        c.folders->answer = cartella.path();
        auto &f = (*c).screens().get<frmVerifiche>(
            [&] { return new frmVerifiche(*c, ImpostazioniRegistro::sqlite(file())); });
        QVERIFY(showActive(f));
        f.tabellaCodici()->setCurrentIndex(f.tabellaCodici()->model()->index(1, 0));
        click(f.get<CommandButton>("cmdEsporta"));
        QFile scritto(
            QDir(cartella.path()).filePath("verifica-" + QString(codice).remove('-') + ".csv"));
        QVERIFY(scritto.open(QIODevice::ReadOnly));
        QCOMPARE(scritto.readAll(), CsvVerifica::testo(t));
        f.Unload();
    }

    void stampa_unaPaginaPer30Alunni_riletta()
    {
        // Thirty-one pupils: two pages, the thirty-first alone on the second.
        QList<SerieRegistrata> molte;
        for (int i = 1; i <= 31; ++i)
            molte << serie(codice, QStringLiteral("ALUNNO %1").arg(i, 2, 10, QLatin1Char('0')),
                           Ora.addSecs(i), {1, 2, 3, 4, 1, 1, 1, 1, 1, 1});
        const TabellaVerifica t = TabellaVerifica::Costruisci(codice, molte);
        TestContext c;
        QTemporaryDir cartella;
        auto stampa = [&](const TabellaVerifica &tab) {
            PdfFilePrinter pdf(*c);
            pdf.setOutputDirectory(cartella.path());
            StampaVerifica::stampa(pdf, tab);
            return PrintedPdf(pdf.lastFile());
        };
        const PrintedPdf due = stampa(t);
        QVERIFY2(due.error().isEmpty(), qPrintable(due.error()));
        QCOMPARE(due.pages(), 2);
        QVERIFY(due.text().contains(QStringLiteral("ALUNNO 30")));
        QVERIFY(semplici(due).contains(QStringLiteral("VERIFICA %1 - pagina 2 di 2").arg(codice)));
        QVERIFY(semplici(due).contains(QStringLiteral("ALUNNO 31 E S A I E E E E E E 8/10 85")));
        QVERIFY(due.text().contains(QStringLiteral("E = esatto al primo tentativo")));

        ArchivioRegistro a(ImpostazioniRegistro::sqlite(file()), "stampa");
        const PrintedPdf una =
            stampa(TabellaVerifica::Costruisci(codice, a.serieDiVerifica(codice)));
        QCOMPARE(una.pages(), 1);
        const QStringList righe = semplici(una);
        QVERIFY(righe.contains(QStringLiteral("ADA (2° tentativo) E E E E E E E E E E 10/10 85")));
        QVERIFY(righe.contains(QStringLiteral("BRUNO E E I - - - - - - - 2/10 15")));
        QVERIFY(righe.contains(QStringLiteral("Esatte al 1° tentativo 4 3 2 1 2 3 3 3 3 3")));
        // The mark stands under the fourth exercise's column.
        QVERIFY(righe.contains(QStringLiteral("Il più difficile ^^")));
        const QRectF segno = una.boxOf(QStringLiteral("^^"));
        QVERIFY(!segno.isNull());
        QVERIFY(qAbs(segno.center().x() - una.boxOf(QStringLiteral("Alunno")).left() -
                     (24 + 9 - 0.5) * (una.boxOf(QStringLiteral("Esatte")).width() / 6)) < 6);
        // The page is A4 and nothing is cut at the right edge.
        QVERIFY(qAbs(una.pageSize().width() - 595) < 2);
        const QRectF tempo = una.boxOf(QStringLiteral("Sec."));
        QVERIFY(!tempo.isNull());
        QVERIFY(tempo.right() < una.pageSize().width());
    }

    void dalMenuDelRegistro()
    {
        TestContext c;
        auto &r = (*c).screens().get<frmRegistro>(
            [&] { return new frmRegistro(*c, ImpostazioniRegistro::sqlite(file())); });
        QVERIFY(showActive(r));
        r.get<Menu>("mnuVerifiche").action()->trigger();
        auto *f = (*c).screens().find<frmVerifiche>();
        QVERIFY(f);
        QCOMPARE(f->tabellaCodici()->model()->rowCount(), 2);
        (*c).screens().unloadAll();
    }
};

QTEST_MAIN(TestTabellaVerifica)
#include "tst_tabellaverifica.moc"
