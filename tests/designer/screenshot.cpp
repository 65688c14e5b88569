// Saves a picture of the screen of the X display: screenshot <file.png> [x y width height]

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    QGuiApplication app(argc, argv);
    if (argc != 2 && argc != 6) {
        std::fprintf(stderr, "usage: screenshot <file.png> [x y width height]\n");
        return 2;
    }
    QScreen *screen = QGuiApplication::primaryScreen();
    QPixmap picture = screen ? screen->grabWindow(0) : QPixmap();
    if (argc == 6)
        picture = picture.copy(atoi(argv[2]), atoi(argv[3]), atoi(argv[4]), atoi(argv[5]));
    if (picture.isNull() || !picture.save(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "screenshot: cannot grab or save %s\n", argv[1]);
        return 1;
    }
    return 0;
}
