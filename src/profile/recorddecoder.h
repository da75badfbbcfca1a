#pragma once

#include "profile/diveprofile.h"
#include "profile/fieldnumber.h"

namespace benthor::profile {

/// The fields of the line that is being read. Fields 0 to 18 are views into the dive text, emptied with each
/// line; fields 19 to 40 grow from line to line and lie in the profile.
class LineFields {
public:
    explicit LineFields(GrownFields& grown)
        : grown_(grown) {}

    /// Ends field number last() with these bytes.
    void close(QByteArrayView bytes) {
        if (last_ < kFirstGrownField) {
            texts_[static_cast<size_t>(last_)] = bytes;
        } else {
            grown_.append(last_, bytes);
        }
    }
    void next() { ++last_; }
    void clearfields() { last_ = 0; }

    /// Number of the field being read, which is the number of commas so far.
    int last() const { return last_; }

    /// A field behind the last of the line is empty.
    QByteArrayView text(int field) const {
        if (field > last_) {
            return {};
        }
        return field < kFirstGrownField ? texts_[static_cast<size_t>(field)] : grown(field);
    }

    /// What the lines so far have left in a field from 19 on, without the bytes that are being read.
    QByteArrayView grown(int field) const { return grown_.text(field); }

private:
    GrownFields& grown_;
    std::array<QByteArrayView, kFirstGrownField> texts_;
    int last_ = 0;
};

/// Turns one line after another into samples of a profile.
class RecordDecoder {
public:
    RecordDecoder(DiveProfile& profile, bool feet)
        : profile_(profile)
        , feet_(feet) {}

    /// Stores the line as sample number profile.lastsample and counts that up. False on a fault: a sample, or
    /// a reading of a stick, beyond the end of the arrays.
    bool decode(const LineFields& line);

private:
    void decodeDepth(QByteArrayView field);
    void decodeMark(QByteArrayView field);
    void decodeTemperature(QByteArrayView field);
    void decodeFilterOrCeiling(QByteArrayView field);
    bool decodeLettered(QByteArrayView field);
    void storeCeiling(double ceiling);
    void storeCo2(double co2);
    bool storeThermistor(char letter, double value);
    void addAlarm(const LineFields& line, int field);
    void store(SampleArray& array, double value) { array.set(profile_.lastsample - 1, asFloat(value)); }
    void enable(int check) { profile_.enabled.set(static_cast<size_t>(check)); }

    DiveProfile& profile_;
    bool feet_;
    bool wrapped_ = false;     ///< the depth before was above 150 m, so a small one has overflowed
    double temperature_ = 0.0; ///< of the record before
    int thermistorcounter_ = 3;
};

} // namespace benthor::profile
