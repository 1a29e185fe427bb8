#pragma once

#include "registro/SerieRegistrata.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

// Where series wait while the register cannot take them: a folder of the
// owner's alone (0700), one small JSON file per series (0600), named by the
// series' code and replaced atomically. A series written again replaces its
// own file; the register replaces a series by its code too, so a series sent
// twice (the program ended between writing it and taking it away) is still
// there once. No window, no database.
class AttesaRegistro
{
public:
    explicit AttesaRegistro(const QString &cartella);

    const QString &cartella() const { return m_cartella; }
    // Keeps the series (or its newer copy); false with errore() on failure.
    bool metti(const SerieRegistrata &serie);
    // Every series waiting, oldest first. A file that cannot be read is left
    // where it is, not taken for a series.
    QList<SerieRegistrata> tutte() const;
    bool togli(const QString &codice);
    // Whether anything waits, without reading it.
    bool vuota() const;
    QString errore() const { return m_errore; }

    static QByteArray inTesto(const SerieRegistrata &serie);
    static std::optional<SerieRegistrata> daTesto(const QByteArray &testo);

private:
    QString fileDi(const QString &codice) const;

    QString m_cartella;
    QString m_errore;
};
