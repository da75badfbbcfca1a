// Labels, and labels that act.

#include "platform/look/access/access.h"
#include "platform/look/access/access_p.h"
#include "platform/look/access/houseaccess.h"
#include "platform/look/widgets/clickablelabel.h"

#include <QLabel>
#include <QTextDocumentFragment>

namespace benthor::look {

LabelAccess::LabelAccess(QLabel* label)
    : HouseAccess(label, QAccessible::StaticText) {}

QLabel* LabelAccess::label() const {
    return qobject_cast<QLabel*>(object());
}

namespace {

bool isPicture(const QLabel* label) {
    return !label->pixmap(Qt::ReturnByValue).isNull();
}

QString wordsOf(const QLabel* label) {
    const bool rich = label->textFormat() == Qt::RichText ||
                      (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text()));
    const QString words = rich ? QTextDocumentFragment::fromHtml(label->text()).toPlainText() : label->text();
    return (label->buddy() != nullptr ? withoutMark(words) : words).trimmed();
}

} // namespace

/// Its words are what it tells.
bool LabelAccess::isBlank() const {
    return false;
}

bool LabelAccess::isDecoration() const {
    return HouseAccess::isDecoration() ||
           (widget()->accessibleName().isEmpty() && wordsOf(label()).isEmpty() &&
            !widget()->property(kReaderRole).isValid());
}

QAccessible::Role LabelAccess::role() const {
    const QAccessible::Role role = HouseAccess::role();
    return role == QAccessible::StaticText && isPicture(label()) ? QAccessible::Graphic : role;
}

QString LabelAccess::text(QAccessible::Text text) const {
    if (text == QAccessible::Name) {
        const QString name = widget()->accessibleName();
        QString words = wordsOf(label());
        const QString unit = widget()->property(kReaderUnit).toString();
        if (!words.isEmpty() && !unit.isEmpty()) {
            words += u' ' + unit;
        }
        if (name.isEmpty() || words.isEmpty() || words.contains(name)) {
            return words.isEmpty() ? name : words;
        }
        return name + QStringLiteral(": ") + words;
    }
    if (text == QAccessible::Description && widget()->accessibleDescription().isEmpty()) {
        const QString tip = widget()->toolTip();
        return tip == widget()->accessibleName() || tip == wordsOf(label()) ? QString() : tip;
    }
    return HouseAccess::text(text);
}

QList<std::pair<QAccessibleInterface*, QAccessible::Relation>>
LabelAccess::relations(QAccessible::Relation match) const {
    auto relations = HouseAccess::relations(match);
    if ((match & QAccessible::Labelled) && label()->buddy() != nullptr) {
        relations.append({QAccessible::queryAccessibleInterface(label()->buddy()), QAccessible::Labelled});
    }
    return relations;
}

ActingAccess::ActingAccess(ClickableLabel* label)
    : LabelAccess(label) {}

bool ActingAccess::isDecoration() const {
    return HouseAccess::isDecoration();
}

QAccessible::Role ActingAccess::role() const {
    const QAccessible::Role role = HouseAccess::role();
    const bool told = widget()->property(kReaderRole).isValid();
    return role == QAccessible::StaticText && !told ? QAccessible::Button : role;
}

/// A label that acts is called by its name alone where it has one, as a button is.
QString ActingAccess::text(QAccessible::Text text) const {
    if (text != QAccessible::Name) {
        return LabelAccess::text(text);
    }
    for (const QString& name : {widget()->accessibleName(), wordsOf(label()), widget()->toolTip()}) {
        if (!name.trimmed().isEmpty()) {
            return name.trimmed();
        }
    }
    return {};
}

QStringList ActingAccess::actionNames() const {
    const QStringList names = LabelAccess::actionNames();
    return widget()->isEnabled() ? QStringList(pressAction()) + names : names;
}

void ActingAccess::doAction(const QString& action) {
    if (action != pressAction() || !widget()->isEnabled()) {
        LabelAccess::doAction(action);
        return;
    }
    auto* acting = qobject_cast<ClickableLabel*>(object());
    QMetaObject::invokeMethod(acting, &ClickableLabel::clicked, Qt::QueuedConnection);
}

} // namespace benthor::look
