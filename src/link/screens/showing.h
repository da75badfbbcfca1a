#pragma once

#include "link/linkstate.h"
#include "platform/look/look.h"

#include <QLabel>
#include <QLineEdit>

namespace benthor::link {

// Painting a value that a control may show already: only a difference costs anything.

using look::named;

inline void showText(QLabel* label, const QString& text) {
    if (label->text() != text) {
        label->setText(text);
    }
}

/// Where the user writes, nothing is written over the same text: the cursor stays.
inline void showText(QLineEdit* box, const QString& text) {
    if (box->text() != text) {
        box->setText(text);
    }
}

inline void showVisible(QWidget* control, bool visible) {
    if (control->isHidden() == visible) {
        control->setVisible(visible);
    }
}

inline void showEnabled(QWidget* control, bool enabled) {
    if (control->isEnabledTo(control->parentWidget()) != enabled) {
        control->setEnabled(enabled);
    }
}

} // namespace benthor::link
