#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

namespace Dao {

// Who has a database file open, across every program on the machine (and on other machines
// of a network file system that passes locks on). SQLite only locks while it reads or
// writes; the engine also needs to know that a file is open at all, so that an exclusive
// open fails while anyone else has the file and nobody opens a file held exclusively.
//
// Each open holds an open-file-description lock on one byte past SQLite's own lock bytes:
// a read lock for a shared open, a write lock for an exclusive one. Opens within this
// process are counted here, because such locks do not conflict within one description.
// The process keeps one descriptor per file and closes it only when its last open ends:
// closing any descriptor of a file drops the classic locks SQLite holds on it.
class FileLock
{
public:
    // Throws DaoError 3045 (file already in use) when the file is open in a way that
    // conflicts, after retrying for `timeoutMilliseconds`.
    static std::unique_ptr<FileLock> acquire(
        const QString& path, bool exclusive, int timeoutMilliseconds);

    ~FileLock();

    // The file's first bytes and its size, read through the descriptor the lock keeps:
    // opening and closing another descriptor of the file would drop the locks SQLite holds
    // on it for this process.
    QByteArray readStart(qint64 length) const;
    qint64 fileSize() const;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    FileLock(quint64 device, quint64 inode, bool exclusive);

    quint64 m_device;
    quint64 m_inode;
    bool m_exclusive;
};

} // namespace Dao
