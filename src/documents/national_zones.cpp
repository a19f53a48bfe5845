#include "documents/national_zones.h"

#include <cstring>
#include <iterator>
#include <span>

#include "documents/mrz.h"
#include "documents/mrz_check_digits.h"
#include "documents/zone_dates.h"
#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr const char* kFiller = "<";
constexpr int32_t kFrenchCardLength = 72;
constexpr int32_t kSwissLicenceLength = 69;
constexpr int32_t kFrenchLicenceLength = 30;

struct Range {
    int32_t from;
    int32_t length;
};

TextSpan part(TextSpan zone, Range range) { return TextSpan{zone.data + range.from, range.length}; }

// French identity card: "ID", "FRA", the surname and the office's code on the first line;
// the issue year and month, the issuing office, the serial and its check digit, the
// given names, the birth date and its check digit, the sex and the digit of the whole
// zone on the second.
constexpr Range kCardState{2, 3};
constexpr Range kCardSurname{5, 25};
constexpr Range kCardNumber{36, 12};
constexpr Range kCardIssueMonth{36, 4};
constexpr Range kCardGivenNames{49, 14};
constexpr Range kCardBirth{63, 6};
constexpr int32_t kCardSex = 70;

// Swiss driving licence: the card's number on the first line; "FA", "CHE", the holder's
// personal number, the licence version and the birth date on the second; the names on
// the third.
constexpr Range kSwissCardNumber{0, 9};
constexpr Range kSwissState{11, 3};
constexpr Range kSwissPersonalNumber{14, 9};
constexpr Range kSwissVersion{23, 3};
constexpr Range kSwissBirth{28, 6};
constexpr Range kSwissNames{39, 30};

// French driving licence: "D1", "FRA", the licence number and its check digit, the
// expiry, the surname and the digit of the whole line.
constexpr Range kLicenceState{2, 3};
constexpr Range kLicenceNumber{5, 9};
constexpr Range kLicenceExpiry{15, 6};
constexpr Range kLicenceSurname{21, 8};

struct DigitRule {
    const char* field;
    Range covered;
    int32_t digitAt;
};

constexpr DigitRule kFrenchCardDigits[] = {
    {"documentNumber", {36, 12}, 48},
    {"birthDate", {63, 6}, 69},
    {"composite", {0, 71}, 71},  // the first line and the second up to this digit
};
static_assert(std::size(kFrenchCardDigits) == 3);
constexpr DigitRule kFrenchLicenceDigits[] = {
    {"documentNumber", {0, 14}, 14},  // the number's digit covers the line before it
    {"composite", {0, 29}, 29},
};
static_assert(std::size(kFrenchLicenceDigits) == 2);

struct ElementPlace {
    const char* name;
    Range range;
};

constexpr ElementPlace kFrenchCardElements[] = {
    {"documentCode", {0, 2}},    {"issuingState", {2, 3}},  {"surname", {5, 25}}, {"administrativeCode", {30, 6}},
    {"documentNumber", {36, 12}}, {"givenNames", {49, 14}}, {"birthDate", {63, 6}}, {"sex", {70, 1}},
};
constexpr ElementPlace kSwissLicenceElements[] = {
    {"documentNumber", {0, 9}}, {"documentCode", {9, 2}}, {"issuingState", {11, 3}}, {"personalNumber", {14, 9}},
    {"version", {23, 3}},       {"birthDate", {28, 6}},   {"names", {39, 30}},
};
constexpr ElementPlace kFrenchLicenceElements[] = {
    {"documentCode", {0, 2}}, {"issuingState", {2, 3}}, {"documentNumber", {5, 9}},
    {"expiryDate", {15, 6}},  {"names", {21, 8}},
};

int32_t zoneLength(NationalZone layout) {
    switch (layout) {
        case NationalZone::FrenchIdentityCard: return kFrenchCardLength;
        case NationalZone::SwissDrivingLicence: return kSwissLicenceLength;
        case NationalZone::FrenchDrivingLicence: return kFrenchLicenceLength;
        case NationalZone::None: break;
    }
    return -1;
}

std::span<const DigitRule> digitRulesOf(NationalZone layout) {
    if (layout == NationalZone::FrenchIdentityCard) return kFrenchCardDigits;
    if (layout == NationalZone::FrenchDrivingLicence) return kFrenchLicenceDigits;
    return {};  // the Swiss licence carries none
}

std::span<const ElementPlace> elementsOf(NationalZone layout) {
    switch (layout) {
        case NationalZone::FrenchIdentityCard: return kFrenchCardElements;
        case NationalZone::SwissDrivingLicence: return kSwissLicenceElements;
        case NationalZone::FrenchDrivingLicence: return kFrenchLicenceElements;
        case NationalZone::None: break;
    }
    return {};
}

bool digitHolds(TextSpan zone, const DigitRule& rule) {
    const TextSpan covered = part(zone, rule.covered);
    const char printed = zone.data[rule.digitAt];
    if (printed == '<') return allChars(covered, [](int c) { return c == '<' ? 1 : 0; }) == 0;
    const int32_t digit = mrzCheckDigit(covered);
    return digit >= 0 && printed == static_cast<char>('0' + digit);
}

// The entry checks every layout shares.
int32_t checkZone(const char* text, int32_t length, const ParsedRecord* record, const ParseClock* clock,
                  int32_t expected) {
    if (text == nullptr || record == nullptr || clock == nullptr || length < 0) return kErrInvalidArgument;
    if (length != expected) return kErrFraming;
    if (allChars(TextSpan{text, length}, isMrzZoneCharacter) != 0) return kErrFraming;
    return kOk;
}

bool startsWith(TextSpan zone, int32_t at, const char* text) {
    const size_t n = std::strlen(text);
    return at >= 0 && at + static_cast<int64_t>(n) <= zone.length && std::memcmp(zone.data + at, text, n) == 0;
}

// Fillers become single blanks.
void storeZoneText(ParsedRecord* record, FieldId id, TextSpan text) {
    setFieldFromSpan(record, id, text, kFiller, " ", ' ');
}

// Letters and fillers, and more than fillers: the field trimmed of its fillers.
bool readableName(TextSpan* field) {
    if (allChars(*field, isMrzCodeCharacter) != 0) return false;
    trimSet(field, kFiller);
    return field->length > 0;
}

// The first given name and the others, which the separator parts.
void storeGivenNames(ParsedRecord* record, TextSpan given, const char* separator) {
    trimSet(&given, kFiller);
    if (given.length == 0) return;
    const int32_t split = spanFind(given, makeSpan(separator));
    if (split < 0) {
        storeZoneText(record, field::firstName, given);
        return;
    }
    TextSpan others{given.data + split, given.length - split};
    trimSet(&others, kFiller);
    storeZoneText(record, field::firstName, TextSpan{given.data, split});
    storeZoneText(record, field::middleName, others);
}

// A name field of primary and given names on either side of "<<". Without "<<", a single
// filler parts them too where the layout writes given names behind the primary one (as
// the ICAO layouts do), and stands within the surname where it writes the surname alone.
bool storeNameField(ParsedRecord* record, TextSpan field, bool givenNamesAfterOneFiller) {
    if (!readableName(&field)) return false;
    int32_t split = spanFind(field, makeSpan("<<"));
    int32_t gap = 2;
    if (split < 0 && givenNamesAfterOneFiller) {
        split = spanFind(field, makeSpan(kFiller));
        gap = 1;
    }
    if (split < 0) {
        storeZoneText(record, field::lastName, field);
        return true;
    }
    TextSpan primary{field.data, split};
    trimSet(&primary, kFiller);
    storeZoneText(record, field::lastName, primary);
    storeGivenNames(record, TextSpan{field.data + split + gap, field.length - split - gap}, kFiller);
    return true;
}

// A code of letters, as the zone gives it up to its first filler.
void storeCountryCode(ParsedRecord* record, TextSpan code) {
    if (allChars(code, isMrzCodeCharacter) != 0) return;
    trimTrailingSet(&code, kFiller);
    if (code.length > 0) setField(record, field::countryCode, code);
}

void storeBirthDate(ParsedRecord* record, TextSpan six, int32_t parseYear) {
    DateValue date{};
    if (readZoneBirthDate(six, parseYear, &date) == kOk) setFieldDate(record, field::birthdateAlt, &date);
}

void storeSex(ParsedRecord* record, char sex) {
    if (sex == 'M') setFieldLiteral(record, field::gender, "M");
    if (sex == 'F') setFieldLiteral(record, field::gender, "F");
}

int32_t twoDigits(const char* text) { return (text[0] - '0') * 10 + (text[1] - '0'); }

// The card gives the year and month of issue only: the first of that month is answered.
// The cards have been issued since 1988, so a year ahead of the parse is of the last century.
void storeIssueMonth(ParsedRecord* record, TextSpan yearAndMonth, int32_t parseYear) {
    if (!digitsAt(yearAndMonth, 0, 4)) return;
    const int32_t month = twoDigits(yearAndMonth.data + 2);
    if (month < 1 || month > 12) return;
    int32_t year = 2000 + twoDigits(yearAndMonth.data);
    if (year > parseYear) year -= 100;
    const DateValue date{year, month, 1, 0, 0, 0};
    setFieldDate(record, field::issueDate, &date);
}

// The licences of this layout have been issued since 2013: the expiry lies in this century.
void storeLicenceExpiry(ParsedRecord* record, TextSpan six) {
    if (!digitsAt(six, 0, 6)) return;
    const DateValue date{2000 + twoDigits(six.data), twoDigits(six.data + 2), twoDigits(six.data + 4), 0, 0, 0};
    setFieldDate(record, field::expirationDate, &date);
}

// A number of letters and digits, trimmed of fillers at both ends; false when it holds
// nothing else or a filler within.
bool storeNumber(ParsedRecord* record, FieldId id, TextSpan number) {
    trimSet(&number, kFiller);
    if (number.length == 0 || allChars(number, isAsciiAlnum) != 0) return false;
    setField(record, id, number);
    return true;
}

}  // namespace

NationalZone nationalZoneOfFormat(uint32_t formatId) {
    if (formatId == kFormatFrenchIdentityCard) return NationalZone::FrenchIdentityCard;
    if (formatId == kFormatSwissDrivingLicence) return NationalZone::SwissDrivingLicence;
    if (formatId == kFormatFrenchDrivingLicence) return NationalZone::FrenchDrivingLicence;
    return NationalZone::None;
}

// The national zones' checks, like the passport's, judge the caller's bytes.
bool mayReadFrenchIdentityCardZone(const TextFacts& f) {
    const ZoneOpening zone = openZone(f);
    return zone.first == 'I' && zone.second == 'D' && zoneMayHaveLength(f, zone, kFrenchCardLength);
}

int32_t parseFrenchIdentityCardZone(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    if (int32_t status = checkZone(text, length, record, clock, kFrenchCardLength)) return status;
    const TextSpan zone{text, length};
    if (!startsWith(zone, 0, "IDFRA")) return kErrFraming;
    storeCountryCode(record, part(zone, kCardState));
    const bool surname = storeNameField(record, part(zone, kCardSurname), false);
    const bool number = storeNumber(record, field::licenseNumber, part(zone, kCardNumber));
    if (!surname && !number) return kErrFraming;
    storeIssueMonth(record, part(zone, kCardIssueMonth), clock->parseYear);
    // The card parts its given names by two fillers; one stands within a compound name.
    TextSpan given = part(zone, kCardGivenNames);
    if (readableName(&given)) storeGivenNames(record, given, "<<");
    storeBirthDate(record, part(zone, kCardBirth), clock->parseYear);
    storeSex(record, text[kCardSex]);
    setFieldLiteral(record, field::documentType, "TD");
    return kOk;
}

bool mayReadSwissDrivingLicenceZone(const TextFacts& f) {
    return zoneMayHaveLength(f, openZone(f), kSwissLicenceLength);
}

int32_t parseSwissDrivingLicenceZone(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    if (int32_t status = checkZone(text, length, record, clock, kSwissLicenceLength)) return status;
    const TextSpan zone{text, length};
    // Its markers at their places on lines of their lengths make the layout; with no check
    // digit to tell a misread field, a field that does not read is left out.
    if (text[9] != 'F' || !startsWith(zone, kSwissState.from, "CHE")) return kErrFraming;
    storeCountryCode(record, part(zone, kSwissState));
    storeNameField(record, part(zone, kSwissNames), true);
    // The licence's number is the holder's personal number and the version of the licence.
    const TextSpan personal = part(zone, kSwissPersonalNumber);
    const TextSpan version = part(zone, kSwissVersion);
    if (digitsAt(personal, 0, personal.length) && digitsAt(version, 0, version.length)) {
        setField(record, field::licenseNumber, TextSpan{personal.data, personal.length + version.length});
    }
    storeNumber(record, field::licenseNumberAlt, part(zone, kSwissCardNumber));
    storeBirthDate(record, part(zone, kSwissBirth), clock->parseYear);
    setFieldLiteral(record, field::documentType, "DL");
    return kOk;
}

bool mayReadFrenchDrivingLicenceZone(const TextFacts& f) {
    const ZoneOpening zone = openZone(f);
    return zone.first == 'D' && isAsciiDigit(static_cast<unsigned char>(zone.second)) &&
           zoneMayHaveLength(f, zone, kFrenchLicenceLength);
}

int32_t parseFrenchDrivingLicenceZone(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    if (int32_t status = checkZone(text, length, record, clock, kFrenchLicenceLength)) return status;
    const TextSpan zone{text, length};
    if (text[0] != 'D' || !isAsciiDigit(static_cast<unsigned char>(text[1])) || !startsWith(zone, 2, "FRA")) {
        return kErrFraming;
    }
    storeCountryCode(record, part(zone, kLicenceState));
    const bool number = storeNumber(record, field::licenseNumber, part(zone, kLicenceNumber));
    const bool surname = storeNameField(record, part(zone, kLicenceSurname), false);
    if (!number && !surname) return kErrFraming;
    storeLicenceExpiry(record, part(zone, kLicenceExpiry));
    setFieldLiteral(record, field::documentType, "DL");
    return kOk;
}

int32_t checkNationalZoneDigits(NationalZone layout, TextSpan zone, NationalZoneCheck* report) {
    NationalZoneCheck result{0, {}, 0};
    if (report != nullptr) *report = result;
    if (zone.data == nullptr || zone.length != zoneLength(layout)) return kErrFraming;
    for (const DigitRule& rule : digitRulesOf(layout)) {
        ++result.checkedDigits;
        if (!digitHolds(zone, rule)) result.failures[result.failureCount++] = rule.field;
    }
    if (report != nullptr) *report = result;
    return result.failureCount == 0 ? 1 : 0;
}

void visitNationalZoneElements(NationalZone layout, TextSpan zone, ElementVisitor visit, void* context) {
    if (visit == nullptr || zone.data == nullptr || zone.length != zoneLength(layout)) return;
    for (const ElementPlace& element : elementsOf(layout)) {
        TextSpan value = part(zone, element.range);
        trimSet(&value, kFiller);
        if (!visit(context, makeSpan(element.name), value)) return;
    }
}

}  // namespace orvane
