// What a parse costs, per bundled sample: SVT_parse alone; SVT_parse and every getter
// and check; and the driver on the winning row alone (the cost if the format were
// known: its framing, its reading, the version and the final pass). The 2013-edition
// licence padded with an unknown element shows how the cost grows with the input.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "../tools/answer_table.h"
#include "api/handle.h"
#include "engine/driver.h"
#include "engine/registry.h"

namespace {

namespace fs = std::filesystem;
using orvane::FormatDescriptor;

struct Sample {
    std::string name;
    std::string bytes;
};

std::vector<Sample> bundledSamples() {
    std::vector<Sample> samples;
    for (const auto& entry : fs::directory_iterator(fs::path(ORVANE_SOURCE_DIR) / "samples")) {
        if (entry.path().extension() != ".txt") continue;
        std::ifstream in(entry.path(), std::ios::binary);
        samples.push_back({entry.path().stem().string(), std::string(std::istreambuf_iterator<char>(in), {})});
    }
    std::sort(samples.begin(), samples.end(), [](const Sample& a, const Sample& b) { return a.name < b.name; });
    return samples;
}

// The 2013 licence with an element no table knows, padded to the given size.
std::string paddedLicence(const std::string& licence, size_t size) {
    std::string padded = licence;
    while (!padded.empty() && (padded.back() == '\r' || padded.back() == '\n')) padded.pop_back();
    padded += "\nZZZ";
    if (padded.size() + 1 < size) padded += std::string(size - padded.size() - 1, 'Q');
    return padded + "\r";
}

void parseAlone(benchmark::State& state, const std::string& input) {
    SVT_ParserHandle* handle = SVT_create();
    SVT_parse(handle, input.data(), static_cast<int>(input.size()));
    for (auto _ : state) benchmark::DoNotOptimize(SVT_parse(handle, input.data(), static_cast<int>(input.size())));
    SVT_delete(handle);
}

void askEverything(SVT_ParserHandle* handle) {
    char buffer[256];
    int value = 0;
    for (const auto& answer : orvane_tools::kTextAnswers) benchmark::DoNotOptimize(answer.getter(handle, buffer, sizeof buffer));
    for (const auto& answer : orvane_tools::kFlagAnswers) benchmark::DoNotOptimize(answer.getter(handle, &value));
    benchmark::DoNotOptimize(SVT_validateDocumentId(handle, &value));
    benchmark::DoNotOptimize(SVT_validateJurisdictionCode(handle, &value));
    benchmark::DoNotOptimize(SVT_validateBarcode(handle, 20, 15, 5, &value));
}

void parseAndAskEverything(benchmark::State& state, const std::string& input) {
    SVT_ParserHandle* handle = SVT_create();
    SVT_parse(handle, input.data(), static_cast<int>(input.size()));
    for (auto _ : state) {
        benchmark::DoNotOptimize(SVT_parse(handle, input.data(), static_cast<int>(input.size())));
        askEverything(handle);
    }
    SVT_delete(handle);
}

// The row that reads the input, found by parsing it once.
const FormatDescriptor* winningRow(const std::string& input) {
    SVT_ParserHandle* handle = SVT_create();
    const int status = SVT_parse(handle, input.data(), static_cast<int>(input.size()));
    const uint32_t format = handle->record.formatId;
    SVT_delete(handle);
    if (status != SVT_OK) return nullptr;
    for (const FormatDescriptor& row : orvane::formatRegistry()) {
        if (row.formatId == format) return &row;
    }
    return nullptr;
}

void winnerAlone(benchmark::State& state, const std::string& input) {
    const FormatDescriptor* row = winningRow(input);
    if (row == nullptr) {
        state.SkipWithError("not recognised");
        return;
    }
    SVT_ParserHandle* handle = SVT_create();
    SVT_parse(handle, input.data(), static_cast<int>(input.size()));
    const orvane::ParseBuffers buffers{handle->inputCopy, handle->inputCopyCapacity, handle->framings};
    const std::span<const FormatDescriptor> winner(row, 1);
    for (auto _ : state) {
        benchmark::DoNotOptimize(orvane::parseBestFormatOf(winner, input.data(), static_cast<int32_t>(input.size()), buffers,
                                                           &handle->record, &handle->clock));
    }
    SVT_delete(handle);
}

void registerSample(const std::string& name, const std::string& bytes) {
    benchmark::RegisterBenchmark(("parse/" + name).c_str(), parseAlone, bytes);
    benchmark::RegisterBenchmark(("parse+answers/" + name).c_str(), parseAndAskEverything, bytes);
    benchmark::RegisterBenchmark(("winner-only/" + name).c_str(), winnerAlone, bytes);
}

}  // namespace

// Prints what the console shows, then one Markdown table of the medians per sample:
// parse, parse with every answer, the winner alone, and the ratios of parse with every
// answer to parse and of parse to the winner alone; then the medians of the ratios over
// the samples, and what the padded licences cost against the plain one. Run with
// --benchmark_repetitions so that medians exist.
class TableReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") continue;
            const std::string name = run.run_name.function_name;
            const size_t slash = name.find('/');
            medians_[name.substr(slash + 1)][name.substr(0, slash)] = run.GetAdjustedRealTime();
        }
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        std::printf("\n| sample | parse (us) | parse + answers (us) | winner only (us) | answers / parse | parse / winner |\n");
        std::printf("|---|---:|---:|---:|---:|---:|\n");
        std::vector<double> answerRatios;
        std::vector<double> winnerRatios;
        for (const auto& [sample, times] : medians_) {
            const double parse = at(times, "parse");
            const double answers = at(times, "parse+answers");
            const double winner = at(times, "winner-only");
            const double answerRatio = parse > 0 && answers > 0 ? answers / parse : 0.0;
            const double winnerRatio = parse > 0 && winner > 0 ? parse / winner : 0.0;
            if (answerRatio > 0) answerRatios.push_back(answerRatio);
            if (winnerRatio > 0) winnerRatios.push_back(winnerRatio);
            std::printf("| %s | %s | %s | %s | %s | %s |\n", sample.c_str(), cell("%.2f", parse / 1000).c_str(),
                        cell("%.2f", answers / 1000).c_str(), cell("%.2f", winner / 1000).c_str(),
                        cell("%.2f", answerRatio).c_str(), cell("%.1f", winnerRatio).c_str());
        }
        std::printf("\nmedians over the samples: parse + answers / parse %s, parse / winner only %s\n",
                    cell("%.2f", median(answerRatios)).c_str(), cell("%.1f", median(winnerRatios)).c_str());
        const auto plain = medians_.find("aamva-2013-arizona");
        const auto padded = medians_.find("aamva-2013-arizona-padded-10k");
        if (plain != medians_.end() && padded != medians_.end() && at(plain->second, "parse") > 0) {
            std::printf("the 2013 licence padded to 10 KB costs %.1f times the plain one (%zu bytes)\n",
                        at(padded->second, "parse") / at(plain->second, "parse"), plainLicenceBytes);
        }
    }

    size_t plainLicenceBytes = 0;

private:
    static double at(const std::map<std::string, double>& times, const char* kind) {
        const auto it = times.find(kind);
        return it == times.end() ? 0.0 : it->second;
    }

    static double median(std::vector<double> values) {
        if (values.empty()) return 0.0;
        std::sort(values.begin(), values.end());
        const size_t m = values.size() / 2;
        return values.size() % 2 == 1 ? values[m] : (values[m - 1] + values[m]) / 2;
    }

    // A measure that was not taken (the padded inputs only time the parse) stays blank.
    static std::string cell(const char* format, double value) {
        if (value <= 0) return "";
        char text[32];
        std::snprintf(text, sizeof text, format, value);
        return text;
    }

    std::map<std::string, std::map<std::string, double>> medians_;
};

int main(int argc, char** argv) {
    const std::vector<Sample> samples = bundledSamples();
    for (const Sample& sample : samples) registerSample(sample.name, sample.bytes);
    for (const Sample& sample : samples) {
        if (sample.name != "aamva-2013-arizona") continue;
        benchmark::RegisterBenchmark("parse/aamva-2013-arizona-padded-2k", parseAlone, paddedLicence(sample.bytes, 2048));
        benchmark::RegisterBenchmark("parse/aamva-2013-arizona-padded-10k", parseAlone, paddedLicence(sample.bytes, 10240));
    }
    benchmark::Initialize(&argc, argv);
    TableReporter reporter;
    for (const Sample& sample : samples) {
        if (sample.name == "aamva-2013-arizona") reporter.plainLicenceBytes = sample.bytes.size();
    }
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
