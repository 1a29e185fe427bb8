#include "../drill/Alunno.h"
#include "certificate/FrmAttestato.h"
#include "classe/CodiceScheda.h"
#include "classe/FrmCopieClasse.h"
#include "classe/FrmRifaiCodice.h"
#include "classe/MenuClasse.h"
#include "classe/RigheClasse.h"
#include "classe/StampaClasse.h"
#include "classe/UnitaClasse.h"
#include "drill/frmOperativo.h"
#include "platform/CaratteriLeggibili.h"
#include "platform/Fonts.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Menu.h"
#include "platform/controls/OptionButton.h"
#include "platform/controls/PictureBox.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "report/FrmStampaEsercizio2.h"
#include "report/frmNome.h"
#include "sheets/FrmStampaSchede.h"
#include "sheets/SchedeTest.h"
#include "start/FrmInizio.h"
#include "support/PrintedPdf.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QMenuBar>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace ScreenTest;

namespace {

// The fonts actually embedded in a PDF, as pdffonts lists them.
QString caratteriDelPdf(const QString &file)
{
    QProcess p;
    p.start(QStringLiteral("pdffonts"), {file});
    if (!p.waitForFinished(30000))
        return {};
    return QString::fromLocal8Bit(p.readAllStandardOutput());
}

// Every control's widget font of a screen, by object name.
QMap<QString, QFont> caratteri(const Form &schermo)
{
    QMap<QString, QFont> m;
    for (Control *c : schermo.Controls())
        if (c->widget())
            m.insert(c->objectName(), c->widget()->font());
    m.insert(QStringLiteral("(schermo)"), schermo.font());
    return m;
}

} // namespace

// The high-readability font: the rule that turns a designed font into
// OpenDyslexic, every screen in it, and printouts in it that keep their rows
// apart and within the page.
class TestCaratteriLeggibili : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;

    void stampanteSuFile(QTemporaryDir &cartella, PdfFilePrinter **stampante)
    {
        auto pdf = std::make_unique<PdfFilePrinter>(**t);
        *stampante = pdf.get();
        pdf->setOutputDirectory(cartella.path());
        std::vector<std::unique_ptr<Printer>> elenco;
        elenco.push_back(std::move(pdf));
        (*t)->setPrinters(std::make_unique<Printers>(std::move(elenco)));
    }

    // A page as ink: no row past the printable width, and between every
    // two rows of text a band of paper, as many rows of ink as lines of text.
    void righeNellaPaginaESeparate(const QString &pdf, int righeDiTesto, double larghezzaTwips,
                                   int numeroPagina = 1)
    {
        QTemporaryDir cartella;
        const QString base = cartella.filePath(QStringLiteral("pagina"));
        const QString n = QString::number(numeroPagina);
        QProcess p;
        p.start(QStringLiteral("pdftoppm"),
                {QStringLiteral("-r"), QStringLiteral("144"), QStringLiteral("-gray"),
                 QStringLiteral("-f"), n, QStringLiteral("-l"), n, QStringLiteral("-singlefile"),
                 QStringLiteral("-png"), pdf, base});
        QVERIFY(p.waitForFinished(60000));
        const QImage pagina(base + QStringLiteral(".png"));
        QVERIFY(!pagina.isNull());
        // 144 dots an inch: 10 twips a dot. The printable area starts a
        // quarter inch in.
        const int destra = int((360 + larghezzaTwips) / 10) + 1;
        int bande = 0;
        bool inRiga = false;
        for (int y = 0; y < pagina.height(); ++y) {
            bool inchiostro = false;
            for (int x = 0; x < pagina.width(); ++x)
                if (qGray(pagina.pixel(x, y)) < 160) {
                    inchiostro = true;
                    QVERIFY2(x <= destra,
                             qPrintable(QStringLiteral("pagina %1: inchiostro a %2, oltre %3 "
                                                       "(riga %4)")
                                            .arg(numeroPagina)
                                            .arg(x)
                                            .arg(destra)
                                            .arg(y)));
                }
            if (inchiostro && !inRiga)
                ++bande;
            inRiga = inchiostro;
        }
        QVERIFY2(bande == righeDiTesto,
                 qPrintable(QStringLiteral("pagina %1: %2 righe d'inchiostro, %3 di testo")
                                .arg(numeroPagina)
                                .arg(bande)
                                .arg(righeDiTesto)));
    }

    // The same for every page, each with its own lines of text; and every
    // word within the printable width as pdftotext places it.
    void ognunaDellePagine(const QString &pdf, double larghezzaTwips)
    {
        const PrintedPdf stampato(pdf);
        QVERIFY2(stampato.error().isEmpty(), qPrintable(stampato.error()));
        const QStringList pagine = stampato.text().split(QLatin1Char('\f'));
        for (int numero = 1; numero <= stampato.pages(); ++numero) {
            int righe = 0;
            for (const QString &riga : pagine.value(numero - 1).split(QLatin1Char('\n')))
                if (!riga.trimmed().isEmpty())
                    ++righe;
            QVERIFY(righe > 0);
            righeNellaPaginaESeparate(pdf, righe, larghezzaTwips, numero);
            if (QTest::currentTestFailed())
                return;
        }
        const double margine = (360 + larghezzaTwips) / 20;
        for (const PrintedPdf::Word &w : stampato.words())
            QVERIFY2(w.box.right() <= margine + 0.5, qPrintable(QStringLiteral("%1 a %2, oltre %3")
                                                                    .arg(w.text)
                                                                    .arg(w.box.right())
                                                                    .arg(margine)));
    }

    // A copy for a person to look at, when QUADRIVO_IMMAGINI names a folder.
    static void copiaDaGuardare(const QString &pdf, const QString &nome)
    {
        if (const QString cartella = qEnvironmentVariable("QUADRIVO_IMMAGINI");
            !cartella.isEmpty()) {
            QFile::remove(QDir(cartella).filePath(nome));
            QFile::copy(pdf, QDir(cartella).filePath(nome));
        }
    }

    // The PDF's fonts include `famiglia` and none of the designed ones.
    static void nelCarattere(const QString &pdf, const QString &famiglia)
    {
        const QString fonts = caratteriDelPdf(pdf);
        QVERIFY2(fonts.contains(famiglia), qPrintable(fonts));
        QVERIFY2(!fonts.contains(QStringLiteral("Liberation")), qPrintable(fonts));
    }

    static void soloIlCarattereLeggibile(const QString &pdf)
    {
        nelCarattere(pdf, QStringLiteral("OpenDyslexic"));
        if (QTest::currentTestFailed())
            return;
        const QString fonts = caratteriDelPdf(pdf);
        QVERIFY2(!fonts.contains(QStringLiteral("Courier")), qPrintable(fonts));
    }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }
    void init()
    {
        t = std::make_unique<TestContext>();
        SchedeTest::statoDiPartenza((*t)->stato);
    }
    void cleanup()
    {
        t.reset();
        settle();
    }

    void laRegola_data()
    {
        QTest::addColumn<QString>("famiglia");
        QTest::addColumn<double>("punti");
        QTest::addColumn<bool>("grassetto");
        QTest::addColumn<QString>("leggibile");
        QTest::newRow("Arial 10") << "Arial" << 10.0 << false << CaratteriLeggibili::Famiglia;
        QTest::newRow("Arial 32 grassetto")
            << "Arial" << 32.0 << true << CaratteriLeggibili::Famiglia;
        QTest::newRow("Arial 8") << "Arial" << 8.0 << false << CaratteriLeggibili::Famiglia;
        QTest::newRow("Courier New 12")
            << "Courier New" << 12.0 << false << CaratteriLeggibili::FamigliaMono;
        QTest::newRow("Courier New 8")
            << "Courier New" << 8.0 << false << CaratteriLeggibili::FamigliaMono;
        QTest::newRow("Courier 14 grassetto")
            << "Courier" << 14.0 << true << CaratteriLeggibili::FamigliaMono;
    }
    void laRegola()
    {
        QFETCH(QString, famiglia);
        QFETCH(double, punti);
        QFETCH(bool, grassetto);
        QFETCH(QString, leggibile);
        QFont progettato(famiglia);
        progettato.setPointSizeF(punti);
        progettato.setBold(grassetto);

        CaratteriLeggibili c;
        QCOMPARE(c.adatta(progettato), progettato);
        c.setAttivi(true);
        const QFont f = c.adatta(progettato);
        QCOMPARE(QFontInfo(f).family(), leggibile);
        QCOMPARE(f.bold(), grassetto);
        // Measured as on paper (1440 dots an inch), where rows are packed.
        QImage carta(1, 1, QImage::Format_Mono);
        carta.setDotsPerMeterX(qRound(1440 / 0.0254));
        carta.setDotsPerMeterY(qRound(1440 / 0.0254));
        const QFontMetricsF prima(progettato, &carta), dopo(f, &carta);
        // The rows of the printed sheets and of the report are monospaced and
        // packed a line apart: their ink stays within the designed line, so
        // rows printed at their designed places never touch.
        const QString riga = QStringLiteral("  0,563  u = R.0 u 5 d 6 c 3 m  \u00b0 (Sec.12)");
        const QString piede =
            QStringLiteral("Livello di difficolt\u00e0: Scomposizione dei numeri");
        if (leggibile == CaratteriLeggibili::FamigliaMono)
            for (const QString &testo : {riga, piede})
                QVERIFY2(dopo.tightBoundingRect(testo).height() < prima.lineSpacing(),
                         qPrintable(QStringLiteral("%1 >= %2")
                                        .arg(dopo.tightBoundingRect(testo).height())
                                        .arg(prima.lineSpacing())));
        if (leggibile == CaratteriLeggibili::FamigliaMono) {
            // Columns stay where they were designed, rows as wide.
            QVERIFY2(qAbs(dopo.horizontalAdvance(riga) - prima.horizontalAdvance(riga)) <
                         prima.horizontalAdvance(QLatin1Char('0')),
                     qPrintable(QStringLiteral("%1 / %2")
                                    .arg(dopo.horizontalAdvance(riga))
                                    .arg(prima.horizontalAdvance(riga))));
        } else {
            // The same size, the small letters not smaller, the letters
            // further apart.
            QCOMPARE(f.pointSizeF(), punti);
            QVERIFY2(dopo.tightBoundingRect(QStringLiteral("x")).height() >=
                         prima.tightBoundingRect(QStringLiteral("x")).height(),
                     qPrintable(famiglia));
            QCOMPARE(f.letterSpacingType(), QFont::PercentageSpacing);
            QVERIFY(f.letterSpacing() > 100);
        }
    }

    // Every screen in the font and back, exactly as designed.
    void gliSchermiNelCarattereEIndietro()
    {
        QList<Form *> schermi = {&(*t)->form<FrmInizio>(), &(*t)->form<frmNome>(),
                                 &(*t)->form<FrmStampaSchede>(),
                                 &(*t)->form<FrmStampaEsercizio2>()};
        QList<QMap<QString, QFont>> progettati;
        for (Form *s : schermi)
            progettati << caratteri(*s);

        (*t)->setCaratteriLeggibili(true);
        for (Form *s : schermi) {
            for (Control *c : s->Controls()) {
                if (!c->widget() || c->kind() == ControlKind::Timer)
                    continue;
                const QString famiglia = QFontInfo(c->widget()->font()).family();
                QVERIFY2(famiglia == CaratteriLeggibili::Famiglia ||
                             famiglia == CaratteriLeggibili::FamigliaMono,
                         qPrintable(c->objectName() + QStringLiteral(": ") + famiglia));
            }
            if (s->findChild<QMenuBar *>())
                QCOMPARE(QFontInfo(s->findChild<QMenuBar *>()->font()).family(),
                         CaratteriLeggibili::Famiglia);
        }
        // A screen loaded now is built in it.
        frmOperativo &esercizio = (*t)->form<frmOperativo>();
        QCOMPARE(QFontInfo(esercizio.get<Control>("lblNumero").widget()->font()).family(),
                 CaratteriLeggibili::Famiglia);
        QCOMPARE(QFontInfo(esercizio.get<Control>("LblContatore").widget()->font()).family(),
                 CaratteriLeggibili::FamigliaMono);

        (*t)->setCaratteriLeggibili(false);
        for (int i = 0; i < schermi.size(); ++i)
            QCOMPARE(caratteri(*schermi[i]), progettati[i]);
        // The same as a screen built with the switch never touched.
        TestContext altro;
        SchedeTest::statoDiPartenza(altro->stato);
        QCOMPARE(caratteri(esercizio), caratteri(altro->form<frmOperativo>()));
        esercizio.Unload();
    }

    void laSchedaStampataNelCarattere()
    {
        QTemporaryDir cartella;
        PdfFilePrinter *stampante = nullptr;
        stampanteSuFile(cartella, &stampante);
        (*t)->setCaratteriLeggibili(true);
        auto &schede = (*t)->form<FrmStampaSchede>();
        QVERIFY(showActive(schede));
        click(schede.get<OptionButton>("Opt1", 2));
        schede.get<OptionButton>("Option1", 2).SetFocus();
        key(Qt::Key_Return);
        click(schede.get<OptionButton>("Option2", 0));
        QCOMPARE((*t)->stato.NumeroRighe.value(), 30);
        click(schede.get<CommandButton>("CmdVisualizzaSchedaDocenti"));
        click(schede.get<CommandButton>("CmdStampaSchedaDocenti"));
        QVERIFY(t->boxes->boxes.isEmpty());
        QVERIFY(t->errors->errors.isEmpty());
        QVERIFY(QFileInfo::exists(stampante->lastFile()));

        nelCarattere(stampante->lastFile(), QStringLiteral("OpenDyslexicMono"));
        if (QTest::currentTestFailed())
            return;
        const PrintedPdf stampato(stampante->lastFile());
        QVERIFY2(stampato.error().isEmpty(), qPrintable(stampato.error()));
        QCOMPARE(stampato.pages(), 1);
        // Every row and solution is there, in order.
        QStringList lette;
        for (const QString &riga : stampato.lines())
            lette << riga.simplified();
        for (int i = 1; i <= 30; ++i)
            QCOMPARE(lette.value(i + 1), (*t)->stato.RigheDocenti[i].simplified());
        righeNellaPaginaESeparate(stampante->lastFile(), int(stampato.lines().size()),
                                  stampante->ScaleWidth());
    }

    void ilResocontoStampatoNelCarattere()
    {
        QTemporaryDir cartella;
        PdfFilePrinter *stampante = nullptr;
        stampanteSuFile(cartella, &stampante);
        (*t)->setCaratteriLeggibili(true);
        StatoCondiviso &s = (*t)->stato;
        // Twenty exercises, some with two wrong tries: the longest lines.
        for (int i = 1; i <= 20; ++i)
            s.Operazioni[i] =
                i % 3 ? QStringLiteral("     4700  u = R.4 uk  7  h  (Sec.12)")
                      : QStringLiteral("  0,473  m = R.4 d  7  c  * "
                                       "                R.3 d  7  c  * "
                                       "                R.4 d  7  c  3  m  ° (Sec.124)");
        s.NumeroEsercizio = 20;
        auto &resoconto = (*t)->form<FrmStampaEsercizio2>();
        QVERIFY(showActive(resoconto));
        resoconto.get<Menu>("mnuStampaEsercizi").action()->trigger();
        QVERIFY(t->errors->errors.isEmpty());
        QVERIFY(QFileInfo::exists(stampante->lastFile()));
        nelCarattere(stampante->lastFile(), QStringLiteral("OpenDyslexic"));
        if (QTest::currentTestFailed())
            return;
        const PrintedPdf stampato(stampante->lastFile());
        QVERIFY2(stampato.error().isEmpty(), qPrintable(stampato.error()));
        QVERIFY(stampato.text().simplified().contains(QStringLiteral("R.4 uk 7 h")));
        righeNellaPaginaESeparate(stampante->lastFile(), int(stampato.lines().size()),
                                  stampante->ScaleWidth());
    }

    // The report of a series played through the drill in the font, with
    // clicks: whole and decimal numbers of the thousands family, some closed
    // at the third try, so its lines are as long as a series makes them.
    void ilResocontoDiUnaSerieGiocataNelCarattere()
    {
        QTemporaryDir cartella;
        PdfFilePrinter *stampante = nullptr;
        stampanteSuFile(cartella, &stampante);
        (*t)->setCaratteriLeggibili(true);
        Alunno a(*t);
        StatoCondiviso &s = (*t)->stato;
        // wxyz with three decimals, wxyz whole, wxyz with one decimal, 0xyz
        // with three decimals.
        const int tipi[] = {42, 15, 44, 40};
        a.preparaSerie(tipi[0]);
        a.prossimeCifre(4, 7, 3, 2);
        QVERIFY(a.apri());
        QCOMPARE(QFontInfo(a.etichetta("lblNumero").widget()->font()).family(),
                 CaratteriLeggibili::Famiglia);
        for (int n = 1; n <= 20; ++n) {
            if (n > 1) {
                a.prossimoEsercizio(tipi[n % 4], n % 9 + 1, (n * 7) % 9 + 1, (n * 5) % 9 + 1,
                                    (n * 2) % 9 + 1);
                a.avanti();
            }
            QCOMPARE(s.NumeroEsercizio.value(), n);
            // The answer is a digit and a five-character symbol a place.
            const QString giusta = s.Risposta;
            QCOMPARE(giusta.size(), 24);
            switch (n % 3) {
            case 1: // right at once
                a.scriviGiusta();
                a.passano(3 + n);
                a.verifica();
                QCOMPARE(a.testo("LblEsito1"), QStringLiteral("Esatto"));
                break;
            case 2: // wrong, then help accepted
                a.scrivi(giusta.left(12));
                a.verifica();
                QCOMPARE(a.testo("LblEsito1"), QStringLiteral("Errato"));
                a.passano(20 + n);
                a.si();
                break;
            default: // wrong twice, help refused: the program steps in
                a.scrivi(giusta.left(6));
                a.verifica();
                a.no();
                a.scrivi(giusta.left(18));
                a.verifica();
                QCOMPARE(a.testo("LblEsito1"), QStringLiteral("Errato"));
                a.no();
                QVERIFY(a.inPrimoPiano("fraIntervento"));
                a.passano(100 + n);
                a.ok();
                break;
            }
            QVERIFY(!s.Operazioni[n].isEmpty());
        }
        QVERIFY(a.inPrimoPiano("fraAvviso"));
        // Among them the longest a series writes: three tries and the solution.
        QVERIFY2(s.Operazioni[18].count(QLatin1Char('*')) == 2 &&
                     s.Operazioni[18].contains(QStringLiteral("(Sec.118)")),
                 qPrintable(s.Operazioni[18]));

        // "Stampa" on the end panel opens the report, in the font; its menu
        // entry, clicked on the menu bar, prints it.
        mouseDown(a.schermo().get<OptionButton>("optAvviso", 0));
        auto *resoconto = (*t)->screens().find<FrmStampaEsercizio2>();
        QVERIFY(resoconto);
        QVERIFY(QTest::qWaitForWindowActive(resoconto));
        for (int k = 1; k <= 20; ++k)
            QCOMPARE(resoconto->get<Label>("LblOp", k).Caption(), s.Operazioni[k]);
        QCOMPARE(QFontInfo(resoconto->get<Label>("LblOp", 1).widget()->font()).family(),
                 CaratteriLeggibili::FamigliaMono);
        auto *barra = resoconto->findChild<QMenuBar *>();
        QVERIFY(barra);
        QAction *stampa = resoconto->get<Menu>("mnuStampaEsercizi").action();
        const QRect voce = barra->actionGeometry(stampa);
        QVERIFY(!voce.isEmpty());
        QTest::mouseClick(barra, Qt::LeftButton, {}, voce.center());
        QTRY_VERIFY(QFileInfo::exists(stampante->lastFile()));
        QVERIFY(t->errors->errors.isEmpty());
        QVERIFY(t->boxes->boxes.isEmpty());

        copiaDaGuardare(stampante->lastFile(), QStringLiteral("resoconto_serie_leggibile.pdf"));
        soloIlCarattereLeggibile(stampante->lastFile());
        if (QTest::currentTestFailed())
            return;
        const PrintedPdf stampato(stampante->lastFile());
        QVERIFY2(stampato.error().isEmpty(), qPrintable(stampato.error()));
        QCOMPARE(stampato.pages(), 1);
        // The heading, then every exercise's line, in order.
        QStringList lette;
        for (const QString &riga : stampato.lines())
            lette << riga.simplified();
        QCOMPARE(lette.size(), 21);
        for (int k = 1; k <= 20; ++k)
            QCOMPARE(lette[k], s.Operazioni[k].simplified());
        ognunaDellePagine(stampante->lastFile(), stampante->ScaleWidth());
        a.schermo().Unload();
    }

    // A class set in the font: three copies of 30 decimal numbers of a
    // four-symbol family and their keys, one document, a page a sheet; then
    // one of them again from its code.
    void laSerieDiClasseStampataNelCarattere()
    {
        QTemporaryDir cartella;
        PdfFilePrinter *stampante = nullptr;
        stampanteSuFile(cartella, &stampante);
        SchedeTest::statoDiPartenza((*t)->stato, 3); // uk, h, da, u
        MenuClasse::Installa(**t);
        (*t)->setCaratteriLeggibili(true);
        auto &schede = (*t)->form<FrmStampaSchede>();
        QVERIFY(showActive(schede));
        schede.get<Menu>("mnuCopieClasse").action()->trigger();
        auto *copie = (*t)->screens().find<FrmCopieClasse>();
        QVERIFY(copie);
        QVERIFY(QTest::qWaitForWindowActive(copie));
        QCOMPARE(focusedControl(*copie), &copie->get<Control>("cboNumeri"));
        key(Qt::Key_Home);
        key(Qt::Key_Down); // "Numeri con virgola"
        key(Qt::Key_E, Qt::AltModifier);
        key(Qt::Key_End); // 30 rows
        key(Qt::Key_C, Qt::AltModifier);
        key(Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(focused(), QStringLiteral("3"));
        key(Qt::Key_Return);
        QVERIFY(t->errors->errors.isEmpty());
        QVERIFY(t->boxes->boxes.isEmpty());
        QCOMPARE(copie->get<Label>("lblStato").Caption(),
                 QStringLiteral("Stampate 3 copie e le loro soluzioni (6 pagine)."));
        const QString serie = stampante->lastFile();
        QVERIFY(QFileInfo::exists(serie));

        copiaDaGuardare(serie, QStringLiteral("serie_classe_leggibile.pdf"));
        soloIlCarattereLeggibile(serie);
        if (QTest::currentTestFailed())
            return;
        QVERIFY2(caratteriDelPdf(serie).contains(CaratteriLeggibili::FamigliaMono),
                 qPrintable(caratteriDelPdf(serie)));
        const PrintedPdf stampato(serie);
        QVERIFY2(stampato.error().isEmpty(), qPrintable(stampato.error()));
        QCOMPARE(stampato.pages(), 6);
        const QStringList pagine = stampato.text().split(QLatin1Char('\f'));
        static const QRegularExpression piede(
            QStringLiteral("Scheda (\\d\\d) - codice (\\w\\w\\w-\\w\\w\\w)( - soluzioni)?"));
        RigheClasse rifatte;
        QString codice;
        bool troppoLarghe = false;
        for (int p = 0; p < 6; ++p) {
            const QRegularExpressionMatch m = piede.match(pagine[p]);
            QVERIFY2(m.hasMatch(), qPrintable(pagine[p]));
            QCOMPARE(m.captured(3).isEmpty(), p < 3);
            const auto scelta = CodiceScheda::Leggi(m.captured(2));
            QVERIFY(scelta.has_value());
            QCOMPARE(scelta->tipoNumeri, 2);
            QCOMPARE(scelta->unita, UnitaClasse::IndiceDi((*t)->stato));
            QCOMPARE(scelta->righe, 30);
            if (p == 4)
                codice = m.captured(2);
            const auto copia = rifatte.Costruisci(*scelta);
            const QStringList &righe = p < 3 ? copia.alunni : copia.docenti;
            // Every row, words in order, each on its own line.
            QStringList lette;
            for (const QString &riga : pagine[p].split(QLatin1Char('\n')))
                if (!riga.trimmed().isEmpty())
                    lette << riga.simplified();
            for (const QString &riga : righe)
                QVERIFY2(lette.contains(riga.simplified()),
                         qPrintable(QStringLiteral("pagina %1: %2").arg(p + 1).arg(riga)));
            // Rows long enough that, at their own size in this font, some
            // would pass the width: the set must make them smaller.
            stampante->setFontName(QStringLiteral("Courier New"));
            stampante->setFontSize(p < 3 ? 12 : 14);
            for (const QString &riga : righe)
                if (stampante->TextWidth(riga) >
                    stampante->ScaleWidth() - StampaClasse::MargineRighe)
                    troppoLarghe = true;
        }
        QVERIFY(troppoLarghe);
        ognunaDellePagine(serie, stampante->ScaleWidth());
        if (QTest::currentTestFailed())
            return;

        // The fifth sheet, the key of the second copy, again from its code.
        key(Qt::Key_Escape);
        settle();
        QVERIFY(!(*t)->screens().find<FrmCopieClasse>());
        schede.get<Menu>("mnuRifaiCodice").action()->trigger();
        auto *rifai = (*t)->screens().find<FrmRifaiCodice>();
        QVERIFY(rifai);
        QVERIFY(QTest::qWaitForWindowActive(rifai));
        QTest::keyClicks(focused(), codice);
        key(Qt::Key_Return);
        QVERIFY(t->boxes->boxes.isEmpty());
        click(rifai->get<CommandButton>("cmdDocenti"));
        click(rifai->get<CommandButton>("cmdStampa"));
        QVERIFY(t->errors->errors.isEmpty());
        QVERIFY(t->boxes->boxes.isEmpty());
        QVERIFY(stampante->lastFile() != serie);
        copiaDaGuardare(stampante->lastFile(), QStringLiteral("rifai_codice_leggibile.pdf"));
        soloIlCarattereLeggibile(stampante->lastFile());
        if (QTest::currentTestFailed())
            return;
        const PrintedPdf copia(stampante->lastFile());
        QVERIFY2(copia.error().isEmpty(), qPrintable(copia.error()));
        QCOMPARE(copia.pages(), 1);
        // Line for line the sheet of the set, but for the footer's last line.
        QStringList nellaSerie;
        for (const QString &riga : pagine[4].split(QLatin1Char('\n')))
            if (!riga.trimmed().isEmpty())
                nellaSerie << riga.simplified();
        QStringList daSola;
        for (const QString &riga : copia.lines())
            daSola << riga.simplified();
        QCOMPARE(daSola.size(), nellaSerie.size());
        QCOMPARE(daSola.mid(0, daSola.size() - 1), nellaSerie.mid(0, nellaSerie.size() - 1));
        QCOMPARE(daSola.last(), QStringLiteral("Codice %1 - soluzioni").arg(codice));
        ognunaDellePagine(stampante->lastFile(), stampante->ScaleWidth());
        rifai->Unload();
    }

    void lAttestatoStampatoNelCarattere()
    {
        QTemporaryDir cartella;
        PdfFilePrinter *stampante = nullptr;
        stampanteSuFile(cartella, &stampante);
        (*t)->setCaratteriLeggibili(true);
        StatoCondiviso &s = (*t)->stato;
        s.EsatteComplessive = 18;
        s.NumeroEsercizio = 20;
        s.NomeAttestato = QStringLiteral("MARIO");
        auto &attestato = (*t)->form<FrmAttestato>();
        QVERIFY(showActive(attestato));
        // Every line of the picture drawn in the font, one under the other
        // as designed.
        const auto &righe = attestato.get<PictureBox>("Picture1").printedLines();
        QVERIFY(righe.size() > 20);
        for (const auto &riga : righe)
            QCOMPARE(QFontInfo(riga.font).family(), CaratteriLeggibili::Famiglia);
        mouseDown(attestato.get<OptionButton>("Option5", 0));
        QVERIFY(t->errors->errors.isEmpty());
        QVERIFY(QFileInfo::exists(stampante->lastFile()));
        nelCarattere(stampante->lastFile(), QStringLiteral("OpenDyslexic"));
        if (QTest::currentTestFailed())
            return;
        const PrintedPdf stampato(stampante->lastFile());
        QVERIFY2(stampato.error().isEmpty(), qPrintable(stampato.error()));
        // pdftotext takes wide letter spacing for blanks: the letters, in order.
        QString lettere = stampato.text();
        lettere.remove(QRegularExpression(QStringLiteral("\\s")));
        QVERIFY2(lettere.contains(QStringLiteral("DIPLOMADIMERITO")), qPrintable(stampato.text()));
        righeNellaPaginaESeparate(stampante->lastFile(), int(stampato.lines().size()),
                                  stampante->ScaleWidth());
        attestato.Unload();
    }
};

QTEST_MAIN(TestCaratteriLeggibili)
#include "tst_caratterileggibili.moc"
