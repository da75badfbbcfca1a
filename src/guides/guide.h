#pragma once

#include <QString>
#include <QStringList>

namespace benthor::guides {

// The getting-started guide: four steps, counted from 0.

constexpr int kSteps = 4;

/// What a step change asks for, numbered as the buttons are.
enum class StepButton { Previous = 0, Next = 1, Redraw = 2 };

/// The sections of the manual, in order. The first ones head the steps.
const QStringList& sectiontitles();

QString stepheading(int step);
QString steptext(int step);
/// "Tip 1 of 4".
QString stepcount(int step);

/// The step that is shown after a button; the first and the last stay where they are.
int stepafter(int step, StepButton button);

} // namespace benthor::guides
