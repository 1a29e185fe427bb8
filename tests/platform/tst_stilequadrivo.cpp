#include "platform/StileQuadrivo.h"

#include <QApplication>
#include <QMenuBar>
#include <QPointer>
#include <QStyleFactory>
#include <QTest>
#include <QToolButton>

namespace {

// Fusion, counting how often it is asked for an icon.
class StileCheConta : public QProxyStyle
{
public:
    StileCheConta() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}
    QIcon standardIcon(StandardPixmap icona, const QStyleOption *opzione,
                       const QWidget *widget) const override
    {
        ++richieste;
        return QProxyStyle::standardIcon(icona, opzione, widget);
    }
    mutable int richieste = 0;
};

// A window with the start screen's menu bar, `larghezza` pixels wide, drawn
// in `stile` (taken over by the application).
QImage menuDisegnato(QStyle *stile, int larghezza, Qt::LayoutDirection verso)
{
    QApplication::setStyle(stile);
    QApplication::setLayoutDirection(verso);
    QWidget finestra;
    finestra.resize(larghezza, 60);
    auto *menu = new QMenuBar(&finestra);
    menu->setNativeMenuBar(false);
    for (const char *voce : {"Stampa le schede", "Autore", "Opzioni", "Avvertenza", "Registro"})
        menu->addAction(QString::fromLatin1(voce));
    menu->setGeometry(0, 0, larghezza, menu->sizeHint().height());
    finestra.show();
    if (!QTest::qWaitForWindowExposed(&finestra))
        return {};
    QApplication::processEvents();
    return finestra.grab().toImage();
}

} // namespace

class TestStileQuadrivo : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        QApplication::setLayoutDirection(Qt::LeftToRight);
        QApplication::setStyle(QStringLiteral("Fusion"));
    }

    void aMenuBarIsDrawnAsFusionDrawsIt_data()
    {
        QTest::addColumn<int>("larghezza");
        QTest::addColumn<int>("verso");
        QTest::newRow("wide enough") << 720 << int(Qt::LeftToRight);
        QTest::newRow("too narrow: the overflow arrow shows") << 200 << int(Qt::LeftToRight);
        QTest::newRow("right to left, wide") << 720 << int(Qt::RightToLeft);
        QTest::newRow("right to left, narrow") << 200 << int(Qt::RightToLeft);
    }

    void aMenuBarIsDrawnAsFusionDrawsIt()
    {
        QFETCH(int, larghezza);
        QFETCH(int, verso);
        const auto direzione = Qt::LayoutDirection(verso);
        const QImage fusion =
            menuDisegnato(QStyleFactory::create(QStringLiteral("Fusion")), larghezza, direzione);
        const QImage nostro = menuDisegnato(new StileQuadrivo, larghezza, direzione);
        QVERIFY(!fusion.isNull());
        QCOMPARE(nostro, fusion);
    }

    void theOverflowArrowIsFusionsOwn_data()
    {
        QTest::addColumn<int>("quale");
        QTest::addColumn<int>("modo");
        QTest::addColumn<double>("scala");
        QTest::addColumn<QSize>("misura");
        const int orizzontale = QStyle::SP_ToolBarHorizontalExtensionButton;
        const int verticale = QStyle::SP_ToolBarVerticalExtensionButton;
        QTest::newRow("horizontal") << orizzontale << int(QIcon::Normal) << 1.0 << QSize(16, 16);
        QTest::newRow("horizontal, disabled")
            << orizzontale << int(QIcon::Disabled) << 1.0 << QSize(16, 16);
        QTest::newRow("horizontal, twice the pixels")
            << orizzontale << int(QIcon::Normal) << 2.0 << QSize(16, 16);
        QTest::newRow("horizontal, one and a half")
            << orizzontale << int(QIcon::Active) << 1.5 << QSize(12, 12);
        QTest::newRow("horizontal, large")
            << orizzontale << int(QIcon::Normal) << 1.0 << QSize(64, 64);
        QTest::newRow("vertical") << verticale << int(QIcon::Normal) << 1.0 << QSize(16, 16);
        QTest::newRow("vertical, twice the pixels")
            << verticale << int(QIcon::Selected) << 2.0 << QSize(10, 20);
    }

    void theOverflowArrowIsFusionsOwn()
    {
        QFETCH(int, quale);
        QFETCH(int, modo);
        QFETCH(double, scala);
        QFETCH(QSize, misura);
        std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
        StileQuadrivo nostro;
        const auto icona = QStyle::StandardPixmap(quale);
        const QIcon atteso = fusion->standardIcon(icona);
        const QIcon differito = nostro.standardIcon(icona);
        const auto m = QIcon::Mode(modo);
        QCOMPARE(differito.isNull(), atteso.isNull());
        QCOMPARE(differito.actualSize(misura, m), atteso.actualSize(misura, m));
        QCOMPARE(differito.availableSizes(m), atteso.availableSizes(m));
        const QPixmap p = differito.pixmap(misura, scala, m);
        const QPixmap q = atteso.pixmap(misura, scala, m);
        QCOMPARE(p.devicePixelRatio(), q.devicePixelRatio());
        QCOMPARE(p.toImage(), q.toImage());
        // Painted into a rectangle larger than the icon: centred alike.
        QImage a(40, 40, QImage::Format_ARGB32_Premultiplied);
        QImage b = a;
        a.fill(Qt::white);
        b.fill(Qt::white);
        QPainter pa(&a);
        differito.paint(&pa, QRect(2, 3, 30, 20), Qt::AlignCenter, m);
        pa.end();
        QPainter pb(&b);
        atteso.paint(&pb, QRect(2, 3, 30, 20), Qt::AlignCenter, m);
        pb.end();
        QCOMPARE(a, b);
    }

    void aMenuBarReadsItsArrowOnlyWhenItShowsIt()
    {
        auto *contatore = new StileCheConta;
        QApplication::setStyle(new StileQuadrivo(contatore));
        QWidget finestra;
        finestra.resize(720, 60);
        auto *menu = new QMenuBar(&finestra);
        menu->setNativeMenuBar(false);
        for (const char *voce : {"Stampa le schede", "Autore", "Opzioni"})
            menu->addAction(QString::fromLatin1(voce));
        menu->setGeometry(0, 0, 720, menu->sizeHint().height());
        finestra.show();
        QVERIFY(QTest::qWaitForWindowExposed(&finestra));
        finestra.grab();
        QCOMPARE(contatore->richieste, 0);
        // Too narrow: the arrow appears, and is read for it.
        menu->setGeometry(0, 0, 120, menu->sizeHint().height());
        QApplication::processEvents();
        auto *freccia = menu->findChild<QToolButton *>();
        QVERIFY(freccia);
        QTRY_VERIFY(freccia->isVisible());
        finestra.grab();
        QCOMPARE(contatore->richieste, 1);
    }

    void anArrowOutlivingItsStyleIsTheApplicationStyles()
    {
        auto *stile = new StileQuadrivo;
        const QIcon icona = stile->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton);
        delete stile;
        const QIcon atteso =
            QApplication::style()->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton);
        QVERIFY(!icona.isNull());
        QCOMPARE(icona.pixmap(16, 16).toImage(), atteso.pixmap(16, 16).toImage());
    }
};

QTEST_MAIN(TestStileQuadrivo)
#include "tst_stilequadrivo.moc"
