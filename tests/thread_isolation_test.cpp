// Handles share nothing: two threads, each with its own handle, parse different samples
// thousands of times and must get the same answers every time as a lone thread does.
// Also built with ThreadSanitizer by the test command.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "../tools/answer_table.h"
#include "orvane_parser.h"
#include "sample_inputs.h"

namespace {

namespace fs = std::filesystem;

// The parse status and every answer of an input, as one text.
std::string answersOf(SVT_ParserHandle* handle, const std::string& input) {
    std::string all = std::to_string(SVT_parse(handle, input.data(), static_cast<int>(input.size())));
    char buffer[512];
    for (const auto& answer : orvane_tools::kTextAnswers) {
        all += '|';
        if (answer.getter(handle, buffer, sizeof buffer) == SVT_OK) all += buffer;
    }
    for (const auto& answer : orvane_tools::kFlagAnswers) {
        int value = -1;
        answer.getter(handle, &value);
        all += '|' + std::to_string(value);
    }
    int status = 0;
    SVT_validateDocumentId(handle, &status);
    SVT_validateJurisdictionCode(handle, &status);
    return all + '|' + std::to_string(status);
}

TEST(ThreadIsolation, TwoHandlesOnTwoThreadsAnswerAsOneDoes) {
    const std::vector<std::string> inputs = orvane::testing::sampleInputs();
    ASSERT_GE(inputs.size(), 2u);
    std::vector<std::string> expected;
    SVT_ParserHandle* alone = SVT_create();
    for (const std::string& input : inputs) expected.push_back(answersOf(alone, input));
    SVT_delete(alone);

    constexpr int kRounds = 2000;
    int mismatches[2] = {0, 0};
    auto work = [&](int parity) {
        SVT_ParserHandle* handle = SVT_create();
        for (int round = 0; round < kRounds; ++round) {
            const size_t i = (static_cast<size_t>(round) * 2 + static_cast<size_t>(parity)) % inputs.size();
            if (answersOf(handle, inputs[i]) != expected[i]) ++mismatches[parity];
        }
        SVT_delete(handle);
    };
    std::thread first(work, 0);
    std::thread second(work, 1);
    first.join();
    second.join();
    EXPECT_EQ(mismatches[0], 0);
    EXPECT_EQ(mismatches[1], 0);
}

}  // namespace
