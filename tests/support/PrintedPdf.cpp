#include "support/PrintedPdf.h"

#include <QProcess>
#include <QRegularExpression>

PrintedPdf::PrintedPdf(const QString &file)
{
    m_text =
        run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});

    const QString info = run(QStringLiteral("pdfinfo"), {file});
    static const QRegularExpression pages(QStringLiteral("^Pages:\\s+(\\d+)"),
                                          QRegularExpression::MultilineOption);
    static const QRegularExpression size(QStringLiteral("^Page size:\\s+([\\d.]+) x ([\\d.]+) pts"),
                                         QRegularExpression::MultilineOption);
    if (const auto m = pages.match(info); m.hasMatch())
        m_pages = m.captured(1).toInt();
    if (const auto m = size.match(info); m.hasMatch())
        m_pageSize = QSizeF(m.captured(1).toDouble(), m.captured(2).toDouble());

    const QString boxes =
        run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), file, QStringLiteral("-")});
    static const QRegularExpression word(
        QStringLiteral("<word xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\" xMax=\"([\\d.]+)\" "
                       "yMax=\"([\\d.]+)\">([^<]*)</word>"));
    for (auto it = word.globalMatch(boxes); it.hasNext();) {
        const auto m = it.next();
        const QPointF topLeft(m.captured(1).toDouble(), m.captured(2).toDouble());
        const QPointF bottomRight(m.captured(3).toDouble(), m.captured(4).toDouble());
        m_words.append({m.captured(5), QRectF(topLeft, bottomRight)});
    }
}

QStringList PrintedPdf::lines() const
{
    QStringList result;
    for (const QString &line : m_text.split(QLatin1Char('\n'))) {
        const QString trimmed = line.trimmed().remove(QLatin1Char('\f'));
        if (!trimmed.isEmpty())
            result << trimmed;
    }
    return result;
}

QRectF PrintedPdf::boxOf(const QString &text) const
{
    for (const Word &w : m_words)
        if (w.text == text)
            return w.box;
    return {};
}

QString PrintedPdf::run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForStarted() || !process.waitForFinished(60000)) {
        m_error += QStringLiteral("%1: %2\n").arg(program, process.errorString());
        return {};
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        m_error += QStringLiteral("%1 ended with %2: %3\n")
                       .arg(program)
                       .arg(process.exitCode())
                       .arg(QString::fromLocal8Bit(process.readAllStandardError()));
        return {};
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}
