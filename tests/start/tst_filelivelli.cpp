#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "platform/controls/Label.h"
#include "start/FileLivelli.h"
#include "start/FrmInizio.h"
#include "start/SequentialFile.h"
#include "support/FileTest.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>
#include <csignal>
#include <optional>
#include <sys/resource.h>
#include <unistd.h>

using namespace FileTest;

namespace {

// The state the defaults button leaves.
void setDefaults(StatoCondiviso &s)
{
    s.ColoreSfondo = QStringLiteral("16763135");
    s.ColoreCaratteri = QStringLiteral("328965");
    s.ColoreScansioneChiaro = QStringLiteral("16763135");
    s.ColoreScansioneScuro = QStringLiteral("16724735");
    s.IndiceSfondo = 4;
    s.IndiceCaratteri = 9;
    s.IndiceScansione = 4;
}

// What reading the first item as a 16-bit number should give, worked out
// independently of the reader: skip blanks and line ends, cut at a comma or
// line end, the rest must be a plain decimal number, rounded half to even.
std::optional<int> expectedFamily(const QByteArray &content)
{
    qsizetype i = 0;
    while (i < content.size() && QByteArray(" \t\r\n").contains(content[i]))
        ++i;
    if (i == content.size())
        return std::nullopt;
    qsizetype end = i;
    while (end < content.size() && !QByteArray(",\r\n").contains(content[end]))
        ++end;
    const QString item = QString::fromLatin1(content.mid(i, end - i));
    static const QRegularExpression number(
        QStringLiteral("^[ \\t]*([+-]?(?:\\d+\\.?\\d*|\\.\\d+))(?:[eEdD]([+-]?\\d+))?[ \\t]*$"));
    const auto m = number.match(item);
    if (!m.hasMatch())
        return std::nullopt;
    QString text = m.captured(1);
    if (m.hasCaptured(2))
        text += QStringLiteral("e") + m.captured(2);
    bool ok = false;
    const double v = QLocale::c().toDouble(text, &ok);
    if (!ok || !std::isfinite(v))
        return std::nullopt;
    const double r = std::nearbyint(v);
    if (r < -32768 || r > 32767)
        return std::nullopt;
    return int(r);
}

// Limits the size of any file this process writes, so a write runs out of
// room half-way as on a full disk; restored when it goes.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        rlimit limit = m_old;
        limit.rlim_cur = bytes;
        m_ok = ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    bool ok() const { return m_ok; }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
    bool m_ok = false;
};

QStringList entries(const QString &dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

class TestFileLivelli : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;
    std::unique_ptr<QTemporaryDir> dir;

    AppContext &ctx() { return **t; }
    StatoCondiviso &s() { return ctx().stato; }
    QString file() const { return dir->filePath(QStringLiteral("Quadrivo.dat")); }
    SequentialFile &file1() { return FileLivelli::file1(ctx()); }

    RuntimeError::Code saveError(const std::function<void()> &save)
    {
        try {
            save();
        } catch (const RuntimeError &e) {
            return e.code();
        }
        return RuntimeError::Code(0);
    }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void init()
    {
        t = std::make_unique<TestContext>();
        dir = std::make_unique<QTemporaryDir>();
        QVERIFY(dir->isValid());
        ctx().setWorkingDirectory(dir->path());
        s().NomeEseguibile = QStringLiteral("Quadrivo");
    }

    void cleanup()
    {
        t.reset();
        ScreenTest::settle();
        QFile::setPermissions(dir->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        dir.reset();
    }

    // ---- Writing ----

    void theFileIsNamedAfterTheExecutableInTheWorkingDirectory()
    {
        QCOMPARE(FileLivelli::nome(s()), QStringLiteral("Quadrivo.dat"));
        s().NomeEseguibile = QStringLiteral("Altro");
        QCOMPARE(FileLivelli::nome(s()), QStringLiteral("Altro.dat"));
        FileLivelli::SalvaLivello(ctx());
        QVERIFY(QFile::exists(dir->filePath(QStringLiteral("Altro.dat"))));
    }

    void theDefaultsAreWrittenAsElevenLinesWithCrLf()
    {
        setDefaults(s());
        FileLivelli::MemorizzaImpostazioni(ctx());
        QCOMPARE(readAll(file()), DefaultLines);
        QVERIFY(!file1().isOpen());
    }

    void theSwitchesAreWrittenAsWordsAndIntegersWithTheirSign()
    {
        setDefaults(s());
        s().OpzioneTesto = QStringLiteral("testo");
        s().OpzioneB = true;
        s().IndiceSfondo = 10;
        s().IndiceScansione = 0;
        s().IndiceCaratteri = -1;
        FileLivelli::MemorizzaImpostazioni(ctx());
        const QList<QByteArray> lines = readAll(file()).split('\n');
        QCOMPARE(lines.size(), 12);
        QCOMPARE(lines[1], QByteArray("testo\r"));
        QCOMPARE(lines[3], QByteArray("False\r"));
        QCOMPARE(lines[4], QByteArray("True\r"));
        QCOMPARE(lines[8], QByteArray(" 10\r"));
        QCOMPARE(lines[9], QByteArray(" 0\r"));
        QCOMPARE(lines[10], QByteArray("-1\r"));
        QCOMPARE(lines[11], QByteArray());
    }

    void aSecondSaveOverwritesTheFileCompletely()
    {
        writeAll(file(), QByteArray(5000, 'x'));
        setDefaults(s());
        FileLivelli::MemorizzaImpostazioni(ctx());
        QCOMPARE(readAll(file()), DefaultLines);
        s().FamigliaSimboli = 3;
        FileLivelli::SalvaLivello(ctx());
        QCOMPARE(readAll(file()), QByteArray(" 3\r\n"));
        FileLivelli::MemorizzaImpostazioni(ctx());
        QCOMPARE(readAll(file()), DefaultLines);
    }

    void salvaLivelloWritesTheFamilyAlone()
    {
        s().FamigliaSimboli = 12;
        FileLivelli::SalvaLivello(ctx());
        QCOMPARE(readAll(file()), QByteArray(" 12\r\n"));
        s().FamigliaSimboli = -7;
        FileLivelli::SalvaLivello(ctx());
        QCOMPARE(readAll(file()), QByteArray("-7\r\n"));
        QVERIFY(!file1().isOpen());
    }

    void whatSalvaLivelloWritesLeggiLivelliReadsBack()
    {
        s().FamigliaSimboli = 9;
        FileLivelli::SalvaLivello(ctx());
        s().FamigliaSimboli = 1;
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Quadrivo"));
        QCOMPARE(s().FamigliaSimboli.value(), 9);
        QVERIFY(!file1().isOpen());
    }

    void noTemporaryFileIsLeftBehind()
    {
        setDefaults(s());
        FileLivelli::MemorizzaImpostazioni(ctx());
        FileLivelli::SalvaLivello(ctx());
        QCOMPARE(entries(dir->path()), QStringList{QStringLiteral("Quadrivo.dat")});
    }

    // ---- Writes that fail ----

    void aReadOnlyDirectoryWithoutTheFileIsAnError()
    {
        ReadOnlyDir readOnly(dir->path());
        if (!readOnly.holds())
            QSKIP("this file system lets the directory be written whatever its mode");

        setDefaults(s());
        QCOMPARE(saveError([&] { FileLivelli::MemorizzaImpostazioni(ctx()); }),
                 RuntimeError::PathFileAccessError);
        QCOMPARE(saveError([&] { FileLivelli::SalvaLivello(ctx()); }),
                 RuntimeError::PathFileAccessError);
        QCOMPARE(entries(dir->path()), QStringList{});
        QVERIFY(!file1().isOpen());

        readOnly.release();
        // Once the directory can be written again, so can the file.
        FileLivelli::MemorizzaImpostazioni(ctx());
        QCOMPARE(readAll(file()), DefaultLines);
    }

    void aReadOnlyDirectoryWithAWritableFileIsWrittenInPlace()
    {
        writeAll(file(), QByteArray(5000, 'x'));
        ReadOnlyDir readOnly(dir->path());
        if (!readOnly.holds())
            QSKIP("this file system lets the directory be written whatever its mode");

        setDefaults(s());
        FileLivelli::MemorizzaImpostazioni(ctx());
        QCOMPARE(readAll(file()), DefaultLines);
        s().FamigliaSimboli = 7;
        FileLivelli::SalvaLivello(ctx());
        QCOMPARE(readAll(file()), QByteArray(" 7\r\n")); // truncated, not overlaid
        QCOMPARE(entries(dir->path()), QStringList{QStringLiteral("Quadrivo.dat")});
        QVERIFY(!file1().isOpen());
    }

    void aWritableDirectoryStillReplacesTheFileWhole()
    {
        // The write in place is only for directories that refuse a new file:
        // elsewhere the new file is made beside the old and put in its place,
        // so the old file's inode is not the one that holds the new contents.
        writeAll(file(), QByteArrayLiteral("old contents\r\n"));
        QFile old(file());
        QVERIFY(old.open(QIODevice::ReadOnly));
        setDefaults(s());
        FileLivelli::MemorizzaImpostazioni(ctx());
        QCOMPARE(old.readAll(), QByteArray("old contents\r\n"));
        QCOMPARE(readAll(file()), DefaultLines);
    }

    void aWriteThatRunsOutOfRoomLeavesTheOldFileWhole()
    {
        const QByteArray old = QByteArray("old contents, long enough to be told apart\r\n");
        writeAll(file(), old);
        setDefaults(s());
        RuntimeError::Code code{};
        {
            // Room for a few bytes only: the new file breaks off half-way.
            FileSizeLimit limit(16);
            QVERIFY(limit.ok());
            code = saveError([&] { FileLivelli::MemorizzaImpostazioni(ctx()); });
        }
        QCOMPARE(code, RuntimeError::DiskFull);
        QCOMPARE(readAll(file()), old);
        QCOMPARE(entries(dir->path()), QStringList{QStringLiteral("Quadrivo.dat")});
        QVERIFY(!file1().isOpen());
    }

    void aWorkingDirectoryThatDoesNotExistIsPathNotFound()
    {
        ctx().setWorkingDirectory(dir->filePath(QStringLiteral("missing/deeper")));
        QCOMPARE(saveError([&] { FileLivelli::SalvaLivello(ctx()); }), RuntimeError::PathNotFound);
        QVERIFY(!QFileInfo::exists(dir->filePath(QStringLiteral("missing"))));
    }

    void aWorkingDirectoryThatIsAFileIsPathNotFound()
    {
        const QString plain = dir->filePath(QStringLiteral("plain"));
        writeAll(plain, QByteArrayLiteral("not a directory"));
        ctx().setWorkingDirectory(plain);
        QCOMPARE(saveError([&] { FileLivelli::MemorizzaImpostazioni(ctx()); }),
                 RuntimeError::PathNotFound);
        QCOMPARE(readAll(plain), QByteArray("not a directory"));
    }

    void aDirectoryInPlaceOfTheFileIsAnAccessError()
    {
        QVERIFY(QDir(dir->path()).mkdir(QStringLiteral("Quadrivo.dat")));
        QCOMPARE(saveError([&] { FileLivelli::SalvaLivello(ctx()); }),
                 RuntimeError::PathFileAccessError);
        QVERIFY(QFileInfo(file()).isDir());
    }

    // ---- File 1 ----

    void bothWritersCloseFileOneLeftOpenByAFailedRead()
    {
        writeAll(file(), QByteArrayLiteral("abc\r\n"));
        s().FamigliaSimboli = 2;
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Quadrivo"));
        QCOMPARE(s().FamigliaSimboli.value(), 2);
        QVERIFY(file1().isOpenForInput());

        // Still open: a second read cannot open it again, even of a good file.
        writeAll(dir->filePath(QStringLiteral("Buono.dat")), QByteArrayLiteral(" 5\r\n"));
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Buono"));
        QCOMPARE(s().FamigliaSimboli.value(), 2);

        FileLivelli::SalvaLivello(ctx());
        QVERIFY(!file1().isOpen());
        QCOMPARE(readAll(file()), QByteArray(" 2\r\n"));

        writeAll(file(), QByteArrayLiteral("xyz"));
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Quadrivo"));
        QVERIFY(file1().isOpen());
        setDefaults(s());
        FileLivelli::MemorizzaImpostazioni(ctx());
        QVERIFY(!file1().isOpen());
        QCOMPARE(readAll(file()), DefaultLines);

        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Buono"));
        QCOMPARE(s().FamigliaSimboli.value(), 5);
    }

    void aFailedOpenLeavesFileOneClosed()
    {
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Assente"));
        QVERIFY(!file1().isOpen());
        QVERIFY(QDir(dir->path()).mkdir(QStringLiteral("Cartella.dat")));
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Cartella"));
        QVERIFY(!file1().isOpen());
    }

    void theExistenceCheckIsSilentAndChangesNothing()
    {
        const StatoCondiviso before = s();
        FileLivelli::VerificaEsistenzaFile(ctx(), QStringLiteral("Quadrivo"));
        QVERIFY(!file1().isOpen());

        // The bare name, without ".dat": that file is opened and closed.
        writeAll(dir->filePath(QStringLiteral("Quadrivo")), QByteArrayLiteral("7"));
        writeAll(file(), QByteArrayLiteral(" 3\r\n"));
        FileLivelli::VerificaEsistenzaFile(ctx(), QStringLiteral("Quadrivo"));
        QVERIFY(!file1().isOpen());
        QCOMPARE(readAll(dir->filePath(QStringLiteral("Quadrivo"))), QByteArray("7"));
        QCOMPARE(readAll(file()), QByteArray(" 3\r\n"));

        FileLivelli::VerificaEsistenzaFile(ctx(), QString());
        QVERIFY(QDir(dir->path()).mkdir(QStringLiteral("Cartella")));
        FileLivelli::VerificaEsistenzaFile(ctx(), QStringLiteral("Cartella"));
        FileLivelli::VerificaEsistenzaFile(ctx(), QStringLiteral("no/such/place"));
        QVERIFY(!file1().isOpen());
        QCOMPARE(s().FamigliaSimboli.value(), before.FamigliaSimboli.value());
        QVERIFY(t->errors->errors.isEmpty());
    }

    void theExistenceCheckLeavesAFileOneOpenByAFailedReadOpen()
    {
        writeAll(file(), QByteArrayLiteral("?"));
        writeAll(dir->filePath(QStringLiteral("Quadrivo")), QByteArrayLiteral("7"));
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Quadrivo"));
        QVERIFY(file1().isOpenForInput());
        FileLivelli::VerificaEsistenzaFile(ctx(), QStringLiteral("Quadrivo"));
        QVERIFY(file1().isOpenForInput());
    }

    // ---- Reading ----

    void leggiLivelliReadsTheFirstItemAsANumber_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("family");
        const int same = 1; // the family before the read
        QTest::newRow("printed integer") << QByteArray(" 7\r\n") << 7;
        QTest::newRow("bare digit") << QByteArray("3") << 3;
        QTest::newRow("blanks and tabs first") << QByteArray(" \t 11\r\n") << 11;
        QTest::newRow("empty lines first") << QByteArray("\r\n\r\n 4\r\n") << 4;
        QTest::newRow("lf line ends") << QByteArray("\n6\n") << 6;
        QTest::newRow("comma ends the item") << QByteArray("  12 , 5\r\n") << 12;
        QTest::newRow("only the first item") << QByteArray("2\r\n9\r\n") << 2;
        QTest::newRow("negative") << QByteArray("-4") << -4;
        QTest::newRow("plus sign") << QByteArray("+5") << 5;
        QTest::newRow("largest") << QByteArray("32767") << 32767;
        QTest::newRow("smallest") << QByteArray("-32768\r\n") << -32768;
        QTest::newRow("half rounds to even, down") << QByteArray("2.5") << 2;
        QTest::newRow("half rounds to even, up") << QByteArray("3.5") << 4;
        QTest::newRow("fraction") << QByteArray("7.25") << 7;
        QTest::newRow("exponent") << QByteArray("1E1") << 10;
        QTest::newRow("double exponent") << QByteArray("25D-1") << 2;
        QTest::newRow("leading point") << QByteArray("-.6") << -1;
        QTest::newRow("zero") << QByteArray("0") << 0;
        QTest::newRow("empty file") << QByteArray() << same;
        QTest::newRow("blanks only") << QByteArray("  \r\n \r\n") << same;
        QTest::newRow("colour value first") << QByteArray("16763135\r\n\r\n328965\r\n") << same;
        QTest::newRow("just too big") << QByteArray("32768") << same;
        QTest::newRow("just too small") << QByteArray("-32769") << same;
        QTest::newRow("half past the largest") << QByteArray("32767.5") << same;
        QTest::newRow("beyond a double") << QByteArray("1e999") << same;
        QTest::newRow("word") << QByteArray("False\r\n") << same;
        QTest::newRow("empty item") << QByteArray(",5") << same;
        QTest::newRow("quoted number") << QByteArray("\"5\"") << same;
        QTest::newRow("number then letters") << QByteArray("5abc") << same;
        QTest::newRow("two numbers on a line") << QByteArray("5 6") << same;
        QTest::newRow("sign alone") << QByteArray("-") << same;
        QTest::newRow("point alone") << QByteArray(".") << same;
        QTest::newRow("exponent without digits") << QByteArray("1e") << same;
        QTest::newRow("decimal comma") << QByteArray("2,5") << 2;
        QTest::newRow("nul byte") << QByteArray("4\0", 2) << same;
        QTest::newRow("high bytes") << QByteArray("\xff\xfe") << same;
        QTest::newRow("very long item") << QByteArray(100000, '7') << same;
    }
    void leggiLivelliReadsTheFirstItemAsANumber()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, family);
        writeAll(file(), content);
        s().FamigliaSimboli = 1;
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Quadrivo"));
        QCOMPARE(s().FamigliaSimboli.value(), family);
        // A read that got a number closes the file; one that failed after
        // opening it leaves it open (no row reads a 1).
        QCOMPARE(file1().isOpen(), family == 1);
        QVERIFY(t->errors->errors.isEmpty());
    }

    void leggiLivelliAddsDatToTheName()
    {
        writeAll(dir->filePath(QStringLiteral("Livelli")), QByteArrayLiteral("8"));
        s().FamigliaSimboli = 1;
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Livelli"));
        QCOMPARE(s().FamigliaSimboli.value(), 1);
        writeAll(dir->filePath(QStringLiteral("Livelli.dat")), QByteArrayLiteral("8"));
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Livelli"));
        QCOMPARE(s().FamigliaSimboli.value(), 8);
    }

    void leggiLivelliWithoutAFileChangesNothing()
    {
        s().FamigliaSimboli = 3;
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Quadrivo"));
        QCOMPARE(s().FamigliaSimboli.value(), 3);
        QVERIFY(!file1().isOpen());
        ctx().setWorkingDirectory(dir->filePath(QStringLiteral("missing")));
        FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Quadrivo"));
        QCOMPARE(s().FamigliaSimboli.value(), 3);
    }

    void leggiLivelliNeverCrashesOnGeneratedContents()
    {
        // Mostly the characters a number is made of, so that many contents
        // read as numbers and many almost do.
        const QByteArray alphabet = QByteArrayLiteral("0123456789012345678901234567890123456789"
                                                      "  \t\r\n,,+-..eEdDxX\"aZ");
        QRandomGenerator random(20261116);
        int read = 0;
        int unchanged = 0;
        for (int round = 0; round < 4000; ++round) {
            QByteArray content;
            const int length = random.bounded(0, 24);
            for (int i = 0; i < length; ++i) {
                if (random.bounded(10) == 0)
                    content.append(char(random.bounded(256)));
                else
                    content.append(alphabet[random.bounded(int(alphabet.size()))]);
            }
            writeAll(file(), content);
            s().FamigliaSimboli = 1;
            FileLivelli::LeggiLivelli(ctx(), QStringLiteral("Quadrivo"));
            const std::optional<int> expected = expectedFamily(content);
            if (s().FamigliaSimboli.value() != expected.value_or(1))
                QFAIL(qPrintable(QStringLiteral("content %1 gave %2")
                                     .arg(QString::fromLatin1(content.toHex(' ')))
                                     .arg(s().FamigliaSimboli.value())));
            if (expected)
                ++read;
            else
                ++unchanged;
            file1().close();
        }
        // Both outcomes were well exercised.
        QVERIFY2(read > 500, qPrintable(QString::number(read)));
        QVERIFY2(unchanged > 500, qPrintable(QString::number(unchanged)));
        QVERIFY(t->errors->errors.isEmpty());
    }

    // ---- The start screen does not read the file ----

    void theStartScreenShowsFamilyOneWhateverTheFile_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("no file") << false << QByteArray();
        QTest::newRow("empty file") << true << QByteArray();
        QTest::newRow("a family number") << true << QByteArray(" 3\r\n");
        QTest::newRow("the options layout") << true << DefaultLines;
        QRandomGenerator random(7);
        QByteArray noise;
        for (int i = 0; i < 300; ++i)
            noise.append(char(random.bounded(256)));
        QTest::newRow("random bytes") << true << noise;
    }
    void theStartScreenShowsFamilyOneWhateverTheFile()
    {
        QFETCH(bool, exists);
        QFETCH(QByteArray, content);
        if (exists)
            writeAll(file(), content);
        // Also a file with the bare name, which the start checks for.
        writeAll(dir->filePath(QStringLiteral("Quadrivo")), QByteArrayLiteral("2"));
        s().NomeEseguibile.clear();

        FrmInizio &inizio = ctx().form<FrmInizio>();
        QCOMPARE(s().FamigliaSimboli.value(), 1);
        QCOMPARE(inizio.get<Label>("Label3").Caption(), QStringLiteral("1"));
        QCOMPARE(s().Simbolo1, QStringLiteral(" u "));
        QCOMPARE(s().NumeroCifre.value(), 4);
        QCOMPARE(s().NomeEseguibile, QStringLiteral("Quadrivo"));
        QVERIFY(!file1().isOpen());
        QVERIFY(t->errors->errors.isEmpty());
        if (exists)
            QCOMPARE(readAll(file()), content);
    }
};

QTEST_MAIN(TestFileLivelli)
#include "tst_filelivelli.moc"
