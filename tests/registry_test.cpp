// The registry against the full table of the 68 rows it must hold, row by row: the
// order decides ties, so it is checked as strictly as the rows themselves.
#include "engine/registry.h"

#include <gtest/gtest.h>

#include <iterator>

#include "engine/framers.h"

namespace orvane {
namespace {

struct ExpectedRow {
    uint32_t formatGroup;
    uint32_t formatId;
    Framer framer;
    const char* expectedCountry;
    const char* expectedJurisdiction;
};

// Every row in trial order.
constexpr ExpectedRow kExpectedRows[] = {
    {1, 0, frameBarcodeText, nullptr, nullptr},  // row 0
    {1, 1, frameBarcodeText, nullptr, nullptr},  // row 1
    {1, 2, frameBarcodeText, nullptr, nullptr},  // row 2
    {1, 4, frameBarcodeText, nullptr, nullptr},  // row 3
    {1, 5, frameBarcodeText, nullptr, nullptr},  // row 4
    {1, 6, frameBarcodeText, nullptr, nullptr},  // row 5
    {1, 9, frameBarcodeText, nullptr, nullptr},  // row 6
    {1, 11, frameBarcodeText, nullptr, nullptr},  // row 7
    {1, 3, frameBarcodeText, nullptr, nullptr},  // row 8
    {1, 7, frameBarcodeText, nullptr, nullptr},  // row 9
    {1, 8, frameBarcodeText, "CAN", nullptr},  // row 10
    {1, 10, frameBarcodeText, nullptr, nullptr},  // row 11
    {1, 12, frameBarcodeText, nullptr, nullptr},  // row 12
    {1, 13, frameBarcodeText, nullptr, nullptr},  // row 13
    {1, 14, frameBarcodeText, nullptr, nullptr},  // row 14
    {1, 15, frameBarcodeText, "AUS", nullptr},  // row 15
    {1, 16, frameBarcodeText, nullptr, nullptr},  // row 16
    {0, 40, frameBarcodeText, nullptr, nullptr},  // row 17
    {0, 17, frameBarcodeText, nullptr, nullptr},  // row 18
    {0, 18, frameBarcodeText, nullptr, nullptr},  // row 19
    {0, 19, frameBarcodeText, nullptr, nullptr},  // row 20
    {0, 20, frameBarcodeText, nullptr, nullptr},  // row 21
    {0, 21, frameBarcodeText, nullptr, nullptr},  // row 22
    {0, 22, frameBarcodeText, nullptr, "NC"},  // row 23
    {0, 23, frameBarcodeText, nullptr, "NC"},  // row 24
    {0, 24, frameBarcodeText, nullptr, nullptr},  // row 25
    {0, 25, frameBarcodeText, nullptr, "AR"},  // row 26
    {0, 26, frameBarcodeText, nullptr, nullptr},  // row 27
    {0, 27, frameBarcodeText, "CAN", nullptr},  // row 28
    {0, 28, framePassThrough, "CAN", "AB"},  // row 29
    {0, 29, frameBarcodeText, nullptr, nullptr},  // row 30
    {0, 30, frameBarcodeText, nullptr, nullptr},  // row 31
    {0, 31, frameBarcodeText, nullptr, nullptr},  // row 32
    {0, 32, frameBarcodeText, nullptr, nullptr},  // row 33
    {0, 33, frameBarcodeText, "CAN", "AB"},  // row 34
    {0, 34, framePassThrough, "CAN", "AB"},  // row 35
    {0, 35, frameBarcodeTextStrict, "CAN", "AB"},  // row 36
    {0, 45, frameBarcodeText, "CAN", nullptr},  // row 37
    {0, 36, frameBarcodeText, nullptr, "SL"},  // row 38
    {0, 37, frameBarcodeText, nullptr, nullptr},  // row 39
    {0, 38, frameBarcodeText, nullptr, nullptr},  // row 40
    {0, 39, frameBarcodeText, nullptr, nullptr},  // row 41
    {0, 41, frameBarcodeText, nullptr, nullptr},  // row 42
    {0, 42, frameBarcodeText, nullptr, nullptr},  // row 43
    {0, 43, frameBarcodeText, nullptr, nullptr},  // row 44
    {0, 44, frameBarcodeText, nullptr, nullptr},  // row 45
    {0, 46, frameBarcodeText, nullptr, nullptr},  // row 46
    {0, 47, frameBarcodeText, "CAN", "AB"},  // row 47
    {2, 48, framePassThrough, nullptr, nullptr},  // row 48
    {2, 49, frameBarcodeText, nullptr, nullptr},  // row 49
    {2, 50, frameBarcodeText, nullptr, nullptr},  // row 50
    {3, 51, frameBarcodeText, nullptr, nullptr},  // row 51
    {3, 52, frameBarcodeText, nullptr, nullptr},  // row 52
    {3, 54, frameBarcodeText, nullptr, nullptr},  // row 53
    {3, 53, frameBarcodeText, nullptr, nullptr},  // row 54
    {3, 55, frameBarcodeText, nullptr, nullptr},  // row 55
    {4, 56, framePassThrough, "GTM", nullptr},  // row 56
    {4, 57, framePassThrough, "PRI", nullptr},  // row 57
    {4, 58, framePassThrough, "PAN", nullptr},  // row 58
    {4, 59, framePassThrough, "ZAF", nullptr},  // row 59
    {4, 60, framePassThrough, "MEX", nullptr},  // row 60
    {4, 61, frameLatin1, "MEX", nullptr},  // row 61
    {4, 62, framePassThrough, nullptr, nullptr},  // row 62
    {4, 63, framePassThrough, nullptr, nullptr},  // row 63
    {5, 64, frameMrz, nullptr, nullptr},  // row 64
    {5, 65, frameMrz, nullptr, nullptr},  // row 65
    {5, 66, frameMrz, nullptr, nullptr},  // row 66
    {5, 67, frameMrz, nullptr, nullptr},  // row 67
};
static_assert(std::size(kExpectedRows) == 68);

TEST(Registry, EveryRowInItsPlace) {
    const auto rows = formatRegistry();
    ASSERT_EQ(rows.size(), std::size(kExpectedRows));
    for (size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(i);
        const FormatDescriptor& row = rows[i];
        const ExpectedRow& expected = kExpectedRows[i];
        EXPECT_EQ(row.formatId, expected.formatId);
        EXPECT_EQ(row.formatGroup, expected.formatGroup);
        EXPECT_EQ(row.framer, expected.framer);
        EXPECT_NE(row.parser, nullptr);
        EXPECT_STREQ(row.expectedCountry, expected.expectedCountry);  // both null, or the same text
        EXPECT_STREQ(row.expectedJurisdiction, expected.expectedJurisdiction);
    }
}

}  // namespace
}  // namespace orvane
