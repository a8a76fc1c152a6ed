#include "frame/DatabaseCompaction.h"

#include "frame/FrameSettings.h"

#include <stdexcept>

namespace Frame {

namespace {

DatabaseCompactor& Registered()
{
    static DatabaseCompactor compactor;
    return compactor;
}

} // namespace

void RegisterDatabaseCompaction(DatabaseCompactor compactor)
{
    Registered() = std::move(compactor);
}

bool IsDatabaseCompactionRegistered()
{
    return bool(Registered());
}

void CompactDatabaseFile(const QString& fileName)
{
    if (!Registered())
        throw std::runtime_error("no database compaction is available");
    const QString workFile = TempFilePath(u"Quorbin.tmp");
    if (workFile.isEmpty())
        throw std::runtime_error("there is no temporary folder");
    Registered()(fileName, workFile);
}

} // namespace Frame
