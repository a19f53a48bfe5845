// The lenient parse changes nothing for text that needs no repair: every sample, every
// input of tests/data and every peer input it reads without a repair and with one of the
// 68 formats gives exactly what SVT_parse gives, to the last member of the result. The
// zones only it reads give the answers written beside them (tests/data/zones/NAME.txt and
// NAME.expected, keys as in the samples' files plus formatName, repairs and checkDigits),
// and zones cut and damaged get a documented status and nothing else.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "../tools/answer_table.h"
#include "answer_checks.h"
#include "orvane_parser.h"
#include "peer_inputs.h"
#include "sample_inputs.h"
#include "test_support.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

std::string resultOf(SVT_ParserHandle* h) {
    std::vector<char> json(1 << 16);
    int length = 0;
    if (SVT_getResultJson(h, json.data(), static_cast<int>(json.size()), &length) != SVT_OK) return "no result";
    return std::string(json.data(), static_cast<size_t>(length));
}

struct Readings {
    std::string strict;
    std::string lenient;
    bool repaired;
    int formatId;
};

Readings readBothWays(const std::string& input) {
    testing::HandlePtr strict(SVT_create());
    testing::HandlePtr lenient(SVT_create());
    const int size = static_cast<int>(input.size());
    const int strictStatus = SVT_parse(strict.get(), input.data(), size);
    const int lenientStatus = SVT_parseLenient(lenient.get(), input.data(), size);
    char repairs[256];
    int group = -1;
    int id = -1;
    SVT_getFormat(lenient.get(), &group, &id);
    return Readings{std::to_string(strictStatus) + resultOf(strict.get()),
                    std::to_string(lenientStatus) + resultOf(lenient.get()),
                    SVT_getRepairs(lenient.get(), repairs, sizeof repairs) == SVT_OK, id};
}

TEST(Lenient, SamplesAreReadExactlyAsStrictly) {
    for (const auto& path : testing::samplePaths()) {
        const Readings r = readBothWays(testing::readBytes(path));
        EXPECT_FALSE(r.repaired) << path.filename();
        EXPECT_EQ(r.lenient, r.strict) << path.filename();
    }
}

TEST(Lenient, InputsWithoutRepairsAreReadAsStrictly) {
    std::vector<std::pair<std::string, std::string>> inputs;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(ORVANE_SOURCE_DIR) / "tests" / "data")) {
        if (entry.is_regular_file()) inputs.emplace_back(entry.path().string(), testing::readBytes(entry.path()));
    }
    for (const auto& peer : testing::readPeerInputs(testing::peerFolder())) inputs.emplace_back(peer.name, peer.bytes);
    int compared = 0;
    for (const auto& [name, input] : inputs) {
        if (input.empty()) continue;
        const Readings r = readBothWays(input);
        if (r.repaired || r.formatId >= 100) continue;
        EXPECT_EQ(r.lenient, r.strict) << name;
        ++compared;
    }
    EXPECT_GT(compared, 10);
}

// A strict parse reports no repair, even after a lenient one that made some.
TEST(Lenient, AStrictParseForgetsTheRepairs) {
    testing::HandlePtr h(SVT_create());
    const std::string damaged = "]L2" + testing::readBytes(fs::path(ORVANE_SOURCE_DIR) / "samples" / "aamva-2013-arizona.txt");
    char repairs[64];
    ASSERT_EQ(SVT_parseLenient(h.get(), damaged.data(), static_cast<int>(damaged.size())), SVT_OK);
    ASSERT_EQ(SVT_getRepairs(h.get(), repairs, sizeof repairs), SVT_OK);
    ASSERT_EQ(SVT_parse(h.get(), damaged.data(), static_cast<int>(damaged.size())), SVT_OK);
    EXPECT_EQ(SVT_getRepairs(h.get(), repairs, sizeof repairs), SVT_ERR_NO_ANSWER);
}

std::vector<fs::path> zoneDataPaths() {
    std::vector<fs::path> paths;
    for (const auto& entry : fs::directory_iterator(fs::path(ORVANE_SOURCE_DIR) / "tests" / "data" / "zones")) {
        if (entry.path().extension() == ".txt") paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::string verdict(int check) {
    return check == SVT_CHECK_VALID ? "valid" : check == SVT_CHECK_INVALID ? "invalid" : "not checkable";
}

// Every answer of the handle by key, as the samples' files name them.
std::map<std::string, std::string> answersOf(SVT_ParserHandle* handle, int status) {
    std::map<std::string, std::string> answers;
    char buffer[512];
    answers["status"] = std::to_string(status);
    int group = -1;
    int format = -1;
    SVT_getFormat(handle, &group, &format);
    answers["formatGroup"] = std::to_string(group);
    answers["formatId"] = std::to_string(format);
    answers["formatName"] = SVT_getFormatName(handle, buffer, sizeof buffer) == SVT_OK ? buffer : "";
    answers["repairs"] = SVT_getRepairs(handle, buffer, sizeof buffer) == SVT_OK ? buffer : "";
    for (const auto& a : orvane_tools::kTextAnswers) {
        answers[a.name] = a.getter(handle, buffer, sizeof buffer) == SVT_OK ? buffer : "";
    }
    for (const auto& a : orvane_tools::kFlagAnswers) {
        int value = 0;
        answers[a.name] = a.getter(handle, &value) == SVT_OK ? std::to_string(value) : "";
    }
    int check = 0;
    if (SVT_validateDocumentId(handle, &check) == SVT_OK) answers["documentIdValidationStatus"] = verdict(check);
    if (SVT_validateJurisdictionCode(handle, &check) == SVT_OK) answers["jurisdictionCodeValidationStatus"] = verdict(check);
    if (SVT_validateCheckDigits(handle, &check) == SVT_OK) {
        answers["checkDigits"] = check == SVT_CHECK_VALID ? "valid" : check == SVT_CHECK_INVALID ? "invalid" : "none";
    }
    return answers;
}

TEST(Lenient, ZonesOnlyItReadsGiveTheAnswersWrittenBeside) {
    const std::vector<fs::path> inputs = zoneDataPaths();
    ASSERT_FALSE(inputs.empty());
    testing::HandlePtr handle(SVT_create());
    for (const fs::path& input : inputs) {
        SCOPED_TRACE(input.filename().string());
        fs::path expectedPath = input;
        expectedPath.replace_extension(".expected");
        std::istringstream lines(testing::readBytes(expectedPath));
        const std::string bytes = testing::readBytes(input);
        const int status = SVT_parseLenient(handle.get(), bytes.data(), static_cast<int>(bytes.size()));
        const auto answers = answersOf(handle.get(), status);
        // Not a strict reading: the strict parse refuses each of them.
        testing::HandlePtr strict(SVT_create());
        EXPECT_NE(SVT_parse(strict.get(), bytes.data(), static_cast<int>(bytes.size())), SVT_OK);
        std::string line;
        int keys = 0;
        while (std::getline(lines, line)) {
            const size_t eq = line.find('=');
            if (line.empty() || line[0] == '#' || eq == std::string::npos) continue;
            const std::string key = line.substr(0, eq);
            ASSERT_TRUE(answers.count(key)) << "unknown key " << key;
            EXPECT_EQ(answers.at(key), line.substr(eq + 1)) << key;
            ++keys;
        }
        EXPECT_GT(keys, 20);
    }
}

TEST(Lenient, ZonesCutAndDamaged) {
    std::vector<std::string> inputs;
    for (const fs::path& path : zoneDataPaths()) inputs.push_back(testing::readBytes(path));
    for (const auto& peer : testing::readPeerInputs(testing::peerFolder())) {
        if (peer.kind == "mrz" && !peer.bytes.empty()) inputs.push_back(peer.bytes);
    }
    testing::HandlePtr handle(SVT_create());
    auto fault = [&handle](const std::string& input) {
        const int status = SVT_parseLenient(handle.get(), input.data(), static_cast<int>(input.size()));
        if (!testing::isDocumentedParseStatus(status)) return "parse status " + std::to_string(status);
        return testing::askEverything(handle.get());
    };
    for (const std::string& input : inputs) {
        SCOPED_TRACE(input.substr(0, 60));
        for (size_t length = 1; length <= input.size(); ++length) ASSERT_EQ(fault(input.substr(0, length)), "") << length;
        for (char replacement : {'\0', '\n', '<', '0', 'O', '?'}) {
            for (size_t at = 0; at < input.size(); ++at) {
                std::string changed = input;
                changed[at] = replacement;
                ASSERT_EQ(fault(changed), "") << "byte " << at << " replaced by " << static_cast<int>(replacement);
            }
        }
    }
}

}  // namespace
}  // namespace orvane
