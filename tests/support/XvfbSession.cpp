#include "XvfbSession.h"

#include "Scadenze.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace {

XvfbSession *g_current = nullptr;

QString testBinaryDir()
{
    return QCoreApplication::instance() ? QCoreApplication::applicationDirPath()
                                        : QDir::currentPath();
}

} // namespace

XvfbSession::XvfbSession() = default;

XvfbSession::~XvfbSession()
{
    stop();
}

XvfbSession *XvfbSession::current()
{
    return g_current;
}

void XvfbSession::setCurrent(XvfbSession *session)
{
    g_current = session;
}

bool XvfbSession::start(int width, int height)
{
    stop();
    const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    if (xvfb.isEmpty()) {
        m_error = QStringLiteral("Xvfb is not installed");
        return false;
    }
    if (QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty()) {
        m_error = QStringLiteral("xdotool is not installed");
        return false;
    }
    if (!m_dir.isValid()) {
        m_error = QStringLiteral("no temporary folder for the X server");
        return false;
    }

    // Plain POSIX, so the server can start before any QApplication exists.
    int pipeFds[2];
    if (pipe2(pipeFds, O_CLOEXEC) != 0) {
        m_error = QStringLiteral("pipe: %1").arg(QString::fromLocal8Bit(strerror(errno)));
        return false;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    // The server writes its display number on fd 3; its own chatter goes to
    // a log kept for diagnostics.
    posix_spawn_file_actions_adddup2(&actions, pipeFds[1], 3);
    const QByteArray log = QFile::encodeName(m_dir.filePath(QStringLiteral("xvfb.log")));
    posix_spawn_file_actions_addopen(&actions, 1, log.constData(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0644);
    posix_spawn_file_actions_adddup2(&actions, 1, 2);

    const QByteArray program = QFile::encodeName(xvfb);
    const QByteArray screen = QStringLiteral("%1x%2x24").arg(width).arg(height).toLatin1();
    const char *argv[] = {program.constData(), "-displayfd", "3",   "-screen",  "0",
                          screen.constData(),  "-nolisten",  "tcp", "-noreset", nullptr};
    pid_t pid = -1;
    const int rc = posix_spawn(&pid, program.constData(), &actions, nullptr,
                               const_cast<char *const *>(argv), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(pipeFds[1]);
    if (rc != 0) {
        close(pipeFds[0]);
        m_error =
            QStringLiteral("Xvfb did not start: %1").arg(QString::fromLocal8Bit(strerror(rc)));
        return false;
    }
    m_pid = pid;

    // The number arrives once the server listens.
    QByteArray number;
    const int deadline = Scadenze::ms(20000);
    pollfd pfd{pipeFds[0], POLLIN, 0};
    QElapsedTimer elapsed;
    elapsed.start();
    while (!number.endsWith('\n') && elapsed.elapsed() < deadline) {
        if (poll(&pfd, 1, 100) > 0) {
            char buf[32];
            const ssize_t n = read(pipeFds[0], buf, sizeof buf);
            if (n <= 0)
                break;
            number.append(buf, n);
        }
    }
    close(pipeFds[0]);
    bool ok = false;
    const int display = number.trimmed().toInt(&ok);
    if (!ok) {
        QFile logFile(QFile::decodeName(log));
        logFile.open(QIODevice::ReadOnly);
        m_error = QStringLiteral("Xvfb gave no display number within %1 ms:\n%2")
                      .arg(deadline)
                      .arg(QString::fromLocal8Bit(logFile.readAll()));
        stop();
        return false;
    }
    m_display = QStringLiteral(":%1").arg(display);
    return true;
}

void XvfbSession::stop()
{
    if (m_pid <= 0)
        return;
    kill(m_pid, SIGTERM);
    for (int i = 0; i < 100; ++i) {
        if (waitpid(m_pid, nullptr, WNOHANG) == m_pid) {
            m_pid = -1;
            return;
        }
        usleep(20000);
    }
    kill(m_pid, SIGKILL);
    waitpid(m_pid, nullptr, 0);
    m_pid = -1;
}

QProcessEnvironment XvfbSession::environment() const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("QT_QPA_PLATFORM"));
    env.remove(QStringLiteral("WAYLAND_DISPLAY"));
    env.insert(QStringLiteral("DISPLAY"), m_display);
    return env;
}

QString XvfbSession::xdotool(const QStringList &arguments, bool *ok) const
{
    QProcess p;
    p.setProcessEnvironment(environment());
    p.start(QStringLiteral("xdotool"), arguments);
    const bool finished = p.waitForFinished(Scadenze::ms(10000));
    if (ok)
        *ok = finished && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
    return QString::fromLocal8Bit(p.readAllStandardOutput()).trimmed();
}

bool XvfbSession::movePointer(const QPoint &to) const
{
    // "mousemove --sync" waits for a motion, which never comes when the
    // pointer is on the spot already: then there is nothing to send.
    bool ok = false;
    QPoint now(-1, -1);
    const QStringList shell =
        xdotool({QStringLiteral("getmouselocation"), QStringLiteral("--shell")}, &ok)
            .split(QLatin1Char('\n'));
    for (const QString &riga : shell) {
        if (riga.startsWith(QLatin1String("X=")))
            now.setX(riga.mid(2).toInt());
        else if (riga.startsWith(QLatin1String("Y=")))
            now.setY(riga.mid(2).toInt());
    }
    if (ok && now == to)
        return true;
    xdotool({QStringLiteral("mousemove"), QStringLiteral("--sync"), QString::number(to.x()),
             QString::number(to.y())},
            &ok);
    return ok;
}

void XvfbSession::xdotoolDetached(const QStringList &arguments) const
{
    QProcess p;
    p.setProcessEnvironment(environment());
    p.setProgram(QStringLiteral("xdotool"));
    p.setArguments(arguments);
    p.startDetached();
}

QString XvfbSession::waitForWindow(const QString &title, int baseMs) const
{
    QString found;
    Scadenze::finche(
        [&] {
            const QString ids = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                         QStringLiteral("--name"), title});
            found = ids.split(QLatin1Char('\n')).value(0);
            return !found.isEmpty();
        },
        baseMs, 100);
    return found;
}

bool XvfbSession::noWindow(const QString &title) const
{
    return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                    QStringLiteral("--name"), title})
        .isEmpty();
}

bool XvfbSession::focus(const QString &windowId, int baseMs) const
{
    return Scadenze::finche(
        [&] {
            xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), windowId});
            return xdotool({QStringLiteral("getwindowfocus")}) == windowId;
        },
        baseMs, 100);
}

QStringList XvfbSession::windows() const
{
    QStringList lines;
    const QStringList ids = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                     QStringLiteral("--name"), QStringLiteral(".*")})
                                .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &id : ids) {
        const QString name = xdotool({QStringLiteral("getwindowname"), id});
        const QString geometry = xdotool({QStringLiteral("getwindowgeometry"), id}).simplified();
        lines << QStringLiteral("%1 \"%2\" %3").arg(id, name, geometry);
    }
    return lines;
}

QString XvfbSession::screenshot(const QString &name) const
{
    const QString tool = QDir(testBinaryDir()).filePath(QStringLiteral("quadrivo_schermata"));
    QDir dir(testBinaryDir());
    dir.mkpath(QStringLiteral("diagnostica"));
    QString safe = name;
    safe.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9_.-]")), QStringLiteral("_"));
    const QString path = dir.filePath(QStringLiteral("diagnostica/%1.png").arg(safe));
    QProcess p;
    p.setProcessEnvironment(environment());
    p.start(tool, {path});
    if (!p.waitForFinished(Scadenze::ms(10000)) || p.exitCode() != 0)
        return QStringLiteral("(no picture: %1 %2)")
            .arg(p.errorString(), QString::fromLocal8Bit(p.readAllStandardError()).trimmed());
    return path;
}

QString XvfbSession::quadrivo()
{
    return QDir(testBinaryDir()).filePath(QStringLiteral("../app/Quadrivo"));
}

QString XvfbSession::avviaQuadrivo(QProcess &program, const QString &folder,
                                   const QStringList &arguments) const
{
    program.setProcessEnvironment(environment());
    program.setWorkingDirectory(folder);
    program.start(quadrivo(), arguments);
    if (!program.waitForStarted(Scadenze::ms(10000)))
        return {};
    const QString id = waitForWindow(QStringLiteral("^SISTEMA DECIMALE: scomposizione$"));
    if (id.isEmpty() || !focus(id))
        return {};
    return id;
}

bool XvfbSession::aspettaLaFine(QProcess &program, int baseMs)
{
    if (program.state() == QProcess::NotRunning)
        return true;
    return program.waitForFinished(Scadenze::ms(baseMs));
}

QString XvfbSession::diagnostica(const QString &step, QProcess *program) const
{
    QStringList out;
    out << QStringLiteral("=== %1 (display %2, deadline factor %3)")
               .arg(step, m_display)
               .arg(Scadenze::fattore());
    if (program) {
        if (program->state() == QProcess::NotRunning)
            out << QStringLiteral("program ended: %1, status %2")
                       .arg(program->exitStatus() == QProcess::NormalExit
                                ? QStringLiteral("normally")
                                : QStringLiteral("crashed"))
                       .arg(program->exitCode());
        else
            out << QStringLiteral("program still running (pid %1)").arg(program->processId());
        const QString err = QString::fromLocal8Bit(program->readAllStandardError()).trimmed();
        out << QStringLiteral("program stderr:")
            << (err.isEmpty() ? QStringLiteral("(empty)") : err);
    }
    if (isRunning()) {
        const QStringList w = windows();
        out << QStringLiteral("windows on the display:")
            << (w.isEmpty() ? QStringList{QStringLiteral("(none)")} : w);
        out << QStringLiteral("picture of the display: %1").arg(screenshot(step));
    } else {
        out << QStringLiteral("the X server is not running");
    }
    return out.join(QLatin1Char('\n'));
}
