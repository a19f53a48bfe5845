#include "fields/text.h"

#include <gtest/gtest.h>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::text;

TEST(Predicates, Ranges) {
    for (int c : {'!', '}'}) EXPECT_TRUE(isPrintableCode(c)) << c;
    // The printable range stops at 125, so the tilde is outside.
    for (int c : std::initializer_list<int>{' ', '~', 0xC3, -61}) EXPECT_FALSE(isPrintableCode(c)) << c;
    for (int c : {0, 9, 13, 32}) EXPECT_TRUE(isBlankOrNul(c)) << c;
    for (int c : {8, 14, 0xA0}) EXPECT_FALSE(isBlankOrNul(c)) << c;
    for (int c : {'Z', '5', '_', ' ', '\n'}) EXPECT_TRUE(isWordChar(c)) << c;
    for (int c : std::initializer_list<int>{'-', '$', 0xE9}) EXPECT_FALSE(isWordChar(c)) << c;
}

TEST(Trim, ByPredicateAndBySet) {
    TextSpan s = makeSpan(" \tAB C\r\n");
    trimIf(&s, isWhiteSpace);
    EXPECT_EQ(text(s), "AB C");
    s = makeSpan("$,SMITH-/");
    trimSet(&s, kTokenEdgeSet);
    EXPECT_EQ(text(s), "SMITH");
    s = makeSpan("<<A<<");
    trimLeadingSet(&s, "<");
    EXPECT_EQ(text(s), "A<<");
    s = makeSpan("   ");
    trimIf(&s, isNotPrintableCode);
    EXPECT_EQ(s.length, 0);
    EXPECT_EQ(allChars(s, isDigitOrPoint), 0);  // vacuously true
    EXPECT_NE(allChars(makeSpan("12a"), isDigitOrPoint), 0);
    EXPECT_EQ(allChars(TextSpan{nullptr, 0}, isDigitOrPoint), -1);
}

TEST(Tokens, SplitWithAndWithoutEmptyTokens) {
    struct Case {
        const char* input;
        const char* delimiters;
        int flags;
        int32_t max;
        std::vector<std::string> expected;
    };
    const Case cases[] = {
        {"SMITH,, JOHN", " ,$@", kSkipEmptyTokens, 8, {"SMITH", "JOHN"}},
        {"A,,B", ",", 0, 8, {"A", "", "B"}},
        {",A,", ",", 0, 8, {"", "A"}},
        {"A B C D", " ", kSkipEmptyTokens, 3, {"A", "B", "C"}},
        {"   ", " ", kSkipEmptyTokens, 8, {}},
        {"ONE", "", 0, 8, {"ONE"}},
        {"A|B", "|", 0, -1, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.input);
        TextSpan tokens[8];
        const int32_t n = splitTokens(makeSpan(c.input), tokens, c.max, c.delimiters, c.flags);
        ASSERT_EQ(n, static_cast<int32_t>(c.expected.size()));
        for (int32_t i = 0; i < n; ++i) EXPECT_EQ(text(tokens[i]), c.expected[static_cast<size_t>(i)]);
    }
    TextSpan token;
    TextSpan rest;
    ASSERT_EQ(nextToken(makeSpan("DAQ123\nDCSDOE"), &token, &rest, "\n", 0), 1);
    EXPECT_EQ(text(token), "DAQ123");
    EXPECT_EQ(text(rest), "DCSDOE");
    ASSERT_EQ(nextToken(rest, &token, &rest, "\n", 0), 1);
    EXPECT_EQ(text(token), "DCSDOE");
    EXPECT_EQ(rest.length, 0);
    EXPECT_EQ(nextToken(rest, &token, &rest, "\n", 0), 0);
    // Removal compares whole tokens, case included.
    TextSpan words[4];
    const char* const jr[] = {"JR"};
    ASSERT_EQ(removeWords(words, splitTokens(makeSpan("JOHN JR JR. jr"), words, 4, " ", kSkipEmptyTokens), jr, 1),
              3);
    EXPECT_EQ(text(words[0]), "JOHN");
    EXPECT_EQ(text(words[1]), "JR.");
    EXPECT_EQ(text(words[2]), "jr");
}

TEST(Compare, SpanEqualsCompareAndFind) {
    EXPECT_EQ(spanEquals(makeSpan("DL"), "DL"), 0);
    EXPECT_EQ(spanEquals(makeSpan("DLX"), "DL"), 1);
    EXPECT_EQ(spanEquals(makeSpan("D"), "DL"), -1);
    EXPECT_EQ(spanEquals(makeSpan("DA"), "DL"), -1);
    EXPECT_EQ(spanEquals(makeSpan("DZ"), "DL"), 1);
    EXPECT_EQ(spanEquals(makeSpan("\xC3"), "A"), -1);  // signed bytes
    EXPECT_EQ(spanEquals(TextSpan{nullptr, 0}, nullptr), 0);
    EXPECT_NE(spanEquals(TextSpan{nullptr, 0}, ""), 0);
    EXPECT_EQ(spanCompare(makeSpan("None"), makeSpan("NONE"), kIgnoreCase), 0);
    EXPECT_NE(spanCompare(makeSpan("None"), makeSpan("NONE"), 0), 0);
    EXPECT_EQ(spanFind(makeSpan("ABCABD"), makeSpan("ABD")), 3);
    EXPECT_EQ(spanFind(makeSpan("AB"), makeSpan("ABC")), -1);
}

TEST(ReplaceAll, ShrinkingEqualAndGrowing) {
    struct Case {
        const char* input;
        const char* pattern;
        const char* replacement;
        int32_t capacity;
        const char* expected;
    };
    const Case cases[] = {
        {"A\r\nB\r\nC", "\r\n", "\n", 64, "A\nB\nC"},
        {"aaa", "aa", "b", 64, "ba"},
        {"X@\n\nY", "@\n\n", "@\n\x1e\r", 64, "X@\n\x1e\rY"},
        {"@\n\n@\n\n", "@\n\n", "@\n\x1e\r", 7, "@\n\x1e\r@\n\n"},  // stops at the capacity
        {"ABAB", "AB", "", 64, ""},
        {"ABC", "", "X", 64, "ABC"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.input);
        char buffer[64] = {};
        const int32_t used = static_cast<int32_t>(std::strlen(c.input));
        std::memcpy(buffer, c.input, static_cast<size_t>(used));
        const int32_t n = replaceAll(buffer, used, c.capacity, makeSpan(c.pattern), makeSpan(c.replacement));
        EXPECT_EQ(std::string(buffer, static_cast<size_t>(n)), c.expected);
    }
}

TEST(Base32Hex, DigitsEndMarkAndRefusals) {
    struct Case {
        const char* input;
        int32_t status;
        uint64_t value;
    };
    const Case cases[] = {
        {"V", kOk, 31}, {"3V", kOk, 3 * 32 + 31}, {"1=Z", kOk, 1}, {"W", -11, 0}, {"a", -11, 0}, {"", -21, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.input);
        uint64_t value = 0;
        EXPECT_EQ(decodeBase32Hex(makeSpan(c.input), &value), c.status);
        if (c.status == kOk) {
            EXPECT_EQ(value, c.value);
        }
    }
}

// Which stripe field may hold each character: city, name, address ("^" and "?" end every
// field, so no class may hold them).
TEST(StripeCharacterClasses, MembersPerField) {
    struct Case {
        int c;
        bool city;
        bool name;
        bool address;
    };
    const Case cases[] = {
        {'A', true, true, true},    {' ', true, true, true},    {'\'', true, true, true},
        {'/', true, false, true},   {'\t', true, false, true},  {'$', false, true, true},
        {',', false, true, true},   {'7', false, false, true},  {'#', false, false, true},
        {'^', false, false, false}, {'?', false, false, false}, {0xC9, false, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.c);
        EXPECT_EQ(isStripeCityChar(c.c) != 0, c.city);
        EXPECT_EQ(isStripeNameChar(c.c) != 0, c.name);
        EXPECT_EQ(isStripeAddressChar(c.c) != 0, c.address);
    }
    // Every replace character belongs to its field's class, or it could never be replaced.
    for (const char* r = kStripeCityReplaceChars; *r != '\0'; ++r) EXPECT_TRUE(isStripeCityChar(*r)) << *r;
    for (const char* r = kStripeAddressReplaceChars; *r != '\0'; ++r) EXPECT_TRUE(isStripeAddressChar(*r)) << *r;
}

}  // namespace
}  // namespace orvane
