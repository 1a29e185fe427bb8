// The pupils' register: one series recorded (what the drill reports, from
// the series' start to its end, until the writer's thread has it in the
// SQLite file), and the teacher's view opened on 10 000 stored series.
//
// And a verifica's class table: a code taken by 30 pupils among 10 000 other
// series, each with its 20 exercises.
//
//   bench_registro serie|vista|verifica [--ripetizioni N] [--senza-obiettivi]
//
// Each repetition is a fresh context and a fresh file.
#include "InProcesso.h"

#include "classe/CodiceScheda.h"
#include "registro/ArchivioRegistro.h"
#include "registro/ModelloSerie.h"
#include "registro/RegistroQuadrivo.h"
#include "registro/frmRegistro.h"
#include "registro/frmVerifiche.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <cstring>

namespace {

// Series number k of the 10 000 a register is filled with: a pupil in 25,
// one every 50 minutes from the first of September.
SerieRegistrata serieDiRiempimento(int k)
{
    SerieRegistrata s;
    s.codice = QString::number(k);
    s.inizio = QDateTime(QDate(2026, 9, 1), QTime(8, 0)).addSecs(k * 3000);
    s.fine = s.inizio.addSecs(600);
    s.nome = QStringLiteral("ALUNNO %1").arg(k % 25);
    s.famiglia = 3;
    s.terminata = true;
    return s;
}

// Writes `serie(k)` for every k in [da, a) into the register file, without
// waiting for the disk after each; false when one could not be written.
template <typename Serie>
bool riempi(const ImpostazioniRegistro &i, int da, int a, Serie serie)
{
    ArchivioRegistro archivio(i, "bench-riempi");
    if (archivio.apri() != ArchivioRegistro::Ok)
        return false;
    QSqlQuery(*archivio.database()).exec("PRAGMA synchronous=OFF");
    for (int k = da; k < a; ++k)
        if (archivio.scrivi(serie(k)) != ArchivioRegistro::Ok)
            return false;
    return true;
}

double unaSerie()
{
    QTemporaryDir dir;
    TestContext t;
    const ImpostazioniRegistro i = ImpostazioniRegistro::sqlite(dir.filePath("registro.sqlite"));
    auto r = std::make_unique<RegistroQuadrivo>(*t, i);
    RegistroQuadrivo *registro = r.get();
    t->setRegistro(std::move(r));
    StatoCondiviso &s = t->stato;
    s.FamigliaSimboli = 3;
    QElapsedTimer orologio;
    orologio.start();
    registro->inizioSerie(s);
    for (int n = 1; n <= 20; ++n) {
        s.NumeroEsercizio = n;
        s.Operazioni[n] = QStringLiteral("     4700  u = R.4 uk  7  h  0 da  0  u (Sec.3)");
        s.TempoParziale = 3;
        s.RisposteEsatte += 1;
        registro->esercizioChiuso(s);
    }
    registro->fineSerie(s);
    registro->attendi();
    const double ms = orologio.nsecsElapsed() / 1e6;
    ArchivioRegistro a(i, "bench-verifica");
    if (a.tutte().size() != 1 || a.tutte().first().esercizi.size() != 20) {
        std::fprintf(stderr, "the series was not recorded: %s\n", qPrintable(a.ultimoErrore()));
        return -1;
    }
    return ms;
}

double unaVista()
{
    QTemporaryDir dir;
    const ImpostazioniRegistro i = ImpostazioniRegistro::sqlite(dir.filePath("registro.sqlite"));
    const bool scritte = riempi(i, 0, 10000, [](int k) {
        SerieRegistrata s = serieDiRiempimento(k);
        s.esatte = k % 21;
        s.errate = 20 - k % 21;
        s.tempoTotale = 200;
        s.numeroEsercizi = 20;
        return s;
    });
    if (!scritte)
        return -1;
    TestContext t;
    auto r = std::make_unique<RegistroQuadrivo>(*t, i);
    RegistroQuadrivo *registro = r.get();
    t->setRegistro(std::move(r));
    QElapsedTimer orologio;
    orologio.start();
    registro->mostraRegistro();
    QApplication::processEvents();
    const double ms = orologio.nsecsElapsed() / 1e6;
    frmRegistro *f = nullptr;
    for (Form *x : t->screens().loaded())
        f = f ? f : qobject_cast<frmRegistro *>(x);
    if (!f || f->modello().rowCount() != 10000) {
        std::fprintf(stderr, "the view did not list the 10000 series\n");
        return -1;
    }
    return ms;
}

double unaVerifica()
{
    QTemporaryDir dir;
    const ImpostazioniRegistro i = ImpostazioniRegistro::sqlite(dir.filePath("registro.sqlite"));
    CodiceScheda::Scelta scelta;
    scelta.righe = 20;
    scelta.seme = 99;
    const QString codice = CodiceScheda::Componi(scelta);
    // 10 000 series of no verifica, then 30 taken from the code.
    auto serie = [&codice](int k) {
        SerieRegistrata s = serieDiRiempimento(k);
        s.verifica = k < 10000 ? QString() : codice;
        for (int n = 1; n <= 20; ++n)
            s.esercizi.append({n, QStringLiteral("     4700  u = R.4 uk  7  h  0 da  0  u (Sec.3)"),
                               3, s.verifica.isEmpty() ? 0 : 1 + (k + n) % 4});
        return s;
    };
    if (!riempi(i, 0, 10030, serie))
        return -1;
    TestContext t;
    QElapsedTimer orologio;
    orologio.start();
    auto &f = t->screens().get<frmVerifiche>([&] { return new frmVerifiche(*t, i); });
    f.Show();
    QApplication::processEvents();
    const double ms = orologio.nsecsElapsed() / 1e6;
    if (f.tabella().codice != codice || f.tabella().righe.size() != 30 ||
        f.tabella().righe.first().celle.size() != 20) {
        std::fprintf(stderr, "the class table of the code is not the 30 pupils'\n");
        return -1;
    }
    return ms;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc > 1 && std::strcmp(argv[1], "verifica") == 0)
        return Banco::inProcesso(argc, argv, "bench_registro verifica",
                                  "class table of a code taken by 30 pupils, 10 000 other series",
                                  100, unaVerifica);
    const bool vista = argc > 1 && std::strcmp(argv[1], "vista") == 0;
    if (vista)
        return Banco::inProcesso(argc, argv, "bench_registro vista",
                                  "register view opened on 10 000 series", 200, unaVista);
    return Banco::inProcesso(argc, argv, "bench_registro serie",
                              "one series recorded in the register (SQLite)", 50, unaSerie);
}
