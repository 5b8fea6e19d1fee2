// Work on a thread whose stack is too small for a recursion over a deep tree.
#pragma once

#include <cstddef>
#include <functional>

#include <pthread.h>

namespace orvix::test {

// The result of the work; false also if there is no such thread.
inline bool holds_on_small_stack(std::function<bool()> work) {
    constexpr std::size_t stack_bytes = 64 * 1024;
    struct Job {
        std::function<bool()> work;
        bool result = false;
    } job{std::move(work)};
    const auto run = [](void* argument) -> void* {
        auto* const started = static_cast<Job*>(argument);
        started->result = started->work();
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_t thread;
    if (pthread_attr_init(&attributes) != 0 || pthread_attr_setstacksize(&attributes, stack_bytes) != 0 ||
        pthread_create(&thread, &attributes, run, &job) != 0 || pthread_join(thread, nullptr) != 0) {
        return false;
    }
    pthread_attr_destroy(&attributes);
    return job.result;
}

}  // namespace orvix::test
