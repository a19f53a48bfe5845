// The stripe readers: every splitter, check and designed layout refusing what is not
// its own, with its code, and each designed layout against the default steps. The
// samples show each reader accepting its own stripe through the handle.
#include "stripe/variants.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/status.h"
#include "stripe/engine.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::slotText;

// Parsing in 2025.
constexpr ParseClock kClock{2025, 6, 1, 12, 0, 0};

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

TEST(StripeVariants, RefusalsWithTheirCodes) {
    const std::string notLicence = ";6370141234567=250719800115?";
    const std::string& pay = kPaymentTrack1;
    const std::string usStripe = kTrack1 + "\n" + kTrack2 + "\n" + kTrack3;
    const std::string fixed = fixedFields();
    const int32_t kShort = kErrPayloadTooShort;
    const int32_t kFraming = kErrFraming;
    testing::runReaderCases({
        // The splitters of the given shapes.
        {"0 short", parseStripeFormat0, "%A?;", kShort},
        {"0 line feed", parseStripeFormat0, kTrack1 + "\n" + kTrack2, kFraming},
        {"1 short", parseStripeFormat1, "%AB", kShort},
        {"2 short", parseStripeFormat2, "%AB?;", kShort},
        {"4 short", parseStripeFormat4, "%A?;6?%", kShort},
        {"4 no ?%", parseStripeFormat4, kTrack1 + kTrack2 + "+", kFraming},
        {"6 short", parseStripeFormat6, "{!|1A|!}{!|2B|!}{!|3C|!", kShort},
        {"6 empty track", parseStripeFormat6, "{!|1CAX^A^|!}{!|2636014|!}{!|3|!}", kFraming},
        {"7 short", parseStripeFormat7, "%A?;6?+", kShort},
        {"7 two pieces", parseStripeFormat7, kTrack1 + kTrack2, kFraming},
        {"9 short", parseStripeFormat9, "%A?;6?#", kShort},
        {"9 line feed", parseStripeFormat9, kTrack1 + kTrack2 + "\n#958141234  " + kDescription, kFraming},
        {"10 short", parseStripeFormat10, "%A", kShort},
        {"12 short", parseStripeFormat12, "%AB\n;", kShort},
        {"14 empty", parseStripeFormat14, "", kFraming},
        // Their checks. A payment card fails formats 0 to 3, 10 and 12 on its missing letters;
        // formats 4 and 9 share one check.
        {"0 no letters", parseStripeFormat0, "%1A^DOE^?" + kTrack2, kFraming},
        {"1 one line", parseStripeFormat1, kTrack1 + kTrack2, kFraming},
        {"2 two lines", parseStripeFormat2, kTrack1 + "\n" + kTrack2, kFraming},
        {"3 lines in reading order", parseStripeFormat3, kTrack1 + "\n" + kTrack2 + "\n" + kPlusTrack3, kFraming},
        {"4 not 636", parseStripeFormat4, kTrack1 + notLicence + kTrack3, kFraming},
        {"9 payment card", parseStripeFormat9, pay + kTrack2 + "#958141234  " + kDescription, kFraming},
        {"5 no two bytes before 636", parseStripeFormat5, kTrack1 + kTrack2 + kTrack3, kFraming},
        {"5 B without digit", parseStripeFormat5, "%BCVANCOUVER^DOE^?;" + kTrack2 + kTrack3, kFraming},
        {"6 sentinel on track 2", parseStripeFormat6, "{!|1CAX^A^|!}{!|2;636014|!}{!|3X|!}", kFraming},
        {"6 payment card", parseStripeFormat6,
         "{!|1" + pay + "|!}{!|26360141234567=250719800115|!}{!|3" + kTrack3 + "|!}", kFraming},
        {"7 payment card", parseStripeFormat7, pay + kTrack2 + kPlusTrack3, kFraming},
        {"10 ? too far back", parseStripeFormat10, "%CAX^DOE^?12345678901", kFraming},
        {"10 no letters", parseStripeFormat10, "%1AX^DOE^?", kFraming},
        {"12 one byte missing", parseStripeFormat12, kTrack1 + "\n" + kTrack2 + "\n" + kTrack3, kFraming},
        {"12 two lines", parseStripeFormat12, kTrack1 + "\n;" + kTrack2, kFraming},
        {"14 second byte", parseStripeFormat14, ";5360141234567=250719800115?", kFraming},
        // The designed layouts.
        {"8 short", parseStripeFormat8, "%ON?;63", kShort},
        {"8 no sentinel", parseStripeFormat8, kCanadian.substr(1), kFraming},
        {"8 United States", parseStripeFormat8, usStripe, kFraming},
        {"11 short", parseStripeFormat11, "%CA^DOE^?;636014?+01", kShort},
        {"11 usual number", parseStripeFormat11, kTrack1 + kTrack2 + kContinuedTrack3, kFraming},
        {"11 hash track 3", parseStripeFormat11, kTrack1 + kLongTrack2 + "#" + kContinuedTrack3.substr(1), kFraming},
        {"13 short", parseStripeFormat13, ";636014?%01", kShort},
        {"13 track 1 first", parseStripeFormat13, usStripe, kFraming},
        {"13 short track 3", parseStripeFormat13, kTrack2 + "%0195814?", kFraming},
        {"15 short", parseStripeFormat15, "%NSW^A^B^C^D^E?", kShort},
        {"15 no state", parseStripeFormat15, kTrack1 + kTrack2, kFraming},
        {"15 fields missing", parseStripeFormat15, "%VIC^SAMPLE$JORDAN^12345678^15011980?", kFraming},
        {"16 short", parseStripeFormat16, kTrack1 + kTrack2, kShort},
        {"16 separators", parseStripeFormat16, std::string(fixed).replace(fixed.find("$JORDAN"), 1, "^"), kFraming},
        {"16 track 2 width", parseStripeFormat16, std::string(fixed).replace(fixed.find("20290715"), 8, "2029071"),
         kFraming},
        {"16 payment card", parseStripeFormat16,
         std::string(fixed).replace(0, 81, pay.substr(0, pay.size() - 1) + std::string(32, '0') + "?"), kFraming},
    }, &kClock);
}

TEST(StripeVariants, AcceptedEdgesOfTheGivenShapes) {
    const std::string track50 = "%CAANYTOWN^DOE$JOHN^1400 ELM ST^" + std::string(17, ' ') + "?";
    ASSERT_EQ(track50.size(), 50u);
    testing::runReaderCases({
        {"10 usual length", parseStripeFormat10, track50, kOk},
        {"10 short, ^ before ?", parseStripeFormat10, "%CAANYTOWN^DOE$JOHN^12 ELM^ ?", kOk},
        {"10 ? near the end", parseStripeFormat10, "%CAX^DOE^?123456789", kOk},
        {"14 any 6 second", parseStripeFormat14, "X6Y", kOk},
        // Deliberately the reverse test: "B" followed by a digit passes format 5.
        {"5 B and digit", parseStripeFormat5, kPaymentTrack1 + ";" + kTrack2 + kTrack3, kOk},
    }, &kClock);
}

struct LayoutCase {
    const char* name;
    FormatParser designed;
    std::string input;
    FormatParser byDefaults;  // a reader of default steps that takes the same stripe
    std::vector<testing::Slot> read;  // what the designed reader reads and the defaults do not
};

// Each layout with a reading of its own, read by its format and misread by a format of default steps.
TEST(StripeVariants, DesignedLayoutsReadWhatTheDefaultsMisread) {
    const LayoutCase cases[] = {
        {"4 dashed ZIP+4", parseStripeFormat4, kTrack1 + kTrack2 + "%0195814-1234 " + kDescription + "?",
         parseStripeFormat7, {{field::postalCode, "95814-1234"}}},
        {"8 Canadian", parseStripeFormat8, kCanadian, parseStripeFormat7,
         {{field::postalCode, "K1A 0B1"}, {field::weightKilograms, "110"}, {field::address1, "250 WELLINGTON ST"}}},
        {"9 no version bytes", parseStripeFormat9, kTrack1 + kTrack2 + "#958141234  " + kDescription + "?",
         parseStripeFormat7, {{field::licenseClassification, "C"}, {field::height, "510"}}},
        {"11 number continued on track 3", parseStripeFormat11, kTrack1 + kLongTrack2 + kContinuedTrack3,
         parseStripeFormat7, {{field::licenseNumber, "123456789012345ABC"}, {field::postalCode, "95814-1234"}}},
        {"13 letter code, birth first", parseStripeFormat13, kTwoTracks, parseStripeFormat14,
         {{field::licenseNumber, "L3456789"}, {field::birthdate, "19800115"}}},
        {"15 Australian", parseStripeFormat15, kAustralian, parseStripeFormat10,
         {{field::jurisdictionCode, ""}, {field::city, "SYDNEY"}}},
        {"16 fixed fields", parseStripeFormat16, fixedFields(), parseStripeFormat7,
         {{field::fullName, "SAMPLE$JORDAN$LEE"}, {field::licenseNumber, "123456789"}}},
    };
    for (const LayoutCase& c : cases) {
        SCOPED_TRACE(c.name);
        testing::runReaderCases({{"designed", c.designed, c.input, kOk, c.read}}, &kClock);
        RecordWithBuffer defaults(4096);
        std::string text = c.input;
        c.byDefaults(text.data(), static_cast<int32_t>(text.size()), defaults.get(), &kClock);
        for (const testing::Slot& s : c.read) EXPECT_NE(slotText(defaults.record, s.id), s.value) << "FieldId " << s.id;
    }
}

TEST(StripeVariants, ZeroPaddedNumberAgainstTheDefaultStep) {
    testing::runReaderCases({{"14", parseStripeFormat14, ";6360140000001234567=25071980011589?", kOk,
                              {{field::licenseNumber, "123456789"}}}}, &kClock);
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
}

}  // namespace
}  // namespace orvane
