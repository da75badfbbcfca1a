#include "exports/dataset.h"

#include "exports/csvlines.h"
#include "exports/divejson.h"
#include "exports/divesahead.h"
#include "exports/numbertext.h"
#include "exports/outputfile.h"
#include "exports/samplescsv.h"
#include "exports/wholewrite.h"
#include "platform/files.h"

#include <QCryptographicHash>
#include <QDir>
#include <QSet>

#include <algorithm>
#include <map>

namespace benthor::exports {

namespace {

const QString kNothing = QStringLiteral("__HIVE_DEFAULT_PARTITION__");
const QString kYear = QStringLiteral("year=");
const QString kEnding = QStringLiteral(".csv");
const QString kDivesFile = QStringLiteral("dives.csv");

QByteArray numberField(std::optional<double> number) {
    return number ? numberText(*number) : QByteArray();
}

QString yearOf(const DiveFigures& figures) {
    return figures.start.isValid() ? QString::number(figures.start.date().year()) : kNothing;
}

/// What follows "logbook=".
QString partOf(const QString& logbookName) {
    return logbookName.isEmpty() ? kNothing : datasetName(logbookName);
}

/// One for identifiers that the store takes for the same: letters in both cases are.
QString keyOf(const QString& id) {
    return datasetName(id).toCaseFolded();
}

/// Lines of dives.csv of a year by what they are sorted by: start and identifier.
using DiveLines = std::map<std::pair<QByteArray, QByteArray>, QByteArray>;

struct DatasetDive {
    DiveFigures figures;
    QByteArray samples; ///< the file of its samples; empty where it has none
};

class DatasetRun {
public:
    DatasetRun(const QString& dir, const QString& logbookName, DiveReader& reader,
               const QStringList& selection, const DatasetProgress& progress)
        : dives_(dir + QStringLiteral("/dives/logbook=") + partOf(logbookName))
        , samples_(dir + QStringLiteral("/samples/logbook=") + partOf(logbookName))
        , reader_(reader)
        , selection_(selection)
        , progress_(progress) {
        for (const QString& id : reader.identifiers()) {
            inStore_ += keyOf(id);
        }
    }

    DatasetCounts run() {
        DivesAhead<DatasetDive> dives(reader_, selection_, [](WholeDive&& dive) {
            QByteArray samples;
            if (dive.withoutSamples.isEmpty()) {
                samples = samplesCsvHeader(SampleIds::First) + samplesCsvLines(dive, SampleIds::First);
            }
            return DatasetDive{std::move(dive.figures), std::move(samples)};
        });
        for (qsizetype i = 0; i < selection_.size(); ++i) {
            if (progress_) {
                progress_(i, selection_.size());
            }
            if (const auto dive = dives.next()) {
                put(dive->prepared, dive->withoutSamples);
            }
        }
        keepOtherLines();
        for (const auto& [year, lines] : lines_) {
            QByteArray bytes = divesCsvHeader();
            for (const auto& [order, line] : lines) {
                bytes += line;
            }
            write(dives_, year, kDivesFile, bytes);
        }
        removeGone();
        return counts_;
    }

private:
    /// Of several identifiers that are one but for the case of their letters the first is the dive's.
    void put(const DatasetDive& dive, const QString& withoutSamples) {
        const QString key = keyOf(dive.figures.id);
        if (chosen_.contains(key)) {
            return;
        }
        const QString year = yearOf(dive.figures);
        QString file;
        if (withoutSamples.isEmpty()) {
            file = datasetName(dive.figures.id) + kEnding;
            write(samples_, year, file, dive.samples);
        } else {
            counts_.withoutSamples += dive.figures.id + QStringLiteral(": ") + withoutSamples;
        }
        chosen_.insert(key, year + u'/' + file);
        addLine(year, dive.figures.id, momentText(dive.figures.start), divesCsvLine(dive.figures));
    }

    void addLine(const QString& year, const QString& id, const QString& start, const QByteArray& line) {
        lines_[year][{start.toUtf8(), id.toUtf8()}] = line;
    }

    static QStringList yearsIn(const QString& folder) {
        QStringList years;
        for (const QString& name : QDir(folder).entryList({kYear + u'*'}, QDir::Dirs)) {
            years += name.mid(kYear.size());
        }
        return years;
    }
    static QString pathOf(const QString& folder, const QString& year, const QString& file) {
        return folder + u'/' + kYear + year + u'/' + file;
    }

    /// The rows of dives that the store has and this run does not speak of.
    void keepOtherLines() {
        for (const QString& year : yearsIn(dives_)) {
            const std::optional<QByteArray> bytes = platform::readFile(pathOf(dives_, year, kDivesFile));
            if (!bytes || !bytes->startsWith(divesCsvHeader())) {
                continue;
            }
            CsvLines lines(QByteArrayView(*bytes).sliced(divesCsvHeader().size()));
            while (lines.next()) {
                const QString id = lines.field(kIdField);
                if (const QString key = keyOf(id); inStore_.contains(key) && !chosen_.contains(key)) {
                    addLine(year, id, lines.field(kStartField), lines.line().toByteArray());
                }
            }
        }
    }

    void write(const QString& folder, const QString& year, const QString& name, const QByteArray& bytes) {
        const QString path = pathOf(folder, year, name);
        if (platform::readFile(path) == bytes) {
            ++counts_.unchanged;
            return;
        }
        if (!QDir().mkpath(QFileInfo(path).path())) {
            throw ExportError(QStringLiteral("The folder %1 cannot be made.").arg(QFileInfo(path).path()));
        }
        OutputFile file(path, true);
        writeWhole(file.device(), bytes);
        file.commit();
        ++counts_.written;
    }

    void removeGone() {
        for (const QString& year : yearsIn(samples_)) {
            const QDir folder(pathOf(samples_, year, QString()));
            for (const QString& name : folder.entryList({u'*' + kEnding}, QDir::Files)) {
                if (!belongs(year, name)) {
                    removeOurs(folder.filePath(name), samplesCsvHeader(SampleIds::First));
                }
            }
            QDir().rmdir(folder.path()); // where nothing is left
        }
        for (const QString& year : yearsIn(dives_)) {
            if (!lines_.contains(year)) {
                removeOurs(pathOf(dives_, year, kDivesFile), divesCsvHeader());
                QDir().rmdir(pathOf(dives_, year, QString()));
            }
        }
    }

    /// Whether a file of samples stands where its dive has it.
    bool belongs(const QString& year, const QString& file) const {
        const QString key = file.chopped(kEnding.size()).toCaseFolded();
        const auto chosen = chosen_.constFind(key);
        return chosen == chosen_.cend() ? inStore_.contains(key) : *chosen == year + u'/' + file;
    }

    void removeOurs(const QString& path, const QByteArray& header) {
        if (platform::readFile(path, header.size()) != header) {
            return; // not there, or somebody else's
        }
        if (const platform::FileResult removed = platform::removeFile(path); !removed) {
            throw ExportError(removed.error);
        }
        ++counts_.removed;
    }

    static constexpr int kIdField = 0;
    static constexpr int kStartField = 3;

    QString dives_, samples_; ///< folders of this logbook
    DiveReader& reader_;
    const QStringList& selection_;
    const DatasetProgress& progress_;
    QSet<QString> inStore_; ///< keys of all dives
    QHash<QString, QString>
        chosen_; ///< key of each dive of this run, and "year/file", no file without samples
    std::map<QString, DiveLines> lines_; ///< by year
    DatasetCounts counts_;
};

} // namespace

QString datasetName(const QString& text) {
    constexpr qsizetype kMost = 150;
    const QByteArray bytes = text.toUtf8();
    const auto stands = [](char byte) {
        return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
               byte == '-';
    };
    QByteArray name;
    for (const char byte : bytes) {
        name += stands(byte) ? QByteArray(1, byte) : '%' + QByteArray(1, byte).toHex().toUpper();
    }
    if (name.size() > kMost) {
        name = name.left(kMost) + '%' + QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    }
    return bytes.isEmpty() ? QStringLiteral("%") : QString::fromLatin1(name);
}

QByteArray divesCsvHeader() {
    return "id,name,site,start,end,duration_s,max_depth_m,interval_s,otu,serial,version,faults\r\n";
}

QByteArray divesCsvLine(const DiveFigures& figures) {
    const QByteArrayList fields{
        csvField(figures.id),
        csvField(figures.name),
        csvField(figures.site),
        momentText(figures.start).toLatin1(),
        momentText(figures.end).toLatin1(),
        numberField(figures.duration),
        numberField(figures.maxdepth),
        numberField(figures.interval),
        numberField(figures.otu),
        csvField(figures.serial),
        csvField(figures.version),
        figures.faults.isEmpty() ? QByteArray() : csvField(figures.faults.join(QStringLiteral("; ")))};
    return fields.join(',') + "\r\n";
}

DatasetCounts writeDataset(const QString& dir, const QString& logbookName, DiveReader& reader,
                           const QStringList& selection, const DatasetProgress& progress) {
    return DatasetRun(dir, logbookName, reader, selection, progress).run();
}

} // namespace benthor::exports
