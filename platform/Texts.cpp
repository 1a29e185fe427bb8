#include "platform/Texts.h"

#include <QLocale>
#include <cmath>

namespace Texts {

namespace {

QString stripFractionZeros(QString text)
{
    if (!text.contains(QLatin1Char('.')))
        return text;
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

} // namespace

QString fromDouble(double value)
{
    if (value == 0.0 || !std::isfinite(value))
        return value == 0.0 ? QStringLiteral("0") : QString::number(value);

    const QLocale c = QLocale::c();
    QString text = c.toString(value, 'g', 15);
    const qsizetype e = text.indexOf(QLatin1Char('e'));
    if (e >= 0) {
        const int exponent = text.mid(e + 1).toInt();
        if (exponent > -16 && exponent < 15) {
            // Plain notation for everything 15 digits can show.
            text = c.toString(value, 'f', std::max(0, 14 - exponent));
            text = stripFractionZeros(text);
        } else {
            QString mantissa = stripFractionZeros(text.left(e));
            text = mantissa + QStringLiteral("E") +
                   (exponent < 0 ? QStringLiteral("-") : QStringLiteral("+")) +
                   QString::number(std::abs(exponent)).rightJustified(2, QLatin1Char('0'));
        }
    }
    text.replace(QLatin1Char('.'), QLatin1Char(','));
    return text;
}

QString fromInt(long long value)
{
    return QString::number(value);
}

QString grouped(long long value)
{
    if (value == 0)
        return {};
    const QString digits = QString::number(value < 0 ? -static_cast<unsigned long long>(value)
                                                     : static_cast<unsigned long long>(value));
    QString out;
    const qsizetype n = digits.size();
    for (qsizetype i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0)
            out += QLatin1Char('.');
        out += digits[i];
    }
    return value < 0 ? QStringLiteral("-") + out : out;
}

QString printed(long long value)
{
    return value < 0 ? QString::number(value) : QStringLiteral(" ") + QString::number(value);
}

QString trim(const QString &text)
{
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text[first] == QLatin1Char(' '))
        ++first;
    while (last > first && text[last - 1] == QLatin1Char(' '))
        --last;
    return text.mid(first, last - first);
}

QString rtrim(const QString &text)
{
    qsizetype last = text.size();
    while (last > 0 && text[last - 1] == QLatin1Char(' '))
        --last;
    return text.left(last);
}

QString blanks(int n)
{
    return n > 0 ? QString(n, QLatin1Char(' ')) : QString();
}

} // namespace Texts
