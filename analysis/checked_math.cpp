#include "analysis/checked_math.h"

#include <cmath>

#include "vocabulary/failure.h"

namespace titron::analysis::checked {

using vocabulary::Failure;
namespace failure = vocabulary::failure;

double finite(double x) {
    if (!std::isfinite(x)) {
        throw Failure(failure::Overflow);
    }
    return x;
}

double exp(double x) {
    return finite(std::exp(finite(x)));
}

double log(double x) {
    if (!(x > 0.0)) {
        throw Failure(failure::InvalidCall);
    }
    return std::log(finite(x));
}

double sqrt(double x) {
    if (x < 0.0) {
        throw Failure(failure::InvalidCall);
    }
    return std::sqrt(finite(x));
}

double divide(double a, double b) {
    if (b == 0.0) {
        throw Failure(a == 0.0 ? failure::Overflow : failure::DivisionByZero);
    }
    return finite(a / b);
}

double pow(double base, double power) {
    if (base < 0.0 && power != std::floor(power)) {
        throw Failure(failure::InvalidCall);
    }
    return finite(std::pow(finite(base), power));
}

} // namespace titron::analysis::checked
