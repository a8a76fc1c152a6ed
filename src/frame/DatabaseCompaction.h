#pragma once

#include <QString>
#include <functional>

namespace Frame {

// Compacts the card database `fileName` into `workFile` and puts the result in its place,
// throwing on failure with the database file left as it was. The card library provides it;
// the application registers it here so that the frame does not depend on the cards.
using DatabaseCompactor = std::function<void(const QString& fileName, const QString& workFile)>;

// An empty function unregisters.
void RegisterDatabaseCompaction(DatabaseCompactor compactor);
bool IsDatabaseCompactionRegistered();

// Compacts one card database in place through the registered compactor, with the work file
// "Quorbin.tmp" in the temporary folder. Throws std::runtime_error when nothing is registered
// or there is no temporary folder, and passes on whatever the compactor throws.
void CompactDatabaseFile(const QString& fileName);

} // namespace Frame
