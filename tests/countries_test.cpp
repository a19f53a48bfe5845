#include "fields/countries.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>
#include <string>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::span;

std::string str(const char* text) { return text != nullptr ? std::string(text) : std::string("(null)"); }

// ---- Tables ----

TEST(CountryTable, CountEndsAndOrder) {
    const auto rows = countryRows();
    ASSERT_EQ(rows.size(), 259u);
    EXPECT_STREQ(rows.front().alpha3, "ABW");
    EXPECT_STREQ(rows[257].name, "ZIMBABWE");
    EXPECT_STREQ(rows.back().alpha3, "UTO");  // the specimen code stands after ZWE
    std::map<std::string, int> rowsByCode;
    for (size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(i);
        ++rowsByCode[rows[i].alpha3];
        EXPECT_EQ(std::strlen(rows[i].alpha3), 3u);
        // Names are compared upper-cased, so a lower-case letter would never match.
        for (const char* p = rows[i].name; *p != '\0'; ++p) EXPECT_FALSE(*p >= 'a' && *p <= 'z');
        // Sorted, so that the rows of a code stand together and its first row names it.
        if (i > 0 && i + 1 < rows.size()) {
            EXPECT_LE(std::strcmp(rows[i - 1].alpha3, rows[i].alpha3), 0);
        }
    }
    EXPECT_EQ(rowsByCode.size(), 250u);
    EXPECT_EQ(rowsByCode["USA"], 6);
    EXPECT_EQ(rowsByCode["VAT"], 3);
}

TEST(IinTable, CountGroupsAndEveryRowBothWays) {
    const auto rows = iinRows();
    ASSERT_EQ(rows.size(), 71u);
    EXPECT_EQ(rows[0].number, 604426u);
    EXPECT_EQ(rows[8].number, 636000u);
    EXPECT_STREQ(rows[70].code, "VI");
    std::set<std::string> codes;
    for (const IinRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_TRUE(codes.insert(row.code).second) << "code repeats";
        EXPECT_EQ(str(jurisdictionCodeForIin(span(row.text))), row.code);
        EXPECT_EQ(str(iinForJurisdictionCode(span(row.code))), row.text);
        EXPECT_NE(countryForJurisdictionCode(span(row.code)), nullptr);  // every IIN leads to a country
    }
}

TEST(JurisdictionTable, CountCountriesAndEveryRow) {
    const auto rows = jurisdictionRows();
    ASSERT_EQ(rows.size(), 106u);
    EXPECT_STREQ(rows[51].jurisdictionName, "The U.S. Department of State");
    EXPECT_STREQ(rows[61].code, "AB");
    std::map<std::string, int> rowsByCountry;
    std::set<std::string> codes;
    for (const JurisdictionRow& row : rows) {
        SCOPED_TRACE(row.code);
        EXPECT_TRUE(codes.insert(row.code).second) << "code repeats";
        ++rowsByCountry[row.countryName];
        EXPECT_EQ(str(countryForJurisdictionCode(span(row.code))), row.countryName);
    }
    EXPECT_EQ(rowsByCountry["United States"], 52);
    EXPECT_EQ(rowsByCountry["Canada"], 13);
    EXPECT_EQ(rowsByCountry["Mexico"], 32);
    EXPECT_EQ(rowsByCountry.size(), 12u);
}

// ---- Lookups ----

TEST(IinLookup, ReadsTheFirstSixCharactersOnly) {
    struct Case {
        TextSpan iin;
        const char* code;
    };
    const Case cases[] = {
        {makeSpan("636015"), "TX"},
        {makeSpan("6360152"), "TX"},       // the seventh character is never read
        {makeSpan("63601"), nullptr},      // too short
        {makeSpan(" 63601"), nullptr},     // reads as 63601
        {makeSpan("63601X"), nullptr},     // reading stops at the X
        {makeSpan("636015", 5), nullptr},  // nothing beyond the span is read
        {makeSpan("990876"), "AB"},        // the second Alberta number
        {makeSpan(nullptr, 6), nullptr},
        // Around the two groups.
        {makeSpan("604425"), nullptr}, {makeSpan("604426"), "PE"}, {makeSpan("604434"), nullptr},
        {makeSpan("635999"), nullptr}, {makeSpan("636062"), "VI"}, {makeSpan("636063"), nullptr},
        {makeSpan("990875"), nullptr}, {makeSpan("990877"), nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::text(c.iin));
        EXPECT_EQ(str(jurisdictionCodeForIin(c.iin)), str(c.code));
        EXPECT_EQ(isKnownIin(c.iin), c.code != nullptr ? 1 : 0);
    }
}

TEST(CodeLookups, JurisdictionCodesMatchCase) {
    struct Case {
        TextSpan code;
        const char* iin;
        const char* country;
    };
    const Case cases[] = {
        {makeSpan("AB"), "604432", "Canada"},  // the table row, not the second Alberta number
        {makeSpan("GM"), "636019", "Guam"},
        {makeSpan("TXX", 2), "636015", "United States"},
        {makeSpan("WK"), nullptr, "Wake Island"},  // a jurisdiction without an IIN
        {makeSpan("tx"), nullptr, nullptr},
        {makeSpan("TXX"), nullptr, nullptr},
        {makeSpan(nullptr, 2), nullptr, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::text(c.code));
        EXPECT_EQ(str(iinForJurisdictionCode(c.code)), str(c.iin));
        EXPECT_EQ(str(countryForJurisdictionCode(c.code)), str(c.country));
    }
}

TEST(CodeLookups, CountryCodesIgnoreCaseExceptInIsCountryAlpha3) {
    struct Case {
        const char* code;
        const char* name;
    };
    const Case names[] = {
        {"uSa", "UNITED STATES"}, {"CCK", "COCOS"}, {"UTO", "UTOPIA"},
        {"US", nullptr}, {"USAA", nullptr}, {"", nullptr},
    };
    for (const Case& c : names) {
        SCOPED_TRACE(c.code);
        EXPECT_EQ(str(countryNameForAlpha3(makeSpan(c.code))), str(c.name));
    }
    const Case codes[] = {
        {"USA", "united states"}, {"USA", "U.S.A."}, {"CCK", "Keeling Islands"}, {"CIV", "Cote d'Ivoire"},
        {nullptr, "UNITED STATES "}, {nullptr, "UNITED"}, {nullptr, "GTM"}, {nullptr, ""}, {nullptr, nullptr},
    };
    for (const Case& c : codes) {
        SCOPED_TRACE(str(c.name));
        EXPECT_EQ(str(alpha3ForCountryName(c.name)), str(c.code));
    }
    EXPECT_EQ(isCountryAlpha3("UTO"), 1);
    EXPECT_EQ(isCountryAlpha3("usa"), 0);
    EXPECT_EQ(isCountryAlpha3(nullptr), 0);
}

// ---- Workers ----

constexpr FieldId kIin = field::iin;
constexpr FieldId kJur = field::jurisdictionCode;
constexpr FieldId kResJur = field::residenceJurisdictionCode;
constexpr FieldId kCountry = field::country;
constexpr FieldId kCode = field::countryCode;
constexpr FieldId kCodeAlt = field::countryCodeAlt;

TEST(CountryWorkers, JurisdictionCode) {
    constexpr auto w = getJurisdictionCode;
    testing::runWorkerCases({
        {"residence only", w, {{kResJur, "QC"}}, 64, "QC"},
        {"jurisdiction before residence", w, {{kResJur, "NJ"}, {kJur, "NY"}}, 64, "NY"},
        {"slot before iin", w, {{kJur, "NY"}, {kIin, "636015"}}, 64, "NY"},
        {"not checked against the table", w, {{kJur, "tx"}}, 64, "tx"},
        {"ends trimmed", w, {{kJur, "\x01 TX\x7f~"}}, 64, "TX"},
        {"inner control becomes blank", w, {{kJur, "N\x01Y"}}, 64, "N Y"},
        {"unprintable slot does not fall to iin", w, {{kJur, " \x01 "}, {kIin, "636015"}}, 64, "#-26"},
        {"iin", w, {{kIin, "636015"}}, 64, "TX"},
        {"unknown iin", w, {{kIin, "123456"}}, 64, "#-26"},
    });
}

TEST(CountryWorkers, Country) {
    constexpr auto w = getCountry;
    testing::runWorkerCases({
        {"name trimmed", w, {{kCountry, " United States\n"}}, 64, "United States"},
        {"name before code", w, {{kCountry, "Deutschland"}, {kCode, "USA"}}, 64, "Deutschland"},
        {"code in capitals of the table", w, {{kCode, "usa"}}, 64, "UNITED STATES"},
        {"code before alternative", w, {{kCode, "MEX"}, {kCodeAlt, "CAN"}}, 64, "MEXICO"},
        {"alternative code", w, {{kCodeAlt, "can"}}, 64, "CANADA"},
        {"unknown code stops", w, {{kCode, "XYZ"}, {kJur, "TX"}}, 64, "#-26"},
        {"jurisdiction in mixed case", w, {{kJur, " ON\r"}}, 64, "Canada"},
        {"iin of the state department", w, {{kIin, "636027"}}, 64, "United States"},
        {"lower-case jurisdiction", w, {{kJur, "tx"}}, 64, "#-26"},
    });
}

TEST(CountryWorkers, CountryCode) {
    constexpr auto w = getCountryCode;
    testing::runWorkerCases({
        {"code as read", w, {{kCode, " usa "}}, 64, " usa "},
        {"lower-case name", w, {{kCountry, "united states"}}, 64, "USA"},
        {"name is a code", w, {{kCountry, "GTM"}}, 64, "GTM"},
        {"lower-case code as name", w, {{kCountry, "gtm"}}, 64, "#-26"},
        {"alternative code through the country", w, {{kCodeAlt, "can"}}, 64, "CAN"},
        {"territory", w, {{kJur, "PR"}}, 64, "PRI"},
        {"territory named otherwise", w, {{kJur, "FM"}}, 64, "#-26"},
        {"second Alberta iin", w, {{kIin, "990876"}}, 64, "CAN"},
    });
}

TEST(CountryWorkers, CountryCodeOfEveryJurisdictionAsTheNameLookupsGiveIt) {
    // The worker takes a jurisdiction's country code from a table worked out beforehand;
    // it must be what the country's name gives through the lookups, for every row, read
    // as the code or through an IIN of the jurisdiction.
    for (const JurisdictionRow& row : jurisdictionRows()) {
        SCOPED_TRACE(row.code);
        const char* alpha3 = alpha3ForCountryName(row.countryName);
        const std::string expected =
            alpha3 != nullptr ? alpha3 : isCountryAlpha3(row.countryName) ? row.countryName : "#-26";
        EXPECT_EQ(testing::ask(getCountryCode, {{kJur, row.code}}), expected);
        EXPECT_EQ(testing::ask(getCountryCode, {{kJur, (std::string(" ") + row.code + "\t").c_str()}}), expected);
        if (const char* iin = iinForJurisdictionCode(makeSpan(row.code))) {
            const char* issuer = jurisdictionCodeForIin(makeSpan(iin));
            const char* ofIssuer = alpha3ForCountryName(countryForJurisdictionCode(makeSpan(issuer)));
            EXPECT_EQ(testing::ask(getCountryCode, {{kIin, iin}}), ofIssuer != nullptr ? ofIssuer : "#-26");
        }
    }
}

TEST(CountryWorkers, IinAndIssuer) {
    testing::runWorkerCases({
        {"known, copied whole", getIIN, {{kIin, "6360152"}, {kJur, "NY"}}, 64, "6360152"},
        {"unknown gives way", getIIN, {{kIin, "123456"}, {kJur, "NY"}}, 64, "636001"},
        {"unknown, residence", getIIN, {{kIin, "123456"}, {kResJur, "ON"}}, 64, "636012"},
        {"unknown kept", getIIN, {{kIin, "123456"}, {kJur, "WK"}}, 64, "123456"},
        {"unknown kept, lower-case jurisdiction", getIIN, {{kIin, "123456"}, {kJur, "ny"}}, 64, "123456"},
        {"jurisdiction only", getIIN, {{kJur, "AB"}}, 64, "604432"},
        {"jurisdiction read untrimmed", getIIN, {{kJur, " TX"}}, 64, "#-26"},
        {"issuer of the iin, not the slot", getIssuedBy, {{kIin, "636015"}, {kJur, "NY"}}, 64, "TX"},
        {"issuer, unknown iin gives way", getIssuedBy, {{kIin, "123456"}, {kJur, "NY"}}, 64, "NY"},
        {"issuer, unknown iin alone", getIssuedBy, {{kIin, "123456"}}, 64, "#-26"},
        {"issuer, jurisdiction without iin", getIssuedBy, {{kJur, "WK"}}, 64, "#-26"},
    });
}

}  // namespace
}  // namespace orvane
