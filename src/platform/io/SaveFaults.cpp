#include "platform/io/SaveFaults.h"

namespace Io {

std::atomic<int> SaveFaults::s_writes { 0 };
std::atomic<int> SaveFaults::s_failingWrite { 0 };
std::atomic<bool> SaveFaults::s_failOpen { false };
std::atomic<bool> SaveFaults::s_failCommit { false };

void SaveFaults::failAtOpen()
{
    s_failOpen = true;
}

void SaveFaults::failAtWrite(int n)
{
    s_failingWrite = n > 0 ? s_writes + n : 0;
}

void SaveFaults::failAtCommit()
{
    s_failCommit = true;
}

void SaveFaults::reset()
{
    s_failOpen = false;
    s_failingWrite = 0;
    s_failCommit = false;
    s_writes = 0;
}

int SaveFaults::writesSeen()
{
    return s_writes;
}

bool SaveFaults::takeOpenFault()
{
    return s_failOpen.exchange(false);
}

bool SaveFaults::takeWriteFault()
{
    const int count = ++s_writes;
    int failing = count;
    return s_failingWrite.compare_exchange_strong(failing, 0);
}

bool SaveFaults::takeCommitFault()
{
    return s_failCommit.exchange(false);
}

} // namespace Io
