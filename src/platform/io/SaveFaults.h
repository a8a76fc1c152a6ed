#pragma once

#include <atomic>

namespace Io {

// Test hook of SafeFileWriter: makes a save fail at a chosen point, so that each file
// format's tests can prove that a failed save keeps the previous file. Process-wide, because
// writers create their SafeFileWriter deep inside; arm it inside a SaveFaults::Scope so that
// it is disarmed again whatever the test does. Each armed fault fires once.
class SaveFaults
{
public:
    // The next SafeFileWriter::open fails as if the temporary file could not be created.
    static void failAtOpen();
    // The nth write (counted from 1, from now on) through any SafeFileWriter fails.
    static void failAtWrite(int n);
    // The next commit fails as if the temporary file could not be renamed over the target.
    static void failAtCommit();
    // Disarms every fault and sets the write count back to 0.
    static void reset();
    // Writes through any SafeFileWriter since the last reset: run a save once to learn how
    // many writes it makes, then fail each of them in turn.
    static int writesSeen();

    // Resets on entry and on exit.
    class Scope
    {
    public:
        Scope() { reset(); }
        ~Scope() { reset(); }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
    };

    // For SafeFileWriter: true when this operation is to fail. takeWriteFault counts the write.
    static bool takeOpenFault();
    static bool takeWriteFault();
    static bool takeCommitFault();

private:
    static std::atomic<int> s_writes;
    static std::atomic<int> s_failingWrite; // 0: none
    static std::atomic<bool> s_failOpen;
    static std::atomic<bool> s_failCommit;
};

} // namespace Io
