#include "api/handle.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "engine/status.h"
#include "sample_inputs.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::HandlePtr;

TEST(Handle, ParseRefusesBadArgumentsWithoutTouchingTheHandle) {
    HandlePtr h(SVT_create());
    const char input[] = "ABC";
    EXPECT_EQ(SVT_parse(nullptr, input, 3), kErrInvalidArgument);
    EXPECT_EQ(SVT_parse(h.get(), input, 0), kErrInvalidArgument);
    EXPECT_EQ(SVT_parse(h.get(), input, -5), kErrInvalidArgument);
    EXPECT_EQ(h->inputCopy, nullptr);
    EXPECT_EQ(h->clock.parseYear, 0);
    // Null data is the driver's to report, after the buffers are set up.
    EXPECT_EQ(SVT_parse(h.get(), nullptr, 10), kErrNullInput);
    EXPECT_NE(h->workStore, nullptr);
    SVT_delete(nullptr);
}

TEST(Handle, FirstParseSetsUpBuffersAndClock) {
    HandlePtr h(SVT_create());
    const std::string input = "nothing the library knows";
    EXPECT_LT(SVT_parse(h.get(), input.data(), static_cast<int>(input.size())), 0);
    EXPECT_EQ(h->inputCopyCapacity, kMinimumBufferSize);
    EXPECT_EQ(h->workStoreCapacity, kMinimumBufferSize);
    EXPECT_EQ(h->record.workBuffer, h->workStore);
    EXPECT_EQ(h->record.workCapacity, kMinimumBufferSize);
    EXPECT_GE(h->clock.parseYear, 2024);
    EXPECT_TRUE(h->clock.parseMonth >= 1 && h->clock.parseMonth <= 12);
    EXPECT_TRUE(h->clock.parseDay >= 1 && h->clock.parseDay <= 31);
}

// Every parse sets the clock to the local time, also when it comes from the second the
// handle remembers.
TEST(Handle, EveryParseSetsTheClock) {
    HandlePtr h(SVT_create());
    const std::string input = "nothing the library knows";
    for (int round = 0; round < 3; ++round) {
        const std::time_t before = std::time(nullptr);
        h->clock = ParseClock{1900, 13, 40, 25, 61, 61};
        SVT_parse(h.get(), input.data(), static_cast<int>(input.size()));
        const std::time_t after = std::time(nullptr);
        bool matches = false;
        for (std::time_t at = before; at <= after; ++at) {
            std::tm local{};
            ASSERT_NE(localtime_r(&at, &local), nullptr);
            matches = matches || (h->clock.parseYear == local.tm_year + 1900 && h->clock.parseMonth == local.tm_mon + 1 &&
                                  h->clock.parseDay == local.tm_mday && h->clock.parseHour == local.tm_hour &&
                                  h->clock.parseMinute == local.tm_min && h->clock.parseSecond == local.tm_sec);
        }
        EXPECT_TRUE(matches) << round;
    }
}

TEST(Handle, BuffersGrowOnlyForLargerInputs) {
    HandlePtr h(SVT_create());
    const std::string big(10000, 'x');
    SVT_parse(h.get(), big.data(), static_cast<int>(big.size()));
    EXPECT_EQ(h->inputCopyCapacity, 10000);
    EXPECT_EQ(h->workStoreCapacity, 10000);
    const char* work = h->workStore;
    const std::string small(100, 'y');
    SVT_parse(h.get(), small.data(), static_cast<int>(small.size()));
    EXPECT_EQ(h->workStore, work);
    EXPECT_EQ(h->inputCopyCapacity, 10000);
}

// Values are cut where the work buffer ends, and a grown handle keeps its room, so a
// reused handle may keep more of a long reading than a fresh one. This 2 KB input fills
// the default 8 KB work buffer before its reader stores the country.
TEST(Handle, GrownBuffersKeepMoreOfAValueCutAtTheEnd) {
    const std::string input = testing::readBytes(std::filesystem::path(ORVANE_SOURCE_DIR) / "tests" / "data" /
                                                 "regressions" / "virgin-islands-fills-work-buffer.txt");
    ASSERT_LT(input.size(), 2048u);
    auto countryAfter = [&](SVT_ParserHandle* h) {
        char country[64] = {};
        EXPECT_EQ(SVT_parse(h, input.data(), static_cast<int>(input.size())), SVT_OK);
        EXPECT_EQ(SVT_getCountry(h, country, sizeof country), SVT_OK);
        return std::string(country);
    };
    HandlePtr fresh(SVT_create());
    const std::string cut = countryAfter(fresh.get());
    EXPECT_EQ(fresh->record.workUsed, kMinimumBufferSize);
    HandlePtr grown(SVT_create());
    const std::string big(10000, 'x');
    SVT_parse(grown.get(), big.data(), static_cast<int>(big.size()));
    const std::string whole = countryAfter(grown.get());
    EXPECT_EQ(whole, "Virgin Islands of the U.S.");
    EXPECT_LT(cut.size(), whole.size());
    EXPECT_EQ(whole.compare(0, cut.size(), cut), 0);
}

// The argument rules every exported getter shares, shown on one of each kind.
TEST(Getters, SharedArgumentRules) {
    HandlePtr fresh(SVT_create());
    char buffer[16];
    int value = 5;
    EXPECT_EQ(SVT_getAamvaVersion(fresh.get(), buffer, 16), kErrInvalidArgument);  // no parse yet
    EXPECT_EQ(SVT_getOrganDonor(fresh.get(), &value), kErrInvalidArgument);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(SVT_validateDocumentId(fresh.get(), &value), kErrInvalidArgument);  // no scratch buffer yet
    EXPECT_EQ(value, 5);

    HandlePtr h = testing::parsedHandle();
    EXPECT_EQ(SVT_getAamvaVersion(nullptr, buffer, 16), kErrInvalidArgument);
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), nullptr, 16), kErrInvalidArgument);
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, 0), kErrInvalidArgument);
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, -1), kErrInvalidArgument);
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, 16), kErrNoAnswer);
    setFieldLiteral(&h->record, field::aamvaVersion, "08");
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, 1), kErrNoAnswer);  // only the terminator fits
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, 2), kOk);
    EXPECT_STREQ(buffer, "0");
    EXPECT_EQ(SVT_getOrganDonor(h.get(), nullptr), kErrInvalidArgument);
    EXPECT_EQ(SVT_getOrganDonor(h.get(), &value), kErrNoAnswer);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(SVT_validateJurisdictionCode(h.get(), nullptr), kErrInvalidArgument);
    EXPECT_EQ(SVT_validateBarcode(h.get(), 39, 15, 5, &value), kErrInvalidArgument);
    EXPECT_EQ(value, 5);  // left as it was
}

}  // namespace
}  // namespace orvane
