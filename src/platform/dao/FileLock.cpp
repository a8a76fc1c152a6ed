#include "platform/dao/FileLock.h"

#include "platform/dao/DaoError.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QMutex>
#include <QThread>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Dao {

namespace {

// SQLite locks the 512 bytes from 0x40000000 (pending, reserved and shared bytes); this
// byte lies beyond them so that the two kinds of lock never meet. Locks are advisory,
// so the file need not be that long.
constexpr off_t PresenceByte = 0x40000000 + 0x300;

struct Entry
{
    int descriptor = -1;
    bool writable = false;
    int shared = 0;
    int exclusive = 0;
    short lockType = F_UNLCK;
};

QMutex& RegistryMutex()
{
    static QMutex mutex;
    return mutex;
}

// Returns false when another program holds a conflicting lock.
bool SetLock(Entry& entry, short type)
{
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = PresenceByte;
    lock.l_len = 1;
    if (fcntl(entry.descriptor, F_OFD_SETLK, &lock) == 0) {
        entry.lockType = type;
        return true;
    }
    // A file system without such locks cannot tell us about others; SQLite's own
    // locking still protects the data, so the open goes ahead.
    return errno != EAGAIN && errno != EACCES;
}

} // namespace

namespace {

using Key = std::pair<quint64, quint64>; // device and inode: one entry per file

QHash<Key, Entry>& Registry()
{
    static QHash<Key, Entry> registry;
    return registry;
}

} // namespace

FileLock::FileLock(quint64 device, quint64 inode, bool exclusive)
    : m_device(device)
    , m_inode(inode)
    , m_exclusive(exclusive)
{ }

std::unique_ptr<FileLock> FileLock::acquire(
    const QString& path, bool exclusive, int timeoutMilliseconds)
{
    const QByteArray encoded = path.toLocal8Bit();
    struct stat status = {};
    if (stat(encoded.constData(), &status) != 0)
        throw DaoError::make(DaoError::FileNotFound, path);
    const Key key { static_cast<quint64>(status.st_dev), static_cast<quint64>(status.st_ino) };
    const QDeadlineTimer deadline(std::max(timeoutMilliseconds, 0));
    for (;;) {
        {
            QMutexLocker locker(&RegistryMutex());
            Entry& entry = Registry()[key];
            if (entry.descriptor < 0) {
                entry.descriptor = open(encoded.constData(), O_RDWR | O_CLOEXEC);
                entry.writable = entry.descriptor >= 0;
                if (entry.descriptor < 0)
                    entry.descriptor = open(encoded.constData(), O_RDONLY | O_CLOEXEC);
                if (entry.descriptor < 0) {
                    Registry().remove(key);
                    throw DaoError::make(DaoError::PermissionDenied, path);
                }
            }
            const bool conflictHere
                = exclusive ? entry.shared + entry.exclusive > 0 : entry.exclusive > 0;
            bool granted = false;
            if (!conflictHere) {
                // A file that cannot be written can only be read-locked: an exclusive open of
                // it still shuts out other copies of this program through the count above
                // and other programs' writers through SQLite.
                const short wanted = exclusive && entry.writable ? F_WRLCK : F_RDLCK;
                granted = entry.lockType == wanted
                    || (entry.lockType == F_WRLCK && wanted == F_RDLCK) || SetLock(entry, wanted);
            }
            if (granted) {
                ++(exclusive ? entry.exclusive : entry.shared);
                return std::unique_ptr<FileLock>(new FileLock(key.first, key.second, exclusive));
            }
            if (entry.shared + entry.exclusive == 0) {
                close(entry.descriptor);
                Registry().remove(key);
            }
        }
        if (deadline.hasExpired())
            throw DaoError::make(DaoError::FileInUse, path);
        QThread::msleep(20);
    }
}

QByteArray FileLock::readStart(qint64 length) const
{
    QMutexLocker locker(&RegistryMutex());
    const auto found = Registry().constFind(Key(m_device, m_inode));
    if (found == Registry().constEnd() || length <= 0)
        return {};
    QByteArray bytes(length, Qt::Uninitialized);
    const ssize_t read = pread(found->descriptor, bytes.data(), static_cast<size_t>(length), 0);
    bytes.resize(read > 0 ? read : 0);
    return bytes;
}

qint64 FileLock::fileSize() const
{
    QMutexLocker locker(&RegistryMutex());
    const auto found = Registry().constFind(Key(m_device, m_inode));
    struct stat status = {};
    if (found == Registry().constEnd() || fstat(found->descriptor, &status) != 0)
        return 0;
    return static_cast<qint64>(status.st_size);
}

FileLock::~FileLock()
{
    QMutexLocker locker(&RegistryMutex());
    const auto found = Registry().find(Key(m_device, m_inode));
    if (found == Registry().end())
        return;
    Entry& entry = found.value();
    --(m_exclusive ? entry.exclusive : entry.shared);
    if (entry.shared + entry.exclusive == 0) {
        // Closing the descriptor drops its lock; SQLite has closed the file by now.
        close(entry.descriptor);
        Registry().erase(found);
    }
}

} // namespace Dao
