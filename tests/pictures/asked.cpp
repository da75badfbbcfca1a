#include "tests/pictures/asked.h"

#include "platform/look/tokens.h"

#include <QApplication>
#include <QFont>

namespace benthor::tests {

void takeAskedFont() {
    const int points = qEnvironmentVariableIntValue("BENTHOR_TEST_POINTS");
    if (points <= 0) {
        return;
    }
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
}

void takeAskedContrast() {
    if (qEnvironmentVariableIsSet("BENTHOR_TEST_CONTRAST")) {
        look::setContrast(look::Contrast::High);
    }
}

} // namespace benthor::tests
