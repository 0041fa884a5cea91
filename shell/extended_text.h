// The section that "titron-cli analyze --extended" writes after a report: the single-hit
// model examined in full, laid out for a person reading a terminal.
#pragma once

#include <string>

#include "analysis/single_hit_model.h"

namespace titron::shell {

// Appends the section, with CR LF line ends as the report has them: the estimate with its
// Wald and likelihood-ratio intervals (or the one-sided bound where there is no estimate),
// each test of the model with a sentence of verdict at the 5% level, and the observed and
// expected responses of every row, the rows with a residual beyond 2 in size marked.
void appendExtendedText(std::string& text, const analysis::SingleHitStatistics& model);

} // namespace titron::shell
