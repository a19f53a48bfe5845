// Inputs as hostile as scanners, users and attackers make them: every sample cut at
// every length and with every byte replaced, degenerate sizes, and the inputs of other
// parsers' test suites. Every status must be a documented one, and the sanitizer build
// of this test fails on any read or write outside the handle's buffers.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "answer_checks.h"
#include "peer_inputs.h"
#include "sample_inputs.h"
#include "test_support.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

// Parses strictly and leniently and asks everything; a fault description, or "".
std::string parseAndAsk(SVT_ParserHandle* handle, const std::string& input) {
    return testing::parseBothWaysAndAsk(handle, input.data(), static_cast<int>(input.size()));
}

TEST(HostileInput, EverySampleCutAtEveryLength) {
    testing::HandlePtr handle(SVT_create());
    for (const std::string& sample : testing::sampleInputs()) {
        for (size_t length = 1; length <= sample.size(); ++length) {
            const std::string cut = sample.substr(0, length);
            const std::string fault = parseAndAsk(handle.get(), cut);
            ASSERT_EQ(fault, "") << "cut at " << length << " of " << sample.substr(0, 40);
        }
    }
}

TEST(HostileInput, EverySampleWithEveryByteReplaced) {
    testing::HandlePtr handle(SVT_create());
    for (const std::string& sample : testing::sampleInputs()) {
        for (char replacement : {'\0', '\x1e', '\xff', '@'}) {
            for (size_t at = 0; at < sample.size(); ++at) {
                std::string changed = sample;
                changed[at] = replacement;
                const std::string fault = parseAndAsk(handle.get(), changed);
                ASSERT_EQ(fault, "") << "byte " << at << " replaced by " << static_cast<int>(replacement);
            }
        }
    }
}

TEST(HostileInput, DegenerateSizes) {
    testing::HandlePtr handle(SVT_create());
    for (int byte = 0; byte < 256; ++byte) {
        ASSERT_EQ(parseAndAsk(handle.get(), std::string(1, static_cast<char>(byte))), "") << byte;
    }
    for (size_t size : {size_t{8191}, size_t{8192}, size_t{8193}}) {
        for (char fill : {'@', 'A', '\n', '\0', '|'}) {
            ASSERT_EQ(parseAndAsk(handle.get(), std::string(size, fill)), "") << size << " of " << static_cast<int>(fill);
        }
    }
    for (char fill : {'@', '%', '\x1e', '9'}) {
        ASSERT_EQ(parseAndAsk(handle.get(), std::string(1 << 20, fill)), "") << static_cast<int>(fill);
    }
}

TEST(HostileInput, TheLastByteOfAnInputAsLongAsTheBufferIsNotSeen) {
    // An AAMVA barcode padded so that its last element ends with the input.
    const std::string head = "@\n\x1e\rANSI 636026080102DL00410278ZA03190008DLDAQD08954796\nDCSSAMPLE\nDCK";
    for (size_t total : {size_t{8190}, size_t{8191}, size_t{8192}, size_t{10000}}) {
        SCOPED_TRACE(total);
        const std::string input = head + std::string(total - head.size() - 1, '7') + "X";
        testing::HandlePtr handle(SVT_create());
        ASSERT_EQ(SVT_parse(handle.get(), input.data(), static_cast<int>(input.size())), SVT_OK);
        const std::string control = testing::slotText(handle->record, field::inventoryControlNumber);
        const bool lastByteSeen = !control.empty() && control.back() == 'X';
        // Deliberately lost once the input fills the buffer: the framer has one byte less
        // than the buffer, and barcode framing copies one byte less than that.
        EXPECT_EQ(lastByteSeen, total < 8191);
        EXPECT_EQ(handle->inputCopyCapacity, static_cast<int32_t>(total < 8192 ? 8192 : total));
    }
}

TEST(HostileInput, InputsTheFuzzerFound) {
    const fs::path folder = fs::path(ORVANE_SOURCE_DIR) / "tests" / "data" / "regressions";
    testing::HandlePtr handle(SVT_create());
    int found = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string input(std::istreambuf_iterator<char>(in), {});
        EXPECT_EQ(parseAndAsk(handle.get(), input), "") << entry.path().filename();
        ++found;
    }
    EXPECT_GT(found, 0);
}

TEST(HostileInput, FailedParseThenEveryGetter) {
    testing::HandlePtr handle(SVT_create());
    const std::string sample = testing::sampleInputs().front();
    ASSERT_EQ(SVT_parse(handle.get(), sample.data(), static_cast<int>(sample.size())), SVT_OK);
    const std::string junk = "no format reads this text at all";
    EXPECT_NE(SVT_parse(handle.get(), junk.data(), static_cast<int>(junk.size())), SVT_OK);
    EXPECT_EQ(testing::askEverything(handle.get()), "");
    EXPECT_EQ(SVT_parse(handle.get(), nullptr, 10), SVT_ERR_NULL_INPUT);
    EXPECT_EQ(testing::askEverything(handle.get()), "");
    EXPECT_EQ(SVT_parseLenient(handle.get(), nullptr, 10), SVT_ERR_NULL_INPUT);
    EXPECT_EQ(testing::askEverything(handle.get()), "");
    EXPECT_EQ(SVT_parseLenient(handle.get(), sample.data(), 0), SVT_ERR_INVALID_ARGUMENT);
    EXPECT_EQ(testing::askEverything(handle.get()), "");
}

TEST(HostileInput, InputsOfOtherParsersTestSuites) {
    const auto inputs = testing::readPeerInputs(testing::peerFolder());
    if (inputs.empty()) GTEST_SKIP() << "no peer inputs beside the project";
    testing::HandlePtr handle(SVT_create());
    std::map<std::string, std::pair<int, int>> recognised;  // kind -> (recognised, tried)
    for (const auto& input : inputs) {
        if (input.kind != "aamva" && input.kind != "stripe" && input.kind != "mrz") continue;
        SCOPED_TRACE(input.file + ": " + input.name);
        auto& counts = recognised[input.kind];
        ++counts.second;
        if (input.bytes.empty()) continue;
        const int status = SVT_parse(handle.get(), input.bytes.data(), static_cast<int>(input.bytes.size()));
        ASSERT_TRUE(testing::isDocumentedParseStatus(status)) << status;
        if (status == SVT_OK) ++counts.first;
        ASSERT_EQ(testing::askEverything(handle.get()), "");
        ASSERT_EQ(testing::parseBothWaysAndAsk(handle.get(), input.bytes.data(), static_cast<int>(input.bytes.size())), "");
    }
    for (const auto& [kind, counts] : recognised) {
        std::printf("peer inputs of kind %s: %d of %d recognised\n", kind.c_str(), counts.first, counts.second);
    }
}

}  // namespace
}  // namespace orvane
