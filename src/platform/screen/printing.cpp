#include "platform/screen/printing.h"

#include "platform/look/look.h"

#include <QPainter>
#include <QPrinter>
#include <QWidget>

#include <algorithm>

namespace benthor::platform {

namespace {

void switchTo(look::Theme theme) {
    if (look::theme() != theme) {
        look::setTheme(theme);
    }
}

} // namespace

LightTheme::LightTheme()
    : before_(look::theme()) {
    switchTo(look::Theme::Light);
}

LightTheme::~LightTheme() {
    switchTo(before_);
}

bool printWidget(QPrinter& printer, QWidget& widget) {
    const LightTheme light;
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    const QRectF page = printer.pageRect(QPrinter::DevicePixel);
    const double scale = std::min(page.width() / widget.width(), page.height() / widget.height());
    painter.scale(scale, scale);
    widget.render(&painter);
    return painter.end();
}

} // namespace benthor::platform
