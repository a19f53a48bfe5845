#include "documents/zone_dates.h"

#include <cstring>

#include "documents/mrz.h"
#include "documents/mrz_check_digits.h"
#include "engine/status.h"
#include "fields/dates.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr int32_t kDateLength = 6;

// Where a layout keeps its two dates, and the reader of what is known.
struct DatePlaces {
    MrzLayout layout;
    int32_t birth;
    int32_t expiry;
    FormatParser reader;
};

constexpr DatePlaces kPassport{MrzLayout::Td3, 57, 65, parseMrzFormat64};
constexpr DatePlaces kCard{MrzLayout::Td1, 30, 38, parseMrzFormat65};
constexpr DatePlaces kTwoLineCard{MrzLayout::Td2, 49, 57, parseMrzFormat66};
constexpr DatePlaces kLongVisa{MrzLayout::VisaLong, 57, 65, parseMrzFormat67};
constexpr DatePlaces kShortVisa{MrzLayout::VisaShort, 49, 57, parseMrzFormat67};

bool isFillerPair(const char* pair) { return pair[0] == '<' && pair[1] == '<'; }
bool isDigitPair(const char* pair) {
    return isAsciiDigit(static_cast<unsigned char>(pair[0])) && isAsciiDigit(static_cast<unsigned char>(pair[1]));
}
int32_t pairValue(const char* pair) { return (pair[0] - '0') * 10 + (pair[1] - '0'); }

bool allFillers(const char* text, int32_t n) {
    for (int32_t i = 0; i < n; ++i) {
        if (text[i] != '<') return false;
    }
    return true;
}

// Unknown parts stand in as zeros while the layout's reader reads the zone, and the
// dates are then stored as they are known.
int32_t readWithUnknownDates(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock,
                             const DatePlaces& places) {
    if (text == nullptr || record == nullptr || clock == nullptr || length < 0) return kErrInvalidArgument;
    if (length < 2 || zoneLayoutOf(text, length) != places.layout) return kErrFraming;
    char* birth = text + places.birth;
    char* expiry = text + places.expiry;
    const bool birthUnknown = isPartlyUnknownDate(TextSpan{birth, kDateLength});
    const bool noExpiry = allFillers(expiry, kDateLength);
    // A zone with both dates in digits is the layout reader's alone.
    if (!birthUnknown && !noExpiry) return kErrFraming;
    char printedBirth[kDateLength];
    char printedExpiry[kDateLength];
    std::memcpy(printedBirth, birth, kDateLength);
    std::memcpy(printedExpiry, expiry, kDateLength);
    for (int32_t i = 0; i < kDateLength; ++i) {
        if (birthUnknown && birth[i] == '<') birth[i] = '0';
        if (noExpiry) expiry[i] = '0';
    }
    const int32_t status = places.reader(text, length, record, clock);
    std::memcpy(birth, printedBirth, kDateLength);
    std::memcpy(expiry, printedExpiry, kDateLength);
    if (status != kOk) return status;
    if (birthUnknown) {
        DateValue date{};
        if (readZoneBirthDate(TextSpan{printedBirth, kDateLength}, clock->parseYear, &date) == kOk) {
            setFieldDate(record, field::birthdateAlt, &date);
        } else {
            setField(record, field::birthdateAlt, TextSpan{nullptr, 0});
        }
    }
    if (noExpiry) setField(record, field::expirationDate, TextSpan{nullptr, 0});
    return kOk;
}

}  // namespace

int32_t zoneBirthYear(int32_t twoDigitYear, int32_t parseYear) {
    const int32_t lastCentury = 1900 + twoDigitYear;
    return lastCentury + 100 < parseYear ? 2000 + twoDigitYear : lastCentury;
}

bool isPartlyUnknownDate(TextSpan six) {
    if (six.data == nullptr || six.length != kDateLength) return false;
    bool unknown = false;
    for (int32_t at = 0; at < kDateLength; at += 2) {
        if (isFillerPair(six.data + at)) {
            unknown = true;
        } else if (!isDigitPair(six.data + at)) {
            return false;
        }
    }
    return unknown;
}

int32_t readZoneBirthDate(TextSpan six, int32_t parseYear, DateValue* date) {
    if (six.data == nullptr || six.length != kDateLength || date == nullptr) return kErrInvalidArgument;
    for (int32_t at = 0; at < kDateLength; at += 2) {
        if (!isFillerPair(six.data + at) && !isDigitPair(six.data + at)) return kErrFraming;
    }
    if (isFillerPair(six.data)) return kErrNoAnswer;
    const int32_t year = zoneBirthYear(pairValue(six.data), parseYear);
    const int32_t month = isFillerPair(six.data + 2) ? 12 : pairValue(six.data + 2);
    int32_t day = 0;
    if (isFillerPair(six.data + 4)) {
        if (month < 1 || month > 12) return kErrFraming;
        day = daysInMonth(year, month);
    } else {
        day = pairValue(six.data + 4);
    }
    *date = DateValue{year, month, day, 0, 0, 0};
    return kOk;
}

int32_t parsePassportZoneUnknownDates(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return readWithUnknownDates(text, length, record, clock, kPassport);
}

int32_t parseCardZoneUnknownDates(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return readWithUnknownDates(text, length, record, clock, kCard);
}

int32_t parseTwoLineCardZoneUnknownDates(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return readWithUnknownDates(text, length, record, clock, kTwoLineCard);
}

int32_t parseVisaZoneUnknownDates(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return readWithUnknownDates(text, length, record, clock, length == 88 ? kLongVisa : kShortVisa);
}

// Judged on the caller's bytes like the layouts' own checks; the dates are looked at
// once the zone is framed.
bool mayReadPassportZoneUnknownDates(const TextFacts& f) { return mayReadMrzFormat64(f); }
bool mayReadCardZoneUnknownDates(const TextFacts& f) { return mayReadMrzFormat65(f); }
bool mayReadTwoLineCardZoneUnknownDates(const TextFacts& f) { return mayReadMrzFormat66(f); }
bool mayReadVisaZoneUnknownDates(const TextFacts& f) { return mayReadMrzFormat67(f); }

}  // namespace orvane
