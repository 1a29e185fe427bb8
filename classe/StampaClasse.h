#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

class Printer;

// Prints sheets of a class set as one document: each sheet on its own page,
// laid out as the worksheet screen prints a sheet (heading, rows in three
// blocks, footer), with its code on the footer's last line. A sheet whose
// longest row would run past the printable width gets the largest smaller
// font that fits, measured with the printer's own font metrics.
class StampaClasse
{
public:
    struct Foglio
    {
        QStringList righe;
        bool docenti = false; // teachers' sheet: the rows' font is 14 points, not 12
        QString piede;        // the footer's last line: "Scheda 07 - codice K7Q-3PZ"
    };

    // After each page: pages done, pages in all; false stops the printing.
    using Avanzamento = std::function<bool(int fatti, int totale)>;

    // `titolo` heads every sheet: Titolo, or the same naming a measure.
    StampaClasse(Printer &stampante, const QString &sottotitolo, const QString &titolo = Titolo);

    // True when every sheet went to the printer. When `avanti` stops it, the
    // document is dropped and nothing reaches the printer; a printer error
    // drops it as well and goes on to the caller.
    bool Stampa(const QList<Foglio> &fogli, const Avanzamento &avanti = {});

    // The rows' font size for that sheet: its own where the longest row fits
    // the page from X 500, otherwise just small enough. Leaves the printer
    // set to it.
    double CorpoRighe(const Foglio &foglio);

    static const QString Titolo;
    static constexpr double MargineRighe = 500;

private:
    void stampaFoglio(const Foglio &foglio);

    Printer &m_stampante;
    QString m_sottotitolo;
    QString m_titolo;
};
