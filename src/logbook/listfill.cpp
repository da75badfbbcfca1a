#include "logbook/listfill.h"

#include "logbook/soundrows.h"
#include "platform/filename.h"
#include "session/process.h"

namespace benthor::logbook {

namespace {

void copytocorrupt(const platform::ProgramFolder& folder, const QString& location) {
    // The diver may have given the dive a name that is no file's.
    if (!platform::isFileName(location)) {
        return;
    }
    const QString kept = folder.path(u"old", location);
    const QString corrupt = folder.path(u"corrupt", location);
    if (!platform::sameContents(kept, corrupt)) {
        static_cast<void>(platform::copyFile(kept, corrupt));
    }
}

/// Runs the validators over one dive, as they are run everywhere.
bool isGood(platform::Database& database, const QString& diveid) {
    process().currentdiveid = diveid;
    try {
        divefiles::checkdive(database);
    } catch (const platform::StoreError& error) {
        process().problemtext += QLatin1Char('\r') + error.text();
    }
    return process().problemtext.isEmpty();
}

} // namespace

bool checkdives(platform::Database& database, const platform::ProgramFolder& folder, const ListedDives& dives,
                const CheckWatch& watch) {
    std::vector<bool> sound;
    return checkdives(database, folder, dives, watch, sound);
}

bool checkdives(platform::Database& database, const platform::ProgramFolder& folder, const ListedDives& dives,
                const CheckWatch& watch, std::vector<bool>& sound) {
    if (sound.size() != static_cast<size_t>(dives.count()) + 1 &&
        !findsounddives(database, dives, watch.between, sound)) {
        return false;
    }
    for (int number = 1; number <= dives.count(); ++number) {
        // The last one leaves the process's values and handles as a check of each would.
        bool good = sound[static_cast<size_t>(number)] && number < dives.count();
        if (!good) {
            good = isGood(database, dives.diveid(number));
        }
        if (!good) {
            copytocorrupt(folder, dives.location(number));
        }
        if (!watch.checked(number, good)) {
            return false;
        }
    }
    return true;
}

} // namespace benthor::logbook
