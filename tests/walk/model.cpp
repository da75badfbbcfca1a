#include "tests/walk/model.h"

#include "platform/files.h"
#include "platform/screen/screen.h"
#include "session/process.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>

namespace benthor::tests {

namespace {

constexpr qsizetype kLongName = 30; ///< from here on the store's name of the file is not that of its copy

/// Whether `old` has a file of that dive; one that the link wrote has a line end more.
bool isKept(const Snapshot& now, const QByteArray& text) {
    return std::any_of(now.kept.begin(), now.kept.end(),
                       [&text](const QByteArray& bytes) { return bytes.startsWith(text.trimmed()); });
}

} // namespace

Model::Model(World& world)
    : world_(world)
    , setup_(world.bench.device().memory.setup) {
    QString fault;
    last_ = readSnapshot(world.folder.root(), fault);
    for (const StoredDive& dive : std::as_const(last_.dives)) {
        imported_.insert(dive.key());
        seen_[dive.key()] += dive;
    }
}

void Model::begin() {
    expected = {};
    world_.dialogs.clear();
}

void Model::typed(const QString& field, const QString& text) {
    details_.edited.insert(field, text);
}

void Model::setBuddies(const QStringList& buddies) {
    details_.buddies = buddies;
}

bool Model::opens(const QString& diveid) const {
    const auto dive = last_.dives.constFind(diveid);
    if (dive == last_.dives.constEnd()) {
        return false;
    }
    const MadeDive* made = world_.made(dive->key()); // the dives of the Jet files are sound
    return made == nullptr || made->opens;
}

void Model::beginSecondPart() {
    faultBefore_ = check();
    begin();
    world_.dialogs.forgetAnswers();
}

QString Model::check() {
    return faultBefore_.isEmpty() ? look() : faultBefore_;
}

QString Model::look() {
    QString fault;
    const Snapshot now = readSnapshot(world_.folder.root(), fault);
    if (!fault.isEmpty()) {
        return fault;
    }
    noteTyped();
    const auto dives = predicted(now, fault);
    if (fault.isEmpty()) {
        fault = difference(dives, now.dives);
    }
    const bool merged = expected.merge && expected.merge->kind == MergeEnd::Kind::Merged;
    const auto before = expected.restored ? expected.restored->byId()
                        : merged          ? expected.merge->merged.after.dives
                                          : last_.dives;
    QMap<QString, int> together;
    for (auto dive = now.dives.begin(); dive != now.dives.end(); ++dive) {
        together_[dive->key()] = std::max(together_.value(dive->key()), ++together[dive->key()]);
        if (!wasSeen(*dive)) {
            seen_[dive->key()] += *dive;
        }
        if (!expected.turned && before.value(dive.key()).key() != dive->key()) {
            imported_.insert(dive->key());
        }
    }
    const std::initializer_list<std::function<QString()>> looks{
        [this] { return world_.others.whatChanged(); },
        [&] { return checkMerge(now); },
        [&] { return checkTurn(now); },
        [this] { return checkMergeScreen(); },
        [this] { return checkRestored(); },
        [&] { return checkFiles(now); },
        [&] { return checkGasTable(now); },
        [&] { return checkDanFile(now); },
        [&] { return checkOpenFile(now); },
        [&] { return checkDetails(now); },
        [&] { return checkViewer(now); },
        [&] { return checkList(now); },
        [this] { return checkSetup(); }};
    for (const auto& look : looks) {
        fault = fault.isEmpty() ? look() : fault;
    }
    count(now);
    last_ = now;
    return fault;
}

void Model::count(const Snapshot& now) {
    for (auto dive = now.dives.begin(); dive != now.dives.end(); ++dive) {
        const StoredDive before = last_.dives.value(dive.key());
        if (expected.turned) {
            met_[QStringLiteral("taken back")] += before == *dive ? 0 : 1;
        } else if (expected.merge || expected.restored) {
            continue; // counted below
        } else if (before.key() != dive->key()) {
            ++met_[QStringLiteral("imported")];
            met_[QStringLiteral("downloaded")] += world_.deviceDives().contains(dive->key()) ? 1 : 0;
            met_[QStringLiteral("number used again")] += freed_.contains(dive.key()) ? 1 : 0;
        } else if (before.diver != dive->diver || before.buddies != dive->buddies) {
            ++met_[QStringLiteral("details stored")];
        }
    }
    for (const QString& diveid : expected.deleted) {
        freed_.insert(diveid);
    }
    met_[QStringLiteral("deleted")] += static_cast<int>(expected.deleted.size());
    met_[QStringLiteral("dive opened")] += expected.viewer && !expected.viewer->isEmpty() ? 1 : 0;
    met_[QStringLiteral("gases saved")] += expected.gasTable.isEmpty() ? 0 : 1;
    met_[QStringLiteral("another store shown")] += process().storepath.isEmpty() ? 0 : 1;
    met_[QStringLiteral("set aside")] += now.setAside.size() > last_.setAside.size() ? 1 : 0;
    met_[QStringLiteral("details with the list")] += detailsOpen() && World::list() != nullptr ? 1 : 0;
    countMerge();
}

/// What the store must hold: what it held, what the details that went took along, without what was deleted,
/// and with a dive for each file that was taken in.
QMap<QString, StoredDive> Model::predicted(const Snapshot& now, QString& fault) const {
    QMap<QString, StoredDive> dives = last_.dives;
    takeDetails(dives);
    if (expected.restored) {
        dives = expected.restored->byId();
    }
    if (expected.merge && expected.merge->kind == MergeEnd::Kind::Merged) {
        dives = expected.merge->merged.after.dives;
    }
    for (const QString& diveid : expected.deleted) {
        dives.remove(diveid);
    }
    if (expected.turned) {
        takeTurn(dives, now, fault);
    }
    std::set<QString> came;
    for (auto dive = now.dives.begin(); dive != now.dives.end(); ++dive) {
        const auto before = dives.constFind(dive.key());
        if (before != dives.constEnd() && before->key() == dive->key()) {
            continue;
        }
        if (dive.key() != nextIdentifier(dives)) {
            fault = QStringLiteral("the new dive is %1, and %2 is the next")
                        .arg(dive.key(), nextIdentifier(dives));
        }
        if (const QString wrong = checkNewDive(dive.key(), *dive, now); !wrong.isEmpty()) {
            fault = wrong;
        }
        came.insert(dive->key());
        dives.insert(dive.key(), *dive);
    }
    for (auto file = last_.waiting.begin();
         file != last_.waiting.end() && expected.deleted.isEmpty() && !expected.turned; ++file) {
        const bool stays = now.waiting.value(file.key()) == *file;
        const bool taken = std::any_of(came.begin(), came.end(), [&](const QString& key) {
            return world_.made(key) != nullptr && world_.made(key)->text.trimmed() == file->trimmed();
        });
        // One of the same name that arrives takes its place; it is kept then.
        const bool replaced = expected.arrived.contains(file.key()) && isKept(now, *file);
        const bool movedAside = now.setAside.values().contains(*file) && isKept(now, *file);
        if (!stays && !taken && !replaced && !movedAside) {
            fault = QStringLiteral("the file %1 left the folder new, and no dive came of it").arg(file.key());
        }
    }
    return dives;
}

/// What stands on the details may be stored within a step, and be what comes back later: before their dive is
/// deleted, say.
void Model::noteTyped() {
    StoredDive dive = last_.dives.value(details_.diveid);
    if (dive.key() != details_.key || details_.diveid.isEmpty()) {
        return;
    }
    for (auto field = details_.edited.begin(); field != details_.edited.end(); ++field) {
        dive.diver.insert(field.key(), *field);
    }
    dive.buddies = details_.buddies;
    if (!wasSeen(dive)) {
        seen_[dive.key()] += dive;
    }
}

bool Model::wasSeen(const StoredDive& dive) const {
    return seen_.value(dive.key()).contains(dive);
}

/// What was taken back is what it was: a dive that comes, or changes, is one that was there before, to the
/// last letter, and no dive stands there twice that did not.
void Model::takeTurn(QMap<QString, StoredDive>& dives, const Snapshot& now, QString& fault) const {
    QMap<QString, int> before, behind;
    for (const StoredDive& dive : std::as_const(dives)) {
        ++before[dive.key()];
    }
    for (auto dive = now.dives.begin(); dive != now.dives.end(); ++dive) {
        if (!wasSeen(*dive)) {
            fault = QStringLiteral("%1 is what no dive ever was").arg(dive.key());
        }
        const int most = std::max({1, before.value(dive->key()), together_.value(dive->key())});
        if (++behind[dive->key()] > most) {
            // A file that was imported once more makes a second dive, which may be deleted and come back; so
            // does one that came from another logbook while this one lay in the trash.
            const auto made = seen_.value(dive->key());
            const bool isCopy = std::any_of(made.begin(), made.end(), [&dive](const StoredDive& one) {
                return one.dbtxtname != dive->dbtxtname || dive->dbtxtname.isEmpty();
            });
            fault = isCopy ? fault : QStringLiteral("%1 stands there twice").arg(dive.key());
        }
    }
    dives = now.dives;
}

void Model::takeDetails(QMap<QString, StoredDive>& dives) const {
    const bool gone = details_.screen.isNull() || details_.screen->isUnloaded();
    const auto dive = dives.find(details_.diveid);
    if (details_.diveid.isEmpty() || dive == dives.end() || dive->key() != details_.key ||
        (!gone && !expected.detailsSaved)) {
        return;
    }
    for (auto field = details_.edited.begin(); field != details_.edited.end(); ++field) {
        dive->diver.insert(field.key(), *field);
    }
    dive->buddies = details_.buddies;
}

QString Model::checkNewDive(const QString& diveid, const StoredDive& dive, const Snapshot& now) const {
    const MadeDive* made = world_.made(dive.key());
    if (made == nullptr) {
        return QStringLiteral("%1 is %2, which no file held").arg(diveid, dive.key());
    }
    const QString name = dive.diver.value(QStringLiteral("Location"));
    const bool waited =
        last_.waiting.value(name).trimmed() == made->text.trimmed() || expected.arrived.contains(name) ||
        (world_.deviceDives().contains(dive.key()) && name.startsWith(QLatin1String("MyLatest")));
    StoredDive fresh{.startcode = made->startcode,
                     .dbtxtname = dive.dbtxtname,
                     .diver = {},
                     .device = dive.device,
                     .buddies = {},
                     .gases = made->gases,
                     .tissues = made->tissues};
    for (const QString& field : diverFields()) {
        fresh.diver.insert(field, QString());
    }
    fresh.diver.insert(QStringLiteral("Location"), name);
    fresh.diver.insert(QStringLiteral("UserName"), made->serial);
    fresh.diver.insert(QStringLiteral("Suit"), made->serial);
    if (!waited) {
        return QStringLiteral("%1 came of a file \"%2\" that did not wait").arg(diveid, name);
    }
    const bool unreadable =
        name.size() < kLongName && !now.forviewer.value(dive.dbtxtname).startsWith(made->text);
    return unreadable ? QStringLiteral("%1: %2 in dbtxt is not its file").arg(diveid, dive.dbtxtname)
                      : difference({{diveid, fresh}}, {{diveid, dive}});
}

/// Nothing is lost: the file of every dive that was ever imported stands in `old`, as does all that stood
/// there and in `dbtxt` before; and where the dive screen reads a file of a dive, it is the dive's own.
QString Model::checkFiles(const Snapshot& now) const {
    for (const QString& key : imported_) {
        if (!isKept(now, world_.made(key)->text)) {
            return QStringLiteral("the file of the dive %1 is not in old").arg(key);
        }
    }
    const QList<QByteArray> kept = now.kept.values();
    for (auto file = last_.kept.begin(); file != last_.kept.end(); ++file) {
        if (!kept.contains(*file)) {
            return QStringLiteral("what stood in old as %1 is lost").arg(file.key());
        }
    }
    for (auto file = last_.forviewer.begin(); file != last_.forviewer.end(); ++file) {
        if (now.forviewer.value(file.key()) != *file) {
            return QStringLiteral("%1 in dbtxt is not what it was").arg(file.key());
        }
    }
    for (auto dive = now.dives.begin(); dive != now.dives.end(); ++dive) {
        const MadeDive* made = world_.made(dive->key());
        if (now.forviewer.contains(dive->dbtxtname) &&
            (made == nullptr || !now.forviewer.value(dive->dbtxtname).startsWith(made->text))) {
            return QStringLiteral("%1 shows the profile of another dive, %2")
                .arg(dive.key(), dive->dbtxtname);
        }
    }
    return {};
}

/// The gas rows of the dive shown, under one line of headings; with feet the helium stands in nitrogen's
/// place.
QString Model::checkGasTable(const Snapshot& now) const {
    if (expected.gasTable.isEmpty()) {
        return {};
    }
    const QString& chosen = process().unitoverride;
    const bool feet = (chosen.isEmpty() ? now.unit : chosen) == QLatin1String("Feet");
    QStringList wanted;
    for (const QString& row : now.dives.value(viewer_.diveid).gases) {
        const QStringList fields = row.split(u',');
        wanted +=
            QStringList{viewer_.diveid, fields[0], fields[feet ? 2 : 1], fields[3], fields[4], QString()}
                .join(u',');
    }
    const QString text = QString::fromUtf8(platform::readFile(expected.gasTable).value_or(""))
                             .remove(QLatin1Char('\r'))
                             .trimmed();
    const QString rows = text.section(QLatin1Char('\n'), 1);
    return text.startsWith(QLatin1String("Dive ID,Record ID,")) && rows == wanted.join(QLatin1Char('\n'))
               ? QString()
               : QStringLiteral("the gases of %1 were saved as \"%2\"").arg(viewer_.diveid, rows);
}

QString Model::checkDanFile(const Snapshot& now) const {
    if (expected.danFile.isEmpty()) {
        return {};
    }
    const QStringList lines = QString::fromUtf8(platform::readFile(expected.danFile).value_or(""))
                                  .split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    const StoredDive dive = now.dives.value(viewer_.diveid);
    const QString interval = dive.device.value(QStringLiteral("interval"));
    const bool hasGases = !dive.gases.isEmpty();
    const bool good = lines.size() >= 5 &&
                      lines[3].startsWith(QStringLiteral("ZDH|1|%1|I|Q%2S|").arg(viewer_.diveid, interval)) &&
                      lines[4] == QLatin1String("ZDP{") && (lines.size() == 5 || !hasGases);
    return good ? QString()
                : QStringLiteral("the file for DAN of %1 is\n%2").arg(viewer_.diveid, lines.join(u'\n'));
}

/// The device's setup changes by a send alone, and then to what stands in the cells.
QString Model::checkSetup() {
    const QByteArray now = world_.bench.device().memory.setup;
    if (now == setup_) {
        return {};
    }
    setup_ = now;
    ++met_[QStringLiteral("setup sent")];
    if (!expected.setupSent) {
        return QStringLiteral("the device's setup changed though nothing was sent: ") +
               QString::fromLatin1(now);
    }
    for (int row = 0; row < 10; ++row) {
        const auto cell = [row](const char* name) {
            return World::textOf("GasBlend",
                                 qPrintable(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(row)));
        };
        const int helium = now.mid(16 * row + 5, 3).toInt();
        const int oxygen = 100 - helium - now.mid(16 * row + 1, 3).toInt();
        // A cell that was typed in may say "00".
        if (oxygen != cell("Text1").toInt() || helium != cell("Text2").toInt()) {
            return QStringLiteral("gas %1 shows %2/%3 and went out as %4/%5")
                .arg(row)
                .arg(cell("Text1"), cell("Text2"))
                .arg(oxygen)
                .arg(helium);
        }
    }
    return {};
}

} // namespace benthor::tests
