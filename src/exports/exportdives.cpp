#include "exports/exportdives.h"

#include "exports/divesahead.h"
#include "exports/logbookjson.h"
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
            writer.add(dive->prepared);
            ++losses.dives;
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
        return run.to(LogbookJson(device), LogbookJson::prepare);
    case DiveFormat::Csv:
        return run.to(SamplesCsv(device, SampleIds::First),
                      [](const WholeDive& dive) { return SamplesCsv::prepare(dive, SampleIds::First); });
    case DiveFormat::Zxu:
        return run.to(ZxuLogbook(device, platform::now()), ZxuLogbook::prepare);
    case DiveFormat::Uddf:
        break;
    }
    UddfWriter uddf(device, QStringLiteral(BENTHOR_VERSION), platform::now());
    run.to(uddf, [](WholeDive&& dive) { return std::move(dive); });
    return uddf.report();
}

} // namespace benthor::exports
