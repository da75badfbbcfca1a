#pragma once

#include "divefiles/importer.h"
#include "platform/clock.h"
#include "tests/divefiles/recordingscreen.h"
#include "tests/support/programfixture.h"

namespace benthor::tests {

inline const QString kStamp = QStringLiteral("11A2B3C");
/// A moment of that stamp.
inline const QDateTime kMoment(QDate(2010, 1, 6), QTime(22, 7, 58));
inline const QString kEndMessage = QStringLiteral("Dive(s) put into database.");

/// A program folder with an empty store at a fixed moment, and imports of what waits there.
class ImportStage {
protected:
    void begin() {
        clock_ = std::make_unique<platform::FixedClock>(kMoment);
        program_ = std::make_unique<ProgramFixture>();
        state_ = {};
        screen_.at = nullptr;
    }
    void end() {
        program_.reset();
        clock_.reset();
    }
    void goTo(const QDateTime& moment) {
        clock_.reset(); // one at a time
        clock_ = std::make_unique<platform::FixedClock>(moment);
    }
    divefiles::ImportEnd import() {
        screen_.clear();
        return divefiles::importdives(program_->folder, state_, screen_);
    }
    /// The names of the dives in the store, in the order in which they came.
    static QStringList locations() {
        return ProgramFixture::rows("SELECT Location FROM main ORDER BY DiveID");
    }
    QStringList newFiles() const { return program_->names(QStringLiteral("new")); }

    std::unique_ptr<platform::FixedClock> clock_;
    std::unique_ptr<ProgramFixture> program_;
    divefiles::ImportState state_;
    RecordingScreen screen_;
};

} // namespace benthor::tests
