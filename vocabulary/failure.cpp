#include "vocabulary/failure.h"

#include <utility>

namespace titron::vocabulary {

Failure::Failure(int number) : Failure(number, standardDescription(number)) {
}

Failure::Failure(int number, std::string description)
    : std::runtime_error(description), m_number(number), m_description(std::move(description)) {
}

std::string Failure::standardDescription(int number) {
    switch (number) {
    case failure::InvalidCall:
        return "Invalid procedure call or argument";
    case failure::Overflow:
        return "Overflow";
    case failure::OutOfMemory:
        return "Out of memory";
    case failure::DivisionByZero:
        return "Division by zero";
    case failure::TypeMismatch:
        return "Type mismatch";
    case failure::FileNotFound:
        return "File not found";
    case failure::PermissionDenied:
        return "Permission denied";
    case failure::PathFileAccess:
        return "Path/File access error";
    case failure::PathNotFound:
        return "Path not found";
    default:
        return "Application-defined or object-defined error";
    }
}

} // namespace titron::vocabulary
