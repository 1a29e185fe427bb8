#include "app/Avvio.h"
#include "app/ProntoEInattivo.h"
#include "app/RigaDiComando.h"

#include "classe/MenuClasse.h"
#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "platform/CaratteriInAnticipo.h"
#include "platform/Fonts.h"
#include "platform/IconaApplicazione.h"
#include "platform/StileQuadrivo.h"
#include "platform/TraduzioniQt.h"
#include "registro/ImpostazioniRegistro.h"
#include "registro/RegistroQuadrivo.h"
#include "start/FrmInizio.h"
#include "verifica/MenuVerifica.h"
#include "voce/AvvioVoce.h"
#include "voce/ImpostazioniUtente.h"

#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <QScopeGuard>
#include <cstdio>

namespace Avvio {

bool displayDisponibile()
{
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") ||
        !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return true;
    std::fprintf(stderr, "Quadrivo: nessuno schermo disponibile (DISPLAY non impostato): "
                         "avviare il programma in una sessione grafica.\n");
    return false;
}

void preparaApplicazione()
{
    QApplication::setApplicationName(QStringLiteral("Quadrivo"));
    // The installed desktop entry and icon carry this id; desktops match
    // the window to them by it.
    const QString id = QStringLiteral(QUADRIVO_ID_APPLICAZIONE);
    QGuiApplication::setDesktopFileName(id);
    QApplication::setWindowIcon(IconaApplicazione::installata(id, {QUADRIVO_LATI_ICONA}));
    QApplication::setStyle(new StileQuadrivo);
    Fonts::installSubstitutions();
    TraduzioniQt::installa(*QCoreApplication::instance());
}

int esegui(int argc, char *argv[])
{
    // --help and --version answer without a display.
    QStringList argomenti;
    for (int i = 1; i < argc; ++i)
        argomenti << QString::fromLocal8Bit(argv[i]);
    const RigaDiComando::Esito prima = RigaDiComando::leggi(argomenti);
    if (prima.azione == RigaDiComando::Azione::Aiuto ||
        prima.azione == RigaDiComando::Azione::Versione) {
        const QString testo = prima.azione == RigaDiComando::Azione::Aiuto
                                  ? RigaDiComando::aiuto()
                                  : RigaDiComando::versione();
        std::fputs(testo.toLocal8Bit().constData(), stdout);
        return 0;
    }
    if (!displayDisponibile())
        return 1;
    // Fontconfig reads its configuration on another core while Qt starts;
    // the start screen's first font measurement waits for it.
    CaratteriInAnticipo::avvia();
    const auto attesa = qScopeGuard([] { CaratteriInAnticipo::attendi(); });
    QApplication app(argc, argv);
    // Qt has taken its own options by now: what is left must be ours.
    const RigaDiComando::Esito esito = RigaDiComando::leggi(QCoreApplication::arguments().mid(1));
    if (esito.azione == RigaDiComando::Azione::Errore) {
        std::fputs(esito.messaggio.toLocal8Bit().constData(), stderr);
        return 2;
    }
    preparaApplicazione();
    // The start screen is the last one: when nothing is loaded, the run ends.
    QApplication::setQuitOnLastWindowClosed(false);

    AppContext ctx;
    frmOperativo::collegaTipoEsercizio(ctx);
    MenuClasse::Installa(ctx);
    MenuVerifica::Installa(ctx);
    // Nothing is opened here: the register's database waits for its first use.
    ctx.setRegistro(std::make_unique<RegistroQuadrivo>(ctx, ImpostazioniRegistro::dalSistema()));
    ctx.setExecutableName(QFileInfo(QApplication::applicationFilePath()).completeBaseName());
    // The voice and the high-readability font as the user left them.
    AvvioVoce::installa(ctx, ImpostazioniUtente());
    // exit(), not quit(): quit() first asks every window to close, and a
    // screen decides that for itself.
    QObject::connect(&ctx.screens(), &ScreenRegistry::empty, &app,
                     [] { QCoreApplication::exit(0); });

    ctx.runHandler([&] { ctx.form<FrmInizio>().Show(); });
    if (ctx.screens().loaded().isEmpty())
        return 0;
    // Start-up check (packaging test, benchmark): once the start screen is
    // drawn and idle, close every screen the normal way and end.
    if (esito.provaAvvio)
        quandoProntoEInattivo(ctx.screens().loaded().first(),
                              [&ctx] { ctx.screens().unloadAll(); });
    return app.exec();
}

} // namespace Avvio
