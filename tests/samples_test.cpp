// Every bundled sample parses to the answers written beside it: samples/NAME.txt is the
// input byte for byte, samples/NAME.expected holds "key=value" lines. Keys are the Java
// result names of the answers, plus status, formatGroup and formatId; an empty value
// means the getter gives no answer.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>

#include "../tools/answer_table.h"
#include "sample_inputs.h"
#include "test_support.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

std::string readFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::map<std::string, std::string> readExpectations(const fs::path& path) {
    std::map<std::string, std::string> expected;
    std::istringstream lines(readFile(path));
    std::string line;
    while (std::getline(lines, line)) {
        if (line.empty() || line[0] == '#') continue;
        const size_t eq = line.find('=');
        if (eq == std::string::npos) continue;
        expected[line.substr(0, eq)] = line.substr(eq + 1);
    }
    return expected;
}

std::string verdict(int check) {
    return check == SVT_CHECK_VALID ? "valid" : check == SVT_CHECK_INVALID ? "invalid" : "not checkable";
}

// The answer of one key, or "" when the getter gives none.
std::string answer(SVT_ParserHandle* handle, const std::string& key, int status) {
    if (key == "status") return std::to_string(status);
    if (key == "formatGroup") return std::to_string(handle->record.formatGroup);
    if (key == "formatId") return std::to_string(handle->record.formatId);
    for (const auto& a : orvane_tools::kTextAnswers) {
        if (key != a.name) continue;
        char buffer[512];
        return a.getter(handle, buffer, sizeof buffer) == SVT_OK ? std::string(buffer) : std::string();
    }
    for (const auto& a : orvane_tools::kFlagAnswers) {
        if (key != a.name) continue;
        int value = 0;
        return a.getter(handle, &value) == SVT_OK ? std::to_string(value) : std::string();
    }
    int check = 0;
    if (key == "documentIdValidationStatus" && SVT_validateDocumentId(handle, &check) == SVT_OK) return verdict(check);
    if (key == "jurisdictionCodeValidationStatus" && SVT_validateJurisdictionCode(handle, &check) == SVT_OK) {
        return verdict(check);
    }
    ADD_FAILURE() << "unknown key " << key;
    return std::string();
}

TEST(Samples, EachParsesToItsExpectedAnswers) {
    const std::vector<fs::path> inputs = testing::samplePaths();
    ASSERT_FALSE(inputs.empty());
    testing::HandlePtr handle(SVT_create());
    for (const fs::path& input : inputs) {
        SCOPED_TRACE(input.filename().string());
        fs::path expectedPath = input;
        expectedPath.replace_extension(".expected");
        ASSERT_TRUE(fs::exists(expectedPath)) << "every sample needs its .expected file";
        const std::string bytes = readFile(input);
        const int status = SVT_parse(handle.get(), bytes.data(), static_cast<int>(bytes.size()));
        const auto expected = readExpectations(expectedPath);
        EXPECT_TRUE(expected.count("formatId")) << "name the format that must win";
        for (const auto& [key, value] : expected) {
            EXPECT_EQ(answer(handle.get(), key, status), value) << key;
        }
    }
}

}  // namespace
}  // namespace orvane
