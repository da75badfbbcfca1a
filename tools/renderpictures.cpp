// Renders each drawing of a folder to a BMP file of the same name in another folder, as the program folder
// holds them.

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

namespace {

// The panel's place for a picture; twice as many pixels keep it crisp on dense displays.
constexpr QSize placeSize(288, 200);
constexpr int density = 2;

bool render(const QFileInfo& drawing, const QString& target) {
    QSvgRenderer renderer(drawing.filePath());
    if (!renderer.isValid()) {
        QTextStream(stderr) << drawing.filePath() << " is no drawing that can be read\n";
        return false;
    }
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QImage image(placeSize * density, QImage::Format_RGB32);
    image.fill(QColor(0xDF, 0xE8, 0xEE));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(image.rect()));
    painter.end();
    if (!image.save(target, "BMP")) {
        QTextStream(stderr) << "cannot write " << target << '\n';
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 3) {
        QTextStream(stderr) << "usage: benthor-renderpictures <folder of drawings> <folder for pictures>\n";
        return 2;
    }
    const QDir source(arguments.at(1));
    const QDir target(arguments.at(2));
    const QFileInfoList drawings = source.entryInfoList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
    if (drawings.isEmpty()) {
        QTextStream(stderr) << "no drawings in " << source.path() << '\n';
        return 1;
    }
    if (!target.mkpath(QStringLiteral("."))) {
        QTextStream(stderr) << "cannot make the folder " << target.path() << '\n';
        return 1;
    }
    bool good = true;
    for (const QFileInfo& drawing : drawings) {
        good = render(drawing, target.filePath(drawing.completeBaseName() + QStringLiteral(".bmp"))) && good;
    }
    return good ? 0 : 1;
}
