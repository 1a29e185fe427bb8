#include "classe/CodiceScheda.h"
#include "classe/FrmCopieClasse.h"
#include "classe/FrmRifaiCodice.h"
#include "classe/MenuClasse.h"
#include "classe/RigheClasse.h"
#include "classe/StampaClasse.h"
#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "platform/controls/Menu.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "sheets/FrmStampaSchede.h"
#include "sheets/SchedeTest.h"
#include "support/PrintedPdf.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QAction>
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace ScreenTest;

namespace {

// A recording printer whose paper is as narrow as asked.
class CartaStretta final : public Printer
{
public:
    double larghezza = 5500;
    QList<double> corpi;
    QString DeviceName() const override { return QStringLiteral("Stretta"); }
    double ScaleWidth() const override { return larghezza; }
    QStringList Fonts() const override { return {QStringLiteral("Courier New")}; }
    using Printer::Fonts;

protected:
    void printLine(const QString &, double x, double) override
    {
        if (x == StampaClasse::MargineRighe)
            corpi << FontSize();
    }
    void paintPicture(const QImage &, double, double) override {}
    void endDocument() override {}
    void newPage() override {}
};

} // namespace

// Class sets as a teacher makes them: from the worksheet screen's menu, with
// the keyboard alone, to a real PDF read back; stopped half way; a copy made
// again from its code.
class TestCopieClasse : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;
    QTemporaryDir cartella;
    PdfFilePrinter *pdf = nullptr;

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
        auto &f = (*t)->form<FrmStampaSchede>();
        if (!f.isVisible())
            showActive(f);
        return f;
    }

    FrmCopieClasse &apriCopie()
    {
        schede().get<Menu>("mnuCopieClasse").action()->trigger();
        auto *f = (*t)->screens().find<FrmCopieClasse>();
        Q_ASSERT(f);
        if (!QTest::qWaitForWindowActive(f))
            qWarning("the dialog did not become the active window");
        return *f;
    }

    QStringList filePdf() const
    {
        return QDir(cartella.path()).entryList({QStringLiteral("*.pdf")}, QDir::Files);
    }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void init()
    {
        QVERIFY(cartella.isValid());
        for (const QString &f : filePdf())
            QFile::remove(cartella.filePath(f));
        t = std::make_unique<TestContext>();
        SchedeTest::statoDiPartenza((*t)->stato, 3);
        MenuClasse::Installa(**t);
    }

    void cleanup()
    {
        t.reset();
        settle();
    }

    void fortyCopiesWithKeysFromTheKeyboardMakeEightyPagesOfOnePdf()
    {
        usaPdf();
        FrmCopieClasse &f = apriCopie();
        QVERIFY(f.isModal());
        // The numbers list has the focus; everything else through the keys.
        QCOMPARE(focusedControl(f), &f.get<Control>("cboNumeri"));
        key(Qt::Key_End); // "Tutti"
        key(Qt::Key_E, Qt::AltModifier);
        QCOMPARE(focusedControl(f), &f.get<Control>("cboRighe"));
        key(Qt::Key_End); // 30 rows
        key(Qt::Key_C, Qt::AltModifier);
        QCOMPARE(focusedControl(f), &f.get<Control>("txtCopie"));
        key(Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(focused(), QStringLiteral("40"));
        key(Qt::Key_Return);

        QVERIFY(t->errors->errors.isEmpty());
        QVERIFY(t->boxes->boxes.isEmpty());
        QCOMPARE(filePdf().size(), 1);
        QCOMPARE(t->notices->notices.size(), 1);
        QCOMPARE(f.get<Label>("lblStato").Caption(),
                 QStringLiteral("Stampate 40 copie e le loro soluzioni (80 pagine)."));

        // A copy for a person to look at, when a folder is named.
        if (const QString cartellaImmagini = qEnvironmentVariable("QUADRIVO_IMMAGINI");
            !cartellaImmagini.isEmpty())
            QFile::copy(pdf->lastFile(), QDir(cartellaImmagini).filePath("serie_classe.pdf"));
        const PrintedPdf stampato(pdf->lastFile());
        QVERIFY2(stampato.error().isEmpty(), qPrintable(stampato.error()));
        QCOMPARE(stampato.pages(), 80);
        const QStringList pagine = stampato.text().split(QLatin1Char('\f'));
        static const QRegularExpression piede(
            QStringLiteral("Scheda (\\d\\d) - codice (\\w\\w\\w-\\w\\w\\w)( - soluzioni)?"));
        QStringList codici;
        RigheClasse rifatte;
        for (int p = 0; p < 80; ++p) {
            const QRegularExpressionMatch m = piede.match(pagine[p]);
            QVERIFY2(m.hasMatch(), qPrintable(QStringLiteral("page %1").arg(p + 1)));
            QCOMPARE(m.captured(1).toInt(), p % 40 + 1);
            QCOMPARE(m.captured(3).isEmpty(), p < 40);
            const auto scelta = CodiceScheda::Leggi(m.captured(2));
            QVERIFY(scelta.has_value());
            QCOMPARE(scelta->tipoNumeri, 3);
            QCOMPARE(scelta->righe, 30);
            if (p < 40)
                codici << m.captured(2);
            else
                QCOMPARE(m.captured(2), codici[p - 40]); // the key of that sheet
            // Every row the code gives is on the page, words in order.
            const auto copia = rifatte.Costruisci(*scelta);
            const QString pagina = pagine[p].simplified();
            for (const QString &riga : p < 40 ? copia.alunni : copia.docenti)
                QVERIFY2(pagina.contains(riga.simplified()),
                         qPrintable(QStringLiteral("page %1: %2").arg(p + 1).arg(riga)));
        }
        QCOMPARE(QSet<QString>(codici.begin(), codici.end()).size(), 40);

        // Every word stands inside the page's printable width.
        for (const PrintedPdf::Word &w : stampato.words())
            QVERIFY2(w.box.right() <= 595.28 - 18 + 0.5, qPrintable(w.text));
    }

    void annullaHalfWayPrintsNothing()
    {
        FrmCopieClasse &f = apriCopie();
        f.get<TextBox>("txtCopie").setCaption(QStringLiteral("40"));
        int passi = 0;
        // Annulla is pressed while the pages go out, as the teacher would.
        QTimer premi;
        connect(&premi, &QTimer::timeout, this, [&] {
            if (++passi == 60)
                click(f.get<CommandButton>("cmdAnnulla"));
        });
        premi.start(0);
        click(f.get<CommandButton>("cmdStampa"));
        premi.stop();
        QVERIFY(passi >= 60);
        QVERIFY(t->printer->calls.contains(QStringLiteral("KillDoc")));
        QCOMPARE(t->printer->documents, 0);
        QVERIFY(!t->printer->calls.contains(QStringLiteral("EndDoc")));
        QCOMPARE(f.get<Label>("lblStato").Caption(),
                 QStringLiteral("Stampa annullata: non è stato stampato nulla."));
        QVERIFY(f.isVisible());
        QVERIFY(!f.InCorso());

        // On the PDF printer no file is left either.
        usaPdf();
        passi = 0;
        premi.start(0);
        click(f.get<CommandButton>("cmdStampa"));
        premi.stop();
        QVERIFY(filePdf().isEmpty());
        QVERIFY(t->notices->notices.isEmpty());
        QVERIFY(t->errors->errors.isEmpty());
    }

    void escapeClosesTheDialogAndBadCountsAreRefused_data()
    {
        QTest::addColumn<QString>("copie");
        QTest::newRow("zero") << QStringLiteral("0");
        QTest::newRow("forty-one") << QStringLiteral("41");
        QTest::newRow("not a number") << QStringLiteral("venti");
        QTest::newRow("empty") << QString();
    }
    void escapeClosesTheDialogAndBadCountsAreRefused()
    {
        QFETCH(QString, copie);
        FrmCopieClasse &f = apriCopie();
        f.get<TextBox>("txtCopie").setCaption(copie);
        f.get<Control>("txtCopie").SetFocus();
        key(Qt::Key_Return);
        QCOMPARE(t->boxes->boxes.size(), 1);
        QCOMPARE(t->boxes->boxes[0].text,
                 QStringLiteral("Scrivi quante copie stampare: un numero da 1 a 40."));
        QVERIFY(t->printer->calls.isEmpty());
        QCOMPARE(focusedControl(f), &f.get<Control>("txtCopie"));
        key(Qt::Key_Escape);
        settle();
        QVERIFY(!(*t)->screens().find<FrmCopieClasse>());
    }

    void aRowTooWideForThePaperGetsJustTheFontThatFits()
    {
        CartaStretta carta;
        RigheClasse righe;
        const auto copia = righe.Costruisci({2, 4, 30, 99}); // four-symbol family
        StampaClasse stampa(carta, QStringLiteral("x"));
        QVERIFY(stampa.Stampa({{copia.alunni, false, {}}, {copia.docenti, true, {}}}));
        QCOMPARE(carta.corpi.size(), 60);
        const double alunni = carta.corpi.first();
        const double docenti = carta.corpi.last();
        // Measure with the same metrics: the longest row fits, a tenth of a
        // point more would not.
        auto larghezzaMassima = [&](const QStringList &r, double corpo) {
            carta.setFontName(QStringLiteral("Courier New"));
            carta.setFontSize(corpo);
            double w = 0;
            for (const QString &riga : r)
                w = std::max(w, carta.TextWidth(riga));
            return w;
        };
        const double spazio = carta.larghezza - 500;
        QVERIFY(docenti < 14);
        QVERIFY(larghezzaMassima(copia.docenti, docenti) <= spazio);
        QVERIFY(larghezzaMassima(copia.docenti, docenti + 0.1) > spazio);
        // The pupils' rows fit at their own size on A4, not on this paper.
        QVERIFY(alunni < 12);
        QVERIFY(larghezzaMassima(copia.alunni, alunni) <= spazio);
        carta.larghezza = PdfFilePrinter(**t).ScaleWidth();
        carta.corpi.clear();
        QVERIFY(stampa.Stampa({{copia.alunni, false, {}}}));
        QCOMPARE(carta.corpi.first(), 12.0);
    }

    void aCodeBringsTheCopyBackAndAWrongOneIsRefused()
    {
        schede().get<Menu>("mnuRifaiCodice").action()->trigger();
        auto *f = (*t)->screens().find<FrmRifaiCodice>();
        QVERIFY(f);
        QVERIFY(QTest::qWaitForWindowActive(f));
        QCOMPARE(focusedControl(*f), &f->get<Control>("txtCodice"));
        RigheClasse righe;
        const auto copia = righe.Costruisci({1, 2, 20, 31337});
        QTest::keyClicks(focused(), copia.codice.toLower().remove(QLatin1Char('-')));
        key(Qt::Key_Return);
        QVERIFY(t->boxes->boxes.isEmpty());
        QCOMPARE(f->get<TextBox>("txtCodice").Caption(), copia.codice);
        for (int i = 1; i <= 20; ++i)
            QCOMPARE(f->get<Label>("LblRiga", i).Caption(), copia.alunni[i - 1]);
        QVERIFY(f->get<Label>("LblRiga", 21).Caption().isEmpty());

        // Teachers' sheet, printed: from the keyboard, Tab to the buttons.
        f->get<Control>("cmdDocenti").SetFocus();
        key(Qt::Key_Space);
        QCOMPARE(f->get<Label>("LblRiga", 1).Caption(), copia.docenti[0]);
        key(Qt::Key_Tab);
        QCOMPARE(focusedControl(*f), &f->get<Control>("cmdStampa"));
        key(Qt::Key_Return);
        QCOMPARE(t->printer->documents, 1);
        QVERIFY(t->printer->calls.contains(
            QStringLiteral("Print 1000,15500 \"Codice %1 - soluzioni\"").arg(copia.codice)));
        QVERIFY(t->printer->calls.contains(
            QStringLiteral("Print 500,2000 \"%1\"").arg(copia.docenti[0])));

        // One character wrong: refused, and the sheet on screen goes.
        QString sbagliato = copia.codice;
        sbagliato[0] = sbagliato[0] == QLatin1Char('A') ? QLatin1Char('B') : QLatin1Char('A');
        f->get<TextBox>("txtCodice").setCaption(sbagliato);
        f->get<Control>("txtCodice").SetFocus();
        key(Qt::Key_Return);
        QCOMPARE(t->boxes->boxes.size(), 1);
        QCOMPARE(t->boxes->boxes[0].text,
                 QStringLiteral("Il codice non è quello di una scheda: controlla di averlo "
                                "copiato bene."));
        QVERIFY(f->get<Label>("LblRiga", 1).Caption().isEmpty());
        QVERIFY(!f->get<Control>("cmdStampa").Enabled());
        key(Qt::Key_Escape);
        settle();
        QVERIFY(!(*t)->screens().find<FrmRifaiCodice>());
    }
};

QTEST_MAIN(TestCopieClasse)
#include "tst_copieclasse.moc"
