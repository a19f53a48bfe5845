// Each reader: build the engine, install the splitter and check of its shape, put its
// own steps in place of the defaults (or remove them), run.
#include "stripe/variants.h"

#include <cstring>

#include "engine/status.h"
#include "fields/text.h"
#include "stripe/engine.h"
#include "stripe/split_helpers.h"
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

// "%" and two letters: how a licence's first track opens.
bool opensLicenceTrack1(const TextFacts& f) {
    return f.at(0) == '%' && isAsciiAlpha(static_cast<unsigned char>(f.at(1))) &&
           isAsciiAlpha(static_cast<unsigned char>(f.at(2)));
}

bool hasLineBreak(const TextFacts& f) { return f.has('\n') || f.has('\r'); }

TextSpan wholeText(const TextFacts& f) { return TextSpan{f.text, f.length}; }

// Whether the text holds `word` at index at.
bool holdsAt(const TextFacts& f, int32_t at, const char* word) {
    const int32_t n = static_cast<int32_t>(std::strlen(word));
    return at >= 0 && f.length - at >= n && std::memcmp(f.text + at, word, static_cast<size_t>(n)) == 0;
}

// The tracks of one line: "%" track 1, the first "?;", track 2 and then `track3Marker`.
// The index of that "?;", or -1 when the splitter would refuse the text.
int32_t oneLineTrack2(const TextFacts& f, const char* track3Marker) {
    if (f.length < 8 || f.at(0) != '%' || f.has('\n') || !f.has(track3Marker[1])) return -1;
    // The marker somewhere at all, before the search for it after the first "?;".
    if (findText(wholeText(f), track3Marker, 0) < 0) return -1;
    const int32_t end1 = findText(wholeText(f), "?;", 0);
    if (end1 < 0 || findText(wholeText(f), track3Marker, end1 + 1) < 0) return -1;
    return end1;
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

// Track 1 after "%" with a jurisdiction, and a track 2 ";636" right after a "?".
bool mayReadStripeFormat0(const TextFacts& f) { return f.length >= 5 && opensLicenceTrack1(f) && f.find("?;636") >= 0; }

int32_t parseStripeFormat0(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitAtSentinel, checkFormat0);
}

// Two lines: a licence's track 1 and a track 2 opening ";636".
bool mayReadStripeFormat1(const TextFacts& f) { return f.length >= 4 && f.has('%') && hasLineBreak(f) && f.find(";636") >= 0; }

int32_t parseStripeFormat1(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitLines, checkFormat0);
}

// Three lines: a licence's track 1 and a track 2 opening ";636", quoted or not.
bool mayReadStripeFormat2(const TextFacts& f) { return f.length >= 6 && f.has('%') && hasLineBreak(f) && f.find(";636") >= 0; }

int32_t parseStripeFormat2(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitQuotedLines, checkFormats2And3);
}

// The same three lines as format 2, in the other order.
bool mayReadStripeFormat3(const TextFacts& f) { return f.length >= 6 && f.has('%') && hasLineBreak(f) && f.find(";636") >= 0; }

int32_t parseStripeFormat3(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitQuotedLinesReversed, checkFormats2And3);
}

// One line from "%", a track 2 ";636" after the first "?" and a track 3 after "?%".
bool mayReadStripeFormat4(const TextFacts& f) {
    const int32_t end1 = oneLineTrack2(f, "?%");
    return end1 >= 0 && holdsAt(f, end1 + 1, ";636");
}

int32_t parseStripeFormat4(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitThreeSentinels, checkFormat4);
    p.postalCodeStep = postalCodeWithDash;
    return runStripeParser(p, text, length);
}

// One line from "%" with "?;", one byte and "636" on track 2, a track 3 after "?%".
bool mayReadStripeFormat5(const TextFacts& f) {
    const int32_t end1 = oneLineTrack2(f, "?%");
    return end1 >= 0 && holdsAt(f, end1 + 3, "636");
}

int32_t parseStripeFormat5(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitThreeSentinels, checkFormat5);
}

// Tracks wrapped in "{!|N" and "|!}".
bool mayReadStripeFormat6(const TextFacts& f) { return f.length >= 24 && f.has('{') && f.find("{!|1") >= 0; }

int32_t parseStripeFormat6(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitWrapped, checkFormat6);
}

// Pieces ended by "?", one a track 2 opening ";636".
bool mayReadStripeFormat7(const TextFacts& f) { return f.length >= 8 && f.has('?') && f.find(";636") >= 0; }

int32_t parseStripeFormat7(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitAtEndSentinels, checkFormat7);
}

// "%" and a Canadian province code, then a track 2 after ";", each ended by "?".
bool mayReadStripeFormat8(const TextFacts& f) {
    return f.length >= 8 && f.has(';') && f.has('?') && hasCanadianProvince(wholeText(f));
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

// One line from "%", a track 2 ";636" after the first "?" and a track 3 after "?#".
bool mayReadStripeFormat9(const TextFacts& f) {
    const int32_t end1 = oneLineTrack2(f, "?#");
    return end1 >= 0 && holdsAt(f, end1 + 1, ";636");
}

int32_t parseStripeFormat9(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitHashSentinel, checkFormat4);
    p.postalCodeStep = hashPostalCodeStep;
    p.track3Locator = hashLocator;
    p.sexStep = recordedSexStep;
    return runStripeParser(p, text, length);
}

// A licence's track 1 with a credible end.
bool mayReadStripeFormat10(const TextFacts& f) {
    return f.length >= 3 && opensLicenceTrack1(f) && f.has('?') && hasCredibleEnd(wholeText(f));
}

int32_t parseStripeFormat10(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitSingleTrack, checkFormat10);
    p.track2Driver = nullptr;
    p.track3Driver = nullptr;
    return runStripeParser(p, text, length);
}

// Tracks from "%" broken by line feeds anywhere, even inside ";636". Without line feeds
// track 2 follows the first "?": ";636" and a number field of 13 digits before "=".
bool mayReadStripeFormat11(const TextFacts& f) {
    if (f.length < 24 || f.at(0) != '%' || !f.has(';') || !f.has('?')) return false;
    if (f.has('\n')) return true;
    const int32_t end1 = findText(wholeText(f), "?;", 0);
    return end1 >= 3 && opensLicenceTrack1(f) && holdsAt(f, end1 + 1, ";636") &&
           digitsAt(wholeText(f), end1 + 2, 19) && f.at(end1 + 21) == '=';
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

// Three lines, track 2 being ";", one byte and "636".
bool mayReadStripeFormat12(const TextFacts& f) { return f.length >= 6 && f.has('%') && f.has(';') && hasLineBreak(f) && f.find("636") >= 0; }

int32_t parseStripeFormat12(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return runShape(text, length, record, clock, splitQuotedTokens, checkFormat12);
}

// Track 2 first, from ";636", then track 3.
bool mayReadStripeFormat13(const TextFacts& f) { return f.length >= 20 && f.startsWith(";636") && f.has('?'); }

int32_t parseStripeFormat13(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitTracks2And3, checkTracks2And3);
    p.licenseNumberStep = letterCodedLicenseNumberStep;
    p.datesStep = birthFirstDatesStep;
    p.postalCodeStep = zeroFilledPostalCodeStep;
    return runStripeParser(p, text, length);
}

// Track 2 alone, a "6" its second byte.
bool mayReadStripeFormat14(const TextFacts& f) { return f.length >= 3 && f.at(1) == '6'; }

int32_t parseStripeFormat14(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    StripeParser p;
    initShape(p, record, clock, splitTrack2Only, checkFormat14);
    p.licenseNumberStep = zeroPaddedLicenseNumberStep;
    p.track1Driver = nullptr;
    p.track3Driver = nullptr;
    return runStripeParser(p, text, length);
}

// One track from "%" and a state code, with "^" between its fields and a "?" after them.
bool mayReadStripeFormat15(const TextFacts& f) {
    if (f.length < 20 || f.at(0) != '%' || !f.has('^') || !f.has('?')) return false;
    // Every state code has two or three letters, so "^" follows at once.
    if (f.at(3) != '^' && f.at(4) != '^') return false;
    return opensWithAustralianState(TextSpan{f.text, findText(wholeText(f), "?", 1)});
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

// Fixed-width tracks from a licence's "%" and two letters, the first "?" ending track 1
// at its width, then ";".
bool mayReadStripeFormat16(const TextFacts& f) {
    return f.length >= kFixedTrack1Length + kFixedTrack2Length && opensLicenceTrack1(f) && f.has(';') &&
           f.at(kFixedTrack1Length) == '?' && findText(wholeText(f), "?", 0) == kFixedTrack1Length;
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
