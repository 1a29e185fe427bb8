#include "support/PrivateCupsDaemon.h"
#include "support/Scadenze.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <grp.h>
#include <signal.h>
#include <unistd.h>

namespace {

const QString cupsd = QStringLiteral("/usr/sbin/cupsd");

// A driver that sends the job's PDF to the device as it is. A raw queue
// would write nothing to a file device.
const char passThroughPpd[] = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "QPDFFILE.PPD"
*Manufacturer: "Quadrivo"
*Product: "(Quadrivo)"
*ModelName: "Quadrivo PDF file"
*ShortNickName: "Quadrivo PDF file"
*NickName: "Quadrivo PDF file"
*PSVersion: "(3010.000) 0"
*LanguageLevel: "3"
*ColorDevice: True
*DefaultColorSpace: RGB
*FileSystem: False
*Throughput: "1"
*LandscapeOrientation: Plus90
*TTRasterizer: Type42
*cupsVersion: 2.4
*cupsFilter2: "application/vnd.cups-pdf application/pdf 0 -"
*OpenUI *PageSize/Page Size: PickOne
*OrderDependency: 10 AnySetup *PageSize
*DefaultPageSize: A4
*PageSize A4/A4: "<</PageSize[595 842]/ImagingBBox null>>setpagedevice"
*CloseUI: *PageSize
*OpenUI *PageRegion/Page Region: PickOne
*OrderDependency: 10 AnySetup *PageRegion
*DefaultPageRegion: A4
*PageRegion A4/A4: "<</PageSize[595 842]/ImagingBBox null>>setpagedevice"
*CloseUI: *PageRegion
*DefaultImageableArea: A4
*ImageableArea A4/A4: "18 18 577 824"
*DefaultPaperDimension: A4
*PaperDimension A4/A4: "595 842"
)ppd";

bool writeFile(const QString &name, const QByteArray &contents)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(contents) == contents.size();
}

} // namespace

PrivateCupsDaemon::PrivateCupsDaemon() = default;

PrivateCupsDaemon::~PrivateCupsDaemon()
{
    stop();
}

QString PrivateCupsDaemon::path(const QString &relative) const
{
    return m_root.filePath(relative);
}

QString PrivateCupsDaemon::socketPath() const
{
    return path(QStringLiteral("cups.sock"));
}

bool PrivateCupsDaemon::start()
{
    if (!m_root.isValid()) {
        m_error = QStringLiteral("no temporary directory: %1").arg(m_root.errorString());
        return false;
    }
    if (!QFileInfo(cupsd).isExecutable()) {
        m_error = QStringLiteral("%1 is not installed (package cups-daemon)").arg(cupsd);
        return false;
    }
    // Filters run as an unprivileged user and must reach the spool inside.
    QFile::setPermissions(m_root.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                             QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
                                             QFile::ExeOther);
    for (const char *dir : {"etc/ppd", "spool/tmp", "cache", "state", "log", "out"})
        QDir(m_root.path()).mkpath(QLatin1String(dir));

    const group *g = getgrgid(getgid());
    const QString systemGroup = g ? QString::fromLocal8Bit(g->gr_name) : QStringLiteral("root");
    const QString files = QStringLiteral("ServerRoot %1\n"
                                         "RequestRoot %2\n"
                                         "TempDir %3\n"
                                         "CacheDir %4\n"
                                         "StateDir %5\n"
                                         "AccessLog %6/access_log\n"
                                         "ErrorLog %6/error_log\n"
                                         "PageLog %6/page_log\n"
                                         "Printcap\n"
                                         "FileDevice Yes\n"
                                         "SystemGroup %7\n")
                              .arg(path("etc"), path("spool"), path("spool/tmp"), path("cache"),
                                   path("state"), path("log"), systemGroup);
    const QString server = QStringLiteral("Listen %1\n"
                                          "LogLevel info\n"
                                          "Browsing No\n"
                                          "WebInterface No\n"
                                          "DefaultAuthType None\n"
                                          "ErrorPolicy abort-job\n"
                                          "<Location />\n"
                                          "  Order allow,deny\n"
                                          "  Allow all\n"
                                          "</Location>\n"
                                          "<Policy default>\n"
                                          "  <Limit All>\n"
                                          "    Order deny,allow\n"
                                          "  </Limit>\n"
                                          "</Policy>\n")
                               .arg(socketPath());
    if (!writeFile(path("etc/cups-files.conf"), files.toLocal8Bit()) ||
        !writeFile(path("etc/cupsd.conf"), server.toLocal8Bit()) ||
        !writeFile(path("driver.ppd"), passThroughPpd)) {
        m_error = QStringLiteral("cannot write the configuration in %1").arg(m_root.path());
        return false;
    }

    m_cupsd.setProcessEnvironment(environment());
    m_cupsd.setProcessChannelMode(QProcess::MergedChannels);
    m_cupsd.start(cupsd, {QStringLiteral("-f"), QStringLiteral("-c"), path("etc/cupsd.conf"),
                          QStringLiteral("-s"), path("etc/cups-files.conf")});
    if (!m_cupsd.waitForStarted()) {
        m_error = QStringLiteral("cupsd did not start: %1").arg(m_cupsd.errorString());
        return false;
    }
    const QDeadlineTimer deadline(Scadenze::ms(20000));
    while (!QFileInfo(socketPath()).exists()) {
        if (m_cupsd.state() != QProcess::Running || deadline.hasExpired()) {
            m_cupsd.waitForFinished(100);
            m_error = QStringLiteral("cupsd did not open %1: %2\n%3")
                          .arg(socketPath(), QString::fromLocal8Bit(m_cupsd.readAll()), log());
            stop();
            return false;
        }
        QThread::msleep(20);
    }
    // The socket exists a moment before the scheduler answers on it.
    while (!run(QStringLiteral("lpstat"), {QStringLiteral("-r")})) {
        if (deadline.hasExpired())
            return false;
        QThread::msleep(50);
    }
    return true;
}

void PrivateCupsDaemon::stop()
{
    if (m_cupsd.state() == QProcess::NotRunning)
        return;
    const qint64 id = m_cupsd.processId();
    if (id > 0) {
        ::kill(pid_t(id), SIGCONT);
        ::kill(pid_t(id), SIGTERM);
    }
    if (!m_cupsd.waitForFinished(10000)) {
        ::kill(pid_t(id), SIGKILL);
        m_cupsd.waitForFinished(5000);
    }
}

void PrivateCupsDaemon::freeze()
{
    if (m_cupsd.state() == QProcess::Running)
        ::kill(pid_t(m_cupsd.processId()), SIGSTOP);
}

void PrivateCupsDaemon::thaw()
{
    if (m_cupsd.state() == QProcess::Running)
        ::kill(pid_t(m_cupsd.processId()), SIGCONT);
}

bool PrivateCupsDaemon::isRunning() const
{
    return m_cupsd.state() == QProcess::Running;
}

qint64 PrivateCupsDaemon::pid() const
{
    return m_cupsd.processId();
}

QProcessEnvironment PrivateCupsDaemon::environment() const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("CUPS_SERVER"), socketPath());
    // client.conf and lpoptions are looked for here, not in /etc/cups.
    env.insert(QStringLiteral("CUPS_SERVERROOT"), path("etc"));
    env.remove(QStringLiteral("LPDEST"));
    env.remove(QStringLiteral("PRINTER"));
    return env;
}

void PrivateCupsDaemon::exportEnvironment() const
{
    qputenv("CUPS_SERVER", QFile::encodeName(socketPath()));
    qputenv("CUPS_SERVERROOT", QFile::encodeName(path("etc")));
    qunsetenv("LPDEST");
    qunsetenv("PRINTER");
}

QString PrivateCupsDaemon::addFileQueue(const QString &name)
{
    const QString output = path(QStringLiteral("out/%1.pdf").arg(name));
    if (!run(QStringLiteral("lpadmin"),
             {QStringLiteral("-p"), name, QStringLiteral("-E"), QStringLiteral("-v"),
              QStringLiteral("file://") + output, QStringLiteral("-P"), path("driver.ppd")}))
        return {};
    return output;
}

bool PrivateCupsDaemon::setDefault(const QString &name)
{
    return run(QStringLiteral("lpadmin"), {QStringLiteral("-d"), name});
}

bool PrivateCupsDaemon::reject(const QString &name)
{
    return run(QStringLiteral("cupsreject"), {name});
}

bool PrivateCupsDaemon::accept(const QString &name)
{
    return run(QStringLiteral("cupsaccept"), {name});
}

QStringList PrivateCupsDaemon::jobs(const QString &name)
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(QStringLiteral("lpstat"),
                  {QStringLiteral("-W"), QStringLiteral("all"), QStringLiteral("-o"), name});
    QStringList ids;
    if (!process.waitForFinished(Scadenze::ms(30000)))
        return ids;
    // "Aula-3   root   2048   Mon 23 Nov ..."
    for (const QString &line : QString::fromLocal8Bit(process.readAllStandardOutput())
                                   .split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        ids << line.section(QLatin1Char(' '), 0, 0);
    return ids;
}

bool PrivateCupsDaemon::remove(const QString &name)
{
    return run(QStringLiteral("lpadmin"), {QStringLiteral("-x"), name});
}

bool PrivateCupsDaemon::waitForOutput(const QString &file, int timeoutMs) const
{
    const QDeadlineTimer deadline(Scadenze::ms(timeoutMs));
    do {
        QFile f(file);
        if (f.open(QIODevice::ReadOnly) && f.size() > 0) {
            const qint64 size = f.size();
            f.seek(qMax<qint64>(0, size - 32));
            // Complete, and no longer growing.
            if (f.readAll().contains("%%EOF")) {
                QThread::msleep(100);
                if (QFileInfo(file).size() == size)
                    return true;
            }
        }
        QThread::msleep(50);
    } while (!deadline.hasExpired());
    return false;
}

QString PrivateCupsDaemon::log() const
{
    QFile f(path("log/error_log"));
    return f.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(f.readAll()) : QString();
}

bool PrivateCupsDaemon::run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForStarted() || !process.waitForFinished(Scadenze::ms(30000))) {
        m_error = QStringLiteral("%1: %2").arg(program, process.errorString());
        return false;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        m_error = QStringLiteral("%1 %2: %3")
                      .arg(program, arguments.join(QLatin1Char(' ')),
                           QString::fromLocal8Bit(process.readAll()));
        return false;
    }
    return true;
}
