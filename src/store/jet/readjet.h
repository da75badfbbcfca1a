#pragma once

#include "store/jet/jetconvert.h"

#include <chrono>
#include <memory>

namespace benthor::store {

/// What opens a Jet file for reading.
using OpenJet = std::function<std::unique_ptr<JetRowSource>(const QString& path, const JetProgress& waiting)>;

/// How long the reading program may say nothing.
inline constexpr std::chrono::milliseconds kJetPatience{60000};

/// The rows that the program `benthor-readjet` reads from the file; it is found beside the executable, or in
/// libexec/benthor of the installation. What
/// becomes of that program is a StoreError and nothing else: that it is not there, dies, says nothing for
/// `patience`, sends what cannot be understood, or ends early. It ends with the source. While it is waited
/// for `waiting` is asked, with no rows; false is JetStopped.
std::unique_ptr<JetRowSource> readjet(const QString& path, const JetProgress& waiting,
                                      std::chrono::milliseconds patience = kJetPatience);

/// The reading program of this process; an empty path brings back the one that is found. For tests,
/// whose executables lie elsewhere.
void setjetreader(const QString& program);

} // namespace benthor::store
