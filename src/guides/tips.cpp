#include "guides/tips.h"

#include "platform/files.h"

#include <QRandomGenerator>

namespace benthor::guides {

void Tips::LoadTips(const QString& filename) {
    if (filename.isEmpty()) {
        return;
    }
    const std::optional<QByteArray> bytes = platform::readFile(filename);
    if (!bytes) {
        return;
    }
    for (const QString& line : QString::fromUtf8(*bytes).split(QLatin1Char('\n'))) {
        if (const QString tip = line.trimmed(); !tip.isEmpty()) {
            tips_ += tip;
        }
    }
}

void Tips::clear() {
    tips_.clear();
    current_ = 1;
}

void Tips::DoNextTip() {
    if (++current_ > count()) {
        current_ = 1;
    }
}

void Tips::DoPreviousTip() {
    if (--current_ < 1) {
        current_ = std::max(1, count());
    }
}

void Tips::startAt(const std::function<int(int)>& random) {
    current_ = isEmpty() ? 1 : 1 + random(count());
}

void Tips::open(const QString& filename) {
    clear();
    LoadTips(filename);
    startAt([](int count) { return QRandomGenerator::global()->bounded(count); });
}

QString Tips::text() const {
    if (isEmpty()) {
        return QStringLiteral(
                   "That the %1 file was not found? \nCreate a text file named %1 using NotePad with 1 "
                   "tip per line. Then place it in the same directory as the application. ")
            .arg(tipsfile());
    }
    QString text = QStringLiteral("Tip %1:   \n").arg(current_) + tips_.at(current_ - 1);
    if (current_ < count()) {
        text += QStringLiteral("\n>>>Next");
    }
    return text;
}

} // namespace benthor::guides
