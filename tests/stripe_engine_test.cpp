#include "stripe/engine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;

// An engine with its defaults on a fresh record, parsing in 2025.
struct Engine {
    RecordWithBuffer r{4096};
    ParseClock clock{2025, 6, 1, 12, 0, 0};
    StripeParser p;
    Engine() { initStripeParser(p, r.get(), &clock); }
    void expect(const std::vector<testing::Slot>& fields) const {
        for (const testing::Slot& e : fields) EXPECT_EQ(slotText(r.record, e.id), e.value) << "FieldId " << e.id;
    }
};

TEST(StripeEngine, WithoutASplitterOnlyTheDocumentTypeIsWritten) {
    Engine e;
    EXPECT_EQ(runStripeParser(e.p, "%CAANYTOWN^DOE$JOHN^1 MAIN ST^?", 31), kOk);
    int32_t filled = 0;
    for (FieldId id = 0; id < kFieldCount; ++id) filled += fieldMissing(&e.r.record, id) == 0;
    EXPECT_EQ(filled, 1);
    e.expect({{field::documentType, "DL"}});
}

int32_t refuseSplit(StripeParser& p, const char*, int32_t, TrackSet*) {
    setFieldLiteral(p.record, field::city, "WRITTEN");
    return kErrFraming;
}
int32_t splitIntoTrack1(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    tracks->track1 = TextSpan{payload, length};
    return kOk;
}
int32_t refuseCheck(StripeParser&, TrackSet*) { return -1; }

TEST(StripeEngine, MainStepReturnsTheSplitterOrCheckRefusal) {
    Engine e;
    e.p.trackSplitter = refuseSplit;
    EXPECT_EQ(runStripeParser(e.p, "X", 1), kErrFraming);
    EXPECT_EQ(fieldMissing(&e.r.record, field::documentType), -1);
    Engine f;
    f.p.trackSplitter = splitIntoTrack1;
    f.p.trackCheck = refuseCheck;
    EXPECT_EQ(runStripeParser(f.p, "CAANYTOWN^DOE^", 14), -1);
    EXPECT_EQ(fieldMissing(&f.r.record, field::jurisdictionCode), -1);
    EXPECT_EQ(runStripeParser(f.p, nullptr, 3), kErrInvalidArgument);
    f.p.mainStep = nullptr;
    EXPECT_EQ(runStripeParser(f.p, "X", 1), kOk);
}

TEST(StripeEngine, Track1Fields) {
    struct Case {
        const char* track;  // after the start sentinel
        std::vector<testing::Slot> fields;
    };
    const Case cases[] = {
        // A slash or tab inside the city, "$" between address lines: blanks; runs collapse.
        {"ILST/CHARLES^DOE$JO^12 OAK AVE$$UNIT 4^",
         {{field::city, "ST CHARLES"}, {field::address1, "12 OAK AVE UNIT 4"}}},
        {"TXFT.\tWORTH^DOE$JO^9 A ST^", {{field::city, "FT. WORTH"}}},
        // The city field holds at most 13 bytes; past 15 the name is found from a later start.
        {"NYNEW YORK CITY XX^DOE$JO^1 BROADWAY^", {{field::city, "NEW YORK CITY"}, {field::fullName, "DOE$JO"}}},
        // A leading byte outside the classes: the jurisdiction fails, the others retry.
        {"%CAANYTOWN^DOE$JOHN^5 MAIN ST-^",
         {{field::jurisdictionCode, ""}, {field::city, "ANYTOWN"}, {field::fullName, "DOE$JOHN"},
          {field::address1, "5 MAIN ST"}}},
        // Without "^" there is no name and no address.
        {"CAANYTOWN DOE JOHN", {{field::city, "ANYTOWN DOE J"}, {field::fullName, ""}, {field::address1, ""}}},
        {"C1", {{field::jurisdictionCode, ""}, {field::city, ""}}},
        // A one-letter city suits the name but not the address (2-13 city bytes there).
        {"CAX^DOE$JOHN^5 MAIN ST^", {{field::city, "X"}, {field::fullName, "DOE$JOHN"}, {field::address1, ""}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.track);
        Engine e;
        EXPECT_EQ(stripeTrack1Driver(e.p, makeSpan(c.track)), kOk);
        e.expect(c.fields);
    }
}

TEST(StripeEngine, Track2NumberAndDates) {
    struct Case {
        const char* track;  // after the start sentinel
        int32_t parseYear;
        std::vector<testing::Slot> fields;
    };
    const Case cases[] = {
        {"6360141234567=250719800115?", 2025,
         {{field::iin, "636014"}, {field::licenseNumber, "1234567"}, {field::birthdate, "19800115"},
          {field::expirationDate, "20250715"}}},
        {"6360141234567=250719800115?", 1999, {{field::expirationDate, "19250715"}}},
        {"6360141234567=257719800115?", 2025, {{field::expirationDate, "99991231"}}},
        {"6360141234567=258819801215?", 2025, {{field::birthdate, "19801215"}, {field::expirationDate, "20260101"}}},
        {"6360141234567=258819800315?", 2025, {{field::expirationDate, "20250401"}}},
        {"6360141234567=259919840229?", 2025, {{field::expirationDate, "20250228"}}},
        // The two digits replace those of the parse year; the birth day is cut to the month.
        {"6360141234567=250419800131?", 2024, {{field::expirationDate, "20250430"}}},
        {"6360141234567=250019800115?", 2025, {{field::birthdate, "19800115"}, {field::expirationDate, ""}}},
        {"6360141234567=255019800115?", 2025, {{field::expirationDate, ""}}},
        // Deliberate: an impossible birth month gives way to the expiry month.
        {"6360141234567=250619801315?", 2025, {{field::birthdate, "19800615"}, {field::expirationDate, "20250615"}}},
        {"6360141234567=258819801315?", 2025, {{field::birthdate, ""}, {field::expirationDate, ""}}},
        // Overflow digits follow the dates only when more than 13 bytes follow "=".
        {"6360141234567890123=25071980011545?", 2025, {{field::licenseNumber, "123456789012345"}}},
        {"6360141234567890123=2507198001154", 2025, {{field::licenseNumber, "1234567890123"}}},
        {"63601412345678901234=250719800115?", 2025, {{field::licenseNumber, ""}, {field::iin, ""}}},
        {"63601A1234567=250719800115?", 2025, {{field::iin, ""}, {field::licenseNumber, ""}}},
        {"6360141234567=2507198001?", 2025, {{field::birthdate, ""}, {field::expirationDate, ""}}},
        {"636014", 2025, {{field::iin, ""}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.track) + " in " + std::to_string(c.parseYear));
        Engine e;
        e.clock.parseYear = c.parseYear;
        EXPECT_EQ(stripeTrack2Driver(e.p, makeSpan(c.track)), kOk);
        e.expect(c.fields);
    }
}

TEST(StripeEngine, ExpiryNeedsAClockUnlessItNeverExpires) {
    Engine e;
    e.p.context = nullptr;
    stripeDatesStep(e.p, makeSpan("6360141234567=250719800115"));
    e.expect({{field::birthdate, "19800115"}, {field::expirationDate, ""}});
    stripeDatesStep(e.p, makeSpan("6360141234567=257719800115"));
    e.expect({{field::expirationDate, "99991231"}});
}

// The located span of track 3: class 2, restrictions 10, endorsements 4, sex 1,
// height 3, weight 3, hair 3, eyes 3.
std::string description(const std::string& sexHeightWeight, const std::string& hairEyes = "BROBLU") {
    return "C B         HAZM" + sexHeightWeight + hairEyes;
}

TEST(StripeEngine, Track3DescriptionSteps) {
    struct Case {
        std::string located;
        std::vector<testing::Slot> fields;
    };
    const Case cases[] = {
        {description("1510180"),
         {{field::licenseClassification, "C"}, {field::restrictionCodeAlt, "B"}, {field::endorsementsCodeAlt, "HAZM"},
          {field::gender, "1"}, {field::height, "510"}, {field::heightCentimeters, ""}, {field::weightPounds, "180"},
          {field::weightKilograms, ""}, {field::hairColor, "BRO"}, {field::eyeColor, "BLU"}}},
        {description("2175080", "BR1BLU"),
         {{field::heightCentimeters, "175"}, {field::height, ""}, {field::weightKilograms, "080"},
          {field::weightPounds, ""}, {field::hairColor, ""}, {field::eyeColor, "BLU"}}},
        {description("  95 90"), {{field::gender, ""}, {field::height, "95"}, {field::weightKilograms, "90"}}},
        {description("2 9AX90"), {{field::height, ""}, {field::weightKilograms, ""}, {field::weightPounds, ""}}},
        {description("2600101"), {{field::height, "600"}, {field::weightPounds, "101"}}},
        {description("2600100", "BRO"), {{field::weightKilograms, "100"}, {field::hairColor, "BRO"}, {field::eyeColor, ""}}},
        // Too short for anything past the class.
        {"AB", {{field::licenseClassification, "AB"}, {field::restrictionCodeAlt, ""}}},
        {"A", {{field::licenseClassification, ""}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.located);
        Engine e;
        for (StripeStep step : {e.p.classStep, e.p.restrictionsStep, e.p.endorsementsStep, e.p.sexStep,
                                e.p.heightStep, e.p.weightStep, e.p.hairColorStep, e.p.eyeColorStep}) {
            step(e.p, testing::span(c.located));
        }
        e.expect(c.fields);
    }
}

TEST(StripeEngine, Track3LocatorFindsTheLastSentinelWithRoomBehindIt) {
    struct Case {
        const char* track;
        const char* located;
    };
    const Case cases[] = {
        {"%01958141234  C B         ", "C B         "},
        {"+0190210      DD", "DD"},
        // A sentinel within the last 14 bytes is passed over.
        {"#01K1A0B1     GX  %  ", "GX  %  "},
        {"%0190210      X", ""},  // 15 bytes: too short
        {"X0190210      DDDDD", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.track);
        Engine e;
        TextSpan located{nullptr, 0};
        EXPECT_EQ(stripeTrack3Locator(e.p, makeSpan(c.track), &located), kOk);
        EXPECT_EQ(testing::text(located), c.located);
    }
}

TEST(StripeEngine, PostalCodeFormatting) {
    struct Case {
        const char* track;
        const char* postal;
    };
    const Case cases[] = {
        {"%01K1A0B1     G ", "K1A 0B1"},
        {"%01958141234  C ", "95814-1234"},
        {"%0190210      C ", "90210"},
        {"%01SW1A 1AA   C ", "SW1A 1AA"},
        // A run of 3 or fewer is passed over for an earlier sentinel.
        {"+01H3Z2Y7  %01AB-CDEF", "H3Z 2Y7"},
        {"%01123-XYZ", ""},
        {"%01ab", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.track);
        Engine e;
        stripePostalCodeStep(e.p, makeSpan(c.track));
        e.expect({{field::postalCode, c.postal}});
    }
}

TEST(StripeEngine, Track3DriverReadsLocatedFieldsAndThePostalCode) {
    Engine e;
    stripeTrack3Driver(e.p, makeSpan("%01958141234  C B         HAZM1510180BROBLU          ?"));
    e.expect({{field::postalCode, "95814-1234"}, {field::licenseClassification, "C"}, {field::eyeColor, "BLU"}});
    Engine noLocator;
    noLocator.p.track3Locator = nullptr;
    stripeTrack3Driver(noLocator.p, makeSpan("%01958141234  C B         HAZM1510180BROBLU          ?"));
    noLocator.expect({{field::postalCode, "95814-1234"}, {field::licenseClassification, ""}});
}

}  // namespace
}  // namespace orvane
