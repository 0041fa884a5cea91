// A run-time failure: a failure number (5, 6, 11, 13, 52, 53, ...) and its description.
// Checked operations throw it; each routine with a failure path catches it there.
#pragma once

#include <stdexcept>
#include <string>

namespace titron::vocabulary {

// Failure numbers that the program's own operations raise.
namespace failure {
inline constexpr int InvalidCall = 5; // log of a non-positive number, bad argument
inline constexpr int Overflow = 6;    // result out of range, 0/0, integer too large
inline constexpr int OutOfMemory = 7;
inline constexpr int DivisionByZero = 11; // a non-zero number divided by 0
inline constexpr int TypeMismatch = 13;   // text that is no number
inline constexpr int FileNotFound = 53;
inline constexpr int PermissionDenied = 70;
inline constexpr int PathFileAccess = 75;
inline constexpr int PathNotFound = 76;
} // namespace failure

class Failure : public std::runtime_error {
  public:
    // The standard description of the number ("Overflow", "File not found", ...).
    explicit Failure(int number);
    Failure(int number, std::string description);

    int number() const { return m_number; }
    const std::string& description() const { return m_description; }

    static std::string standardDescription(int number);

  private:
    int m_number;
    std::string m_description;
};

} // namespace titron::vocabulary
