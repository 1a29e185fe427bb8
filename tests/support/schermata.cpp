// quadrivo_schermata FILE.png: saves a picture of the whole X display named
// by DISPLAY, for the diagnostics of a failed end-to-end test.
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

#include <cstdio>

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: quadrivo_schermata FILE.png\n");
        return 2;
    }
    QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen || !screen->grabWindow(0).save(QString::fromLocal8Bit(argv[1]), "PNG")) {
        std::fprintf(stderr, "could not save the picture of the display\n");
        return 1;
    }
    return 0;
}
