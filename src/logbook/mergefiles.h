#pragma once

#include "platform/files.h"
#include "platform/programfolder.h"

#include <QHash>
#include <QSet>
#include <QStringList>

namespace benthor::logbook {

/// Copies the files of dives from another program folder into this one. Unless keep() is told, what was
/// copied is taken away again at the end.
class MergeFiles {
public:
    /// `named`: the names, case folded, that the dives here have. A file that is missing here must not be
    /// another dive's by then.
    MergeFiles(const platform::ProgramFolder& here, const platform::ProgramFolder& there, QSet<QString> named)
        : here_(here)
        , there_(there)
        , named_(std::move(named)) {}
    ~MergeFiles();
    MergeFiles(const MergeFiles&) = delete;
    MergeFiles& operator=(const MergeFiles&) = delete;

    struct Brought {
        QString name;        ///< what the row is to name; empty where it names nothing
        bool isThere = true; ///< false: there is no such file over there
    };
    /// The text of a dive in `dbtxt`, and the file in `old` that holds the same bytes. Where the file is not
    /// there, `name` is one that no file and no dive has here. StoreError where it cannot be copied.
    Brought bring(const QString& dbtxtname);

    /// The names that were brought are on the disk. StoreError.
    void settle() const;
    void keep() { copied_.clear(); }

private:
    QString freeName(const QString& name) const;
    void bringOld(const QString& place);
    QString take(const QString& from, QStringView where, const QString& name, const QSet<QString>& taken);

    const platform::ProgramFolder& here_;
    const platform::ProgramFolder& there_;
    QStringList copied_;
    QSet<QString> named_;
    QHash<qint64, QStringList> oldBySize_;
    bool oldRead_ = false;
};

} // namespace benthor::logbook
