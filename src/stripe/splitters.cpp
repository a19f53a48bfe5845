// Splitters and checks of the stripe shapes that readers commonly deliver.
#include "stripe/splitters.h"

#include "engine/status.h"
#include "fields/text.h"
#include "stripe/split_helpers.h"

namespace orvane {
namespace {

// Tracks on one line: "%" track 1 "?;" track 2, then the end marker of track 2 (its "?"
// and the sentinel that opens track 3) and track 3 from that sentinel to the end.
int32_t splitOnOneLine(const char* payload, int32_t length, const char* track3Marker, TrackSet* tracks) {
    if (length < 8) return kErrPayloadTooShort;
    const TextSpan text{payload, length};
    if (payload[0] != '%' || findByte(text, '\n', 1) >= 0) return kErrFraming;
    const int32_t end1 = findText(text, "?;", 0);
    if (end1 < 0) return kErrFraming;
    const int32_t end2 = findText(text, track3Marker, end1 + 1);
    if (end2 < 0) return kErrFraming;
    *tracks = TrackSet{TextSpan{payload, end1}, spanBetween(text, end1 + 1, end2), spanBetween(text, end2 + 1, length)};
    return kOk;
}

constexpr const char* kQuotesAndBlanks = " \"";

// The first `count` lines of at least 2 bytes, each trimmed of `edges` when given.
int32_t pickTrimmedLines(TextSpan payload, TextSpan* tracks, int32_t count, const char* edges) {
    const int32_t found = pickLines(payload, tracks, count);
    if (edges != nullptr) {
        for (int32_t i = 0; i < found; ++i) trimSet(&tracks[i], edges);
    }
    return found;
}

bool isDigitByte(char c) { return isAsciiDigit(static_cast<unsigned char>(c)) != 0; }
bool isLetterByte(char c) { return isAsciiAlpha(static_cast<unsigned char>(c)) != 0; }

}  // namespace

bool hasCredibleEnd(TextSpan track) {
    const int32_t n = track.length;
    if (track.data[n - 1] == '?') {
        if (n >= 42 && n <= 72) return true;
        int32_t at = n - 2;
        while (at >= 0 && isWhiteSpace(static_cast<unsigned char>(track.data[at]))) --at;
        if (at >= 0 && track.data[at] == '^') return true;
    }
    // Only the last "?" before the end counts, and it must stand within 10 bytes of it.
    for (int32_t at = n - 2, distance = 1; at >= 0 && distance <= 10; --at, ++distance) {
        if (track.data[at] == '?') return true;
    }
    return false;
}

int32_t splitAtSentinel(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < 5) return kErrPayloadTooShort;
    if (payload[0] != '%') return kErrFraming;
    // Backwards from the second-last byte: a line feed before any "?;" refuses the text.
    for (int32_t end = length - 1; end > 2;) {
        const int32_t at = findLastEitherByte(payload + 2, end - 2, '\n', ';') + 2;
        if (at < 2) break;
        if (payload[at] == '\n') return kErrFraming;
        if (payload[at - 1] == '?') {
            tracks->track1 = TextSpan{payload, at};
            tracks->track2 = TextSpan{payload + at, length - at};
            return kOk;
        }
        end = at;
    }
    return kErrFraming;
}

int32_t splitLines(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < 4) return kErrPayloadTooShort;
    TextSpan lines[2] = {};
    pickTrimmedLines(TextSpan{payload, length}, lines, 2, nullptr);
    tracks->track1 = lines[0];
    tracks->track2 = lines[1];
    return kOk;
}

int32_t splitQuotedLines(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < 6) return kErrPayloadTooShort;
    TextSpan lines[3] = {};
    pickTrimmedLines(TextSpan{payload, length}, lines, 3, kQuotesAndBlanks);
    *tracks = TrackSet{lines[0], lines[1], lines[2]};
    return kOk;
}

int32_t splitQuotedLinesReversed(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < 6) return kErrPayloadTooShort;
    TextSpan lines[3] = {};
    pickTrimmedLines(TextSpan{payload, length}, lines, 3, kQuotesAndBlanks);
    *tracks = TrackSet{lines[2], lines[1], lines[0]};
    return kOk;
}

int32_t splitThreeSentinels(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    return splitOnOneLine(payload, length, "?%", tracks);
}

int32_t splitWrapped(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < 24) return kErrPayloadTooShort;
    const TextSpan text{payload, length};
    static constexpr const char* kOpeners[] = {"{!|1", "{!|2", "{!|3"};
    TextSpan found[3] = {};
    int32_t from = 0;
    for (int32_t i = 0; i < 3; ++i) {
        const int32_t open = findText(text, kOpeners[i], from);
        if (open < 0) return kErrFraming;
        const int32_t close = findText(text, "|!}", open + 4);
        if (close < 0) return kErrFraming;
        found[i] = spanBetween(text, open + 4, close);
        from = close + 3;
    }
    for (const TextSpan& track : found) {
        if (track.length < 1) return kErrFraming;
    }
    *tracks = TrackSet{found[0], found[1], found[2]};
    return kOk;
}

int32_t splitAtEndSentinels(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < 8) return kErrPayloadTooShort;
    TextSpan pieces[3] = {};
    if (pickEndSentinelPieces(TextSpan{payload, length}, pieces, 3) < 3) return kErrFraming;
    *tracks = TrackSet{pieces[0], pieces[1], pieces[2]};
    return kOk;
}

int32_t splitHashSentinel(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    return splitOnOneLine(payload, length, "?#", tracks);
}

int32_t splitSingleTrack(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    if (length < 3) return kErrPayloadTooShort;
    tracks->track1 = TextSpan{payload, length};
    return kOk;
}

int32_t splitQuotedTokens(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks) {
    // Cut into lines at CR and LF, empty ones skipped, exactly as format 2's.
    return splitQuotedLines(p, payload, length, tracks);
}

int32_t splitTrack2Only(StripeParser&, const char* payload, int32_t length, TrackSet* tracks) {
    // No length test: the check refuses what is too short.
    if (length >= 1) tracks->track2 = TextSpan{payload, length - 1};
    return kOk;
}

int32_t checkFormat0(StripeParser&, TrackSet* tracks) {
    if (!trackStartsWith(tracks->track2, ";636") || !isLicenceTrack1(tracks->track1)) return kErrFraming;
    dropLeading(&tracks->track1, 1);
    dropLeading(&tracks->track2, 1);
    return kOk;
}

int32_t checkFormats2And3(StripeParser& p, TrackSet* tracks) {
    if (tracks->track3.length < 2 || tracks->track2.length < 4) return kErrFraming;
    return checkFormat0(p, tracks);
}

int32_t checkFormat4(StripeParser&, TrackSet* tracks) {
    if (!trackStartsWith(tracks->track2, ";636")) return kErrFraming;
    if (tracks->track1.length > 2 && isPaymentCardTrack(tracks->track1)) return kErrFraming;
    dropLeading(&tracks->track1, 1);
    dropLeading(&tracks->track2, 1);
    return kOk;
}

int32_t checkFormat5(StripeParser&, TrackSet* tracks) {
    if (tracks->track2.length < 4) return kErrFraming;
    dropLeading(&tracks->track2, 2);
    if (!trackStartsWith(tracks->track2, "636")) return kErrFraming;
    const TextSpan t1 = tracks->track1;
    if (trackByte(t1, 0) == '%') {
        if (!isLetterByte(trackByte(t1, 1)) && !isLetterByte(trackByte(t1, 2))) return kErrFraming;
        // Deliberately the reverse of the payment-card test: "B" must be followed by a digit.
        if (trackByte(t1, 1) == 'B' && !isDigitByte(trackByte(t1, 2))) return kErrFraming;
    }
    dropLeading(&tracks->track1, 1);
    return kOk;
}

int32_t checkFormat6(StripeParser&, TrackSet* tracks) {
    if (!trackStartsWith(tracks->track2, "636") || tracks->track2.length < 4) return kErrFraming;
    if (isPaymentCardTrack(tracks->track1)) return kErrFraming;
    return kOk;
}

int32_t checkFormat7(StripeParser& p, TrackSet* tracks) {
    if (!trackStartsWith(tracks->track2, ";636")) return kErrFraming;
    if (tracks->track1.length >= 1 && trackByte(tracks->track1, 0) != '%') {
        // Without its sentinel the track may not start with the jurisdiction.
        p.jurisdictionStep = nullptr;
    } else if (tracks->track1.length >= 1) {
        if (isPaymentCardTrack(tracks->track1)) return kErrFraming;
        dropLeading(&tracks->track1, 1);
    }
    dropLeading(&tracks->track2, 1);
    return kOk;
}

int32_t checkFormat10(StripeParser&, TrackSet* tracks) {
    const TextSpan t = tracks->track1;
    if (t.length < 3 || t.data[0] != '%') return kErrFraming;
    if (!hasCredibleEnd(t)) return kErrFraming;
    if (!isLetterByte(t.data[1]) || !isLetterByte(t.data[2])) return kErrFraming;
    // Kept as it is, although byte 2 is already known to be a letter: it never fires.
    if (t.data[1] == 'B' && isDigitByte(t.data[2])) return kErrFraming;
    dropLeading(&tracks->track1, 1);
    return kOk;
}

int32_t checkFormat12(StripeParser&, TrackSet* tracks) {
    const TextSpan t2 = tracks->track2;
    if (tracks->track3.length < 2 || t2.length < 5) return kErrFraming;
    if (t2.data[0] != ';' || !trackStartsWith(TextSpan{t2.data + 2, t2.length - 2}, "636")) return kErrFraming;
    const TextSpan t1 = tracks->track1;
    if (!isLicenceTrack1(t1)) return kErrFraming;
    // Kept as it is, although byte 2 is already known to be a letter: it never fires.
    if (t1.data[1] == 'B' && isDigitByte(t1.data[2])) return kErrFraming;
    dropLeading(&tracks->track2, 2);
    dropLeading(&tracks->track1, 1);
    return kOk;
}

int32_t checkFormat14(StripeParser&, TrackSet* tracks) {
    if (tracks->track2.length < 2 || tracks->track2.data[1] != '6') return kErrFraming;
    dropLeading(&tracks->track2, 1);
    return kOk;
}

}  // namespace orvane
