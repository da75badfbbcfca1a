#pragma once

#include <QString>

namespace benthor::store {

/// The texts that make the tables of a fresh store.
const char* schemaText();

/// Makes a fresh, empty store at `path`, whole or not at all, for its owner alone. A file that is there is
/// never touched: StoreError, as for every other failure. `getstarted`: "Open" (the guide shows at the start)
/// or "Close".
void createStore(const QString& path, const QString& getstarted = QStringLiteral("Open"));

} // namespace benthor::store
