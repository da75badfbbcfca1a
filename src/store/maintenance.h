#pragma once

#include "platform/database.h"
#include "platform/programfolder.h"

#include <QString>

#include <functional>

namespace benthor::store {

/// Shows a message to the user and returns when it is closed.
using ShowMessage = std::function<void(const QString& text)>;

/// Brings the store at `path` to the width that the program needs: Profile to 50 fields, main to 27. A table
/// that cannot be changed is told in a message and left short; a missing Profile is passed over. The store is
/// closed again at the end; other failures are a StoreError.
void addmissingfields(const QString& path, const ShowMessage& message);

/// Makes the folder dbtxt with an empty "test.txt" in it, unless a file is there.
platform::FileResult makedbtxt(const platform::ProgramFolder& folder);

/// The field getstarted of the open store; Null reads as "".
QString readgetstarted(platform::Database& database);

/// Whether the guide stays away at the start: getstarted holds "Close".
bool guideisclosed(const QString& getstarted);

} // namespace benthor::store
