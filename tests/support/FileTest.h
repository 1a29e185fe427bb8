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

// Makes a directory refuse new entries even to root (the immutable
// attribute) while it lives; isSet() tells whether the file system let it.
class ImmutableDir
{
public:
    explicit ImmutableDir(const QString &path);
    ~ImmutableDir();
    ImmutableDir(const ImmutableDir &) = delete;
    ImmutableDir &operator=(const ImmutableDir &) = delete;
    bool isSet() const { return m_set; }

private:
    bool setFlag(bool on);
    QString m_path;
    bool m_set = false;
};
