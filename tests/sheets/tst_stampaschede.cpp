#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/OptionButton.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "platform/printing/RecordingPrinter.h"
#include "sheets/FrmStampaSchede.h"
#include "sheets/SchedeTest.h"
#include "support/PrintedPdf.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <cstdio>
#include <cstring>

using namespace ScreenTest;
using SchedeTest::impaginazione;

namespace {

const QString ProblemaDiStampa = QStringLiteral("Problema di stampa nella stampante utilizzata.");
const QString MancaCourier =
    QStringLiteral("Devi installare il font Courier o il font Courier New");

// Run as a child with this argument, the test prints a pupils' sheet under
// whatever fontconfig configuration its environment names, and says what
// happened.
const char argomentoFiglio[] = "--stampa-con-questi-font";

// A printer that breaks down at its n-th line, or at the end of the
// document, as a queue that goes away while printing does.
class StampanteGuasta final : public Printer
{
public:
    int guastoAllaRiga = 0; // 1-based; 0: never
    bool guastoAllaFine = false;
    bool guastoAlCarattere = false;
    QStringList righe;
    int documenti = 0;

    QString DeviceName() const override { return QStringLiteral("Guasta"); }
    QStringList Fonts() const override { return {QStringLiteral("Courier New")}; }
    using Printer::Fonts;

    void setFontName(const QString &name) override
    {
        if (guastoAlCarattere)
            throw RuntimeError(RuntimeError::PrinterError, QStringLiteral("Guasta"));
        Printer::setFontName(name);
    }

protected:
    void printLine(const QString &text, double, double) override
    {
        if (righe.size() + 1 == guastoAllaRiga)
            throw RuntimeError(RuntimeError::PrinterError, QStringLiteral("Guasta"));
        righe << text;
    }
    void paintPicture(const QImage &, double, double) override {}
    void endDocument() override
    {
        if (guastoAllaFine)
            throw RuntimeError(RuntimeError::PrinterError, QStringLiteral("Guasta"));
        ++documenti;
    }
};

// What the user sees of the screen, control by control.
QStringList aspetto(const Form &f)
{
    QStringList a;
    for (const Control *c : f.Controls())
        a << QStringLiteral("%1|%2|%3|%4|%5|%6")
                 .arg(c->objectName(), c->Caption())
                 .arg(c->Visible())
                 .arg(c->Enabled())
                 .arg(c->BackColor().name(), c->ForeColor().name());
    return a;
}

double altezzaRiga(double punti)
{
    RecordingPrinter misura;
    misura.setFontName(QStringLiteral("Courier New"));
    misura.setFontSize(punti);
    return misura.TextHeight();
}

// The directory holding a font family's files, as fontconfig finds it now.
QString cartellaDelFont(const QString &famiglia)
{
    QProcess elenco;
    elenco.start(QStringLiteral("fc-list"),
                 {QStringLiteral("-f"), QStringLiteral("%{file}\n"), famiglia});
    if (!elenco.waitForFinished())
        return {};
    const QString primo =
        QString::fromLocal8Bit(elenco.readAllStandardOutput()).section(QLatin1Char('\n'), 0, 0);
    return primo.isEmpty() ? QString() : QFileInfo(primo).absolutePath();
}

} // namespace

// Printing the worksheets: the page layout on a recording printer, the font
// check, a failing printer, and a real PDF read back.
class TestStampaSchede : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;
    FrmStampaSchede *f = nullptr;

    StatoCondiviso &s() { return (*t)->stato; }
    OptionButton &opt(const char *gruppo, int i = -1) { return f->get<OptionButton>(gruppo, i); }
    CommandButton &bottone(const char *nome) { return f->get<CommandButton>(nome); }

    void apri()
    {
        f = &(*t)->form<FrmStampaSchede>();
        QVERIFY(showActive(*f));
    }

    // A sheet of 10, 20 or 30 rows chosen on the rows buttons, or of 31
    // after a mouse choice of the number kind.
    void costruisci(int righe, int numeri = 0)
    {
        if (righe == 31) {
            click(opt("Option1", numeri));
        } else {
            click(opt("Opt1", righe / 10 - 1));
            opt("Option1", numeri).SetFocus();
            key(Qt::Key_Return);
        }
        click(opt("Option2", 0));
        QCOMPARE(s().NumeroRighe.value(), righe);
    }

    // The first exercise drawn in a run may bring up other screens, which
    // draw exercises of their own; tests that count or script the draws
    // measure a second sheet, built by choosing the units again.
    void ricostruisci() { click(opt("Option2", 0)); }

    void mostra(bool docenti)
    {
        click(bottone(docenti ? "CmdVisualizzaSchedaDocenti" : "CmdVisualizzaSchedaAlunni"));
    }

    void stampa(bool docenti)
    {
        click(bottone(docenti ? "CmdStampaSchedaDocenti" : "CmdStampaSchedaAlunni"));
    }

    QStringList righeMostrate(int n)
    {
        QStringList r;
        for (int i = 1; i <= n; ++i)
            r << s().Operazioni[i];
        return r;
    }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void init()
    {
        t = std::make_unique<TestContext>();
        SchedeTest::statoDiPartenza(s());
        apri();
    }

    void cleanup()
    {
        t.reset();
        settle();
    }

    void theSheetIsPrintedWithItsLayout_data()
    {
        QTest::addColumn<int>("righe");
        QTest::addColumn<bool>("docenti");
        for (bool docenti : {false, true})
            for (int righe : {10, 20, 30, 31})
                QTest::addRow("%s, %d rows", docenti ? "teachers" : "pupils", righe)
                    << righe << docenti;
    }
    void theSheetIsPrintedWithItsLayout()
    {
        QFETCH(int, righe);
        QFETCH(bool, docenti);
        costruisci(righe);
        mostra(docenti);
        stampa(docenti);

        const QStringList mostrate = righeMostrate(righe);
        const auto &sorgente = docenti ? s().RigheDocenti : s().RigheAlunni;
        for (int i = 1; i <= righe; ++i)
            QCOMPARE(mostrate[i - 1], sorgente[i]);
        // A 31st row has no block: it follows the 30th, one line lower.
        const double y31 = 14500 + altezzaRiga(docenti ? 14 : 12);
        QCOMPARE(t->printer->calls, impaginazione(mostrate, docenti ? 2 : 1, y31));
        QCOMPARE(t->printer->documents, 1);
        QCOMPARE(t->printer->lines.size(), 2 + righe + 3);
        for (int i = 0; i < righe; ++i) {
            const auto &riga = t->printer->lines[2 + i];
            QCOMPARE(riga.fontName, QStringLiteral("Courier New"));
            QCOMPARE(riga.fontSize, docenti ? 14.0 : 12.0);
            QCOMPARE(riga.x, 500.0);
        }
        QVERIFY(t->boxes->boxes.isEmpty());
        QVERIFY(t->errors->errors.isEmpty());
    }

    void onlyTheTenRowsChosenAreBuiltShownAndPrinted()
    {
        costruisci(10);
        QSignalSpy generati(t->ctx.get(), &AppContext::tipoEsercizioGenerato);
        ricostruisci();
        QCOMPARE(generati.count(), 10 + 1);
        QVERIFY(s().RigheAlunni[11].isEmpty());
        mostra(false);
        QVERIFY(f->get<Label>("LblOp", 11).Caption().isEmpty());
        stampa(false);
        QCOMPARE(t->printer->lines.size(), 2 + 10 + 3);
        QCOMPARE(t->printer->lines[2 + 9].text, s().RigheAlunni[10]);
        QCOMPARE(t->printer->lines[2 + 10].text, SchedeTest::Sottotitolo);
    }

    void pinnedExercisesArePrintedExactly()
    {
        // Numeri interi, units family: every row is type 15 (wxyz, in
        // thousandths) with digits that change from row to row.
        auto cifre = [](int riga) {
            return std::array<int, 4>{riga % 9 + 1, (riga + 3) % 9 + 1, (riga + 5) % 9 + 1,
                                      (riga + 7) % 9 + 1};
        };
        costruisci(10);
        for (int riga = 0; riga <= 10; ++riga) {
            t->random->script({0.85});
            const auto c = cifre(riga);
            SchedeTest::scriviCifre(*t->random, c[0], c[1], c[2], c[3]);
        }
        ricostruisci();
        QCOMPARE(t->random->scriptLeft(), std::size_t(0));
        mostra(true);
        stampa(true);

        QStringList attese;
        for (int riga = 1; riga <= 10; ++riga) {
            const auto c = cifre(riga);
            const QString numero =
                QStringLiteral("%1%2%3%4").arg(c[0]).arg(c[1]).arg(c[2]).arg(c[3]);
            const QString risposta =
                QStringLiteral("%1 u %2 d %3 c %4 m ").arg(c[0]).arg(c[1]).arg(c[2]).arg(c[3]);
            attese << QStringLiteral("      ") + numero +
                          QStringLiteral("   m  = .........................") +
                          QStringLiteral(" (R.") + risposta + QStringLiteral(")");
        }
        QCOMPARE(
            attese[0],
            QStringLiteral("      2579   m  = ......................... (R.2 u 5 d 7 c 9 m )"));
        QCOMPARE(t->printer->calls, impaginazione(attese, 2));
    }

    void printingBeforeAnySheetIsShownPrintsOperazioniAsItStands_data()
    {
        QTest::addColumn<QStringList>("operazioni");
        QStringList registrazioni;
        for (int i = 1; i <= 30; ++i)
            registrazioni << QStringLiteral("%1) 473 da = 4 h 7 da 3 u   esatta").arg(i);
        QTest::newRow("the drill's records") << registrazioni;
        QTest::newRow("empty lines") << QStringList(30, QString());
    }
    void printingBeforeAnySheetIsShownPrintsOperazioniAsItStands()
    {
        QFETCH(QStringList, operazioni);
        // A sheet is built, never shown; the print buttons are there already.
        opt("Option1", 0).SetFocus();
        key(Qt::Key_Return);
        click(opt("Option2", 0));
        for (int i = 1; i <= 30; ++i)
            s().Operazioni[i] = operazioni[i - 1];
        ricostruisci();
        QVERIFY(!s().RigheAlunni[1].isEmpty());
        QVERIFY(bottone("CmdStampaSchedaAlunni").Visible());
        stampa(false);
        QCOMPARE(t->printer->calls, impaginazione(operazioni, 1));
    }

    void theFontCheckLooksForCourierInThePrintersFonts_data()
    {
        QTest::addColumn<QStringList>("caratteri");
        QTest::addColumn<bool>("stampa");
        QTest::newRow("Courier New") << QStringList{"Arial", "Courier New"} << true;
        QTest::newRow("Courier") << QStringList{"Courier", "Arial"} << true;
        QTest::newRow("no Courier")
            << QStringList{"Arial", "DejaVu Sans", "Liberation Mono"} << false;
        QTest::newRow("no fonts at all") << QStringList{} << false;
    }
    void theFontCheckLooksForCourierInThePrintersFonts()
    {
        QFETCH(QStringList, caratteri);
        QFETCH(bool, stampa);
        t->printer->setFonts(caratteri);
        costruisci(10);
        mostra(false);
        this->stampa(false);
        if (stampa) {
            QCOMPARE(t->printer->documents, 1);
            QVERIFY(t->boxes->boxes.isEmpty());
            return;
        }
        QVERIFY(t->printer->calls.isEmpty());
        QCOMPARE(t->printer->documents, 0);
        QCOMPARE(t->boxes->boxes.size(), 1);
        const auto &box = t->boxes->boxes[0];
        QCOMPARE(box.text, MancaCourier);
        QCOMPARE(box.buttons, MessageBoxes::OkOnly);
        QCOMPARE(box.icon, MessageBoxes::NoIcon);
        QCOMPARE(box.title, QString()); // the application's own title
    }

    void withTheSystemsFontsTheSheetPrints()
    {
        // fonts-liberation2 gives Courier New its metric twin.
        QVERIFY(t->printer->Fonts().contains(QStringLiteral("Courier New")));
        costruisci(10);
        mostra(true);
        stampa(true);
        QCOMPARE(t->printer->documents, 1);
        QVERIFY(t->boxes->boxes.isEmpty());
    }

    void theFontCheckFollowsFontconfig_data()
    {
        QTest::addColumn<QStringList>("famiglie");
        QTest::addColumn<QString>("esito");
        QTest::newRow("only DejaVu: the box, nothing printed")
            << QStringList{"DejaVu Sans", "DejaVu Sans Mono"} << "box=1 printed=0";
        QTest::newRow("with Liberation: printed")
            << QStringList{"DejaVu Sans", "Liberation Mono"} << "box=0 printed=1";
    }
    void theFontCheckFollowsFontconfig()
    {
        QFETCH(QStringList, famiglie);
        QFETCH(QString, esito);
        QTemporaryDir casa;
        QVERIFY(casa.isValid());
        // The system's rules (aliases included), but only the fonts in the
        // folders of the families given.
        QStringList cartelle;
        for (const QString &famiglia : famiglie) {
            const QString cartella = cartellaDelFont(famiglia);
            QVERIFY2(!cartella.isEmpty(), qPrintable(famiglia));
            if (!cartelle.contains(cartella))
                cartelle << cartella;
        }
        QString configurazione =
            QStringLiteral("<?xml version=\"1.0\"?>\n"
                           "<!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\">\n"
                           "<fontconfig>\n");
        for (const QString &cartella : cartelle)
            configurazione += QStringLiteral("  <dir>%1</dir>\n").arg(cartella.toHtmlEscaped());
        configurazione +=
            QStringLiteral("  <cachedir>%1</cachedir>\n"
                           "  <include ignore_missing=\"yes\">/etc/fonts/conf.d</include>\n"
                           "</fontconfig>\n")
                .arg(casa.filePath(QStringLiteral("cache")).toHtmlEscaped());
        const QString file = casa.filePath(QStringLiteral("fonts.conf"));
        QFile conf(file);
        QVERIFY(conf.open(QIODevice::WriteOnly));
        conf.write(configurazione.toUtf8());
        conf.close();

        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("FONTCONFIG_FILE"), file);
        env.insert(QStringLiteral("HOME"), casa.path());
        env.insert(QStringLiteral("XDG_DATA_HOME"), casa.filePath(QStringLiteral("data")));
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), casa.filePath(QStringLiteral("config")));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        QProcess figlio;
        figlio.setProcessEnvironment(env);
        figlio.start(QCoreApplication::applicationFilePath(),
                     {QString::fromLatin1(argomentoFiglio)});
        QVERIFY(figlio.waitForFinished(120000));
        QCOMPARE(figlio.exitCode(), 0);
        QCOMPARE(QString::fromLocal8Bit(figlio.readAllStandardOutput()).trimmed(), esito);
    }

    void aPrinterFailingMidDocumentShowsTheTrapMessageAndTheScreenStays_data()
    {
        QTest::addColumn<int>("riga");
        QTest::addColumn<bool>("allaFine");
        QTest::newRow("at the heading") << 1 << false;
        QTest::newRow("at the first row") << 3 << false;
        QTest::newRow("in the second block") << 15 << false;
        QTest::newRow("at the footer") << 33 << false;
        QTest::newRow("when the page is sent") << 0 << true;
    }
    void aPrinterFailingMidDocumentShowsTheTrapMessageAndTheScreenStays()
    {
        QFETCH(int, riga);
        QFETCH(bool, allaFine);
        auto guasta = std::make_unique<StampanteGuasta>();
        StampanteGuasta *stampante = guasta.get();
        stampante->guastoAllaRiga = riga;
        stampante->guastoAllaFine = allaFine;
        std::vector<std::unique_ptr<Printer>> elenco;
        elenco.push_back(std::move(guasta));
        (*t)->setPrinters(std::make_unique<Printers>(std::move(elenco)));

        costruisci(30);
        mostra(true);
        const QStringList prima = aspetto(*f);
        const StatoCondiviso statoPrima = s();

        stampa(true);

        QCOMPARE(t->boxes->boxes.size(), 1);
        const auto &box = t->boxes->boxes[0];
        QCOMPARE(box.text, ProblemaDiStampa);
        QCOMPARE(box.buttons, MessageBoxes::OkOnly);
        QCOMPARE(box.icon, MessageBoxes::NoIcon);
        QCOMPARE(box.title, QString());
        // Printing stopped at the fault.
        QCOMPARE(stampante->righe.size(), allaFine ? 35 : riga - 1);
        QCOMPARE(stampante->documenti, 0);
        QVERIFY(t->errors->errors.isEmpty());
        QCOMPARE(aspetto(*f), prima);
        QVERIFY(f->isVisible());
        for (int i = 1; i <= 30; ++i) {
            QCOMPARE(s().Operazioni[i], statoPrima.Operazioni[i]);
            QCOMPARE(s().RigheDocenti[i], statoPrima.RigheDocenti[i]);
        }
        QCOMPARE(s().NumeroRighe.value(), statoPrima.NumeroRighe.value());
    }

    void aRecordingPrinterToldToFailGivesTheTrapMessage()
    {
        costruisci(20);
        mostra(false);
        const QStringList prima = aspetto(*f);
        t->printer->failing = true;
        stampa(false);
        QCOMPARE(t->boxes->boxes.size(), 1);
        QCOMPARE(t->boxes->boxes[0].text, ProblemaDiStampa);
        QCOMPARE(t->printer->documents, 0);
        QCOMPARE(aspetto(*f), prima);
        QVERIFY(t->errors->errors.isEmpty());
    }

    void anErrorInTheFirstFontSettingIsNotTrapped()
    {
        auto guasta = std::make_unique<StampanteGuasta>();
        guasta->guastoAlCarattere = true;
        std::vector<std::unique_ptr<Printer>> elenco;
        elenco.push_back(std::move(guasta));
        (*t)->setPrinters(std::make_unique<Printers>(std::move(elenco)));
        costruisci(10);
        mostra(false);
        stampa(false);
        QVERIFY(t->boxes->boxes.isEmpty());
        QCOMPARE(t->errors->errors, QList<RuntimeError::Code>{RuntimeError::PrinterError});
    }

    void theTeachersSheetOnThePdfPrinterHoldsEveryRowAndSolutionOnOneA4Page()
    {
        QTemporaryDir cartella;
        QVERIFY(cartella.isValid());
        auto pdf = std::make_unique<PdfFilePrinter>(**t);
        PdfFilePrinter *stampante = pdf.get();
        stampante->setOutputDirectory(cartella.path());
        std::vector<std::unique_ptr<Printer>> elenco;
        elenco.push_back(std::move(pdf));
        (*t)->setPrinters(std::make_unique<Printers>(std::move(elenco)));
        costruisci(30, 2);
        QCOMPARE(s().TipoNumeri.value(), 3);
        mostra(true);
        stampa(true);
        QVERIFY(t->boxes->boxes.isEmpty());
        QVERIFY(t->errors->errors.isEmpty());
        QVERIFY(QFileInfo::exists(stampante->lastFile()));
        QCOMPARE(t->notices->notices.size(), 1);

        const PrintedPdf stampato(stampante->lastFile());
        QVERIFY2(stampato.error().isEmpty(), qPrintable(stampato.error()));
        QCOMPARE(stampato.pages(), 1);
        QVERIFY(qAbs(stampato.pageSize().width() - 595.28) < 0.5);
        QVERIFY(qAbs(stampato.pageSize().height() - 841.89) < 0.5);

        QStringList attese = {QStringLiteral("Nome e cognome"), SchedeTest::Titolo};
        for (int i = 1; i <= 30; ++i)
            attese << s().RigheDocenti[i];
        attese << SchedeTest::Sottotitolo
               << QStringLiteral("Livello di difficoltà: ") + SchedeTest::Sottotitolo;
        // pdftotext guesses the blanks between words from where they stand;
        // the words and their order are what the page says.
        QStringList lette;
        for (const QString &riga : stampato.lines())
            lette << riga.simplified();
        for (QString &riga : attese)
            riga = riga.simplified();
        QCOMPARE(lette, attese);
        // Every solution stands on the line of its question.
        const QRectF primaDomanda =
            stampato.boxOf(s().RigheDocenti[1].simplified().section(' ', 0, 0));
        QVERIFY(!primaDomanda.isNull());
        QVERIFY2(qAbs(primaDomanda.top() - (18 + 2000 / 20.0)) < 3,
                 qPrintable(QString::number(primaDomanda.top())));
    }
};

int main(int argc, char *argv[])
{
    if (argc > 1 && std::strcmp(argv[1], argomentoFiglio) == 0) {
        QApplication app(argc, argv);
        Fonts::installSubstitutions();
        TestContext t;
        SchedeTest::statoDiPartenza((*t).stato);
        auto &schede = (*t).form<FrmStampaSchede>();
        schede.Show();
        for (int i = 1; i <= 30; ++i)
            (*t).stato.Operazioni[i] = QStringLiteral("riga %1").arg(i);
        // The print button as the program would press it.
        schede.get<CommandButton>("CmdStampaSchedaAlunni").raiseClick();
        std::printf("box=%d printed=%d\n", int(t.boxes->boxes.size()), t.printer->documents);
        return 0;
    }
    QApplication app(argc, argv);
    TestStampaSchede test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_stampaschede.moc"
