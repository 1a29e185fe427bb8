#pragma once

#include "platform/printing/PainterPrinter.h"

#include <QFile>
#include <QPdfWriter>
#include <memory>

class Services;

// The built-in printer that needs no printing system: each document becomes
// a new A4 PDF file, named after the program and the day
// (Quadrivo-2026-11-21-001.pdf, -002, ...), never overwriting an earlier one.
// The user is told where the file went, without being stopped.
class PdfFilePrinter final : public PainterPrinter
{
public:
    explicit PdfFilePrinter(Services &services);
    ~PdfFilePrinter() override;

    // The name it is listed under among the printers.
    static QString deviceName();
    QString DeviceName() const override { return deviceName(); }

    // Where the files go; empty (the default) means the working directory.
    QString outputDirectory() const { return m_directory; }
    void setOutputDirectory(const QString &directory) { m_directory = directory; }

    double ScaleWidth() const override;

    // The file of the last document ended.
    QString lastFile() const { return m_lastFile; }

protected:
    QPagedPaintDevice &openDevice() override;
    void deliverDocument() override;
    void discardDocument() override;

private:
    void createNewFile();

    Services &m_services;
    QString m_directory;
    QString m_lastFile;
    std::unique_ptr<QFile> m_file;
    std::unique_ptr<QPdfWriter> m_writer;
};
