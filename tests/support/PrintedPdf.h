#pragma once

#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

// A PDF file read back with poppler's tools (pdftotext, pdfinfo), so tests
// check what a printout really holds: its text in page layout, its pages,
// and where each word stands.
class PrintedPdf
{
public:
    struct Word
    {
        QString text;
        QRectF box; // points, from the page's top left corner
    };

    explicit PrintedPdf(const QString &file);

    // Empty when every tool ran; otherwise what went wrong.
    QString error() const { return m_error; }

    // pdftotext -layout.
    QString text() const { return m_text; }
    // The non-blank lines of text(), trimmed.
    QStringList lines() const;
    int pages() const { return m_pages; }
    // Of the first page, points.
    QSizeF pageSize() const { return m_pageSize; }
    QList<Word> words() const { return m_words; }
    // The first word with that text, or a null box.
    QRectF boxOf(const QString &word) const;

private:
    QString run(const QString &program, const QStringList &arguments);

    QString m_error;
    QString m_text;
    int m_pages = 0;
    QSizeF m_pageSize;
    QList<Word> m_words;
};
