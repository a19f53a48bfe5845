// The Guatemalan, Puerto Rican and Mexican readers on text framed as the driver frames
// it for their rows, and the national samples against every national reader.
#include "documents/national.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "documents/national_fields.h"
#include "engine/framers.h"
#include "engine/registry.h"
#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;
using testing::RecordWithBuffer;
using testing::slotText;

const FormatDescriptor* rowOf(uint32_t formatId) {
    for (const FormatDescriptor& row : formatRegistry()) {
        if (row.formatId == formatId) return &row;
    }
    return nullptr;
}

// The input as the row's reader receives it: framed, and upper-cased unless passed through.
std::string framedFor(const FormatDescriptor& row, const std::string& input) {
    std::string out(input.size() + 1, '\0');
    int32_t length = 0;
    if (row.framer(input.data(), static_cast<int32_t>(input.size()), out.data(),
                   static_cast<int32_t>(input.size()), &length) != kOk) {
        return std::string();
    }
    out.resize(static_cast<size_t>(length));
    if (row.framer != framePassThrough) {
        for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return out;
}

struct RowRun {
    RecordWithBuffer r{4096};
    int32_t status = kErrInvalidArgument;
    RowRun(uint32_t formatId, const std::string& input) {
        const FormatDescriptor* row = rowOf(formatId);
        if (row == nullptr) {
            ADD_FAILURE() << "no registry row for format " << formatId;
            return;
        }
        std::string text = framedFor(*row, input);
        status = row->parser(text.data(), static_cast<int32_t>(text.size()), r.get(), nullptr);
    }
    std::string operator[](FieldId id) const { return slotText(r.record, id); }
};

struct Expectation {
    FieldId id;
    const char* value;
};

void expectSlots(const RowRun& run, const std::vector<Expectation>& slots) {
    for (const Expectation& e : slots) {
        SCOPED_TRACE(e.id);
        EXPECT_EQ(run[e.id], e.value);
    }
}

std::string readSample(const char* name) {
    std::ifstream in(fs::path(ORVANE_SOURCE_DIR) / "samples" / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

const std::string kGuatemala =
    "@\n\x1e\rANSI 000000010001DL00310230\nDLDAQ2547801230101\nDCSSAMPLE L\xd3PEZ\nDACJOS\xc9\n"
    "DADLUIS\nDBB04071988\nDBD15032021\nDBA15032026\nDBCM\nDAG6A AVENIDA 12-34 ZONA 1\nDAIMIXCO\nDCAB\n"
    "DCGGUATEMALA\n";

TEST(Guatemala, ReadsTheElementLayout) {
    const RowRun run(56, kGuatemala);
    EXPECT_EQ(run.status, kOk);
    expectSlots(run, {{field::licenseNumber, "2547801230101"}, {field::lastName, "SAMPLE LOPEZ"},
                      {field::firstName, "JOSE"}, {field::middleName, "LUIS"}, {field::birthdate, "19880704"},
                      {field::issueDate, "20210315"}, {field::expirationDate, "20260315"},
                      {field::gender, "M"}, {field::address1, "6A AVENIDA 12-34 ZONA 1"}, {field::city, "MIXCO"},
                      {field::vehicleClassJurisdiction, "B"}, {field::country, "Republic of Guatemala"},
                      {field::countryCode, "GTM"}, {field::documentType, "DL"}});
}

TEST(Guatemala, RecognisedOnlyByTheCountryName) {
    struct MarkerCase {
        const char* country;
        int32_t status;
    };
    const MarkerCase cases[] = {{"DCGGUATEMALA", kOk},       {"DCG Guatemala  ", kOk}, {"DCGGTM", kErrNotRecognised},
                                {"DCGUSA", kErrNotRecognised}, {"DCGMEXICO", kErrNotRecognised},
                                {"DCGGUATEMALA CITY", kErrNotRecognised}, {"", kErrNotRecognised}};
    for (const MarkerCase& c : cases) {
        SCOPED_TRACE(c.country);
        const RowRun run(56, std::string("DCSSAMPLE\nDACJORDAN\n") + c.country);
        EXPECT_EQ(run.status, c.status);
        EXPECT_EQ(run[field::lastName], c.status == kOk ? "SAMPLE" : "");
    }
}

TEST(Guatemala, DayFirstDatesMustBeRealDates) {
    struct DateCase {
        const char* value;
        const char* stored;
    };
    const DateCase cases[] = {{"29022020", "20200229"}, {"29022021", ""}, {"31042020", ""}, {"0407198", ""},
                              {"040719880", ""},        {"04-07-1988", ""}, {" 04071988 ", "19880704"}};
    for (const DateCase& c : cases) {
        SCOPED_TRACE(c.value);
        const RowRun run(56, std::string("DBB") + c.value + "\nDCGGUATEMALA");
        EXPECT_EQ(run[field::birthdate], c.stored);
    }
}

const std::string kPuertoRico =
    "@\n\x1e\rANSI 604431080102DL00410262ZP03030010DLDAQ0012345\nDCSSAMPLE RIVERA\nDDEN\nDACJORDAN\nDADLEE\n"
    "DCAD\nDCBNONE\nDCDNONE\nDBD03152021\nDBB07041988\nDBA07042029\nDBC1\nDAU070 IN\nDAYBRO\nDAZBLK\nDAW172\n"
    "DAG100 CALLE SAMPLE\nDAISAN JUAN\nDAJPR\nDAK009010000\nDCF0012345PR2021\nDCGUSA\r\nZPZPAN\r";

TEST(PuertoRico, ReadsTheLicenceUnderItsIssuerNumber) {
    const RowRun run(57, kPuertoRico);
    EXPECT_EQ(run.status, kOk);
    expectSlots(run, {{field::licenseNumber, "0012345"}, {field::lastName, "SAMPLE RIVERA"},
                      {field::firstName, "JORDAN"}, {field::middleName, "LEE"}, {field::birthdate, "19880704"},
                      {field::issueDate, "20210315"}, {field::expirationDate, "20290704"}, {field::gender, "1"},
                      {field::eyeColor, "BRO"}, {field::hairColor, "BLK"}, {field::heightAlt, "070 IN"},
                      {field::weightPounds, "172"}, {field::address1, "100 CALLE SAMPLE"},
                      {field::city, "SAN JUAN"}, {field::jurisdictionCode, "PR"}, {field::postalCode, "009010000"},
                      {field::vehicleClassJurisdiction, "D"}, {field::restrictionCodeAlt, "NONE"},
                      {field::endorsementsCodeAlt, "NONE"}, {field::documentDiscriminator, "0012345PR2021"},
                      {field::iin, "604431"}, {field::country, "Puerto Rico"}, {field::countryCode, "PRI"},
                      {field::documentType, "DL"}});
}

TEST(PuertoRico, TheDesignatorGivesTheDocumentTypeAndOtherIssuersAreRefused) {
    const RowRun identity(57, "@\n\x1e\rANSI 604431080102ID00410020IDDAQ99\nDCSSAMPLE\n");
    EXPECT_EQ(identity.status, kOk);
    EXPECT_EQ(identity[field::documentType], "ID");
    EXPECT_EQ(identity[field::licenseNumber], "99");
    EXPECT_EQ(RowRun(57, "@\n\x1e\rANSI 636026080102DL00410020DLDAQ99\nDAJPR\n").status, kErrNotRecognised);
    // The issuer number counts only in the header, not further down.
    EXPECT_EQ(RowRun(57, std::string(40, ' ') + "ANSI 604431\nDAQ99").status, kErrNotRecognised);
}

const std::string kMexicoElements =
    "@\n\x1e\rANSI 000000010001DL00310270\nDLDAQJL1234567\nDCSSAMPLE MU\xd1OZ\nDACMAR\xcd" "A\n"
    "DADFERNANDA\nDBB04071988\nDBD15032021\nDBA15032026\nDBCM\nDBJSAMM880704MJCXXX09\nDAGAV. JU\xc1REZ 120\n"
    "DAIZAPOPAN\nDAJJL\nDAK45100\nDCAA\nDCGM\xc9XICO\n";

TEST(MexicoElements, ReadsTheElementLayout) {
    const RowRun run(60, kMexicoElements);
    EXPECT_EQ(run.status, kOk);
    expectSlots(run, {{field::licenseNumber, "JL1234567"}, {field::lastName, "SAMPLE MUNOZ"},
                      {field::firstName, "MARIA"}, {field::middleName, "FERNANDA"}, {field::birthdate, "19880704"},
                      {field::issueDate, "20210315"}, {field::expirationDate, "20260315"},
                      {field::gender, "F"},  // "M" is mujer
                      {field::uniqueCustomerId, "SAMM880704MJCXXX09"}, {field::address1, "AV. JUAREZ 120"},
                      {field::city, "ZAPOPAN"}, {field::jurisdictionCode, "JL"}, {field::postalCode, "45100"},
                      {field::vehicleClassJurisdiction, "A"}, {field::country, "United Mexican States"},
                      {field::countryCode, "MEX"}, {field::documentType, "DL"}});
}

TEST(MexicoElements, SexAndCountryName) {
    struct Case {
        const char* sex;
        const char* country;
        int32_t status;
        const char* gender;
    };
    const Case cases[] = {
        {"H", "MEXICO", kOk, "M"},       {"hombre", "Mexico", kOk, "M"}, {"M", "MEXICO", kOk, "F"},
        {"MUJER", "MEXICO", kOk, "F"},   {"F", "MEXICO", kOk, ""},       {"1", "MEXICO", kOk, ""},
        {"H", "MEX", kErrNotRecognised, ""}, {"H", "GUATEMALA", kErrNotRecognised, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.sex) + " " + c.country);
        const RowRun run(60, std::string("DACJORDAN\nDBC") + c.sex + "\nDCG" + c.country);
        EXPECT_EQ(run.status, c.status);
        EXPECT_EQ(run[field::gender], c.gender);
    }
}

const std::string kMexicoText =
    "ESTADOS UNIDOS MEXICANOS\r\nLICENCIA DE CONDUCIR\r\nN\xdaMERO: JL7654321\r\nAPELLIDO PATERNO: Mu\xf1oz\r\n"
    "APELLIDO MATERNO: Sample\r\nNOMBRE: Jos\xe9 \xc1ngel\r\nFECHA DE NACIMIENTO: 05/03/1990\r\nSEXO: H\r\n"
    "CURP: MUSJ900305HJCXXX01\r\nDOMICILIO: Av. Ju\xe1rez 120\r\nMUNICIPIO: Zapopan\r\nESTADO: JL\r\nCP: 45100\r\n"
    "TIPO: A\r\nEXPEDICI\xd3N: 12/01/2022\r\nVIGENCIA: 12/01/2027\r\n";

TEST(MexicoText, ReadsTheLabelledLinesWithAccentsFolded) {
    const RowRun run(61, kMexicoText);
    EXPECT_EQ(run.status, kOk);
    expectSlots(run, {{field::licenseNumber, "JL7654321"}, {field::lastName, "MUNOZ SAMPLE"},
                      {field::firstName, "JOSE"}, {field::middleName, "ANGEL"}, {field::birthdate, "19900305"},
                      {field::gender, "M"}, {field::uniqueCustomerId, "MUSJ900305HJCXXX01"},
                      {field::address1, "AV. JUAREZ 120"}, {field::city, "ZAPOPAN"}, {field::jurisdictionCode, "JL"},
                      {field::postalCode, "45100"}, {field::vehicleClassJurisdiction, "A"},
                      {field::issueDate, "20220112"}, {field::expirationDate, "20270112"},
                      {field::country, "United Mexican States"}, {field::countryCode, "MEX"},
                      {field::documentType, "DL"}});
}

TEST(MexicoText, HeadingAndLines) {
    const std::string heading = "\n  Estados Unidos Mexicanos \n\nLicencia para conducir\n";
    struct Case {
        const char* name;
        std::string input;
        int32_t status;
        std::vector<Expectation> slots;
    };
    const Case cases[] = {
        {"blank lines and the other title", heading + "NOMBRE: Jordan\nAPELLIDO MATERNO: Sample", kOk,
         {{field::firstName, "JORDAN"}, {field::middleName, ""}, {field::lastName, "SAMPLE"}}},
        {"impossible and two-digit dates", heading + "FECHA DE NACIMIENTO: 31/02/1990\nVIGENCIA: 1/1/27", kOk,
         {{field::birthdate, ""}, {field::expirationDate, ""}}},
        {"lines without a known label", heading + "NOMBRE JORDAN\nALIAS: X\nCP:\nSEXO: X", kOk,
         {{field::firstName, ""}, {field::postalCode, ""}, {field::gender, ""}}},
        {"no document line", "ESTADOS UNIDOS MEXICANOS\nNOMBRE: JORDAN", kErrNotRecognised, {}},
        {"title first", "LICENCIA DE CONDUCIR\nESTADOS UNIDOS MEXICANOS\nNOMBRE: JORDAN", kErrNotRecognised, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const RowRun run(61, c.input);
        EXPECT_EQ(run.status, c.status);
        expectSlots(run, c.slots);
    }
}

TEST(NationalFields, SlashedDates) {
    struct Case {
        const char* text;
        bool read;
        DateValue date;
    };
    const Case cases[] = {
        {"5/3/1990", true, {1990, 3, 5, 0, 0, 0}}, {"05/03/1990", true, {1990, 3, 5, 0, 0, 0}},
        {"99/99/0000", true, {0, 99, 99, 0, 0, 0}}, {"5/3/90", false, {}}, {"5-3-1990", false, {}},
        {"/3/1990", false, {}}, {"5/3/1990/", false, {}}, {"5//1990", false, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        DateValue date{};
        EXPECT_EQ(readSlashedDate(makeSpan(c.text), &date), c.read);
        if (c.read) {
            EXPECT_EQ(date.year, c.date.year);
            EXPECT_EQ(date.month, c.date.month);
            EXPECT_EQ(date.day, c.date.day);
        }
    }
}

// Every national sample is read by its own reader and refused by every other national
// reader that returns a status; foreign families' samples are refused by all of them.
TEST(NationalSamples, EachReaderTakesOnlyItsOwnSample) {
    struct Sample {
        const char* file;
        uint32_t formatId;  // 0: a sample of another family
    };
    const Sample samples[] = {
        {"aamva-2013-arizona.txt", 0},         {"national-guatemala.txt", 56},
        {"national-puerto-rico.txt", 57},      {"national-panama.txt", 58},
        {"national-south-africa.txt", 59},     {"national-mexico-elements.txt", 60},
        {"national-mexico-latin1.txt", 61},    {"national-virgin-islands.txt", 62},
        {"national-virgin-islands-dtt.txt", 63},
    };
    for (const Sample& sample : samples) {
        const std::string input = readSample(sample.file);
        ASSERT_FALSE(input.empty()) << sample.file;
        for (uint32_t formatId = 56; formatId <= 61; ++formatId) {
            SCOPED_TRACE(std::string(sample.file) + " under format " + std::to_string(formatId));
            const RowRun run(formatId, input);
            EXPECT_EQ(run.status, formatId == sample.formatId ? kOk : kErrNotRecognised);
        }
        for (uint32_t formatId = 62; formatId <= 63; ++formatId) {
            SCOPED_TRACE(std::string(sample.file) + " under format " + std::to_string(formatId));
            const RowRun run(formatId, input);
            // The Virgin Islands readers accept anything and write nothing into foreign text.
            EXPECT_EQ(run.status, kOk);
            const bool own = sample.formatId == 62 || sample.formatId == 63;
            EXPECT_EQ(fieldMissing(&run.r.record, field::country), own ? 0 : -1);
        }
    }
}

// Every prefix of every national sample parses without fault, to a documented status.
TEST(NationalSamples, EveryPrefixParsesSafely) {
    testing::HandlePtr handle(SVT_create());
    for (const auto& entry : fs::directory_iterator(fs::path(ORVANE_SOURCE_DIR) / "samples")) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() != ".txt" || name.rfind("national-", 0) != 0) continue;
        const std::string input = readSample(name.c_str());
        for (size_t length = 1; length <= input.size(); ++length) {
            const int status = SVT_parse(handle.get(), input.data(), static_cast<int>(length));
            if (status != kOk && status != kErrNotRecognised) ADD_FAILURE() << name << " cut at " << length;
        }
    }
}

}  // namespace
}  // namespace orvane
