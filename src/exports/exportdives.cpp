#include "exports/exportdives.h"

#include "exports/divesahead.h"
#include "exports/logbookjson.h"
#include "exports/losses.h"
#include "exports/samplescsv.h"
#include "exports/uddf.h"
#include "exports/zxulogbook.h"
#include "platform/clock.h"

#include <array>

namespace benthor::exports {

namespace {

struct Named {
    const char* word;
    DiveFormat format;
};
constexpr std::array<Named, 4> kFormats{{{"uddf", DiveFormat::Uddf},
                                         {"json", DiveFormat::Json},
                                         {"csv", DiveFormat::Csv},
                                         {"zxu", DiveFormat::Zxu}}};

/// The way of an export over its dives, whatever the format.
class Export {
public:
    Export(DiveReader& dives, const QStringList& ids, const ExportProgress& progress, QStringList* notThere)
        : dives_(dives)
        , ids_(ids)
        , progress_(progress)
        , notThere_(notThere) {
        ids_.removeDuplicates();
    }

    /// `prepare`: the writer's own half of the work for a dive, on any thread, and what is lost of it.
    template <class Writer, class Prepare> LossReport to(Writer&& writer, const Prepare& prepare) {
        LossReport losses;
        writer.begin();
        DivesAhead<std::invoke_result_t<Prepare, WholeDive&&>> dives(dives_, ids_, prepare);
        const int all = static_cast<int>(ids_.size());
        for (int i = 0; i < all; ++i) {
            goOn(i, all);
            const auto dive = dives.next();
            if (!dive) {
                if (notThere_ != nullptr) {
                    *notThere_ += ids_[i];
                }
                continue;
            }
            const auto& [prepared, lost] = dive->prepared;
            writer.add(prepared);
            ++losses.dives;
            for (const QString& kind : lost) {
                losses.lose(kind);
            }
            if (!dive->withoutSamples.isEmpty()) {
                losses.addWithoutSamples(dive->id, dive->withoutSamples);
            }
        }
        goOn(all, all);
        writer.end();
        return losses;
    }

private:
    void goOn(int done, int of) const {
        if (progress_ && !progress_(done, of)) {
            throw ExportStopped();
        }
    }

    DiveReader& dives_;
    QStringList ids_;
    const ExportProgress& progress_;
    QStringList* notThere_;
};

} // namespace

std::optional<DiveFormat> formatNamed(QStringView word) {
    for (const Named& one : kFormats) {
        if (word.compare(QLatin1String(one.word), Qt::CaseInsensitive) == 0) {
            return one.format;
        }
    }
    return std::nullopt;
}

LossReport exportdives(DiveFormat format, QIODevice& device, DiveReader& dives, const QStringList& ids,
                       const ExportProgress& progress, QStringList* notThere) {
    Export run(dives, ids, progress, notThere);
    switch (format) {
    case DiveFormat::Json:
        return run.to(LogbookJson(device), [](const WholeDive& dive) {
            return std::pair(LogbookJson::prepare(dive), LostKinds());
        });
    case DiveFormat::Csv:
        return run.to(SamplesCsv(device, SampleIds::First), [](const WholeDive& dive) {
            return std::pair(SamplesCsv::prepare(dive, SampleIds::First), csvLosses(dive));
        });
    case DiveFormat::Zxu:
        return run.to(ZxuLogbook(device, platform::now()), [](const WholeDive& dive) {
            return std::pair(ZxuLogbook::prepare(dive), zxuLosses(dive));
        });
    case DiveFormat::Uddf:
        break;
    }
    UddfWriter uddf(device, QStringLiteral(BENTHOR_VERSION), platform::now());
    run.to(uddf, [](WholeDive&& dive) { // its losses it tells by itself
        return std::pair(UddfWriter::prepare(std::move(dive)), LostKinds());
    });
    return uddf.report();
}

} // namespace benthor::exports
