#include "ctl/selection.h"

#include "platform/textformat.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace benthor::ctl {

namespace {

using platform::Database;
using platform::Recordset;
using platform::sqlWith;

/// A query cannot ask for an identifier with a single quote, and no program of ours gives one out.
bool canBeAskedFor(const QString& id) {
    return !id.isEmpty() && !id.contains(QLatin1Char('\''));
}

bool meetsDates(const QDateTime& start, const Selection& selection) {
    if (!selection.since.isValid() && !selection.until.isValid()) {
        return true;
    }
    return start.isValid() && (!selection.since.isValid() || start.date() >= selection.since) &&
           (!selection.until.isValid() || start.date() <= selection.until);
}

/// A row's fields that a word may stand in, by name, where the store has them.
constexpr std::array kSearched{u"Location", u"site", u"Divenote", u"sitenote", u"Coments", u"Suit"};

/// The dates as the tool writes them and as the dive list shows them.
QString datesOf(const QDateTime& start) {
    return start.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss yyyy-MM-dd HH:mm:ss ")) +
           platform::formatDate(start, u"mmm/dd/yyyy hh:mm:ss");
}

class Conditions {
public:
    Conditions(Database& database, const Selection& selection)
        : database_(database)
        , selection_(selection) {
        Recordset table = database.openRecordset(
            "SELECT 1 FROM sqlite_master WHERE type = 'table' AND lower(name) = 'buddylist'");
        hasBuddies_ = !table.eof();
    }

    bool isMetBy(const QString& id) {
        const Recordset row =
            database_.openRecordset(sqlWith("SELECT * FROM main where DiveID = '", id, "'"));
        if (row.eof()) {
            return false;
        }
        const int place = row.fieldPosition(u"startdate");
        const QDateTime start = place < 0 ? QDateTime() : row.value(place).dateTime();
        if (!meetsDates(start, selection_)) {
            return false;
        }
        return selection_.words.isEmpty() || hasWords(id, row, start);
    }

private:
    bool hasWords(const QString& id, const Recordset& row, const QDateTime& start) {
        QStringList texts{start.isValid() ? datesOf(start) : QString()};
        for (const char16_t* const field : kSearched) {
            if (const int place = row.fieldPosition(QStringView(field)); place >= 0) {
                texts += row.value(place).text();
            }
        }
        if (hasBuddies_) {
            Recordset buddies =
                database_.openRecordset(sqlWith("SELECT buddylist FROM buddylist where diveid = '", id, "'"));
            for (; !buddies.eof(); buddies.moveNext()) {
                texts += buddies.value(0).text();
            }
        }
        return std::all_of(selection_.words.begin(), selection_.words.end(), [&](const QString& word) {
            return std::any_of(texts.begin(), texts.end(),
                               [&](const QString& text) { return text.contains(word, Qt::CaseInsensitive); });
        });
    }

    Database& database_;
    const Selection& selection_;
    bool hasBuddies_ = false;
};

} // namespace

QString identifierOf(const QString& text) {
    static const QRegularExpression form(QStringLiteral("^[Dd]?([0-9]{1,7})$"));
    const QRegularExpressionMatch match = form.match(text);
    return match.hasMatch() ? QLatin1Char('D') + match.captured(1).rightJustified(7, QLatin1Char('0')) : text;
}

std::optional<std::pair<QDate, QDate>> daysOf(const QString& text) {
    static const QRegularExpression form(QStringLiteral("^([0-9]{4})(?:-([0-9]{2})(?:-([0-9]{2}))?)?$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    const bool hasMonth = match.hasCaptured(2);
    const bool hasDay = match.hasCaptured(3);
    const QDate first(match.captured(1).toInt(), hasMonth ? match.captured(2).toInt() : 1,
                      hasDay ? match.captured(3).toInt() : 1);
    if (!first.isValid()) {
        return std::nullopt;
    }
    return std::pair(first, hasDay ? first : (hasMonth ? first.addMonths(1) : first.addYears(1)).addDays(-1));
}

Selected selectDives(Database& database, exports::DiveReader& reader, const Selection& selection) {
    Selected selected;
    QSet<QString> wanted; // case folded
    for (const QString& id : selection.ids) {
        wanted += id.toCaseFolded();
    }
    Conditions conditions(database, selection);
    QSet<QString> met;
    for (const QString& id : reader.identifiers()) {
        if (!wanted.isEmpty() && !wanted.contains(id.toCaseFolded())) {
            continue;
        }
        met += id.toCaseFolded();
        if (!canBeAskedFor(id)) {
            ++selected.unnamed;
        } else if (!selection.isConditional() || conditions.isMetBy(id)) {
            selected.ids += id;
        }
    }
    for (const QString& id : selection.ids) {
        if (const QString folded = id.toCaseFolded(); !met.contains(folded)) {
            met += folded;
            selected.missing += id;
        }
    }
    return selected;
}

} // namespace benthor::ctl
