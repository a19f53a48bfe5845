// Zones whose dates are not known in full: the birth date's unknown parts, and the five
// layouts read with them as their own readers read the rest.
#include "documents/zone_dates.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

constexpr ParseClock kClock2026{2026, 6, 1, 12, 0, 0};

TEST(ZoneDates, BirthDateWithUnknownParts) {
    const struct {
        const char* printed;
        int32_t status;
        DateValue date;
    } cases[] = {
        {"870412", kOk, {1987, 4, 12, 0, 0, 0}},
        {"8704<<", kOk, {1987, 4, 30, 0, 0, 0}},  // the latest day it can be
        {"8002<<", kOk, {1980, 2, 29, 0, 0, 0}},
        {"87<<<<", kOk, {1987, 12, 31, 0, 0, 0}},
        {"87<<15", kOk, {1987, 12, 15, 0, 0, 0}},
        {"25<<<<", kOk, {2025, 12, 31, 0, 0, 0}},  // the zone readers' century rule
        {"26<<<<", kOk, {1926, 12, 31, 0, 0, 0}},
        {"871340", kOk, {1987, 13, 40, 0, 0, 0}},  // known parts are not range-checked
        {"<<<<<<", kErrNoAnswer, {}},
        {"8713<<", kErrFraming, {}},  // no last day of a thirteenth month
        {"87O4<<", kErrFraming, {}},
        {"870<12", kErrFraming, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.printed);
        DateValue date{};
        ASSERT_EQ(readZoneBirthDate(makeSpan(c.printed), 2026, &date), c.status);
        if (c.status != kOk) continue;
        EXPECT_EQ(date.year, c.date.year);
        EXPECT_EQ(date.month, c.date.month);
        EXPECT_EQ(date.day, c.date.day);
    }
}

// An invented passport with the dates the tests vary.
std::string passport(const std::string& birth, const std::string& expiry) {
    return "P<UTOSAMPLE<<ROBIN<ALEX<<<<<<<<<<<<<<<<<<<<<X987654327UTO" + birth + "0F" + expiry +
           "2<<<<<<<<<<<<<<<2";
}
const std::string kCard = "I<UTOC012345672<<<<<<<<<<<<<<<"
                          "9202139M3308154UTO<<<<<<<<<<<8"
                          "SAMPLE<<JORDAN<LEE<<<<<<<<<<<<";
const std::string kTwoLineCard = "I<UTOSAMPLE<<JORDAN<QUINN<<<<<<<<<<<"
                                 "X123456785UTO8807043M3003150<<<<<<<8";
const std::string kLongVisa = "V<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<<<<<<<<<"
                              "L8988901C4XXX4009078F96121096ZE184226B<<<<<<";
const std::string kShortVisa = "V<UTOERIKSSON<<ANNA<MARIA<<<<<<<<<<<"
                               "L8988901C4XXX4009078F9612109<<<<<<<<";

std::string with(std::string zone, size_t at, const std::string& text) { return zone.replace(at, text.size(), text); }

TEST(ZoneDates, LayoutsWithUnknownDates) {
    testing::runReaderCases({
        {"birth day unknown", parsePassportZoneUnknownDates, passport("8507<<", "310101"), kOk,
         {{field::birthdateAlt, "19850731"}, {field::expirationDate, "20310101"}, {field::lastName, "SAMPLE"},
          {field::licenseNumber, "X98765432"}, {field::documentType, "PASSPORT"}}},
        {"birth date unknown: none answered", parsePassportZoneUnknownDates, passport("<<<<<<", "310101"), kOk,
         {{field::birthdateAlt, ""}, {field::expirationDate, "20310101"}, {field::gender, "F"}}},
        {"no expiry", parsePassportZoneUnknownDates, passport("850715", "<<<<<<"), kOk,
         {{field::birthdateAlt, "19850715"}, {field::expirationDate, ""}}},
        {"both dates in digits: the passport reader's", parsePassportZoneUnknownDates, passport("850715", "310101"),
         kErrFraming},
        {"a misread birth date", parsePassportZoneUnknownDates, passport("85O7<<", "310101"), kErrFraming},
        {"half a pair unknown", parsePassportZoneUnknownDates, passport("8507<1", "310101"), kErrFraming},
        {"expiry partly unknown", parsePassportZoneUnknownDates, passport("850715", "3101<<"), kErrFraming},
        {"not a passport", parsePassportZoneUnknownDates, "V" + passport("8507<<", "310101").substr(1), kErrFraming},
        {"three-line card", parseCardZoneUnknownDates, with(kCard, 30, "92<<<<"), kOk,
         {{field::birthdateAlt, "19921231"}, {field::expirationDate, "20330815"}, {field::firstName, "JORDAN"}}},
        {"two-line card", parseTwoLineCardZoneUnknownDates, with(kTwoLineCard, 49, "8807<<"), kOk,
         {{field::birthdateAlt, "19880731"}, {field::licenseNumber, "X12345678"}}},
        {"long visa", parseVisaZoneUnknownDates, with(kLongVisa, 57, "40<<<<"), kOk,
         {{field::birthdateAlt, "19401231"}, {field::expirationDate, "19961210"}}},
        {"short visa", parseVisaZoneUnknownDates, with(kShortVisa, 57, "<<<<<<"), kOk,
         {{field::birthdateAlt, "19400907"}, {field::expirationDate, ""}}},
        {"a card is no visa", parseVisaZoneUnknownDates, with(kTwoLineCard, 49, "8807<<"), kErrFraming},
    }, &kClock2026);
}

TEST(ZoneDates, QuickChecksReadersAndTheTextLeftAsItWas) {
    // The quick check judges the caller's bytes, line breaks and lower case included.
    const std::string zone = passport("8507<<", "310101");
    std::string scanned = zone.substr(0, 44) + "\r\n" + zone.substr(44);
    scanned[0] = 'p';
    TextFacts facts{};
    gatherTextFacts(scanned.data(), static_cast<int32_t>(scanned.size()), &facts);
    EXPECT_TRUE(mayReadPassportZoneUnknownDates(facts));
    gatherTextFacts(scanned.data(), 40, &facts);
    EXPECT_FALSE(mayReadPassportZoneUnknownDates(facts));
    // A zone whose dates are known in full is the layout reader's alone.
    testing::RecordWithBuffer r;
    std::string known = passport("850715", "310101");
    EXPECT_EQ(parsePassportZoneUnknownDates(known.data(), static_cast<int32_t>(known.size()), r.get(), &kClock2026),
              kErrFraming);
    // The reader lets the layout's reader see zeros for the unknown parts, then puts the
    // fillers back.
    std::string text = zone;
    ASSERT_EQ(parsePassportZoneUnknownDates(text.data(), static_cast<int32_t>(text.size()), r.get(), &kClock2026), kOk);
    EXPECT_EQ(text, zone);
}

}  // namespace
}  // namespace orvane
