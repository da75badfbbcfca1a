#pragma once

#include "exports/wholedive.h"
#include "exports/workahead.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace benthor::exports {

/// A dive whose turn has come, with what a format made of it.
template <class Prepared> struct ReadyDive {
    QString id;             ///< as the store has it
    QString withoutSamples; ///< why there are none; empty where there are
    Prepared prepared;
};

/// Dives in the order of their identifiers. The store is read on the caller's thread; files are read and
/// decoded, and a format's share of the work is done, on all cores.
template <class Prepared> class DivesAhead {
public:
    /// What a format makes of a dive by itself, on any thread.
    using Prepare = std::function<Prepared(WholeDive&&)>;
    using Result = std::optional<ReadyDive<Prepared>>;

    /// `reader` must outlive it.
    DivesAhead(DiveReader& reader, QStringList ids, Prepare prepare)
        : reader_(reader)
        , ids_(std::move(ids))
        , prepare_(std::move(prepare))
        , work_(ids_.size(), [this](qsizetype index) { return pieceOf(ids_[index]); }) {}

    /// The dive of the next identifier; nothing where no dive bears it. To be called once for each.
    /// StoreError, and what `prepare` throws.
    Result next() { return work_.next(); }

private:
    typename WorkAhead<Result>::Piece pieceOf(const QString& id) {
        std::optional<WholeDive> rows = reader_.readRows(id);
        if (!rows) {
            return [] { return Result(); };
        }
        return [this, dive = std::make_shared<WholeDive>(std::move(*rows))]() -> Result {
            DiveReader::readProfile(*dive);
            QString ofDive = dive->figures.id;
            QString why = dive->withoutSamples;
            return ReadyDive<Prepared>{std::move(ofDive), std::move(why), prepare_(std::move(*dive))};
        };
    }

    DiveReader& reader_;
    QStringList ids_;
    Prepare prepare_;
    WorkAhead<Result> work_; ///< the last member: it uses the others on other threads
};

} // namespace benthor::exports
