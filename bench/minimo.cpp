// The smallest Qt Widgets program that shows a window: the yardstick for
// Quadrivo's start-up. It ends the way `Quadrivo --prova-avvio` does, once
// its window is drawn and idle.
#include "app/ProntoEInattivo.h"

#include <QApplication>
#include <QLabel>
#include <QWidget>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QWidget finestra;
    finestra.setWindowTitle(QStringLiteral("Minimo"));
    QLabel etichetta(QStringLiteral("Minimo"), &finestra);
    finestra.show();
    quandoProntoEInattivo(&finestra, [&finestra] {
        finestra.close();
        QCoreApplication::exit(0);
    });
    return app.exec();
}
