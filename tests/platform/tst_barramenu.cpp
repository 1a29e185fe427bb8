#include "platform/BarraMenu.h"

#include <QAction>
#include <QApplication>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QTest>
#include <QVBoxLayout>

#include <functional>
#include <memory>

namespace {

// Fusion, counting the titles it is asked to measure.
class StileCheMisura : public QProxyStyle
{
public:
    StileCheMisura() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}
    QSize sizeFromContents(ContentsType tipo, const QStyleOption *opzione, const QSize &misura,
                           const QWidget *widget) const override
    {
        if (tipo == CT_MenuBarItem)
            ++titoli;
        return QProxyStyle::sizeFromContents(tipo, opzione, misura, widget);
    }
    mutable int titoli = 0;
};

const char *const Titoli[] = {"Stampa le schede", "Autore", "Opzioni", "Avvertenza",
                              "Registro", "&Misure", "Ver&ifica", "&Voce"};

// A window laid out as a screen is, the bar above a client area; or, with
// no layout, the bar placed by hand, so nothing but the bar itself notices
// a change.
struct Finestra
{
    Finestra(QMenuBar *barra, StileCheMisura *stile, bool conLayout) : menu(barra)
    {
        menu->setParent(&finestra);
        menu->setStyle(stile);
        menu->setNativeMenuBar(false);
        if (conLayout) {
            auto *layout = new QVBoxLayout(&finestra);
            layout->setContentsMargins(0, 0, 0, 0);
            layout->setMenuBar(menu);
            layout->addWidget(new QWidget(&finestra), 1);
        }
        for (const char *titolo : Titoli)
            menu->addAction(QString::fromUtf8(titolo));
        finestra.resize(720, 500);
        if (!conLayout)
            menu->setGeometry(0, 0, 720, menu->sizeHint().height());
    }
    QWidget finestra;
    QMenuBar *menu;
};

bool mostra(QWidget &w)
{
    w.show();
    if (!QTest::qWaitForWindowExposed(&w))
        return false;
    QApplication::processEvents();
    return true;
}

QList<QRect> posti(const QMenuBar &menu)
{
    QList<QRect> r;
    for (QAction *a : menu.actions())
        r << menu.actionGeometry(a);
    return r;
}

using Passo = std::function<void(Finestra &)>;

} // namespace

class TestBarraMenu : public QObject
{
    Q_OBJECT

private slots:
    // Between the hide and the show, the step changes what the titles'
    // places depend on: the bar must lay them out again, as Qt's does.
    void siMostraComeQuellaDiQt_data()
    {
        QTest::addColumn<bool>("conLayout");
        QTest::addColumn<Passo>("passo");
        const QList<std::pair<const char *, Passo>> passi = {
            {"nothing", [](Finestra &) {}},
            {"a title renamed",
             [](Finestra &f) {
                 f.menu->actions().at(1)->setText(QStringLiteral("Autore e scuola del programma"));
             }},
            {"a title added", [](Finestra &f) { f.menu->addAction(QStringLiteral("Nuovo")); }},
            {"a title hidden", [](Finestra &f) { f.menu->actions().at(0)->setVisible(false); }},
            {"a larger font",
             [](Finestra &f) {
                 QFont lettere = f.menu->font();
                 lettere.setPointSize(16);
                 f.menu->setFont(lettere);
             }},
            {"narrower: titles overflow",
             [](Finestra &f) {
                 f.finestra.resize(300, 500);
                 if (!f.finestra.layout())
                     f.menu->resize(300, f.menu->height());
             }},
            {"right to left", [](Finestra &f) { f.menu->setLayoutDirection(Qt::RightToLeft); }},
        };
        for (const bool conLayout : {true, false})
            for (const auto &[nome, passo] : passi)
                QTest::addRow("%s, %s", conLayout ? "laid out" : "placed by hand", nome)
                    << conLayout << passo;
    }

    void siMostraComeQuellaDiQt()
    {
        QFETCH(bool, conLayout);
        QFETCH(Passo, passo);
        StileCheMisura stileQt, stileNostro;
        Finestra qt(new QMenuBar, &stileQt, conLayout);
        Finestra nostra(new BarraMenu, &stileNostro, conLayout);
        nostra.finestra.move(qt.finestra.pos());
        for (Finestra *f : {&qt, &nostra}) {
            QVERIFY(mostra(f->finestra));
            f->finestra.hide();
            passo(*f);
            QVERIFY(mostra(f->finestra));
        }
        // Drawn first: asking where a title is lays the bar out, drawing
        // must not need that.
        QCOMPARE(nostra.finestra.grab().toImage(), qt.finestra.grab().toImage());
        QCOMPARE(posti(*nostra.menu), posti(*qt.menu));
    }

    // A title changed while the bar shows is laid out at once, as Qt does.
    void unCambioAVistaSiVedeSubito()
    {
        StileCheMisura stileQt, stileNostro;
        Finestra qt(new QMenuBar, &stileQt, true);
        Finestra nostra(new BarraMenu, &stileNostro, true);
        for (Finestra *f : {&qt, &nostra}) {
            QVERIFY(mostra(f->finestra));
            f->menu->actions().at(2)->setText(QStringLiteral("Opzioni del programma"));
            QApplication::processEvents();
        }
        QCOMPARE(nostra.finestra.grab().toImage(), qt.finestra.grab().toImage());
        QCOMPARE(posti(*nostra.menu), posti(*qt.menu));
    }

    // The point of the bar: shown for the first time, it measures its titles
    // once less than Qt's (which measures them again on the show, right
    // after the resize that measured them).
    void primaVoltaMisuraUnaVolta()
    {
        StileCheMisura stileQt, stileNostro;
        Finestra qt(new QMenuBar, &stileQt, true);
        Finestra nostra(new BarraMenu, &stileNostro, true);
        stileQt.titoli = stileNostro.titoli = 0;
        QVERIFY(mostra(qt.finestra));
        QVERIFY(mostra(nostra.finestra));
        const int n = int(std::size(Titoli));
        QVERIFY(stileNostro.titoli >= n);
        QCOMPARE(stileNostro.titoli, stileQt.titoli - n);
        QCOMPARE(posti(*nostra.menu), posti(*qt.menu));
    }
};

QTEST_MAIN(TestBarraMenu)
#include "tst_barramenu.moc"
