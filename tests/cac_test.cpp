#include "documents/cac.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "documents/cac_layouts.h"
#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;

// Fields padded with blanks to their widths, joined without separators.
std::string fields(const std::vector<std::pair<std::string, size_t>>& parts) {
    std::string out;
    for (const auto& [value, width] : parts) {
        EXPECT_LE(value.size(), width) << value;
        out += value + std::string(width - value.size(), ' ');
    }
    return out;
}

// Layout A: base-32 identifiers, names, and day numbers counted from 1 January 1000.
const std::string kLayoutA = fields({{"1", 1},      {"1A2B3C", 6}, {"X", 1},     {"000KQ7V", 7},
                                     {"JORDAN", 20}, {"SAMPLE", 26}, {"AVGN", 4}, {"A", 1},
                                     {"B", 1},       {"CD", 2},      {"E12345", 6}, {"FG", 2},
                                     {"HI", 2},      {"BC7C", 4},    {"BEBQ", 4},  {"Z", 1},
                                     {"Q", 1}});

// Layouts B and C share their first 23 fields; B continues with 63 characters, C with 23.
std::string idusBody(const std::string& marker, const std::string& height) {
    return fields({{marker, 1},  {"SAMPLE JORDAN  QUINCY MIDDL", 27}, {"123456789", 9}, {"A", 1}, {"987654321", 9},
                   {"US", 2},    {height, 2},   {"180", 3},  {"BR", 2},  {"BL", 2},  {"1985JUL15", 9},
                   {"1", 1},     {"2", 1},      {"3", 1},    {"4", 1},   {"5", 1},   {"2020JAN01", 9},
                   {"2022FEB02", 9}, {"E4", 6}, {"2021MAR01", 9}, {"2027FEB28", 9}, {"N123", 4},
                   {"X", 1}});
}
const std::string kLayoutBTail = fields({{"AAAAAA", 6}, {"BBBBB", 5}, {"CCCCCC", 6}, {"DDDD", 4},
                                         {"EEEE", 27}, {"FFFFFFFFF", 9}, {"GGGGGG", 6}});
const std::string kLayoutCTail = fields({{"PPPPPP", 6}, {"QQQQQ", 5}, {"RRRRRR", 6}, {"SSS", 3}, {"TTT", 3}});
const std::string kLayoutD = fields({{"0", 1},  {"SAMPLE JORDAN", 27}, {"123456789", 9}, {"A", 1},
                                     {"987654321", 9}, {"B", 1}, {"C", 1}, {"59", 2}, {"DDD", 3},
                                     {"BR", 2}, {"GR", 2}, {"1990DEC24", 9}, {"EEE", 23}, {"FFFFFF", 6},
                                     {"2019APR30", 9}, {"2029apr30", 9}, {"GGGG", 4}, {"H", 1},
                                     {"IIIIII", 6}, {"JJJJJ", 5}, {"KKKKKK", 6}, {"LLLLLLL", 7},
                                     {"MMM", 3}, {"NNN", 3}, {"CONTRACTOR", 35}});

// The layouts' widths and shared head show in the readers below; the month lookup is
// exact.
TEST(CacLayouts, MonthAbbreviations) {
    EXPECT_STREQ(monthNumberOfAbbreviation(makeSpan("JAN")), "01");
    EXPECT_STREQ(monthNumberOfAbbreviation(makeSpan("DEC")), "12");
    EXPECT_EQ(monthNumberOfAbbreviation(makeSpan("jan")), nullptr);
    EXPECT_EQ(monthNumberOfAbbreviation(makeSpan("JANU")), nullptr);
}

TEST(CacFormats, LayoutAWithBase32NumbersAndDayNumbers) {
    std::string dayZero = kLayoutA;
    dayZero.replace(61, 4, "0000");
    std::string badDigits = kLayoutA;
    badDigits.replace(1, 6, "1A2W3C");     // W is not a base-32 digit
    badDigits.replace(8, 7, "1a00000");    // nor is a lower-case letter
    std::string endMarker = kLayoutA;
    endMarker.replace(1, 6, "1V=XYZ");     // "=" ends the number
    std::string nFormat = kLayoutA;
    nFormat[0] = 'N';
    testing::runReaderCases({
        {"all 17 fields", parseCacFormat51, kLayoutA, kOk,
         {{88, "1"}, {field::licenseNumberAlt3, "44117100"}, {90, "X"}, {91, "682239"},
          {field::birthdateAlt, "19850715"}, {95, "E12345"}, {field::expirationDate, "20270228"}, {98, "Z"},
          {field::middleName, "Q"}, {field::standardName, "Common Access Card 1"}}},
        {"beyond the layout ignored", parseCacFormat51, kLayoutA + "EXTRA", kOk, {{field::middleName, "Q"}}},
        {"version alone", parseCacFormat51, "1", kOk, {{88, "1"}, {field::licenseNumberAlt3, ""}}},
        {"ends inside a field", parseCacFormat51, "1A2", kErrNotRecognised,
         {{88, "1"}, {field::documentType, "CAC"}}},
        {"day zero is 1 January 1000", parseCacFormat51, dayZero, kOk, {{field::birthdateAlt, "10000101"}}},
        {"bad base-32 digits store nothing", parseCacFormat51, badDigits, kOk,
         {{field::licenseNumberAlt3, ""}, {91, ""}, {field::firstName, "JORDAN"}}},
        {"= ends the number", parseCacFormat51, endMarker, kOk, {{field::licenseNumberAlt3, "63"}}},
        {"other version", parseCacFormat51, nFormat, kErrVersion,
         {{field::standardName, "Common Access Card 1"}, {88, ""}}},
        {"format 52", parseCacFormat52, nFormat, kOk,
         {{88, "N"}, {field::standardName, "Common Access Card N"}, {field::birthdateAlt, "19850715"}}},
        {"format 52 on version 1", parseCacFormat52, kLayoutA, kErrVersion, {}},
        {"empty input", parseCacFormat51, "", kErrInvalidArgument, {}},
    });
}

TEST(CacFormats, IdusCardsToldApartByTheirMarker) {
    const std::string head = "IDUS3ABCD";
    const std::string b = head + idusBody("0", "60") + kLayoutBTail;
    const std::string c = head + idusBody("1", " 5") + kLayoutCTail;
    std::string lowerMonth = b;
    lowerMonth.replace(9 + 58, 9, "1985jul15");
    std::string noDigits = b;
    noDigits.replace(9 + 58, 9, "ABCDJUL1X");
    testing::runReaderCases({
        {"53 reads layout B", parseCacFormat53, b, kOk,
         {{99, "0"}, {field::fullName, "SAMPLE, JORDAN, , QUINCY, MIDDL"}, {field::heightAlt, "6'0\""},
          {109, "20200101"}, {110, "20220202"}, {field::expirationDate, "20270228"}, {120, "GGGGGG"},
          {field::standardName, "Common Access Card v3"}}},
        {"54 refuses marker 0", parseCacFormat54, b, kErrCacVariant, {{field::documentType, "CAC"}}},
        {"54 reads layout C", parseCacFormat54, c, kOk,
         {{99, "1"}, {field::fullName, "SAMPLE JORDAN  QUINCY MIDDL"}, {field::heightAlt, "'5\""},
          {95, "RRRRRR"}, {124, "TTT"}, {field::expirationDate, "20270228"}}},
        {"53 refuses marker 1", parseCacFormat53, head + idusBody("1", "60"), kErrCacVariant, {}},
        {"C is too short for layout B", parseCacFormat53, c, kErrNotRecognised, {}},
        {"53 keeps the height untrimmed", parseCacFormat53, head + idusBody("0", " 5") + kLayoutBTail, kOk,
         {{field::heightAlt, " '5\""}}},
        {"lower-case month kept as text", parseCacFormat53, lowerMonth, kOk,
         {{field::birthdateAlt, "1985jul15"}}},
        {"digits not checked", parseCacFormat53, noDigits, kOk, {{field::birthdateAlt, "ABCD071X"}}},
        {"head only: empty body fails the marker", parseCacFormat53, head, kErrCacVariant, {{99, ""}}},
        {"marker alone", parseCacFormat53, head + "0", kOk, {{99, "0"}, {field::fullName, ""}}},
        {"ends inside the name", parseCacFormat53, head + "0SAMPLE", kErrNotRecognised, {{99, "0"}}},
        {"wrong head", parseCacFormat53, "IDUX3ABCD0", kErrFraming, {}},
        {"head too short", parseCacFormat53, "IDUS", kErrFraming, {}},
        {"wrong version", parseCacFormat54, "IDUS2ABCD1", kErrVersion, {}},
        {"version but no body start", parseCacFormat53, "IDUS3AB", kErrFraming, {}},
    });
}

TEST(CacFormats, CommaNameKeepsEveryBlankAndStopsWhenAPairDoesNotFit) {
    // Nineteen blanks pad the name: eighteen pairs stay, the last blank is dropped.
    std::string pairs;
    for (int i = 0; i < 18; ++i) pairs += ", ";
    const std::string padded = "DOE, JANE" + pairs + ",";
    // 32 bytes go to the identity and the marker; three remain for the name.
    testing::runReaderCases({
        {"padded name", parseCacFormat53, "IDUS3ABCD0" + fields({{"DOE JANE", 27}}), kOk,
         {{field::fullName, padded.c_str()}}},
        {"room for AB only", parseCacFormat53, "IDUS3ABCD0" + fields({{"AB CD", 27}}), kOk, {{field::fullName, "AB"}}, 35},
    });
}

TEST(CacFormats, CivilianCardNamesItsEditionFromTheFifthCharacter) {
    testing::runReaderCases({
        {"IDCV read", parseCacFormat55, "IDCV7WXYZ" + kLayoutD, kOk,
         {{field::standardName, "DoD/Uniformed Services Civilian ID Card v7"}, {field::heightAlt, "5'9\""},
          {134, "20190430"}, {136, "2029apr30"}, {127, "CONTRACTOR"}}},
        {"any version character", parseCacFormat55, "IDCVQ....0", kOk,
         {{field::standardName, "DoD/Uniformed Services Civilian ID Card vQ"}}},
        {"failed run writes no identity", parseCacFormat55, "IDCV3....0SAMPLE", kErrNotRecognised,
         {{99, "0"}, {field::standardName, ""}, {field::documentType, ""}}},
        {"IDUS is not IDCV", parseCacFormat55, "IDUS3ABCD0", kErrFraming, {}},
        {"too short for the skipped head", parseCacFormat55, "IDCV3", kErrFraming, {}},
    });
}

TEST(CacFormats, NullInputs) {
    RecordWithBuffer r;
    for (FormatParser parser : {parseCacFormat51, parseCacFormat52, parseCacFormat53, parseCacFormat54,
                                parseCacFormat55}) {
        char text[] = "1";
        EXPECT_EQ(parser(nullptr, 5, r.get(), nullptr), kErrInvalidArgument);
        EXPECT_EQ(parser(text, -1, r.get(), nullptr), kErrInvalidArgument);
    }
}

}  // namespace
}  // namespace orvane
