#include "exports/screens/exportbox.h"

#include "exports/exporterror.h"
#include "exports/outputfile.h"
#include "platform/filename.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/progresswindow.h"
#include "platform/screen/savepath.h"

#include <QDir>
#include <QFileInfo>

namespace benthor::exports {

using platform::BoxKind;
using platform::dialogs;

namespace {

constexpr qsizetype kMostLines = 12;

const QString kFilter = QStringLiteral("UDDF (*.uddf)|*.uddf|"
                                       "JSON, all that is known of a dive (*.json)|*.json|"
                                       "CSV, a row a sample (*.csv)|*.csv|"
                                       "DL7 of all samples (*.zxu)|*.zxu");

QString askPath(QWidget* parent, const QString& suggested) {
    const QString name = platform::isFileName(suggested) ? suggested : QStringLiteral("dives");
    return platform::askSavePath(parent, QStringLiteral("Export dives"),
                                 platform::ProgramFolder::current().path(name), kFilter);
}

/// Writes the file. Nothing of it is left where that fails.
LossReport writeTo(const QString& path, DiveFormat format, platform::Database& database,
                   const QStringList& ids) {
    platform::ProgressWindow window(
        QStringLiteral("Dives are exported"),
        QStringLiteral("They are written to %1").arg(QDir::toNativeSeparators(path)), QStringLiteral("dives"),
        QStringLiteral("All dives are written."));
    DiveReader dives(database, platform::ProgramFolder::current());
    OutputFile file(path, true); // the dialog has asked
    LossReport losses = exportdives(format, file.device(), dives, ids, [&window](int done, int of) {
        return window.goOn(static_cast<std::uint64_t>(done), static_cast<std::uint64_t>(of));
    });
    file.commit();
    return losses;
}

} // namespace

QString exportedText(const QString& path, const LossReport& losses) {
    QStringList lines = losses.lines();
    const qsizetype more = lines.size() - kMostLines;
    if (more > 1) {
        lines.resize(kMostLines);
        lines += QStringLiteral("and %1 more").arg(more);
    }
    return QStringLiteral("%1\n\n%2").arg(QDir::toNativeSeparators(path), lines.join(u'\n'));
}

void tellexported(QWidget* parent, const QString& path, const LossReport& losses) {
    dialogs().message(parent,
                      losses.isEmpty() ? QStringLiteral("The export is complete: nothing was left out.")
                                       : QStringLiteral("The export is complete. What is listed below is not "
                                                        "in it as the logbook has it."),
                      BoxKind::Information, {}, exportedText(path, losses));
}

void exportwithbox(QWidget* parent, platform::Database& database, const QStringList& ids,
                   const QString& suggested) {
    const QString path = askPath(parent, suggested);
    if (path.isEmpty()) {
        return;
    }
    const std::optional<DiveFormat> format = formatNamed(QFileInfo(path).suffix());
    if (!format) {
        dialogs().message(
            parent,
            QStringLiteral("Nothing was exported. The ending of the name tells the format: .uddf, "
                           ".json, .csv or .zxu."),
            BoxKind::Warning);
        return;
    }
    const auto failed = [&](const QString& reason) {
        dialogs().message(parent,
                          QStringLiteral("The dives were not exported; no file was written.\n\n") + reason,
                          BoxKind::Warning);
    };
    try {
        tellexported(parent, path, writeTo(path, *format, database, ids));
    } catch (const ExportStopped&) {
        dialogs().message(parent, QStringLiteral("The export was stopped; no file was written."));
    } catch (const ExportError& error) {
        failed(error.text());
    } catch (const platform::StoreError& error) {
        failed(error.text());
    }
}

} // namespace benthor::exports
