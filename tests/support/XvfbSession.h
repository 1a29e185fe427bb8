#pragma once

#include <QPoint>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <sys/types.h>

// An X server of the test's own (Xvfb) on a display number the server picks
// itself (-displayfd), so parallel tests and the machine's own displays never
// collide; stopped in every exit path. Input is sent with xdotool, as a
// person's would be. Deadlines are stretched by Scadenze.
//
// Two uses: a test starts the real program on the display (avviaQuadrivo),
// or the test process itself runs on it (QUADRIVO_XVFB_MAIN), so it can look
// at its screens while xdotool types.
//
// On a failure, diagnostica() says what a person needs to see why: the
// program's exit status and error output, the windows on the display and the
// path of a picture of the display.
class XvfbSession
{
public:
    XvfbSession();
    ~XvfbSession();
    XvfbSession(const XvfbSession &) = delete;
    XvfbSession &operator=(const XvfbSession &) = delete;

    // Starts the server and waits until it accepts clients. False, with the
    // reason in error(), when it cannot.
    bool start(int width = 1280, int height = 1024);
    void stop();
    bool isRunning() const { return m_pid > 0; }
    QString display() const { return m_display; }
    QString error() const { return m_error; }

    // The environment of a program on this display (not offscreen).
    QProcessEnvironment environment() const;

    // xdotool with these arguments, on this display: its output, trimmed.
    QString xdotool(const QStringList &arguments, bool *ok = nullptr) const;
    // Puts the pointer on `to` (display coordinates) and waits until X has
    // it there.
    bool movePointer(const QPoint &to) const;
    // Starts xdotool and returns at once (keys held while the test's own
    // event loop runs).
    void xdotoolDetached(const QStringList &arguments) const;

    // The first visible window whose title matches the regular expression,
    // waiting up to the stretched deadline; empty when none came.
    QString waitForWindow(const QString &title, int baseMs = 30000) const;
    // Whether no visible window matches now.
    bool noWindow(const QString &title) const;
    // Gives the window the keyboard (there is no window manager to do it)
    // and waits until X says it has it.
    bool focus(const QString &windowId, int baseMs = 10000) const;
    // Every visible window: id, title and geometry, one a line.
    QStringList windows() const;
    // A PNG of the whole display in the build tree; its path, or the reason.
    QString screenshot(const QString &name) const;

    // The built program.
    static QString quadrivo();
    // Starts the program (extra arguments allowed) in `folder` on this
    // display and gives its start window the keyboard; the window's id, or
    // empty (then diagnostica() tells why).
    QString avviaQuadrivo(QProcess &program, const QString &folder,
                          const QStringList &arguments = {}) const;
    // Waits for the program to end by itself.
    static bool aspettaLaFine(QProcess &program, int baseMs = 30000);

    // Everything that explains a failed step (see the class comment). The
    // program's error output is read, so read it only here.
    QString diagnostica(const QString &step, QProcess *program = nullptr) const;

    // The session QUADRIVO_XVFB_MAIN started for this process.
    static XvfbSession *current();
    static void setCurrent(XvfbSession *session);

private:
    QTemporaryDir m_dir;
    QString m_display;
    QString m_error;
    pid_t m_pid = -1;
};

// main() of a test whose own QApplication runs on a private X server: the
// server is started before the application, which connects to it through
// xcb; XvfbSession::current() is that server.
#define QUADRIVO_XVFB_MAIN(TestObject)                                                   \
    int main(int argc, char *argv[])                                                     \
    {                                                                                    \
        XvfbSession xvfb;                                                                \
        if (!xvfb.start()) {                                                             \
            fprintf(stderr, "%s\n", qPrintable(xvfb.error()));                           \
            return 1;                                                                    \
        }                                                                                \
        XvfbSession::setCurrent(&xvfb);                                                  \
        qputenv("DISPLAY", xvfb.display().toLocal8Bit());                                \
        qputenv("QT_QPA_PLATFORM", "xcb");                                               \
        QApplication app(argc, argv);                                                    \
        TestObject tc;                                                                   \
        QTEST_SET_MAIN_SOURCE_PATH                                                       \
        const int status = QTest::qExec(&tc, argc, argv);                                \
        XvfbSession::setCurrent(nullptr);                                                \
        return status;                                                                   \
    }
