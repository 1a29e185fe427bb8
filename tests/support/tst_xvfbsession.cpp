#include "support/Scadenze.h"
#include "support/XvfbSession.h"

#include <QApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QTest>

// The end-to-end fixture itself: this process runs on its own X server,
// real keys typed by xdotool reach its widgets, and a failure report names
// the windows and leaves a picture of the display.
class TestXvfbSession : public QObject
{
    Q_OBJECT

private slots:
    void theTestRunsOnAServerItStartedItself()
    {
        XvfbSession *x = XvfbSession::current();
        QVERIFY(x);
        QVERIFY(x->display().startsWith(QLatin1Char(':')));
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
    }

    void realKeysReachTheFocusedWidget()
    {
        XvfbSession *x = XvfbSession::current();
        QLineEdit campo;
        campo.setWindowTitle(QStringLiteral("Prova tastiera"));
        campo.show();
        const QString id = x->waitForWindow(QStringLiteral("^Prova tastiera$"));
        QVERIFY(!id.isEmpty());
        QVERIFY(x->focus(id));
        x->xdotool({QStringLiteral("type"), QStringLiteral("473")});
        QVERIFY(Scadenze::finche([&] { return campo.text() == QStringLiteral("473"); }, 5000));
    }

    void aFailureReportNamesTheWindowsAndKeepsAPicture()
    {
        XvfbSession *x = XvfbSession::current();
        QLineEdit campo;
        campo.setWindowTitle(QStringLiteral("Finestra visibile"));
        campo.show();
        QVERIFY(!x->waitForWindow(QStringLiteral("^Finestra visibile$")).isEmpty());
        const QString report = x->diagnostica(QStringLiteral("prova"));
        QVERIFY2(report.contains(QStringLiteral("\"Finestra visibile\"")), qPrintable(report));
        const QString picture = x->screenshot(QStringLiteral("prova"));
        QVERIFY2(QFileInfo(picture).size() > 0, qPrintable(picture));
        QImage image(picture);
        QCOMPARE(image.size(), QSize(1280, 1024));
    }

    void deadlinesNeverShrink()
    {
        QVERIFY(Scadenze::fattore() >= 1.0);
        QVERIFY(Scadenze::ms(1000) >= 1000);
        qputenv("QUADRIVO_TEST_TIMEOUT_FACTOR", "3");
        QVERIFY(Scadenze::ms(1000) >= 3000);
        qunsetenv("QUADRIVO_TEST_TIMEOUT_FACTOR");
        QVERIFY(!Scadenze::finche([] { return false; }, 100));
    }
};

QUADRIVO_XVFB_MAIN(TestXvfbSession)
#include "tst_xvfbsession.moc"
