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

ImmutableDir::ImmutableDir(const QString &path) : m_path(path)
{
    m_set = setFlag(true);
}

ImmutableDir::~ImmutableDir()
{
    if (m_set)
        setFlag(false);
}

bool ImmutableDir::setFlag(bool on)
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
