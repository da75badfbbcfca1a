#pragma once

#include <QRgb>
#include <QStringList>

class QWidget;

namespace benthor::tests {

/// Texts of the window, as it is painted, that stand out from what is painted behind them by less than
/// `least` (see look::contrastRatio). No fault is a text in black or white on a ground on which nothing would
/// stand out more: such a ground is told. Nor is one in a colour of `exempt`, which is how what cannot be
/// worked is written in usual contrast. What another window part lies over, or a scroll area leaves out, is
/// not looked at.
QStringList paleTexts(QWidget* window, double least, const QList<QRgb>& exempt = {});

} // namespace benthor::tests
