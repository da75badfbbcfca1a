#include "tests/fit/fitcheck.h"

#include "platform/look/widgets/commandbutton.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTextDocument>

namespace benthor::tests {

namespace {

/// A pixel of rounding on each side is no fault.
constexpr int kRounding = 1;

QString told(const QWidget* widget) {
    QStringList path;
    for (const QWidget* at = widget; at != nullptr && path.size() < 2; at = at->parentWidget()) {
        if (!at->objectName().isEmpty() && !at->objectName().startsWith(QLatin1String("qt_"))) {
            path.prepend(at->objectName());
        }
        if (at->isWindow()) {
            break;
        }
    }
    return QLatin1String(widget->metaObject()->className()) + u' ' + path.join(u'/');
}

QString plain(const QString& text) {
    if (!Qt::mightBeRichText(text)) {
        return text;
    }
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText();
}

QString shortened(const QString& text) {
    constexpr qsizetype kMost = 40;
    const QString line = plain(text).simplified();
    return line.size() > kMost ? line.left(kMost) + u'…' : line;
}

QString lackOf(const QLabel& label) {
    if (label.text().isEmpty() || !label.pixmap(Qt::ReturnByValue).isNull()) {
        return {};
    }
    if (label.wordWrap()) {
        const int needed = label.heightForWidth(label.width());
        return needed > label.height() + kRounding
                   ? QStringLiteral("%1 of %2 high").arg(label.height()).arg(needed)
                   : QString();
    }
    QSize needed = label.sizeHint();
    for (QStringView text = label.text(); text.endsWith(u'\n'); text.chop(1)) {
        needed.rheight() -= label.fontMetrics().lineSpacing(); // an empty line is none to be read
    }
    if (needed.width() > label.width() + kRounding) {
        return QStringLiteral("%1 of %2 wide").arg(label.width()).arg(needed.width());
    }
    return needed.height() > label.height() + kRounding
               ? QStringLiteral("%1 of %2 high").arg(label.height()).arg(needed.height())
               : QString();
}

QString lackOf(const QAbstractButton& button) {
    const auto* command = qobject_cast<const look::CommandButton*>(&button);
    if (button.text().isEmpty() ||
        (command != nullptr && command->kind() == look::CommandButton::Kind::Icon)) {
        return {};
    }
    const QSize words = button.fontMetrics().size(Qt::TextShowMnemonic, button.text()) +
                        (button.icon().isNull() ? QSize() : QSize(button.iconSize().width(), 0));
    return words.width() > button.width() + kRounding
               ? QStringLiteral("%1 of %2 wide").arg(button.width()).arg(words.width())
           : words.height() > button.height() + kRounding
               ? QStringLiteral("%1 of %2 high").arg(button.height()).arg(words.height())
               : QString();
}

QString lackOf(const QComboBox& box) {
    if (box.isEditable() || box.currentText().isEmpty()) {
        return {}; // the end of what was typed is reached by moving in it
    }
    QStyleOptionComboBox option;
    option.initFrom(&box);
    const int room =
        box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box).width();
    const int needed = box.fontMetrics().horizontalAdvance(box.currentText());
    return needed > room + kRounding ? QStringLiteral("%1 of %2 wide").arg(room).arg(needed) : QString();
}

QString lackOf(const QTabBar& tabs) {
    for (int tab = 0; tab < tabs.count(); ++tab) {
        const int needed = tabs.fontMetrics().horizontalAdvance(tabs.tabText(tab));
        if (tabs.isTabVisible(tab) && needed > tabs.tabRect(tab).width()) {
            return QStringLiteral("\"%1\" has %2 of %3")
                .arg(tabs.tabText(tab))
                .arg(tabs.tabRect(tab).width())
                .arg(needed);
        }
    }
    return {};
}

/// The scroll area in whose contents the widget lies; null where it lies in none.
const QAbstractScrollArea* scrollAreaOf(const QWidget* widget) {
    for (const QWidget* at = widget->parentWidget(); at != nullptr; at = at->parentWidget()) {
        const auto* area = qobject_cast<const QAbstractScrollArea*>(at->parentWidget());
        if (area != nullptr && area->viewport() == at) {
            return area;
        }
        if (at->isWindow()) {
            break;
        }
    }
    return nullptr;
}

/// Whether it is a control of ours, and not a part that a widget of Qt's is made of.
bool isControl(const QWidget* widget) {
    const QString name = widget->objectName();
    return !widget->isWindow() && widget->isVisible() && !widget->size().isEmpty() &&
           !name.startsWith(QLatin1String("qt_")) && qobject_cast<const QScrollBar*>(widget) == nullptr &&
           (qobject_cast<const QLabel*>(widget) != nullptr ||
            qobject_cast<const QAbstractButton*>(widget) != nullptr || widget->focusPolicy() != Qt::NoFocus);
}

} // namespace

QStringList cutTexts(const QWidget* window) {
    QStringList faults;
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
        if (!widget->isVisible()) {
            continue;
        }
        QString lack;
        QString text;
        if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            lack = lackOf(*label);
            text = label->text();
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            lack = lackOf(*button);
            text = button->text();
        } else if (const auto* box = qobject_cast<const QComboBox*>(widget)) {
            lack = lackOf(*box);
            text = box->currentText();
        } else if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
            lack = lackOf(*tabs);
        }
        if (!lack.isEmpty()) {
            faults += QStringLiteral("%1 \"%2\" is cut: %3").arg(told(widget), shortened(text), lack);
        }
    }
    return faults;
}

QStringList controlsOutside(const QWidget* window) {
    QStringList faults;
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
        if (!isControl(widget) || widget->window() != window) {
            continue;
        }
        const QAbstractScrollArea* area = scrollAreaOf(widget);
        const QWidget* frame = window;
        QRect room = window->rect();
        if (area != nullptr) { // what can be scrolled to is all of the contents
            const auto* contents = qobject_cast<const QScrollArea*>(area);
            if (contents == nullptr || contents->widget() == nullptr ||
                !contents->widget()->isAncestorOf(widget)) {
                continue;
            }
            frame = contents->widget();
            room = frame->rect();
            if (contents->horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOff) {
                room.setWidth(std::min(room.width(), area->viewport()->width()));
            }
        }
        const QRect place(widget->mapTo(frame, QPoint()), widget->size());
        if (!room.adjusted(-kRounding, -kRounding, kRounding, kRounding).contains(place)) {
            faults += QStringLiteral("%1 lies outside: %2,%3 %4x%5 in %6x%7")
                          .arg(told(widget))
                          .arg(place.x())
                          .arg(place.y())
                          .arg(place.width())
                          .arg(place.height())
                          .arg(room.width())
                          .arg(room.height());
        }
    }
    return faults;
}

QStringList overlaps(const QWidget* window) {
    QStringList faults;
    QList<QWidget*> parents = window->findChildren<QWidget*>();
    parents.prepend(const_cast<QWidget*>(window));
    for (const QWidget* parent : parents) {
        if (!parent->isVisible() || parent->layout() == nullptr) {
            continue; // what has no layout is placed by its owner, over a chart for instance
        }
        const auto* grid = qobject_cast<const QGridLayout*>(parent->layout());
        const auto cellOf = [grid](int item) { // what shares a cell is meant to lie in one place
            std::array<int, 4> cell{-1 - item};
            if (grid != nullptr) {
                grid->getItemPosition(item, &cell[0], &cell[1], &cell[2], &cell[3]);
            }
            return cell;
        };
        QList<std::pair<const QWidget*, std::array<int, 4>>> laid;
        for (int i = 0; i < parent->layout()->count(); ++i) {
            const QWidget* widget = parent->layout()->itemAt(i)->widget();
            if (widget != nullptr && widget->isVisible() && !widget->size().isEmpty()) {
                laid.emplaceBack(widget, cellOf(i));
            }
        }
        for (qsizetype a = 0; a < laid.size(); ++a) {
            for (qsizetype b = a + 1; b < laid.size(); ++b) {
                const auto& [one, cell] = laid[a];
                const auto& [other, otherCell] = laid[b];
                const QRect both = one->geometry() & other->geometry();
                if (cell != otherCell && both.width() > kRounding && both.height() > kRounding) {
                    faults += QStringLiteral("%1 and %2 overlap").arg(told(one), told(other));
                }
            }
        }
    }
    return faults;
}

} // namespace benthor::tests
