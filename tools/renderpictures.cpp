// Renders each drawing of a folder to a BMP file of the same name in another folder, as the program folder
// holds them: the panel's pictures, or with --logo monochrome logos for the device. With --icon it renders
// one drawing to a PNG file, so many pixels wide and high, on nothing.

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

#include <functional>

namespace {

// The panel's place for a picture; twice as many pixels keep it crisp on dense displays.
constexpr QSize placeSize(288, 200);
constexpr int density = 2;

// The device's display.
constexpr QSize logoSize(102, 64);
constexpr int logoFineness = 8; ///< points across each pixel that its colour is judged by

using Renderer = std::function<QImage(QSvgRenderer&)>;

QImage paint(QSvgRenderer& renderer, QSize size, const QColor& ground) {
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QImage image(size, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(image.rect()));
    return image;
}

QImage panelPicture(QSvgRenderer& renderer) {
    return paint(renderer, placeSize * density, QColor(0xDF, 0xE8, 0xEE));
}

/// A pixel is black where most of it is.
QImage logo(QSvgRenderer& renderer) {
    return paint(renderer, logoSize * logoFineness, Qt::white)
        .scaled(logoSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::ThresholdDither);
}

QImage icon(QSvgRenderer& renderer, int pixels) {
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QImage image(pixels, pixels, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(image.rect()));
    return image;
}

bool render(const QFileInfo& drawing, const QString& target, const char* format, const Renderer& rendered) {
    QSvgRenderer renderer(drawing.filePath());
    if (!renderer.isValid()) {
        QTextStream(stderr) << drawing.filePath() << " is no drawing that can be read\n";
        return false;
    }
    const QImage image = rendered(renderer);
    if (!image.save(target, format)) {
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
    QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() == 5 && arguments.at(1) == QLatin1String("--icon")) {
        const int pixels = arguments.at(2).toInt();
        return pixels > 0 && render(QFileInfo(arguments.at(3)), arguments.at(4), "PNG",
                                    [pixels](QSvgRenderer& renderer) { return icon(renderer, pixels); })
                   ? 0
                   : 1;
    }
    const bool logos = arguments.removeAll(QStringLiteral("--logo")) > 0;
    if (arguments.size() != 3) {
        QTextStream(stderr)
            << "usage: benthor-renderpictures [--logo] <folder of drawings> <folder for pictures>\n"
               "       benthor-renderpictures --icon <pixels> <drawing> <picture>\n";
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
        good = render(drawing, target.filePath(drawing.completeBaseName() + QStringLiteral(".bmp")), "BMP",
                      logos ? logo : panelPicture) &&
               good;
    }
    return good ? 0 : 1;
}
