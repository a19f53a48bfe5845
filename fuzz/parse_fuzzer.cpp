// libFuzzer target: every input is parsed by a reused handle and by a fresh one, then
// asked every question of the C interface. Any status the interface does not document,
// any write past a buffer, any difference between the two handles on small inputs, and
// any sanitizer report is a finding.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "../tests/answer_checks.h"
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

// Parses with one handle and asks everything; the symbol size comes from the input.
std::string parseAndAsk(SVT_ParserHandle* handle, const uint8_t* data, size_t size) {
    const int status = SVT_parse(handle, data, static_cast<int>(size));
    if (!orvane::testing::isDocumentedParseStatus(status)) fail("parse status", std::to_string(status));
    const int columns = size > 0 ? data[0] % 40 : 20;
    const int rows = size > 1 ? data[1] % 100 : 15;
    const int level = size > 2 ? data[2] % 10 - 1 : 5;
    const std::string fault = orvane::testing::askEverything(handle, columns, rows, level);
    if (!fault.empty()) fail("answer", fault);
    return std::to_string(status) + '#' + answersOf(handle);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static SVT_ParserHandle* reused = SVT_create();
    if (size > (1u << 20)) return 0;
    const std::string first = parseAndAsk(reused, data, size);
    SVT_ParserHandle* fresh = SVT_create();
    const std::string second = parseAndAsk(fresh, data, size);
    SVT_delete(fresh);
    // A larger buffer left by an earlier input may see bytes a fresh one cannot; below
    // that size the answers must not depend on what the handle parsed before.
    if (size > 0 && size < 2048 && first != second) fail("reused and fresh handles differ", first + " / " + second);
    return 0;
}
