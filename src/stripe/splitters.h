// How each stripe format finds its tracks in the reader's text (splitters) and tells a
// licence from other cards (checks). A splitter answers -1 for a payload too short for
// it and -20 for one whose framing does not fit; a check answers -20. Checks also drop
// the start sentinels that the field steps must not see.
#pragma once

#include <cstdint>

#include "stripe/engine.h"

namespace orvane {

// Format 0: "%", track 1 up to the last "?" that a ";" follows, track 2 after it.
int32_t splitAtSentinel(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
// Format 1: the first two lines of at least 2 bytes.
int32_t splitLines(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
// Format 2: the first three lines of at least 2 bytes, trimmed of blanks and quotes.
int32_t splitQuotedLines(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
// Format 3: the same lines in reverse order: track 3 first.
int32_t splitQuotedLinesReversed(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
// Formats 4 and 5: "%" track 1 "?;" track 2 "?%" track 3, on one line.
int32_t splitThreeSentinels(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
// Format 6: each track wrapped in "{!|N" and "|!}".
int32_t splitWrapped(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
// Format 7: the first three pieces that end in "?", trimmed of line ends and blanks.
int32_t splitAtEndSentinels(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
// Format 9: "%" track 1 "?;" track 2 "?#" track 3, on one line.
int32_t splitHashSentinel(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
// Format 10: the whole payload is track 1.
int32_t splitSingleTrack(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
// Format 12: the first three lines of at least 2 bytes, trimmed of blanks and quotes.
int32_t splitQuotedTokens(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
// Format 14: the payload without its last byte is track 2.
int32_t splitTrack2Only(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);

// Formats 0 and 1: ";636" on track 2, "%" and two letters on track 1.
int32_t checkFormat0(StripeParser& p, TrackSet* tracks);
// Formats 2 and 3: a track 3 as well, then as format 0.
int32_t checkFormats2And3(StripeParser& p, TrackSet* tracks);
// Formats 4 and 9: ";636" on track 2, no payment card on track 1.
int32_t checkFormat4(StripeParser& p, TrackSet* tracks);
// Format 5: two bytes and "636" on track 2.
int32_t checkFormat5(StripeParser& p, TrackSet* tracks);
// Format 6: "636" on track 2, no payment card on track 1.
int32_t checkFormat6(StripeParser& p, TrackSet* tracks);
// Format 7: ";636" on track 2; a track 1 without "%" has no jurisdiction.
int32_t checkFormat7(StripeParser& p, TrackSet* tracks);
// Format 10: "%", two letters and a credible end.
int32_t checkFormat10(StripeParser& p, TrackSet* tracks);
// Format 12: ";", one byte and "636" on track 2, "%" and two letters on track 1.
int32_t checkFormat12(StripeParser& p, TrackSet* tracks);
// Format 14: a "6" as second byte of track 2.
int32_t checkFormat14(StripeParser& p, TrackSet* tracks);

// The splitters and checks of the layouts that need a reading of their own: Canadian
// provinces, numbers continued on track 3, two-track stripes, the Australian track and
// the fixed-field layout (each function says what it accepts).
int32_t splitCanadian(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
int32_t checkCanadian(StripeParser& p, TrackSet* tracks);
int32_t splitRejoined(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
int32_t checkLongNumber(StripeParser& p, TrackSet* tracks);
int32_t splitTracks2And3(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
int32_t checkTracks2And3(StripeParser& p, TrackSet* tracks);
int32_t splitAustralian(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
int32_t checkAustralian(StripeParser& p, TrackSet* tracks);
int32_t splitFixedFields(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
int32_t checkFixedFields(StripeParser& p, TrackSet* tracks);

// Parts of the checks that the quick checks beside the readers share.
// Format 10's end test: a "?" last at a length that real tracks have, or "^" (after
// blanks) just before that "?"; otherwise a "?" at most 10 bytes before the end.
bool hasCredibleEnd(TextSpan track);
// "%" and a province code that the jurisdiction table gives to Canada.
bool hasCanadianProvince(TextSpan track1);
// "%" and an Australian state or territory code up to the first "^" after it.
bool opensWithAustralianState(TextSpan track1);

// Width of the fixed-field layout's tracks, start sentinel included.
inline constexpr int32_t kFixedTrack1Length = 80;
inline constexpr int32_t kFixedTrack2Length = 32;
inline constexpr int32_t kFixedTrack3Length = 33;

}  // namespace orvane
