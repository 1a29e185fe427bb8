#pragma once

#include <QString>
#include <QTemporaryDir>

// A PostgreSQL server of the test's own: initdb in a scratch directory, a
// free port, its unix socket in that directory; never the system's server.
// As root it runs as the unprivileged user "postgres" (initdb refuses root).
// Stopped by stop() and by the destructor, whatever happened.
class PrivatePostgres
{
public:
    PrivatePostgres();
    ~PrivatePostgres();
    PrivatePostgres(const PrivatePostgres &) = delete;
    PrivatePostgres &operator=(const PrivatePostgres &) = delete;

    // Creates the cluster (once) and starts the server; false with error().
    bool start();
    void stop();
    bool running() const { return m_running; }

    QString socketDir() const { return m_dir.path(); }
    int port() const { return m_port; }
    QString user() const { return QStringLiteral("quadrivo"); }
    QString database() const { return QStringLiteral("quadrivo"); }
    QString error() const { return m_error; }

private:
    bool run(const QStringList &command, int timeoutMs = 60000);
    QString bin(const QString &tool) const;

    QTemporaryDir m_dir;
    QString m_binDir;
    int m_port = 0;
    bool m_initialised = false;
    bool m_running = false;
    QString m_error;
};
