#include "documents/mrz.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "documents/mrz_check_digits.h"
#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;

constexpr ParseClock kClock2026{2026, 6, 1, 12, 0, 0};

// The published example zones, lines joined as the framing hands them over.
const std::string kTd3Example = "P<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<<<<<<<<<"
                                 "L898902C36UTO7408122F1204159ZE184226B<<<<<10";
const std::string kTd1Example = "I<UTOD231458907<<<<<<<<<<<<<<<"
                                 "7408122F1204159UTO<<<<<<<<<<<6"
                                 "ERIKSSON<<ANNA<MARIA<<<<<<<<<<";
const std::string kTd2Example = "I<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<"
                                 "D231458907UTO7408122F1204159<<<<<<<6";
const std::string kLongVisaExample = "V<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<<<<<<<<<"
                                      "L8988901C4XXX4009078F96121096ZE184226B<<<<<<";
const std::string kShortVisaExample = "V<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<"
                                       "L8988901C4XXX4009078F9612109<<<<<<<<";

// An invented passport: the name field (39) and the dates are the parts tests vary.
std::string passport(const std::string& name, const std::string& birth = "850715",
                     const std::string& expiry = "300101", const std::string& nationality = "UTO") {
    std::string first = "P<UTO" + name;
    first.resize(44, '<');
    return first + "X12345678" + "0" + nationality + birth + "0" + "M" + expiry + "0" +
           "<<<<<<<<<<<<<<" + "00";
}

TEST(MrzFormats, PassportZone) {
    std::string lowerCase = passport("SAMPLE<<JORDAN");
    lowerCase[6] = 'a';
    testing::runReaderCases({
        {"example", parseMrzFormat64, kTd3Example, kOk,
         {{field::countryCode, "UTO"}, {field::lastName, "ERIKSSON"}, {field::firstName, "ANNA"},
          {field::middleName, "MARIA"}, {field::licenseNumber, "L898902C3"}, {field::mrzCountryCode, "UTO"},
          {field::birthdateAlt, "19740812"}, {field::gender, "F"}, {field::expirationDate, "20120415"},
          {field::licenseNumberAlt, "ZE184226B"}, {field::documentType, "PASSPORT"}}},
        {"two fillers then one", parseMrzFormat64, passport("SMITH<<JOHN<PAUL"), kOk,
         {{field::lastName, "SMITH"}, {field::firstName, "JOHN"}, {field::middleName, "PAUL"},
          {field::licenseNumberAlt, ""}}},
        {"one filler only", parseMrzFormat64, passport("SMITH<JOHN"), kOk,
         {{field::lastName, "SMITH"}, {field::firstName, "JOHN"}, {field::middleName, ""}}},
        {"single fillers, three parts", parseMrzFormat64, passport("SMITH<JOHN<PAUL<ANN"), kOk,
         {{field::lastName, "SMITH"}, {field::firstName, "JOHN"}, {field::middleName, "PAUL ANN"}}},
        {"leading fillers, three in the middle", parseMrzFormat64, passport("<<SMITH<<<JOHN"), kOk,
         {{field::lastName, "SMITH"}, {field::firstName, "JOHN"}, {field::middleName, ""}}},
        {"primary name alone", parseMrzFormat64, passport("SMITH"), kOk,
         {{field::lastName, "SMITH"}, {field::firstName, ""}}},
        {"fillers inside parts become spaces", parseMrzFormat64, passport("VAN<DER<BERG<<ANNA<MARIE<LOUISE"), kOk,
         {{field::lastName, "VAN DER BERG"}, {field::firstName, "ANNA"}, {field::middleName, "MARIE LOUISE"}}},
        {"born in 25: this century", parseMrzFormat64, passport("SAMPLE<<JO", "250101", "350101"), kOk,
         {{field::birthdateAlt, "20250101"}, {field::expirationDate, "20350101"}}},
        {"born in 26: the last one", parseMrzFormat64, passport("SAMPLE<<JO", "260101", "300101"), kOk,
         {{field::birthdateAlt, "19260101"}, {field::expirationDate, "19300101"}}},
        {"expiry rolls over", parseMrzFormat64, passport("SAMPLE<<JO", "900101", "050101"), kOk,
         {{field::birthdateAlt, "19900101"}, {field::expirationDate, "20050101"}}},
        {"no range check on dates", parseMrzFormat64, passport("SAMPLE<<JO", "851340"), kOk,
         {{field::birthdateAlt, "19851340"}}},
        {"one-letter nationality", parseMrzFormat64, passport("SAMPLE<<JO", "850715", "300101", "D<<"), kOk,
         {{field::mrzCountryCode, "D"}}},
        {"no nationality", parseMrzFormat64, passport("SAMPLE<<JO", "850715", "300101", "<<<"), kOk,
         {{field::mrzCountryCode, ""}, {field::licenseNumber, "X12345678"}}},
        {"digit in the name: state kept", parseMrzFormat64, passport("SAMPLE<<J0"), kErrFraming,
         {{field::countryCode, "UTO"}, {field::lastName, ""}}},
        {"bad birth date: name kept", parseMrzFormat64, passport("SAMPLE<<JO", "85O715"), kErrFraming,
         {{field::lastName, "SAMPLE"}, {field::birthdateAlt, ""}, {field::gender, ""}}},
        {"bad nationality: dates and sex kept", parseMrzFormat64, passport("SAMPLE<<JO", "850715", "300101", "U1O"),
         kErrFraming, {{field::expirationDate, "20300101"}, {field::gender, "M"}, {field::licenseNumber, ""}}},
        {"empty name field", parseMrzFormat64, passport(""), kErrFraming, {{field::countryCode, "UTO"}}},
        {"lower case", parseMrzFormat64, lowerCase, kErrFraming, {{field::countryCode, ""}}},
        {"87 characters", parseMrzFormat64, kTd3Example.substr(0, 87), kErrFraming, {}},
        {"not a P", parseMrzFormat64, "V" + kTd3Example.substr(1), kErrFraming, {}},
    }, &kClock2026);
}

TEST(MrzFormats, CardAndVisaZones) {
    std::string licence = kTd1Example;
    licence.replace(56, 2, "NY");
    std::string digits = kTd1Example;
    digits.replace(56, 2, "12");
    testing::runReaderCases({
        {"TD1 example", parseMrzFormat65, kTd1Example, kOk,
         {{field::countryCode, "UTO"}, {field::licenseNumber, "D23145890"}, {field::birthdateAlt, "19740812"},
          {field::gender, "F"}, {field::expirationDate, "20120415"}, {field::mrzCountryCode, "UTO"},
          {field::lastName, "ERIKSSON"}, {field::firstName, "ANNA"}, {field::middleName, "MARIA"},
          {field::residenceJurisdictionCode, ""}, {field::documentType, "TD"}}},
        {"TD1 with letters at 56", parseMrzFormat65, licence, kOk,
         {{field::residenceJurisdictionCode, "NY"}, {field::documentType, "DL"}}},
        {"TD1 with digits at 56", parseMrzFormat65, digits, kOk,
         {{field::residenceJurisdictionCode, ""}, {field::documentType, "TD"}}},
        {"TD1 visa marker", parseMrzFormat65, "IV" + kTd1Example.substr(2), kErrFraming, {}},
        {"TD1 passport letter", parseMrzFormat65, "P" + kTd1Example.substr(1), kErrFraming, {}},
        {"TD2 example", parseMrzFormat66, kTd2Example, kOk,
         {{field::lastName, "ERIKSSON"}, {field::firstName, "ANNA"}, {field::licenseNumber, "D23145890"},
          {field::mrzCountryCode, "UTO"}, {field::birthdateAlt, "19740812"}, {field::expirationDate, "20120415"},
          {field::gender, "F"}, {field::documentType, "TD"}}},
        {"TD2 is not a visa", parseMrzFormat66, kShortVisaExample, kErrFraming, {}},
        {"visa of 88", parseMrzFormat67, kLongVisaExample, kOk,
         {{field::lastName, "ERIKSSON"}, {field::licenseNumber, "L8988901C"}, {field::mrzCountryCode, "XXX"},
          {field::birthdateAlt, "19400907"}, {field::gender, "F"}, {field::expirationDate, "19961210"},
          {field::licenseNumberAlt, ""}, {field::documentType, "TD"}}},
        {"visa of 72", parseMrzFormat67, kShortVisaExample, kOk,
         {{field::middleName, "MARIA"}, {field::licenseNumber, "L8988901C"}, {field::expirationDate, "19961210"}}},
        {"visa of 80", parseMrzFormat67, kLongVisaExample.substr(0, 80), kErrFraming, {}},
        {"card is not a visa", parseMrzFormat67, kTd2Example, kErrFraming, {}},
    }, &kClock2026);
}

TEST(MrzFormats, RefusedArguments) {
    RecordWithBuffer r;
    std::string zone = kTd3Example;
    EXPECT_EQ(parseMrzFormat64(zone.data(), 88, r.get(), nullptr), kErrInvalidArgument);
    EXPECT_EQ(parseMrzFormat64(zone.data(), 88, nullptr, &kClock2026), kErrInvalidArgument);
    EXPECT_EQ(parseMrzFormat65(nullptr, 90, r.get(), &kClock2026), kErrInvalidArgument);
    EXPECT_EQ(parseMrzFormat66(zone.data(), -1, r.get(), &kClock2026), kErrInvalidArgument);
    EXPECT_EQ(parseMrzFormat67(zone.data(), 0, r.get(), &kClock2026), kErrFraming);
}

std::string textAnswer(SVT_ParserHandle* handle, int (*getter)(SVT_ParserHandle*, char*, int)) {
    char buffer[128];
    return getter(handle, buffer, sizeof buffer) == SVT_OK ? std::string(buffer) : std::string();
}

// The examples as a reader delivers them, one line each, through the whole library.
TEST(MrzFormats, ExamplesThroughTheParser) {
    struct Example {
        const char* name;
        std::string scanned;
        uint32_t formatId;
        const char* documentType;
        const char* documentNumber;
        const char* birthdate;
        const char* expirationDate;
    };
    const auto lines = [](const std::string& zone, size_t width) {
        std::string out;
        for (size_t at = 0; at < zone.size(); at += width) out += zone.substr(at, width) + "\r\n";
        return out;
    };
    const Example examples[] = {
        {"TD3", lines(kTd3Example, 44), 64, "PASSPORT", "L898902C3", "08/12/1974", "04/15/2012"},
        {"TD1", lines(kTd1Example, 30), 65, "TD", "D23145890", "08/12/1974", "04/15/2012"},
        {"TD2", lines(kTd2Example, 36), 66, "TD", "D23145890", "08/12/1974", "04/15/2012"},
        {"visa of 88", lines(kLongVisaExample, 44), 67, "TD", "L8988901C", "09/07/1940", "12/10/1996"},
        {"visa of 72", lines(kShortVisaExample, 36), 67, "TD", "L8988901C", "09/07/1940", "12/10/1996"},
    };
    testing::HandlePtr handle(SVT_create());
    for (const Example& s : examples) {
        SCOPED_TRACE(s.name);
        const int32_t length = static_cast<int32_t>(s.scanned.size());
        ASSERT_EQ(SVT_parse(handle.get(), s.scanned.data(), length), SVT_OK);
        const ParsedRecord& record = handle->record;
        EXPECT_EQ(record.formatGroup, 5u);
        EXPECT_EQ(record.formatId, s.formatId);
        EXPECT_EQ(slotText(record, field::lastName), "ERIKSSON");
        EXPECT_EQ(slotText(record, field::firstName), "ANNA");
        EXPECT_EQ(slotText(record, field::middleName), "MARIA");
        EXPECT_EQ(slotText(record, field::licenseNumber), s.documentNumber);
        EXPECT_EQ(textAnswer(handle.get(), SVT_getDocumentType), s.documentType);
        EXPECT_EQ(textAnswer(handle.get(), SVT_getCountryCode), "UTO");
        EXPECT_EQ(textAnswer(handle.get(), SVT_getBirthdate), s.birthdate);
        EXPECT_EQ(textAnswer(handle.get(), SVT_getExpirationDate), s.expirationDate);
        EXPECT_EQ(textAnswer(handle.get(), SVT_getGender), "Female");
        MrzCheckReport report;
        EXPECT_EQ(checkMrzDigits(s.scanned.data(), length, &report), 1);
        EXPECT_EQ(report.firstFailure, nullptr);
    }
}

// A wrong check digit changes the verdict and nothing that the parser answers.
TEST(MrzFormats, CheckDigitsDoNotChangeTheAnswers) {
    std::string broken = kTd3Example;
    broken[53] = '1';
    broken[87] = '5';
    testing::HandlePtr handle(SVT_create());
    ASSERT_EQ(SVT_parse(handle.get(), broken.data(), static_cast<int32_t>(broken.size())), SVT_OK);
    EXPECT_EQ(handle->record.formatId, 64u);
    EXPECT_EQ(slotText(handle->record, field::licenseNumber), "L898902C3");
    EXPECT_EQ(textAnswer(handle.get(), SVT_getExpirationDate), "04/15/2012");
    MrzCheckReport report;
    EXPECT_EQ(checkMrzDigits(broken.data(), static_cast<int32_t>(broken.size()), &report), 0);
    ASSERT_NE(report.firstFailure, nullptr);
    EXPECT_STREQ(report.firstFailure, "documentNumber");
}

}  // namespace
}  // namespace orvane
