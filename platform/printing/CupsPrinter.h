#pragma once

#include "platform/printing/PainterPrinter.h"

#include <QPrinter>
#include <QTemporaryFile>
#include <memory>

// A CUPS queue. Qt's CUPS support lays the page out for the queue (A4, its
// printable area); the finished document is handed to `lp`, because Qt's own
// submission ignores a job the queue refuses and the user would never know.
class CupsPrinter final : public PainterPrinter
{
public:
    CupsPrinter(const QString &queue, const QString &documentName);
    ~CupsPrinter() override;

    QString DeviceName() const override { return m_queue; }

    // The request id CUPS gave the last document ("Ufficio-12").
    QString lastJob() const { return m_lastJob; }

protected:
    QPagedPaintDevice &openDevice() override;
    void deliverDocument() override;
    void discardDocument() override;

private:
    void submit();

    QString m_queue;
    QString m_documentName;
    QString m_lastJob;
    std::unique_ptr<QTemporaryFile> m_file;
    std::unique_ptr<QPrinter> m_printer;
};
