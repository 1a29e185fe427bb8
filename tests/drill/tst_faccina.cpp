#include "drill/Faccina.h"
#include "drill/frmOperativo.h"
#include "platform/Fonts.h"
#include "platform/controls/Image.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QTest>

namespace {

QImage disegnata(int numero, int lato, QColor fondo = Qt::white)
{
    QImage img(lato, lato, QImage::Format_ARGB32_Premultiplied);
    img.fill(fondo);
    QPainter p(&img);
    Faccina::disegna(p, numero, QRectF(0, 0, lato, lato));
    return img;
}

// The pixel under a point of the 28 x 28 design square.
QColor a(const QImage &img, double x, double y)
{
    const double k = double(img.width()) / Faccina::Lato;
    return img.pixelColor(int(x * k), int(y * k));
}

bool scuro(const QColor &c)
{
    return c.red() < 110 && c.green() < 110 && c.blue() < 110;
}

int scarto(const QColor &x, const QColor &y)
{
    return std::max({std::abs(x.red() - y.red()), std::abs(x.green() - y.green()),
                     std::abs(x.blue() - y.blue()), std::abs(x.alpha() - y.alpha())});
}

// Largest difference of any pixel of two images of one size.
int scartoMassimo(const QImage &x, const QImage &y)
{
    int peggiore = 0;
    for (int j = 0; j < x.height(); ++j)
        for (int i = 0; i < x.width(); ++i)
            peggiore = std::max(peggiore, scarto(x.pixelColor(i, j), y.pixelColor(i, j)));
    return peggiore;
}

// How many 2 x 2 blocks are not of one colour: none in a bitmap blown up
// to twice its size.
int blocchiMisti(const QImage &img)
{
    int misti = 0;
    for (int j = 0; j + 1 < img.height(); j += 2)
        for (int i = 0; i + 1 < img.width(); i += 2) {
            const QColor c = img.pixelColor(i, j);
            if (scarto(c, img.pixelColor(i + 1, j)) > 8 ||
                scarto(c, img.pixelColor(i, j + 1)) > 8 ||
                scarto(c, img.pixelColor(i + 1, j + 1)) > 8)
                ++misti;
        }
    return misti;
}

} // namespace

class TestFaccina : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void eachFaceShowsItsMood_data()
    {
        QTest::addColumn<int>("numero");
        QTest::addColumn<int>("bocca"); // 1 smiles, 0 flat, -1 frowns
        QTest::addColumn<bool>("guance");
        QTest::addColumn<bool>("lacrima");
        for (int n = 1; n <= 10; ++n)
            QTest::addRow("right %d", n) << n << 1 << (n >= 6) << false;
        const int bocche[] = {1, 1, 0, 0, -1, -1, -1, -1, -1, -1};
        for (int n = 11; n <= 20; ++n)
            QTest::addRow("wrong %d", n - 10) << n << bocche[n - 11] << false << (n >= 17);
    }

    void eachFaceShowsItsMood()
    {
        QFETCH(int, numero);
        QFETCH(int, bocca);
        QFETCH(bool, guance);
        QFETCH(bool, lacrima);
        // Drawn at three times its size, so each feature covers whole pixels.
        const QImage img = disegnata(numero, 3 * Faccina::Lato);
        const Faccina::Aspetto x = Faccina::aspetto(numero);

        QCOMPARE(a(img, 0.5, 0.5), QColor(Qt::white)); // round: the corners stay empty
        QVERIFY(scarto(a(img, 21, 23), x.corpo) < 30);
        QVERIFY(scarto(a(img, 14, 27), x.bordo) < 40);
        QVERIFY(scuro(a(img, 10, 10.5)));
        QVERIFY(scuro(a(img, 18, 10.5)));
        QVERIFY(!scuro(a(img, 14, 10.5)));

        // The mouth's middle: under the ends for a smile, over them for a frown.
        const double y = x.sorriso >= 0 ? 17.5 : 19.2;
        QCOMPARE(scuro(a(img, 14, y + x.sorriso)), true);
        QCOMPARE(scuro(a(img, 8.5, y)), true);
        if (std::abs(x.sorriso) >= 1.5)
            QVERIFY(!scuro(a(img, 14, y)));
        QCOMPARE(bocca, x.sorriso > 0.5 ? 1 : x.sorriso < -0.5 ? -1 : 0);

        const QColor guancia = a(img, 6.8, 17.2);
        QCOMPARE(scarto(guancia, a(img, 8, 22.5)) > 25, guance);
        const QColor goccia = a(img, 19.5, 15.6);
        QCOMPARE(goccia.blue() > goccia.red() + 60, lacrima);
    }

    void aFaceOutsideTheSeriesIsAnError()
    {
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, Faccina::aspetto(0));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, Faccina::aspetto(21));
    }

    // The process runs at scale factor 2 (main below): the drill screen's
    // faces must have the doubled screen's pixels, not a 28-pixel bitmap
    // blown up.
    void theDrillsFacesHaveTheDoubledScreensPixels_data()
    {
        QTest::addColumn<int>("numero");
        for (int n = 1; n <= Faccina::Quante; ++n)
            QTest::addRow("Image%d", n) << n;
    }

    void theDrillsFacesHaveTheDoubledScreensPixels()
    {
        QFETCH(int, numero);
        QCOMPARE(qApp->devicePixelRatio(), 2.0);
        TestContext t;
        frmOperativo &f = t->form<frmOperativo>();
        QVERIFY(ScreenTest::showActive(f));
        const Image &immagine =
            f.get<Image>(QStringLiteral("Image%1").arg(numero).toLatin1().constData());
        QCOMPARE(immagine.widget()->size(), QSize(Faccina::Lato, Faccina::Lato));

        const QImage preso = immagine.widget()->grab().toImage().convertToFormat(
            QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(preso.size(), QSize(2 * Faccina::Lato, 2 * Faccina::Lato));
        const QColor fondo = preso.pixelColor(0, 0);
        const QImage nitida = disegnata(numero, 2 * Faccina::Lato, fondo);
        const QImage ingrandita =
            disegnata(numero, Faccina::Lato, fondo)
                .scaled(preso.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        QVERIFY2(scartoMassimo(preso, nitida) <= 2,
                 qPrintable(QString::number(scartoMassimo(preso, nitida))));
        QVERIFY(scartoMassimo(preso, ingrandita) > 40);
        QVERIFY(blocchiMisti(preso) > 100);
        t->screens().unloadAll();
        ScreenTest::settle();
    }
};

int main(int argc, char *argv[])
{
    qputenv("QT_SCALE_FACTOR", "2");
    QApplication app(argc, argv);
    TestFaccina test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_faccina.moc"
