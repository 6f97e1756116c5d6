#include "host/script/stack_room.h"

#include <cstddef>
#include <cstdint>

#include <pthread.h>

namespace refhost::script {
namespace {

// Enough for what a host call needs below the script, error reporting included.
constexpr std::size_t reserve = std::size_t{768} << 10U;

std::uintptr_t lowestUsable()
{
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return 0;
    void* lowest = nullptr;
    std::size_t size = 0;
    const bool known = pthread_attr_getstack(&attributes, &lowest, &size) == 0;
    pthread_attr_destroy(&attributes);
    // Of a small stack the last quarter has to do.
    const std::size_t kept = size / 4 < reserve ? size / 4 : reserve;
    return known ? reinterpret_cast<std::uintptr_t>(lowest) + kept : 0;
}

} // namespace

bool stackIsLow()
{
    thread_local const std::uintptr_t lowest = lowestUsable();
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) < lowest;
}

} // namespace refhost::script
