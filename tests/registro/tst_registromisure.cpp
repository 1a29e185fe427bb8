#include "Registro.h"

#include "misure/Misure.h"
#include "platform/Fonts.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/Menu.h"
#include "platform/controls/TextBox.h"
#include "registro/CsvRegistro.h"
#include "registro/ModelloSerie.h"
#include "registro/StampaRegistro.h"
#include "registro/UnitaSerie.h"
#include "registro/frmRegistro.h"
#include "start/FrmInizio.h"
#include "support/FileTest.h"

#include <QTableView>

using namespace ScreenTest;

namespace {

SerieRegistrata serie(const QString &nome, int giorno, int famiglia, const QString &simboli)
{
    SerieRegistrata s;
    s.codice = QStringLiteral("%1-%2").arg(nome).arg(giorno);
    s.inizio = QDateTime(QDate(2026, 11, giorno), QTime(9, 0));
    s.fine = s.inizio.addSecs(300);
    s.nome = nome;
    s.tipoNumeri = 1;
    s.numeri = QStringLiteral("Scomponi: numeri interi");
    s.famiglia = famiglia;
    s.simboli = simboli;
    s.ordine = QStringLiteral("simboli decrescenti");
    s.esatte = 15;
    s.errate = 5;
    s.tempoTotale = 100;
    s.terminata = true;
    s.valutazione = QStringLiteral("BUONO");
    s.esercizi.append({1, QStringLiteral("riga"), 5});
    return s;
}

} // namespace

// The kind of units of every kept series: in the teacher's view, its filter,
// the CSV and the printout.
class TestRegistroMisure : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }
    void cleanup() { settle(); }

    void theUnitsOfASeriesComeFromItsFamilyAndSymbols_data()
    {
        QTest::addColumn<int>("famiglia");
        QTest::addColumn<QString>("simboli");
        QTest::addColumn<QString>("unita");
        QTest::newRow("1") << 1 << "u d c m"
                           << "numeri";
        QTest::newRow("2") << 2 << "h da u"
                           << "numeri";
        QTest::newRow("3") << 3 << "uk h da u"
                           << "numeri";
        QTest::newRow("4") << 4 << "m dm cm mm"
                           << "lunghezze";
        QTest::newRow("5") << 5 << "hm dam m"
                           << "lunghezze";
        QTest::newRow("6") << 6 << "km hm dam m"
                           << "lunghezze";
        QTest::newRow("7") << 7 << "g dg cg mg"
                           << "masse";
        QTest::newRow("8") << 8 << "hg dag g"
                           << "masse";
        QTest::newRow("9") << 9 << "kg hg dag g"
                           << "masse";
        QTest::newRow("10") << 10 << "t q Mg kg"
                            << "masse";
        QTest::newRow("11") << 11 << "l dl cl ml"
                            << "capacità";
        QTest::newRow("12") << 12 << "hl dal l"
                            << "capacità";
        // No family kept: the symbols tell, a bare m being thousandths.
        QTest::newRow("no family, numbers") << 0 << "u d c m"
                                            << "numeri";
        QTest::newRow("no family, lengths") << 0 << "hm dam m"
                                            << "lunghezze";
        QTest::newRow("no family, masses") << 0 << "kg hg dag g"
                                           << "masse";
        QTest::newRow("no family, capacities") << 0 << "l dl cl ml"
                                               << "capacità";
        QTest::newRow("no family, nothing") << 0 << ""
                                            << "numeri";
    }
    void theUnitsOfASeriesComeFromItsFamilyAndSymbols()
    {
        QFETCH(int, famiglia);
        QFETCH(QString, simboli);
        QFETCH(QString, unita);
        const SerieRegistrata s = serie(QStringLiteral("ANNA"), 1, famiglia, simboli);
        QCOMPARE(UnitaSerie::Nome(s), unita);
        const int scelta = int(UnitaSerie::Scelte().indexOf(unita));
        QVERIFY(scelta > 0);
        for (int i = 0; i < UnitaSerie::Scelte().size(); ++i)
            QCOMPARE(UnitaSerie::Passa(s, i), i == 0 || i == scelta);
    }

    void aSeriesDrilledInAMeasureIsKeptWithItsUnits()
    {
        ConRegistro r;
        Alunno a(r.t);
        a.preparaSerie(13);
        Misure::Applica(a.stato(), 4); // kg hg dag g
        a.prossimeCifre(4, 7, 2);
        QVERIFY(a.apri());
        QCOMPARE(a.tasto(10).Caption(), QStringLiteral("  kg "));
        a.scriviGiusta();
        a.verifica();
        a.esci();
        settle();
        const QList<SerieRegistrata> tenute = r.registrate();
        QCOMPARE(tenute.size(), 1);
        QCOMPARE(tenute.first().famiglia, 9);
        QCOMPARE(tenute.first().simboli, QStringLiteral("kg hg dag g"));
        QCOMPARE(UnitaSerie::Nome(tenute.first()), QStringLiteral("masse"));
    }

    void theViewShowsFiltersExportsAndPrintsTheUnits()
    {
        ConRegistro r;
        {
            ArchivioRegistro a(ImpostazioniRegistro::sqlite(r.file()), "riempi");
            QCOMPARE(a.scrivi(serie("ANNA", 1, 3, "uk h da u")), ArchivioRegistro::Ok);
            QCOMPARE(a.scrivi(serie("ANNA", 2, 6, "km hm dam m")), ArchivioRegistro::Ok);
            QCOMPARE(a.scrivi(serie("BRUNO", 3, 4, "m dm cm mm")), ArchivioRegistro::Ok);
            QCOMPARE(a.scrivi(serie("BRUNO", 4, 9, "kg hg dag g")), ArchivioRegistro::Ok);
            QCOMPARE(a.scrivi(serie("CARLA", 5, 12, "hl dal l")), ArchivioRegistro::Ok);
            QCOMPARE(a.scrivi(serie("CARLA", 6, 1, "u d c m")), ArchivioRegistro::Ok);
        }
        FrmInizio &inizio = r.t->form<FrmInizio>();
        inizio.get<Menu>("mnuRegistro").action()->trigger();
        frmRegistro *f = nullptr;
        for (Form *schermo : r.t->screens().loaded())
            if (auto *registro = qobject_cast<frmRegistro *>(schermo))
                f = registro;
        QVERIFY(f);
        QVERIFY(showActive(*f));
        const ModelloSerie &m = f->modello();
        int colonna = -1;
        for (int c = 0; c < m.columnCount(); ++c)
            if (m.headerData(c, Qt::Horizontal, Qt::DisplayRole).toString() == "Unità")
                colonna = c;
        // Beside the symbols, where the teacher sees it without scrolling.
        QCOMPARE(colonna, 3);
        QCOMPARE(m.headerData(colonna, Qt::Horizontal, Qt::DisplayRole).toString(),
                 QStringLiteral("Unità"));
        auto unita = [&] {
            QStringList u;
            for (int i = 0; i < m.rowCount(); ++i)
                u << m.data(m.index(i, colonna), Qt::DisplayRole).toString();
            return u;
        };
        QCOMPARE(unita(),
                 (QStringList{"numeri", "capacità", "masse", "lunghezze", "lunghezze", "numeri"}));

        ComboBox &filtro = f->get<ComboBox>("cboUnita");
        QCOMPARE(filtro.ListCount(), 5);
        QStringList scelte;
        for (int i = 0; i < filtro.ListCount(); ++i)
            scelte << filtro.List(i);
        QCOMPARE(scelte, (QStringList{"tutte", "numeri", "lunghezze", "masse", "capacità"}));
        // Chosen with the keyboard, as a teacher would.
        filtro.SetFocus();
        key(Qt::Key_Down);
        key(Qt::Key_Down);
        QCOMPARE(filtro.Text(), QStringLiteral("lunghezze"));
        QCOMPARE(unita(), (QStringList{"lunghezze", "lunghezze"}));
        QCOMPARE(f->get<Label>("lblStato").Caption(), QStringLiteral("2 serie"));
        // With the name as well.
        f->get<TextBox>("txtNome").setCaption(QStringLiteral("bruno"));
        click(f->get<CommandButton>("cmdCerca"));
        QCOMPARE(m.rowCount(), 1);
        QCOMPARE(m.serie().first().simboli, QStringLiteral("m dm cm mm"));
        f->get<TextBox>("txtNome").setCaption(QString());
        filtro.setListIndex(3);
        QCOMPARE(unita(), QStringList{"masse"});
        filtro.setListIndex(4);
        QCOMPARE(unita(), QStringList{"capacità"});
        filtro.setListIndex(1);
        QCOMPARE(unita(), (QStringList{"numeri", "numeri"}));
        filtro.setListIndex(0);
        QCOMPARE(m.rowCount(), 6);

        // The CSV has the units as its last column.
        r.t.folders->answer = r.dir.path();
        click(f->get<CommandButton>("cmdEsporta"));
        const QStringList csv = QDir(r.dir.path()).entryList({"registro-*.csv"});
        QCOMPARE(csv.size(), 1);
        const QList<QStringList> righe =
            CsvRegistro::leggi(FileTest::readAll(r.dir.filePath(csv.first())));
        QCOMPARE(righe.size(), 7);
        QCOMPARE(righe[0].last(), QStringLiteral("Unità"));
        QStringList esportate;
        for (int i = 1; i < righe.size(); ++i) {
            QCOMPARE(righe[i].size(), righe[0].size());
            esportate << righe[i].last();
        }
        QCOMPARE(esportate, unita());

        // And so does the printout, on every series' line.
        filtro.setListIndex(2);
        click(f->get<CommandButton>("cmdStampa"));
        QStringList stampate;
        for (const QString &c : r.t.printer->calls)
            if (c.contains(QStringLiteral("2026 09:00")))
                stampate << c;
        QCOMPARE(stampate.size(), 2);
        for (const QString &riga : stampate)
            QVERIFY2(riga.contains(QStringLiteral("lunghezze")), qPrintable(riga));
        QVERIFY(r.t.printer->calls.join('\n').contains(QStringLiteral("Unità")));
    }
};

QTEST_MAIN(TestRegistroMisure)
#include "tst_registromisure.moc"
