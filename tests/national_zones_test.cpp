// The national zone readers: what each reads, what it leaves out of a field it cannot
// read, what it refuses, and the check digits and elements of each layout.
#include "documents/national_zones.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

constexpr ParseClock kClock2026{2026, 6, 1, 12, 0, 0};

// Invented documents with correct check digits, lines joined as the framing gives them.
const std::string kFrenchCard = "IDFRAEXEMPLE<MARTIN<<<<<<<<<<<075011"
                                "1203075012344CAMILLE<<ANNE<8704120F8";
const std::string kSwissLicence = "ABC123D<<"
                                  "FACHE123456789001<<850315<<<<<"
                                  "MUSTER<<PETRA<ANNA<<<<<<<<<<<<";
const std::string kFrenchLicence = "D1FRA12AB345675310615EXEMPLE<3";

std::string with(std::string zone, size_t at, const std::string& text) { return zone.replace(at, text.size(), text); }

TEST(NationalZones, FrenchIdentityCard) {
    testing::runReaderCases({
        {"every field", parseFrenchIdentityCardZone, kFrenchCard, kOk,
         {{field::countryCode, "FRA"}, {field::lastName, "EXEMPLE MARTIN"}, {field::firstName, "CAMILLE"},
          {field::middleName, "ANNE"}, {field::licenseNumber, "120307501234"}, {field::issueDate, "20120301"},
          {field::birthdateAlt, "19870412"}, {field::gender, "F"}, {field::documentType, "TD"}}},
        {"one filler stands within a given name", parseFrenchIdentityCardZone,
         with(kFrenchCard, 49, "JEAN<PIERRE<<<"), kOk, {{field::firstName, "JEAN PIERRE"}, {field::middleName, ""}}},
        {"issued in the last century", parseFrenchIdentityCardZone, with(kFrenchCard, 36, "9409"), kOk,
         {{field::issueDate, "19940901"}}},
        {"no month 13 of issue", parseFrenchIdentityCardZone, with(kFrenchCard, 36, "1213"), kOk,
         {{field::issueDate, ""}, {field::licenseNumber, "121307501234"}}},
        {"birth day unknown", parseFrenchIdentityCardZone, with(kFrenchCard, 63, "8702<<"), kOk,
         {{field::birthdateAlt, "19870228"}}},
        {"a misread surname is left out", parseFrenchIdentityCardZone, with(kFrenchCard, 5, "EXEMP1E"), kOk,
         {{field::lastName, ""}, {field::firstName, "CAMILLE"}, {field::licenseNumber, "120307501234"}}},
        {"an unread number is left out", parseFrenchIdentityCardZone, with(kFrenchCard, 42, "<"), kOk,
         {{field::licenseNumber, ""}, {field::lastName, "EXEMPLE MARTIN"}}},
        {"neither surname nor number", parseFrenchIdentityCardZone, with(with(kFrenchCard, 5, "1"), 42, "<"),
         kErrFraming},
        {"another state", parseFrenchIdentityCardZone, with(kFrenchCard, 2, "BEL"), kErrFraming},
        {"a character outside the zone", parseFrenchIdentityCardZone, with(kFrenchCard, 60, "a"), kErrFraming},
        {"a line short", parseFrenchIdentityCardZone, kFrenchCard.substr(0, 71), kErrFraming},
    }, &kClock2026);
}

TEST(NationalZones, DrivingLicences) {
    testing::runReaderCases({
        {"Swiss licence", parseSwissDrivingLicenceZone, kSwissLicence, kOk,
         {{field::countryCode, "CHE"}, {field::lastName, "MUSTER"}, {field::firstName, "PETRA"},
          {field::middleName, "ANNA"}, {field::licenseNumber, "123456789001"}, {field::licenseNumberAlt, "ABC123D"},
          {field::birthdateAlt, "19850315"}, {field::documentType, "DL"}}},
        // No check digit tells a misread field, so what does not read is left out.
        {"Swiss licence misread", parseSwissDrivingLicenceZone,
         with(with(with(kSwissLicence, 14, "12345678S"), 28, "85O315"), 39, "MU5TER"), kOk,
         {{field::licenseNumber, ""}, {field::birthdateAlt, ""}, {field::lastName, ""},
          {field::licenseNumberAlt, "ABC123D"}, {field::countryCode, "CHE"}}},
        {"Swiss licence of another state", parseSwissDrivingLicenceZone, with(kSwissLicence, 11, "AUT"), kErrFraming},
        {"Swiss licence without its code", parseSwissDrivingLicenceZone, with(kSwissLicence, 9, "X"), kErrFraming},
        {"French licence", parseFrenchDrivingLicenceZone, kFrenchLicence, kOk,
         {{field::countryCode, "FRA"}, {field::licenseNumber, "12AB34567"}, {field::expirationDate, "20310615"},
          {field::lastName, "EXEMPLE"}, {field::firstName, ""}, {field::documentType, "DL"}}},
        {"French licence: a surname of two words", parseFrenchDrivingLicenceZone, with(kFrenchLicence, 21, "LE<BRUN<"),
         kOk, {{field::lastName, "LE BRUN"}, {field::firstName, ""}}},
        {"French licence: a letter in second place", parseFrenchDrivingLicenceZone, with(kFrenchLicence, 1, "I"),
         kErrFraming},
        {"French licence of 31", parseFrenchDrivingLicenceZone, kFrenchLicence + "<", kErrFraming},
    }, &kClock2026);
}

TEST(NationalZones, CheckDigits) {
    struct Case {
        const char* name;
        NationalZone layout;
        std::string zone;
        int32_t result;
        int32_t checked;
        std::vector<std::string> failures;
    };
    const Case cases[] = {
        {"French card", NationalZone::FrenchIdentityCard, kFrenchCard, 1, 3, {}},
        {"French card, serial misread", NationalZone::FrenchIdentityCard, with(kFrenchCard, 47, "5"), 0, 3,
         {"documentNumber", "composite"}},
        {"French card, birth date misread", NationalZone::FrenchIdentityCard, with(kFrenchCard, 64, "8"), 0, 3,
         {"birthDate", "composite"}},
        {"French card, given name misread", NationalZone::FrenchIdentityCard, with(kFrenchCard, 50, "B"), 0, 3,
         {"composite"}},
        {"French licence", NationalZone::FrenchDrivingLicence, kFrenchLicence, 1, 2, {}},
        {"French licence, expiry misread", NationalZone::FrenchDrivingLicence, with(kFrenchLicence, 16, "2"), 0, 2,
         {"composite"}},
        {"French licence, state in the number's digit", NationalZone::FrenchDrivingLicence,
         with(kFrenchLicence, 3, "X"), 0, 2, {"documentNumber", "composite"}},
        {"Swiss licence has none", NationalZone::SwissDrivingLicence, kSwissLicence, 1, 0, {}},
        {"a zone of another length", NationalZone::FrenchIdentityCard, kFrenchLicence, kErrFraming, 0, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        NationalZoneCheck report{};
        EXPECT_EQ(checkNationalZoneDigits(c.layout, testing::span(c.zone), &report), c.result);
        EXPECT_EQ(report.checkedDigits, c.checked);
        std::vector<std::string> failures(report.failures, report.failures + report.failureCount);
        EXPECT_EQ(failures, c.failures);
    }
}

TEST(NationalZones, Elements) {
    const struct {
        NationalZone layout;
        std::string zone;
        std::string elements;
    } cases[] = {
        {NationalZone::FrenchIdentityCard, kFrenchCard,
         "documentCode=ID issuingState=FRA surname=EXEMPLE<MARTIN administrativeCode=075011 "
         "documentNumber=120307501234 givenNames=CAMILLE<<ANNE birthDate=870412 sex=F "},
        {NationalZone::SwissDrivingLicence, kSwissLicence,
         "documentNumber=ABC123D documentCode=FA issuingState=CHE personalNumber=123456789 version=001 "
         "birthDate=850315 names=MUSTER<<PETRA<ANNA "},
        {NationalZone::FrenchDrivingLicence, kFrenchLicence,
         "documentCode=D1 issuingState=FRA documentNumber=12AB34567 expiryDate=310615 names=EXEMPLE "},
        {NationalZone::SwissDrivingLicence, kFrenchLicence, ""},
    };
    for (const auto& c : cases) {
        std::string seen;
        visitNationalZoneElements(c.layout, testing::span(c.zone), [](void* context, TextSpan id, TextSpan value) {
            *static_cast<std::string*>(context) += testing::text(id) + "=" + testing::text(value) + " ";
            return true;
        }, &seen);
        EXPECT_EQ(seen, c.elements);
    }
}

}  // namespace
}  // namespace orvane
