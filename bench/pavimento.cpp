// The least Qt needs to show what the start screen shows on its first frame:
// a bare window of the start screen's size, its menu titles in the start
// screen's letters, and nothing else of Quadrivo. Timed beside Quadrivo and
// the minimal window, it tells how much of Quadrivo's start-up is its own
// work and how much is the cost of those pixels and titles.
#include "app/ProntoEInattivo.h"

#include <QApplication>
#include <QMenuBar>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QVBoxLayout>
#include <QWidget>

namespace {

// Fusion without the menu bar's overflow arrow icon, which shows only when
// the titles overflow: Quadrivo's style loads it when first drawn, as
// loading it (an image reader and its plugins) costs more than the bar.
class Stile : public QProxyStyle
{
public:
    Stile() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}
    QIcon standardIcon(StandardPixmap icona, const QStyleOption *opzione,
                       const QWidget *widget) const override
    {
        if (!opzione && icona == SP_ToolBarHorizontalExtensionButton)
            return {};
        return QProxyStyle::standardIcon(icona, opzione, widget);
    }
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setStyle(new Stile);
    QWidget finestra;
    finestra.setWindowTitle(QStringLiteral("Pavimento"));
    auto *layout = new QVBoxLayout(&finestra);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *menu = new QMenuBar(&finestra);
    menu->setNativeMenuBar(false);
    layout->setMenuBar(menu);
    layout->addWidget(new QWidget(&finestra), 1);
    QFont lettere(QStringLiteral("Arial"), 10);
    lettere.setBold(true);
    menu->setFont(lettere);
    // The start screen's titles.
    for (const char *titolo : {"Stampa le schede", "Autore", "Opzioni", "Avvertenza", "Registro",
                               "&Misure", "Ver&ifica", "&Voce"})
        menu->addAction(QString::fromUtf8(titolo));
    // 10800 x 7200 twips and the bar.
    finestra.resize(720, 480 + menu->sizeHint().height());
    finestra.show();
    quandoProntoEInattivo(&finestra, [&finestra] {
        finestra.close();
        QCoreApplication::exit(0);
    });
    return app.exec();
}
