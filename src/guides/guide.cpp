#include "guides/guide.h"

#include <algorithm>
#include <array>

namespace benthor::guides {

const QStringList& sectiontitles() {
    static const QStringList titles{
        QStringLiteral("Introduction and Getting Started"),
        QStringLiteral("Setup Morvalien/KD and PC Hardware"),
        QStringLiteral("Benthor Main Screen"),
        QStringLiteral("PC Link Screen"),
        QStringLiteral("Dive List"),
        QStringLiteral("Dive Profile"),
        QStringLiteral("Dive Details"),
        QStringLiteral("Gas"),
        QStringLiteral("Ferrowe Import"),
        QStringLiteral("Install PC hardware"),
    };
    return titles;
}

QString stepheading(int step) {
    return sectiontitles().value(step);
}

QString steptext(int step) {
    static const std::array<QString, kSteps> texts{
        QStringLiteral(
            "This is a short introduction to getting started with the Benthor interface software.\n\n"
            "Thank you for purchasing the Benthor software.\n\n"
            "Click Next to continue.."),
        QStringLiteral(
            "Follow all the Connection tips to ensure you have installed all the USB hardware "
            "correctly. Downloading can take quite a few minutes if you have lots of dives or long "
            "dives!"),
        QStringLiteral("Read the Manual - it will save you time!"),
        QStringLiteral(
            "That is all it takes to begin: put the device into PC Link mode, open Download to PC, "
            "and fetch your dives. They stay in My Dives, and every start keeps a fresh backup of "
            "them.\n\nSafe diving!"),
    };
    return step >= 0 && step < kSteps ? texts[static_cast<size_t>(step)] : QString();
}

QString stepcount(int step) {
    return QStringLiteral("Tip %1 of %2").arg(QString::number(step + 1), QString::number(kSteps));
}

int stepafter(int step, StepButton button) {
    switch (button) {
    case StepButton::Previous:
        --step;
        break;
    case StepButton::Next:
        ++step;
        break;
    case StepButton::Redraw:
        break;
    }
    return std::clamp(step, 0, kSteps - 1);
}

} // namespace benthor::guides
