#pragma once

#include "registro/TabellaVerifica.h"

#include <QByteArray>

// A class's results on a verifica as CSV, written as the register's own
// (semicolons, UTF-8 with its mark, decimal commas): a row per attempt with
// each exercise's letter, then each exercise's seconds, the right answers
// and the time; last, how many got each exercise right at the first try.
class CsvVerifica
{
public:
    static QByteArray testo(const TabellaVerifica &tabella);
};
