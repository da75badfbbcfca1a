// Deletes, imports, saves of details, undos, redos and the trash at random, beside a plain model of what a
// logbook is then. A seed repeats a walk; BENTHOR_WALK_SEED and BENTHOR_WALK_ROUNDS choose others.

#include "divefiles/importer.h"
#include "platform/clock.h"
#include "tests/divefiles/recordingscreen.h"
#include "tests/logbook/actmodel.h"
#include "tests/logbook/actworld.h"

#include <QRandomGenerator>

using namespace benthor;
using namespace benthor::logbook;
using tests::ActModel;
using tests::ActWorld;
using tests::ModelDive;
using State = TurnedAct::State;

namespace {

constexpr quint32 kSeed = 20260301;
constexpr int kRounds = 1000;
constexpr int kSteps = 14;

int fromEnvironment(const char* name, int otherwise) {
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : otherwise;
}

/// The program and the model, side by side.
class Walk {
public:
    explicit Walk(quint32 seed)
        : random_(seed) {}

    /// The first difference; empty where there is none.
    QString run() {
        for (int i = 0; i < 3; ++i) {
            wait(QStringLiteral("first%1.txt").arg(i));
        }
        import();
        fault_ = check();
        backUp();
        for (int step = 0; step < kSteps; ++step) {
            const platform::FixedClock clock(model_.now);
            act();
            if (QString fault = fault_.isEmpty() ? check() : fault_; !fault.isEmpty()) {
                return said_.join(QStringLiteral("; ")) + QStringLiteral(": ") + fault;
            }
        }
        return {};
    }

private:
    quint32 below(qsizetype most) {
        return random_.bounded(static_cast<quint32>(std::max<qsizetype>(1, most)));
    }

    void act() {
        struct Choice {
            int weight;
            void (Walk::*act)();
        };
        static constexpr std::array<Choice, 11> choices{{{4, &Walk::deleteSome},
                                                         {2, &Walk::import},
                                                         {2, &Walk::waitForADive},
                                                         {5, &Walk::save},
                                                         {7, &Walk::undo},
                                                         {5, &Walk::redo},
                                                         {2, &Walk::putBack},
                                                         {1, &Walk::forget},
                                                         {2, &Walk::daysPass},
                                                         {1, &Walk::backUp},
                                                         {1, &Walk::restore}}};
        int at = static_cast<int>(below(32));
        for (const Choice& choice : choices) {
            at -= choice.weight;
            if (at < 0) {
                (this->*choice.act)();
                return;
            }
        }
    }

    void say(const QString& what) { said_ += what; }

    void wait(const QString& name) {
        const int serial = ++serials_;
        world_.putWaiting(name, tests::goodDive(QByteArray::number(800000000 + serial)));
        model_.waiting[name] = serial;
    }

    void waitForADive() {
        say(QStringLiteral("wait"));
        const QStringList numbers = model_.dives.keys();
        const bool known = !numbers.isEmpty() && below(3) > 0;
        const QString name = known ? model_.dives.value(numbers.at(below(numbers.size()))).name
                                   : QStringLiteral("more%1.txt").arg(serials_);
        if (!model_.waiting.contains(name)) {
            wait(name);
        }
    }

    void import() {
        say(QStringLiteral("import"));
        if (model_.waiting.isEmpty()) {
            wait(QStringLiteral("more%1.txt").arg(serials_));
        }
        tidyacts(process().database, world_.folder);
        divefiles::ImportState state;
        tests::RecordingScreen screen;
        state.keepimporting = true;
        divefiles::importdives(world_.folder, state, screen);
        model_.import();
        if (state.imported.size() != model_.lastImported) {
            fault_ = QStringLiteral("%1 dives were imported").arg(state.imported.size()) +
                     screen.messages.join(u' ');
        }
    }

    void deleteSome() {
        QStringList chosen;
        if (below(2) == 0 && !model_.dives.isEmpty()) {
            chosen += model_.dives.lastKey(); // the next import has its number
        }
        for (const QString& number : model_.dives.keys()) {
            if (below(3) == 0 && !chosen.contains(number)) {
                chosen += number;
            }
        }
        say(QStringLiteral("delete ") + chosen.join(u','));
        deletedives(process().database, world_.folder, chosen);
        model_.remove(chosen);
    }

    void save() {
        const QStringList numbers = model_.dives.keys();
        if (numbers.isEmpty()) {
            return;
        }
        const QString number = numbers.at(below(numbers.size()));
        static const QStringList words{QString(), QStringLiteral("Reef"), QStringLiteral("Wreck"),
                                       QStringLiteral("Cave")};
        static const QStringList names{QStringLiteral("Anna"), QStringLiteral("Bert"),
                                       QStringLiteral("Cleo")};
        DiverAdds diver = loaddetails(process().database, number, u"metre").diver;
        if (below(4) > 0) {
            diver.site = words.at(below(words.size()));
            diver.divenote = QStringLiteral("note %1").arg(below(3));
            diver.buddies.clear();
            for (quint32 i = below(3); i > 0; --i) {
                diver.buddies += names.at(below(names.size()));
            }
        }
        say(QStringLiteral("save ") + number);
        savedetails(process().database, store::identifydive(process().database, number), diver);
        model_.save(number, diver.site, diver.divenote, diver.buddies);
    }

    void turn(bool isUndo) {
        const ActsInHand inHand = actsinhand(process().database);
        const ActInHand& meant = isUndo ? inHand.undo : inHand.redo;
        const QString words = model_.words(isUndo);
        say((isUndo ? QStringLiteral("undo ") : QStringLiteral("redo ")) + meant.what);
        if (meant.what != words) {
            fault_ = QStringLiteral("the menu says \"%1\" and not \"%2\"").arg(meant.what, words);
            return;
        }
        const TurnedAct turned = isUndo ? undoact(process().database, world_.folder, meant.id)
                                        : redoact(process().database, world_.folder, meant.id);
        const ActModel::Turned expected = model_.turn(isUndo);
        if (static_cast<int>(turned.state) != static_cast<int>(expected)) {
            fault_ = QStringLiteral("it ended with %1 and not with %2: ")
                         .arg(static_cast<int>(turned.state))
                         .arg(static_cast<int>(expected)) +
                     turned.reason;
        }
    }
    void undo() { turn(true); }
    void redo() { turn(false); }

    std::vector<TrashedDive> trashed() { return trasheddives(process().database); }

    void putBack() {
        const auto lying = trashed();
        if (lying.empty()) {
            return;
        }
        const quint32 place = below(static_cast<qsizetype>(lying.size()));
        say(QStringLiteral("put back ") + lying[place].diveid);
        putback(process().database, world_.folder, {lying[place].id});
        model_.putBack(static_cast<int>(place));
    }

    void forget() {
        const auto lying = trashed();
        if (lying.empty()) {
            return;
        }
        const quint32 place = below(static_cast<qsizetype>(lying.size()));
        say(QStringLiteral("for good ") + lying[place].diveid);
        deleteforgood(process().database, {lying[place].id});
        model_.forget(static_cast<int>(place));
    }

    /// A start: the store is closed and opened, and what is too old goes.
    void daysPass() {
        model_.now = model_.now.addDays(5 + below(30));
        say(QStringLiteral("days pass"));
        const platform::FixedClock clock(model_.now);
        world_.reopen();
        tidyacts(process().database, world_.folder);
        model_.tidy();
    }

    void copyStore(const QString& from, const QString& to) {
        process().database.close();
        if (!platform::copyFile(from, to)) {
            fault_ = QStringLiteral("the store cannot be copied");
        }
        world_.openStore();
    }

    void backUp() {
        say(QStringLiteral("back up"));
        copyStore(world_.storePath(), world_.folder.path(u"backup.mdb"));
        model_.backUp();
    }

    void restore() {
        say(QStringLiteral("restore"));
        copyStore(world_.folder.path(u"backup.mdb"), world_.storePath());
        model_.restore();
    }

    QString check() {
        QStringList found;
        for (const TrashedDive& dive : trashed()) {
            found += dive.diveid + u' ' + dive.name;
        }
        if (const QStringList wanted = model_.trashNames(); found != wanted) {
            return QStringLiteral("in the trash: %1; wanted: %2").arg(found.join(u','), wanted.join(u','));
        }
        for (auto file = model_.waiting.cbegin(); file != model_.waiting.cend(); ++file) {
            if (world_.bytesOf(QStringLiteral("new"), file.key()) !=
                tests::goodDive(QByteArray::number(800000000 + *file))) {
                return QStringLiteral("the file %1 waits no more").arg(file.key());
            }
        }
        if (world_.names(QStringLiteral("new")).size() != model_.waiting.size()) {
            return QStringLiteral("files too many wait: ") + world_.names(QStringLiteral("new")).join(u',');
        }
        return model_.difference();
    }

    QRandomGenerator random_;
    ActWorld world_;
    ActModel model_;
    int serials_ = 0;
    QStringList said_;
    QString fault_;
};

} // namespace

class TestActWalk : public QObject {
    Q_OBJECT

private slots:
    void nothingIsLostAndNothingDoubled();
};

void TestActWalk::nothingIsLostAndNothingDoubled() {
    const auto seed = static_cast<quint32>(fromEnvironment("BENTHOR_WALK_SEED", kSeed));
    const int rounds = fromEnvironment("BENTHOR_WALK_ROUNDS", kRounds);
    for (int round = 0; round < rounds; ++round) {
        const QString fault = Walk(seed + static_cast<quint32>(round)).run();
        QVERIFY2(
            fault.isEmpty(),
            qPrintable(QStringLiteral("seed %1: %2").arg(seed + static_cast<quint32>(round)).arg(fault)));
    }
    // What the walk is about was met often enough to say something.
    const QMap<QString, int>& met = ActModel::met();
    for (const char* what :
         {"undone delete", "redone delete", "undone details", "redone details", "new number", "does not fit",
          "put back", "restored", "forgotten", "too old", "file came back"}) {
        QVERIFY2(rounds < kRounds || met.value(QLatin1String(what)) >= 20,
                 qPrintable(
                     QStringLiteral("%1: %2").arg(QLatin1String(what)).arg(met.value(QLatin1String(what)))));
    }
}

QTEST_GUILESS_MAIN(TestActWalk)
#include "test_actwalk.moc"
