#pragma once

#include "platform/printing/PainterPrinter.h"

#include <QMarginsF>
#include <QPdfWriter>
#include <QTemporaryFile>
#include <memory>
#include <optional>

class Notifications;

// A CUPS queue. The page is drawn as an A4 PDF within the printable area the
// queue declares, and handed to `lp`, which reports a job the queue refuses.
// The server is only ever asked through its command-line tools, each with a
// deadline (BoundedProcess): a server that is gone or hangs makes the print
// fail in a few seconds, and the window goes on repainting meanwhile. A job
// accepted is confirmed to the user with the queue and the job number.
class CupsPrinter final : public PainterPrinter
{
public:
    // Without notifications, accepted jobs are confirmed to nobody.
    CupsPrinter(const QString &queue, const QString &documentName,
                Notifications *notifications = nullptr);
    ~CupsPrinter() override;

    QString DeviceName() const override { return m_queue; }

    // The request id CUPS gave the last document ("Ufficio-12").
    QString lastJob() const { return m_lastJob; }

    // Longest wait for one answer of the server.
    static constexpr int ServerTimeoutMs = 3500;

protected:
    QPagedPaintDevice &openDevice() override;
    void deliverDocument() override;
    void discardDocument() override;

private:
    QMarginsF printableMargins();
    QStringList lpArguments() const;
    void submit();

    QString m_queue;
    QString m_documentName;
    Notifications *m_notifications;
    QString m_lastJob;
    // The queue's margins on A4, in points, once the server has told them.
    std::optional<QMarginsF> m_margins;
    std::unique_ptr<QTemporaryFile> m_file;
    std::unique_ptr<QPdfWriter> m_writer;
};
