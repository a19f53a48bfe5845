// The zone readers and the check-digit verdict. The samples read every layout through
// the handle; these cases pin the name and century rules, the refusals, and that the
// readers ignore check digits which the verdict names.
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
// No personal number, and a filler where its check digit would stand.
const std::string kFillerDigitPassport = "P<UTOSAMPLE<<JORDAN<QUINN<<<<<<<<<<<<<<<<<<<"
                                         "X123456785UTO8507158M3001019<<<<<<<<<<<<<<<6";

// An invented passport: the name field (39) and the dates are the parts tests vary.
std::string passport(const std::string& name, const std::string& birth = "850715",
                     const std::string& expiry = "300101", const std::string& nationality = "UTO") {
    std::string first = "P<UTO" + name;
    first.resize(44, '<');
    return first + "X12345678" + "0" + nationality + birth + "0" + "M" + expiry + "0" +
           "<<<<<<<<<<<<<<" + "00";
}

// The zone with one character (or two) changed.
std::string with(const std::string& zone, size_t at, char c, size_t at2 = 0, char c2 = '\0') {
    std::string changed = zone;
    changed[at] = c;
    if (c2 != '\0') changed[at2] = c2;
    return changed;
}

TEST(MrzFormats, PassportZone) {
    testing::runReaderCases({
        {"example", parseMrzFormat64, kTd3Example, kOk,
         {{field::countryCode, "UTO"}, {field::mrzCountryCode, "UTO"}, {field::birthdateAlt, "19740812"},
          {field::licenseNumberAlt, "ZE184226B"}, {field::documentType, "PASSPORT"}}},
        {"check digits are not examined", parseMrzFormat64, with(kTd3Example, 53, '1', 87, '5'), kOk,
         {{field::licenseNumber, "L898902C3"}, {field::expirationDate, "20120415"}}},
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
        {"lower case", parseMrzFormat64, with(passport("SAMPLE<<JORDAN"), 6, 'a'), kErrFraming,
         {{field::countryCode, ""}}},
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
        {"TD1 with letters at 56", parseMrzFormat65, licence, kOk,
         {{field::residenceJurisdictionCode, "NY"}, {field::documentType, "DL"}}},
        {"TD1 with digits at 56", parseMrzFormat65, digits, kOk,
         {{field::residenceJurisdictionCode, ""}, {field::documentType, "TD"}}},
        {"TD1 visa marker", parseMrzFormat65, "IV" + kTd1Example.substr(2), kErrFraming, {}},
        {"TD1 passport letter", parseMrzFormat65, "P" + kTd1Example.substr(1), kErrFraming, {}},
        {"TD2 is not a visa", parseMrzFormat66, kShortVisaExample, kErrFraming, {}},
        {"visa of 88", parseMrzFormat67, kLongVisaExample, kOk,
         {{field::licenseNumber, "L8988901C"}, {field::mrzCountryCode, "XXX"}, {field::birthdateAlt, "19400907"},
          {field::expirationDate, "19961210"}, {field::licenseNumberAlt, ""}}},
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

struct Verdict {
    int32_t result;
    MrzLayout layout;
    int32_t checked;
    const char* firstFailure;  // null when every digit holds
};

void expectVerdicts(const std::vector<std::pair<std::string, Verdict>>& cases) {
    for (const auto& [zone, v] : cases) {
        SCOPED_TRACE(zone);
        MrzCheckReport report;
        EXPECT_EQ(checkMrzDigits(zone.data(), static_cast<int32_t>(zone.size()), &report), v.result);
        EXPECT_EQ(report.layout, v.layout);
        EXPECT_EQ(report.checkedDigits, v.checked);
        if (v.firstFailure == nullptr) {
            EXPECT_EQ(report.firstFailure, nullptr);
        } else {
            ASSERT_NE(report.firstFailure, nullptr);
            EXPECT_STREQ(report.firstFailure, v.firstFailure);
        }
    }
}

TEST(MrzCheckDigits, DigitsOfKnownFields) {
    const std::pair<const char*, int32_t> cases[] = {
        {"L898902C3", 6}, {"740812", 2}, {"120415", 9}, {"ZE184226B<<<<<", 1}, {"D23145890", 7}, {"", 0},
    };
    for (const auto& [text, digit] : cases) EXPECT_EQ(mrzCheckDigit(makeSpan(text)), digit) << text;
    EXPECT_EQ(mrzCheckDigit(makeSpan("L8989O2c3")), kErrFraming);
}

TEST(MrzCheckDigits, EveryLayoutAndTheFirstFailingField) {
    expectVerdicts({
        {kTd3Example, {1, MrzLayout::Td3, 5, nullptr}},
        {kTd1Example, {1, MrzLayout::Td1, 4, nullptr}},
        {kTd2Example, {1, MrzLayout::Td2, 4, nullptr}},
        {kLongVisaExample, {1, MrzLayout::VisaLong, 3, nullptr}},
        {kShortVisaExample, {1, MrzLayout::VisaShort, 3, nullptr}},
        {kFillerDigitPassport, {1, MrzLayout::Td3, 5, nullptr}},
        {with(kTd3Example, 53, '7'), {0, MrzLayout::Td3, 5, "documentNumber"}},
        {with(kTd3Example, 46, '0'), {0, MrzLayout::Td3, 5, "documentNumber"}},  // a data character
        {with(kTd3Example, 63, '3', 87, '1'), {0, MrzLayout::Td3, 5, "birthDate"}},
        {with(kTd3Example, 71, '<'), {0, MrzLayout::Td3, 5, "expiryDate"}},      // a filler counts as 0
        {with(kTd3Example, 86, 'A'), {0, MrzLayout::Td3, 5, "optionalData"}},
        {with(kTd3Example, 87, '1'), {0, MrzLayout::Td3, 5, "composite"}},
        {with(kTd1Example, 50, 'X'), {0, MrzLayout::Td1, 4, "composite"}},        // optional data is covered
        {with(kTd2Example, 55, '0'), {0, MrzLayout::Td2, 4, "birthDate"}},
        {with(kLongVisaExample, 71, '8'), {0, MrzLayout::VisaLong, 3, "expiryDate"}},
        {with(kShortVisaExample, 45, '<'), {0, MrzLayout::VisaShort, 3, "documentNumber"}},
        {with(kShortVisaExample, 70, 'Z'), {1, MrzLayout::VisaShort, 3, nullptr}},  // no composite
    });
}

TEST(MrzCheckDigits, ZonesAsScannedAndTextsThatAreNoZone) {
    expectVerdicts({
        {"p<utoEriksson<<anna<maria<<<<<<<<<<<<<<<<<<<\r\nL898902C36UTO7408122F1204159ZE184226B<<<<<10\n",
         {1, MrzLayout::Td3, 5, nullptr}},
        {kTd3Example.substr(0, 87), {kErrFraming, MrzLayout::None, 0, nullptr}},
        {"X" + kTd3Example.substr(1), {kErrFraming, MrzLayout::None, 0, nullptr}},
        {"IV" + kTd2Example.substr(2), {kErrFraming, MrzLayout::None, 0, nullptr}},
        {kTd1Example + "<", {kErrFraming, MrzLayout::None, 0, nullptr}},
        {"", {kErrFraming, MrzLayout::None, 0, nullptr}},
    });
    EXPECT_EQ(checkMrzDigits(nullptr, 10, nullptr), kErrInvalidArgument);
    EXPECT_EQ(checkMrzDigits(kTd3Example.data(), -1, nullptr), kErrInvalidArgument);
    EXPECT_EQ(checkMrzDigits(kTd3Example.data(), 88, nullptr), 1);
}

}  // namespace
}  // namespace orvane
