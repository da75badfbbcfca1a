#pragma once

#include <QAccessible>
#include <QString>

#include <functional>
#include <optional>

class QWidget;

namespace benthor::look {

/// What a screen reader is told of the widgets that the house paints itself. A label that acts is a button, a
/// plain label is what it says, a picture without a name is decoration. What is told here is added to that.

/// Readers do not meet this widget, nor what lies in it: something else says or does the same. A label that
/// acts and takes no focus is hidden from the start; `hidden` false brings it back.
void hideFromReaders(QWidget* widget, bool hidden = true);
bool isHiddenFromReaders(const QWidget* widget);

/// While the widget is visible, readers do not meet what lies beside it in its parent: it covers that. The
/// parent must outlive it, as parents do.
void coverForReaders(QWidget* widget);

/// What the widget is, where its class does not say it.
void setReaderRole(QWidget* widget, QAccessible::Role role);

/// The header of something that opens and shuts.
void setReaderOpen(QWidget* header, bool open);

/// A label that acts is to readers what it says: a button beside it does the same.
void tellAsText(QWidget* label);

/// An act that is not a button's, offered under a name of QAccessibleActionInterface. It runs when events do.
void setReaderAction(QWidget* widget, const QString& action, std::function<void()> act);

/// What an instrument shows that is painted: a value within a range, and the value in words, with its unit.
struct Reading {
    double value = 0;
    double least = 0;
    double most = 0;
    QString words;
    bool operator==(const Reading&) const = default;
};
/// Nothing: the instrument shows none now. Readers hear of a change.
void setReading(QWidget* widget, const std::optional<Reading>& reading);
std::optional<Reading> readingOf(const QWidget* widget);

/// Words that follow the name of a label's value: "m" behind "21".
void setReaderUnit(QWidget* widget, const QString& unit);

/// Says something to readers that happened without their doing. Nothing is shown of it. `from`: any widget of
/// the window it happened in, never null; one that is hidden says nothing. The same words again are said
/// again.
void announce(QWidget* from, const QString& words);
/// What was said last in a window; empty: nothing yet.
QString lastAnnounced(const QWidget* window);

/// From now on every widget that is met is told as above. More than one call does no harm.
void tellReaders();

} // namespace benthor::look
