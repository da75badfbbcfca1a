#include "logbook/knowndives.h"

#include "platform/filename.h"
#include "platform/files.h"
#include "platform/textformat.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace benthor::logbook {

namespace {

using platform::Database;
using platform::ProgramFolder;
using platform::Recordset;

QString summaryKey(const Facts& facts) {
    return facts.started.isEmpty() ? QString()
                                   : facts.started + u'|' + facts.duration + u'|' +
                                         QString::number(platform::leadingNumber(facts.maxdepth));
}

bool areOfOneDevice(const Facts& one, const Facts& other) {
    const bool haveSuit = !one.suit.isEmpty() || !other.suit.isEmpty();
    const bool haveName = !one.username.isEmpty() || !other.username.isEmpty();
    if (!haveSuit && !haveName) {
        return true;
    }
    return (haveSuit && one.suit == other.suit) || (haveName && one.username == other.username);
}

/// 0 for no file, too.
qint64 sizeOf(const QString& place) {
    return place.isEmpty() ? 0 : QFileInfo(place).size();
}

/// Of what the file holds; empty where it cannot be read.
QByteArray digestOf(const QString& place) {
    QFile file(place);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result() : QByteArray();
}

template <class Key> void addFirst(QHash<Key, int>& first, const Key& key, int number) {
    if (!first.contains(key)) {
        first.insert(key, number);
    }
}

} // namespace

FactReader::FactReader(const Recordset& rows)
    : rows_(rows) {
    for (size_t i = 0; i < kDetails.size(); ++i) {
        details_[i] = rows.fieldPosition(QLatin1String(kDetails[i].field).toString());
    }
}

Facts FactReader::facts() const {
    Facts facts;
    facts.diveid = text(diveid_);
    facts.startcode = text(startcode_).trimmed();
    facts.suit = text(suit_).trimmed().toCaseFolded();
    facts.username = text(username_).trimmed().toCaseFolded();
    facts.started = started();
    facts.duration = text(duration_).trimmed();
    facts.maxdepth = text(maxdepth_).trimmed();
    facts.file = text(file_);
    for (size_t i = 0; i < kDetails.size(); ++i) {
        facts.details[i] = text(details_[i]);
    }
    return facts;
}

QString FactReader::text(int position) const {
    return position < 0 ? QString() : rows_.value(position).text();
}

QString FactReader::started() const {
    const QString written = text(startdate_).trimmed();
    const QDateTime moment = platform::Value(written).dateTime();
    return moment.isValid() ? moment.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")) : written;
}

Recordset openFacts(Database& database) {
    std::vector<const char*> wanted{"Startcode", "startdate", "Duration", "MaxDepth", "dbtxtname"};
    for (const Detail& detail : kDetails) {
        wanted.push_back(detail.field);
    }
    const QStringList there = database.fieldNames(QStringLiteral("main"));
    platform::Query query("SELECT rowid, DiveID");
    for (const char* const field : wanted) {
        if (there.contains(QLatin1String(field), Qt::CaseInsensitive)) {
            query.add(", ");
            query.add(field);
        }
    }
    query.add(" FROM main order by DiveID ");
    return database.openRecordset(query);
}

QString filePlace(const ProgramFolder& folder, const QString& name) {
    if (!platform::isFileName(name)) {
        return {};
    }
    QString place = folder.path(u"dbtxt", name);
    return platform::isFile(place) ? place : QString();
}

void KnownDives::add(const Facts& facts, const std::optional<QString>& place) {
    const int number = static_cast<int>(dives_.size());
    dives_.push_back({facts, place});
    if (!facts.startcode.isEmpty()) {
        byCode_[facts.startcode].push_back(number);
    }
    if (const QString key = summaryKey(facts); !key.isEmpty()) {
        addFirst(bySummary_, key, number);
        if (facts.startcode.isEmpty()) {
            addFirst(codelessBySummary_, key, number);
        }
    }
    if (sizesRead_) {
        addSize(number);
    }
}

std::optional<int> KnownDives::find(const Facts& facts, const QString& place) {
    std::optional<int> found;
    const auto take = [&](int number) { found = found ? std::min(*found, number) : number; };
    if (const auto ofCode = byCode_.constFind(facts.startcode); ofCode != byCode_.cend()) {
        const auto same = std::find_if(ofCode->begin(), ofCode->end(), [&](int number) {
            return areOfOneDevice(dives_[static_cast<size_t>(number)].facts, facts);
        });
        if (same != ofCode->end()) {
            take(*same);
        }
    }
    const QHash<QString, int>& summaries = facts.startcode.isEmpty() ? bySummary_ : codelessBySummary_;
    if (const auto same = summaries.constFind(summaryKey(facts)); same != summaries.cend()) {
        take(*same);
    }
    return found || place.isEmpty() ? found : findByFile(place);
}

void KnownDives::addSize(int number) {
    Known& dive = dives_[static_cast<size_t>(number)];
    if (!dive.place) {
        dive.place = filePlace(folder_, dive.facts.file);
    }
    if (const qint64 size = sizeOf(*dive.place); size > 0) {
        bySize_[size].unread.push_back(number);
    }
}

std::optional<int> KnownDives::findByFile(const QString& place) {
    if (!sizesRead_) {
        sizesRead_ = true;
        for (size_t i = 0; i < dives_.size(); ++i) {
            addSize(static_cast<int>(i));
        }
    }
    const auto bucket = bySize_.find(sizeOf(place));
    if (bucket == bySize_.end()) {
        return std::nullopt;
    }
    for (const int number : std::exchange(bucket->unread, {})) {
        addFirst(bucket->byDigest, digestOf(*dives_[static_cast<size_t>(number)].place), number);
    }
    const QByteArray wanted = digestOf(place);
    const auto same = bucket->byDigest.constFind(wanted);
    return wanted.isEmpty() || same == bucket->byDigest.cend() ? std::nullopt : std::optional(*same);
}

} // namespace benthor::logbook
