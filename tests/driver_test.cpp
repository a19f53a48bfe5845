#include "engine/driver.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;

int32_t copyFramer(const char* input, int32_t length, char* out, int32_t capacity, int32_t* outLength) {
    const int32_t n = length < capacity ? length : capacity;
    std::memcpy(out, input, static_cast<size_t>(n));
    *outLength = n;
    return kOk;
}
int32_t refusingFramer(const char*, int32_t, char*, int32_t, int32_t*) { return -20; }

// Fills as many slots as the row's number says, starting at the first name.
template <int Slots>
int32_t fillSlots(char* text, int32_t length, ParsedRecord* record, const ParseClock*) {
    for (int i = 0; i < Slots; ++i) {
        setFieldFromSpan(record, field::lastName + static_cast<FieldId>(i), TextSpan{text, length},
                         nullptr, nullptr, '\0');
    }
    return kOk;
}
int32_t refusingParser(char*, int32_t, ParsedRecord* record, const ParseClock*) {
    setFieldLiteral(record, field::city, "LEFTOVER");
    return -5;
}
int32_t succeedsEmpty(char*, int32_t, ParsedRecord*, const ParseClock*) { return kOk; }

struct DriverRun {
    RecordWithBuffer r{256};
    char inputCopy[256] = {};
    int32_t run(std::span<const FormatDescriptor> rows, const std::string& input) {
        return parseBestFormatOf(rows, input.data(), static_cast<int32_t>(input.size()), inputCopy,
                                 sizeof inputCopy, r.get(), nullptr);
    }
};

TEST(Driver, ArgumentChecksInOrder) {
    DriverRun d;
    char copy[8];
    EXPECT_EQ(parseBestFormatOf({}, nullptr, 1, copy, 8, d.r.get(), nullptr), kErrNullInput);
    EXPECT_EQ(parseBestFormatOf({}, "A", 0, copy, 8, d.r.get(), nullptr), kErrEmptyInput);
    EXPECT_EQ(parseBestFormatOf({}, "A", 1, nullptr, 8, d.r.get(), nullptr), kErrInvalidArgument);
    EXPECT_EQ(parseBestFormatOf({}, "A", 1, copy, 0, d.r.get(), nullptr), kErrInvalidArgument);
    EXPECT_EQ(parseBestFormatOf({}, "A", 1, copy, 8, nullptr, nullptr), kErrInvalidArgument);
    ParsedRecord bare{};
    EXPECT_EQ(parseBestFormatOf({}, "A", 1, copy, 8, &bare, nullptr), kErrNoWorkBuffer);
    EXPECT_EQ(parseBestFormatOf({}, "A", 1, copy, 8, d.r.get(), nullptr), kErrNotRecognised);
}

TEST(Driver, MoreFilledSlotsWinAndTiesGoToTheEarlierRow) {
    const FormatDescriptor rows[] = {
        {0, 10, copyFramer, fillSlots<2>, nullptr, nullptr},
        {1, 11, copyFramer, fillSlots<3>, nullptr, nullptr},
        {2, 12, copyFramer, fillSlots<3>, nullptr, nullptr},
        {3, 13, copyFramer, fillSlots<1>, nullptr, nullptr},
    };
    DriverRun d;
    EXPECT_EQ(d.run(rows, "doe"), kOk);
    EXPECT_EQ(d.r.record.formatGroup, 1u);
    EXPECT_EQ(d.r.record.formatId, 11u);
    EXPECT_EQ(slotText(d.r.record, field::middleName), "DOE");  // upper-cased copy
}

TEST(Driver, RefusalsAndEmptyRecordsAreNeverCandidates) {
    const FormatDescriptor rows[] = {
        {0, 20, refusingFramer, fillSlots<5>, nullptr, nullptr},
        {0, 21, copyFramer, refusingParser, nullptr, nullptr},
        {0, 22, copyFramer, succeedsEmpty, nullptr, nullptr},
        {0, 23, copyFramer, fillSlots<1>, nullptr, nullptr},
    };
    DriverRun d;
    EXPECT_EQ(d.run(rows, "x"), kOk);
    EXPECT_EQ(d.r.record.formatId, 23u);
}

TEST(Driver, FailureLeavesTheLastAttemptUnstamped) {
    const FormatDescriptor rows[] = {
        {0, 30, copyFramer, refusingParser, nullptr, nullptr},
        {0, 31, copyFramer, succeedsEmpty, nullptr, nullptr},
        {0, 32, copyFramer, refusingParser, nullptr, nullptr},
    };
    DriverRun d;
    EXPECT_EQ(d.run(rows, "x"), kErrNotRecognised);
    EXPECT_EQ(d.r.record.formatGroup, kNoFormatGroup);
    EXPECT_EQ(d.r.record.formatId, kNoFormatId);
    EXPECT_EQ(slotText(d.r.record, field::city), "LEFTOVER");
}

TEST(Driver, WinnerIsSanitised) {
    const FormatDescriptor rows[] = {{0, 40, copyFramer, fillSlots<1>, nullptr, nullptr}};
    DriverRun d;
    ASSERT_EQ(d.run(rows, std::string("A\x01" "B", 3)), kOk);
    EXPECT_EQ(slotText(d.r.record, field::lastName), "A B");
}

TEST(Driver, TheScratchRoomIsOneLessThanTheBuffer) {
    const FormatDescriptor rows[] = {{0, 50, copyFramer, fillSlots<1>, nullptr, nullptr}};
    DriverRun d;
    const std::string input(300, 'z');
    ASSERT_EQ(d.run(rows, input), kOk);
    EXPECT_EQ(d.r.record.fields[field::lastName].length, 255);
}

}  // namespace
}  // namespace orvane

namespace orvane {
namespace {

TEST(FindAamvaHeader, VersionAfterTheIssuerNumber) {
    struct Case {
        const char* text;
        int32_t status;
        const char* version;
    };
    const Case cases[] = {
        {"@\n\x1e\rANSI 636026080102DL", kOk, "08"},
        {"@\n\x1e\rAAMVA6360260102DL", kOk, "01"},
        {"@ANSI 12AAMVA63601504XX", kOk, "04"},  // too few digits at the first marker
        {"@\n\x1e\rANSI 6360", kErrNoAnswer, ""},
        {"@234567890123", kErrNoAnswer, ""},       // 13 bytes
        {"#\n\x1e\rANSI 636026080102", kErrNoAnswer, ""},
        {"@\n\x1e\ransi 636026080102", kErrNoAnswer, ""},  // case matters
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        TextSpan version{};
        EXPECT_EQ(findAamvaHeader(c.text, static_cast<int32_t>(std::strlen(c.text)), &version), c.status);
        if (c.status == kOk) EXPECT_EQ(testing::text(version), c.version);
    }
    EXPECT_EQ(findAamvaHeader(nullptr, 20, nullptr), kErrInvalidArgument);
    EXPECT_EQ(findAamvaHeader("@", -1, nullptr), kErrInvalidArgument);
}

}  // namespace
}  // namespace orvane

namespace orvane {
namespace {

using testing::RecordWithBuffer;

int32_t framerCopy(const char* input, int32_t length, char* out, int32_t capacity, int32_t* outLength) {
    const int32_t n = length < capacity ? length : capacity;
    std::memcpy(out, input, static_cast<size_t>(n));
    *outLength = n;
    return kOk;
}

// Records of an Alberta licence (three slots) and of a Texas one with no names (two).
int32_t albertan(char*, int32_t, ParsedRecord* record, const ParseClock*) {
    setFieldLiteral(record, field::countryCode, "CAN");
    setFieldLiteral(record, field::jurisdictionCode, "AB");
    setFieldLiteral(record, field::fullName, "DOE,JOHN");
    return kOk;
}
int32_t texanWithoutNames(char*, int32_t, ParsedRecord* record, const ParseClock*) {
    setFieldLiteral(record, field::countryCode, "USA");
    setFieldLiteral(record, field::jurisdictionCode, "TX");
    return kOk;
}
int32_t threeSlots(char*, int32_t, ParsedRecord* record, const ParseClock*) {
    setFieldLiteral(record, field::city, "A");
    setFieldLiteral(record, field::address1, "B");
    setFieldLiteral(record, field::gender, "M");
    return kOk;
}

struct ScoredRun {
    RecordWithBuffer r{512};
    char inputCopy[512] = {};
    int32_t run(std::span<const FormatDescriptor> rows) {
        return parseBestFormatOf(rows, "X", 1, inputCopy, sizeof inputCopy, r.get(), nullptr);
    }
};

TEST(DriverScoring, ExpectedCountryAndJurisdiction) {
    struct Case {
        const char* name;
        std::vector<FormatDescriptor> rows;
        uint32_t winner;
    };
    const Case cases[] = {
        {"a matching country and jurisdiction beat a generic row",
         {{0, 1, framerCopy, threeSlots, nullptr, nullptr}, {0, 2, framerCopy, albertan, "CAN", "AB"}}, 2},
        {"a matching country alone is enough",
         {{0, 1, framerCopy, threeSlots, nullptr, nullptr}, {0, 2, framerCopy, albertan, "CAN", nullptr}}, 2},
        {"the wrong jurisdiction loses",
         {{0, 1, framerCopy, threeSlots, nullptr, nullptr}, {0, 2, framerCopy, albertan, "CAN", "BC"}}, 1},
        {"the wrong country loses",
         {{0, 1, framerCopy, threeSlots, nullptr, nullptr}, {0, 2, framerCopy, albertan, "AUS", nullptr}}, 1},
        {"a lone candidate with a negative score still wins",
         {{0, 7, framerCopy, texanWithoutNames, "CAN", "AB"}}, 7},
        {"missing names cost a matching row its lead",
         {{0, 1, framerCopy, threeSlots, nullptr, nullptr}, {0, 2, framerCopy, texanWithoutNames, "USA", nullptr}}, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ScoredRun d;
        ASSERT_EQ(d.run(c.rows), kOk);
        EXPECT_EQ(d.r.record.formatId, c.winner);
    }
}

}  // namespace
}  // namespace orvane
