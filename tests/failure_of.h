// The failure that a call ends in, for tests of the program's failure numbers.
#pragma once

#include "vocabulary/failure.h"

namespace titron::testing {

// The failure number that call throws, 0 when it returns.
template <class Call> int failureOf(Call&& call) {
    try {
        call();
    } catch (const vocabulary::Failure& failure) {
        return failure.number();
    }
    return 0;
}

} // namespace titron::testing
