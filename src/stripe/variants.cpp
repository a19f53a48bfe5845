// Each reader: build the engine, install the splitter and check of its shape, put its
// own steps in place of the defaults (or remove them), run.
#include "stripe/variants.h"

#include <cstring>

#include "engine/status.h"
#include "stripe/engine.h"
#include "stripe/splitters.h"
#include "stripe/variant_steps.h"

namespace orvane {
namespace {

using Splitter = int32_t (*)(StripeParser&, const char*, int32_t, TrackSet*);
using Check = int32_t (*)(StripeParser&, TrackSet*);

// The engine with its defaults, the shape's splitter and its check.
void initShape(StripeParser& p, ParsedRecord* record, const ParseClock* clock, Splitter splitter, Check check) {
    initStripeParser(p, record, clock);
    p.trackSplitter = splitter;
    p.trackCheck = check;
}

// Reads a stripe of the shape with the default steps.
int32_t runShape(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock, Splitter splitter,
                 Check check) {
    StripeParser p;
    initShape(p, record, clock, splitter, check);
    return runStripeParser(p, text, length);
}

}  // namespace

int32_t deleteLineFeeds(char* text, int32_t length) {
    if (text == nullptr || length < 1) return length;
    int32_t kept = 0;
    for (int32_t i = 0; i < length; ++i) {
        if (text[i] != '\n') text[kept++] = text[i];
    }
    return kept;
}

int32_t parseStripeFormat0(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitAtSentinel, checkFormat0);
}

int32_t parseStripeFormat1(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitLines, checkFormat0);
}

int32_t parseStripeFormat2(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitQuotedLines, checkFormats2And3);
}

int32_t parseStripeFormat3(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitQuotedLinesReversed, checkFormats2And3);
}

int32_t parseStripeFormat4(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitThreeSentinels, checkFormat4);
    p.postalCodeStep = postalCodeWithDash;
    return runStripeParser(p, text, length);
}

int32_t parseStripeFormat5(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitThreeSentinels, checkFormat5);
}

int32_t parseStripeFormat6(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitWrapped, checkFormat6);
}

int32_t parseStripeFormat7(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitAtEndSentinels, checkFormat7);
}

int32_t parseStripeFormat8(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitCanadian, checkCanadian);
    p.addressStep = canadianAddressStep;
    p.postalCodeStep = canadianPostalCodeStep;
    p.track3Locator = canadianLocator;
    p.heightStep = metricHeightStep;
    p.weightStep = metricWeightStep;
    if (int32_t status = runStripeParser(p, text, length)) return status;
    // The check let only Canadian cards through.
    setFieldLiteral(record, field::countryCode, "CAN");
    return kOk;
}

int32_t parseStripeFormat9(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitHashSentinel, checkFormat4);
    p.postalCodeStep = hashPostalCodeStep;
    p.track3Locator = hashLocator;
    p.sexStep = recordedSexStep;
    return runStripeParser(p, text, length);
}

int32_t parseStripeFormat10(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitSingleTrack, checkFormat10);
    p.track2Driver = nullptr;
    p.track3Driver = nullptr;
    return runStripeParser(p, text, length);
}

int32_t parseStripeFormat11(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    const int32_t rejoined = deleteLineFeeds(text, length);
    StripeParser p;
    initShape(p, record, clock, splitRejoined, checkLongNumber);
    p.track2Driver = rejoinedTrack2Driver;
    p.licenseNumberStep = continuedLicenseNumberStep;
    p.postalCodeStep = trailingPostalCodeStep;
    return runStripeParser(p, text, rejoined);
}

int32_t parseStripeFormat12(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitQuotedTokens, checkFormat12);
}

int32_t parseStripeFormat13(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitTracks2And3, checkTracks2And3);
    p.licenseNumberStep = letterCodedLicenseNumberStep;
    p.datesStep = birthFirstDatesStep;
    p.postalCodeStep = zeroFilledPostalCodeStep;
    return runStripeParser(p, text, length);
}

int32_t parseStripeFormat14(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitTrack2Only, checkFormat14);
    p.licenseNumberStep = zeroPaddedLicenseNumberStep;
    p.track1Driver = nullptr;
    p.track3Driver = nullptr;
    return runStripeParser(p, text, length);
}

int32_t parseStripeFormat15(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    // Built without the initialiser: no default step belongs to this layout.
    StripeParser p;
    std::memset(&p, 0, sizeof p);
    p.record = record;
    p.context = clock;
    p.mainStep = stripeMainStep;
    p.trackSplitter = splitAustralian;
    p.trackCheck = checkAustralian;
    p.track1Driver = australianTrack1Driver;
    return runStripeParser(p, text, length);
}

int32_t parseStripeFormat16(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitFixedFields, checkFixedFields);
    p.track1Driver = fixedTrack1Driver;
    p.track3Driver = measuredTrack3Driver;
    p.issuerStep = fixedIssuerStep;
    p.licenseNumberStep = fixedLicenseNumberStep;
    p.datesStep = fixedDatesStep;
    p.postalCodeStep = fixedPostalCodeStep;
    p.track3Locator = fixedLocator;
    p.classStep = fixedClassStep;
    p.restrictionsStep = fixedRestrictionsStep;
    p.endorsementsStep = fixedEndorsementsStep;
    p.sexStep = fixedSexStep;
    p.heightStep = fixedHeightStep;
    p.weightStep = fixedWeightStep;
    p.hairColorStep = fixedHairColorStep;
    p.eyeColorStep = fixedEyeColorStep;
    return runStripeParser(p, text, length);
}

}  // namespace orvane
