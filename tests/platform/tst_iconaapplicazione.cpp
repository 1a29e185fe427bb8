// The program's icon, read from the files its package installs.
#include "platform/IconaApplicazione.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString Id = QStringLiteral("org.quadrivo.Quadrivo");
const QList<int> Lati{16, 22, 32, 48};

// A square PNG of one colour at <data>/icons/hicolor/<folder>/apps/<name>.
void installa(const QString &dati, const QString &cartella, int lato, const QColor &colore,
              const QString &nome = Id + QStringLiteral(".png"))
{
    const QString apps =
        dati + QStringLiteral("/icons/hicolor/") + cartella + QStringLiteral("/apps");
    QVERIFY(QDir().mkpath(apps));
    QImage immagine(lato, lato, QImage::Format_ARGB32);
    immagine.fill(colore);
    QVERIFY(immagine.save(apps + QLatin1Char('/') + nome, "PNG"));
}

QColor coloreA(const QIcon &icona, int lato)
{
    const QImage immagine = icona.pixmap(QSize(lato, lato)).toImage();
    if (immagine.size() != QSize(lato, lato))
        return {};
    return immagine.pixelColor(lato / 2, lato / 2);
}

} // namespace

class TestIconaApplicazione : public QObject
{
    Q_OBJECT

    QTemporaryDir casa, sistema;
    QByteArray datiPrima, cartellePrima;

private slots:
    void initTestCase()
    {
        QVERIFY(casa.isValid());
        QVERIFY(sistema.isValid());
        datiPrima = qgetenv("XDG_DATA_HOME");
        cartellePrima = qgetenv("XDG_DATA_DIRS");
        qputenv("XDG_DATA_HOME", casa.path().toLocal8Bit());
        qputenv("XDG_DATA_DIRS", sistema.path().toLocal8Bit());
    }

    void cleanupTestCase()
    {
        qputenv("XDG_DATA_HOME", datiPrima);
        qputenv("XDG_DATA_DIRS", cartellePrima);
    }

    void cleanup()
    {
        for (QTemporaryDir *d : {&casa, &sistema})
            QDir(d->path() + QStringLiteral("/icons")).removeRecursively();
    }

    void nothingInstalledGivesNoIcon()
    {
        installa(sistema.path(), QStringLiteral("48x48"), 48, Qt::red, QStringLiteral("altro.png"));
        QVERIFY(IconaApplicazione::installata(Id, Lati).isNull());
    }

    void theIconHasEachInstalledSize()
    {
        installa(sistema.path(), QStringLiteral("16x16"), 16, Qt::red);
        installa(sistema.path(), QStringLiteral("48x48"), 48, Qt::blue);
        // Not asked for, or another program's.
        installa(sistema.path(), QStringLiteral("64x64"), 64, Qt::yellow);
        installa(sistema.path(), QStringLiteral("22x22"), 22, Qt::yellow,
                 QStringLiteral("altro.png"));
        const QIcon icona = IconaApplicazione::installata(Id, Lati);
        QList<QSize> misure = icona.availableSizes();
        std::sort(misure.begin(), misure.end(),
                  [](QSize a, QSize b) { return a.width() < b.width(); });
        QCOMPARE(misure, (QList<QSize>{{16, 16}, {48, 48}}));
        QCOMPARE(coloreA(icona, 16), QColor(Qt::red));
        QCOMPARE(coloreA(icona, 48), QColor(Qt::blue));
    }

    void theUsersOwnFolderComesFirst()
    {
        installa(casa.path(), QStringLiteral("16x16"), 16, Qt::red);
        installa(sistema.path(), QStringLiteral("16x16"), 16, Qt::green);
        installa(sistema.path(), QStringLiteral("32x32"), 32, Qt::green);
        const QIcon icona = IconaApplicazione::installata(Id, Lati);
        QCOMPARE(icona.availableSizes().size(), 2);
        QCOMPARE(coloreA(icona, 16), QColor(Qt::red));
        QCOMPARE(coloreA(icona, 32), QColor(Qt::green));
    }
};

QTEST_MAIN(TestIconaApplicazione)
#include "tst_iconaapplicazione.moc"
