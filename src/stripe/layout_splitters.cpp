// Splitters and checks of the stripe layouts that need a reading of their own: each
// refuses everything but its own layout, so that it never wins on foreign input.
#include <cstring>
#include <iterator>

#include "engine/status.h"
#include "fields/countries.h"
#include "fields/text.h"
#include "stripe/split_helpers.h"
#include "stripe/splitters.h"

namespace orvane {
namespace {

constexpr const char* kAustralianStates[] = {"NSW", "VIC", "QLD", "SA", "WA", "TAS", "NT", "ACT"};
constexpr int32_t kAustralianFields = 6;

bool isCanadianJurisdiction(const char* code) {
    const char* country = code != nullptr ? countryForJurisdictionCode(makeSpan(code)) : nullptr;
    return country != nullptr && std::strcmp(country, "Canada") == 0;
}

// ";" then six digits that the issuer table gives to a Canadian jurisdiction.
bool hasCanadianIin(TextSpan track2) {
    if (trackByte(track2, 0) != ';' || track2.length < 7 || !allDigits(track2.data + 1, 6)) return false;
    return isCanadianJurisdiction(jurisdictionCodeForIin(TextSpan{track2.data + 1, 6}));
}


int32_t countByte(TextSpan text, char c) {
    int32_t n = 0;
    for (int32_t at = findByte(text, c, 0); at >= 0; at = findByte(text, c, at + 1)) ++n;
    return n;
}

// The piece without the "?" that ends it.
TextSpan withoutEndSentinel(TextSpan piece) {
    if (piece.length >= 1 && piece.data[piece.length - 1] == '?') --piece.length;
    return piece;
}

}  // namespace

bool hasCanadianProvince(TextSpan track1) {
    if (!isLicenceTrack1(track1)) return false;
    char code[3] = {track1.data[1], track1.data[2], '\0'};
    return isCanadianJurisdiction(code);
}

bool opensWithAustralianState(TextSpan track1) {
    const int32_t stateEnd = findByte(track1, '^', 1);
    if (trackByte(track1, 0) != '%' || stateEnd < 0) return false;
    return spanInList(spanBetween(track1, 1, stateEnd), kAustralianStates, static_cast<int32_t>(std::size(kAustralianStates)));
}

// Canadian provincial stripes: "%", the province code and the usual first track, then
// ";" and the province's issuer number, each ended by "?", on one line or on several;
// track 3, when the province writes one, follows with its own sentinel.
int32_t splitCanadian(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < 8) return kErrPayloadTooShort;
    if (payload[0] != '%') return kErrFraming;
    TextSpan pieces[3] = {};
    if (pickEndSentinelPieces(TextSpan{payload, length}, pieces, 3) < 2) return kErrFraming;
    *tracks = TrackSet{pieces[0], pieces[1], pieces[2]};
    return kOk;
}

// Only Canadian cards: the province code after "%" and the issuer number after ";"
// must both belong to Canada (a payment card's "%B4" is no province).
int32_t checkCanadian(StripeParser&, TrackSet* tracks) {
    if (!hasCanadianProvince(tracks->track1) || !hasCanadianIin(tracks->track2)) return kErrFraming;
    if (tracks->track3.length > 0 && !isTrack3Sentinel(tracks->track3.data[0])) return kErrFraming;
    dropLeading(&tracks->track1, 1);
    dropLeading(&tracks->track2, 1);
    return kOk;
}

// Readers that wrap their output at a fixed width put line feeds anywhere, even inside
// a track; with them deleted the tracks follow each other: "%" track 1 "?;" track 2
// "?", then track 3 from its "+" or "%" sentinel.
int32_t splitRejoined(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < 24) return kErrPayloadTooShort;
    const TextSpan text{payload, length};
    if (payload[0] != '%') return kErrFraming;
    const int32_t end1 = findText(text, "?;", 0);
    if (end1 < 0) return kErrFraming;
    const int32_t end2 = findByte(text, '?', end1 + 1);
    if (end2 < 0) return kErrFraming;
    const TextSpan track3 = spanBetween(text, end2 + 1, length);
    if (trackByte(track3, 0) != '+' && trackByte(track3, 0) != '%') return kErrFraming;
    *tracks = TrackSet{TextSpan{payload, end1}, spanBetween(text, end1 + 1, end2), track3};
    return kOk;
}

// Licence numbers longer than track 2 holds: its number field is full (13 digits before
// "=") and track 3 carries the rest right after its sentinel and version bytes.
int32_t checkLongNumber(StripeParser&, TrackSet* tracks) {
    const TextSpan t2 = tracks->track2;
    if (!isLicenceTrack1(tracks->track1) || !trackStartsWith(t2, ";636")) return kErrFraming;
    if (t2.length < 21 || !allDigits(t2.data + 1, 19) || t2.data[20] != '=') return kErrFraming;
    if (tracks->track3.length < 14 || !isAsciiAlnum(static_cast<unsigned char>(tracks->track3.data[3]))) {
        return kErrFraming;
    }
    dropLeading(&tracks->track1, 1);
    dropLeading(&tracks->track2, 1);
    return kOk;
}

// Two-track readers (tracks 2 and 3, no track 1): ";" track 2 "?", then track 3 from
// its "+" or "%" sentinel, on the same line or the next.
int32_t splitTracks2And3(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < 20) return kErrPayloadTooShort;
    const TextSpan text{payload, length};
    if (payload[0] != ';') return kErrFraming;
    const int32_t end2 = findByte(text, '?', 1);
    if (end2 < 0) return kErrFraming;
    TextSpan track3 = spanBetween(text, end2 + 1, length);
    trimSet(&track3, "\r\n ");
    if (trackByte(track3, 0) != '+' && trackByte(track3, 0) != '%') return kErrFraming;
    tracks->track2 = TextSpan{payload, end2};
    tracks->track3 = track3;
    return kOk;
}

// A licence's track 2 (";636") and a track 3 long enough to hold the description.
int32_t checkTracks2And3(StripeParser&, TrackSet* tracks) {
    if (!trackStartsWith(tracks->track2, ";636") || tracks->track3.length < 16) return kErrFraming;
    dropLeading(&tracks->track2, 1);
    return kOk;
}

// Australian licences carry one track: "%", then six "^"-separated fields (state,
// name, address, licence number, birth and expiry dates) and "?". Whatever follows
// the "?" (a check character) is not read.
int32_t splitAustralian(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < 20) return kErrPayloadTooShort;
    if (payload[0] != '%') return kErrFraming;
    const int32_t end = findByte(TextSpan{payload, length}, '?', 1);
    if (end < 0) return kErrFraming;
    tracks->track1 = TextSpan{payload, end};
    return kOk;
}

// An Australian state or territory code first, and all six fields.
int32_t checkAustralian(StripeParser&, TrackSet* tracks) {
    const TextSpan t1 = tracks->track1;
    if (!opensWithAustralianState(t1)) return kErrFraming;
    if (countByte(t1, '^') < kAustralianFields - 1) return kErrFraming;
    dropLeading(&tracks->track1, 1);
    return kOk;
}

// Stripes of the older fixed-field layout carry no field separators: every field has
// its width and is padded with blanks (track 1) or written in full (tracks 2 and 3),
// so each track has one exact length. Tracks end in "?", on one line or several.
int32_t splitFixedFields(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < kFixedTrack1Length + kFixedTrack2Length) return kErrPayloadTooShort;
    if (payload[0] != '%') return kErrFraming;
    TextSpan pieces[3] = {};
    if (pickEndSentinelPieces(TextSpan{payload, length}, pieces, 3) < 2) return kErrFraming;
    *tracks = TrackSet{withoutEndSentinel(pieces[0]), withoutEndSentinel(pieces[1]), withoutEndSentinel(pieces[2])};
    return kOk;
}

// Exact widths, no "^" on track 1, only digits on track 2, and a licence's "%" and two
// letters (so a payment card never passes).
int32_t checkFixedFields(StripeParser&, TrackSet* tracks) {
    const TextSpan t1 = tracks->track1;
    const TextSpan t2 = tracks->track2;
    const TextSpan t3 = tracks->track3;
    if (t1.length != kFixedTrack1Length || !isLicenceTrack1(t1) || findByte(t1, '^', 0) >= 0) return kErrFraming;
    if (t2.length != kFixedTrack2Length || t2.data[0] != ';' || !allDigits(t2.data + 1, t2.length - 1)) {
        return kErrFraming;
    }
    if (t3.length > 0 && (t3.length != kFixedTrack3Length || !isTrack3Sentinel(t3.data[0]))) return kErrFraming;
    dropLeading(&tracks->track1, 1);
    dropLeading(&tracks->track2, 1);
    dropLeading(&tracks->track3, 1);
    return kOk;
}

}  // namespace orvane
