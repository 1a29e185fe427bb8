#include "certificate/FrmAttestato.h"
#include "classe/CodiceScheda.h"
#include "classe/FrmCopieClasse.h"
#include "classe/FrmRifaiCodice.h"
#include "classe/MenuClasse.h"
#include "classe/RigheClasse.h"
#include "classe/UnitaClasse.h"
#include "drill/Alunno.h"
#include "misure/Misure.h"
#include "platform/Fonts.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/Menu.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/Timer.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "report/FrmStampaEsercizio2.h"
#include "sheets/FrmStampaSchede.h"
#include "start/FrmInizio.h"
#include "support/PrintedPdf.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace ScreenTest;

namespace {

// The symbols entry `voce` gives, as the keypad must show them.
QStringList simboliDi(int voce)
{
    StatoCondiviso s;
    Misure::Applica(s, voce);
    return {s.Simbolo1, s.Simbolo2, s.Simbolo3, s.Simbolo4};
}

QString caption(Form &f, const char *nome, int indice = -1)
{
    return f.get<Control>(nome, indice).Caption();
}

void voci(const char *colonna = "voce")
{
    QTest::addColumn<int>(colonna);
}

} // namespace

// The "Misure" menu on the start screen, each path of the start screen with
// a measure chosen, and the measure carried to the drill, the certificate,
// the worksheets and the class sets.
class TestMisureSchermi : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;
    FrmInizio *f = nullptr;
    QTemporaryDir cartella;
    PdfFilePrinter *pdf = nullptr;

    StatoCondiviso &s() { return (*t)->stato; }
    OptionButton &opt(const char *gruppo, int i) { return f->get<OptionButton>(gruppo, i); }
    Menu &voce(int i) { return f->get<Menu>("mnuMisura", i); }
    void scegli(int i) { voce(i).action()->trigger(); }

    QList<int> spuntate()
    {
        QList<int> v;
        for (int i = 0; i < 9; ++i)
            if (voce(i).Checked() && voce(i).action()->isChecked())
                v << i;
        return v;
    }

    frmOperativo *esercitazione() { return (*t)->screens().find<frmOperativo>(); }

    QStringList tastiera()
    {
        QStringList c;
        for (int k = 10; k <= 13; ++k)
            c << esercitazione()->get<Control>("Command1", k).Caption();
        return c;
    }

    // On the drill: the right answer typed on the keypad is taken, and on
    // the next exercise a wrong one is not.
    void rispondi(const QStringList &simboli)
    {
        QVERIFY(esercitazione());
        QVERIFY(esercitazione()->isVisible());
        QCOMPARE(tastiera(), simboli);
        Alunno a(*t);
        QVERIFY(simboli.contains(s().SimboloRichiesto));
        QVERIFY(a.testo("lblNumero").contains(s().Numero));
        QVERIFY(a.testo("lblNumero").contains(s().SimboloRichiesto.trimmed()));
        a.scriviGiusta();
        QCOMPARE(s().RispostaAlunno, s().Risposta);
        a.verifica();
        QCOMPARE(a.testo("LblEsito1"), QStringLiteral("Esatto"));
        a.avanti();
        QList<int> tasti = a.tastiPer(s().Risposta);
        QVERIFY(tasti.size() >= 4);
        tasti[0] = (tasti[0] + 1) % 10;
        for (int k : tasti)
            a.premi(k);
        QVERIFY(s().RispostaAlunno != s().Risposta);
        a.verifica();
        QCOMPARE(a.testo("LblEsito1"), QStringLiteral("Errato"));
        QVERIFY(a.inPrimoPiano("fraAiuto"));
        QVERIFY(t->errors->errors.isEmpty());
    }

    void usaPdf()
    {
        auto p = std::make_unique<PdfFilePrinter>(**t);
        pdf = p.get();
        pdf->setOutputDirectory(cartella.path());
        std::vector<std::unique_ptr<Printer>> elenco;
        elenco.push_back(std::move(p));
        (*t)->setPrinters(std::make_unique<Printers>(std::move(elenco)));
    }

    FrmStampaSchede &schede()
    {
        f->get<Menu>("mnuStampa").action()->trigger();
        auto *schede = (*t)->screens().find<FrmStampaSchede>();
        Q_ASSERT(schede);
        showActive(*schede);
        return *schede;
    }

private slots:
    void initTestCase()
    {
        Fonts::installSubstitutions();
        QVERIFY(cartella.isValid());
    }

    void init()
    {
        t = std::make_unique<TestContext>();
        f = &(*t)->form<FrmInizio>();
        f->get<Timer>("timerTendine").setScripted(true);
        QVERIFY(showActive(*f));
    }

    void cleanup()
    {
        t.reset();
        settle();
    }

    void theMenuStandsBesideTheRegisterWithTheMeasuresInOrder()
    {
        Menu &misure = f->get<Menu>("mnuMisure");
        QCOMPARE(misure.Caption(), QStringLiteral("&Misure"));
        const QList<QAction *> barra = f->menuBar()->actions();
        const qsizetype registro = barra.indexOf(f->get<Menu>("mnuRegistro").action());
        QCOMPARE(barra.indexOf(misure.action()), registro + 1);
        QMenu *tendina = misure.action()->menu();
        QVERIFY(tendina);
        QStringList testi;
        for (QAction *a : tendina->actions()) {
            testi << a->text();
            QVERIFY(a->isCheckable());
        }
        QCOMPARE(testi,
                 (QStringList{"Numeri: uk h da u / h da u / u d c m", "Lunghezze: km hm dam m",
                              "Lunghezze: hm dam m", "Lunghezze: m dm cm mm", "Masse: kg hg dag g",
                              "Masse: hg dag g", "Masse: g dg cg mg", "Capacità: hl dal l",
                              "Capacità: l dl cl ml"}));
        // At start: numbers, as always.
        QCOMPARE(spuntate(), QList<int>{0});
        QCOMPARE(s().FamigliaSimboli.value(), 1);
    }

    void eachEntrySetsTheStartScreenAndStandsChecked_data()
    {
        voci();
        for (int v = 0; v < 9; ++v)
            QTest::addRow("%s", qPrintable(Misure::Voci()[std::size_t(v)].caption)) << v;
    }
    void eachEntrySetsTheStartScreenAndStandsChecked()
    {
        QFETCH(int, voce);
        // From another measure, so every entry really changes something.
        scegli(voce == 1 ? 2 : 1);
        scegli(voce);
        const QStringList simboli = simboliDi(voce);
        const Misure::Voce &v = Misure::Voci()[std::size_t(voce)];
        const bool misura = voce > 0;
        QCOMPARE(spuntate(), QList<int>{voce});
        QCOMPARE(f->Caption(), misura ? QStringLiteral("SISTEMA METRICO: scomposizione")
                                      : QStringLiteral("SISTEMA DECIMALE: scomposizione"));
        QCOMPARE(caption(*f, "Label6", 0),
                 misura ? QStringLiteral("SISTEMA METRICO") : QStringLiteral("SISTEMA DECIMALE "));
        QCOMPARE(caption(*f, "Label6", 1), misura ? QStringLiteral("SCOMPOSIZIONE DELLE MISURE")
                                                  : QStringLiteral("SCOMPOSIZIONE DEI NUMERI"));
        QCOMPARE(caption(*f, "Label6", 2), FamiglieSimboli::trova(v.famiglia)->rigaSimboli);
        QCOMPARE(caption(*f, "Label3"), QString::number(v.famiglia));
        const QString sp = QStringLiteral(" ");
        const QStringList usati = s().NumeroCifre == 3 ? simboli.mid(1) : simboli;
        QStringList rovesci = usati;
        std::reverse(rovesci.begin(), rovesci.end());
        QCOMPARE(caption(*f, "Option2", 0), usati.join(sp));
        QCOMPARE(caption(*f, "Option2", 1), rovesci.join(sp));
        QCOMPARE(caption(*f, "Option2", 2), QStringLiteral("Tutti"));
        QCOMPARE((QStringList{s().Simbolo1, s().Simbolo2, s().Simbolo3, s().Simbolo4}), simboli);
        // The certificate's topic lines.
        QCOMPARE(s().TitoloArgomento, Misure::TitoloArgomento(v.famiglia));
        s().EsatteComplessive = 18;
        s().NumeroEsercizio = 20;
        auto &attestato = (*t)->form<FrmAttestato>();
        QStringList righe;
        for (const auto &r : attestato.get<PictureBox>("Picture1").printedLines())
            righe << r.text;
        QCOMPARE(righe.value(12),
                 misura ? QStringLiteral("SISTEMA METRICO") : QStringLiteral("SISTEMA DECIMALE"));
        QCOMPARE(righe.value(14), misura ? QStringLiteral("Scomposizione delle misure")
                                         : QStringLiteral("Scomposizione dei numeri"));
        QCOMPARE(righe.value(16), FamiglieSimboli::trova(v.famiglia)->rigaSimboli);
    }

    void theKeyboardReachesTheMenu()
    {
        // Alt and the underlined letter open it; arrows and Enter choose.
        QTest::keyClick(f, Qt::Key_M, Qt::AltModifier);
        QTRY_VERIFY(qobject_cast<QMenu *>(QApplication::activePopupWidget()));
        QMenu *tendina = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QCOMPARE(tendina, f->get<Menu>("mnuMisure").action()->menu());
        QTRY_VERIFY(tendina->activeAction());
        const qsizetype prima = tendina->actions().indexOf(tendina->activeAction());
        for (qsizetype i = prima; i < 4; ++i)
            QTest::keyClick(tendina, Qt::Key_Down);
        QCOMPARE(tendina->activeAction()->text(), QStringLiteral("Masse: kg hg dag g"));
        QTest::keyClick(tendina, Qt::Key_Return);
        QTRY_VERIFY(!QApplication::activePopupWidget());
        QCOMPARE(s().FamigliaSimboli.value(), 9);
        QCOMPARE(spuntate(), QList<int>{4});
    }

    void everyPathOfTheStartScreenKeepsTheMeasure_data()
    {
        QTest::addColumn<int>("voce");
        QTest::addColumn<QString>("percorso");
        for (const char *p : {"mouse", "tastiera", "misto", "misto al contrario", "menu a metà",
                              "Riprisitina", "secondo Vai"})
            for (int v = 1; v < 9; ++v)
                QTest::addRow("%s, %s", p, qPrintable(Misure::Voci()[std::size_t(v)].caption))
                    << v << QString::fromLatin1(p);
    }
    void everyPathOfTheStartScreenKeepsTheMeasure()
    {
        QFETCH(int, voce);
        QFETCH(QString, percorso);
        const int kind = voce % 3;
        if (percorso != QLatin1String("menu a metà"))
            scegli(voce);
        if (percorso == QLatin1String("mouse")) {
            click(opt("Option1", kind));
            click(opt("Option2", 0));
            click(opt("Option3", 0));
        } else if (percorso == QLatin1String("tastiera")) {
            key(Qt::Key_Return);
            key(Qt::Key_Return);
            key(Qt::Key_Return);
        } else if (percorso == QLatin1String("misto")) {
            click(opt("Option1", kind));
            key(Qt::Key_Return); // the order by keyboard applies the family again
            click(opt("Option3", 0));
        } else if (percorso == QLatin1String("misto al contrario")) {
            key(Qt::Key_Return);
            click(opt("Option2", 0));
            key(Qt::Key_Return);
        } else if (percorso == QLatin1String("menu a metà")) {
            click(opt("Option1", kind));
            click(opt("Option2", 0));
            scegli(voce);
            click(opt("Option3", 0));
        } else if (percorso == QLatin1String("Riprisitina")) {
            click(opt("Option1", kind));
            click(opt("Option2", 0));
            click(opt("Option3", 1)); // "Riprisitina"
            QCOMPARE(caption(*f, "Label1"), QString());
            keypad(Qt::Key_3); // clears what the mouse left
            keypad(Qt::Key_3); // on, the kind kept
            key(Qt::Key_Return);
            key(Qt::Key_Return); // "Vai"
        } else if (percorso == QLatin1String("secondo Vai")) {
            click(opt("Option1", kind));
            click(opt("Option2", 0));
            click(opt("Option3", 0));
            QCOMPARE(tastiera(), simboliDi(voce));
            Alunno a(*t);
            a.scriviGiusta();
            a.verifica();
            a.esci();
            settle();
            QVERIFY(!esercitazione());
            QVERIFY(f->isVisible());
            click(opt("Option3", 0)); // "Vai" again
        }
        QCOMPARE(s().FamigliaSimboli.value(), Misure::Voci()[std::size_t(voce)].famiglia);
        QCOMPARE(spuntate(), QList<int>{voce});
        rispondi(simboliDi(voce));
    }

    void theFamilyStepLeavesTheMeasureForNumbers_data()
    {
        QTest::addColumn<int>("voce");
        QTest::addColumn<bool>("suTitolo");
        for (int v = 1; v < 9; ++v)
            for (bool titolo : {false, true})
                QTest::addRow("%s, %s", qPrintable(Misure::Voci()[std::size_t(v)].caption),
                              titolo ? "Label6(2)" : "Label5")
                    << v << titolo;
    }
    void theFamilyStepLeavesTheMeasureForNumbers()
    {
        QFETCH(int, voce);
        QFETCH(bool, suTitolo);
        scegli(voce);
        Label &passo = suTitolo ? f->get<Label>("Label6", 2) : f->get<Label>("Label5");
        click(passo);
        QCOMPARE(s().FamigliaSimboli.value(), 1);
        QCOMPARE(caption(*f, "Label3"), QStringLiteral("1"));
        QCOMPARE(caption(*f, "Label6", 0), QStringLiteral("SISTEMA DECIMALE "));
        QCOMPARE(spuntate(), QList<int>{0});
        QCOMPARE(s().TitoloArgomento, QStringLiteral("SISTEMA DECIMALE"));
        QCOMPARE(s().SottotitoloArgomento, QStringLiteral("Scomposizione dei numeri"));
        // And on through the numbers, as ever.
        click(passo);
        QCOMPARE(s().FamigliaSimboli.value(), 2);
        QCOMPARE(spuntate(), QList<int>{0});
        click(passo);
        click(passo);
        QCOMPARE(s().FamigliaSimboli.value(), 1);
        click(opt("Option1", 0));
        click(opt("Option2", 0));
        click(opt("Option3", 0));
        rispondi(simboliDi(0));
    }

    void theReportListsAndPrintsTheLinesOfTheMeasure_data()
    {
        voci();
        for (int v = 1; v < 9; ++v)
            QTest::addRow("%s", qPrintable(Misure::Voci()[std::size_t(v)].caption)) << v;
    }
    void theReportListsAndPrintsTheLinesOfTheMeasure()
    {
        QFETCH(int, voce);
        scegli(voce);
        click(opt("Option1", 2));
        click(opt("Option2", 0));
        click(opt("Option3", 0));
        Alunno a(*t);
        const QString domanda = s().Numero;
        const QString unita = s().SimboloRichiesto.trimmed();
        a.scriviGiusta();
        a.verifica();
        a.avanti();
        const QString riga = s().Operazioni[1];
        QVERIFY2(riga.contains(domanda) && riga.contains(unita), qPrintable(riga));
        esercitazione()->get<Menu>("mnuVisualizza").action()->trigger();
        auto *resoconto = (*t)->screens().find<FrmStampaEsercizio2>();
        QVERIFY(resoconto);
        QCOMPARE(resoconto->get<Label>("LblOp", 1).Caption(), riga);
        resoconto->get<Menu>("mnuStampaEsercizi").action()->trigger();
        QVERIFY(t->printer->calls.join('\n').contains(riga));
        QCOMPARE(t->printer->documents, 1);
    }

    void aMeasureIsNotChangedUnderADrill()
    {
        scegli(3);
        click(opt("Option1", 0));
        click(opt("Option2", 0));
        click(opt("Option3", 0));
        QVERIFY(esercitazione());
        scegli(5);
        QCOMPARE(t->boxes->boxes.size(), 1);
        QCOMPARE(t->boxes->boxes.first().text,
                 QStringLiteral("Per cambiare le misure chiudi prima l'esercitazione."));
        QCOMPARE(s().FamigliaSimboli.value(), 4);
        QCOMPARE(spuntate(), QList<int>{3});
        rispondi(simboliDi(3));
    }

    void aWorksheetInEachMeasureIsPrintedInIt_data()
    {
        voci();
        for (int v = 1; v < 9; ++v)
            QTest::addRow("%s", qPrintable(Misure::Voci()[std::size_t(v)].caption)) << v;
    }
    void aWorksheetInEachMeasureIsPrintedInIt()
    {
        QFETCH(int, voce);
        usaPdf();
        scegli(voce);
        FrmStampaSchede &fs = schede();
        const QString titolo =
            "SCHEDA DI SCOMPOSIZIONE - " + Misure::Voci()[std::size_t(voce)].caption;
        QCOMPARE(caption(fs, "lblTitolo"), titolo);
        click(fs.get<OptionButton>("Option1", 2)); // whole and decimal
        click(fs.get<OptionButton>("Opt1", 1));    // 20 rows
        click(fs.get<OptionButton>("Option2", 0));
        click(fs.get<CommandButton>("CmdVisualizzaSchedaAlunni"));
        const QStringList simboli = simboliDi(voce);
        for (int r = 1; r <= 20; ++r) {
            const QString riga = s().RigheDocenti[r];
            QVERIFY2(riga.contains(simboli[1]) || riga.contains(simboli[2]), qPrintable(riga));
            // The question names one of the measure's units.
            const QString unita = s().RigheAlunni[r]
                                      .section(QLatin1Char('='), 0, 0)
                                      .split(' ', Qt::SkipEmptyParts)
                                      .last();
            QVERIFY2(std::any_of(simboli.begin(), simboli.end(),
                                 [&](const QString &x) { return x.trimmed() == unita; }),
                     qPrintable(s().RigheAlunni[r]));
        }
        const auto stampato = [&](const char *comando, const char *pulsante) {
            click(fs.get<CommandButton>(comando));
            click(fs.get<CommandButton>(pulsante));
            const PrintedPdf pdfLetto(pdf->lastFile());
            QStringList lette;
            for (const QString &riga : pdfLetto.lines())
                lette << riga.simplified();
            return lette;
        };
        // The pupils' sheet, word for word.
        QStringList attese = {QStringLiteral("Nome e cognome"), titolo};
        for (int i = 1; i <= 20; ++i)
            attese << s().RigheAlunni[i].simplified();
        const QStringList piede = {
            QStringLiteral("Scomposizione delle misure"),
            QStringLiteral("Livello di difficoltà: Scomposizione delle misure")};
        attese << piede;
        QCOMPARE(stampato("CmdVisualizzaSchedaAlunni", "CmdStampaSchedaAlunni"), attese);
        QVERIFY(t->boxes->boxes.isEmpty());
        // The teachers' sheet: its rows at their own size run past the page
        // as the numbers' widest rows do; what the page holds is the row's
        // start, solution begun.
        const QStringList docenti =
            stampato("CmdVisualizzaSchedaDocenti", "CmdStampaSchedaDocenti");
        QCOMPARE(docenti.size(), 24);
        QCOMPARE(docenti.mid(0, 2), attese.mid(0, 2));
        QCOMPARE(docenti.mid(22), piede);
        for (int i = 1; i <= 20; ++i) {
            const QString atteso = s().RigheDocenti[i].simplified();
            QVERIFY2(atteso.startsWith(docenti[i + 1]) && docenti[i + 1].contains("(R."),
                     qPrintable(docenti[i + 1] + " / " + atteso));
        }
    }

    void aClassSetAndACopyFromItsCodeAreInTheMeasure_data()
    {
        voci();
        for (int v = 1; v < 9; ++v)
            QTest::addRow("%s", qPrintable(Misure::Voci()[std::size_t(v)].caption)) << v;
    }
    void aClassSetAndACopyFromItsCodeAreInTheMeasure()
    {
        QFETCH(int, voce);
        MenuClasse::Installa(**t);
        usaPdf();
        scegli(voce);
        const QString titolo =
            "SCHEDA DI SCOMPOSIZIONE - " + Misure::Voci()[std::size_t(voce)].caption;
        FrmStampaSchede &fs = schede();
        fs.get<Menu>("mnuCopieClasse").action()->trigger();
        auto *copie = (*t)->screens().find<FrmCopieClasse>();
        QVERIFY(copie);
        QVERIFY(QTest::qWaitForWindowActive(copie));
        copie->get<ComboBox>("cboRighe").setListIndex(0); // 10 rows
        copie->get<TextBox>("txtCopie").setCaption(QStringLiteral("2"));
        click(copie->get<CommandButton>("cmdStampa"));
        QVERIFY(t->boxes->boxes.isEmpty());
        const PrintedPdf stampato(pdf->lastFile());
        QVERIFY2(stampato.error().isEmpty(), qPrintable(stampato.error()));
        QCOMPARE(stampato.pages(), 4);
        const QStringList pagine = stampato.text().split(QLatin1Char('\f'));
        static const QRegularExpression piede(QStringLiteral("codice (\\w\\w\\w-\\w\\w\\w)"));
        QString codice;
        RigheClasse rifatte;
        for (int p = 0; p < 4; ++p) {
            const QString pagina = pagine[p].simplified();
            QVERIFY2(pagina.contains(titolo), qPrintable(pagina));
            QVERIFY(pagina.contains(QStringLiteral("Scomposizione delle misure")));
            const auto m = piede.match(pagina);
            QVERIFY(m.hasMatch());
            const auto scelta = CodiceScheda::Leggi(m.captured(1));
            QVERIFY(scelta.has_value());
            StatoCondiviso rifatto;
            UnitaClasse::Applica(rifatto, scelta->unita);
            QCOMPARE((QStringList{rifatto.Simbolo1, rifatto.Simbolo2, rifatto.Simbolo3,
                                  rifatto.Simbolo4}),
                     simboliDi(voce));
            const auto copia = rifatte.Costruisci(*scelta);
            for (const QString &riga : p < 2 ? copia.alunni : copia.docenti)
                QVERIFY2(pagina.contains(riga.simplified()), qPrintable(riga));
            codice = m.captured(1);
        }
        copie->Unload();
        settle();

        // With numbers on the start screen again, the code still brings
        // back the copy in its measure.
        scegli(0);
        fs.get<Menu>("mnuRifaiCodice").action()->trigger();
        auto *rifai = (*t)->screens().find<FrmRifaiCodice>();
        QVERIFY(rifai);
        QVERIFY(QTest::qWaitForWindowActive(rifai));
        rifai->get<TextBox>("txtCodice").setCaption(codice);
        click(rifai->get<CommandButton>("cmdMostra"));
        click(rifai->get<CommandButton>("cmdDocenti"));
        click(rifai->get<CommandButton>("cmdStampa"));
        QVERIFY(t->boxes->boxes.isEmpty());
        const PrintedPdf copia(pdf->lastFile());
        QVERIFY2(copia.error().isEmpty(), qPrintable(copia.error()));
        QCOMPARE(copia.pages(), 1);
        const QString pagina = copia.text().simplified();
        QVERIFY2(pagina.contains(titolo), qPrintable(pagina));
        QVERIFY(
            pagina.contains(QStringLiteral("Livello di difficoltà: Scomposizione delle misure")));
        const auto rifatta = rifatte.Costruisci(*CodiceScheda::Leggi(codice));
        for (const QString &riga : rifatta.docenti)
            QVERIFY2(pagina.contains(riga.simplified()), qPrintable(riga));
    }
};

QTEST_MAIN(TestMisureSchermi)
#include "tst_misureschermi.moc"
