#include "platform/printing/BoundedProcess.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QGuiApplication>
#include <QPointer>
#include <QProcess>
#include <QThread>
#include <QTimer>
#include <QWidget>

namespace {

bool waiting = false;

bool isUserInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
        return true;
    default:
        return false;
    }
}

// Drops the user's input for the time of one wait, and turns a window's close
// into the end of the wait.
class InputHold : public QObject
{
public:
    explicit InputHold(QEventLoop &loop) : m_loop(loop) {}

    QList<QPointer<QWidget>> closed;
    bool cancelled = false;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (isUserInput(event->type()))
            return true;
        if (event->type() == QEvent::Close && watched->isWidgetType() &&
            static_cast<QWidget *>(watched)->isWindow()) {
            event->ignore();
            closed.append(static_cast<QWidget *>(watched));
            cancelled = true;
            m_loop.quit();
            return true;
        }
        return false;
    }

private:
    QEventLoop &m_loop;
};

// Closes the window once the loop that ran the waiting handler is the one
// running again: not from inside that handler, whose screen would go away
// under it.
void closeWhenBackAt(QPointer<QWidget> window, int level)
{
    QTimer::singleShot(0, qApp, [window, level] {
        if (!window)
            return;
        if (QThread::currentThread()->loopLevel() > level)
            QTimer::singleShot(20, qApp, [window, level] { closeWhenBackAt(window, level); });
        else
            window->close();
    });
}

} // namespace

QString BoundedProcess::Result::failure(const QString &program) const
{
    switch (outcome) {
    case Outcome::FailedToStart:
        return QStringLiteral("%1 non si avvia: %2").arg(program, errors);
    case Outcome::TimedOut:
        return QStringLiteral("%1: il server di stampa non risponde").arg(program);
    case Outcome::Cancelled:
        return QStringLiteral("%1: stampa interrotta alla chiusura della finestra").arg(program);
    case Outcome::Finished:
        break;
    }
    return QStringLiteral("%1 (%2): %3").arg(program).arg(exitCode).arg(errors.trimmed());
}

bool BoundedProcess::isWaiting()
{
    return waiting;
}

BoundedProcess::Result BoundedProcess::run(const QString &program, const QStringList &arguments,
                                           int timeoutMs)
{
    Result result;
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(env);

    QEventLoop loop;
    QTimer deadline;
    deadline.setSingleShot(true);
    bool timedOut = false;
    QObject::connect(&deadline, &QTimer::timeout, &loop, [&] {
        timedOut = true;
        loop.quit();
    });
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, [&](QProcess::ProcessError e) {
        if (e == QProcess::FailedToStart)
            loop.quit();
    });

    process.start(program, arguments);
    if (process.state() == QProcess::NotRunning && process.error() == QProcess::FailedToStart) {
        result.errors = process.errorString();
        return result;
    }

    const int level = QThread::currentThread()->loopLevel();
    InputHold hold(loop);
    const bool nested = waiting;
    waiting = true;
    if (qApp) {
        qApp->installEventFilter(&hold);
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    deadline.start(timeoutMs);
    if (process.state() != QProcess::NotRunning)
        loop.exec();
    deadline.stop();
    if (qApp) {
        QGuiApplication::restoreOverrideCursor();
        qApp->removeEventFilter(&hold);
    }
    waiting = nested;

    if (process.error() == QProcess::FailedToStart) {
        result.errors = process.errorString();
        return result;
    }
    if (process.state() != QProcess::NotRunning) {
        // A tool stuck on the server is of no more use: it goes now, so
        // neither this wait nor the end of the program waits for it.
        process.kill();
        process.waitForFinished(1000);
        result.outcome = timedOut ? Outcome::TimedOut : Outcome::Cancelled;
    } else {
        result.outcome = Outcome::Finished;
        result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
    if (hold.cancelled)
        result.outcome = Outcome::Cancelled;
    for (const QPointer<QWidget> &w : hold.closed)
        closeWhenBackAt(w, level);
    result.output = QString::fromLocal8Bit(process.readAllStandardOutput());
    result.errors = QString::fromLocal8Bit(process.readAllStandardError());
    return result;
}
