#include "shell/json_output.h"

#include "shell/json_writer.h"
#include "shell/tsv_line.h"

namespace titron::shell {

namespace {

using analysis::ChiSquareTest;
using analysis::Interval;
using analysis::SingleHitStatistics;
using analysis::ZTest;

void writeInterval(JsonWriter& json, const std::optional<Interval>& interval) {
    if (!interval) {
        json.null();
        return;
    }
    json.beginArray().number(interval->lower).number(interval->upper).endArray();
}

// A frequency ("1 in" so many) falls as the proportion rises: the lower proportion gives
// the first number of the pair.
void writeFrequencyInterval(JsonWriter& json, const std::optional<Interval>& interval) {
    if (!interval) {
        json.null();
        return;
    }
    json.beginArray().number(1.0 / interval->lower).number(1.0 / interval->upper).endArray();
}

void writeZTest(JsonWriter& json, std::string_view name, const std::optional<ZTest>& test) {
    json.key(name);
    if (!test) {
        json.null();
        return;
    }
    json.beginObject().key("z").number(test->z).key("p").number(test->p).endObject();
}

void writeChiSquare(JsonWriter& json, std::string_view name,
                    const std::optional<ChiSquareTest>& test) {
    json.key(name);
    if (!test) {
        json.null();
        return;
    }
    json.beginObject()
        .key("chi_square")
        .number(test->chiSquare)
        .key("df")
        .integer(test->df)
        .key("p")
        .number(test->p)
        .endObject();
}

void writeBound(JsonWriter& json, const SingleHitStatistics& model) {
    json.key("bound");
    if (!model.bound) {
        json.null();
        return;
    }
    const bool upper = model.bound->side == analysis::OneSidedBound::Side::Upper;
    json.beginObject()
        .key("side")
        .string(upper ? "upper" : "lower")
        .key("proportion")
        .number(model.bound->proportion)
        .key("frequency")
        .number(1.0 / model.bound->proportion)
        .endObject();
}

void writeEstimates(JsonWriter& json, const SingleHitStatistics& model) {
    if (!model.fit) {
        json.key("proportion").null().key("frequency").null();
        return;
    }
    json.key("proportion")
        .beginObject()
        .key("estimate")
        .number(model.fit->proportion)
        .key("se_log")
        .number(model.fit->seLog)
        .key("wald");
    writeInterval(json, model.wald);
    json.key("likelihood_ratio");
    writeInterval(json, model.likelihoodRatio);
    json.endObject();

    json.key("frequency").beginObject().key("estimate").number(1.0 / model.fit->proportion);
    json.key("wald");
    writeFrequencyInterval(json, model.wald);
    json.key("likelihood_ratio");
    writeFrequencyInterval(json, model.likelihoodRatio);
    json.endObject();
}

void writeSlopeAndTests(JsonWriter& json, const SingleHitStatistics& model) {
    json.key("slope");
    if (model.slope) {
        json.beginObject()
            .key("estimate")
            .number(model.slope->slope)
            .key("se")
            .number(model.slope->seSlope)
            .endObject();
    } else {
        json.null();
    }
    json.key("tests").beginObject();
    writeZTest(json, "slope_wald", model.slopeWald);
    writeZTest(json, "slope_likelihood_ratio", model.slopeLikelihoodRatio);
    writeZTest(json, "score_log_dose", model.scoreLogDose);
    writeZTest(json, "score_dose", model.scoreDose);
    writeChiSquare(json, "pearson", model.pearson);
    writeChiSquare(json, "deviance", model.deviance);
    json.endObject();
}

void writeDoses(JsonWriter& json, const SingleHitStatistics& model) {
    json.key("doses").beginArray();
    for (const analysis::DoseResidual& row : model.doses) {
        json.beginObject()
            .key("dose")
            .number(row.dose)
            .key("responses")
            .number(row.responses)
            .key("tested")
            .number(row.tested)
            .key("expected")
            .number(row.expected)
            .key("pearson_residual")
            .number(row.pearsonResidual)
            .key("deviance_residual")
            .number(row.devianceResidual)
            .endObject();
    }
    json.endArray();
}

void writeModel(JsonWriter& json, const SingleHitStatistics& model) {
    json.beginObject().key("level").number(model.level);
    writeBound(json, model);
    writeEstimates(json, model);
    writeSlopeAndTests(json, model);
    writeDoses(json, model);
    json.endObject();
}

void writeReport(JsonWriter& json, const FileResult& result) {
    if (!result.figures) {
        json.null();
        return;
    }
    json.beginObject();
    for (const ReportField& field : reportFields(*result.figures)) {
        json.key(field.name).number(field.value);
    }
    json.endObject();
}

} // namespace

void appendJsonLine(std::string& line, const std::string& file, const FileResult& result,
                    const SingleHitStatistics* model) {
    JsonWriter json(line);
    json.beginObject()
        .key("file")
        .string(file)
        .key("name")
        .string(result.name)
        .key("outcome")
        .string(result.outcome)
        .key("passes");
    if (const std::optional<std::int32_t> passes = passesOf(result)) {
        json.integer(*passes);
    } else {
        json.null();
    }
    json.key("report");
    writeReport(json, result);
    json.key("model");
    if (model) {
        writeModel(json, *model);
    } else {
        json.null();
    }
    json.endObject();
    line += '\n';
}

} // namespace titron::shell
