#include "platform/printing/PrinterFonts.h"
#include "platform/printing/RecordingPrinter.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <cstring>

namespace {

// Run as a child with this argument, the test prints the check's answer
// under whatever fontconfig configuration its environment names.
const char childArgument[] = "--courier-check";

// The directory holding a font family's files, as fontconfig finds it now.
QString fontDirectory(const QString &family)
{
    QProcess list;
    list.start(QStringLiteral("fc-list"),
               {QStringLiteral("-f"), QStringLiteral("%{file}\n"), family});
    if (!list.waitForFinished())
        return {};
    const QString first =
        QString::fromLocal8Bit(list.readAllStandardOutput()).section(QLatin1Char('\n'), 0, 0);
    return first.isEmpty() ? QString() : QFileInfo(first).absolutePath();
}

} // namespace

class TestPrinterFonts : public QObject
{
    Q_OBJECT

private slots:
    void courierIsAvailableWithTheLiberationFonts()
    {
        QVERIFY2(QFontDatabase::families().contains(QStringLiteral("Liberation Mono")),
                 "fonts-liberation2 is not installed");
        QVERIFY(PrinterFonts::courierAvailable());
        QCOMPARE(PrinterFonts::resolvedFamily(QStringLiteral("Courier New")),
                 QStringLiteral("Liberation Mono"));
    }

    void thePrintersFontListNamesCourierNew()
    {
        QVERIFY(PrinterFonts::families().contains(QStringLiteral("Courier New")));
        RecordingPrinter printer;
        bool found = false;
        for (int i = 0; i < printer.FontCount() && !found; ++i)
            found = printer.Fonts(i) == QLatin1String("Courier New");
        QVERIFY(found);
    }

    void theCheckFollowsTheFontsFontconfigHas_data()
    {
        QTest::addColumn<QStringList>("families");
        QTest::addColumn<QString>("answer");
        QTest::newRow("only DejaVu") << QStringList{"DejaVu Sans", "DejaVu Sans Mono"} << "no";
        QTest::newRow("DejaVu and Liberation")
            << QStringList{"DejaVu Sans", "DejaVu Sans Mono", "Liberation Mono"} << "yes";
    }
    void theCheckFollowsTheFontsFontconfigHas()
    {
        QFETCH(QStringList, families);
        QFETCH(QString, answer);
        QTemporaryDir home;
        QVERIFY(home.isValid());

        // A configuration with the system's rules (aliases included) but only
        // the fonts in the directories of the given families.
        QStringList dirs;
        for (const QString &family : families) {
            const QString dir = fontDirectory(family);
            QVERIFY2(!dir.isEmpty() && QFileInfo(dir).isDir(), qPrintable(family));
            if (!dirs.contains(dir))
                dirs << dir;
        }
        QString config =
            QStringLiteral("<?xml version=\"1.0\"?>\n"
                           "<!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\">\n"
                           "<fontconfig>\n");
        for (const QString &dir : dirs)
            config += QStringLiteral("  <dir>%1</dir>\n").arg(dir.toHtmlEscaped());
        config += QStringLiteral("  <cachedir>%1</cachedir>\n"
                                 "  <include ignore_missing=\"yes\">/etc/fonts/conf.d</include>\n"
                                 "</fontconfig>\n")
                      .arg(home.filePath(QStringLiteral("cache")).toHtmlEscaped());
        const QString configFile = home.filePath(QStringLiteral("fonts.conf"));
        QFile f(configFile);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(config.toUtf8());
        f.close();

        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("FONTCONFIG_FILE"), configFile);
        // Keep the user's own font folders out of it.
        env.insert(QStringLiteral("HOME"), home.path());
        env.insert(QStringLiteral("XDG_DATA_HOME"), home.filePath(QStringLiteral("data")));
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), home.filePath(QStringLiteral("config")));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        QProcess child;
        child.setProcessEnvironment(env);
        child.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(childArgument)});
        QVERIFY(child.waitForFinished(60000));
        QCOMPARE(child.exitCode(), 0);
        const QString output = QString::fromLocal8Bit(child.readAllStandardOutput()).trimmed();
        QCOMPARE(output, answer);
    }
};

int main(int argc, char *argv[])
{
    if (argc > 1 && std::strcmp(argv[1], childArgument) == 0) {
        QGuiApplication app(argc, argv);
        std::puts(PrinterFonts::courierAvailable() ? "yes" : "no");
        return 0;
    }
    QApplication app(argc, argv);
    TestPrinterFonts test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_printerfonts.moc"
