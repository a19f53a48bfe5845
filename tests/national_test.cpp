// The national readers, each run on its text framed as the driver frames it for the
// reader's registry row. The samples show the documents read whole through the handle;
// these cases pin the refusals, the boundaries and the deliberate quirks.
#include "documents/national.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "engine/framers.h"
#include "engine/registry.h"
#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;
using testing::RecordWithBuffer;
using testing::slotText;

// Runs the reader of the row for formatId on the input framed, and upper-cased unless
// passed through, as the driver hands it over.
int32_t runRow(uint32_t formatId, const std::string& input, RecordWithBuffer& r) {
    for (const FormatDescriptor& row : formatRegistry()) {
        if (row.formatId != formatId) continue;
        const int32_t size = static_cast<int32_t>(input.size());
        std::string text(input.size() + 1, '\0');
        int32_t length = 0;
        row.framer(input.data(), size, text.data(), size, &length);
        text.resize(static_cast<size_t>(length));
        if (row.framer != framePassThrough) {
            for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        }
        return row.parser(text.data(), length, r.get(), nullptr);
    }
    ADD_FAILURE() << "no registry row for format " << formatId;
    return kErrInvalidArgument;
}

int32_t filledSlots(const ParsedRecord& record) {
    int32_t count = 0;
    for (FieldId id = 0; id < kFieldCount; ++id) count += fieldMissing(&record, id) == 0;
    return count;
}

struct RowCase {
    const char* name;
    uint32_t formatId;
    std::string input;
    int32_t status;
    std::vector<testing::Slot> slots;  // "" for an empty slot
};

void runCases(const std::vector<RowCase>& cases) {
    for (const RowCase& c : cases) {
        SCOPED_TRACE(c.name);
        RecordWithBuffer r(4096);
        EXPECT_EQ(runRow(c.formatId, c.input, r), c.status);
        for (const testing::Slot& s : c.slots) EXPECT_EQ(slotText(r.record, s.id), s.value) << "slot " << s.id;
    }
}

std::string readSample(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

const fs::path kSamples = fs::path(ORVANE_SOURCE_DIR) / "samples";

// --- Virgin Islands (formats 62 and 63) ---

const std::string kViHeader = "117ANSI 636062";

TEST(VirginIslands, ElementTableRows) {
    const auto rows = virginIslandsElementOrder();
    ASSERT_EQ(rows.size(), 21u);
    for (size_t i = 0; i < rows.size(); ++i) {
        if (i != 5) EXPECT_STREQ(rows[i].id[0], rows[i].id[1]) << i;  // only the first name differs
    }
    EXPECT_STREQ(rows[5].id[1], "DTT");
    EXPECT_STREQ(rows[10].id[0], "DAT");
    EXPECT_EQ(rows[10].field, field::eyeColor);
    EXPECT_EQ(rows[20].field, kVirginIslandsVehicleCodes);
}

TEST(VirginIslands, EachValueRunsToTheNextIdentifier) {
    runCases({
        {"sample", 62, readSample(kSamples / "national-virgin-islands.txt"), kOk,
         {{field::expirationDate, "07042029"}, {field::birthdateAlt, "07041988"}, {field::birthdate, ""},
          {field::nameSuffix, ""},  // the next identifier follows at once
          {field::documentDiscriminator, "0012345678VI2021"},
          {kVirginIslandsVehicleCodes, "NONE"}}},  // the last element runs to the end, trimmed
        // DBA stands after DCS, so DBA finds no DCS after it and DCS swallows DBA.
        {"out of order", 62, kViHeader + "DCSSAMPLE DBA07042029 DCTJORDAN DCU", kOk,
         {{field::expirationDate, ""}, {field::lastName, "SAMPLE DBA07042029"}, {field::firstName, "JORDAN"}}},
        // The search starts at the beginning: "DAT" is found inside the last name.
        {"identifier inside an earlier value", 62, kViHeader + "DCSDATSON DCTJO DATBRO DAU070", kOk,
         {{field::eyeColor, "SON DCTJO DATBRO"}, {field::lastName, "DATSON"}}},
        {"DTT under format 62", 62, kViHeader + "DCSSAMPLE\nDTTJORDAN\nDCUJR\nDBD03152021", kOk,
         {{field::lastName, ""}, {field::firstName, ""}, {field::nameSuffix, "JR"}}},
    });
}

TEST(VirginIslands, ForeignTextSucceedsWithNothingWritten) {
    for (const char* input : {"117ANSI 63606", "117ANSI 636026DCSSAMPLE\nDCTJORDAN", "@\n\x1e\rANSI 636062DCSX\nDCTY"}) {
        for (const uint32_t formatId : {62u, 63u}) {
            RecordWithBuffer r(4096);
            EXPECT_EQ(runRow(formatId, input, r), kOk) << input;
            EXPECT_EQ(filledSlots(r.record), 0) << input;
        }
    }
}

// --- South Africa (format 59) ---

// Surname, names, sex, nationality, number, birth, birth country, status, issue, marker.
std::string southAfrica(const std::string& names, const std::string& birth, const std::string& last) {
    return "SAMPLE |" + names + "|M|RSA|8807045800085|" + birth + "|ZAF|CITIZEN|15 Mar 2021|" + last;
}

TEST(SouthAfrica, NamesAndMarker) {
    runCases({
        {"middle name is all after the first blank", 59, southAfrica("JORDAN LEE  MARIE ", "4 JUL 1988", "1234567890"),
         kOk, {{field::firstName, "JORDAN"}, {field::middleName, "LEE  MARIE"}, {field::issueDate, "20210315"}}},
        {"one name, marker of exactly ten", 59, southAfrica("JORDAN", "4 JUL 1988", "1234567890"), kOk,
         {{field::middleName, ""}, {field::countryCode, "ZAF"}}},
        {"marker too short keeps the fields", 59, southAfrica("JORDAN", "4 JUL 1988", "123456789"), kErrNotRecognised,
         {{field::lastName, "SAMPLE"}, {field::birthdate, "19880704"}, {field::countryCode, ""}}},
        {"marker not at the start", 59, southAfrica("JORDAN", "4 JUL 1988", "01234567890"), kErrNotRecognised, {}},
        {"eight fields", 59, "A|B|M|RSA|1|4 JUL 1988|ZAF|1234567890", kErrNotRecognised, {{field::lastName, ""}}},
    });
}

TEST(SouthAfrica, DayMonthNameYearDates) {
    const std::pair<const char*, const char*> cases[] = {
        {"5 Mar 1990", "19900305"}, {"05MAR1990", "19900305"}, {"5 mar  1990", "19900305"}, {"5 MAR 90", ""},
        {"5 MAR 19900", ""},        {"MAR 1990", ""},          {"5", ""},                   {"5 XYZ 1990", ""},
        {"5 MA 1990", ""},          {"123 MAR 1990", ""},      {" 5 MAR 1990", ""},
    };
    for (const auto& [text, stored] : cases) {
        runCases({{text, 59, southAfrica("JORDAN", text, "1234567890"), kOk, {{field::birthdate, stored}}}});
    }
}

// --- Panama (format 58) ---

// Number, "CIP", names, surnames, four unread fields, birth, expiry, issue, class.
std::string panama(const std::string& birth, const std::string& expiry, const std::string& issue) {
    return "8-123-4567|CIP|JORDAN_LEE_MARIE|SAMPLE_PEREZ|M|O+|PANAMENA|NO|" + birth + "|" + expiry + "|" + issue + "|B";
}

TEST(Panama, NamesAndMarker) {
    runCases({
        {"second name part is the rest", 58, panama("4/7/1988", "15/03/2029", "15/03/2021"), kOk,
         {{field::firstName, "JORDAN"}, {field::middleName, "LEE MARIE"}}},
        {"marker in the last 7 characters", 58, "1|2|3|4|5|6|7|8|9|10|11|CIP|BC", kErrNotRecognised, {}},
        {"marker with 8 characters from it", 58, "1|2|3|4|5|6|7|8|9|10|11|CIP|BCD", kOk, {{field::licenseNumber, "1"}}},
        {"no marker", 58, "8-1|PAS|A|B|M|O|P|N|4/7/1988|1/1/2029|1/1/2021|B", kErrNotRecognised, {}},
        {"eleven fields", 58, "8-1|CIP|A|B|M|O|P|N|4/7/1988|1/1/2029|1/1/2021", kErrNotRecognised, {}},
        {"shorter than the marker", 58, "|CI", kErrNotRecognised, {}},
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
        runCases({{c.dates[0], 58, panama(c.dates[0], c.dates[1], c.dates[2]), kOk,
                   {{field::birthdate, c.stored[0]}, {field::expirationDate, c.stored[1]},
                    {field::issueDate, c.stored[2]}}}});
    }
}

// --- The designed layouts: Guatemala (56), Puerto Rico (57), Mexico (60 and 61) ---

TEST(DesignedLayouts, MarkersSexAndDates) {
    const std::string mexicanHeading = "\n  Estados Unidos Mexicanos \n\nLicencia para conducir\n";
    runCases({
        {"Guatemala in any case", 56, "DACJORDAN\nDCG Guatemala ", kOk, {{field::countryCode, "GTM"}}},
        {"Guatemala as a code", 56, "DACJORDAN\nDCGGTM", kErrNotRecognised, {}},
        {"Guatemala City", 56, "DACJORDAN\nDCGGUATEMALA CITY", kErrNotRecognised, {}},
        {"Guatemala in an AAMVA barcode", 56, "\r\n@\n\x1e\rANSI 000000010001DL00310030DLDACJORDAN\nDCGGUATEMALA",
         kErrNotRecognised, {}},
        {"real day-first dates only", 56, "DBB29022020\nDBD29022021\nDBA0407198\nDCGGUATEMALA", kOk,
         {{field::birthdate, "20200229"}, {field::issueDate, ""}, {field::expirationDate, ""}}},
        {"an identity card", 57, "@\n\x1e\rANSI 604431080102ID00410020IDDAQ99\nDCSSAMPLE\n", kOk,
         {{field::documentType, "ID"}, {field::licenseNumber, "99"}}},
        {"another issuer", 57, "@\n\x1e\rANSI 636026080102DL00410020DLDAQ99\nDAJPR\n", kErrNotRecognised, {}},
        {"the issuer past the header", 57, std::string(40, ' ') + "ANSI 604431\nDAQ99", kErrNotRecognised, {}},
        {"hombre", 60, "DBChombre\nDCGMexico", kOk, {{field::gender, "M"}}},
        {"mujer", 60, "DBCM\nDCGMEXICO", kOk, {{field::gender, "F"}}},
        {"neither", 60, "DBCF\nDCGMEXICO", kOk, {{field::gender, ""}}},
        {"Mexico as a code", 60, "DBCH\nDCGMEX", kErrNotRecognised, {}},
        {"Mexico in an AAMVA barcode", 60, "@\n\x1e\rANSI 999999030001DL00000150DLDCSX\nDCGMEXICO", kErrNotRecognised,
         {}},
        {"blank lines, other title, one surname", 61, mexicanHeading + "NOMBRE: Jordan\nAPELLIDO MATERNO: Sample",
         kOk, {{field::firstName, "JORDAN"}, {field::middleName, ""}, {field::lastName, "SAMPLE"}}},
        {"impossible and two-digit dates", 61, mexicanHeading + "FECHA DE NACIMIENTO: 31/02/1990\nVIGENCIA: 1/1/27",
         kOk, {{field::birthdate, ""}, {field::expirationDate, ""}}},
        {"unknown or empty labels", 61, mexicanHeading + "NOMBRE JORDAN\nALIAS: X\nCP:\nSEXO: X", kOk,
         {{field::firstName, ""}, {field::postalCode, ""}, {field::gender, ""}}},
        {"no document line", 61, "ESTADOS UNIDOS MEXICANOS\nNOMBRE: JORDAN", kErrNotRecognised, {}},
        {"title first", 61, "LICENCIA DE CONDUCIR\nESTADOS UNIDOS MEXICANOS\nNOMBRE: X", kErrNotRecognised, {}},
    });
}

// Each national sample is read by its own reader only, and every other family's sample
// is refused by them all. The Virgin Islands readers succeed on anything but write
// nothing into foreign text.
TEST(NationalSamples, EachReaderTakesOnlyItsOwnSample) {
    for (const auto& entry : fs::directory_iterator(kSamples)) {
        if (entry.path().extension() != ".txt") continue;
        const std::string input = readSample(entry.path());
        fs::path expectedPath = entry.path();
        const std::string expected = readSample(expectedPath.replace_extension(".expected"));
        const size_t at = expected.find("formatId=");
        const uint32_t owner = at == std::string::npos ? 0 : static_cast<uint32_t>(std::stoul(expected.substr(at + 9)));
        for (uint32_t formatId = 56; formatId <= 63; ++formatId) {
            SCOPED_TRACE(entry.path().filename().string() + " under format " + std::to_string(formatId));
            RecordWithBuffer r(4096);
            const int32_t status = runRow(formatId, input, r);
            if (formatId < 62) {
                EXPECT_EQ(status, formatId == owner ? kOk : kErrNotRecognised);
            } else {
                EXPECT_EQ(status, kOk);
                EXPECT_EQ(filledSlots(r.record) > 0, owner == 62 || owner == 63);
            }
        }
    }
}

}  // namespace
}  // namespace orvane
