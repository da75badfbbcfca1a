#pragma once

#include "platform/database.h"
#include "platform/programfolder.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace benthor::divefiles {

/// The note of an import that is under way: a line in the file "import.note" with the run's stamp, on the
/// disk before the first copy and gone at the end. A run that is killed leaves it, and the next start knows
/// whose copies in dbtxt may be left over. An import goes on without a note that cannot be written.
class ImportNote {
public:
    ImportNote(const platform::ProgramFolder& folder, QString stamp);
    ~ImportNote();
    ImportNote(const ImportNote&) = delete;
    ImportNote& operator=(const ImportNote&) = delete;

private:
    const platform::ProgramFolder& folder_;
    QString stamp_;
};

/// Stamps of the runs that are under way or were killed.
QStringList notedstamps(const platform::ProgramFolder& folder);

/// What a start does for the folder dbtxt, with the store closed: removes the copies that a killed import
/// left (names with its stamp which no dive names and whose bytes stand in `new` or `old`) and brings the
/// profiles that are owed. Nothing else in dbtxt is touched. A store that cannot be read leaves all for the
/// next start. `alsonamed`: of the open store, what else names files there; its StoreError ends it, too.
void tidydbtxt(const platform::ProgramFolder& folder,
               const std::function<QStringList(platform::Database&)>& alsonamed = {});

} // namespace benthor::divefiles
