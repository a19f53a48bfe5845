#include "documents/mrz_check_digits.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/status.h"

namespace orvane {
namespace {

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

// The zone with one character (or two) changed.
std::string with(const std::string& zone, size_t at, char c, size_t at2 = 0, char c2 = '\0') {
    std::string changed = zone;
    changed.replace(at, 1, 1, c);
    if (c2 != '\0') changed.replace(at2, 1, 1, c2);
    return changed;
}

struct Verdict {
    int32_t result;
    MrzLayout layout;
    int32_t checked;
    const char* firstFailure;  // null when every digit holds
};

void expectVerdict(const std::string& zone, const Verdict& v) {
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

TEST(MrzCheckDigits, DigitsOfKnownFields) {
    const std::pair<const char*, int32_t> cases[] = {
        {"L898902C3", 6}, {"740812", 2}, {"120415", 9}, {"ZE184226B<<<<<", 1}, {"D23145890", 7}, {"", 0},
    };
    for (const auto& [text, digit] : cases) EXPECT_EQ(mrzCheckDigit(makeSpan(text)), digit) << text;
    EXPECT_EQ(mrzCheckDigit(makeSpan("L8989O2c3")), kErrFraming);
}

TEST(MrzCheckDigits, ExamplesHoldInEveryLayout) {
    const std::pair<std::string, Verdict> cases[] = {
        {kTd3Example, {1, MrzLayout::Td3, 5, nullptr}},
        {kTd1Example, {1, MrzLayout::Td1, 4, nullptr}},
        {kTd2Example, {1, MrzLayout::Td2, 4, nullptr}},
        {kLongVisaExample, {1, MrzLayout::VisaLong, 3, nullptr}},
        {kShortVisaExample, {1, MrzLayout::VisaShort, 3, nullptr}},
        {kFillerDigitPassport, {1, MrzLayout::Td3, 5, nullptr}},
    };
    for (const auto& [zone, verdict] : cases) {
        SCOPED_TRACE(zone);
        expectVerdict(zone, verdict);
    }
}

TEST(MrzCheckDigits, TheFirstFailingFieldIsNamed) {
    const std::pair<std::string, Verdict> cases[] = {
        {with(kTd3Example, 53, '7'), {0, MrzLayout::Td3, 5, "documentNumber"}},
        {with(kTd3Example, 46, '0'), {0, MrzLayout::Td3, 5, "documentNumber"}},  // a data character
        {with(kTd3Example, 63, '3', 87, '1'), {0, MrzLayout::Td3, 5, "birthDate"}},
        {with(kTd3Example, 71, '<'), {0, MrzLayout::Td3, 5, "expiryDate"}},      // a filler counts as 0
        {with(kTd3Example, 86, 'A'), {0, MrzLayout::Td3, 5, "optionalData"}},
        {with(kTd3Example, 87, '1'), {0, MrzLayout::Td3, 5, "composite"}},
        {with(kTd1Example, 59, '5'), {0, MrzLayout::Td1, 4, "composite"}},
        {with(kTd1Example, 50, 'X'), {0, MrzLayout::Td1, 4, "composite"}},        // optional data is covered
        {with(kTd2Example, 55, '0'), {0, MrzLayout::Td2, 4, "birthDate"}},
        {with(kTd2Example, 71, '5'), {0, MrzLayout::Td2, 4, "composite"}},
        {with(kLongVisaExample, 71, '8'), {0, MrzLayout::VisaLong, 3, "expiryDate"}},
        {with(kShortVisaExample, 45, '<'), {0, MrzLayout::VisaShort, 3, "documentNumber"}},
        {with(kShortVisaExample, 70, 'Z'), {1, MrzLayout::VisaShort, 3, nullptr}},  // no composite
    };
    for (const auto& [zone, verdict] : cases) {
        SCOPED_TRACE(zone);
        expectVerdict(zone, verdict);
    }
}

TEST(MrzCheckDigits, ZonesAsScannedAndTextsThatAreNoZone) {
    const std::string scanned = "p<utoEriksson<<anna<maria<<<<<<<<<<<<<<<<<<<\r\n"
                                "L898902C36UTO7408122F1204159ZE184226B<<<<<10\n";
    expectVerdict(scanned, {1, MrzLayout::Td3, 5, nullptr});
    const std::pair<std::string, int32_t> refused[] = {
        {kTd3Example.substr(0, 87), kErrFraming},
        {"X" + kTd3Example.substr(1), kErrFraming},
        {"IV" + kTd2Example.substr(2), kErrFraming},
        {kTd1Example + "<", kErrFraming},
        {"", kErrFraming},
    };
    for (const auto& [zone, status] : refused) {
        SCOPED_TRACE(zone);
        expectVerdict(zone, {status, MrzLayout::None, 0, nullptr});
    }
    EXPECT_EQ(checkMrzDigits(nullptr, 10, nullptr), kErrInvalidArgument);
    EXPECT_EQ(checkMrzDigits(kTd3Example.data(), -1, nullptr), kErrInvalidArgument);
    EXPECT_EQ(checkMrzDigits(kTd3Example.data(), 88, nullptr), 1);
}

}  // namespace
}  // namespace orvane
