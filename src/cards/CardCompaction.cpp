#include "cards/CardCompaction.h"

#include "platform/dao/DaoError.h"
#include "platform/io/SafeFileWriter.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

void CompactCardDatabase(Dao::DBEngine& engine, const QString& path, const QString& workFile)
{
    if (QFile::exists(workFile) && !QFile::remove(workFile))
        throw Dao::DaoError::make(Dao::DaoError::PermissionDenied, workFile);
    engine.CompactDatabase(path, workFile);
    if (!QFile::exists(workFile))
        return;
    const QString problem = Io::SafeFileWriter::copyFile(workFile, path);
    QFile::remove(workFile);
    if (!problem.isEmpty())
        throw Dao::DaoError(Dao::DaoError::DiskOrNetworkError, problem);
}

QString CompactionWorkFile()
{
    const QString folder
        = qEnvironmentVariableIsSet("TEMP") ? qEnvironmentVariable("TEMP") : QDir::tempPath();
    return folder.isEmpty() ? QString() : QDir(folder).filePath(u"Quorbin.tmp"_s);
}

} // namespace Bramlet
