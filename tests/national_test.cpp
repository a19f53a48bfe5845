// The national readers, each on its text as the driver hands it over (upper-cased for
// format 61). The samples show the documents read whole through the handle; these
// cases pin the refusals, the boundaries and the deliberate quirks.
#include "documents/national.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::runReaderCases;

std::string readSample(const char* name) {
    std::ifstream in(std::filesystem::path(ORVANE_SOURCE_DIR) / "samples" / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// --- Virgin Islands (formats 62 and 63) ---

const std::string kViHeader = "117ANSI 636062";
constexpr FormatParser kVi = parseVirginIslandsLicence;

TEST(VirginIslands, EachValueRunsToTheNextIdentifier) {
    runReaderCases({
        {"sample", kVi, readSample("national-virgin-islands.txt"), kOk,
         {{field::expirationDate, "07042029"}, {field::birthdateAlt, "07041988"}, {field::birthdate, ""},
          {field::nameSuffix, ""},  // the next identifier follows at once
          {field::documentDiscriminator, "0012345678VI2021"},
          {kVirginIslandsVehicleCodes, "NONE"}}},  // the last element runs to the end, trimmed
        // DBA stands after DCS, so DBA finds no DCS after it and DCS swallows DBA.
        {"out of order", kVi, kViHeader + "DCSSAMPLE DBA07042029 DCTJORDAN DCU", kOk,
         {{field::expirationDate, ""}, {field::lastName, "SAMPLE DBA07042029"}, {field::firstName, "JORDAN"}}},
        // The search starts at the beginning: "DAT" is found inside the last name.
        {"identifier inside an earlier value", kVi, kViHeader + "DCSDATSON DCTJO DATBRO DAU070", kOk,
         {{field::eyeColor, "SON DCTJO DATBRO"}, {field::lastName, "DATSON"}}},
        {"DTT under format 62", kVi, kViHeader + "DCSSAMPLE\nDTTJORDAN\nDCUJR\nDBD03152021", kOk,
         {{field::lastName, ""}, {field::firstName, ""}, {field::nameSuffix, "JR"}}},
    });
}

TEST(VirginIslands, ForeignTextSucceedsWithNothingWritten) {
    for (const char* input :
         {"117ANSI 63606", "117ANSI 636026DCSSAMPLE\nDCTJORDAN", "@\n\x1e\rANSI 636062DCSX\nDCTY"}) {
        for (const FormatParser reader : {parseVirginIslandsLicence, parseVirginIslandsLicenceDtt}) {
            testing::RecordWithBuffer r(4096);
            std::string text = input;
            EXPECT_EQ(reader(text.data(), static_cast<int32_t>(text.size()), r.get(), nullptr), kOk) << input;
            for (FieldId id = 0; id < kFieldCount; ++id) EXPECT_EQ(fieldMissing(r.get(), id), -1) << input;
        }
    }
}

// --- South Africa (format 59) ---

constexpr FormatParser kSa = parseSouthAfricaIdentity;

// Surname, names, sex, nationality, number, birth, birth country, status, issue, marker.
std::string southAfrica(const std::string& names, const std::string& birth, const std::string& last) {
    return "SAMPLE |" + names + "|M|RSA|8807045800085|" + birth + "|ZAF|CITIZEN|15 Mar 2021|" + last;
}

TEST(SouthAfrica, NamesAndMarker) {
    runReaderCases({
        {"middle name is all after the first blank", kSa, southAfrica("JORDAN LEE  MARIE ", "4 JUL 1988", "1234567890"),
         kOk, {{field::firstName, "JORDAN"}, {field::middleName, "LEE  MARIE"}, {field::issueDate, "20210315"}}},
        {"one name, marker of exactly ten", kSa, southAfrica("JORDAN", "4 JUL 1988", "1234567890"), kOk,
         {{field::middleName, ""}, {field::countryCode, "ZAF"}}},
        {"marker too short keeps the fields", kSa, southAfrica("JORDAN", "4 JUL 1988", "123456789"), kErrNotRecognised,
         {{field::lastName, "SAMPLE"}, {field::birthdate, "19880704"}, {field::countryCode, ""}}},
        {"marker not at the start", kSa, southAfrica("JORDAN", "4 JUL 1988", "01234567890"), kErrNotRecognised, {}},
        {"eight fields", kSa, "A|B|M|RSA|1|4 JUL 1988|ZAF|1234567890", kErrNotRecognised, {{field::lastName, ""}}},
    });
}

TEST(SouthAfrica, DayMonthNameYearDates) {
    const std::pair<const char*, const char*> cases[] = {
        {"5 Mar 1990", "19900305"}, {"05MAR1990", "19900305"}, {"5 mar  1990", "19900305"}, {"5 MAR 90", ""},
        {"5 MAR 19900", ""},        {"MAR 1990", ""},          {"5", ""},                   {"5 XYZ 1990", ""},
        {"5 MA 1990", ""},          {"123 MAR 1990", ""},      {" 5 MAR 1990", ""},
    };
    for (const auto& [text, stored] : cases) {
        runReaderCases({{text, kSa, southAfrica("JORDAN", text, "1234567890"), kOk, {{field::birthdate, stored}}}});
    }
}

// --- Panama (format 58) ---

constexpr FormatParser kPa = parsePanamaLicence;

// Number, "CIP", names, surnames, four unread fields, birth, expiry, issue, class.
std::string panama(const std::string& birth, const std::string& expiry, const std::string& issue) {
    return "8-123-4567|CIP|JORDAN_LEE_MARIE|SAMPLE_PEREZ|M|O+|PANAMENA|NO|" + birth + "|" + expiry + "|" + issue + "|B";
}

TEST(Panama, NamesAndMarker) {
    runReaderCases({
        {"second name part is the rest", kPa, panama("4/7/1988", "15/03/2029", "15/03/2021"), kOk,
         {{field::firstName, "JORDAN"}, {field::middleName, "LEE MARIE"}}},
        {"marker in the last 7 characters", kPa, "1|2|3|4|5|6|7|8|9|10|11|CIP|BC", kErrNotRecognised, {}},
        {"marker with 8 characters from it", kPa, "1|2|3|4|5|6|7|8|9|10|11|CIP|BCD", kOk,
         {{field::licenseNumber, "1"}}},
        {"no marker", kPa, "8-1|PAS|A|B|M|O|P|N|4/7/1988|1/1/2029|1/1/2021|B", kErrNotRecognised, {}},
        {"eleven fields", kPa, "8-1|CIP|A|B|M|O|P|N|4/7/1988|1/1/2029|1/1/2021", kErrNotRecognised, {}},
        {"shorter than the marker", kPa, "|CI", kErrNotRecognised, {}},
    });
}

TEST(Panama, DatesFormAChain) {
    struct ChainCase {
        const char* dates[3];   // birth, expiry, issue
        const char* stored[3];
    };
    const ChainCase cases[] = {
        {{"5/3/1990", "5/3/2030", "5/3/2020"}, {"19900305", "20300305", "20200305"}},
        {{"05/03/1990", "05/03/2030", "05/03/2020"}, {"19900305", "20300305", "20200305"}},
        {{"45/13/1990", "5/3/2030", "5/3/2020"}, {"19901345", "20300305", "20200305"}},  // no range test
        {{"5/3/90", "5/3/2030", "5/3/2020"}, {"", "", ""}},  // a bad birth date stops all three
        {{"5/3/1990", "5/3/30", "5/3/2020"}, {"19900305", "", ""}},
        {{"5/3/1990", "5/3/2030", "2020-03-05"}, {"19900305", "20300305", ""}},
        {{"5/3/1990 ", "5/3/2030", "5/3/2020"}, {"", "", ""}},
        {{"123/3/1990", "5/3/2030", "5/3/2020"}, {"", "", ""}},
    };
    for (const ChainCase& c : cases) {
        runReaderCases({{c.dates[0], kPa, panama(c.dates[0], c.dates[1], c.dates[2]), kOk,
                   {{field::birthdate, c.stored[0]}, {field::expirationDate, c.stored[1]},
                    {field::issueDate, c.stored[2]}}}});
    }
}

// --- The designed layouts: Guatemala (56), Puerto Rico (57), Mexico (60 and 61) ---

TEST(DesignedLayouts, MarkersSexAndDates) {
    const FormatParser guatemala = parseGuatemalaLicence;
    const FormatParser puertoRico = parsePuertoRicoLicence;
    const FormatParser mexicanElements = parseMexicoElements;
    const FormatParser mexicanText = parseMexicoLatin1Text;
    const std::string heading = "\n  ESTADOS UNIDOS MEXICANOS \n\nLICENCIA PARA CONDUCIR\n";
    runReaderCases({
        {"Guatemala in any case", guatemala, "DACJORDAN\nDCG Guatemala ", kOk, {{field::countryCode, "GTM"}}},
        {"Guatemala as a code", guatemala, "DACJORDAN\nDCGGTM", kErrNotRecognised, {}},
        {"Guatemala City", guatemala, "DACJORDAN\nDCGGUATEMALA CITY", kErrNotRecognised, {}},
        {"Guatemala in an AAMVA barcode", guatemala,
         "\r\n@\n\x1e\rANSI 000000010001DL00310030DLDACJORDAN\nDCGGUATEMALA", kErrNotRecognised, {}},
        {"real day-first dates only", guatemala, "DBB29022020\nDBD29022021\nDBA0407198\nDCGGUATEMALA", kOk,
         {{field::birthdate, "20200229"}, {field::issueDate, ""}, {field::expirationDate, ""}}},
        {"an identity card", puertoRico, "@\n\x1e\rANSI 604431080102ID00410020IDDAQ99\nDCSSAMPLE\n", kOk,
         {{field::documentType, "ID"}, {field::licenseNumber, "99"}}},
        {"another issuer", puertoRico, "@\n\x1e\rANSI 636026080102DL00410020DLDAQ99\nDAJPR\n", kErrNotRecognised, {}},
        {"the issuer past the header", puertoRico, std::string(40, ' ') + "ANSI 604431\nDAQ99", kErrNotRecognised, {}},
        {"hombre", mexicanElements, "DBChombre\nDCGMexico", kOk, {{field::gender, "M"}}},
        {"mujer", mexicanElements, "DBCM\nDCGMEXICO", kOk, {{field::gender, "F"}}},
        {"neither", mexicanElements, "DBCF\nDCGMEXICO", kOk, {{field::gender, ""}}},
        {"Mexico as a code", mexicanElements, "DBCH\nDCGMEX", kErrNotRecognised, {}},
        {"Mexico in an AAMVA barcode", mexicanElements, "@\n\x1e\rANSI 999999030001DL00000150DLDCSX\nDCGMEXICO",
         kErrNotRecognised, {}},
        {"blank lines, other title, one surname", mexicanText, heading + "NOMBRE: JORDAN\nAPELLIDO MATERNO: SAMPLE",
         kOk, {{field::firstName, "JORDAN"}, {field::middleName, ""}, {field::lastName, "SAMPLE"}}},
        {"impossible and two-digit dates", mexicanText, heading + "FECHA DE NACIMIENTO: 31/02/1990\nVIGENCIA: 1/1/27",
         kOk, {{field::birthdate, ""}, {field::expirationDate, ""}}},
        {"unknown or empty labels", mexicanText, heading + "NOMBRE JORDAN\nALIAS: X\nCP:\nSEXO: X", kOk,
         {{field::firstName, ""}, {field::postalCode, ""}, {field::gender, ""}}},
        {"no document line", mexicanText, "ESTADOS UNIDOS MEXICANOS\nNOMBRE: JORDAN", kErrNotRecognised, {}},
        {"title first", mexicanText, "LICENCIA DE CONDUCIR\nESTADOS UNIDOS MEXICANOS\nNOMBRE: X", kErrNotRecognised,
         {}},
    });
}

// Elements beyond the layout stay raw elements: the reader's answers are its layout's.
TEST(PuertoRico, ReadsItsLayoutAndStaysPuertoRico) {
    testing::runReaderCases({
        {"elements beyond the layout", parsePuertoRicoLicence,
         "@\n\x1e\rANSI 604431080102DL00410050DLDAQ0012345\nDCSSAMPLE\nDDAF\nDDB02142014\nDCK99\nDCGUSA\nDAJPR", kOk,
         {{field::complianceType, ""}, {field::cardRevisionDate, ""}, {field::inventoryControlNumber, ""},
          {field::countryCode, "PRI"}, {field::country, "Puerto Rico"}, {field::licenseNumber, "0012345"}}},
        {"another issuer", parsePuertoRicoLicence, "@\n\x1e\rANSI 636026080102DL00410050DLDAQ1\nDDAF", kErrNotRecognised, {}},
    });
}

}  // namespace
}  // namespace orvane
