#include "platform/RuntimeError.h"

RuntimeError::RuntimeError(Code code, const QString &detail)
    : m_code(code), m_detail(detail), m_what(message().toUtf8())
{
}

QString RuntimeError::descriptionOf(Code code)
{
    switch (code) {
    case InvalidProcedureCall:
        return QStringLiteral("Chiamata di routine o argomento non validi");
    case Overflow:
        return QStringLiteral("Overflow");
    case SubscriptOutOfRange:
        return QStringLiteral("Indice non incluso nell'intervallo");
    case DivisionByZero:
        return QStringLiteral("Divisione per zero");
    case TypeMismatch:
        return QStringLiteral("Tipo non corrispondente");
    case BadFileName:
        return QStringLiteral("Nome o numero di file non valido");
    case FileNotFound:
        return QStringLiteral("Impossibile trovare il file");
    case BadFileMode:
        return QStringLiteral("Modalità di file non valida");
    case FileAlreadyOpen:
        return QStringLiteral("File già aperto");
    case DeviceIoError:
        return QStringLiteral("Errore di I/O sul dispositivo");
    case DiskFull:
        return QStringLiteral("Disco pieno");
    case PermissionDenied:
        return QStringLiteral("Autorizzazione negata");
    case PathFileAccessError:
        return QStringLiteral("Errore di accesso al percorso o al file");
    case PathNotFound:
        return QStringLiteral("Impossibile trovare il percorso");
    case ControlArrayElementMissing:
        return QStringLiteral("L'elemento della matrice di controlli non esiste");
    case PropertyNotSupported:
        return QStringLiteral("Proprietà o metodo non supportati dall'oggetto");
    case PrinterError:
        return QStringLiteral("Errore della stampante");
    }
    return QStringLiteral("Errore definito dall'applicazione o dall'oggetto");
}

QString RuntimeError::description() const
{
    return descriptionOf(m_code);
}

QString RuntimeError::message() const
{
    QString text = QStringLiteral("Errore di run-time '%1':\n\n%2").arg(m_code).arg(description());
    if (!m_detail.isEmpty())
        text += QStringLiteral("\n\n") + m_detail;
    return text;
}

const char *RuntimeError::what() const noexcept
{
    return m_what.constData();
}
