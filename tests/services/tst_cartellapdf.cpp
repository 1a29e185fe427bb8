#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "platform/controls/Menu.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "report/FrmStampaEsercizio2.h"
#include "sheets/FrmStampaSchede.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QAction>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// The PDF printer writes where the user said, from either printing screen.
class TestCartellaPdf : public QObject
{
    Q_OBJECT

    static PdfFilePrinter *soloPdf(TestContext &t)
    {
        auto pdf = std::make_unique<PdfFilePrinter>(*t);
        PdfFilePrinter *stampante = pdf.get();
        std::vector<std::unique_ptr<Printer>> elenco;
        elenco.push_back(std::move(pdf));
        t->setPrinters(std::make_unique<Printers>(std::move(elenco)));
        return stampante;
    }

    static QStringList pdfIn(const QString &cartella)
    {
        return QDir(cartella).entryList({QStringLiteral("*.pdf")}, QDir::Files);
    }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }
    void cleanup() { ScreenTest::settle(); }

    void theChosenFolderReceivesTheNextPdf()
    {
        QTemporaryDir lavoro;
        QTemporaryDir scelta;
        TestContext t;
        t->setWorkingDirectory(lavoro.path());
        PdfFilePrinter *stampante = soloPdf(t);
        t->stato.NumeroEsercizio = 1;
        t->stato.Operazioni[1] = QStringLiteral("         47da = R.4 h 7 da (Sec.3)");
        t.folders->answer = scelta.path();
        auto &resoconto = t->form<FrmStampaEsercizio2>();
        resoconto.get<Menu>("mnuCartellaPdf").action()->trigger();
        QCOMPARE(t.folders->questions, QStringList{QStringLiteral("Cartella dei file PDF")});
        QCOMPARE(stampante->outputDirectory(), scelta.path());
        QVERIFY(t.notices->notices.last().contains(scelta.path()));
        resoconto.StampaEsercizi();
        QVERIFY(t.errors->errors.isEmpty());
        QCOMPARE(pdfIn(scelta.path()).size(), 1);
        QVERIFY(pdfIn(lavoro.path()).isEmpty());
    }

    void aCancelledChoiceChangesNothing()
    {
        QTemporaryDir lavoro;
        TestContext t;
        t->setWorkingDirectory(lavoro.path());
        PdfFilePrinter *stampante = soloPdf(t);
        t.folders->answer.clear();
        t->form<FrmStampaEsercizio2>().get<Menu>("mnuCartellaPdf").action()->trigger();
        QVERIFY(stampante->outputDirectory().isEmpty());
        t->form<FrmStampaEsercizio2>().StampaEsercizi();
        QCOMPARE(pdfIn(lavoro.path()).size(), 1);
    }

    void theWorksheetAsksToo()
    {
        QTemporaryDir scelta;
        TestContext t;
        PdfFilePrinter *stampante = soloPdf(t);
        t.folders->answer = scelta.path();
        t->form<FrmStampaSchede>().get<Menu>("mnuCartellaPdf").action()->trigger();
        QCOMPARE(stampante->outputDirectory(), scelta.path());
    }

    void withoutAPdfPrinterTheUserIsTold()
    {
        TestContext t; // its only printer is a recording one
        t->form<FrmStampaEsercizio2>().get<Menu>("mnuCartellaPdf").action()->trigger();
        QVERIFY(t.folders->questions.isEmpty());
        QCOMPARE(t.notices->notices.size(), 1);
    }
};

QTEST_MAIN(TestCartellaPdf)
#include "tst_cartellapdf.moc"
