// libFuzzer target: every input is parsed by a reused handle and by a fresh one, strictly
// and leniently, each time asked every question of the C interface (the result object
// included), and parsed once more by the library's driver
// and by the plain one that frames, reads and scores every row in order. Any status the
// interface does not document, any write past a buffer, any difference between two
// handles of the same room or between the two drivers, and any sanitizer report is a
// finding.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "../tests/answer_checks.h"
#include "../tests/plain_driver.h"
#include "engine/registry.h"
#include "orvane_parser.h"

namespace {

[[noreturn]] void fail(const char* what, const std::string& detail) {
    std::fprintf(stderr, "finding: %s: %s\n", what, detail.c_str());
    std::abort();
}

// Every answer as one text, to compare two handles.
std::string answersOf(SVT_ParserHandle* handle) {
    std::string all;
    char buffer[256];
    for (const auto& answer : orvane_tools::kTextAnswers) {
        const int status = answer.getter(handle, buffer, sizeof buffer);
        all += std::to_string(status) + ':' + (status == SVT_OK ? std::string(buffer) : std::string()) + '|';
    }
    for (const auto& answer : orvane_tools::kFlagAnswers) {
        int value = -1;
        all += std::to_string(answer.getter(handle, &value)) + ':' + std::to_string(value) + '|';
    }
    return all;
}

// Parses with one handle, strictly and then leniently, and asks everything after each;
// the symbol size comes from the input.
std::string parseAndAsk(SVT_ParserHandle* handle, const uint8_t* data, size_t size) {
    const int columns = size > 0 ? data[0] % 40 : 20;
    const int rows = size > 1 ? data[1] % 100 : 15;
    const int level = size > 2 ? data[2] % 10 - 1 : 5;
    std::string all;
    for (const bool lenient : {false, true}) {
        const int length = static_cast<int>(size);
        const int status = lenient ? SVT_parseLenient(handle, data, length) : SVT_parse(handle, data, length);
        if (!orvane::testing::isDocumentedParseStatus(status)) fail("parse status", std::to_string(status));
        const std::string fault = orvane::testing::askEverything(handle, columns, rows, level);
        if (!fault.empty()) fail(lenient ? "lenient answer" : "answer", fault);
        all += std::to_string(status) + '#' + answersOf(handle) + (lenient ? "" : "||");
    }
    return all;
}

}  // namespace

// A handle keeps buffers that an earlier, longer input made it grow, and values are cut
// at the end of its work buffer, so a grown handle may keep more of a long value than a
// fresh one. Inputs up to the default size therefore go to a handle that never grows,
// and must give exactly what a fresh handle gives; longer inputs go to one that does,
// compared only when no earlier input was longer (both handles then hold the same room).
constexpr size_t kDefaultBufferSize = 8192;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static SVT_ParserHandle* defaultSized = SVT_create();
    static SVT_ParserHandle* grown = SVT_create();
    static size_t longestGrown = 0;
    if (size > (1u << 20)) return 0;
    const bool fitsDefault = size <= kDefaultBufferSize;
    const std::string first = parseAndAsk(fitsDefault ? defaultSized : grown, data, size);
    const bool sameRoom = fitsDefault || size >= longestGrown;
    if (!fitsDefault && size > longestGrown) longestGrown = size;
    SVT_ParserHandle* fresh = SVT_create();
    const std::string second = parseAndAsk(fresh, data, size);
    SVT_delete(fresh);
    if (size > 0 && sameRoom && first != second) fail("reused and fresh handles differ", first + " / " + second);
    const std::string input(reinterpret_cast<const char*>(data), size);
    for (const auto rows : {orvane::formatRegistry(), orvane::lenientRegistry()}) {
        const std::string drivers = orvane::testing::compareDrivers(input, rows);
        if (!drivers.empty()) fail("the driver and the plain driver differ", drivers);
    }
    return 0;
}
