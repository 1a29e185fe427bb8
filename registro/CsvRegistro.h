#pragma once

#include "registro/SerieRegistrata.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

// The register's table as CSV for a spreadsheet: UTF-8 with its byte-order
// mark, Italian column names, fields separated by semicolons and numbers
// with a decimal comma, as Italian spreadsheets expect; quotes where needed.
class CsvRegistro
{
public:
    static QStringList intestazione();
    static QStringList campi(const SerieRegistrata &s);
    static QByteArray testo(const QList<SerieRegistrata> &serie);
    // One line of such a text (with its line end), quotes where needed.
    static QString riga(const QStringList &valori);
    // The rows of a CSV text written this way (header included).
    static QList<QStringList> leggi(const QByteArray &testo);
};
