// Look-alikes corrected in zones: what the repairs make of damaged text, which of them the
// lenient parse names, what it then answers, and the corrections it must not make.
#include "documents/zone_ocr.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/repairs.h"
#include "orvane_parser.h"
#include "test_support.h"

namespace orvane {
namespace {

// The published specimen passport and invented documents, each with correct check digits.
const std::string kPassport = "P<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<<<<<<<<<\n"
                              "L898902C36UTO7408122F1204159ZE184226B<<<<<10";
const std::string kCard = "I<UTOC012345672<<<<<<<<<<<<<<<\n"
                          "9202139M3308154UTO<<<<<<<<<<<8\n"
                          "SAMPLE<<JORDAN<LEE<<<<<<<<<<<<";
const std::string kFrenchCard = "IDFRAEXEMPLE<MARTIN<<<<<<<<<<<075011\n"
                                "1203075012344CAMILLE<<ANNE<8704120F8";
const std::string kFrenchLicence = "D1FRA12AB345675310615EXEMPLE<3";

struct Answers {
    int status;
    std::string repairs;
    std::string fields;  // last name, first name, number, birth date, expiry, country
    std::string checkDigits;
};

Answers lenientAnswers(const std::string& input) {
    testing::HandlePtr handle(SVT_create());
    Answers a{SVT_parseLenient(handle.get(), input.data(), static_cast<int>(input.size())), "", "", ""};
    char buffer[256];
    if (SVT_getRepairs(handle.get(), buffer, sizeof buffer) == SVT_OK) a.repairs = buffer;
    if (a.status != SVT_OK) return a;
    using Getter = int (*)(SVT_ParserHandle*, char*, int);
    for (Getter getter : {Getter{SVT_getLastName}, Getter{SVT_getFirstName}, Getter{SVT_getLicenseNumber},
                          Getter{SVT_getBirthdate}, Getter{SVT_getExpirationDate}, Getter{SVT_getCountryCode}}) {
        a.fields += (getter(handle.get(), buffer, sizeof buffer) == SVT_OK ? std::string(buffer) : "-") + "|";
    }
    int digits = 0;
    SVT_validateCheckDigits(handle.get(), &digits);
    a.checkDigits = digits == SVT_CHECK_VALID ? "valid" : digits == SVT_CHECK_INVALID ? "invalid" : "none";
    return a;
}

// The text every repair in turn makes of the input, or "" when none applies.
std::string repaired(const std::string& input) {
    std::vector<char> out(8192), spare(8192);
    uint32_t applied = 0;
    const int32_t n = repairText(testing::span(input), out.data(), spare.data(), 8191, &applied);
    return n < 0 ? std::string() : std::string(out.data(), static_cast<size_t>(n));
}

TEST(ZoneOcr, CorrectedWhereTheCheckDigitsThenHold) {
    const struct {
        const char* name;
        std::string damaged;
        std::string text;  // what the repairs make of it
        Answers answers;
    } cases[] = {
        {"a passport's codes, names and dates",
         "P<UT0ERIK55ON<<ANNA<MAR1A<<<<<<<<<<<<<<<<<<<\nL898902C36UTO74O8I2ZFI2O4IS9ZE184226B<<<<<IO", kPassport,
         {0,
          "zone-ocr-issuingState,zone-ocr-names,zone-ocr-birthDate,zone-ocr-expiryDate,zone-ocr-optionalData,"
          "zone-ocr-composite",
          "ERIKSSON|ANNA|L898902C3|08/12/1974|04/15/2012|UTO|", "valid"}},
        {"a number's letter told from a digit by its check digit",
         "P<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<<<<<<<<<\nL8989O2C36UTO74O8122F1204159ZE184226B<<<<<10", kPassport,
         {0, "zone-ocr-documentNumber,zone-ocr-birthDate", "ERIKSSON|ANNA|L898902C3|08/12/1974|04/15/2012|UTO|",
          "valid"}},
        // As it came, the zone reads as well, with the letter in its number: the repair wins.
        {"a number's look-alike alone",
         "P<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<<<<<<<<<\nL8989O2C36UTO7408122F1204159ZE184226B<<<<<10", kPassport,
         {0, "zone-ocr-documentNumber", "ERIKSSON|ANNA|L898902C3|08/12/1974|04/15/2012|UTO|", "valid"}},
        {"a card among other lines, fillers lost, letters in lower case",
         "Scan:\n1<UT0C012345672<<<<<<<<<<<<<<<\n92o2i39m33o8i54uto<<<<<<<<<<<B\n5AMPLE<<J0RDAN<LEE<<<<<<\n", kCard,
         {0, "zone-lines,zone-ocr-documentCode,zone-ocr-issuingState,zone-ocr-names,zone-ocr-birthDate,"
             "zone-ocr-expiryDate,zone-ocr-composite",
          "SAMPLE|JORDAN|C01234567|02/13/1992|08/15/2033|UTO|", "valid"}},
        {"a French card", "1DFRAEXEMPLE<MART1N<<<<<<<<<<<075011\nI2O3075OI2344CAM1LLE<<ANNE<87O4I2OF8", kFrenchCard,
         {0, "zone-ocr-documentCode,zone-ocr-names,zone-ocr-documentNumber,zone-ocr-birthDate",
          "EXEMPLE MARTIN|CAMILLE|120307501234|04/12/1987|-|FRA|", "valid"}},
        {"a French licence", "D1FRA1ZAB34567S3IO6I5EXEMPLE<3", kFrenchLicence,
         {0, "zone-ocr-documentNumber,zone-ocr-expiryDate", "EXEMPLE|-|12AB34567|-|06/15/2031|FRA|", "valid"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(repaired(c.damaged), c.text);
        const Answers a = lenientAnswers(c.damaged);
        EXPECT_EQ(a.status, c.answers.status);
        EXPECT_EQ(a.repairs, c.answers.repairs);
        EXPECT_EQ(a.fields, c.answers.fields);
        EXPECT_EQ(a.checkDigits, c.answers.checkDigits);
    }
}

TEST(ZoneOcr, NoCorrectionTheCheckDigitsDoNotConfirm) {
    const struct {
        const char* name;
        std::string damaged;
        Answers answers;
    } cases[] = {
        // The name's look-alike stays, and with it the reader's refusal.
        // Neither is the expiry corrected then; the licence reads as it stands, its digits failing.
        {"a number two ways, with a composite", "D1FRA12A834567S3IO6I5EXEMPLE<3",
         {SVT_OK, "", "EXEMPLE|-|12A834567|-|-|FRA|", "invalid"}},
        {"a wrong check digit elsewhere", "P<UTOERIKSSON<<ANNA<MAR1A<<<<<<<<<<<<<<<<<<<\n"
                                          "L898902C36UTO7408123F1204159ZE184226B<<<<<10",
         {SVT_ERR_NOT_RECOGNISED, "", "", ""}},
        {"a letter no digit looks like", "P<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<<<<<<<<<\n"
                                         "L898902C36UTO74X8122F1204159ZE184226B<<<<<10",
         {SVT_ERR_NOT_RECOGNISED, "", "", ""}},
        // Two numbers hold their digit with one change each; no other digit can tell them apart.
        {"a number two ways", "V<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<\n0SB12BI615UT04009078F9612109<<<<<<<<",
         {SVT_ERR_NOT_RECOGNISED, "", "", ""}},
        // Its lines are not taken out either: other families' readers would take a text
        // opening with a digit for theirs.
        {"an opening misread in a zone that does not hold",
         "Scan:\n1<UTOC012345672<<<<<<<<<<<<<<<\n9202139M3308154UTO<<<<<<<<<<<9\nSAMPLE<<JORDAN<LEE<<<<<<<<<<<<",
         {SVT_ERR_NOT_RECOGNISED, "", "", ""}},
        // No check digit confirms a correction: what reads is read, the rest left out.
        {"a Swiss licence", "ABC123D<<\nFACHE123456789OOI<<85O3I5<<<<<\nMU5TER<<PETRA<ANNA<<<<<<<<<<<<",
         {SVT_OK, "", "-|-|ABC123D|-|-|CHE|", "none"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Answers a = lenientAnswers(c.damaged);
        EXPECT_EQ(a.status, c.answers.status);
        EXPECT_EQ(a.repairs, c.answers.repairs);
        EXPECT_EQ(a.fields, c.answers.fields);
        EXPECT_EQ(a.checkDigits, c.answers.checkDigits);
    }
}

TEST(ZoneOcr, AZoneThatHoldsIsGivenBackAsItStands) {
    FoundZone zone{};
    ASSERT_TRUE(findZone(testing::span(kCard), &zone));
    FoundZone corrected{};
    ASSERT_TRUE(correctZoneLookAlikes(zone, &corrected));
    EXPECT_EQ(std::string(corrected.text, 90), std::string(zone.text, 90));
    char out[128];
    for (auto repair : {repairZoneDocumentCode, repairZoneIssuingState, repairZoneNames, repairZoneDocumentNumber,
                        repairZoneNationality, repairZoneBirthDate, repairZoneExpiryDate, repairZoneOptionalData,
                        repairZoneComposite}) {
        EXPECT_EQ(repair(testing::span(kCard), out, sizeof out), -1);
    }
    zone.kind = ZoneKind::Passport;  // a kind its length does not have
    EXPECT_FALSE(correctZoneLookAlikes(zone, &corrected));
}

}  // namespace
}  // namespace orvane
