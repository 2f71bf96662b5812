#include "kit/system/scriptedProcess/lowStack.h"

#include <exception>
#include <stdexcept>

#include <pthread.h>
#include <sys/mman.h>

namespace scripted {

namespace {

constexpr size_t stackSize = 1 << 20;

struct Work {
    const std::function<void()>& run;
    std::exception_ptr thrown;
};

void* Run(void* argument) {
    auto& work = *static_cast<Work*>(argument);
    try {
        work.run();
    } catch (...) {
        work.thrown = std::current_exception();
    }
    return nullptr;
}

} // namespace

void OnLowStack(const std::function<void()>& run) {
    Work work{run, nullptr};
    void* const stack =
        mmap(nullptr, stackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_32BIT | MAP_STACK, -1, 0);
    if (stack == MAP_FAILED) {
        throw std::runtime_error("no memory below 4 GiB for a stack");
    }
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, stack, stackSize);
    pthread_t thread{};
    const int error = pthread_create(&thread, &attributes, Run, &work);
    pthread_attr_destroy(&attributes);
    if (error == 0) {
        pthread_join(thread, nullptr);
    }
    munmap(stack, stackSize);
    if (error != 0) {
        throw std::runtime_error("the thread did not start");
    }
    if (work.thrown) {
        std::rethrow_exception(work.thrown);
    }
}

} // namespace scripted
