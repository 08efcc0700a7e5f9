// SPDX-License-Identifier: MIT
#include "../support/motionwalk.h"
#include "fuzzing.h"

// Any order of operator's actions, readings, failed readings and lost lines: two bytes are one event.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    MotionWalk walk;
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        if (const char *failure = walk.step(data[i], data[i + 1] * 7u))
            require(false, failure);
    }
    return 0;
}
