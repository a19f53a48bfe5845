#include "api/handle.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::HandlePtr;

HandlePtr newHandle() { return HandlePtr(SVT_create()); }

TEST(Handle, StartsEmpty) {
    HandlePtr h = newHandle();
    ASSERT_NE(h, nullptr);
    EXPECT_EQ(h->inputCopy, nullptr);
    EXPECT_EQ(h->workStore, nullptr);
    EXPECT_EQ(h->inputCopyCapacity, 0);
    EXPECT_EQ(h->clock.parseYear, 0);
    EXPECT_EQ(h->record.workBuffer, nullptr);
    SVT_delete(nullptr);
}

TEST(Handle, ParseRefusesBadArgumentsWithoutTouchingTheHandle) {
    HandlePtr h = newHandle();
    const char input[] = "ABC";
    EXPECT_EQ(SVT_parse(nullptr, input, 3), kErrInvalidArgument);
    EXPECT_EQ(SVT_parse(h.get(), input, 0), kErrInvalidArgument);
    EXPECT_EQ(SVT_parse(h.get(), input, -5), kErrInvalidArgument);
    EXPECT_EQ(h->inputCopy, nullptr);
    EXPECT_EQ(h->clock.parseYear, 0);
}

TEST(Handle, FirstParseSetsUpBuffersAndClock) {
    HandlePtr h = newHandle();
    const std::string input = "nothing the library knows";
    const int status = SVT_parse(h.get(), input.data(), static_cast<int>(input.size()));
    EXPECT_LT(status, 0);
    EXPECT_EQ(h->inputCopyCapacity, kMinimumBufferSize);
    EXPECT_EQ(h->workStoreCapacity, kMinimumBufferSize);
    EXPECT_EQ(h->record.workBuffer, h->workStore);
    EXPECT_EQ(h->record.workCapacity, kMinimumBufferSize);
    EXPECT_GE(h->clock.parseYear, 2024);
    EXPECT_GE(h->clock.parseMonth, 1);
    EXPECT_LE(h->clock.parseMonth, 12);
    EXPECT_GE(h->clock.parseDay, 1);
    EXPECT_LE(h->clock.parseDay, 31);
}

TEST(Handle, NullDataIsReportedByTheDriverAfterSetUp) {
    HandlePtr h = newHandle();
    EXPECT_EQ(SVT_parse(h.get(), nullptr, 10), kErrNullInput);
    EXPECT_NE(h->workStore, nullptr);
}

TEST(Handle, BuffersGrowOnlyForLargerInputs) {
    HandlePtr h = newHandle();
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

TEST(Getters, ArgumentChecks) {
    HandlePtr h = newHandle();
    char buffer[16];
    EXPECT_EQ(SVT_getAamvaVersion(nullptr, buffer, 16), kErrInvalidArgument);
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, 16), kErrInvalidArgument);  // no parse yet
    const char input[] = "XYZ";
    SVT_parse(h.get(), input, 3);
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, 0), kErrInvalidArgument);
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, -1), kErrInvalidArgument);
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), nullptr, 16), kErrInvalidArgument);
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, 16), kErrNoAnswer);
    setFieldLiteral(&h->record, field::aamvaVersion, "08");
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, 1), kErrNoAnswer);  // only the terminator fits
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, 2), kOk);
    EXPECT_STREQ(buffer, "0");
    EXPECT_EQ(SVT_getAamvaVersion(h.get(), buffer, 16), kOk);
    EXPECT_STREQ(buffer, "08");
}

TEST(Versions, NumbersAndText) {
    EXPECT_EQ(SVT_getMajorVersion(), 1);
    EXPECT_EQ(SVT_getMinorVersion(), 26);
    EXPECT_EQ(SVT_getBuildVersion(), 0);
    EXPECT_STREQ(kVersionText, "v.1.26.0");
}

}  // namespace
}  // namespace orvane
