#include "support/FileTest.h"

#include <QFile>
#include <QTest>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace FileTest {

const QByteArray DefaultLines = QByteArrayLiteral("16763135\r\n"
                                                  "\r\n"
                                                  "328965\r\n"
                                                  "False\r\n"
                                                  "False\r\n"
                                                  "False\r\n"
                                                  "16763135\r\n"
                                                  "16724735\r\n"
                                                  " 4\r\n"
                                                  " 4\r\n"
                                                  " 9\r\n");

QByteArray readAll(const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return QByteArrayLiteral("<missing>");
    return f.readAll();
}

void writeAll(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(f.write(bytes), bytes.size());
}

} // namespace FileTest

ReadOnlyDir::ReadOnlyDir(const QString &path) : m_path(path)
{
    QFile::setPermissions(m_path, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup |
                                      QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther);
    if (::geteuid() == 0)
        m_immutable = setImmutable(true);
}

ReadOnlyDir::~ReadOnlyDir()
{
    release();
}

bool ReadOnlyDir::holds() const
{
    QFile probe(m_path + QStringLiteral("/probe"));
    if (!probe.open(QIODevice::WriteOnly))
        return true;
    probe.close();
    probe.remove();
    return false;
}

void ReadOnlyDir::release()
{
    if (m_released)
        return;
    m_released = true;
    if (m_immutable)
        setImmutable(false);
    QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool ReadOnlyDir::setImmutable(bool on)
{
    const int fd = ::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_DIRECTORY);
    if (fd < 0)
        return false;
    int flags = 0;
    bool ok = ::ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0;
    if (ok) {
        flags = on ? (flags | FS_IMMUTABLE_FL) : (flags & ~FS_IMMUTABLE_FL);
        ok = ::ioctl(fd, FS_IOC_SETFLAGS, &flags) == 0;
    }
    ::close(fd);
    return ok;
}
