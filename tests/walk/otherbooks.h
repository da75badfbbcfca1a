#pragma once

#include "simulator/random.h"
#include "tests/walk/madedives.h"
#include "tests/walk/mergerule.h"

#include <QTemporaryDir>

namespace benthor::platform {
class Database;
} // namespace benthor::platform

namespace benthor::tests {

/// The logbooks of other divers beside the program's folder: two program folders, and the Jet files where
/// they are to be had. What the program may do with them changes not a byte.
class OtherBooks {
public:
    OtherBooks();

    static constexpr int kFolders = 2;
    /// A program folder; it may not be there.
    QString folder(quint32 number) const;
    bool isThere(quint32 number) const;
    /// Copies of the Jet files; none where they are not to be had.
    const QStringList& jetFiles() const { return jetFiles_; }
    static bool hasJetFiles();

    /// What a logbook holds, by the path that a user chooses: a folder, a store, a Jet file. StoreError.
    static OtherContents read(const QString& chosen);
    /// A store of ours with the same: the file itself, or for a Jet file a copy that was made once.
    static QString readable(const QString& store);

    // What happens to a logbook meanwhile. Each makes it where it is not there.

    void putDive(quint32 number, const MadeDive& dive, quint32 form);
    void changeDetails(quint32 number, quint32 which, quint32 words);
    void removeDive(quint32 number, quint32 which);
    void repeatDive(quint32 number, quint32 which);
    void changeFile(quint32 number, quint32 which);
    void removeFile(quint32 number, quint32 which);
    void addEntry(quint32 number, quint32 which);
    /// Its store becomes another file, as when it is copied there anew; one dive fewer, or the same.
    void replaceStore(quint32 number, quint32 which);
    void removeFolder(quint32 number);

    /// What has changed since a step of the walk itself changed something; empty when nothing has.
    QString whatChanged() const;

private:
    void ensure(quint32 number);
    void change(quint32 number, const std::function<void(platform::Database&)>& work);
    QString diveAt(platform::Database& store, quint32 which) const;
    void putFiles(quint32 number, const MadeDive& dive, const QString& dbtxtname, const QString& location,
                  quint32 form) const;
    void note();
    QMap<QString, QByteArray> allFiles() const;

    QTemporaryDir directory_;
    QStringList jetFiles_;
    QMap<QString, QByteArray> files_; ///< as the walk left them
};

/// Short texts as divers write them.
QString words(quint32 number);

} // namespace benthor::tests
