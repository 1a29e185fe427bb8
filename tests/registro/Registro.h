#pragma once

#include "../drill/Alunno.h"
#include "ConfrontoSerie.h"
#include "registro/ArchivioRegistro.h"
#include "registro/AttesaRegistro.h"
#include "registro/RegistroQuadrivo.h"

#include <QTemporaryDir>

// A test context with a real register on a SQLite file in a scratch
// directory, and a pupil who plays series on the drill screen through real
// clicks.
struct ConRegistro
{
    explicit ConRegistro(const ImpostazioniRegistro &impostazioni = {}, int riprova = 60000)
    {
        ImpostazioniRegistro i = impostazioni;
        if (i.tipo == ImpostazioniRegistro::SQLite && i.percorso.isEmpty())
            i = ImpostazioniRegistro::sqlite(dir.filePath(QStringLiteral("dati/registro.sqlite")));
        auto r = std::make_unique<RegistroQuadrivo>(*t, i, riprova);
        registro = r.get();
        t->setRegistro(std::move(r));
    }
    QString file() const { return registro->impostazioni().percorso; }

    // A series of `quanti` exercises (20 ends it; fewer are left with "Esci"),
    // all right except the second, wrong and then shown by help.
    void giocaSerie(int quanti = 20)
    {
        Alunno a(t);
        a.preparaSerie(8);
        a.stato().FamigliaSimboli = 3;
        a.prossimeCifre(4, 7);
        QVERIFY(a.apri());
        for (int n = 1; n <= quanti; ++n) {
            if (n > 1) {
                a.prossimoEsercizio(8, 1 + n % 9, 2);
                a.avanti();
            }
            if (n == 2) {
                a.scrivi(QStringLiteral("1 uk  "));
                a.passano(5);
                a.verifica();
                a.si();
            } else {
                a.scriviGiusta();
                a.passano(3);
                a.verifica();
            }
        }
        if (quanti < 20)
            a.esci();
        ScreenTest::settle();
    }

    QList<SerieRegistrata> registrate()
    {
        registro->attendi();
        ArchivioRegistro archivio(ImpostazioniRegistro::sqlite(file()), QStringLiteral("verifica"));
        ArchivioRegistro::Esito e = ArchivioRegistro::Errore;
        QList<SerieRegistrata> s = archivio.tutte(&e);
        if (e != ArchivioRegistro::Ok || qEnvironmentVariableIsSet("DEBUG_REGISTRO"))
            qWarning() << "registro illeggibile:" << archivio.ultimoErrore() << e << s.size()
                       << t.notices->notices;
        return s;
    }

    QTemporaryDir dir;
    TestContext t;
    RegistroQuadrivo *registro;
};
