// The stripe engine: cuts the text a card reader produced from a licence's magnetic
// stripe into its three tracks and reads each into a record. Track 1 holds
// jurisdiction, city, name and address; track 2 the issuer number, licence number and
// dates; track 3 the postal code and the physical description. Each format reader
// builds one engine on its stack, installs its splitter and check, replaces a few
// steps and runs the main step; an empty step is skipped.
#pragma once

#include <cstdint>

#include "engine/format.h"
#include "engine/record.h"

namespace orvane {

// The three tracks of one stripe; a track that was not read stays empty.
struct TrackSet {
    TextSpan track1;
    TextSpan track2;
    TextSpan track3;
};

struct StripeParser;

// A field step, or a track driver: reads one track (or the located part of track 3).
using StripeStep = int32_t (*)(StripeParser& p, TextSpan track);

struct StripeParser {
    ParsedRecord* record;
    const ParseClock* context;  // its parse year expands two-digit years
    TrackSet tracks;            // what the splitter cut, for drivers that read across tracks

    int32_t (*mainStep)(StripeParser& p, const char* payload, int32_t length);
    int32_t (*trackSplitter)(StripeParser& p, const char* payload, int32_t length, TrackSet* tracks);
    int32_t (*trackCheck)(StripeParser& p, TrackSet* tracks);
    StripeStep track1Driver;
    StripeStep jurisdictionStep;
    StripeStep cityStep;
    StripeStep nameStep;
    StripeStep addressStep;
    StripeStep track2Driver;
    StripeStep issuerStep;
    StripeStep licenseNumberStep;
    StripeStep datesStep;
    StripeStep track3Driver;
    StripeStep postalCodeStep;
    int32_t (*track3Locator)(StripeParser& p, TextSpan track, TextSpan* located);
    StripeStep classStep;
    StripeStep restrictionsStep;
    StripeStep endorsementsStep;
    StripeStep sexStep;
    StripeStep heightStep;
    StripeStep weightStep;
    StripeStep hairColorStep;
    StripeStep eyeColorStep;
};

// Clears the engine, stores record and context and installs the default steps; the
// splitter and the check stay empty for the format to install.
void initStripeParser(StripeParser& p, ParsedRecord* record, const ParseClock* context);

// Runs the main step, or answers 0 when a format removed it.
int32_t runStripeParser(StripeParser& p, const char* payload, int32_t length);

// The default steps, for formats that wrap or reuse them.
int32_t stripeMainStep(StripeParser& p, const char* payload, int32_t length);
int32_t stripeTrack1Driver(StripeParser& p, TextSpan track);
int32_t stripeJurisdictionStep(StripeParser& p, TextSpan track);
int32_t stripeCityStep(StripeParser& p, TextSpan track);
int32_t stripeNameStep(StripeParser& p, TextSpan track);
int32_t stripeAddressStep(StripeParser& p, TextSpan track);
int32_t stripeTrack2Driver(StripeParser& p, TextSpan track);
int32_t stripeIssuerStep(StripeParser& p, TextSpan track);
int32_t stripeLicenseNumberStep(StripeParser& p, TextSpan track);
int32_t stripeDatesStep(StripeParser& p, TextSpan track);
int32_t stripeTrack3Driver(StripeParser& p, TextSpan track);
int32_t stripePostalCodeStep(StripeParser& p, TextSpan track);
int32_t stripeTrack3Locator(StripeParser& p, TextSpan track, TextSpan* located);
int32_t stripeClassStep(StripeParser& p, TextSpan located);
int32_t stripeRestrictionsStep(StripeParser& p, TextSpan located);
int32_t stripeEndorsementsStep(StripeParser& p, TextSpan located);
int32_t stripeSexStep(StripeParser& p, TextSpan located);
int32_t stripeHeightStep(StripeParser& p, TextSpan located);
int32_t stripeWeightStep(StripeParser& p, TextSpan located);
int32_t stripeHairColorStep(StripeParser& p, TextSpan located);
int32_t stripeEyeColorStep(StripeParser& p, TextSpan located);

// A fixed part of a track stored in one slot: `length` bytes at `offset`, read only
// when the track reaches that far, trimmed of white space; when `accept` is set, every
// byte must pass it before trimming.
struct TrackSlice {
    int32_t offset;
    int32_t length;
    FieldId id;
    CharTest accept;
};

// Stores the slice S of the span; the steps that differ only by their slice share it.
void storeSlice(ParsedRecord* record, TextSpan track, const TrackSlice& slice);
template <const TrackSlice& S>
int32_t sliceStep(StripeParser& p, TextSpan track) {
    storeSlice(p.record, track, S);
    return 0;
}

// Helpers the splitters, checks and format steps share with the defaults.

// The byte at index, or 0 outside the span.
char trackByte(TextSpan track, int32_t index);
bool trackStartsWith(TextSpan track, const char* prefix);
// "%", the letter B and a digit: the first track of a payment card.
bool isPaymentCardTrack(TextSpan track);
// "%" and two letters: the first track of a licence.
bool isLicenceTrack1(TextSpan track);
// Drops n leading bytes (the whole track when it has fewer).
void dropLeading(TextSpan* track, int32_t n);
// One of "+", "%" and "#", the start sentinels that track 3 comes with.
bool isTrack3Sentinel(char c);
// The value of n decimal digits at text (the caller checked them).
int32_t readDigits(const char* text, int32_t n);
// Index of the first c in the track at or after from, or -1.
int32_t findByte(TextSpan track, char c, int32_t from);
// The date value, or an impossible one (month 0) when it does not read.
DateValue makeDate(int32_t year, int32_t month, int32_t day);
// The day cut to the length of its month; 0 for a month outside 1..12.
int32_t dayWithinMonth(int32_t year, int32_t month, int32_t day);
// Stores the date when it is plausible (day 1-31, month 1-12, year 1000-9999).
void storePlausibleDate(ParsedRecord* record, FieldId id, const DateValue& date);
// The century of the parse year with the two digits of yy; -1 without a clock.
int32_t expandTwoDigitYear(const ParseClock* clock, int32_t yy);
// The expiry of the codes on track 2: month 1-12 with the birth day, 77 never expires,
// 88 the first of the month after birth, 99 the birth month; stores nothing otherwise.
void storeStripeExpiry(StripeParser& p, int32_t yy, int32_t mm, const DateValue& birth);
// Trims blanks and stores a postal code: six characters as "A1A 1A1", nine as
// "12345-6789", any other length as it stands.
void storePostalCode(ParsedRecord* record, TextSpan code);
// Searches track 3 backwards for a sentinel with 7 bytes from it to the end whose
// postal field (from 3 bytes after it, at most 11 bytes that pass `accept`) holds more
// than 3 bytes; true with that field.
bool searchPostalCode(TextSpan track, CharTest accept, TextSpan* code);
// Upper-case letters, digits and blanks: what a postal field holds.
int isPostalCodeChar(int c);
// The overflow digits of track 2 (at most 5, after the 12 date digits that follow the
// "=" at index equals, when more than 13 bytes follow it) copied to out; their count.
int32_t readOverflowDigits(TextSpan track, int32_t equals, char* out);
// Trims white space and stores the span in the slot.
void storeTrimmed(ParsedRecord* record, FieldId id, TextSpan value);
// The address part of track 1 (2 letters, 2-13 city bytes, "^", 1-35 name bytes, "^",
// then the address bytes), searched from each start while 5 bytes remain.
bool findTrack1Address(TextSpan track, TextSpan* address);
// Stores an address line: "$" and tabs become blanks, runs of white space one blank.
void storeStripeAddress(ParsedRecord* record, FieldId id, TextSpan address);

}  // namespace orvane
