#include <nlohmann/json.hpp>

#include "batch/FileOutcome.h"

namespace velmohost {
namespace {

using Json = nlohmann::ordered_json;

const char* StatusName(FileOutcome::Status status) {
    switch (status) {
        case FileOutcome::Status::Clean:
            return "clean";
        case FileOutcome::Status::Damaged:
            return "damaged";
        case FileOutcome::Status::Repaired:
            return "repaired";
        case FileOutcome::Status::Failed:
            break;
    }
    return "failed";
}

Json ToJson(const BadSamples& channel, double samplerate) {
    Json json = {{"nan", channel.numNaN},
                 {"positiveInfinity", channel.numPositiveInfinity},
                 {"negativeInfinity", channel.numNegativeInfinity},
                 {"subnormal", channel.numSubnormal},
                 {"firstSample", nullptr},
                 {"firstSeconds", nullptr},
                 {"longestRun", channel.longestRun}};
    if (channel.first) {
        json["firstSample"] = *channel.first;
        json["firstSeconds"] = static_cast<double>(*channel.first) / samplerate;
    }
    return json;
}

Json ToJson(const FileOutcome& outcome) {
    Json json = {{"file", outcome.path}, {"status", StatusName(outcome.status)}};
    if (outcome.status == FileOutcome::Status::Failed) {
        json["error"] = outcome.error;
        return json;
    }
    const FileScan& scan = outcome.scan;
    if (outcome.status == FileOutcome::Status::Repaired) json["output"] = outcome.output;
    json["samplerate"] = scan.samplerate;
    json["bits"] = scan.bitsPerSample;
    json["float"] = scan.holdsFloats;
    json["frames"] = scan.numFrames;
    json["missingFrames"] = scan.numMissingFrames;
    json["badSamples"] = scan.NumBad();
    json["channels"] = Json::array();
    for (const BadSamples& channel : scan.channels) json["channels"].push_back(ToJson(channel, scan.samplerate));
    return json;
}

}  // namespace

std::string FormatOutcomesAsJson(const std::vector<FileOutcome>& outcomes) {
    Json json = {{"files", Json::array()}};
    for (const FileOutcome& outcome : outcomes) json["files"].push_back(ToJson(outcome));
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace velmohost
