// What a parse costs, per bundled sample: SVT_parse alone; SVT_parse and every getter
// and check; the winning row's framer and reader alone (the cost if the format were
// known); and a floor of one copy of the input into the scratch buffer per registry row.
// The 2013-edition licence padded with an unknown element shows how the cost grows.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "../tools/answer_table.h"
#include "api/handle.h"
#include "engine/framers.h"
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
    const int32_t room = handle->inputCopyCapacity - 1;
    for (auto _ : state) {
        int32_t length = 0;
        row->framer(input.data(), static_cast<int32_t>(input.size()), handle->inputCopy, room, &length);
        if (row->framer != orvane::framePassThrough) {
            for (int32_t i = 0; i < length; ++i) {
                handle->inputCopy[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(handle->inputCopy[i])));
            }
        }
        orvane::resetRecord(&handle->record);
        benchmark::DoNotOptimize(row->parser(handle->inputCopy, length, &handle->record, &handle->clock));
    }
    SVT_delete(handle);
}

void copyFloor(benchmark::State& state, const std::string& input) {
    SVT_ParserHandle* handle = SVT_create();
    SVT_parse(handle, input.data(), static_cast<int>(input.size()));
    const size_t rows = orvane::formatRegistry().size();
    const size_t n = std::min(input.size(), static_cast<size_t>(handle->inputCopyCapacity - 1));
    for (auto _ : state) {
        for (size_t r = 0; r < rows; ++r) {
            std::memcpy(handle->inputCopy, input.data(), n);
            benchmark::ClobberMemory();
        }
    }
    SVT_delete(handle);
}

void registerSample(const std::string& name, const std::string& bytes) {
    benchmark::RegisterBenchmark(("parse/" + name).c_str(), parseAlone, bytes);
    benchmark::RegisterBenchmark(("parse+answers/" + name).c_str(), parseAndAskEverything, bytes);
    benchmark::RegisterBenchmark(("winner-only/" + name).c_str(), winnerAlone, bytes);
    benchmark::RegisterBenchmark(("copy-floor/" + name).c_str(), copyFloor, bytes);
}

}  // namespace

// Prints what the console shows, then one Markdown table of the medians per sample:
// parse, parse with every answer, and the ratios of parse to the copy floor and to the
// winner alone. Run with --benchmark_repetitions so that medians exist.
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
        std::printf("\n| sample | parse (us) | parse + answers (us) | winner only (us) | parse / floor | parse / winner |\n");
        std::printf("|---|---:|---:|---:|---:|---:|\n");
        for (const auto& [sample, times] : medians_) {
            auto at = [&](const char* kind) { auto it = times.find(kind); return it == times.end() ? 0.0 : it->second; };
            const double parse = at("parse");
            const double floor = at("copy-floor");
            const double winner = at("winner-only");
            std::printf("| %s | %s | %s | %s | %s | %s |\n", sample.c_str(), cell("%.2f", parse / 1000).c_str(),
                        cell("%.2f", at("parse+answers") / 1000).c_str(), cell("%.2f", winner / 1000).c_str(),
                        cell("%.0f", floor > 0 ? parse / floor : 0.0).c_str(),
                        cell("%.1f", winner > 0 ? parse / winner : 0.0).c_str());
        }
    }

private:
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
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
