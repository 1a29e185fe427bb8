// Saves a PNG of every screen, at its design size and at twice that size, in
// the states worth looking at, then all again in the high-readability font
// (folder "leggibili"). Run through scripts/screenshots.sh. The clock is
// pinned and moves only as the pictures' pupil clicks, so the exercises drawn
// and the times shown are the same on every run: two runs can be compared
// pixel for pixel.
#include "app/Avvio.h"
#include "classe/CodiceScheda.h"
#include "certificate/FrmAttestato.h"
#include "core/AppContext.h"
#include "core/FamiglieSimboli.h"
#include "drill/frmOperativo.h"
#include "platform/Twips.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Label.h"
#include "platform/controls/Menu.h"
#include "platform/controls/Timer.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "report/FrmStampaEsercizio2.h"
#include "registro/ArchivioRegistro.h"
#include "registro/frmVerifiche.h"
#include "report/frmNome.h"
#include "services/frmSceltaStampante.h"
#include "support/TestDoubles.h"
#include "sheets/FrmStampaSchede.h"
#include "start/FrmInizio.h"
#include "start/FrmOpzioni.h"
#include "start/frmAutore.h"
#include "start/frmIstruzioni.h"
#include "verifica/SerieDaCodice.h"
#include "verifica/frmVerifica.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QMenu>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

namespace {

QString cartella;
// The second round: every screen in the high-readability font.
bool leggibili = false;
// The clock of the context being photographed.
PinnedClock *orologio = nullptr;

// A context on a pinned clock, in the round's letters.
void prepara(AppContext &ctx)
{
    auto fermo = std::make_unique<PinnedClock>();
    orologio = fermo.get();
    ctx.setClock(std::move(fermo));
    ctx.setCaratteriLeggibili(leggibili);
}

void salva(Form &schermo, const QString &nome)
{
    const QSize design(schermo.client()->size());
    for (int scala : {1, 2}) {
        schermo.setInnerSize(Twips::fromPixels(design.width() * scala),
                             Twips::fromPixels(design.height() * scala));
        QApplication::processEvents();
        const QString file =
            QDir(cartella).filePath(QStringLiteral("%1-%2x.png").arg(nome).arg(scala));
        schermo.grab().save(file);
        std::printf("%s\n", qPrintable(file));
    }
    schermo.setInnerSize(Twips::fromPixels(design.width()), Twips::fromPixels(design.height()));
    QApplication::processEvents();
}

void apriTendina(FrmInizio &inizio)
{
    auto &timer = inizio.get<Timer>("timerTendine");
    timer.setScripted(true);
    for (int i = 0; i < 200 && timer.Enabled(); ++i)
        timer.tick();
}

// ---- Drill screen ----

// A click, a second and a half after the one before: a pupil's pace.
void premi(Form &schermo, const char *nome, int indice = -1)
{
    orologio->advance(1.5);
    QWidget *w = schermo.get<Control>(nome, indice).widget();
    QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, w->rect().center());
}

void scrivi(frmOperativo &f, const QList<int> &tasti)
{
    for (int tasto : tasti)
        premi(f, "Command1", tasto);
}

// The drill with the thousands family: typing, help, the program stepping
// in, the shown answer and the end of the series.
void scattiOperativo(AppContext &ctx)
{
    StatoCondiviso &s = ctx.stato;
    FamiglieSimboli::applica(s, 3);
    s.TipoNumeri = 1;
    s.DescrizioneNumeri = QStringLiteral(" Scomponi: numeri interi");
    s.DescrizioneSimboli = QStringLiteral(" simboli decrescenti");
    frmOperativo::collegaTipoEsercizio(ctx);

    auto &f = ctx.form<frmOperativo>();
    f.Show();
    QApplication::processEvents();
    salva(f, QStringLiteral("frmOperativo-start"));

    scrivi(f, f.TastiPer(s.Risposta).mid(0, 3));
    salva(f, QStringLiteral("frmOperativo-answering"));

    premi(f, "Command1", 14);
    scrivi(f, {1, 13});
    premi(f, "Command1", 15);
    salva(f, QStringLiteral("frmOperativo-help"));

    premi(f, "Command3", 2);
    scrivi(f, {2, 12});
    premi(f, "Command1", 15);
    premi(f, "Command3", 2);
    salva(f, QStringLiteral("frmOperativo-intervention"));

    premi(f, "optOK");
    salva(f, QStringLiteral("frmOperativo-solution"));

    premi(f, "Command1", 16);
    scrivi(f, f.TastiPer(s.Risposta));
    premi(f, "Command1", 15);
    salva(f, QStringLiteral("frmOperativo-right"));

    while (s.NumeroEsercizio < 20) {
        premi(f, "Command1", 16);
        scrivi(f, f.TastiPer(s.Risposta));
        premi(f, "Command1", 15);
    }
    salva(f, QStringLiteral("frmOperativo-end"));
    f.Unload();
}

// The options panel as a teacher first sees it, then with a red page, blue
// text and green scanning chosen and the small letters in the preview.
void scattiOpzioni(AppContext &ctx)
{
    auto &opzioni = ctx.form<FrmOpzioni>();
    opzioni.Show();
    QApplication::setActiveWindow(&opzioni);
    if (!QTest::qWaitForWindowActive(&opzioni, 2000))
        std::printf("FrmOpzioni did not become active\n");
    salva(opzioni, QStringLiteral("FrmOpzioni-start"));

    for (auto [gruppo, indice] : {std::pair{"Option1", 10},
                                  {"Option27", 5},
                                  {"Option17", 7},
                                  {"Option9", 1},
                                  {"Option6", 2}})
        QTest::mouseClick(opzioni.get<Control>(gruppo, indice).widget(), Qt::LeftButton);
    opzioni.get<Control>("Option5", 1).SetFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_3);
    salva(opzioni, QStringLiteral("FrmOpzioni-choices"));
    opzioni.Unload();
}

// ---- Worksheets and printer choice ----

// Notices are not shown here: the printed file's place is in the console.
class NotiziaInConsole final : public Notifications
{
public:
    void notify(const QString &text) override { std::printf("%s\n", qPrintable(text)); }
};

// The worksheet of mixed numbers as a teacher sees it: at start, with the
// pupils' sheet and with the teachers' sheet, which is also printed to a PDF
// next to the pictures; then the printer screen over it.
void scattiSchede()
{
    AppContext ctx;
    prepara(ctx);
    ctx.setNotifications(std::make_unique<NotiziaInConsole>());
    auto pdf = std::make_unique<PdfFilePrinter>(ctx);
    pdf->setOutputDirectory(cartella);
    std::vector<std::unique_ptr<Printer>> stampanti;
    stampanti.push_back(std::move(pdf));
    ctx.setPrinters(std::make_unique<Printers>(std::move(stampanti)));
    StatoCondiviso &s = ctx.stato;
    s.FamigliaSimboli = 1;
    FamiglieSimboli::applica(s, 1);
    s.TitoloArgomento = QStringLiteral("SISTEMA DECIMALE");
    s.SottotitoloArgomento = QStringLiteral("Scomposizione dei numeri");
    s.DescrizioneSimboli = QStringLiteral(" simboli decrescenti");

    auto &schede = ctx.form<FrmStampaSchede>();
    schede.Show();
    QApplication::setActiveWindow(&schede);
    if (!QTest::qWaitForWindowActive(&schede, 2000))
        std::printf("FrmStampaSchede did not become active\n");
    salva(schede, QStringLiteral("FrmStampaSchede-start"));

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    premi(schede, "Option2", 0);
    premi(schede, "CmdVisualizzaSchedaAlunni");
    salva(schede, QStringLiteral("FrmStampaSchede-alunni"));
    premi(schede, "CmdVisualizzaSchedaDocenti");
    salva(schede, QStringLiteral("FrmStampaSchede-docenti"));
    premi(schede, "CmdStampaSchedaDocenti");

    schede.get<Menu>("mnuStampante").action()->trigger();
    auto &scelta = ctx.form<frmSceltaStampante>();
    // The entry shown picked again: the label of the choice fills in.
    QComboBox *elenco = scelta.get<ComboBox>("Combo1").combo();
    elenco->showPopup();
    QTest::keyClick(elenco->view(), Qt::Key_Return);
    salva(scelta, QStringLiteral("frmSceltaStampante"));
    schede.Unload();
    scelta.Unload();
}

// ---- Measures ----

// The start screen with one of its menus open over it (opened by Alt and
// its letter): the drop-down is a window of its own, drawn onto the
// screen's picture where it stands.
void salvaConTendina(FrmInizio &inizio, QMenu &tendina, Qt::Key lettera, const QString &nome)
{
    const QSize design(inizio.client()->size());
    for (int scala : {1, 2}) {
        inizio.setInnerSize(Twips::fromPixels(design.width() * scala),
                            Twips::fromPixels(design.height() * scala));
        QApplication::processEvents();
        tendina.hide();
        QTest::keyClick(&inizio, lettera, Qt::AltModifier);
        QApplication::processEvents();
        QPixmap quadro = inizio.grab();
        {
            QPainter p(&quadro);
            p.drawPixmap(tendina.mapToGlobal(QPoint()) - inizio.mapToGlobal(QPoint()),
                         tendina.grab());
        }
        const QString file =
            QDir(cartella).filePath(QStringLiteral("%1-%2x.png").arg(nome).arg(scala));
        quadro.save(file);
        std::printf("%s\n", qPrintable(file));
    }
    inizio.setInnerSize(Twips::fromPixels(design.width()), Twips::fromPixels(design.height()));
    QApplication::processEvents();
}

// A measure chosen from the keyboard (the menu open on the way), the start
// screen showing it, and the drill in it with an answer begun.
void scattiMisure()
{
    AppContext ctx;
    prepara(ctx);
    auto &inizio = ctx.form<FrmInizio>();
    inizio.Show();
    QApplication::setActiveWindow(&inizio);
    if (!QTest::qWaitForWindowActive(&inizio, 2000))
        std::printf("FrmInizio did not become active\n");
    apriTendina(inizio);
    QMenu *tendina = inizio.get<Menu>("mnuMisure").action()->menu();
    salvaConTendina(inizio, *tendina, Qt::Key_M, QStringLiteral("FrmInizio-menu-misure"));
    // "Lunghezze: km hm dam m", the second entry.
    QTest::keyClick(tendina, Qt::Key_Down);
    QTest::keyClick(tendina, Qt::Key_Return);
    QApplication::processEvents();
    salva(inizio, QStringLiteral("FrmInizio-misura"));

    // Whole numbers, the order, "Vai", with the mouse.
    premi(inizio, "Option1", 0);
    premi(inizio, "Option2", 0);
    premi(inizio, "Option3", 0);
    auto &f = ctx.form<frmOperativo>();
    QApplication::processEvents();
    scrivi(f, f.TastiPer(ctx.stato.Risposta).mid(0, 4));
    salva(f, QStringLiteral("frmOperativo-misura"));
    f.Unload();
    inizio.Unload();
}

} // namespace

// After a series: the report, the name being typed, the certificate with a
// grade and one that cannot be printed.
void scattiResoconto(AppContext &ctx)
{
    auto &resoconto = ctx.form<FrmStampaEsercizio2>();
    resoconto.Show();
    salva(resoconto, QStringLiteral("FrmStampaEsercizio2"));

    auto &nome = ctx.form<frmNome>();
    nome.Show();
    for (int lettera : {10, 0, 15, 8, 12})
        premi(nome, "Command1", lettera);
    salva(nome, QStringLiteral("frmNome"));
    nome.Unload();

    auto &attestato = ctx.form<FrmAttestato>();
    salva(attestato, QStringLiteral("FrmAttestato-printable"));
    attestato.Unload();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    ctx.stato.EsatteComplessive = 0;
    auto &negato = ctx.form<FrmAttestato>();
    salva(negato, QStringLiteral("FrmAttestato-not-printable"));
    negato.Unload();
    resoconto.Unload();
}

// A verifica: the code typed on the on-screen keys, a refused code, the
// name, the drill on the code's rows; the teacher's table of a class.
void scattiVerifica()
{
    AppContext ctx;
    prepara(ctx);
    CodiceScheda::Scelta scelta;
    scelta.unita = 1;
    scelta.righe = 10;
    scelta.seme = 2026;
    const QString codice = CodiceScheda::Componi(scelta);
    auto &verifica = ctx.form<frmVerifica>();
    verifica.Show();
    for (int i = 0; i < 4; ++i)
        premi(verifica, "Command1", int(CodiceScheda::Alfabeto.indexOf(codice.at(i < 3 ? i : 4))));
    salva(verifica, QStringLiteral("frmVerifica-code"));
    premi(verifica, "Command1", 0);
    premi(verifica, "Command1", 1);
    QTest::mousePress(verifica.get<Control>("Option4").widget(), Qt::LeftButton);
    salva(verifica, QStringLiteral("frmVerifica-refused"));
    verifica.Unload();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    auto &nome = ctx.form<frmVerifica>();
    nome.Show();
    for (QChar c : codice)
        if (c != QLatin1Char('-'))
            premi(nome, "Command1", int(CodiceScheda::Alfabeto.indexOf(c)));
    QTest::mousePress(nome.get<Control>("Option4").widget(), Qt::LeftButton);
    for (int lettera : {10, 0, 15, 8, 0})
        premi(nome, "Command2", lettera);
    salva(nome, QStringLiteral("frmVerifica-name"));
    QTest::mousePress(nome.get<Control>("Option4").widget(), Qt::LeftButton);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    auto &esercizi = ctx.form<frmOperativo>();
    salva(esercizi, QStringLiteral("frmOperativo-verifica"));
    esercizi.Unload();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    QTemporaryDir dati;
    const auto impostazioni = ImpostazioniRegistro::sqlite(dati.filePath("registro.sqlite"));
    {
        ArchivioRegistro archivio(impostazioni, QStringLiteral("scatti"));
        const QStringList nomi = {"ADA", "BRUNO", "CARLO", "DORA", "ELIA", "FEDE", "GIADA",
                                  "LUCA", "MARTA", "NINO", "OLGA", "PIETRO", "ADA"};
        for (int a = 0; a < nomi.size(); ++a) {
            SerieRegistrata s;
            s.codice = QStringLiteral("scatto-%1").arg(a);
            s.inizio = QDateTime(QDate(2026, 11, 20), QTime(9, a));
            s.fine = s.inizio.addSecs(300);
            s.nome = nomi.at(a);
            s.verifica = codice;
            s.postazione = QStringLiteral("pc%1").arg(a % 4 + 1);
            const int quanti = a == 5 ? 6 : 10;
            for (int e = 1; e <= quanti; ++e)
                s.esercizi.append({e, QString(), double(5 + (a * 7 + e * 3) % 20),
                                   (a + e) % 7 == 0 ? 4 : (a * e) % 5 == 3 ? 3 : (a + e) % 4 == 0 ? 2 : 1});
            s.terminata = quanti == 10;
            archivio.scrivi(s);
        }
    }
    auto &tabella = ctx.screens().get<frmVerifiche>(
        [&] { return new frmVerifiche(ctx, impostazioni); });
    tabella.Show();
    salva(tabella, QStringLiteral("frmVerifiche"));
    tabella.Unload();
}

void tuttiGliSchermi()
{
    QDir().mkpath(cartella);

    AppContext ctx;
    prepara(ctx);
    auto &inizio = ctx.form<FrmInizio>();
    inizio.Show();
    apriTendina(inizio);
    salva(inizio, QStringLiteral("FrmInizio-start"));
    QMenu *voce = inizio.get<Menu>("mnuVoce").action()->menu();
    salvaConTendina(inizio, *voce, Qt::Key_V, QStringLiteral("FrmInizio-menu-voce"));
    voce->hide();
    QMenu *verifica = inizio.get<Menu>("mnuVerifica").action()->menu();
    salvaConTendina(inizio, *verifica, Qt::Key_I, QStringLiteral("FrmInizio-menu-verifica"));
    verifica->hide();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    salva(inizio, QStringLiteral("FrmInizio-order"));

    auto &istruzioni = ctx.form<frmIstruzioni>();
    istruzioni.Show();
    salva(istruzioni, QStringLiteral("frmIstruzioni"));
    istruzioni.Unload();

    auto &autore = ctx.form<frmAutore>();
    autore.Show();
    salva(autore, QStringLiteral("frmAutore"));
    autore.Unload();

    scattiOperativo(ctx);
    scattiResoconto(ctx);
    scattiOpzioni(ctx);
    scattiSchede();
    scattiMisure();
    scattiVerifica();
    ctx.screens().unloadAll();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    Avvio::preparaApplicazione();
    cartella = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("screenshots");
    tuttiGliSchermi();
    // The same screens in the high-readability font, in a folder of their own.
    cartella = QDir(cartella).filePath(QStringLiteral("leggibili"));
    leggibili = true;
    tuttiGliSchermi();
    return 0;
}
