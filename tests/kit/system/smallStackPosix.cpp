#include "kit/system/smallStack.h"

#include <system_error>

#include <pthread.h>

namespace {

void Check(int error, const char* what) {
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), what);
    }
}

void* Run(void* work) {
    (*static_cast<const std::function<void()>*>(work))();
    return nullptr;
}

} // namespace

void RunOnSmallStack(const std::function<void()>& work) {
    pthread_attr_t attributes;
    Check(pthread_attr_init(&attributes), "pthread_attr_init");
    Check(pthread_attr_setstacksize(&attributes, smallStackSize), "pthread_attr_setstacksize");
    pthread_t thread;
    Check(pthread_create(&thread, &attributes, Run, const_cast<std::function<void()>*>(&work)), "pthread_create");
    pthread_attr_destroy(&attributes);
    Check(pthread_join(thread, nullptr), "pthread_join");
}

size_t StackLeft() {
    pthread_attr_t attributes;
    Check(pthread_getattr_np(pthread_self(), &attributes), "pthread_getattr_np");
    void* low = nullptr;
    size_t size = 0;
    Check(pthread_attr_getstack(&attributes, &low, &size), "pthread_attr_getstack");
    pthread_attr_destroy(&attributes);
    return static_cast<size_t>(static_cast<char*>(__builtin_frame_address(0)) - static_cast<char*>(low));
}
