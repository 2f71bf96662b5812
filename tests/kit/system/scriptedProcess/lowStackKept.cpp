// The body of lowStack.h for programs that go there very often: one low stack, made once, that this thread itself
// changes to. It reports each change to the sanitizer. For one thread.
#include "kit/system/scriptedProcess/lowStack.h"

#include <exception>
#include <stdexcept>
#include <utility>

#include <sanitizer/common_interface_defs.h>
#include <sys/mman.h>
#include <ucontext.h>

namespace scripted {

namespace {

constexpr size_t stackSize = 1 << 18;

class LowStack {
public:
    LowStack() {
        m_stack = mmap(nullptr, stackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_32BIT | MAP_STACK,
                       -1, 0);
        if (m_stack == MAP_FAILED || getcontext(&m_low) != 0) {
            throw std::runtime_error("no memory below 4 GiB for a stack");
        }
        m_low.uc_stack.ss_sp = m_stack;
        m_low.uc_stack.ss_size = stackSize;
        makecontext(&m_low, Loop, 0);
    }

    void Run(const std::function<void()>& run) {
        m_run = &run;
        void* shadow = nullptr;
        __sanitizer_start_switch_fiber(&shadow, m_stack, stackSize);
        swapcontext(&m_caller, &m_low);
        __sanitizer_finish_switch_fiber(shadow, nullptr, nullptr);
        if (m_thrown) {
            std::rethrow_exception(std::exchange(m_thrown, nullptr));
        }
    }

    static LowStack& Instance() {
        static auto* const stack = new LowStack;
        return *stack;
    }

private:
    // Runs on the low stack, for ever: each turn is one piece of work.
    static void Loop() {
        LowStack& self = Instance();
        void* shadow = nullptr;
        for (;;) {
            const void* callerStack = nullptr;
            size_t callerSize = 0;
            __sanitizer_finish_switch_fiber(shadow, &callerStack, &callerSize);
            try {
                (*self.m_run)();
            } catch (...) {
                self.m_thrown = std::current_exception();
            }
            __sanitizer_start_switch_fiber(&shadow, callerStack, callerSize);
            swapcontext(&self.m_low, &self.m_caller);
        }
    }

    void* m_stack = nullptr;
    ucontext_t m_caller{};
    ucontext_t m_low{};
    const std::function<void()>* m_run = nullptr;
    std::exception_ptr m_thrown;
};

} // namespace

void OnLowStack(const std::function<void()>& run) {
    LowStack::Instance().Run(run);
}

} // namespace scripted
