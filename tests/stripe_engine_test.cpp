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

// A track driver on one track (after its start sentinel), parsing in the given year.
struct TrackCase {
    StripeStep driver;
    std::string track;
    std::vector<testing::Slot> fields;
    int32_t parseYear = 2025;
};

void runTrackCases(const std::vector<TrackCase>& cases) {
    for (const TrackCase& c : cases) {
        SCOPED_TRACE(c.track + " in " + std::to_string(c.parseYear));
        Engine e;
        e.clock.parseYear = c.parseYear;
        EXPECT_EQ(c.driver(e.p, testing::span(c.track)), kOk);
        e.expect(c.fields);
    }
}

TEST(StripeEngine, Track1Fields) {
    const StripeStep t1 = stripeTrack1Driver;
    runTrackCases({
        // A slash or tab inside the city, "$" between address lines: blanks; runs collapse.
        {t1, "ILST/CHARLES^DOE$JO^12 OAK AVE$$UNIT 4^",
         {{field::city, "ST CHARLES"}, {field::address1, "12 OAK AVE UNIT 4"}}},
        {t1, "TXFT.\tWORTH^DOE$JO^9 A ST^", {{field::city, "FT. WORTH"}}},
        // The city field holds at most 13 bytes; past 15 the name is found from a later start.
        {t1, "NYNEW YORK CITY XX^DOE$JO^1 BROADWAY^", {{field::city, "NEW YORK CITY"}, {field::fullName, "DOE$JO"}}},
        // A leading byte outside the classes: the jurisdiction fails, the others retry.
        {t1, "%CAANYTOWN^DOE$JOHN^5 MAIN ST-^",
         {{field::jurisdictionCode, ""}, {field::city, "ANYTOWN"}, {field::fullName, "DOE$JOHN"},
          {field::address1, "5 MAIN ST"}}},
        // Without "^" there is no name and no address.
        {t1, "CAANYTOWN DOE JOHN", {{field::city, "ANYTOWN DOE J"}, {field::fullName, ""}, {field::address1, ""}}},
        {t1, "C1", {{field::jurisdictionCode, ""}, {field::city, ""}}},
        // A one-letter city suits the name but not the address (2-13 city bytes there).
        {t1, "CAX^DOE$JOHN^5 MAIN ST^", {{field::city, "X"}, {field::fullName, "DOE$JOHN"}, {field::address1, ""}}},
        // Twenty city bytes: the name and the address are found from the start that leaves
        // 15 and 13 of them.
        {t1, "NY" + std::string(20, 'A') + "^DOE$JO^1 X^", {{field::fullName, "DOE$JO"}, {field::address1, "1 X"}}},
        // A name of 36 bytes suits the name (cut to 35) but not the address, found after a
        // later run of city bytes that opens with a blank.
        {t1, "CAXX^" + std::string(36, 'N') + "^1 A^ ZZYY^DOE^2 B^",
         {{field::fullName, "NNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNNN"}, {field::address1, "2 B"}}},
    });
}

TEST(StripeEngine, Track2NumberAndDates) {
    const StripeStep t2 = stripeTrack2Driver;
    runTrackCases({
        {t2, "6360141234567=250719800115?",
         {{field::iin, "636014"}, {field::licenseNumber, "1234567"}, {field::birthdate, "19800115"},
          {field::expirationDate, "20250715"}}},
        {t2, "6360141234567=250719800115?", {{field::expirationDate, "19250715"}}, 1999},
        {t2, "6360141234567=257719800115?", {{field::expirationDate, "99991231"}}},
        {t2, "6360141234567=258819801215?", {{field::birthdate, "19801215"}, {field::expirationDate, "20260101"}}},
        {t2, "6360141234567=258819800315?", {{field::expirationDate, "20250401"}}},
        {t2, "6360141234567=259919840229?", {{field::expirationDate, "20250228"}}},
        // The two digits replace those of the parse year; the birth day is cut to the month.
        {t2, "6360141234567=250419800131?", {{field::expirationDate, "20250430"}}, 2024},
        {t2, "6360141234567=250019800115?", {{field::birthdate, "19800115"}, {field::expirationDate, ""}}},
        {t2, "6360141234567=255019800115?", {{field::expirationDate, ""}}},
        // Deliberate: an impossible birth month gives way to the expiry month.
        {t2, "6360141234567=250619801315?", {{field::birthdate, "19800615"}, {field::expirationDate, "20250615"}}},
        {t2, "6360141234567=258819801315?", {{field::birthdate, ""}, {field::expirationDate, ""}}},
        // Overflow digits follow the dates only when more than 13 bytes follow "=".
        {t2, "6360141234567890123=25071980011545?", {{field::licenseNumber, "123456789012345"}}},
        {t2, "6360141234567890123=2507198001154", {{field::licenseNumber, "1234567890123"}}},
        {t2, "63601412345678901234=250719800115?", {{field::licenseNumber, ""}, {field::iin, ""}}},
        {t2, "63601A1234567=250719800115?", {{field::iin, ""}, {field::licenseNumber, ""}}},
        {t2, "6360141234567=2507198001?", {{field::birthdate, ""}, {field::expirationDate, ""}}},
        {t2, "636014", {{field::iin, ""}}},
    });
}

TEST(StripeEngine, ExpiryNeedsAClockUnlessItNeverExpires) {
    Engine e;
    e.p.context = nullptr;
    stripeDatesStep(e.p, makeSpan("6360141234567=250719800115"));
    e.expect({{field::birthdate, "19800115"}, {field::expirationDate, ""}});
    stripeDatesStep(e.p, makeSpan("6360141234567=257719800115"));
    e.expect({{field::expirationDate, "99991231"}});
}

// Track 3: sentinel, version bytes and postal code (14 bytes), then the located span of
// class 2, restrictions 10, endorsements 4, sex 1, height 3, weight 3, hair 3, eyes 3.
std::string track3(const std::string& sexHeightWeight, const std::string& hairEyes = "BROBLU") {
    return "%01958141234  C B         HAZM" + sexHeightWeight + hairEyes;
}

TEST(StripeEngine, Track3DescriptionAndPostalCode) {
    const StripeStep t3 = stripeTrack3Driver;
    runTrackCases({
        {t3, track3("1510180"),
         {{field::postalCode, "95814-1234"}, {field::licenseClassification, "C"}, {field::restrictionCodeAlt, "B"},
          {field::endorsementsCodeAlt, "HAZM"}, {field::gender, "1"}, {field::height, "510"},
          {field::heightCentimeters, ""}, {field::weightPounds, "180"}, {field::weightKilograms, ""},
          {field::hairColor, "BRO"}, {field::eyeColor, "BLU"}}},
        {t3, track3("2175080", "BR1BLU"),
         {{field::heightCentimeters, "175"}, {field::height, ""}, {field::weightKilograms, "080"},
          {field::weightPounds, ""}, {field::hairColor, ""}, {field::eyeColor, "BLU"}}},
        {t3, track3("  95 90"), {{field::gender, ""}, {field::height, "95"}, {field::weightKilograms, "90"}}},
        {t3, track3("2 9AX90"), {{field::height, ""}, {field::weightKilograms, ""}, {field::weightPounds, ""}}},
        {t3, track3("2600101"), {{field::height, "600"}, {field::weightPounds, "101"}}},
        {t3, track3("2600100", "BRO"),
         {{field::weightKilograms, "100"}, {field::hairColor, "BRO"}, {field::eyeColor, ""}}},
        // Too short for anything past the class.
        {t3, "%01958141234  AB", {{field::licenseClassification, "AB"}, {field::restrictionCodeAlt, ""}}},
        {t3, "%01958141234  A", {{field::licenseClassification, ""}}},
        // Postal codes of 6 and 9 characters get their separator, others stand as they are.
        {t3, "%01K1A0B1     G ", {{field::postalCode, "K1A 0B1"}}},
        {t3, "%0190210      C ", {{field::postalCode, "90210"}}},
        {t3, "%01SW1A 1AA   C ", {{field::postalCode, "SW1A 1AA"}}},
        // A run of 3 or fewer is passed over for an earlier sentinel.
        {t3, "+01H3Z2Y7  %01AB-CDEF", {{field::postalCode, "H3Z 2Y7"}}},
        {t3, "%01123-XYZ", {{field::postalCode, ""}}},
        {t3, "%01ab", {{field::postalCode, ""}}},
    });
    Engine noLocator;
    noLocator.p.track3Locator = nullptr;
    stripeTrack3Driver(noLocator.p, testing::span(track3("1510180")));
    noLocator.expect({{field::postalCode, "95814-1234"}, {field::licenseClassification, ""}});
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

}  // namespace
}  // namespace orvane
