#include "shell/help_document.h"

#include <filesystem>

namespace titron::shell {

namespace {

// Relative to the program's directory; kept in step with the install rules.
constexpr const char* kManualPlaces[] = {
    "../share/doc/titron/manual/index.html",
    "../docs/manual/index.html",
};

} // namespace

std::vector<std::string> manualPlaces(const std::string& programDirectory) {
    std::vector<std::string> places;
    for (const char* relative : kManualPlaces) {
        places.push_back(
            (std::filesystem::path(programDirectory) / relative).lexically_normal().string());
    }
    return places;
}

std::optional<std::string> helpDocument(const std::string& programDirectory,
                                        const std::string& helpFile,
                                        const std::function<bool(const std::string&)>& exists) {
    const std::string beside = programDirectory + "/" + helpFile;
    if (exists(beside)) {
        return beside;
    }
    for (const std::string& place : manualPlaces(programDirectory)) {
        if (exists(place)) {
            return place;
        }
    }
    return std::nullopt;
}

} // namespace titron::shell
