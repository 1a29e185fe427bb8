#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

// A CUPS scheduler of the test's own: configuration, spool, logs and its
// Unix socket live in a temporary directory, and it is stopped by its process
// id when the test is done. The system's scheduler is never touched. Queues
// write each job to a file, so a test can read what was printed.
//
// The process talks to it once exportEnvironment() has set CUPS_SERVER: do
// that before anything asks for printers (libcups reads it once).
class PrivateCupsDaemon
{
public:
    PrivateCupsDaemon();
    ~PrivateCupsDaemon();
    PrivateCupsDaemon(const PrivateCupsDaemon &) = delete;
    PrivateCupsDaemon &operator=(const PrivateCupsDaemon &) = delete;

    // Starts cupsd and waits for its socket. False, with the reason in
    // error(), when it cannot (not installed, bad configuration).
    bool start();
    // Also a scheduler that is frozen.
    void stop();
    // Holds the scheduler with SIGSTOP: it still accepts connections (the
    // kernel queues them) but answers nothing, like a hung print server.
    void freeze();
    void thaw();
    bool isRunning() const;
    qint64 pid() const;

    QString socketPath() const;
    // CUPS_SERVER and friends, pointing at this scheduler only.
    QProcessEnvironment environment() const;
    // Puts environment() into this process.
    void exportEnvironment() const;

    // Adds an enabled queue whose device is the file returned, with a driver
    // that passes PDF through unchanged. Empty on failure (see error()).
    QString addFileQueue(const QString &name);
    bool setDefault(const QString &name);
    // The queue refuses new jobs.
    bool reject(const QString &name);
    bool accept(const QString &name);
    // The request ids of the queue's jobs, done or not ("Aula-3").
    QStringList jobs(const QString &name);
    bool remove(const QString &name);

    // Waits until a job has written a complete PDF to a queue's file.
    bool waitForOutput(const QString &file, int timeoutMs = 30000) const;

    QString error() const { return m_error; }
    // The scheduler's error log, for failure messages.
    QString log() const;

private:
    bool run(const QString &program, const QStringList &arguments);
    QString path(const QString &relative) const;

    QTemporaryDir m_root;
    QProcess m_cupsd;
    QString m_error;
};
