#pragma once

#include <pthread.h>

#include <atomic>
#include <stdexcept>
#include <string>

namespace devices::parser::mx {

/// What the process has once and one thread at a time may use. This is no lock: a second thread
/// does not wait, it fails and says that its host lacks a mutex, instead of damaging what both
/// would write.
class OneThreadAtATime
{
public:
    /// The use by the calling thread, as long as the object lives. Uses of one thread nest.
    class Use
    {
    public:
        /// Throws `std::logic_error` naming `operation` when another thread uses `shared`.
        Use(OneThreadAtATime& shared, const char* operation)
            : entered(shared.enter(operation) ? &shared : nullptr)
        {}
        ~Use()
        {
            if (entered != nullptr) {
                entered->user.store(noThread, std::memory_order_release);
            }
        }
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;

    private:
        OneThreadAtATime* entered; // null: a use of the same thread surrounds this one
    };

private:
    static constexpr pthread_t noThread{};

    // Returns whether no thread was inside.
    bool enter(const char* operation)
    {
        const pthread_t self = pthread_self();
        // Only the thread itself can have written its own number.
        if (user.load(std::memory_order_relaxed) == self) {
            return false;
        }
        pthread_t expected = noThread;
        if (!user.compare_exchange_strong(expected, self, std::memory_order_acquire,
                                          std::memory_order_relaxed)) {
            fail(operation);
        }
        return true;
    }

    [[noreturn]] static void fail(const char* operation)
    {
        throw std::logic_error(std::string(operation) +
                               "(): Another thread is inside the library: put one mutex around its "
                               "operations, see docs/guide/threads.md");
    }

    std::atomic<pthread_t> user{noThread};
};

/// The parsers of the process: they share texts, and the companion library's state.
inline OneThreadAtATime parsers;

} // namespace devices::parser::mx
