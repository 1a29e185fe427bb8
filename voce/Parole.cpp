#include "voce/Parole.h"

#include <QRegularExpression>
#include <QStringList>
#include <array>

namespace Parole {

namespace {

const std::array<const char *, 20> Primi = {
    "zero",        "uno",      "due",    "tre",         "quattro",  "cinque",    "sei",
    "sette",       "otto",     "nove",   "dieci",       "undici",   "dodici",    "tredici",
    "quattordici", "quindici", "sedici", "diciassette", "diciotto", "diciannove"};
const std::array<const char *, 10> Decine = {"",         "",          "venti",    "trenta",
                                             "quaranta", "cinquanta", "sessanta", "settanta",
                                             "ottanta",  "novanta"};

// 0..99 without the final accent.
QString sottoCento(int n)
{
    if (n < 20)
        return QString::fromLatin1(Primi[n]);
    QString decina = QString::fromLatin1(Decine[n / 10]);
    const int unita = n % 10;
    if (unita == 0)
        return decina;
    // "venti" + "uno" = "ventuno": the vowel goes before a vowel.
    if (unita == 1 || unita == 8)
        decina.chop(1);
    return decina + QString::fromLatin1(Primi[unita]);
}

// 1..999 without the final accent; 0 gives an empty text.
QString sottoMille(int n)
{
    QString parole;
    const int centinaia = n / 100;
    const int resto = n % 100;
    if (centinaia > 0)
        parole = (centinaia == 1 ? QString() : QString::fromLatin1(Primi[centinaia])) +
                 QStringLiteral("cento");
    if (resto > 0) {
        // "centottanta", but "centootto" and "centouno" keep both vowels.
        if (centinaia > 0 && resto / 10 == 8)
            parole.chop(1);
        parole += sottoCento(resto);
    }
    return parole;
}

QString accento(QString parole)
{
    if (parole.size() > 3 && parole.endsWith(QStringLiteral("tre")))
        parole.replace(parole.size() - 1, 1, QChar(0x00E9));
    return parole;
}

struct Unita
{
    const char *simbolo;
    const char *singolare;
    const char *plurale;
    bool femminile;
};

// Place symbols of the decimal system.
const Unita Posti[] = {
    {"uk", "migliaio", "migliaia", false},  {"h", "centinaio", "centinaia", false},
    {"da", "decina", "decine", true},       {"u", "unità", "unità", true},
    {"d", "decimo", "decimi", false},       {"c", "centesimo", "centesimi", false},
    {"m", "millesimo", "millesimi", false},
};

// Units of length, mass and capacity.
const Unita Misure[] = {
    {"km", "chilometro", "chilometri", false},
    {"hm", "ettometro", "ettometri", false},
    {"dam", "decametro", "decametri", false},
    {"m", "metro", "metri", false},
    {"dm", "decimetro", "decimetri", false},
    {"cm", "centimetro", "centimetri", false},
    {"mm", "millimetro", "millimetri", false},
    {"t", "tonnellata", "tonnellate", true},
    {"q", "quintale", "quintali", false},
    {"Mg", "miriagrammo", "miriagrammi", false},
    {"kg", "chilogrammo", "chilogrammi", false},
    {"hg", "ettogrammo", "ettogrammi", false},
    {"dag", "decagrammo", "decagrammi", false},
    {"g", "grammo", "grammi", false},
    {"dg", "decigrammo", "decigrammi", false},
    {"cg", "centigrammo", "centigrammi", false},
    {"mg", "milligrammo", "milligrammi", false},
    {"kl", "chilolitro", "chilolitri", false},
    {"hl", "ettolitro", "ettolitri", false},
    {"dal", "decalitro", "decalitri", false},
    {"l", "litro", "litri", false},
    {"dl", "decilitro", "decilitri", false},
    {"cl", "centilitro", "centilitri", false},
    {"ml", "millilitro", "millilitri", false},
};

const Unita *trova(const QString &simbolo, bool misura)
{
    // The symbols are case-sensitive: "Mg" is not "mg".
    const QString s = simbolo.trimmed();
    if (misura)
        for (const Unita &u : Misure)
            if (s == QLatin1String(u.simbolo))
                return &u;
    for (const Unita &u : Posti)
        if (s == QLatin1String(u.simbolo))
            return &u;
    if (!misura)
        for (const Unita &u : Misure)
            if (s == QLatin1String(u.simbolo))
                return &u;
    return nullptr;
}

bool iniziaConVocale(const QString &parola)
{
    return !parola.isEmpty() && QStringLiteral("aeiouàèéìòù").contains(parola.front().toLower());
}

} // namespace

QString intero(qint64 n)
{
    if (n < 0 || n > 999999)
        return {};
    if (n == 0)
        return QStringLiteral("zero");
    const int migliaia = int(n / 1000);
    const int resto = int(n % 1000);
    QString parole;
    if (migliaia == 1) {
        parole = QStringLiteral("mille");
    } else if (migliaia > 1) {
        QString m = sottoMille(migliaia);
        // "ventunmila": a final "uno" loses its vowel before "mila".
        if (migliaia % 100 != 11 && migliaia % 10 == 1)
            m.chop(1);
        parole = m + QStringLiteral("mila");
    }
    return accento(parole + sottoMille(resto));
}

QString numero(const QString &testo)
{
    static const QRegularExpression forma(
        QStringLiteral("^\\s*(\\d{1,3}(?:\\.\\d{3})+|\\d+)(?:,(\\d+))?\\s*$"));
    const QRegularExpressionMatch m = forma.match(testo);
    if (!m.hasMatch())
        return {};
    QString interi = m.captured(1);
    interi.remove(QLatin1Char('.'));
    bool ok = false;
    const qint64 parte = interi.toLongLong(&ok);
    if (!ok || parte > 999999)
        return {};
    QString parole = intero(parte);
    if (!m.hasCaptured(2))
        return parole;
    const QString decimali = m.captured(2);
    parole += QStringLiteral(" virgola");
    // Teachers read the zeros after the comma one by one, then the rest as
    // a number: "quattro virgola zero cinque".
    qsizetype i = 0;
    while (i < decimali.size() - 1 && decimali[i] == QLatin1Char('0')) {
        parole += QStringLiteral(" zero");
        ++i;
    }
    const QString resto = decimali.mid(i);
    if (resto.size() > 6)
        return {};
    return parole + QLatin1Char(' ') + intero(resto.toLongLong());
}

bool euno(const QString &testo)
{
    QString t = testo.trimmed();
    return t == QStringLiteral("1");
}

QString nomeUnita(const QString &simbolo, bool misura, bool plurale)
{
    const Unita *u = trova(simbolo, misura);
    if (!u)
        return {};
    return QString::fromUtf8(plurale ? u->plurale : u->singolare);
}

QString quantita(const QString &numeroScritto, const QString &simbolo, bool misura)
{
    const Unita *u = trova(simbolo, misura);
    const QString cifre = numero(numeroScritto);
    if (cifre.isEmpty())
        return {};
    if (!u)
        return cifre;
    if (euno(numeroScritto)) {
        const QString nome = QString::fromUtf8(u->singolare);
        if (!u->femminile)
            return QStringLiteral("un ") + nome;
        return iniziaConVocale(nome) ? QStringLiteral("un'") + nome : QStringLiteral("una ") + nome;
    }
    return cifre + QLatin1Char(' ') + QString::fromUtf8(u->plurale);
}

QString scomposizione(const QString &risposta, bool misura)
{
    static const QRegularExpression pezzo(QStringLiteral("(\\d+(?:,\\d+)?)\\s*([A-Za-z]+)"));
    QStringList pezzi;
    for (const QRegularExpressionMatch &m : pezzo.globalMatch(risposta)) {
        const QString p = quantita(m.captured(1), m.captured(2), misura);
        if (!p.isEmpty())
            pezzi << p;
    }
    return pezzi.join(QStringLiteral(", "));
}

QString lettera(const QString &testo)
{
    static const char *const Nomi[26] = {
        "a",       "bi",    "ci",   "di",   "e",         "effe", "gi",      "acca", "i",
        "i lunga", "cappa", "elle", "emme", "enne",      "o",    "pi",      "cu",   "erre",
        "esse",    "ti",    "u",    "vu",   "doppia vu", "ics",  "ipsilon", "zeta"};
    const QString t = testo.trimmed();
    if (t.size() == 1) {
        const QChar c = t.front().toUpper();
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            return QString::fromLatin1(Nomi[c.unicode() - 'A']);
        if (c == QLatin1Char(','))
            return QStringLiteral("virgola");
        if (c == QLatin1Char('.'))
            return QStringLiteral("punto");
    }
    if (t.compare(QStringLiteral("CANCELLA"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("cancella");
    return t.toLower();
}

} // namespace Parole
