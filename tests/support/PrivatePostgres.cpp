#include "PrivatePostgres.h"

#include <QDir>
#include <QProcess>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// A port nothing listens on now: the kernel's pick for port 0.
int freePort()
{
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    if (fd < 0)
        return 0;
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t n = sizeof a;
    int port = 0;
    if (::bind(fd, reinterpret_cast<sockaddr *>(&a), sizeof a) == 0 &&
        ::getsockname(fd, reinterpret_cast<sockaddr *>(&a), &n) == 0)
        port = ntohs(a.sin_port);
    ::close(fd);
    return port;
}

} // namespace

PrivatePostgres::PrivatePostgres()
{
    for (const QString &v : QDir(QStringLiteral("/usr/lib/postgresql"))
                                .entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        if (QFile::exists(QStringLiteral("/usr/lib/postgresql/%1/bin/pg_ctl").arg(v)))
            m_binDir = QStringLiteral("/usr/lib/postgresql/%1/bin").arg(v);
}

PrivatePostgres::~PrivatePostgres()
{
    stop();
}

QString PrivatePostgres::bin(const QString &tool) const
{
    return m_binDir + QLatin1Char('/') + tool;
}

bool PrivatePostgres::run(const QStringList &command, int timeoutMs)
{
    QStringList full = command;
    QString program = full.takeFirst();
    if (::geteuid() == 0) {
        full.prepend(program);
        full = QStringList{QStringLiteral("-u"), QStringLiteral("postgres"), QStringLiteral("--")} +
               full;
        program = QStringLiteral("runuser");
    }
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    p.start(program, full);
    if (!p.waitForFinished(timeoutMs) || p.exitStatus() != QProcess::NormalExit ||
        p.exitCode() != 0) {
        m_error = command.join(' ') + QStringLiteral(": ") + QString::fromLocal8Bit(p.readAll());
        if (p.state() != QProcess::NotRunning)
            p.kill();
        return false;
    }
    return true;
}

bool PrivatePostgres::start()
{
    if (m_running)
        return true;
    if (m_binDir.isEmpty()) {
        m_error = QStringLiteral("PostgreSQL is not installed");
        return false;
    }
    // The server's own user owns the scratch directory.
    if (::geteuid() == 0)
        QProcess::execute(QStringLiteral("chown"),
                          {QStringLiteral("postgres:postgres"), m_dir.path()});
    const QString data = m_dir.filePath(QStringLiteral("data"));
    if (!m_initialised) {
        if (!run({bin("initdb"), "-D", data, "-U", user(), "--auth=trust", "-E", "UTF8",
                  "--no-sync", "-N"}))
            return false;
        m_initialised = true;
        m_port = freePort();
        if (m_port == 0) {
            m_error = QStringLiteral("no free port");
            return false;
        }
    }
    const QString options = QStringLiteral("-k %1 -p %2 -c listen_addresses='' -c fsync=off")
                                .arg(m_dir.path())
                                .arg(m_port);
    if (!run({bin("pg_ctl"), "-D", data, "-l", m_dir.filePath("server.log"), "-o", options, "-w",
              "-t", "60", "start"}))
        return false;
    m_running = true;
    // The database, once.
    static const QString creata = QStringLiteral("creata");
    if (!QFile::exists(m_dir.filePath(creata))) {
        if (!run({bin("createdb"), "-h", m_dir.path(), "-p", QString::number(m_port), "-U", user(),
                  database()}))
            return false;
        QFile f(m_dir.filePath(creata));
        f.open(QIODevice::WriteOnly);
    }
    return true;
}

void PrivatePostgres::stop()
{
    if (!m_running)
        return;
    run({bin("pg_ctl"), "-D", m_dir.filePath("data"), "-m", "immediate", "-w", "stop"});
    m_running = false;
}
