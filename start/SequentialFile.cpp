#include "start/SequentialFile.h"

#include "platform/RuntimeError.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cmath>

namespace {

// Longer than any number can usefully be; a longer item is not one.
constexpr qsizetype LunghezzaMassimaVoce = 4096;

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

QString where(const QString &path)
{
    return QFileInfo(path).fileName();
}

} // namespace

SequentialFile &SequentialFile::number(QObject &owner, int fileNumber)
{
    const QString name = QStringLiteral("file#%1").arg(fileNumber);
    if (auto *file = owner.findChild<SequentialFile *>(name, Qt::FindDirectChildrenOnly))
        return *file;
    auto *file = new SequentialFile(fileNumber, &owner);
    file->setObjectName(name);
    return *file;
}

SequentialFile::SequentialFile(int fileNumber, QObject *parent)
    : QObject(parent), m_number(fileNumber)
{
}

// An output file never closed is dropped here: the old file stays.
SequentialFile::~SequentialFile() = default;

void SequentialFile::openForInput(const QString &path)
{
    if (isOpen())
        throw RuntimeError(RuntimeError::FileAlreadyOpen, where(path));
    if (path.isEmpty())
        throw RuntimeError(RuntimeError::BadFileName);
    const QFileInfo info(path);
    if (!info.exists()) {
        if (!QFileInfo(info.absolutePath()).isDir())
            throw RuntimeError(RuntimeError::PathNotFound, where(path));
        throw RuntimeError(RuntimeError::FileNotFound, where(path));
    }
    if (info.isDir())
        throw RuntimeError(RuntimeError::PathFileAccessError, where(path));
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly))
        throw RuntimeError(RuntimeError::PermissionDenied, where(path));
    m_input = std::move(file);
    m_mode = Mode::Input;
}

void SequentialFile::openForOutput(const QString &path)
{
    if (isOpen())
        throw RuntimeError(RuntimeError::FileAlreadyOpen, where(path));
    if (path.isEmpty())
        throw RuntimeError(RuntimeError::BadFileName);
    const QFileInfo info(path);
    if (!QFileInfo(info.absolutePath()).isDir())
        throw RuntimeError(RuntimeError::PathNotFound, where(path));
    if (info.isDir())
        throw RuntimeError(RuntimeError::PathFileAccessError, where(path));
    auto file = std::make_unique<QSaveFile>(path);
    if (file->open(QIODevice::WriteOnly)) {
        m_output = std::move(file);
        m_mode = Mode::Output;
        return;
    }
    // No temporary file beside the old one: a directory that takes no new
    // entries. An existing file the user may write is then written in place.
    auto inPlace = std::make_unique<QFile>(path);
    if (!info.exists() || !inPlace->open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        if (info.exists() && !info.isWritable())
            throw RuntimeError(RuntimeError::PermissionDenied, where(path));
        throw RuntimeError(RuntimeError::PathFileAccessError, where(path));
    }
    m_output = std::move(inPlace);
    m_mode = Mode::Output;
}

void SequentialFile::printLine(const QString &text)
{
    if (m_mode == Mode::Closed)
        throw RuntimeError(RuntimeError::BadFileName, QString::number(m_number));
    if (m_mode != Mode::Output)
        throw RuntimeError(RuntimeError::BadFileMode, QString::number(m_number));
    const QByteArray line = text.toLatin1() + QByteArrayLiteral("\r\n");
    if (m_output->write(line) != line.size())
        failOutput();
}

double SequentialFile::inputNumber()
{
    if (m_mode == Mode::Closed)
        throw RuntimeError(RuntimeError::BadFileName, QString::number(m_number));
    if (m_mode != Mode::Input)
        throw RuntimeError(RuntimeError::BadFileMode, QString::number(m_number));

    char c = 0;
    bool more = m_input->getChar(&c);
    while (more && (isBlank(c) || c == '\r' || c == '\n'))
        more = m_input->getChar(&c);
    if (!more)
        throw RuntimeError(RuntimeError::TypeMismatch, QStringLiteral("fine del file"));

    QByteArray item;
    while (more && c != ',' && c != '\r' && c != '\n') {
        if (item.size() >= LunghezzaMassimaVoce)
            throw RuntimeError(RuntimeError::TypeMismatch);
        item.append(c);
        more = m_input->getChar(&c);
    }
    // A CR LF pair ends the item as one line end.
    if (more && c == '\r') {
        char next = 0;
        if (m_input->peek(&next, 1) == 1 && next == '\n')
            m_input->getChar(&next);
    }

    double value = 0;
    if (!parseNumber(item, value))
        throw RuntimeError(RuntimeError::TypeMismatch);
    if (!std::isfinite(value))
        throw RuntimeError(RuntimeError::Overflow);
    return value;
}

bool SequentialFile::parseNumber(const QByteArray &item, double &value)
{
    qsizetype first = 0;
    qsizetype last = item.size();
    while (first < last && isBlank(item[first]))
        ++first;
    while (last > first && isBlank(item[last - 1]))
        --last;

    QByteArray number;
    qsizetype i = first;
    if (i < last && (item[i] == '+' || item[i] == '-'))
        number.append(item[i++]);
    int digits = 0;
    while (i < last && isDigit(item[i])) {
        number.append(item[i++]);
        ++digits;
    }
    if (i < last && item[i] == '.') {
        number.append(item[i++]);
        while (i < last && isDigit(item[i])) {
            number.append(item[i++]);
            ++digits;
        }
    }
    if (digits == 0)
        return false;
    // The exponent may be written with E or D, as double-precision literals are.
    if (i < last && (item[i] == 'e' || item[i] == 'E' || item[i] == 'd' || item[i] == 'D')) {
        number.append('e');
        ++i;
        if (i < last && (item[i] == '+' || item[i] == '-'))
            number.append(item[i++]);
        int exponentDigits = 0;
        while (i < last && isDigit(item[i])) {
            number.append(item[i++]);
            ++exponentDigits;
        }
        if (exponentDigits == 0)
            return false;
    }
    if (i != last)
        return false;

    bool ok = false;
    value = number.toDouble(&ok);
    if (!ok) // well formed but beyond any double
        value = number.startsWith('-') ? -HUGE_VAL : HUGE_VAL;
    return true;
}

void SequentialFile::close()
{
    switch (m_mode) {
    case Mode::Closed:
        return;
    case Mode::Input:
        m_input.reset();
        m_mode = Mode::Closed;
        return;
    case Mode::Output:
        // The last buffered bytes are written here, and a failure must stop
        // the commit: QSaveFile would otherwise put a cut-short file in place.
        if (auto *save = qobject_cast<QSaveFile *>(m_output.get())) {
            if (!save->flush() || !save->commit())
                failOutput();
        } else {
            if (!m_output->flush())
                failOutput();
            m_output->close();
            if (m_output->error() != QFileDevice::NoError)
                failOutput();
        }
        m_output.reset();
        m_mode = Mode::Closed;
        return;
    }
}

void SequentialFile::failOutput()
{
    const QFileDevice::FileError error = m_output->error();
    const QString detail =
        where(m_output->fileName()) + QStringLiteral(": ") + m_output->errorString();
    // Nothing of a failed write may replace the old file.
    if (auto *save = qobject_cast<QSaveFile *>(m_output.get()))
        save->cancelWriting();
    m_output.reset();
    m_mode = Mode::Closed;
    switch (error) {
    case QFileDevice::WriteError:
    case QFileDevice::ResourceError:
        throw RuntimeError(RuntimeError::DiskFull, detail);
    default:
        throw RuntimeError(RuntimeError::PathFileAccessError, detail);
    }
}
