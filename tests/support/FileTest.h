#pragma once

#include <QByteArray>
#include <QString>

// Helpers for tests of the program's own files.
namespace FileTest {

// The eleven lines "Impostazioni predefinite" writes, byte for byte.
extern const QByteArray DefaultLines;

// The whole file, or "<missing>" when it cannot be read.
QByteArray readAll(const QString &path);
// Replaces the file with these bytes (a test failure when it cannot).
void writeAll(const QString &path, const QByteArray &bytes);

} // namespace FileTest

// Makes a directory read-only while it lives, even to root (whom mode bits
// do not stop: the immutable attribute does); writable again afterwards or
// after release(). holds() tells whether the file system really refuses a
// new entry now.
class ReadOnlyDir
{
public:
    explicit ReadOnlyDir(const QString &path);
    ~ReadOnlyDir();
    ReadOnlyDir(const ReadOnlyDir &) = delete;
    ReadOnlyDir &operator=(const ReadOnlyDir &) = delete;
    bool holds() const;
    void release();

private:
    bool setImmutable(bool on);
    QString m_path;
    bool m_immutable = false;
    bool m_released = false;
};
