#pragma once

#include "platform/database.h"

#include <QString>

namespace benthor::store {

/// The identifier behind `last`, which is the last one given out or its number; Null stands for none. The
/// number 10000000 and above get no prefix.
QString nextidentifier(const platform::Value& last);

/// Gives the next identifier to a new row of main with the version and the system "KD3"; leaves it in
/// `currentdiveid`. What a dive of that identifier left behind when it was deleted goes.
void newdive(const QString& version);

/// The same for side imports: neither version nor system. A counter that was never written is a StoreError.
/// Told, and called by nothing: no side import has an action.
void newdivebare();

/// For a dive whose own number is taken: the identifier behind the highest, which the counter of dives then
/// holds. Changes of the caller's transaction.
QString takeidentifier(platform::Database& database);

/// Removes what a deleted dive left behind under an identifier; nothing where a dive bears it.
void removeleftovers(platform::Database& database, const QString& identifier);

/// Sets the counter of a store to its highest identifier, so that numbers freed at the end are given out
/// again. Without an argument: of the process's store.
void syncserialno(platform::Database& database);
void syncserialno();

} // namespace benthor::store
