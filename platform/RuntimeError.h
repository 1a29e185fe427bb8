#pragma once

#include <QString>
#include <exception>

// A run-time error of the program: a number and an Italian description, as
// the general error report shows them. Thrown by the platform and by the
// program's own arithmetic; caught where the platform calls a handler.
class RuntimeError : public std::exception
{
public:
    enum Code
    {
        InvalidProcedureCall = 5,
        Overflow = 6,
        SubscriptOutOfRange = 9,
        DivisionByZero = 11,
        TypeMismatch = 13,
        BadFileName = 52,
        FileNotFound = 53,
        BadFileMode = 54,
        FileAlreadyOpen = 55,
        DeviceIoError = 57,
        DiskFull = 61,
        PermissionDenied = 70,
        PathFileAccessError = 75,
        PathNotFound = 76,
        ControlArrayElementMissing = 340,
        PropertyNotSupported = 438,
        PrinterError = 482,
    };

    explicit RuntimeError(Code code, const QString &detail = {});

    int number() const noexcept { return m_code; }
    Code code() const noexcept { return m_code; }
    // The fixed Italian description of the error number.
    QString description() const;
    // Extra words on what failed (a file name, a printer), may be empty.
    QString detail() const { return m_detail; }
    // "Errore di run-time '6':\n\nOverflow" plus the detail, if any.
    QString message() const;

    const char *what() const noexcept override;

    static QString descriptionOf(Code code);

private:
    Code m_code;
    QString m_detail;
    QByteArray m_what;
};
