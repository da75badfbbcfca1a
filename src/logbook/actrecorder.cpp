#include "logbook/actrecorder.h"

#include "logbook/actfile.h"
#include "logbook/rowsdigest.h"
#include "platform/clock.h"

#include <map>

namespace benthor::logbook {

namespace {

using platform::Database;
using platform::StoredValue;
using platform::StoreError;
using platform::Transaction;

class KeepsNothing : public ActRecorder {
public:
    void diveGoes(const QString&, const platform::ProgramFolder&) override {}
    void diveChanges(const QString&) override {}
    void diveCame(const QString&) override {}
    void entryCame(QStringView, const QString&) override {}
};

/// What the store says while the file copies it is a fault of the copying.
template <class Work> auto copying(Work&& work) {
    try {
        return work();
    } catch (const ActError&) {
        throw;
    } catch (const StoreError& error) {
        throw ActError(error.text(), error.code());
    }
}

/// Writes one act, in one transaction or several.
class Keeper : public ActRecorder {
public:
    Keeper(ActFile& file, ActKind kind, qint64& act)
        : file_(file)
        , kind_(kind)
        , act_(act) {}

    void diveGoes(const QString& diveid, const platform::ProgramFolder& folder) override {
        copying([&] {
            const TableRows rows = readdiverows(file_.store(), diveid, RowsOf::WholeDive);
            if (!hasmain(rows)) {
                return;
            }
            ActItem item = itemGoing(file_.store(), diveid, rows);
            item.gone = momentText(platform::now());
            takeWaitingFile(item, folder);
            add(item);
        });
    }

    void diveChanges(const QString& diveid) override {
        copying([&] {
            if (!before_.contains(diveid)) {
                label_ = label_.isEmpty() ? diveid : label_;
                before_[diveid] = readdiverows(file_.store(), diveid, RowsOf::Details);
            }
        });
    }

    void diveCame(const QString& diveid) override {
        copying([&] {
            if (!digests_) {
                digests_ = std::make_unique<DiveDigests>(file_.store());
            }
            if (DiveDigests::Found found = digests_->of(diveid); found.hasMain) {
                ActItem item;
                item.here = true;
                item.diveid = diveid;
                item.key = std::move(found.key);
                item.digest = std::move(found.digest);
                add(item);
            }
        });
    }

    void entryCame(QStringView table, const QString& value) override {
        copying([&] {
            const QByteArray name = table.toUtf8();
            const TableRows rows = readtablerows(file_.store(), name, name, value);
            if (!rows.empty()) {
                ActItem item;
                item.kind = ActItem::Kind::Entry;
                item.here = true;
                item.name = table.toString();
                item.rows = encoderows({rows.back()});
                item.digest = digestof({rows.back()});
                add(item);
            }
        });
    }

    /// Behind the work, within its transaction.
    void finish() {
        copying([&] {
            for (const auto& [diveid, before] : before_) {
                const TableRows after = readdiverows(file_.store(), diveid, RowsOf::Details);
                if (!hasmain(before) || digestof(after) == digestof(before)) {
                    continue;
                }
                ActItem item;
                item.kind = ActItem::Kind::Edit;
                item.here = true;
                item.diveid = diveid;
                item.key = keyof(after);
                item.digest = digestof(after);
                item.rows = encoderows(before);
                add(item);
            }
        });
    }

private:
    void add(ActItem& item) {
        if (act_ == 0) {
            act_ = file_.add(kind_, label_);
        }
        item.act = act_;
        file_.addItem(item);
    }

    ActFile& file_;
    ActKind kind_;
    qint64& act_;
    QString label_; ///< the first dive that changes
    std::map<QString, TableRows> before_;
    std::unique_ptr<DiveDigests> digests_; ///< of dives that came
};

} // namespace

class SteppedAct::State {
public:
    State(Database& database, ActKind kind)
        : database_(database)
        , kind_(kind) {
        record_.span.before = database_.stamp();
    }

    void step(const std::function<void(ActRecorder&)>& work) {
        if (record_.fault.isEmpty()) {
            const qint64 before = act_;
            try {
                keep(work);
                record_.kept = act_ != 0;
                return;
            } catch (const ActError& error) {
                act_ = before;
                giveUp(error);
            } catch (...) {
                act_ = before;
                throw;
            }
        }
        KeepsNothing nothing;
        Transaction transaction(database_);
        work(nothing);
        transaction.commit();
    }

    ActRecord record() const {
        ActRecord record = record_;
        record.span.after = database_.stamp();
        return record;
    }

private:
    void keep(const std::function<void(ActRecorder&)>& work) {
        if (!file_) {
            file_ = std::make_unique<ActFile>(database_);
        }
        std::unique_ptr<Transaction> transaction;
        copying([&] { transaction = std::make_unique<Transaction>(database_); });
        Keeper keeper(*file_, kind_, act_);
        work(keeper);
        keeper.finish();
        copying([&] { transaction->commit(); });
    }

    /// Nothing of the step has happened. From here on there is no such file.
    void giveUp(const ActError& error) {
        file_.reset();
        record_.fault = error.text();
        if (error.damaged()) {
            if (const QString kept = setActsAside(database_); !kept.isEmpty()) {
                record_.fault += QStringLiteral(" It is kept as %1, and a new one is begun.").arg(kept);
            }
        }
    }

    Database& database_;
    ActKind kind_;
    std::unique_ptr<ActFile> file_;
    qint64 act_ = 0;
    ActRecord record_;
};

SteppedAct::SteppedAct(Database& database, ActKind kind)
    : state_(std::make_unique<State>(database, kind)) {}

SteppedAct::~SteppedAct() = default;

void SteppedAct::step(const std::function<void(ActRecorder& act)>& work) {
    state_->step(work);
}

ActRecord SteppedAct::record() const {
    return state_->record();
}

ActRecord recordact(Database& database, ActKind kind, const std::function<void(ActRecorder& act)>& work) {
    SteppedAct act(database, kind);
    act.step(work);
    return act.record();
}

} // namespace benthor::logbook
