#include "certificate/FrmAttestato.h"
#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "platform/Fonts.h"
#include "platform/controls/Menu.h"
#include "report/FrmStampaEsercizio2.h"
#include "report/frmNome.h"
#include "services/frmSceltaStampante.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QAction>
#include <QTest>

using namespace ScreenTest;

class TestFrmStampaEsercizio2 : public QObject
{
    Q_OBJECT

    static void riempi(StatoCondiviso &s, int quanti)
    {
        s.NumeroEsercizio = quanti;
        for (int k = 1; k <= quanti && k <= 60; ++k)
            s.Operazioni[k] = QStringLiteral("%1da = R.%1 (Sec.3)")
                                  .arg(k)
                                  .rightJustified(12 + 3, QLatin1Char(' '));
    }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }
    void cleanup() { settle(); }

    void afterExerciseFiveTheReportShowsFiveLines()
    {
        TestContext t;
        riempi(t->stato, 5);
        auto &f = t->form<FrmStampaEsercizio2>();
        QCOMPARE(f.Caption(), QStringLiteral("FINESTRA DI STAMPA "));
        for (int k = 1; k <= 20; ++k)
            QCOMPARE(f.get<Label>("LblOp", k).Caption(),
                     k <= 5 ? t->stato.Operazioni[k] : QString());
    }

    void aSeriesNumberedPastTwentyFillsTheTwentyLabels()
    {
        TestContext t;
        riempi(t->stato, 25);
        auto &f = t->form<FrmStampaEsercizio2>();
        QCOMPARE(f.get<Label>("LblOp", 20).Caption(), t->stato.Operazioni[20]);
        // The 21st line has no label: the forms runtime says so, and the
        // load, which goes on past failing statements, skips it.
        try {
            f.array<Label>("LblOp")(21);
            QFAIL("no error for a 21st label");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::ControlArrayElementMissing);
        }
        QVERIFY(t.errors->errors.isEmpty());
        QCOMPARE(int(t->stato.Contatore), 26);
    }

    void theButtonsLeadOn()
    {
        TestContext t;
        auto &f = t->form<FrmStampaEsercizio2>();
        QVERIFY(showActive(f));
        QCOMPARE(f.get<CommandButton>("Command1", 0).Caption(), QStringLiteral("ESCI"));
        QCOMPARE(f.get<CommandButton>("Command1", 1).Caption(),
                 QStringLiteral("STAMPA L'ESERCIZIO"));
        click(f.get<CommandButton>("Command1", 2));
        QVERIFY(t->screens().find<frmNome>() && t->screens().find<frmNome>()->isVisible());
        click(f.get<CommandButton>("Command1", 3));
        QVERIFY(t->screens().find<FrmAttestato>() &&
                t->screens().find<FrmAttestato>()->isVisible());
        QVERIFY(f.get<Frame>("fraNome").Visible());
        click(f.get<CommandButton>("cmdAvanti"));
        QVERIFY(!f.get<Frame>("fraNome").Visible());
        click(f.get<CommandButton>("Command1", 0));
        QVERIFY(!t->screens().isLoaded<FrmStampaEsercizio2>());
    }

    void thePrinterMenuOpensThePrinterChoice()
    {
        TestContext t;
        auto &f = t->form<FrmStampaEsercizio2>();
        f.get<Menu>("mnuStampante").action()->trigger();
        auto *scelta = t->screens().find<frmSceltaStampante>();
        QVERIFY(scelta && scelta->isVisible() && !scelta->isModal());
    }

    void theReportIsFilledAfreshOnEveryOpening()
    {
        TestContext t;
        riempi(t->stato, 2);
        t->form<FrmStampaEsercizio2>().Unload();
        settle();
        riempi(t->stato, 3);
        QCOMPARE(t->form<FrmStampaEsercizio2>().get<Label>("LblOp", 3).Caption(),
                 t->stato.Operazioni[3]);
    }

    void stampaLEsercizioReturnsToTheDrillWhereItStood()
    {
        TestContext t;
        frmOperativo::collegaTipoEsercizio(*t);
        t->stato.TipoNumeri = 1;
        t->stato.Simbolo1 = QStringLiteral(" uk  ");
        t->stato.Simbolo2 = QStringLiteral("  h  ");
        t->stato.Simbolo3 = QStringLiteral(" da  ");
        t->stato.Simbolo4 = QStringLiteral("  u  ");
        t->stato.NumeroCifre = 4;
        auto &drill = t->form<frmOperativo>();
        QVERIFY(showActive(drill));
        const int numero = t->stato.NumeroEsercizio;
        const QString domanda = drill.get<Label>("lblNumero").Caption();
        auto &f = t->form<FrmStampaEsercizio2>();
        QVERIFY(showActive(f));
        click(f.get<CommandButton>("Command1", 1));
        QVERIFY(!t->screens().isLoaded<FrmStampaEsercizio2>());
        QCOMPARE(t->screens().find<frmOperativo>(), &drill);
        QVERIFY(drill.isVisible());
        QCOMPARE(int(t->stato.NumeroEsercizio), numero);
        QCOMPARE(drill.get<Label>("lblNumero").Caption(), domanda);
    }

    void theReportPrintsEveryLineAtItsPlace()
    {
        TestContext t;
        riempi(t->stato, 20);
        auto &f = t->form<FrmStampaEsercizio2>();
        f.get<Menu>("mnuStampaEsercizi").action()->trigger();
        QVERIFY(t.errors->errors.isEmpty());
        const auto &righe = t.printer->lines;
        QCOMPARE(righe.size(), 22);
        QCOMPARE(righe[0].text, QStringLiteral("SCUOLA ELEMENTARE DI "));
        QCOMPARE(righe[0].x, 1000.0);
        QCOMPARE(righe[0].y, 1000.0);
        QCOMPARE(righe[0].fontSize, 18.0);
        QVERIFY(righe[0].fontName == QStringLiteral("Courier New") ||
                righe[0].fontName == QStringLiteral("Courier"));
        for (int k = 0; k <= 20; ++k) {
            const auto &r = righe[k + 1];
            QCOMPARE(r.text, t->stato.Operazioni[k]);
            QCOMPARE(r.x, 100.0);
            QCOMPARE(r.y, k <= 10 ? (k - 1) * 400.0 + 2000 : (k - 10) * 400.0 + 6500);
            QCOMPARE(r.fontSize, 10.0);
            QVERIFY(r.fontBold);
        }
        QCOMPARE(righe[1].y, 1600.0);  // line 0, always empty
        QCOMPARE(righe[11].y, 5600.0); // line 10
        QCOMPARE(righe[12].y, 6900.0); // line 11
        QCOMPARE(t.printer->documents, 1);
        QCOMPARE(t.printer->calls.last(), QStringLiteral("EndDoc"));
    }

    void withoutCourierNothingIsPrinted()
    {
        TestContext t;
        riempi(t->stato, 3);
        t.printer->setFonts({QStringLiteral("DejaVu Sans"), QStringLiteral("Liberation Serif")});
        t->form<FrmStampaEsercizio2>().StampaEsercizi();
        QCOMPARE(t.boxes->boxes.size(), 1);
        QCOMPARE(t.boxes->boxes[0].text,
                 QStringLiteral("Devi installare il font Courier o il font Courier New"));
        QVERIFY(t.printer->lines.isEmpty());
        QCOMPARE(t.printer->documents, 0);
    }

    void theFirstCourierOfTheListIsUsed()
    {
        TestContext t;
        riempi(t->stato, 1);
        t.printer->setFonts(
            {QStringLiteral("Arial"), QStringLiteral("Courier"), QStringLiteral("Courier New")});
        t->form<FrmStampaEsercizio2>().StampaEsercizi();
        QCOMPARE(t.printer->lines[0].fontName, QStringLiteral("Courier"));
    }

    void aPrinterErrorReachesTheErrorReport()
    {
        TestContext t;
        riempi(t->stato, 1);
        t.printer->failing = true;
        auto &f = t->form<FrmStampaEsercizio2>();
        f.get<Menu>("mnuStampaEsercizi").action()->trigger();
        QCOMPARE(t.errors->errors, QList<RuntimeError::Code>{RuntimeError::PrinterError});
    }
};

QTEST_MAIN(TestFrmStampaEsercizio2)
#include "tst_frmstampaesercizio2.moc"
