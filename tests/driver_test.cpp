// The driver on rows made up here: which row wins and what the record holds after a
// win or a failure. The equivalence test holds it to the plain algorithm on real rows.
#include "engine/driver.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "aamva/engine.h"
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

// Fills as many slots as the row's number says, starting at the last name.
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

struct DriverRun {
    RecordWithBuffer r{256};
    char inputCopy[256] = {};
    char framings[512] = {};
    int32_t run(std::span<const FormatDescriptor> rows, const std::string& input = "x") {
        return parseBestFormatOf(rows, input.data(), static_cast<int32_t>(input.size()),
                                 ParseBuffers{inputCopy, sizeof inputCopy, framings}, r.get(), nullptr);
    }
};

TEST(Driver, ArgumentChecksInOrder) {
    DriverRun d;
    char copy[8];
    char framings[16];
    const ParseBuffers buffers{copy, 8, framings};
    EXPECT_EQ(parseBestFormatOf({}, nullptr, 1, buffers, d.r.get(), nullptr), kErrNullInput);
    EXPECT_EQ(parseBestFormatOf({}, "A", 0, buffers, d.r.get(), nullptr), kErrEmptyInput);
    EXPECT_EQ(parseBestFormatOf({}, "A", 1, ParseBuffers{nullptr, 8, framings}, d.r.get(), nullptr), kErrInvalidArgument);
    EXPECT_EQ(parseBestFormatOf({}, "A", 1, ParseBuffers{copy, 0, framings}, d.r.get(), nullptr), kErrInvalidArgument);
    EXPECT_EQ(parseBestFormatOf({}, "A", 1, ParseBuffers{copy, 8, nullptr}, d.r.get(), nullptr), kErrInvalidArgument);
    EXPECT_EQ(parseBestFormatOf({}, "A", 1, buffers, nullptr, nullptr), kErrInvalidArgument);
    ParsedRecord bare{};
    EXPECT_EQ(parseBestFormatOf({}, "A", 1, buffers, &bare, nullptr), kErrNoWorkBuffer);
    EXPECT_EQ(parseBestFormatOf({}, "A", 1, buffers, d.r.get(), nullptr), kErrNotRecognised);
}

TEST(Driver, TheWinningRow) {
    struct Case {
        const char* name;
        std::vector<FormatDescriptor> rows;
        uint32_t winner;
    };
    const FormatDescriptor threeSlots{0, 1, copyFramer, fillSlots<3>, nullptr, nullptr};
    const Case cases[] = {
        {"more slots win, ties go to the earlier row",
         {{0, 10, copyFramer, fillSlots<2>, nullptr, nullptr}, {0, 11, copyFramer, fillSlots<3>, nullptr, nullptr},
          {0, 12, copyFramer, fillSlots<3>, nullptr, nullptr}, {0, 13, copyFramer, fillSlots<1>, nullptr, nullptr}},
         11},
        {"refusals and empty records are never candidates",
         {{0, 20, refusingFramer, fillSlots<5>, nullptr, nullptr}, {0, 21, copyFramer, refusingParser, nullptr, nullptr},
          {0, 22, copyFramer, succeedsEmpty, nullptr, nullptr}, {0, 23, copyFramer, fillSlots<1>, nullptr, nullptr}},
         23},
        {"a matching country and jurisdiction beat a generic row",
         {threeSlots, {0, 2, copyFramer, albertan, "CAN", "AB"}}, 2},
        {"a matching country alone is enough", {threeSlots, {0, 2, copyFramer, albertan, "CAN", nullptr}}, 2},
        {"the wrong jurisdiction loses", {threeSlots, {0, 2, copyFramer, albertan, "CAN", "BC"}}, 1},
        {"the wrong country loses", {threeSlots, {0, 2, copyFramer, albertan, "AUS", nullptr}}, 1},
        {"a lone candidate with a negative score still wins", {{0, 7, copyFramer, texanWithoutNames, "CAN", "AB"}}, 7},
        {"missing names cost a matching row its lead",
         {threeSlots, {0, 2, copyFramer, texanWithoutNames, "USA", nullptr}}, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        DriverRun d;
        ASSERT_EQ(d.run(c.rows), kOk);
        EXPECT_EQ(d.r.record.formatId, c.winner);
    }
}

TEST(Driver, TheWinnersRecord) {
    const FormatDescriptor one[] = {{1, 40, copyFramer, fillSlots<3>, nullptr, nullptr}};
    DriverRun d;
    ASSERT_EQ(d.run(one, std::string("a\x01" "b", 3)), kOk);
    EXPECT_EQ(d.r.record.formatGroup, 1u);
    EXPECT_EQ(slotText(d.r.record, field::lastName), "A B");  // an upper-cased copy, sanitised
    DriverRun longInput;
    ASSERT_EQ(longInput.run(one, std::string(300, 'z')), kOk);
    EXPECT_EQ(longInput.r.record.fields[field::lastName].length, 255);  // the room is one less than the buffer
}

TEST(Driver, FailureLeavesTheLastAttemptUnstamped) {
    const FormatDescriptor rows[] = {
        {0, 30, copyFramer, refusingParser, nullptr, nullptr},
        {0, 31, copyFramer, succeedsEmpty, nullptr, nullptr},
        {0, 32, copyFramer, refusingParser, nullptr, nullptr},
    };
    DriverRun d;
    EXPECT_EQ(d.run(rows), kErrNotRecognised);
    EXPECT_EQ(d.r.record.formatGroup, kNoFormatGroup);
    EXPECT_EQ(d.r.record.formatId, kNoFormatId);
    EXPECT_EQ(slotText(d.r.record, field::city), "LEFTOVER");
}

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
        if (c.status == kOk) {
            EXPECT_EQ(testing::text(version), c.version);
        }
    }
    EXPECT_EQ(findAamvaHeader(nullptr, 20, nullptr), kErrInvalidArgument);
    EXPECT_EQ(findAamvaHeader("@", -1, nullptr), kErrInvalidArgument);
}

}  // namespace
}  // namespace orvane
