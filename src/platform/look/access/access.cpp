#include "platform/look/access/access.h"

#include "platform/look/access/access_p.h"
#include "platform/look/access/houseaccess.h"
#include "platform/look/widgets/clickablelabel.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVariant>
#include <QWidget>

namespace benthor::look {

namespace {

using Acts = QMap<QString, std::function<void()>>;

Acts allActsOf(const QWidget* widget) {
    return widget->property(kReaderActs).value<Acts>();
}

/// What says what happened in a window. It is never shown.
class Note : public QWidget {
public:
    explicit Note(QWidget* window)
        : QWidget(window) {
        setProperty(kReaderNote, QString());
        setFixedSize(0, 0);
        hide();
    }
};

/// Readers ask for the words when they hear that there are some: of a few that follow each other fast, none
/// may have taken another's place by then.
constexpr qsizetype kNotes = 6;

QList<QWidget*> notesOf(const QWidget* window) {
    QList<QWidget*> notes;
    for (QObject* child : window->children()) {
        if (child->isWidgetType() && child->property(kReaderNote).isValid()) {
            notes += static_cast<QWidget*>(child);
        }
    }
    return notes;
}

/// The one to say the next words with.
QWidget* nextNote(QWidget* window) {
    const QList<QWidget*> notes = notesOf(window);
    if (notes.size() < kNotes) {
        return new Note(window); // the window's
    }
    const auto* last = window->property(kReaderLastNote).value<QWidget*>();
    return notes.at((notes.indexOf(last) + 1) % kNotes);
}

/// Asked for a class, and for those that it derives from where nobody answered, down to QObject.
QAccessibleInterface* houseFactory(const QString& className, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr) {
        return nullptr;
    }
    if (auto* acting = qobject_cast<ClickableLabel*>(object)) {
        return new ActingAccess(acting);
    }
    if (widget->property(kReaderRole).isValid() && qobject_cast<QLabel*>(object) == nullptr) {
        return new HouseAccess(widget, QAccessible::Client);
    }
    const bool ourButton =
        className.startsWith(QLatin1String("benthor::")) && qobject_cast<QPushButton*>(object) != nullptr;
    if (ourButton || className == QLatin1String("QAbstractButton")) {
        return new ButtonAccess(widget);
    }
    if (className == QLatin1String("QLabel")) {
        return new LabelAccess(qobject_cast<QLabel*>(object));
    }
    if (className == QLatin1String("QFrame")) {
        return new HouseAccess(widget, QAccessible::Client);
    }
    if (className == QLatin1String("QWidget")) {
        return widget->property(kReaderNote).isValid()
                   ? static_cast<QAccessibleInterface*>(new NoteAccess(widget))
                   : new HouseAccess(widget, QAccessible::Client);
    }
    return nullptr;
}

} // namespace

QStringList actsOf(const QWidget* widget) {
    return allActsOf(widget).keys();
}

std::function<void()> actFor(const QWidget* widget, const QString& action) {
    return allActsOf(widget).value(action);
}

void hideFromReaders(QWidget* widget, bool hidden) {
    widget->setProperty(kReaderHidden, hidden);
}

/// A label that acts and that the keyboard does not reach is by the house's custom the twin of one that it
/// does reach.
bool isHiddenFromReaders(const QWidget* widget) {
    const QVariant told = widget->property(kReaderHidden);
    if (told.isValid()) {
        return told.toBool();
    }
    const bool reached = widget->focusPolicy() != Qt::NoFocus;
    if (qobject_cast<const QAbstractButton*>(widget->parentWidget()) != nullptr && !reached) {
        return true; // a part of a button
    }
    return qobject_cast<const ClickableLabel*>(widget) != nullptr && !reached;
}

void coverForReaders(QWidget* widget) {
    widget->parentWidget()->setProperty(kReaderCover, QVariant::fromValue(QPointer<QWidget>(widget)));
}

void setReaderRole(QWidget* widget, QAccessible::Role role) {
    widget->setProperty(kReaderRole, static_cast<int>(role));
}

void tellAsText(QWidget* label) {
    hideFromReaders(label, false);
    setReaderRole(label, QAccessible::StaticText);
}

void setReaderOpen(QWidget* header, bool open) {
    header->setProperty(kReaderOpen, open);
    QAccessible::State changed;
    changed.expanded = true;
    QAccessibleStateChangeEvent event(header, changed);
    QAccessible::updateAccessibility(&event);
}

void setReaderAction(QWidget* widget, const QString& action, std::function<void()> act) {
    Acts acts = allActsOf(widget);
    acts.insert(action, std::move(act));
    widget->setProperty(kReaderActs, QVariant::fromValue(acts));
}

void setReading(QWidget* widget, const std::optional<Reading>& reading) {
    if (readingOf(widget) == reading) {
        return;
    }
    widget->setProperty(kReading, reading ? QVariant::fromValue(*reading) : QVariant());
    if (reading && QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(widget, reading->value);
        QAccessible::updateAccessibility(&event);
    }
}

std::optional<Reading> readingOf(const QWidget* widget) {
    const QVariant told = widget->property(kReading);
    return told.isValid() ? std::optional(told.value<Reading>()) : std::nullopt;
}

void setReaderUnit(QWidget* widget, const QString& unit) {
    widget->setProperty(kReaderUnit, unit);
}

void announce(QWidget* from, const QString& words) {
    QWidget* window = from->window();
    if (words.isEmpty() || !window->isVisible()) {
        return;
    }
    QWidget* note = nextNote(window);
    note->setProperty(kReaderNote, words);
    window->setProperty(kReaderLastNote, QVariant::fromValue(note));
    if (!QAccessible::isActive()) {
        return;
    }
    // A note whose words change is read by some, one that comes up by others.
    for (const QAccessible::Event told :
         {QAccessible::ObjectHide, QAccessible::NameChanged, QAccessible::ObjectShow}) {
        QAccessibleEvent event(note, told);
        QAccessible::updateAccessibility(&event);
    }
}

QString lastAnnounced(const QWidget* window) {
    const auto* note = window->property(kReaderLastNote).value<QWidget*>();
    return note == nullptr ? QString() : note->property(kReaderNote).toString();
}

void tellReaders() {
    QAccessible::installFactory(houseFactory); // known ones are not added again
}

} // namespace benthor::look
