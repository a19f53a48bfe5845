#include "api/handle.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/status.h"
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
