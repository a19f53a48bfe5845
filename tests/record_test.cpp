#include "engine/record.h"

#include <gtest/gtest.h>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;
using testing::span;

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
        {"A  B", nullptr, " ", '\0', 64, "A B"},
        {"AA--BB", nullptr, "-", '\0', 64, "AA-BB"},  // only set members collapse
        {"ABCDEF", nullptr, nullptr, '\0', 3, "ABC"},
        {"A-B", "-", "", '_', 64, "A_B"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.input);
        char out[64] = {};
        const std::string in = c.input;
        const int32_t n = copyFiltered(out, c.cap, span(in), c.replaceSet, c.collapseSet, c.replaceChar);
        EXPECT_EQ(std::string(out, static_cast<size_t>(n)), c.expected);
    }
}

TEST(CopyOperations, ZeroFormsTerminateOrWriteNothing) {
    char out[8];
    std::memset(out, 'x', sizeof out);
    EXPECT_EQ(copyFilteredZ(out, 4, makeSpan("ABCDEF"), nullptr, nullptr, '\0'), 4);
    EXPECT_STREQ(out, "ABC");
    std::memset(out, 'x', sizeof out);
    EXPECT_EQ(copyFilteredZ(out, 1, makeSpan("AB"), nullptr, nullptr, '\0'), 0);
    EXPECT_EQ(out[0], 'x');
    EXPECT_EQ(copyFilteredZ(out, 8, makeSpan(",,"), ",", nullptr, '\0'), 0);
    EXPECT_EQ(out[0], 'x');
    EXPECT_EQ(copyLiteralZ(out, 8, "DL"), 3);
    EXPECT_STREQ(out, "DL");
    EXPECT_EQ(copyLiteralZ(out, 8, nullptr), 0);
    EXPECT_EQ(copyFiltered(nullptr, 8, makeSpan("A"), nullptr, nullptr, '\0'), 0);
    EXPECT_EQ(copyFiltered(out, 0, makeSpan("A"), nullptr, nullptr, '\0'), 0);
}

TEST(CopyOperations, MappedUsesTests) {
    char out[32] = {};
    const std::string in = "A\x01\x02" "B  C";
    auto isControl = [](int c) { return c < 0x20 ? 1 : 0; };
    auto isBlank = [](int c) { return c == ' ' ? 1 : 0; };
    int32_t n = copyMapped(out, 32, span(in), isControl, isBlank, ' ');
    EXPECT_EQ(std::string(out, static_cast<size_t>(n)), "A B C");
    n = copyMapped(out, 32, span(in), isControl, nullptr, '\0');
    EXPECT_EQ(std::string(out, static_cast<size_t>(n)), "AB  C");
    EXPECT_EQ(copyMappedZ(out, 3, span(in), isControl, nullptr, '\0'), 3);
    EXPECT_STREQ(out, "AB");
}

TEST(CopyOperations, JoinWritesSeparatorsBetweenUsableSpans) {
    const TextSpan spans[] = {makeSpan("JOHN"), TextSpan{nullptr, 0}, makeSpan("Q"), makeSpan(""),
                              makeSpan("PUBLIC")};
    char out[32] = {};
    int32_t n = joinSpans(out, 32, spans, 5, " ", nullptr, nullptr, '\0');
    EXPECT_EQ(std::string(out, static_cast<size_t>(n)), "JOHN Q PUBLIC");
    // The separator stands even when the following span yields no character.
    const TextSpan dropped[] = {makeSpan("A"), makeSpan(",,")};
    n = joinSpans(out, 32, dropped, 2, "-", ",", nullptr, '\0');
    EXPECT_EQ(std::string(out, static_cast<size_t>(n)), "A-");
    // A separator that fills the room ends the join.
    n = joinSpans(out, 5, spans, 5, "++", nullptr, nullptr, '\0');
    EXPECT_EQ(std::string(out, static_cast<size_t>(n)), "JOHN+");
    EXPECT_EQ(joinSpansZ(out, 7, spans, 5, " ", nullptr, nullptr, '\0'), 7);
    EXPECT_STREQ(out, "JOHN Q");
}

TEST(FieldStore, ValuesAreStoredBackToBackWithTerminators) {
    RecordWithBuffer r(64);
    ASSERT_NE(setFieldLiteral(r.get(), field::firstName, "JOHN"), nullptr);
    ASSERT_NE(setFieldLiteral(r.get(), field::lastName, "DOE"), nullptr);
    EXPECT_EQ(slotText(r.record, field::firstName), "JOHN");
    EXPECT_EQ(slotText(r.record, field::lastName), "DOE");
    EXPECT_EQ(std::memcmp(r.buffer.data(), "JOHN\0DOE\0", 9), 0);
    EXPECT_EQ(r.record.workUsed, 9);
    // Setting again keeps both copies; the slot points at the later one.
    setFieldLiteral(r.get(), field::firstName, "JANE");
    EXPECT_EQ(slotText(r.record, field::firstName), "JANE");
    EXPECT_EQ(r.record.workUsed, 14);
}

TEST(FieldStore, FieldIdRange) {
    RecordWithBuffer r(64);
    EXPECT_NE(setFieldLiteral(r.get(), 139, "08"), nullptr);
    EXPECT_EQ(slotText(r.record, field::aamvaVersion), "08");
    const int32_t used = r.record.workUsed;
    EXPECT_EQ(setFieldLiteral(r.get(), 140, "X"), nullptr);
    EXPECT_EQ(setFieldLiteral(r.get(), static_cast<FieldId>(-1), "X"), nullptr);
    EXPECT_EQ(r.record.workUsed, used);
    EXPECT_EQ(setFieldLiteral(nullptr, 1, "X"), nullptr);
    EXPECT_EQ(setFieldLiteral(r.get(), 1, nullptr), nullptr);
    const DateValue date{2024, 1, 2, 0, 0, 0};
    EXPECT_EQ(setFieldDate(r.get(), 140, &date), nullptr);
    EXPECT_EQ(setFieldDate(r.get(), 10, nullptr), nullptr);
}

TEST(FieldStore, TruncatesAtTheEndOfTheBufferAndThenClears) {
    RecordWithBuffer r(20);
    setFieldLiteral(r.get(), field::city, "ABCDEFGHI");  // 9 + NUL: 10 bytes left
    ASSERT_EQ(r.record.workUsed, 10);
    FieldSlot* slot = setFieldLiteral(r.get(), field::lastName, "ABCDEFGHIJKL");
    ASSERT_NE(slot, nullptr);
    EXPECT_EQ(slotText(r.record, field::lastName), "ABCDEFGHIJ");
    EXPECT_EQ(r.record.workUsed, 20);  // no room left for a terminator
    setFieldLiteral(r.get(), field::firstName, "JOHN");
    EXPECT_EQ(fieldMissing(r.get(), field::firstName), -1);
    EXPECT_EQ(r.record.fields[field::firstName].data, nullptr);
}

TEST(FieldStore, ValueEndingInTheSecondToLastByteHasNoTerminator) {
    RecordWithBuffer r(10);
    setFieldLiteral(r.get(), field::city, "ABCDEFGHI");
    EXPECT_EQ(r.record.workUsed, 9);
    EXPECT_EQ(slotText(r.record, field::city), "ABCDEFGHI");
}

TEST(FieldStore, EmptyResultClearsTheSlot) {
    RecordWithBuffer r(64);
    setFieldLiteral(r.get(), field::firstName, "JOHN");
    const int32_t used = r.record.workUsed;
    setFieldFromSpan(r.get(), field::firstName, makeSpan("---"), "-", nullptr, '\0');
    EXPECT_EQ(fieldMissing(r.get(), field::firstName), -1);
    EXPECT_EQ(r.record.workUsed, used);
    setFieldLiteral(r.get(), field::lastName, "");
    EXPECT_EQ(fieldMissing(r.get(), field::lastName), -1);
}

TEST(FieldStore, JoinedValueOccupiesItsLengthPlusTwo) {
    RecordWithBuffer r(64);
    const TextSpan parts[] = {makeSpan("JOHN"), makeSpan("DOE")};
    FieldSlot* slot = setFieldJoined(r.get(), field::fullName, parts, 2, " ", nullptr, nullptr, '\0');
    ASSERT_NE(slot, nullptr);
    EXPECT_EQ(slotText(r.record, field::fullName), "JOHN DOE");
    EXPECT_EQ(r.record.workUsed, 8 + 2);
    setFieldLiteral(r.get(), field::city, "X");
    EXPECT_EQ(r.record.fields[field::city].data, r.buffer.data() + 10);
}

TEST(FieldStore, MappedAndProducedValues) {
    RecordWithBuffer r(64);
    auto isDash = [](int c) { return c == '-' ? 1 : 0; };
    setFieldMapped(r.get(), field::licenseNumber, makeSpan("A-1-2"), isDash, nullptr, '\0');
    EXPECT_EQ(slotText(r.record, field::licenseNumber), "A12");
    auto producer = [](const void* context, char* dst, int32_t room) -> int32_t {
        const char* text = static_cast<const char*>(context);
        int32_t n = 0;
        while (text[n] != '\0' && n < room) {
            dst[n] = text[n];
            ++n;
        }
        return n;
    };
    setFieldProduced(r.get(), field::fullName, "DOE, JOHN", producer);
    EXPECT_EQ(slotText(r.record, field::fullName), "DOE, JOHN");
    auto nothing = [](const void*, char*, int32_t) -> int32_t { return 0; };
    setFieldProduced(r.get(), field::fullName, nullptr, nothing);
    EXPECT_EQ(fieldMissing(r.get(), field::fullName), -1);
    EXPECT_EQ(setFieldProduced(r.get(), field::fullName, nullptr, nullptr), nullptr);
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

TEST(FieldStore, Readers) {
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
    const FieldId empty[] = {field::firstName};
    EXPECT_EQ(firstFilledField(r.get(), empty, &out), kErrNoneFilled);
    EXPECT_EQ(fieldMissing(r.get(), field::city), 0);
    EXPECT_EQ(fieldMissing(r.get(), field::firstName), -1);
    EXPECT_EQ(fieldMissing(r.get(), 500), -1);
}

TEST(FieldStore, ResetAndAttach) {
    RecordWithBuffer r(32);
    setFieldLiteral(r.get(), field::firstName, "JOHN");
    r.record.formatGroup = 0;
    r.record.formatId = 42;
    EXPECT_EQ(resetRecord(r.get()), kOk);
    EXPECT_EQ(r.record.formatGroup, 6u);
    EXPECT_EQ(r.record.formatId, 68u);
    EXPECT_EQ(r.record.workUsed, 0);
    EXPECT_EQ(fieldMissing(r.get(), field::firstName), -1);
    for (char c : r.buffer) EXPECT_EQ(c, 0);
    ParsedRecord bare{};
    EXPECT_EQ(resetRecord(&bare), kErrInvalidArgument);
    EXPECT_EQ(resetRecord(nullptr), kErrInvalidArgument);
    char buffer[4];
    EXPECT_EQ(attachWorkBuffer(&bare, nullptr, 4), kErrInvalidArgument);
    EXPECT_EQ(attachWorkBuffer(&bare, buffer, 0), kErrInvalidArgument);
    EXPECT_EQ(attachWorkBuffer(&bare, buffer, 4), kOk);
    EXPECT_EQ(bare.formatId, 68u);
}

TEST(FieldStore, SanitizeTurnsControlBytesIntoSpaces) {
    RecordWithBuffer r(32);
    setFieldLiteral(r.get(), field::city, "A\x01" "B\x7F" "C\xC3");
    EXPECT_EQ(slotText(r.record, field::city), "A\x01" "B\x7F" "C\xC3");  // as stored while scoring
    sanitizeWorkBuffer(r.get());
    EXPECT_EQ(slotText(r.record, field::city), "A B C ");
    EXPECT_EQ(r.buffer[6], '\0');  // terminators stay
}

TEST(SpanSkip, AdvancesOrStopsOnTheLastCharacter) {
    const char* text = "ABCDE";
    TextSpan s{text, 5};
    spanSkip(&s, 2);
    EXPECT_EQ(s.data, text + 2);
    EXPECT_EQ(s.length, 3);
    spanSkip(&s, 0);
    EXPECT_EQ(s.length, 3);
    spanSkip(&s, 3);  // deliberately points at the last character, not past it
    EXPECT_EQ(s.data, text + 4);
    EXPECT_EQ(s.length, 0);
    spanSkip(&s, 1);
    EXPECT_EQ(s.data, text + 4);
    spanSkip(nullptr, 1);
}

TEST(LookupPair, ResumesAfterTheLastMatch) {
    const PairEntry pairs[] = {{1, 10}, {2, 20}, {1, 11}, {3, 30}};
    EXPECT_EQ(lookupPair(1, pairs, 4, nullptr), 10);
    EXPECT_EQ(lookupPair(9, pairs, 4, nullptr), -1);
    EXPECT_EQ(lookupPair(1, pairs, 0, nullptr), -1);
    int32_t index = 0;
    EXPECT_EQ(lookupPair(1, pairs, 4, &index), 10);
    EXPECT_EQ(index, 0);
    index += 1;
    EXPECT_EQ(lookupPair(1, pairs, 4, &index), 11);
    EXPECT_EQ(index, 2);
    index += 1;
    EXPECT_EQ(lookupPair(1, pairs, 4, &index), -1);
    EXPECT_EQ(index, 4);
    EXPECT_EQ(lookupPair(1, pairs, 4, &index), -1);  // at the end: refused at once
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
        const int32_t n = formatInt(c.value, out, c.width, c.zeroPad);
        EXPECT_EQ(std::string(out, static_cast<size_t>(n)), c.expected);
    }
    EXPECT_EQ(formatInt(1, nullptr, 4, 1), 0);
}

}  // namespace
}  // namespace orvane
