#include "engine/record.h"

#include <gtest/gtest.h>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;
using testing::span;

std::string written(const char* out, int32_t n) { return std::string(out, static_cast<size_t>(n)); }

TEST(CopyOperations, FilterReplacesDropsAndCollapses) {
    struct Case {
        const char* input;
        const char* replaceSet;
        const char* collapseSet;
        char replaceChar;
        int32_t cap;
        const char* expected;
    };
    const Case cases[] = {
        {"SMITH,,JOHN", ",", ", ", ' ', 64, "SMITH JOHN"},  // the name workers' setting
        {"SMITH,,JOHN", ",", nullptr, '\0', 64, "SMITHJOHN"},
        {"AA--BB", nullptr, "-", '\0', 64, "AA-BB"},  // only set members collapse
        {"A  B", nullptr, " ", '\0', 64, "A B"},
        {"ABCDEF", nullptr, nullptr, '\0', 3, "ABC"},
        {"A-B", "-", "", '_', 64, "A_B"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.input);
        char out[64] = {};
        const std::string in = c.input;
        EXPECT_EQ(written(out, copyFiltered(out, c.cap, span(in), c.replaceSet, c.collapseSet, c.replaceChar)),
                  c.expected);
    }
}

TEST(CopyOperations, ZeroFormsTerminateOrWriteNothing) {
    char out[8];
    std::memset(out, 'x', sizeof out);
    EXPECT_EQ(copyFilteredZ(out, 4, makeSpan("ABCDEF"), nullptr, nullptr, '\0'), 4);
    EXPECT_STREQ(out, "ABC");
    std::memset(out, 'x', sizeof out);
    EXPECT_EQ(copyFilteredZ(out, 1, makeSpan("AB"), nullptr, nullptr, '\0'), 0);
    EXPECT_EQ(copyFilteredZ(out, 8, makeSpan(",,"), ",", nullptr, '\0'), 0);
    EXPECT_EQ(out[0], 'x');
    EXPECT_EQ(copyLiteralZ(out, 8, "DL"), 3);
    EXPECT_STREQ(out, "DL");
}

TEST(CopyOperations, MappedUsesTests) {
    char out[32] = {};
    const std::string in = "A\x01\x02" "B  C";
    auto isControl = [](int c) { return c < 0x20 ? 1 : 0; };
    auto isBlank = [](int c) { return c == ' ' ? 1 : 0; };
    EXPECT_EQ(written(out, copyMapped(out, 32, span(in), isControl, isBlank, ' ')), "A B C");
    EXPECT_EQ(written(out, copyMapped(out, 32, span(in), isControl, nullptr, '\0')), "AB  C");
    EXPECT_EQ(copyMappedZ(out, 3, span(in), isControl, nullptr, '\0'), 3);
    EXPECT_STREQ(out, "AB");
}

TEST(CopyOperations, JoinWritesSeparatorsBetweenUsableSpans) {
    const TextSpan spans[] = {makeSpan("JOHN"), TextSpan{nullptr, 0}, makeSpan("Q"), makeSpan(""),
                              makeSpan("PUBLIC")};
    char out[32] = {};
    EXPECT_EQ(written(out, joinSpans(out, 32, spans, 5, " ", nullptr, nullptr, '\0')), "JOHN Q PUBLIC");
    // The separator stands even when the following span yields no character.
    const TextSpan dropped[] = {makeSpan("A"), makeSpan(",,")};
    EXPECT_EQ(written(out, joinSpans(out, 32, dropped, 2, "-", ",", nullptr, '\0')), "A-");
    // A separator that fills the room ends the join.
    EXPECT_EQ(written(out, joinSpans(out, 5, spans, 5, "++", nullptr, nullptr, '\0')), "JOHN+");
    EXPECT_EQ(joinSpansZ(out, 7, spans, 5, " ", nullptr, nullptr, '\0'), 7);
    EXPECT_STREQ(out, "JOHN Q");
}

TEST(FieldStore, ValuesAreStoredBackToBackWithTerminators) {
    RecordWithBuffer r(64);
    setFieldLiteral(r.get(), field::firstName, "JOHN");
    setFieldLiteral(r.get(), field::lastName, "DOE");
    EXPECT_EQ(std::memcmp(r.buffer.data(), "JOHN\0DOE\0", 9), 0);
    EXPECT_EQ(r.record.workUsed, 9);
    // Setting again keeps both copies; the slot points at the later one.
    setFieldLiteral(r.get(), field::firstName, "JANE");
    EXPECT_EQ(slotText(r.record, field::firstName), "JANE");
    EXPECT_EQ(r.record.workUsed, 14);
    // Ids run to 139; anything above is refused without storing.
    EXPECT_NE(setFieldLiteral(r.get(), 139, "08"), nullptr);
    EXPECT_EQ(slotText(r.record, field::aamvaVersion), "08");
    const int32_t used = r.record.workUsed;
    EXPECT_EQ(setFieldLiteral(r.get(), 140, "X"), nullptr);
    EXPECT_EQ(setFieldLiteral(r.get(), static_cast<FieldId>(-1), "X"), nullptr);
    const DateValue date{2024, 1, 2, 0, 0, 0};
    EXPECT_EQ(setFieldDate(r.get(), 140, &date), nullptr);
    EXPECT_EQ(r.record.workUsed, used);
}

TEST(FieldStore, TruncatesAtTheEndOfTheBufferAndThenClears) {
    RecordWithBuffer r(20);
    setFieldLiteral(r.get(), field::city, "ABCDEFGHI");  // 9 + NUL: 10 bytes left
    ASSERT_NE(setFieldLiteral(r.get(), field::lastName, "ABCDEFGHIJKL"), nullptr);
    EXPECT_EQ(slotText(r.record, field::lastName), "ABCDEFGHIJ");
    EXPECT_EQ(r.record.workUsed, 20);  // no room left for a terminator
    setFieldLiteral(r.get(), field::firstName, "JOHN");
    EXPECT_EQ(fieldMissing(r.get(), field::firstName), -1);
    EXPECT_EQ(r.record.fields[field::firstName].data, nullptr);
    // A value that ends in the second-to-last byte gets no terminator either.
    RecordWithBuffer ten(10);
    setFieldLiteral(ten.get(), field::city, "ABCDEFGHI");
    EXPECT_EQ(ten.record.workUsed, 9);
    EXPECT_EQ(slotText(ten.record, field::city), "ABCDEFGHI");
}

TEST(FieldStore, EmptyResultClearsTheSlot) {
    RecordWithBuffer r(64);
    setFieldLiteral(r.get(), field::firstName, "JOHN");
    const int32_t used = r.record.workUsed;
    setFieldFromSpan(r.get(), field::firstName, makeSpan("---"), "-", nullptr, '\0');
    EXPECT_EQ(fieldMissing(r.get(), field::firstName), -1);
    EXPECT_EQ(r.record.workUsed, used);
    auto nothing = [](const void*, char*, int32_t) -> int32_t { return 0; };
    setFieldLiteral(r.get(), field::fullName, "DOE");
    setFieldProduced(r.get(), field::fullName, nullptr, nothing);
    EXPECT_EQ(fieldMissing(r.get(), field::fullName), -1);
    EXPECT_EQ(setFieldProduced(r.get(), field::fullName, nullptr, nullptr), nullptr);
}

TEST(FieldStore, JoinedValueOccupiesItsLengthPlusTwo) {
    RecordWithBuffer r(64);
    const TextSpan parts[] = {makeSpan("JOHN"), makeSpan("DOE")};
    ASSERT_NE(setFieldJoined(r.get(), field::fullName, parts, 2, " ", nullptr, nullptr, '\0'), nullptr);
    EXPECT_EQ(slotText(r.record, field::fullName), "JOHN DOE");
    EXPECT_EQ(r.record.workUsed, 8 + 2);
    setFieldLiteral(r.get(), field::city, "X");
    EXPECT_EQ(r.record.fields[field::city].data, r.buffer.data() + 10);
}

TEST(FieldStore, DateSetter) {
    RecordWithBuffer r(64);
    const DateValue date{2024, 2, 29, 0, 0, 0};
    setFieldDate(r.get(), field::birthdate, &date);
    EXPECT_EQ(slotText(r.record, field::birthdate), "20240229");
    EXPECT_EQ(r.record.workUsed, 9);
    // A component wider than its field leaves the reset buffer's zero bytes in place.
    const DateValue wide{12345, 1, 2, 0, 0, 0};
    setFieldDate(r.get(), field::issueDate, &wide);
    EXPECT_EQ(slotText(r.record, field::issueDate), std::string("\0\0\0\0" "0102", 8));
    const DateValue early{999, 7, 4, 0, 0, 0};
    setFieldDate(r.get(), field::expirationDate, &early);
    EXPECT_EQ(slotText(r.record, field::expirationDate), "09990704");
}

TEST(FieldStore, DateSetterKeepsOldValueWhenRoomIsShort) {
    RecordWithBuffer r(16);
    const DateValue date{2024, 2, 29, 0, 0, 0};
    setFieldDate(r.get(), field::birthdate, &date);  // 9 bytes used, 7 left
    ASSERT_EQ(r.record.workUsed, 9);
    const DateValue other{1999, 1, 1, 0, 0, 0};
    EXPECT_EQ(setFieldDate(r.get(), field::birthdate, &other), nullptr);
    EXPECT_EQ(slotText(r.record, field::birthdate), "20240229");
    EXPECT_EQ(r.record.workUsed, 9);
}

TEST(FieldStore, FirstFilledFieldInListOrder) {
    RecordWithBuffer r(64);
    setFieldLiteral(r.get(), field::residenceCity, "AUSTIN");
    const FieldId cities[] = {field::city, field::residenceCity};
    TextSpan out{};
    EXPECT_EQ(firstFilledField(r.get(), cities, &out), kOk);
    EXPECT_EQ(testing::text(out), "AUSTIN");
    setFieldLiteral(r.get(), field::city, "DALLAS");
    EXPECT_EQ(firstFilledField(r.get(), cities, &out), kOk);
    EXPECT_EQ(testing::text(out), "DALLAS");
    EXPECT_EQ(firstFilledField(r.get(), cities, 0, &out), kErrNoneFilled);
    EXPECT_EQ(fieldMissing(r.get(), 500), -1);
}

TEST(FieldStore, ResetAttachAndSanitize) {
    RecordWithBuffer r(32);
    setFieldLiteral(r.get(), field::city, "A\x01" "B\x7F" "C\xC3");
    EXPECT_EQ(slotText(r.record, field::city), "A\x01" "B\x7F" "C\xC3");  // as stored while scoring
    sanitizeWorkBuffer(r.get());
    EXPECT_EQ(slotText(r.record, field::city), "A B C ");
    EXPECT_EQ(r.buffer[6], '\0');  // terminators stay
    r.record.formatGroup = 0;
    r.record.formatId = 42;
    EXPECT_EQ(resetRecord(r.get()), kOk);
    EXPECT_EQ(r.record.formatGroup, 6u);
    EXPECT_EQ(r.record.formatId, 68u);
    EXPECT_EQ(r.record.workUsed, 0);
    EXPECT_EQ(fieldMissing(r.get(), field::city), -1);
    for (char c : r.buffer) EXPECT_EQ(c, 0);
    ParsedRecord bare{};
    EXPECT_EQ(resetRecord(&bare), kErrInvalidArgument);
    char buffer[4];
    EXPECT_EQ(attachWorkBuffer(&bare, buffer, 0), kErrInvalidArgument);
    EXPECT_EQ(attachWorkBuffer(&bare, buffer, 4), kOk);
    EXPECT_EQ(bare.formatId, 68u);
}

TEST(SpanSkip, AdvancesOrStopsOnTheLastCharacter) {
    const char* text = "ABCDE";
    TextSpan s{text, 5};
    spanSkip(&s, 2);
    EXPECT_EQ(s.data, text + 2);
    EXPECT_EQ(s.length, 3);
    spanSkip(&s, 3);  // deliberately points at the last character, not past it
    EXPECT_EQ(s.data, text + 4);
    EXPECT_EQ(s.length, 0);
    spanSkip(&s, 1);
    EXPECT_EQ(s.data, text + 4);
}

TEST(FormatInt, WidthsPaddingAndSigns) {
    struct Case {
        int64_t value;
        int32_t width;
        int zeroPad;
        const char* expected;
    };
    const Case cases[] = {
        {7, 2, 1, "07"},   {2024, 4, 1, "2024"}, {2024, 3, 1, ""},     {0, 1, 0, "0"},
        {-5, 3, 1, "-05"}, {-5, 3, 0, "-5"},     {-5, 1, 0, ""},       {82, 8, 0, "82"},
        {INT64_MIN, 20, 0, "-9223372036854775808"}, {123, 0, 0, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.value);
        char out[32] = {};
        EXPECT_EQ(written(out, formatInt(c.value, out, c.width, c.zeroPad)), c.expected);
    }
}

}  // namespace
}  // namespace orvane
