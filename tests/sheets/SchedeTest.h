#pragma once

// What the worksheet tests share: the state the start screen leaves behind,
// pinned exercises, and the page layout a printed sheet must have.

#include "core/AppContext.h"
#include "core/FamiglieSimboli.h"
#include "support/TestDoubles.h"

#include <QStringList>

namespace SchedeTest {

inline const QString Titolo = QStringLiteral("SCHEDA DI SCOMPOSIZIONE");
inline const QString Sottotitolo = QStringLiteral("Scomposizione dei numeri");

// The shared fields as the start screen leaves them at load, with the
// symbol family given.
inline void statoDiPartenza(StatoCondiviso &s, int famiglia = 1)
{
    s.FamigliaSimboli = famiglia;
    FamiglieSimboli::applica(s, famiglia);
    s.TitoloArgomento = QStringLiteral("SISTEMA DECIMALE");
    s.SottotitoloArgomento = Sottotitolo;
    s.DescrizioneSimboli = QStringLiteral(" simboli decrescenti");
}

// A draw that the generator turns into digit d (Int(r * 9) + 1).
inline double estrazionePerCifra(int d)
{
    return (d - 1) / 9.0 + 0.05;
}

// Scripts the four digit draws of one exercise whose type is not drawn
// (TipoNumeri 0 keeps TipoEsercizio).
inline void scriviCifre(ScriptedRandom &r, int w, int x, int y, int z)
{
    r.script({estrazionePerCifra(w), estrazionePerCifra(x), estrazionePerCifra(y),
              estrazionePerCifra(z)});
}

inline QString numero(double v)
{
    return QString::number(v, 'g', 15);
}

// Every call a printed sheet makes on the recording printer, in order:
// header, the rows given, footer, end of document. `y31` is where a 31st row
// lands (the line below the 30th).
inline QStringList impaginazione(const QStringList &righe, int scheda, double y31 = 0)
{
    const QString corpo = scheda == 1 ? QStringLiteral("12") : QStringLiteral("14");
    QStringList c = {
        QStringLiteral("FontName Courier New"),
        QStringLiteral("CurrentX 1000"),
        QStringLiteral("CurrentY 1000"),
        QStringLiteral("FontSize 14"),
        QStringLiteral("Print 1000,1000 \"Nome e cognome\""),
        QStringLiteral("CurrentX 1000"),
        QStringLiteral("CurrentY 1500"),
        QStringLiteral("FontSize 12"),
        QStringLiteral("Print 1000,1500 \"%1\"").arg(Titolo),
        QStringLiteral("FontName Courier New"),
        QStringLiteral("FontSize ") + corpo,
    };
    for (int i = 0; i < righe.size(); ++i) {
        const int riga = i + 1;
        double y = 0;
        if (riga <= 10)
            y = (riga - 1) * 400 + 2000;
        else if (riga <= 20)
            y = (riga - 10) * 400 + 6000;
        else if (riga <= 30)
            y = (riga - 20) * 400 + 10500;
        c << QStringLiteral("CurrentX 500");
        if (riga <= 30)
            c << QStringLiteral("CurrentY ") + numero(y);
        else
            y = y31;
        c << QStringLiteral("Print 500,%1 \"%2\"").arg(numero(y), righe[i]);
    }
    c << QStringLiteral("FontName Courier New") << QStringLiteral("FontSize 8")
      << QStringLiteral("CurrentX 1000") << QStringLiteral("CurrentY 15100")
      << QStringLiteral("Print 1000,15100 \"%1\"").arg(Sottotitolo)
      << QStringLiteral("CurrentX 1000") << QStringLiteral("CurrentY 15300")
      << QStringLiteral("Print 1000,15300 \"Livello di difficoltà: %1\"").arg(Sottotitolo)
      << QStringLiteral("CurrentX 1000") << QStringLiteral("CurrentY 15500")
      << QStringLiteral("Print 1000,15500 \"\"") << QStringLiteral("EndDoc");
    return c;
}

} // namespace SchedeTest
