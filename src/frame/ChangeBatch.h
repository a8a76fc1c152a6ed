#pragma once

#include <functional>
#include <utility>

namespace Frame {

// Gathers the change notifications of one document command into one, so that a window
// refreshes once per command however many parts of the model the command touched. Every
// document holds one: its commands open a Scope, and notify() during a scope only marks that
// something changed; the end of the outermost scope first lets the document settle (bring
// derived state up to date, which may notify again) and then announces once.
class ChangeBatch
{
public:
    explicit ChangeBatch(std::function<void()> announce, std::function<void()> settle = {})
        : m_announce(std::move(announce))
        , m_settle(std::move(settle))
    { }

    // Announces now, or at the end of the open scope.
    void notify()
    {
        if (m_depth > 0)
            m_pending = true;
        else
            m_announce();
    }

    class Scope
    {
    public:
        explicit Scope(ChangeBatch& batch)
            : m_batch(batch)
        {
            ++m_batch.m_depth;
        }
        ~Scope()
        {
            if (m_batch.m_depth == 1 && m_batch.m_settle)
                m_batch.m_settle();
            if (--m_batch.m_depth == 0 && m_batch.m_pending) {
                m_batch.m_pending = false;
                m_batch.m_announce();
            }
        }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        ChangeBatch& m_batch;
    };

private:
    std::function<void()> m_announce;
    std::function<void()> m_settle;
    int m_depth = 0;
    bool m_pending = false;
};

} // namespace Frame
