// What the screens must show.

#include "platform/grid/flexgrid.h"
#include "platform/screen/screen.h"
#include "profile/decoder.h"
#include "profile/gridcells.h"
#include "session/process.h"
#include "tests/walk/model.h"
#include "viewer/screens/rbinterface.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>

namespace benthor::tests {

namespace {

struct Box {
    const char* field;
    const char* control;
};
constexpr std::array<Box, 9> kBoxes{{{"UserName", "Txtdiver"},
                                     {"department", "Cbodepartment"},
                                     {"site", "Cbosite"},
                                     {"Location", "txtlocation"},
                                     {"weather", "cbowhether"},
                                     {"Suit", "txtsuit"},
                                     {"divenote", "txtdivenote"},
                                     {"sitenote", "txtsitenote"},
                                     {"Coments", "txtcomments"}}};

QString shownIn(const platform::Screen& screen, const char* control) {
    const QObject* box = screen.findChild<QObject*>(QLatin1String(control));
    if (const auto* notes = qobject_cast<const QPlainTextEdit*>(box)) {
        return notes->toPlainText();
    }
    if (const auto* list = qobject_cast<const QComboBox*>(box)) {
        return list->currentText();
    }
    return box == nullptr ? QString() : box->property("text").toString();
}

QStringList buddiesOn(const platform::Screen& screen) {
    QStringList names;
    const auto* list = screen.findChild<QListWidget*>(QStringLiteral("List1"));
    for (int i = 0; list != nullptr && i < list->count(); ++i) {
        names += list->item(i)->text();
    }
    return names;
}

} // namespace

/// The details show what the store has of their dive.
QString Model::takeDetailsScreen(const Snapshot& now, const platform::Screen& screen) {
    const QString diveid = details_.diveid;
    for (const Box& box : kBoxes) {
        const QString field = QLatin1String(box.field);
        const QString stored = now.dives.value(diveid).diver.value(field);
        const QString shown = shownIn(screen, box.control);
        const bool filled = field == QLatin1String("divenote") && stored.isEmpty();
        if (shown != stored && !filled) {
            return QStringLiteral("details of %1 show \"%2\" as %3").arg(diveid, shown, field);
        }
        details_.edited.insert(field, shown);
    }
    details_.buddies = buddiesOn(screen);
    details_.storedEdits = details_.edited;
    details_.storedBuddies = details_.buddies;
    return details_.buddies == now.dives.value(diveid).buddies
               ? QString()
               : QStringLiteral("details of %1 show the buddies %2").arg(diveid, details_.buddies.join(u'|'));
}

/// The details belong to the dive that the dive screen showed when they were opened, until they go.
QString Model::checkDetails(const Snapshot& now) {
    platform::Screen* screen = World::screen("rbdetails");
    if (screen == nullptr) {
        details_ = {};
        return {};
    }
    const QString diveid = World::textOf("rbdetails", "txtdiveid");
    if (details_.screen != screen) {
        if (viewer_.diveid != diveid) {
            return QStringLiteral("details of %1 were opened from the dive screen of %2")
                .arg(diveid, viewer_.diveid);
        }
        details_ = {};
        details_.screen = screen;
        details_.diveid = diveid;
        details_.key = now.dives.value(diveid).key();
        return takeDetailsScreen(now, *screen);
    }
    if ((expected.turned && !expected.detailsStay) ||
        (expected.merge && expected.merge->kind == MergeEnd::Kind::Merged)) {
        return takeDetailsScreen(now, *screen);
    }
    if (diveid != details_.diveid || now.dives.value(diveid).key() != details_.key) {
        return QStringLiteral("the details of %1 stand for %2, %3")
            .arg(details_.diveid, diveid, now.dives.value(diveid).key());
    }
    if (expected.detailsSaved) {
        details_.storedEdits = details_.edited;
        details_.storedBuddies = details_.buddies;
    }
    for (const Box& box : kBoxes) {
        const QString typed = details_.edited.value(QLatin1String(box.field));
        if (shownIn(*screen, box.control) != typed) {
            return QStringLiteral("\"%1\" was typed as %2, and \"%3\" stands there")
                .arg(typed, QLatin1String(box.field), shownIn(*screen, box.control));
        }
    }
    return {};
}

/// The dive screen shows the dive that it was opened for, until it goes or another one is opened.
QString Model::checkViewer(const Snapshot& now) {
    const QString before = viewerDive().isEmpty() ? viewer_.diveid : viewerDive();
    platform::Screen* screen = World::screen("rbinterface");
    if (screen == nullptr) {
        viewer_ = {};
        return expected.viewer && !expected.viewer->isEmpty()
                   ? QStringLiteral("the dive screen of %1 did not come").arg(*expected.viewer)
                   : QString();
    }
    const QString diveid = World::textOf("rbinterface", "txtdiveid");
    if (expected.viewer && *expected.viewer != diveid) {
        return QStringLiteral("the dive screen shows %1 instead of %2").arg(diveid, *expected.viewer);
    }
    if (!expected.viewer && before != diveid) {
        return QStringLiteral("the dive screen went from \"%1\" to %2 by itself").arg(before, diveid);
    }
    const auto stored = now.dives.constFind(diveid);
    if (stored == now.dives.constEnd()) {
        return QStringLiteral("the dive screen shows %1, which is not in the store").arg(diveid);
    }
    if (!expected.viewer && stored->key() != viewer_.key) {
        return QStringLiteral("the dive screen of %1 became that of another dive").arg(diveid);
    }
    savedForDan_ = (savedForDan_ && viewer_.screen == screen) || !expected.danFile.isEmpty();
    viewer_ = {screen, diveid, stored->key()};
    const auto* view = qobject_cast<viewer::rbinterface*>(screen);
    if (view->session().header().divefilename != stored->dbtxtname) {
        return QStringLiteral("the dive screen of %1 shows the file %2")
            .arg(diveid, view->session().header().divefilename);
    }
    return checkProfile(now);
}

/// Depths are those of the dive's file, in the unit that the screen says.
QString Model::checkProfile(const Snapshot& now) const {
    const auto* entry = viewer_.screen->findChild<QAction*>(QStringLiteral("mnuunitsfeet"));
    const bool feet = entry->isChecked();
    // The file for DAN makes the word "metre" until the screen is loaded anew.
    if (feet != (process().depthunit == QLatin1String("Feet")) && !savedForDan_) {
        return QStringLiteral("the dive screen is in %1, the program in %2")
            .arg(feet ? QStringLiteral("feet") : QStringLiteral("metres"), process().depthunit);
    }
    const QByteArray bytes = now.forviewer.value(now.dives.value(viewer_.diveid).dbtxtname);
    if (bytes.isEmpty()) {
        return {}; // a name that is not that of its copy
    }
    const profile::DiveProfile profile = profile::decodeProfile(bytes, feet);
    const auto* grid = viewer_.screen->findChild<platform::FlexGrid*>(QStringLiteral("MSFlexGrid1"));
    for (int row = profile::kFirstSample; row < profile.lastsample; row += 7) {
        const QString depth = profile::cellText(profile, {}, 10, row, 1);
        if (grid->text(row, 1) != depth) {
            return QStringLiteral("sample %1 of %2 shows the depth %3 instead of %4")
                .arg(row)
                .arg(viewer_.diveid, grid->text(row, 1), depth);
        }
    }
    return {};
}

QString Model::checkList(const Snapshot& now) const {
    const platform::FlexGrid* grid = World::list();
    if (grid == nullptr || !process().storepath.isEmpty()) {
        return {};
    }
    QStringList shown;
    for (int row = 1; row < grid->rows(); ++row) {
        shown += grid->text(row, 0);
    }
    std::sort(shown.begin(), shown.end());
    return shown == now.dives.keys() ? QString()
                                     : QStringLiteral("the list shows %1, the store holds %2")
                                           .arg(shown.join(u' '), QStringList(now.dives.keys()).join(u' '));
}

} // namespace benthor::tests
