#include "Registro.h"

#include "platform/Fonts.h"
#include "platform/controls/Menu.h"
#include "platform/controls/TextBox.h"
#include "registro/CsvRegistro.h"
#include "registro/ModelloSerie.h"
#include "registro/RiepilogoAlunni.h"
#include "registro/frmRegistro.h"
#include "start/FrmInizio.h"
#include "support/FileTest.h"

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QSqlQuery>
#include <QTableView>

using namespace ScreenTest;

namespace {

SerieRegistrata serie(const QString &nome, int giorno, int esatte, int ora = 9)
{
    SerieRegistrata s;
    s.codice = QStringLiteral("%1-%2-%3").arg(nome).arg(giorno).arg(ora);
    s.inizio = QDateTime(QDate(2026, 11, giorno), QTime(ora, 0));
    s.fine = s.inizio.addSecs(300);
    s.nome = nome;
    s.tipoNumeri = 1;
    s.numeri = QStringLiteral("Scomponi: numeri interi");
    s.famiglia = 3;
    s.simboli = QStringLiteral("uk h da u");
    s.ordine = QStringLiteral("simboli decrescenti");
    s.esatte = esatte;
    s.errate = 20 - esatte;
    s.tempoTotale = 100;
    s.terminata = true;
    s.valutazione = QStringLiteral("BUONO");
    for (int n = 1; n <= 20; ++n)
        s.esercizi.append({n, QStringLiteral("     4700  u = R.4 uk  7  h (Sec.5) %1").arg(n), 5});
    return s;
}

frmRegistro &apriDalMenu(ConRegistro &r)
{
    FrmInizio &inizio = r.t->form<FrmInizio>();
    inizio.get<Menu>("mnuRegistro").action()->trigger();
    for (Form *f : r.t->screens().loaded())
        if (auto *registro = qobject_cast<frmRegistro *>(f))
            return *registro;
    qFatal("the menu did not open the register");
}

} // namespace

class TestFrmRegistro : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }
    void cleanup() { settle(); }

    void theViewListsSeriesNewestFirstWithAPupilSummary()
    {
        ConRegistro r;
        {
            ArchivioRegistro a(ImpostazioniRegistro::sqlite(r.file()), "riempi");
            QCOMPARE(a.scrivi(serie("ANNA", 10, 10)), ArchivioRegistro::Ok);
            QCOMPARE(a.scrivi(serie("ANNA", 12, 16)), ArchivioRegistro::Ok);
            QCOMPARE(a.scrivi(serie("BRUNO", 11, 20)), ArchivioRegistro::Ok);
            QCOMPARE(a.scrivi(serie("", 13, 5)), ArchivioRegistro::Ok);
        }
        frmRegistro &f = apriDalMenu(r);
        QVERIFY(showActive(f));
        QCOMPARE(f.modello().rowCount(), 4);
        QCOMPARE(f.modello().serie()[0].inizio.date(), QDate(2026, 11, 13));
        QCOMPARE(f.modello().serie()[3].inizio.date(), QDate(2026, 11, 10));
        QCOMPARE(f.modello().data(f.modello().index(0, 1), Qt::DisplayRole).toString(),
                 QStringLiteral("(senza nome)"));
        QVERIFY(f.get<Label>("lblFile").Caption().contains(r.file()));

        // Per pupil: series, percent right, seconds per exercise, the chart.
        QAbstractItemModel *alunni = f.tabellaAlunni()->model();
        QCOMPARE(alunni->rowCount(), 3);
        int anna = -1;
        for (int i = 0; i < alunni->rowCount(); ++i)
            if (alunni->index(i, 0).data().toString() == "ANNA")
                anna = i;
        QVERIFY(anna >= 0);
        QCOMPARE(alunni->index(anna, 1).data().toString(), QStringLiteral("2"));
        QCOMPARE(alunni->index(anna, 2).data().toString(), QStringLiteral("65"));
        QCOMPARE(alunni->index(anna, 3).data().toString(), QStringLiteral("5"));
        QCOMPARE(alunni->index(anna, 4).data(Qt::UserRole + 1).toList(), QVariantList({50, 80}));

        // A click on a series shows its record lines.
        QTableView *t = f.tabellaSerie();
        t->scrollToTop();
        QTest::mouseClick(t->viewport(), Qt::LeftButton, {},
                          t->visualRect(t->model()->index(1, 0)).center());
        QCOMPARE(t->currentIndex().row(), 1);
        const QStringList righe = f.righe()->toPlainText().split('\n');
        QCOMPARE(righe.size(), 20);
        QCOMPARE(righe.first(), QStringLiteral("     4700  u = R.4 uk  7  h (Sec.5) 1"));

        f.grab().save(QDir(QCoreApplication::applicationDirPath()).filePath("registro.png"));
        f.resize(f.width() * 3 / 2, f.height() * 3 / 2);
        settle();
        f.grab().save(QDir(QCoreApplication::applicationDirPath()).filePath("registro-grande.png"));
    }

    void theFilterByNameAndDateBindsWhatIsTyped()
    {
        ConRegistro r;
        {
            ArchivioRegistro a(ImpostazioniRegistro::sqlite(r.file()), "riempi");
            for (int g = 1; g <= 9; ++g)
                QCOMPARE(a.scrivi(serie(g % 2 ? "ANNA" : "BRUNO", g, 12)), ArchivioRegistro::Ok);
        }
        frmRegistro &f = apriDalMenu(r);
        QVERIFY(showActive(f));
        auto cerca = [&](const QString &nome, const QString &dal, const QString &al) {
            f.get<TextBox>("txtNome").setCaption(nome);
            f.get<TextBox>("txtDal").setCaption(dal);
            f.get<TextBox>("txtAl").setCaption(al);
            click(f.get<CommandButton>("cmdCerca"));
            return f.modello().rowCount();
        };
        QCOMPARE(cerca("anna", "", ""), 5);
        QCOMPARE(cerca("", "03/11/2026", "05/11/2026"), 3);
        QCOMPARE(cerca("BRU", "03/11/2026", ""), 3);
        QCOMPARE(cerca("x' OR '1'='1", "", ""), 0);
        QCOMPARE(cerca("", "", ""), 9);
        QCOMPARE(cerca("", "31/02/2026", ""), 9);
        QVERIFY(f.get<Label>("lblStato").Caption().contains("Data non valida"));
    }

    void theTableIsExportedAsCsvAndPrinted()
    {
        ConRegistro r;
        {
            ArchivioRegistro a(ImpostazioniRegistro::sqlite(r.file()), "riempi");
            for (int g = 1; g <= 28; ++g)
                for (int ora = 8; ora <= 10; ++ora)
                    QCOMPARE(a.scrivi(serie("CARLA", g, 15, ora)), ArchivioRegistro::Ok);
        }
        frmRegistro &f = apriDalMenu(r);
        QVERIFY(showActive(f));
        r.t.folders->answer = r.dir.path();
        click(f.get<CommandButton>("cmdEsporta"));
        QCOMPARE(r.t.notices->notices.size(), 1);
        const QStringList csv = QDir(r.dir.path()).entryList({"registro-*.csv"});
        QCOMPARE(csv.size(), 1);
        const QList<QStringList> righe =
            CsvRegistro::leggi(FileTest::readAll(r.dir.filePath(csv.first())));
        QCOMPARE(righe.size(), 85);
        QCOMPARE(righe[0].first(), QStringLiteral("Data"));
        QCOMPARE(righe[1][0], QStringLiteral("28/11/2026"));
        QCOMPARE(righe[1][1], QStringLiteral("10:00:00"));
        QCOMPARE(righe[1][2], QStringLiteral("CARLA"));

        click(f.get<CommandButton>("cmdStampa"));
        const QStringList &chiamate = r.t.printer->calls;
        QCOMPARE(chiamate.count("EndDoc"), 1);
        // 84 series and the summary do not fit one page.
        QVERIFY(chiamate.count("NewPage") >= 1);
        QVERIFY(chiamate.join('\n').contains("CARLA"));
    }

    void aPupilsSeriesAreDeletedOnlyAfterConfirmation()
    {
        ConRegistro r;
        {
            ArchivioRegistro a(ImpostazioniRegistro::sqlite(r.file()), "riempi");
            QCOMPARE(a.scrivi(serie("ANNA", 10, 10)), ArchivioRegistro::Ok);
            QCOMPARE(a.scrivi(serie("ANNA", 12, 16)), ArchivioRegistro::Ok);
            QCOMPARE(a.scrivi(serie("BRUNO", 11, 20)), ArchivioRegistro::Ok);
        }
        frmRegistro &f = apriDalMenu(r);
        QVERIFY(showActive(f));
        QTableView *t = f.tabellaAlunni();
        QTest::mouseClick(t->viewport(), Qt::LeftButton, {},
                          t->visualRect(t->model()->index(0, 0)).center());
        QCOMPARE(f.AlunnoScelto(), QStringLiteral("ANNA"));

        r.t.boxes->answer = MessageBoxes::No;
        click(f.get<CommandButton>("cmdElimina"));
        QCOMPARE(r.t.boxes->boxes.size(), 1);
        QVERIFY(r.t.boxes->boxes.first().text.contains("ANNA"));
        QCOMPARE(f.modello().rowCount(), 3);

        r.t.boxes->answer = MessageBoxes::Yes;
        click(f.get<CommandButton>("cmdElimina"));
        QCOMPARE(f.modello().rowCount(), 1);
        QCOMPARE(f.modello().serie().first().nome, QStringLiteral("BRUNO"));
        ArchivioRegistro a(ImpostazioniRegistro::sqlite(r.file()), "verifica");
        QCOMPARE(a.tutte().size(), 1);
        QSqlQuery q(*a.database());
        QVERIFY(q.exec("SELECT count(*) FROM esercizi"));
        QVERIFY(q.next());
        QCOMPARE(q.value(0).toInt(), 20);
    }

    void theViewOpensQuicklyOnTenThousandSeries()
    {
        ConRegistro r;
        {
            ArchivioRegistro a(ImpostazioniRegistro::sqlite(r.file()), "riempi");
            QCOMPARE(a.apri(), ArchivioRegistro::Ok);
            // Filling fast: this is the setting, not what is measured.
            QVERIFY(QSqlQuery(*a.database()).exec("PRAGMA synchronous=OFF"));
            for (int i = 0; i < 10000; ++i) {
                SerieRegistrata s =
                    serie(QStringLiteral("ALUNNO %1").arg(i % 25), 1 + i % 28, i % 21);
                s.codice = QString::number(i);
                s.inizio = s.inizio.addSecs(i);
                s.esercizi.clear();
                s.numeroEsercizi = 20;
                QCOMPARE(a.scrivi(s), ArchivioRegistro::Ok);
            }
        }
        QElapsedTimer orologio;
        if (qEnvironmentVariableIsSet("DEBUG_REGISTRO")) {
            ArchivioRegistro a(ImpostazioniRegistro::sqlite(r.file()), "misura");
            orologio.start();
            QCOMPARE(a.elenco({}).size(), 10000);
            qInfo("query %lld ms", orologio.elapsed());
            orologio.start();
            RiepilogoAlunni::calcola(a.elenco({}));
            qInfo("query+summary %lld ms", orologio.elapsed());
        }
        orologio.start();
        frmRegistro &f = apriDalMenu(r);
        QVERIFY(showActive(f));
        const qint64 ms = orologio.elapsed();
        qInfo("view opened on 10000 series in %lld ms", ms);
        QCOMPARE(f.modello().rowCount(), 10000);
        QCOMPARE(f.tabellaAlunni()->model()->rowCount(), 25);
    }
};

QTEST_MAIN(TestFrmRegistro)
#include "tst_frmregistro.moc"
