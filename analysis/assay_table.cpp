#include "analysis/assay_table.h"

#include "analysis/checked_math.h"
#include "vocabulary/number_text.h"
#include "vocabulary/text_routines.h"

namespace titron::analysis {

double readAssayCell(std::string& work, int column) {
    vocabulary::removeChar(work, 32);
    double value = vocabulary::strictNumber(work);
    if (column == kResponsesColumn && value == 0.0 && work != "0") {
        value = -1.0;
    }
    return value;
}

namespace {

const char* const kIntegersMessage = "The values for Responses and Tested must be integers";

std::optional<CheckFailure> checkRow(const AssayRow& r, int row) {
    if (r.dose <= 0.0) {
        return CheckFailure{"INVALID DOSE", "Invalid Dose: " + vocabulary::generalNumber(r.dose),
                            kDoseColumn, row};
    }
    if (r.responses < 0.0) {
        return CheckFailure{"INVALID RESPONSES", "Invalid Responses:  Empty", kResponsesColumn,
                            row};
    }
    if (!vocabulary::isWholeNumber(r.responses)) {
        return CheckFailure{"INVALID RESPONSES", kIntegersMessage, kResponsesColumn, row};
    }
    if (r.tested <= 0.0) {
        return CheckFailure{"INVALID NUMBER TESTED",
                            "Invalid Number Tested: " + vocabulary::generalNumber(r.tested),
                            kTestedColumn, row};
    }
    if (!vocabulary::isWholeNumber(r.tested)) {
        return CheckFailure{"INVALID NUMBER TESTED", kIntegersMessage, kTestedColumn, row};
    }
    if (r.responses > r.tested) {
        return CheckFailure{"INVALID RESPONSES/NUMBER TESTED",
                            "Responses is greater than Number Tested:\r\n\r\n" +
                                vocabulary::generalNumber(r.responses) + " > " +
                                vocabulary::generalNumber(r.tested),
                            kResponsesColumn, row};
    }
    return std::nullopt;
}

} // namespace

std::optional<CheckFailure> checkAssay(const AssayTable& table) {
    double totalResponses = 0.0;
    double totalTested = 0.0;
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (auto failure = checkRow(table[i], static_cast<int>(i) + 1)) {
            return failure;
        }
        totalResponses = checked::finite(totalResponses + table[i].responses);
        totalTested = checked::finite(totalTested + table[i].tested);
    }
    if (totalResponses == 0.0) {
        return CheckFailure{"NO RESPONSES", "Data with no Responses cannot be analyzed.", 0, 0};
    }
    if (totalResponses == totalTested) {
        return CheckFailure{"100% RESPONSES", "Data with 100% Responses cannot be analyzed.", 0, 0};
    }
    return std::nullopt;
}

} // namespace titron::analysis
