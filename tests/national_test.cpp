// The Virgin Islands, South African and Panamanian readers, called directly on their
// text.
#include "documents/national.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;

struct Expectation {
    FieldId id;
    const char* value;  // "" for an empty slot
};

struct ReaderCase {
    const char* name;
    FormatParser parser;
    std::string input;
    int32_t status;
    std::vector<Expectation> fields;
};

int32_t filledSlots(const ParsedRecord& record) {
    int32_t filled = 0;
    for (FieldId id = 0; id < kFieldCount; ++id) filled += fieldMissing(&record, id) == 0;
    return filled;
}

void runCases(const std::vector<ReaderCase>& cases) {
    for (const ReaderCase& c : cases) {
        SCOPED_TRACE(c.name);
        RecordWithBuffer r(2048);
        std::string text = c.input;  // readers may rewrite their text in place
        EXPECT_EQ(c.parser(text.data(), static_cast<int32_t>(text.size()), r.get(), nullptr), c.status);
        for (const Expectation& e : c.fields) {
            SCOPED_TRACE(e.id);
            EXPECT_EQ(slotText(r.record, e.id), e.value);
        }
    }
}

// --- Virgin Islands ---

constexpr const char* kViHeader = "117ANSI 636062";

TEST(VirginIslands, ElementTableRows) {
    const auto rows = virginIslandsElementOrder();
    ASSERT_EQ(rows.size(), 21u);
    for (size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(i);
        // The layouts differ in the first-name row only.
        if (i != 5) EXPECT_STREQ(rows[i].id[0], rows[i].id[1]);
    }
    EXPECT_STREQ(rows[5].id[0], "DCT");
    EXPECT_STREQ(rows[5].id[1], "DTT");
    EXPECT_EQ(rows[5].field, field::firstName);
    EXPECT_STREQ(rows[10].id[0], "DAT");
    EXPECT_EQ(rows[10].field, field::eyeColor);
    EXPECT_STREQ(rows[8].id[0], "DBB");
    EXPECT_EQ(rows[8].field, field::birthdateAlt);
    EXPECT_STREQ(rows[20].id[0], "DCH");
    EXPECT_EQ(rows[20].field, kVirginIslandsVehicleCodes);
}

const std::string kViLicence = std::string(kViHeader) +
                               "0101DL00290190DLDCAD\nDCBNONE\nDCDNONE\nDBA07042029\nDCSSAMPLE\n"
                               "DCTJORDAN\nDCU\nDBD03152021\nDBB07041988\nDBC1\nDATBRO\nDAU070 IN\n"
                               "DCE3\nDAG12 KONGENS GADE\nDAICHARLOTTE AMALIE\nDAJVI\nDAK008020000\n"
                               "DAQ0012345678\nDCF0012345678VI2021\nDCGUSA\nDCHNONE  \n";

TEST(VirginIslands, ReadsEveryElementUpToTheNextOne) {
    runCases({{"whole licence", parseVirginIslandsLicence, kViLicence, kOk,
               {{field::vehicleClassJurisdiction, "D"}, {field::restrictionCodeAlt, "NONE"},
                {field::expirationDate, "07042029"},  // stored as it stands
                {field::lastName, "SAMPLE"}, {field::firstName, "JORDAN"},
                {field::nameSuffix, ""},  // the next identifier follows at once
                {field::issueDate, "03152021"}, {field::birthdateAlt, "07041988"},
                {field::birthdate, ""}, {field::gender, "1"}, {field::eyeColor, "BRO"},
                {field::heightAlt, "070 IN"}, {field::weightRange, "3"},
                {field::address1, "12 KONGENS GADE"}, {field::city, "CHARLOTTE AMALIE"},
                {field::jurisdictionCode, "VI"}, {field::postalCode, "008020000"},
                {field::licenseNumber, "0012345678"}, {field::documentDiscriminator, "0012345678VI2021"},
                {field::countryCode, "USA"},
                {kVirginIslandsVehicleCodes, "NONE"},  // the last element runs to the end, trimmed
                {field::documentType, "DL"}, {field::country, "Virgin Islands of the U.S."}}}});
}

TEST(VirginIslands, DeliberateQuirksOfTheSearch) {
    const std::string dtt = std::string(kViHeader) + "DCSSAMPLE\nDTTJORDAN\nDCUJR\nDBD03152021";
    runCases({
        // DBA stands after DCS, so DBA's value finds no DCS after it and DCS swallows DBA.
        {"out of order", parseVirginIslandsLicence,
         std::string(kViHeader) + "DCSSAMPLE DBA07042029 DCTJORDAN DCU", kOk,
         {{field::expirationDate, ""}, {field::lastName, "SAMPLE DBA07042029"}, {field::firstName, "JORDAN"}}},
        // The search starts at the beginning: "DAT" is found inside the last name.
        {"identifier inside an earlier value", parseVirginIslandsLicence,
         std::string(kViHeader) + "DCSDATSON DCTJO DATBRO DAU070", kOk,
         {{field::eyeColor, "SON DCTJO DATBRO"}, {field::lastName, "DATSON"}}},
        {"DTT under the first layout", parseVirginIslandsLicence, dtt, kOk,
         {{field::lastName, ""}, {field::firstName, ""}, {field::nameSuffix, "JR"}}},
        {"DTT under the second layout", parseVirginIslandsLicenceDtt, dtt, kOk,
         {{field::lastName, "SAMPLE"}, {field::firstName, "JORDAN"}, {field::nameSuffix, "JR"}}},
        {"DCT under the second layout", parseVirginIslandsLicenceDtt, kViLicence, kOk,
         {{field::lastName, ""}, {field::firstName, ""}, {field::expirationDate, "07042029"}}},
    });
}

TEST(VirginIslands, ForeignTextSucceedsWithNothingWritten) {
    const std::string foreign[] = {"117ANSI 63606", "117ANSI 636026DCSSAMPLE\nDCTJORDAN",
                                   "@\n\x1e\rANSI 636062DCSSAMPLE\nDCTJORDAN", "x"};
    for (const FormatParser parser : {parseVirginIslandsLicence, parseVirginIslandsLicenceDtt}) {
        for (const std::string& input : foreign) {
            SCOPED_TRACE(input);
            RecordWithBuffer r(512);
            std::string text = input;
            EXPECT_EQ(parser(text.data(), static_cast<int32_t>(text.size()), r.get(), nullptr), kOk);
            EXPECT_EQ(filledSlots(r.record), 0);
        }
    }
}

// --- South Africa ---

// Surname, names, sex, nationality, number, birth, birth country, status, issue, marker.
std::string southAfrica(const std::string& names, const std::string& birth, const std::string& last) {
    return "SAMPLE |" + names + "|M|RSA|8807045800085|" + birth + "|ZAF|CITIZEN|15 Mar 2021|" + last;
}

TEST(SouthAfrica, ReadsTheFieldsAndTheMarker) {
    runCases({
        {"whole document", parseSouthAfricaIdentity, southAfrica("JORDAN LEE", "4 JUL 1988", "12345678900417"),
         kOk,
         {{field::lastName, "SAMPLE"}, {field::firstName, "JORDAN"}, {field::middleName, "LEE"},
          {field::gender, "M"}, {field::licenseNumber, "8807045800085"}, {field::birthdate, "19880704"},
          {field::issueDate, "20210315"},  // the ninth field ends at the next "|"
          {field::country, "Republic of South Africa"}, {field::countryCode, "ZAF"},
          {field::documentType, "ID"}}},
        {"middle name is all after the first blank", parseSouthAfricaIdentity,
         southAfrica("JORDAN LEE  MARIE ", "4 JUL 1988", "1234567890"), kOk,
         {{field::firstName, "JORDAN"}, {field::middleName, "LEE  MARIE"}}},
        {"one name", parseSouthAfricaIdentity, southAfrica("JORDAN", "4 JUL 1988", "1234567890"), kOk,
         {{field::firstName, "JORDAN"}, {field::middleName, ""}}},
        {"marker of exactly ten characters", parseSouthAfricaIdentity,
         southAfrica("JORDAN", "4 JUL 1988", "1234567890"), kOk, {{field::countryCode, "ZAF"}}},
        {"marker too short keeps the fields", parseSouthAfricaIdentity,
         southAfrica("JORDAN", "4 JUL 1988", "123456789"), kErrNotRecognised,
         {{field::lastName, "SAMPLE"}, {field::birthdate, "19880704"}, {field::countryCode, ""}}},
        {"marker not at the start", parseSouthAfricaIdentity, southAfrica("JORDAN", "4 JUL 1988", "01234567890"),
         kErrNotRecognised, {{field::country, ""}}},
        {"eight fields", parseSouthAfricaIdentity, "A|B|M|RSA|1|4 JUL 1988|ZAF|1234567890", kErrNotRecognised,
         {{field::lastName, ""}}},
    });
}

TEST(SouthAfrica, DayMonthNameYearDates) {
    struct DateCase {
        const char* text;
        const char* stored;
    };
    const DateCase cases[] = {
        {"5 Mar 1990", "19900305"}, {"05MAR1990", "19900305"}, {"5 mar  1990", "19900305"},
        {"31 dec 2001", "20011231"}, {"5 MAR 90", ""},       {"5 MAR 19900", ""},
        {"MAR 1990", ""},           {"5", ""},              {"5 XYZ 1990", ""},
        {"5 MA 1990", ""},          {"123 MAR 1990", ""},    {" 5 MAR 1990", ""},
    };
    for (const DateCase& c : cases) {
        SCOPED_TRACE(c.text);
        runCases({{"birth date", parseSouthAfricaIdentity, southAfrica("JORDAN", c.text, "1234567890"), kOk,
                   {{field::birthdate, c.stored}}}});
    }
}

// --- Panama ---

// Number, "CIP", names, surnames, four unread fields, birth, expiry, issue, class.
std::string panama(const std::string& birth, const std::string& expiry, const std::string& issue) {
    return "8-123-4567|CIP|JORDAN_LEE_MARIE|SAMPLE_PEREZ|M|O+|PANAMENA|NO|" + birth + "|" + expiry + "|" +
           issue + "|B";
}

TEST(Panama, ReadsTheTwelveFields) {
    runCases({{"whole licence", parsePanamaLicence, panama("4/7/1988", "15/03/2029", "15/03/2021"), kOk,
               {{field::licenseNumber, "8-123-4567"}, {field::firstName, "JORDAN"},
                {field::middleName, "LEE MARIE"}, {field::lastName, "SAMPLE PEREZ"},
                {field::birthdate, "19880704"}, {field::expirationDate, "20290315"},
                {field::issueDate, "20210315"}, {field::licenseClassification, "B"},
                {field::country, "Republic of Panama"}, {field::countryCode, "PAN"},
                {field::documentType, "DL"}}}});
}

TEST(Panama, DatesFormAChain) {
    struct ChainCase {
        const char* birth;
        const char* expiry;
        const char* issue;
        const char* storedBirth;
        const char* storedExpiry;
        const char* storedIssue;
    };
    const ChainCase cases[] = {
        {"5/3/1990", "5/3/2030", "5/3/2020", "19900305", "20300305", "20200305"},
        {"05/03/1990", "05/03/2030", "05/03/2020", "19900305", "20300305", "20200305"},
        {"45/13/1990", "5/3/2030", "5/3/2020", "19901345", "20300305", "20200305"},  // no range test
        {"5/3/90", "5/3/2030", "5/3/2020", "", "", ""},  // a bad birth date stops all three
        {"5/3/1990", "5/3/30", "5/3/2020", "19900305", "", ""},
        {"5/3/1990", "5/3/2030", "2020-03-05", "19900305", "20300305", ""},
        {"5/3/1990 ", "5/3/2030", "5/3/2020", "", "", ""},
        {"5/3/19901", "5/3/2030", "5/3/2020", "", "", ""},
        {"123/3/1990", "5/3/2030", "5/3/2020", "", "", ""},
    };
    for (const ChainCase& c : cases) {
        SCOPED_TRACE(c.birth);
        runCases({{"dates", parsePanamaLicence, panama(c.birth, c.expiry, c.issue), kOk,
                   {{field::birthdate, c.storedBirth},
                    {field::expirationDate, c.storedExpiry},
                    {field::issueDate, c.storedIssue}}}});
    }
}

TEST(Panama, RefusesTextWithoutItsMarkerOrFields) {
    runCases({
        {"marker in the last 7 characters", parsePanamaLicence, "1|2|3|4|5|6|7|8|9|10|11|CIP|BC", kErrNotRecognised,
         {{field::licenseNumber, ""}}},
        {"marker with 8 characters from it", parsePanamaLicence, "1|2|3|4|5|6|7|8|9|10|11|CIP|BCD",
         kOk, {{field::licenseNumber, "1"}}},
        {"no marker", parsePanamaLicence, "8-1|PAS|A|B|M|O|P|N|4/7/1988|1/1/2029|1/1/2021|B", kErrNotRecognised, {}},
        {"eleven fields", parsePanamaLicence, "8-1|CIP|A|B|M|O|P|N|4/7/1988|1/1/2029|1/1/2021", kErrNotRecognised,
         {}},
        {"shorter than the marker", parsePanamaLicence, "|CI", kErrNotRecognised, {}},
        {"lower-case marker", parsePanamaLicence, "8-1|cip|A|B|M|O|P|N|4/7/1988|1/1/2029|1/1/2021|B",
         kErrNotRecognised, {}},
    });
}

}  // namespace
}  // namespace orvane
