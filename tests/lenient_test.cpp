// The lenient parse changes nothing for text that needs no repair: every sample, every
// input of tests/data and every peer input it reads without a repair and with one of the
// 68 formats gives exactly what SVT_parse gives, to the last member of the result.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

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

TEST(Lenient, ArgumentsAsForTheStrictParse) {
    testing::HandlePtr h(SVT_create());
    EXPECT_EQ(SVT_parseLenient(nullptr, "x", 1), SVT_ERR_INVALID_ARGUMENT);
    EXPECT_EQ(SVT_parseLenient(h.get(), "x", 0), SVT_ERR_INVALID_ARGUMENT);
    EXPECT_EQ(SVT_parseLenient(h.get(), nullptr, 5), SVT_ERR_NULL_INPUT);
    char repairs[16];
    EXPECT_EQ(SVT_getRepairs(h.get(), repairs, sizeof repairs), SVT_ERR_NO_ANSWER);
    EXPECT_EQ(SVT_parseLenient(h.get(), "garbage", 7), SVT_ERR_NOT_RECOGNISED);
    // A strict parse reports no repair, even after a lenient one that made some.
    const std::string damaged = "]L2" + testing::readBytes(fs::path(ORVANE_SOURCE_DIR) / "samples" / "aamva-2013-arizona.txt");
    ASSERT_EQ(SVT_parseLenient(h.get(), damaged.data(), static_cast<int>(damaged.size())), SVT_OK);
    EXPECT_EQ(SVT_getRepairs(h.get(), repairs, sizeof repairs), SVT_ERR_NO_ANSWER);  // too small for the name
    ASSERT_EQ(SVT_parse(h.get(), damaged.data(), static_cast<int>(damaged.size())), SVT_OK);
    EXPECT_EQ(SVT_getRepairs(h.get(), repairs, sizeof repairs), SVT_ERR_NO_ANSWER);
}

}  // namespace
}  // namespace orvane
