#pragma once

#include "platform/dao/DBEngine.h"

#include <QString>

namespace Bramlet {

// Compacts a closed card file in place, as the frame's Compact Database does: the compact
// copy is written to `workFile` (an old one is deleted first), then copied over the card
// file through a temporary file beside it and deleted. Throws the engine's error (3045 when
// the file is open, 3343 when it is no database ...); whatever fails, the card file is
// left as it was.
void CompactCardDatabase(Dao::DBEngine& engine, const QString& path, const QString& workFile);

// The frame's work file for compaction: "Quorbin.tmp" in the temporary folder ($TEMP when
// set, the system's otherwise); empty when $TEMP is set but empty, which means the program
// has no temporary folder.
QString CompactionWorkFile();

} // namespace Bramlet
