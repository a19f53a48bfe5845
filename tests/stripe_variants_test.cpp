#include "stripe/variants.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "engine/status.h"
#include "stripe/engine.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;

// An invented California licence, track by track.
const std::string kTrack1 = "%CASPRINGFIELD^SAMPLE$JORDAN$LEE^1400 ELM ST^?";
const std::string kTrack2 = ";6360141234567=250719800115?";
// class, restrictions, endorsements, sex, height, weight, hair, eyes
const std::string kDescription = "C B             1510180BROBLU";
const std::string kTrack3 = "%01958141234  " + kDescription + "?";
const std::string kPlusTrack3 = "+01958141234  " + kDescription + "?";
const std::string kPaymentTrack1 = "%B4111111111111111^DOE/JOHN^25121010000000000000?";
const std::string kLongTrack2 = ";6360141234567890123=250719800115?";
const std::string kContinuedTrack3 = "+0145ABC      " + kDescription + "958141234  ?";
const std::string kCanadian =
    "%ONOTTAWA^SAMPLE$JORDAN$LEE^250 WELLINGTON ST$APT 4^?\r\n;6360121234567=250719800115?\r\n"
    "%01K1A0B1" + std::string("G X") + std::string(13, ' ') + "1175110BROBLU?";
// Short enough for format 10 to take it for a North-American track 1.
const std::string kAustralian = "%NSW^SAMPLE$JO^12 EXAMPLE ST$SYDNEY$2000^12345678^15011980^15072029?";
const std::string kTwoTracks = ";636014123456789=198001152507?\n%0100958141234" + kDescription + "?";

std::string fixedFields() {
    auto pad = [](std::string s, size_t n) { return s.append(n - s.size(), ' '); };
    return "%CA" + pad("SPRINGFIELD", 13) + pad("SAMPLE$JORDAN$LEE", 35) + pad("1400 ELM ST", 29) + "?\n;636014" +
           "123456789" + "19800115" + "20290715" + "?\n%958141234" + "C B       M510180BROBLU?";
}

struct Reading {
    RecordWithBuffer r{4096};
    int32_t status = 0;
    std::string operator[](FieldId id) const { return slotText(r.record, id); }
};

// Runs a reader as the driver does: on its own copy of the text, parsing in 2025.
void readWith(Reading& out, FormatParser parser, std::string text) {
    const ParseClock clock{2025, 6, 1, 12, 0, 0};
    out.status = parser(text.data(), static_cast<int32_t>(text.size()), out.r.get(), &clock);
}

struct StatusCase {
    const char* name;
    FormatParser parser;
    std::string input;
    int32_t status;
};

void expectStatuses(const std::vector<StatusCase>& cases) {
    for (const StatusCase& c : cases) {
        SCOPED_TRACE(c.name);
        Reading r;
        readWith(r, c.parser, c.input);
        EXPECT_EQ(r.status, c.status);
    }
}

TEST(StripeVariants, SplittersRefuseShortAndMisframedPayloads) {
    expectStatuses({
        {"0 short", parseStripeFormat0, "%A?;", kErrPayloadTooShort},
        {"0 no sentinel", parseStripeFormat0, kTrack1.substr(1) + kTrack2, kErrFraming},
        {"0 line feed", parseStripeFormat0, kTrack1 + "\n" + kTrack2, kErrFraming},
        {"1 short", parseStripeFormat1, "%AB", kErrPayloadTooShort},
        {"2 short", parseStripeFormat2, "%AB?;", kErrPayloadTooShort},
        {"4 short", parseStripeFormat4, "%A?;6?%", kErrPayloadTooShort},
        {"4 line feed", parseStripeFormat4, kTrack1 + kTrack2 + "\n" + kTrack3, kErrFraming},
        {"4 no ?%", parseStripeFormat4, kTrack1 + kTrack2 + "+", kErrFraming},
        {"6 short", parseStripeFormat6, "{!|1A|!}{!|2B|!}{!|3C|!", kErrPayloadTooShort},
        {"6 no third track", parseStripeFormat6, "{!|1CAX^A^|!}{!|2636014|!}{!|4X|!}", kErrFraming},
        {"6 empty track", parseStripeFormat6, "{!|1CAX^A^|!}{!|2636014|!}{!|3|!}", kErrFraming},
        {"7 short", parseStripeFormat7, "%A?;6?+", kErrPayloadTooShort},
        {"7 two pieces", parseStripeFormat7, kTrack1 + kTrack2, kErrFraming},
        {"9 short", parseStripeFormat9, "%A?;6?#", kErrPayloadTooShort},
        {"9 line feed", parseStripeFormat9, kTrack1 + kTrack2 + "\n#958141234  " + kDescription, kErrFraming},
        {"9 no ?#", parseStripeFormat9, kTrack1 + kTrack2, kErrFraming},
        {"10 short", parseStripeFormat10, "%A", kErrPayloadTooShort},
        {"12 short", parseStripeFormat12, "%AB\n;", kErrPayloadTooShort},
        {"14 empty", parseStripeFormat14, "", kErrFraming},
    });
}

TEST(StripeVariants, ChecksRefuseForeignTracks) {
    const std::string notLicence = ";6370141234567=250719800115?";
    expectStatuses({
        {"0 not 636", parseStripeFormat0, kTrack1 + notLicence, kErrFraming},
        {"0 no letters", parseStripeFormat0, "%1A^DOE^?" + kTrack2, kErrFraming},
        {"1 one line", parseStripeFormat1, kTrack1 + kTrack2, kErrFraming},
        {"2 two lines", parseStripeFormat2, kTrack1 + "\n" + kTrack2, kErrFraming},
        {"3 lines in reading order", parseStripeFormat3, kTrack1 + "\n" + kTrack2 + "\n" + kPlusTrack3, kErrFraming},
        {"4 not 636", parseStripeFormat4, kTrack1 + notLicence + kTrack3, kErrFraming},
        {"5 no two bytes before 636", parseStripeFormat5, kTrack1 + kTrack2 + kTrack3, kErrFraming},
        {"5 no letter", parseStripeFormat5, "%12^DOE^?;" + kTrack2 + kTrack3, kErrFraming},
        {"5 B without digit", parseStripeFormat5, "%BCVANCOUVER^DOE^?;" + kTrack2 + kTrack3, kErrFraming},
        {"6 sentinel on track 2", parseStripeFormat6, "{!|1CAX^A^|!}{!|2;636014|!}{!|3X|!}", kErrFraming},
        {"7 not 636", parseStripeFormat7, kTrack1 + notLicence + kPlusTrack3, kErrFraming},
        {"9 not 636", parseStripeFormat9, kTrack1 + notLicence + "#958141234  " + kDescription, kErrFraming},
        {"10 no sentinel", parseStripeFormat10, kTrack1.substr(1), kErrFraming},
        {"10 ? too far back", parseStripeFormat10, "%CAX^DOE^?12345678901", kErrFraming},
        {"10 no ?", parseStripeFormat10, "%CAX^DOE^", kErrFraming},
        {"10 no letters", parseStripeFormat10, "%1AX^DOE^?", kErrFraming},
        {"12 one byte missing", parseStripeFormat12, kTrack1 + "\n" + kTrack2 + "\n" + kTrack3, kErrFraming},
        {"12 two lines", parseStripeFormat12, kTrack1 + "\n;" + kTrack2, kErrFraming},
        {"14 second byte", parseStripeFormat14, ";5360141234567=250719800115?", kErrFraming},
    });
}

TEST(StripeVariants, AcceptedEdgesOfTheGivenShapes) {
    const std::string track50 = "%CAANYTOWN^DOE$JOHN^1400 ELM ST^" + std::string(17, ' ') + "?";
    ASSERT_EQ(track50.size(), 50u);
    expectStatuses({
        {"9 hash sentinel", parseStripeFormat9, kTrack1 + kTrack2 + "#958141234  " + kDescription, kOk},
        {"10 usual length", parseStripeFormat10, track50, kOk},
        {"10 short, ^ before ?", parseStripeFormat10, "%CAANYTOWN^DOE$JOHN^12 ELM^ ?", kOk},
        {"10 ? near the end", parseStripeFormat10, "%CAX^DOE^?123456789", kOk},
        {"14 any 6 second", parseStripeFormat14, "X6Y", kOk},
        // Deliberately the reverse test: "B" followed by a digit passes format 5.
        {"5 B and digit", parseStripeFormat5, kPaymentTrack1 + ";" + kTrack2 + kTrack3, kOk},
    });
}

TEST(StripeVariants, PaymentCardsAreRefused) {
    const std::string& pay = kPaymentTrack1;
    expectStatuses({
        {"0", parseStripeFormat0, pay + kTrack2, kErrFraming},
        {"1", parseStripeFormat1, pay + "\n" + kTrack2, kErrFraming},
        {"2", parseStripeFormat2, pay + "\n" + kTrack2 + "\n" + kTrack3, kErrFraming},
        {"3", parseStripeFormat3, kTrack3 + "\n" + kTrack2 + "\n" + pay, kErrFraming},
        {"4", parseStripeFormat4, pay + kTrack2 + kTrack3, kErrFraming},
        {"5 with its own track 2", parseStripeFormat5, pay + ";4111111111111111=2512101?" + kTrack3, kErrFraming},
        {"6", parseStripeFormat6, "{!|1" + pay + "|!}{!|26360141234567=250719800115|!}{!|3" + kTrack3 + "|!}",
         kErrFraming},
        {"7", parseStripeFormat7, pay + kTrack2 + kPlusTrack3, kErrFraming},
        {"8", parseStripeFormat8, pay + ";6360121234567=250719800115?", kErrFraming},
        {"9", parseStripeFormat9, pay + kTrack2 + "#958141234  " + kDescription, kErrFraming},
        {"10", parseStripeFormat10, pay, kErrFraming},
        {"11", parseStripeFormat11, pay + kLongTrack2 + kContinuedTrack3, kErrFraming},
        {"12", parseStripeFormat12, pay + "\n;" + kTrack2 + "\n" + kTrack3, kErrFraming},
        {"15", parseStripeFormat15, pay, kErrFraming},
        {"16", parseStripeFormat16, fixedFields().replace(0, 81, pay.substr(0, pay.size() - 1) + std::string(32, '0') + "?"),
         kErrFraming},
    });
}

TEST(StripeVariants, DesignedLayoutsRefuseOtherStripes) {
    const std::string usStripe = kTrack1 + "\n" + kTrack2 + "\n" + kTrack3;
    expectStatuses({
        {"8 short", parseStripeFormat8, "%ON?;63", kErrPayloadTooShort},
        {"8 no sentinel", parseStripeFormat8, kCanadian.substr(1), kErrFraming},
        {"8 United States", parseStripeFormat8, usStripe, kErrFraming},
        {"8 track 3 without sentinel", parseStripeFormat8, kCanadian.substr(0, kCanadian.find("\r\n%") + 2) + "X?",
         kErrFraming},
        {"11 short", parseStripeFormat11, "%CA^DOE^?;636014?+01", kErrPayloadTooShort},
        {"11 usual number", parseStripeFormat11, kTrack1 + kTrack2 + kContinuedTrack3, kErrFraming},
        {"11 hash track 3", parseStripeFormat11, kTrack1 + kLongTrack2 + "#" + kContinuedTrack3.substr(1), kErrFraming},
        {"11 nothing on track 3", parseStripeFormat11, kTrack1 + kLongTrack2 + "+01   " + kDescription, kErrFraming},
        {"13 short", parseStripeFormat13, ";636014?%01", kErrPayloadTooShort},
        {"13 track 1 first", parseStripeFormat13, usStripe, kErrFraming},
        {"13 no track 3", parseStripeFormat13, kTrack2 + "\n" + kTrack2, kErrFraming},
        {"13 short track 3", parseStripeFormat13, kTrack2 + "%0195814?", kErrFraming},
        {"15 short", parseStripeFormat15, "%NSW^A^B^C^D^E?", kErrPayloadTooShort},
        {"15 no state", parseStripeFormat15, kTrack1 + kTrack2, kErrFraming},
        {"15 fields missing", parseStripeFormat15, "%VIC^SAMPLE$JORDAN^12345678^15011980?", kErrFraming},
        {"16 short", parseStripeFormat16, kTrack1 + kTrack2, kErrPayloadTooShort},
        {"16 separators", parseStripeFormat16, fixedFields().replace(fixedFields().find("$JORDAN"), 1, "^"), kErrFraming},
        {"16 track 1 width", parseStripeFormat16, usStripe + std::string(40, ' ') + "?", kErrFraming},
        {"16 track 2 width", parseStripeFormat16, fixedFields().replace(fixedFields().find("20290715"), 8, "2029071"),
         kErrFraming},
    });
}

struct Expectation {
    FieldId id;
    const char* value;
};

struct LayoutCase {
    const char* name;
    FormatParser designed;
    std::string input;
    std::vector<Expectation> fields;
    // What the default steps make of the same stripe: none of these values.
    FormatParser byDefaults;
    std::vector<Expectation> misread;
};

// Each layout designed here, read by its format and misread by a format of default steps.
TEST(StripeVariants, DesignedLayoutsReadWhatTheDefaultsMisread) {
    const LayoutCase cases[] = {
        {"4 dashed ZIP+4", parseStripeFormat4, kTrack1 + kTrack2 + "%0195814-1234 " + kDescription + "?",
         {{field::postalCode, "95814-1234"}}, parseStripeFormat7, {{field::postalCode, "95814-1234"}}},
        {"8 Canadian", parseStripeFormat8, kCanadian,
         {{field::postalCode, "K1A 0B1"}, {field::heightCentimeters, "175"}, {field::weightKilograms, "110"},
          {field::licenseClassification, "G"}, {field::address1, "250 WELLINGTON ST"}, {field::address2, "APT 4"},
          {field::countryCode, "CAN"}, {field::jurisdictionCode, "ON"}},
         parseStripeFormat7,
         {{field::postalCode, "K1A 0B1"}, {field::weightKilograms, "110"}, {field::address1, "250 WELLINGTON ST"}}},
        {"9 no version bytes", parseStripeFormat9, kTrack1 + kTrack2 + "#958141234  " + kDescription + "?",
         {{field::postalCode, "95814-1234"}, {field::licenseClassification, "C"}, {field::gender, "1"},
          {field::height, "510"}, {field::eyeColor, "BLU"}},
         parseStripeFormat7, {{field::licenseClassification, "C"}, {field::height, "510"}}},
        {"11 number continued on track 3", parseStripeFormat11, kTrack1 + kLongTrack2 + kContinuedTrack3,
         {{field::licenseNumber, "123456789012345ABC"}, {field::postalCode, "95814-1234"}, {field::eyeColor, "BLU"},
          {field::birthdate, "19800115"}},
         parseStripeFormat7, {{field::licenseNumber, "123456789012345ABC"}, {field::postalCode, "95814-1234"}}},
        {"13 letter code, birth first", parseStripeFormat13, kTwoTracks,
         {{field::licenseNumber, "L3456789"}, {field::birthdate, "19800115"}, {field::expirationDate, "20250715"},
          {field::postalCode, "95814-1234"}, {field::gender, "1"}},
         parseStripeFormat14, {{field::licenseNumber, "L3456789"}, {field::birthdate, "19800115"}}},
        {"15 Australian", parseStripeFormat15, kAustralian,
         {{field::fullName, "SAMPLE$JO"}, {field::address1, "12 EXAMPLE ST"}, {field::city, "SYDNEY"},
          {field::postalCode, "2000"}, {field::licenseNumber, "12345678"}, {field::birthdate, "19800115"},
          {field::expirationDate, "20290715"}, {field::countryCode, "AUS"}, {field::jurisdictionCode, ""}},
         parseStripeFormat10, {{field::jurisdictionCode, ""}, {field::city, "SYDNEY"}}},
        {"16 fixed fields", parseStripeFormat16, fixedFields(),
         {{field::jurisdictionCode, "CA"}, {field::city, "SPRINGFIELD"}, {field::fullName, "SAMPLE$JORDAN$LEE"},
          {field::address1, "1400 ELM ST"}, {field::iin, "636014"}, {field::licenseNumber, "123456789"},
          {field::birthdate, "19800115"}, {field::expirationDate, "20290715"}, {field::postalCode, "95814-1234"},
          {field::restrictionCodeAlt, "B"}, {field::gender, "M"}, {field::height, "510"}, {field::weightPounds, "180"}},
         parseStripeFormat7, {{field::fullName, "SAMPLE$JORDAN$LEE"}, {field::licenseNumber, "123456789"}}},
    };
    for (const LayoutCase& c : cases) {
        SCOPED_TRACE(c.name);
        Reading designed;
        readWith(designed, c.designed, c.input);
        EXPECT_EQ(designed.status, kOk);
        for (const Expectation& e : c.fields) EXPECT_EQ(designed[e.id], e.value) << "FieldId " << e.id;
        Reading defaults;
        readWith(defaults, c.byDefaults, c.input);
        for (const Expectation& e : c.misread) EXPECT_NE(defaults[e.id], e.value) << "FieldId " << e.id;
    }
}

TEST(StripeVariants, ZeroPaddedNumberAgainstTheDefaultStep) {
    Reading r;
    readWith(r, parseStripeFormat14, ";6360140000001234567=25071980011589?");
    EXPECT_EQ(r[field::licenseNumber], "123456789");
    RecordWithBuffer plain;
    StripeParser p;
    initStripeParser(p, plain.get(), nullptr);
    stripeLicenseNumberStep(p, makeSpan("6360140000001234567=25071980011589"));
    EXPECT_EQ(slotText(plain.record, field::licenseNumber), "000000123456789");
}

TEST(StripeVariants, Format11DeletesLineFeedsInPlace) {
    char text[] = "%CA\nX\n\n^?";
    EXPECT_EQ(deleteLineFeeds(text, 9), 6);
    EXPECT_EQ(std::string(text, 6), "%CAX^?");
    // Lines cut inside a track read as the whole track.
    std::string wrapped = kTrack1 + kLongTrack2 + kContinuedTrack3;
    for (size_t at = 30; at < wrapped.size(); at += 31) wrapped.insert(at, "\n");
    Reading r;
    readWith(r, parseStripeFormat11, wrapped);
    EXPECT_EQ(r.status, kOk);
    EXPECT_EQ(r[field::fullName], "SAMPLE$JORDAN$LEE");
    EXPECT_EQ(r[field::licenseNumber], "123456789012345ABC");
}

// Through the full driver: the bundled samples, and rows that tie.

std::string readFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

testing::HandlePtr parseText(const std::string& text) {
    testing::HandlePtr h(SVT_create());
    EXPECT_EQ(SVT_parse(h.get(), text.data(), static_cast<int>(text.size())), SVT_OK);
    return h;
}

TEST(StripeThroughDriver, SamplesKeepToTheirFamily) {
    int stripes = 0;
    int barcodes = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(ORVANE_SOURCE_DIR) / "samples")) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() != ".txt") continue;
        const bool stripe = name.rfind("stripe-", 0) == 0;
        const bool barcode = name.rfind("aamva-", 0) == 0;
        if (!stripe && !barcode) continue;
        SCOPED_TRACE(name);
        auto h = parseText(readFile(entry.path()));
        EXPECT_EQ(h->record.formatGroup, stripe ? 1u : 0u);
        stripes += stripe;
        barcodes += barcode;
    }
    EXPECT_GE(stripes, 17);
    EXPECT_GE(barcodes, 1);
}

TEST(StripeThroughDriver, EqualReadingsGoToTheEarlierRow) {
    // Formats 4 (row 3) and 7 (row 9) read this stripe alike.
    auto h = parseText(kTrack1 + kTrack2 + kTrack3);
    EXPECT_EQ(h->record.formatId, 4u);
    // With "+" before track 3 format 4 cannot split it; format 7 reads it.
    h = parseText(kTrack1 + kTrack2 + kPlusTrack3);
    EXPECT_EQ(h->record.formatId, 7u);
}

}  // namespace
}  // namespace orvane
