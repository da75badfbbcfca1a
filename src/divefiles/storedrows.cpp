#include "divefiles/storedrows.h"

#include "divefiles/filenames.h"
#include "session/process.h"
#include "store/access.h"
#include "store/identifiers.h"

#include <algorithm>

namespace benthor::divefiles {

namespace {

constexpr QChar kBetweenFields(0x1f);
constexpr QChar kNull(0x1e);

QString latin1(const QByteArray& bytes) {
    return QString::fromLatin1(bytes);
}

template <size_t Count> std::array<QString, Count> latin1(const std::array<QByteArray, Count>& fields) {
    std::array<QString, Count> texts;
    std::transform(fields.begin(), fields.end(), texts.begin(),
                   [](const QByteArray& field) { return latin1(field); });
    return texts;
}

QStringList readrows(platform::Database& store, const char* select, const QString& diveid) {
    QStringList lines;
    platform::Recordset rows = store.openRecordset(platform::sqlWith(select, diveid, "'"));
    for (; !rows.eof(); rows.moveNext()) {
        QStringList fields;
        for (int i = 0; i < rows.fieldCount(); ++i) {
            const platform::Value value = rows.value(i);
            fields += value.isNull() ? QString(kNull) : value.text();
        }
        lines += fields.join(kBetweenFields);
    }
    return lines;
}

DiveRows readdive(platform::Database& store, const QString& diveid) {
    return {diveid, readrows(store, "SELECT * FROM main WHERE DiveID = '", diveid),
            readrows(store, "SELECT * FROM gas WHERE diveid = '", diveid),
            readrows(store, "SELECT * FROM tissue WHERE diveid = '", diveid)};
}

/// Writes what the scan found, one action after the other.
class RowWriter {
public:
    RowWriter(const QString& stamp, const QString& name)
        : stamp_(stamp)
        , name_(name) {}

    /// What was written, as the store gives it back.
    WrittenDives take() {
        qsizetype gas = 0;
        qsizetype tissue = 0;
        for (DiveRows& dive : written_.dives) {
            dive = readdive(process().database, dive.diveid);
            gas += dive.gas.size();
            tissue += dive.tissue.size();
            if (dive.main.isEmpty()) {
                gas = tissue = -1;
                break;
            }
        }
        if (gas < gasrows_ || tissue < tissuerows_) {
            throw platform::StoreError(
                QStringLiteral("The store does not give back what was written into it."));
        }
        return std::move(written_);
    }

    void operator()(const NewDive& dive) {
        store::newdive(latin1(dive.version));
        store::putfilenames(dbtxtname(stamp_, name_), name_);
        written_.dives.push_back({process().currentdiveid, {}, {}, {}});
    }

    void operator()(const PutField& put) {
        const QString value = latin1(put.value);
        switch (put.field) {
        case HeaderField::Interval:
            store::putinterval(value);
            break;
        case HeaderField::Serial:
            store::putusername(value);
            written_.refusedSerials += store::putsuit(value) ? 0 : 1;
            break;
        case HeaderField::Start:
            store::putstart(value);
            break;
        case HeaderField::Status:
            store::putstatus(value);
            break;
        case HeaderField::Descend:
            store::putdescend(value);
            break;
        case HeaderField::DAtmos:
            store::putdatmos(value);
            break;
        case HeaderField::DStack:
            store::putdstack(value);
            break;
        case HeaderField::DUsage:
            store::putdusage(value);
            break;
        case HeaderField::MaxD:
            store::putmaxdepth(value);
            break;
        case HeaderField::Otu:
            store::putotu(value);
            break;
        case HeaderField::HpCylinder:
            store::puthpcylinder(value);
            break;
        }
    }

    void operator()(const PutFinish& finish) {
        store::putfinish(latin1(finish.finishcode));
        store::putduration(latin1(finish.startcode), latin1(finish.finishcode));
    }

    void operator()(const AddGas& gas) {
        store::addgasrow(latin1(gas.fields));
        ++gasrows_;
    }
    void operator()(const AddTissue& tissue) {
        store::addtissuerow(latin1(tissue.fields));
        ++tissuerows_;
    }

private:
    const QString& stamp_;
    const QString& name_;
    WrittenDives written_;
    qsizetype gasrows_ = 0;
    qsizetype tissuerows_ = 0;
};

} // namespace

WrittenDives writerows(const HeaderScan& scan, const QString& stamp, const QString& name) {
    RowWriter writer(stamp, name);
    for (const HeaderAction& action : scan.actions) {
        std::visit(writer, action);
    }
    return writer.take();
}

bool readsback(platform::Database& store, const WrittenDives& written) {
    return std::all_of(written.dives.begin(), written.dives.end(),
                       [&](const DiveRows& dive) { return readdive(store, dive.diveid) == dive; });
}

} // namespace benthor::divefiles
