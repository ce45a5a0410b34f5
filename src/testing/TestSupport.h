#pragma once
// What several test files need alike.
#include "platform/Err.h"

#include <functional>

namespace hv::testing {

// The run-time error number that f raises, 0 when it raises none.
inline long Raised(const std::function<void()>& f) {
    Err().Clear();
    try {
        f();
    } catch (const RunTimeFailure&) {
        return Err().Number;
    }
    return 0;
}

} // namespace hv::testing
