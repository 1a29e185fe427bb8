// Saves a PNG of every screen, at its design size and at twice that size, in
// the states worth looking at. Run through scripts/screenshots.sh.
#include "app/Avvio.h"
#include "core/AppContext.h"
#include "platform/Twips.h"
#include "platform/controls/Timer.h"
#include "start/FrmInizio.h"
#include "start/frmAutore.h"
#include "start/frmIstruzioni.h"

#include <QApplication>
#include <QDir>
#include <QTest>
#include <cstdio>

namespace {

QString cartella;

void salva(Form &schermo, const QString &nome)
{
    const QSize design(schermo.client()->size());
    for (int scala : {1, 2}) {
        schermo.setInnerSize(Twips::fromPixels(design.width() * scala),
                             Twips::fromPixels(design.height() * scala));
        QApplication::processEvents();
        const QString file = QDir(cartella).filePath(QStringLiteral("%1-%2x.png").arg(nome).arg(scala));
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

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    Avvio::preparaApplicazione();
    cartella = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("screenshots");
    QDir().mkpath(cartella);

    AppContext ctx;
    auto &inizio = ctx.form<FrmInizio>();
    inizio.Show();
    apriTendina(inizio);
    salva(inizio, QStringLiteral("FrmInizio-start"));

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
    return 0;
}
