#include "platform/screen/printing.h"

#include "platform/look/look.h"

#include <QPainter>
#include <QPrinter>
#include <QWidget>

#include <algorithm>

namespace benthor::platform {

namespace {

/// A page is white, and ink is dear.
class LightTheme {
public:
    LightTheme()
        : before_(look::theme()) {
        set(look::Theme::Light);
    }
    ~LightTheme() { set(before_); }
    LightTheme(const LightTheme&) = delete;
    LightTheme& operator=(const LightTheme&) = delete;

private:
    static void set(look::Theme theme) {
        if (look::theme() != theme) {
            look::setTheme(theme);
        }
    }
    look::Theme before_;
};

} // namespace

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
