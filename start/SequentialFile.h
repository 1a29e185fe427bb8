#pragma once

#include <QObject>
#include <QString>
#include <memory>

class QFile;
class QFileDevice;
class QSaveFile;

// One numbered file of the sequential file service ("file 1"): opened for
// input or output, printed to line by line, read one item at a time, closed.
// It belongs to its owner (the application context) rather than to a screen,
// so a file left open by one routine is still open for the next one, and
// opening it again before closing it is the "file already open" error.
//
// Output goes to a temporary file in the same directory, which replaces the
// old file only when it is closed: a crash or a full disk in the middle never
// leaves a half-written file behind. Where the directory takes no new file
// but the old file may be written, it is written in place.
class SequentialFile : public QObject
{
    Q_OBJECT

public:
    // The file with that number of `owner`, made at its first use.
    static SequentialFile &number(QObject &owner, int fileNumber);

    explicit SequentialFile(int fileNumber, QObject *parent = nullptr);
    ~SequentialFile() override;

    int fileNumber() const { return m_number; }
    bool isOpen() const { return m_mode != Mode::Closed; }
    bool isOpenForInput() const { return m_mode == Mode::Input; }
    bool isOpenForOutput() const { return m_mode == Mode::Output; }

    // Opens an existing file for reading. A missing file, a missing
    // directory, a directory in its place or an unreadable file is a
    // run-time error, and the file stays closed.
    void openForInput(const QString &path);
    // Creates the file, or replaces it at close.
    void openForOutput(const QString &path);

    // One line: the text as it is, then CR LF.
    void printLine(const QString &text);

    // Reads the next item as a number: blanks and line ends before it are
    // skipped, the item runs to the next comma or line end, and all of it,
    // blanks aside, must be a number ("12", "-3", "2.5", "1E3"). No item
    // left, or an item that is not a number, is a run-time error.
    double inputNumber();

    // Closes the file; nothing happens when it is not open. Closing an output
    // file puts it in place of the old one; if that fails the old file stays
    // as it was and the error is raised.
    void close();

    // The number an item holds, or false: the item's own rules, usable
    // without a file.
    static bool parseNumber(const QByteArray &item, double &value);

private:
    enum class Mode
    {
        Closed,
        Input,
        Output
    };

    [[noreturn]] void failOutput();

    int m_number;
    Mode m_mode = Mode::Closed;
    std::unique_ptr<QFile> m_input;
    // A QSaveFile, or a QFile written in place.
    std::unique_ptr<QFileDevice> m_output;
};
