#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "fields/countries.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::span;

std::string str(const char* text) { return text != nullptr ? std::string(text) : std::string("(null)"); }

bool isUpperWord(const char* text, size_t length) {
    if (std::strlen(text) != length) return false;
    for (size_t i = 0; i < length; ++i) {
        if (text[i] < 'A' || text[i] > 'Z') return false;
    }
    return true;
}

TEST(CountryTable, RowCountAndEnds) {
    const auto rows = countryRows();
    ASSERT_EQ(rows.size(), 259u);
    EXPECT_STREQ(rows.front().alpha3, "ABW");
    EXPECT_STREQ(rows.front().name, "ARUBA");
    EXPECT_STREQ(rows[257].alpha3, "ZWE");
    EXPECT_STREQ(rows[257].name, "ZIMBABWE");
    EXPECT_STREQ(rows.back().alpha3, "UTO");
    EXPECT_STREQ(rows.back().name, "UTOPIA");
}

TEST(CountryTable, CodesAreSortedUpperCaseAndNamesHaveNoLowerCase) {
    const auto rows = countryRows();
    for (size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(i);
        ASSERT_NE(rows[i].alpha3, nullptr);
        ASSERT_NE(rows[i].name, nullptr);
        EXPECT_TRUE(isUpperWord(rows[i].alpha3, 3));
        EXPECT_GT(std::strlen(rows[i].name), 0u);
        for (const char* p = rows[i].name; *p != '\0'; ++p) EXPECT_FALSE(*p >= 'a' && *p <= 'z');
        // Sorted by code up to ZWE; the specimen code stands after it.
        if (i > 0 && i + 1 < rows.size()) EXPECT_LE(std::strcmp(rows[i - 1].alpha3, rows[i].alpha3), 0);
    }
}

TEST(CountryTable, RepeatedCodesStandTogetherWithTheirNames) {
    std::map<std::string, std::vector<std::string>> namesByCode;
    const auto rows = countryRows();
    for (const CountryRow& row : rows) namesByCode[row.alpha3].push_back(row.name);
    const std::map<std::string, std::vector<std::string>> repeated = {
        {"USA", {"UNITED STATES", "USA", "US", "U.S.", "U.S.A.", "UNITED STATES OF AMERICA"}},
        {"VAT", {"VATICAN", "HOLY SEE", "VATICAN CITY STATE"}},
        {"CCK", {"COCOS", "KEELING ISLANDS"}},
        {"FLK", {"FALKLAND ISLANDS", "MALVINAS"}},
    };
    size_t codesWithMoreRows = 0;
    for (const auto& [code, names] : namesByCode) {
        if (names.size() > 1) ++codesWithMoreRows;
    }
    EXPECT_EQ(codesWithMoreRows, repeated.size());
    EXPECT_EQ(namesByCode.size(), 259u - 5 - 2 - 1 - 1);
    for (const auto& [code, names] : repeated) {
        SCOPED_TRACE(code);
        EXPECT_EQ(namesByCode[code], names);
    }
    // Adjacency: a code never comes back after another one.
    std::set<std::string> closed;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (i > 0 && std::strcmp(rows[i - 1].alpha3, rows[i].alpha3) != 0) closed.insert(rows[i - 1].alpha3);
        EXPECT_EQ(closed.count(rows[i].alpha3), 0u) << rows[i].alpha3;
    }
}

// Gap-free numbering and texts are checked when the table compiles.
TEST(IinTable, RowCountAndGroupEnds) {
    const auto rows = iinRows();
    ASSERT_EQ(rows.size(), 71u);
    EXPECT_EQ(rows[0].number, 604426u);
    EXPECT_STREQ(rows[0].code, "PE");
    EXPECT_STREQ(rows[7].code, "NU");
    EXPECT_EQ(rows[8].number, 636000u);
    EXPECT_STREQ(rows[8].code, "VA");
    EXPECT_STREQ(rows[70].text, "636062");
    EXPECT_STREQ(rows[70].code, "VI");
}

TEST(IinTable, EveryRowIsReachableBothWays) {
    std::set<std::string> codes;
    for (const IinRow& row : iinRows()) {
        SCOPED_TRACE(row.text);
        const std::string text = row.text;
        const std::string code = row.code;
        EXPECT_TRUE(codes.insert(code).second) << "code repeats";
        EXPECT_EQ(str(jurisdictionCodeForIin(span(text))), code);
        EXPECT_EQ(isKnownIin(span(text)), 1);
        EXPECT_EQ(str(iinForJurisdictionCode(span(code))), text);
        // Every issuing jurisdiction has a country, so a country follows from any IIN.
        EXPECT_NE(countryForJurisdictionCode(span(code)), nullptr);
    }
}

TEST(IinTable, NeighboursOfTheGroupsAreUnknown) {
    for (const char* text : {"604425", "604434", "635999", "636063", "990875", "990877", "000000"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(jurisdictionCodeForIin(span(text)), nullptr);
        EXPECT_EQ(isKnownIin(span(text)), 0);
    }
}

TEST(JurisdictionTable, RowsStandInOrder) {
    const auto rows = jurisdictionRows();
    ASSERT_EQ(rows.size(), 106u);
    struct Spot {
        size_t index;
        const char* countryName;
        const char* code;
        const char* jurisdictionName;
    };
    const Spot spots[] = {
        {0, "United States", "AL", "Alabama"},
        {50, "United States", "WY", "Wyoming"},
        {51, "United States", "DS", "The U.S. Department of State"},
        {52, "American Samoa", "AS", "American Samoa"},
        {59, "Virgin Islands of the U.S.", "VI", "Virgin Islands of the U.S."},
        {60, "Wake Island", "WK", "Wake Island"},
        {61, "Canada", "AB", "Alberta"},
        {73, "Canada", "YT", "Yukon Territory"},
        {74, "Mexico", "AG", "Aguascalientes"},
        {105, "Mexico", "ZA", "Zacatecas"},
    };
    for (const Spot& s : spots) {
        SCOPED_TRACE(s.index);
        EXPECT_STREQ(rows[s.index].countryName, s.countryName);
        EXPECT_STREQ(rows[s.index].code, s.code);
        EXPECT_STREQ(rows[s.index].jurisdictionName, s.jurisdictionName);
    }
}

TEST(JurisdictionTable, CountriesAndUniqueCodes) {
    std::map<std::string, int> rowsByCountry;
    std::set<std::string> codes;
    for (const JurisdictionRow& row : jurisdictionRows()) {
        SCOPED_TRACE(row.code);
        EXPECT_TRUE(isUpperWord(row.code, 2));
        EXPECT_TRUE(codes.insert(row.code).second) << "code repeats";
        ++rowsByCountry[row.countryName];
        EXPECT_EQ(str(countryForJurisdictionCode(span(row.code))), row.countryName);
        EXPECT_EQ(str(jurisdictionNameForCode(span(row.code))), row.jurisdictionName);
    }
    EXPECT_EQ(rowsByCountry["United States"], 52);
    EXPECT_EQ(rowsByCountry["Canada"], 13);
    EXPECT_EQ(rowsByCountry["Mexico"], 32);
    EXPECT_EQ(rowsByCountry.size(), 3u + 9u);
}

}  // namespace
}  // namespace orvane
