#include "tests/access/facecheck.h"

#include "platform/look/access/access.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/overlaycard.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QSet>
#include <QSplitter>
#include <QTabBar>

namespace benthor::tests {

namespace {

using Interfaces = QList<QAccessibleInterface*>;

bool isMet(const QAccessibleInterface* one) {
    return one != nullptr && one->isValid() && !one->state().invisible && one->role() != QAccessible::NoRole;
}

void collect(QAccessibleInterface* from, Interfaces& found) {
    for (int at = 0; at < from->childCount(); ++at) {
        QAccessibleInterface* one = from->child(at);
        if (one == nullptr || !one->isValid()) {
            continue;
        }
        // The cells of a table or list are the model's; what is in them is proved where they are made.
        const bool container = one->tableInterface() != nullptr || one->role() == QAccessible::List ||
                               one->role() == QAccessible::Tree;
        if (isMet(one)) {
            found += one;
        }
        if (!container && !one->state().invisible) {
            collect(one, found);
        }
    }
}

Interfaces allMet(QWidget* window) {
    Interfaces found;
    if (QAccessibleInterface* root = QAccessible::queryAccessibleInterface(window)) {
        collect(root, found);
    }
    return found;
}

/// Roles of what is worked by an act, by typing, or by moving in it.
bool isActing(QAccessible::Role role) {
    static const QSet<QAccessible::Role> acting{
        QAccessible::Button,      QAccessible::CheckBox,     QAccessible::RadioButton,
        QAccessible::Link,        QAccessible::PageTab,      QAccessible::MenuItem,
        QAccessible::ButtonMenu,  QAccessible::ComboBox,     QAccessible::SpinBox,
        QAccessible::Slider,      QAccessible::EditableText, QAccessible::Table,
        QAccessible::List,        QAccessible::Tree,         QAccessible::PageTabList,
        QAccessible::MenuBar,     QAccessible::PopupMenu,    QAccessible::Chart,
        QAccessible::Splitter,    QAccessible::ScrollBar,    QAccessible::ButtonDropDown,
        QAccessible::WebDocument, QAccessible::Document};
    return acting.contains(role);
}

bool mustHaveAct(QAccessible::Role role) {
    static const QSet<QAccessible::Role> pressed{QAccessible::Button,      QAccessible::CheckBox,
                                                 QAccessible::RadioButton, QAccessible::Link,
                                                 QAccessible::ButtonMenu,  QAccessible::MenuItem};
    return pressed.contains(role);
}

bool hasAct(QAccessibleInterface* one) {
    if (one->actionInterface() == nullptr) {
        return false;
    }
    const QStringList names = one->actionInterface()->actionNames();
    for (const QString& act :
         {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::toggleAction(),
          QAccessibleActionInterface::showMenuAction()}) {
        if (names.contains(act)) {
            return true;
        }
    }
    return false;
}

bool needsName(QAccessible::Role role) {
    static const QSet<QAccessible::Role> unnamed{
        QAccessible::Client,    QAccessible::Border,      QAccessible::Window,      QAccessible::Splitter,
        QAccessible::ScrollBar, QAccessible::Pane,        QAccessible::LayeredPane, QAccessible::Grouping,
        QAccessible::MenuBar,   QAccessible::PageTabList, QAccessible::TitleBar,    QAccessible::ToolBar,
        QAccessible::Separator, QAccessible::StatusBar,   QAccessible::Dialog,      QAccessible::Grip,
        QAccessible::Pane,      QAccessible::Whitespace,  QAccessible::Notification};
    return !unnamed.contains(role);
}

/// Parts of the toolkit's own widgets are reached through these.
bool isInner(const QWidget* widget) {
    const QWidget* parent = widget->parentWidget();
    return parent != nullptr && ((qobject_cast<const QComboBox*>(parent) != nullptr &&
                                  qobject_cast<const QLineEdit*>(widget) == nullptr) ||
                                 (qobject_cast<const QAbstractScrollArea*>(parent) != nullptr &&
                                  static_cast<const QAbstractScrollArea*>(parent)->viewport() == widget) ||
                                 qobject_cast<const QHeaderView*>(widget) != nullptr ||
                                 qobject_cast<const QScrollBar*>(widget) != nullptr ||
                                 widget->objectName().startsWith(QLatin1String("qt_")) || isInner(parent));
}

/// What a mouse or a key can work.
bool isWorked(const QWidget* widget) {
    if (widget->testAttribute(Qt::WA_TransparentForMouseEvents) && widget->focusPolicy() == Qt::NoFocus) {
        return false; // a sign
    }
    if (qobject_cast<const QAbstractButton*>(widget) != nullptr ||
        qobject_cast<const look::ClickableLabel*>(widget) != nullptr) {
        return true;
    }
    return (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr;
}

QString nameOf(QAccessibleInterface* one) {
    return one->text(QAccessible::Name).trimmed();
}

void checkMet(const Interfaces& met, QStringList& faults) {
    const QAccessibleInterface* before = nullptr;
    for (QAccessibleInterface* one : met) {
        const auto* widget = qobject_cast<QWidget*>(one->object());
        const QString who = widget != nullptr ? tell(widget) : QStringLiteral("a part '%1'").arg(nameOf(one));
        if (widget != nullptr && isInner(widget)) {
            continue;
        }
        const QString role = qAccessibleRoleString(one->role());
        // Of a drop-down the toolkit gives the value for the name: what it is, its label says.
        const bool nameless = one->role() == QAccessible::ComboBox
                                  ? one->relations(QAccessible::Label).isEmpty() &&
                                        one->text(QAccessible::Name) == one->text(QAccessible::Value)
                                  : nameOf(one).isEmpty();
        if (needsName(one->role()) && nameless) {
            faults += QStringLiteral("%1 is met as %2 without a name").arg(who, role);
        }
        if (mustHaveAct(one->role()) && !one->state().disabled && !hasAct(one)) {
            faults += QStringLiteral("%1 is met as %2 without an act").arg(who, role);
        }
        if (before != nullptr && isActing(one->role()) && before->role() == one->role() &&
            needsName(one->role()) && before->text(QAccessible::Name).trimmed() == nameOf(one) &&
            before->text(QAccessible::Description) == one->text(QAccessible::Description)) {
            faults += QStringLiteral("%1 is met twice as '%2'").arg(who, nameOf(one));
        }
        before = one;
    }
}

/// Something that is met and acts, around the widget, beside it, or under the same name.
bool hasTwin(const QWidget* widget, const Interfaces& met) {
    const QString name =
        widget->accessibleName().isEmpty() ? widget->property("text").toString() : widget->accessibleName();
    return std::any_of(met.begin(), met.end(), [&](QAccessibleInterface* one) {
        const auto* other = qobject_cast<const QWidget*>(one->object());
        return other != nullptr && isActing(one->role()) &&
               (other->isAncestorOf(widget) || other->parentWidget() == widget->parentWidget() ||
                (!name.trimmed().isEmpty() && nameOf(one) == name.trimmed()));
    });
}

} // namespace

bool isOverlaid(const QWidget* widget) {
    for (const QWidget* up = widget; up != nullptr && !up->isWindow(); up = up->parentWidget()) {
        const auto* area = up->parentWidget();
        for (const auto* over : area->findChildren<look::OverlayCard*>(Qt::FindDirectChildrenOnly)) {
            if (over != up && over->isVisible()) {
                return true;
            }
        }
    }
    return false;
}

QString tell(const QWidget* widget) {
    QString name = widget->objectName();
    for (const QWidget* up = widget; name.isEmpty() && up != nullptr; up = up->parentWidget()) {
        name = up->objectName().isEmpty() ? QString() : QStringLiteral("in ") + up->objectName();
    }
    const QVariant text = widget->property("text");
    return QStringLiteral("%1 (%2) '%3'")
        .arg(name, QLatin1String(widget->metaObject()->className()), text.toString().simplified().left(40));
}

QStringList faultsForReaders(QWidget* window) {
    QStringList faults;
    const Interfaces met = allMet(window);
    checkMet(met, faults);

    QSet<const QObject*> objects;
    QSet<QString> acting;
    for (QAccessibleInterface* one : met) {
        objects.insert(one->object());
        if (isActing(one->role())) {
            acting.insert(nameOf(one));
        }
    }
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(window) || widget->window() != window || isInner(widget) ||
            isOverlaid(widget) || !isWorked(widget)) {
            continue;
        }
        QAccessibleInterface* one = QAccessible::queryAccessibleInterface(widget);
        if (one == nullptr || !objects.contains(widget)) {
            // Only the twin of something that is met may be left out, and only where Tab does not lead.
            if ((widget->focusPolicy() & Qt::TabFocus) != 0) {
                faults += QStringLiteral("%1 takes the focus and is not met").arg(tell(widget));
            } else if (!hasTwin(widget, met)) {
                faults += QStringLiteral("%1 is not met, and nothing does the same").arg(tell(widget));
            }
            continue;
        }
        if (one->role() == QAccessible::Grouping && widget->focusPolicy() == Qt::NoFocus) {
            continue; // the ground of what acts in it
        }
        if (!isActing(one->role()) && one->role() != QAccessible::StaticText) {
            faults += QStringLiteral("%1 is worked and met as %2")
                          .arg(tell(widget), QLatin1String(qAccessibleRoleString(one->role())));
        } else if (one->role() == QAccessible::StaticText && (widget->focusPolicy() & Qt::TabFocus) != 0) {
            faults += QStringLiteral("%1 is worked and met as plain text").arg(tell(widget));
        }
    }
    return faults;
}

QString readersTree(QWidget* window) {
    QString text;
    for (QAccessibleInterface* one : allMet(window)) {
        int depth = 0;
        for (const QAccessibleInterface* up = one->parent(); up != nullptr; up = up->parent()) {
            ++depth;
        }
        const QVariant value =
            one->valueInterface() != nullptr ? one->valueInterface()->currentValue() : QVariant();
        text += QStringLiteral("%1%2 '%3' | %4 | %5 %6 {%7}\n")
                    .arg(QString(2 * depth, u' '), QLatin1String(qAccessibleRoleString(one->role())),
                         nameOf(one).simplified(), one->text(QAccessible::Description).simplified(),
                         value.toString(), one->text(QAccessible::Value).simplified(),
                         one->object() != nullptr ? one->object()->objectName() : QString());
    }
    return text;
}

namespace {

QChar markOf(const QString& text) {
    const QKeySequence keys = QKeySequence::mnemonic(text);
    return keys.isEmpty() ? QChar() : QChar(static_cast<char16_t>(keys[0].key()));
}

struct Marked {
    QChar mark;
    QString who;
};

void findClashes(const QList<Marked>& marked, const QString& where, QStringList& faults) {
    QMap<QChar, QString> taken;
    for (const Marked& one : marked) {
        if (one.mark.isNull()) {
            continue;
        }
        if (taken.contains(one.mark)) {
            faults += QStringLiteral("%1: Alt+%2 is %3 and %4")
                          .arg(where, QString(one.mark), taken.value(one.mark), one.who);
        }
        taken.insert(one.mark, one.who);
    }
}

void checkMenu(const QMenu* menu, const QString& where, QStringList& faults) {
    QList<Marked> marked;
    for (const QAction* entry : menu->actions()) {
        if (entry->isVisible() && !entry->isSeparator()) {
            marked += {markOf(entry->text()), entry->text()};
            if (entry->menu() != nullptr) {
                checkMenu(entry->menu(), where + QStringLiteral(" > ") + entry->text(), faults);
            }
        }
    }
    findClashes(marked, where, faults);
}

} // namespace

QStringList clashingMnemonics(QWidget* window) {
    QStringList faults;
    QList<Marked> marked;
    for (const QMenuBar* bar : window->findChildren<QMenuBar*>()) {
        for (const QAction* entry : bar->actions()) {
            if (entry->isVisible()) {
                marked += {markOf(entry->text()), entry->text()};
            }
        }
    }
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(window) || widget->window() != window) {
            continue;
        }
        const auto* label = qobject_cast<const QLabel*>(widget);
        const bool marks =
            qobject_cast<const QAbstractButton*>(widget) != nullptr || (label && label->buddy() != nullptr);
        if (marks) {
            marked += {markOf(widget->property("text").toString()), tell(widget)};
        }
        if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
            for (int at = 0; at < tabs->count(); ++at) {
                marked += {markOf(tabs->tabText(at)), tabs->tabText(at)};
            }
        }
    }
    findClashes(marked, window->objectName(), faults);
    for (const QMenu* menu : window->findChildren<QMenu*>()) {
        // What a narrow window leaves no room for stands in a menu without a title, with the same entries.
        const bool spillOver = menu->title().isEmpty() && qobject_cast<QMenuBar*>(menu->parent()) != nullptr;
        if (qobject_cast<const QMenu*>(menu->parent()) == nullptr && !spillOver) {
            checkMenu(menu, window->objectName() + u' ' + menu->title(), faults);
        }
    }
    return faults;
}

} // namespace benthor::tests
