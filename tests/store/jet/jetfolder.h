#pragma once

#include "platform/files.h"
#include "store/jet/readjet.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

// Two Jet files made for the tests lie beside the project where it is worked on; BENTHOR_JET_FILES says
// where.
#define REQUIRE_JET_FILES()                                                                                  \
    if (!QFileInfo::exists(benthor::tests::jetFile("older-store-dates.mdb"))) {                              \
        QSKIP("The Jet files for this test are not there (../shared/jet beside the project).");              \
    }

namespace benthor::tests {

inline QString jetFile(const char* name) {
    return QStringLiteral(BENTHOR_JET_FILES "/") + QLatin1String(name);
}

inline QByteArray jetBytes(const char* name) {
    return platform::readFile(jetFile(name)).value_or(QByteArray());
}

/// The reading program of this build, found for as long as this lives.
class OurReader {
public:
    OurReader() { store::setjetreader(QStringLiteral(BENTHOR_READJET)); }
    ~OurReader() { store::setjetreader({}); }
    OurReader(const OurReader&) = delete;
    OurReader& operator=(const OurReader&) = delete;
};

} // namespace benthor::tests
