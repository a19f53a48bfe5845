#include "documents/zone_ocr.h"

#include <cstring>
#include <iterator>
#include <span>

#include "documents/mrz_check_digits.h"
#include "documents/national_zones.h"
#include "fields/text.h"

namespace orvane {
namespace {

// The fields whose corrections each repair writes.
enum class Part : int32_t {
    DocumentCode,
    IssuingState,
    Names,
    DocumentNumber,
    Nationality,
    BirthDate,
    ExpiryDate,
    OptionalData,
    Composite,
};

enum class Expect : int32_t { Letters, Digits, Either };

struct TypedRun {
    Part part;
    int32_t from;
    int32_t length;
    Expect expect;
};

// A field of letters and digits with a check digit of its own.
struct NumberRule {
    int32_t from;
    int32_t length;
    int32_t digitAt;
};

struct OcrLayout {
    ZoneKind kind;
    std::span<const TypedRun> runs;
    std::span<const NumberRule> numbers;
};

using enum Part;
constexpr Expect L = Expect::Letters;
constexpr Expect D = Expect::Digits;
constexpr Expect E = Expect::Either;

// Each field's check digit is typed with it; the sex and the optional data of the cards,
// which have no digit of their own, are left as they stand.
constexpr TypedRun kPassportRuns[] = {
    {DocumentCode, 0, 2, L},    {IssuingState, 2, 3, L}, {Names, 5, 39, L},      {DocumentNumber, 44, 9, E},
    {DocumentNumber, 53, 1, D}, {Nationality, 54, 3, L}, {BirthDate, 57, 7, D},  {ExpiryDate, 65, 7, D},
    {OptionalData, 72, 14, E},  {OptionalData, 86, 1, D}, {Composite, 87, 1, D},
};
constexpr NumberRule kPassportNumbers[] = {{44, 9, 53}, {72, 14, 86}};
constexpr TypedRun kLongVisaRuns[] = {
    {DocumentCode, 0, 2, L},    {IssuingState, 2, 3, L}, {Names, 5, 39, L},     {DocumentNumber, 44, 9, E},
    {DocumentNumber, 53, 1, D}, {Nationality, 54, 3, L}, {BirthDate, 57, 7, D}, {ExpiryDate, 65, 7, D},
};
constexpr NumberRule kLongVisaNumbers[] = {{44, 9, 53}};
constexpr TypedRun kTd1Runs[] = {
    {DocumentCode, 0, 2, L}, {IssuingState, 2, 3, L}, {DocumentNumber, 5, 9, E}, {DocumentNumber, 14, 1, D},
    {BirthDate, 30, 7, D},   {ExpiryDate, 38, 7, D},  {Nationality, 45, 3, L},   {Composite, 59, 1, D},
    {Names, 60, 30, L},
};
constexpr NumberRule kTd1Numbers[] = {{5, 9, 14}};
constexpr TypedRun kTd2Runs[] = {
    {DocumentCode, 0, 2, L}, {IssuingState, 2, 3, L},    {Names, 5, 31, L},     {DocumentNumber, 36, 9, E},
    {DocumentNumber, 45, 1, D}, {Nationality, 46, 3, L}, {BirthDate, 49, 7, D}, {ExpiryDate, 57, 7, D},
    {Composite, 71, 1, D},
};
constexpr NumberRule kTd2Numbers[] = {{36, 9, 45}};
constexpr std::span<const TypedRun> kShortVisaRuns = std::span<const TypedRun>(kTd2Runs).first(8);
// The card's number: the issue year and month, the office (letters or digits), the serial.
constexpr TypedRun kFrenchCardRuns[] = {
    {DocumentCode, 0, 2, L},    {IssuingState, 2, 3, L},    {Names, 5, 25, L},     {DocumentNumber, 36, 4, D},
    {DocumentNumber, 40, 3, E}, {DocumentNumber, 43, 6, D}, {Names, 49, 14, L},    {BirthDate, 63, 7, D},
    {Composite, 71, 1, D},
};
constexpr NumberRule kFrenchCardNumbers[] = {{36, 12, 48}};
constexpr TypedRun kFrenchLicenceRuns[] = {
    {DocumentCode, 0, 1, L},    {DocumentCode, 1, 1, D}, {IssuingState, 2, 3, L}, {DocumentNumber, 5, 9, E},
    {DocumentNumber, 14, 1, D}, {ExpiryDate, 15, 6, D},  {Names, 21, 8, L},       {Composite, 29, 1, D},
};
constexpr NumberRule kFrenchLicenceNumbers[] = {{0, 14, 14}};  // its digit covers the line before it

constexpr OcrLayout kLayouts[] = {
    {ZoneKind::Passport, kPassportRuns, kPassportNumbers},
    {ZoneKind::VisaLong, kLongVisaRuns, kLongVisaNumbers},
    {ZoneKind::Td1, kTd1Runs, kTd1Numbers},
    {ZoneKind::Td2, kTd2Runs, kTd2Numbers},
    {ZoneKind::VisaShort, kShortVisaRuns, kTd2Numbers},
    {ZoneKind::FrenchIdentityCard, kFrenchCardRuns, kFrenchCardNumbers},
    {ZoneKind::FrenchDrivingLicence, kFrenchLicenceRuns, kFrenchLicenceNumbers},
};

const OcrLayout* ocrLayoutOf(ZoneKind kind) {
    for (const OcrLayout& layout : kLayouts) {
        if (layout.kind == kind) return &layout;
    }
    return nullptr;  // the Swiss licence has no check digit to confirm a correction
}

// The look-alike of a character where letters and digits both stand, or c itself.
char flipped(char c) {
    const char letter = letterLookAlike(c);
    if (letter != c) return letter;
    switch (c) {
        case 'O': return '0';
        case 'I': return '1';
        case 'Z': return '2';
        case 'S': return '5';
        case 'G': return '6';
        case 'B': return '8';
        default: return c;
    }
}

// Brings the character to what the position expects; false when it cannot be that.
bool typeCharacter(char* c, Expect expect) {
    switch (expect) {
        case Expect::Letters:
            *c = letterLookAlike(*c);
            return isAsciiUpper(static_cast<unsigned char>(*c)) || *c == '<';
        case Expect::Digits:
            *c = digitLookAlike(*c);
            return isAsciiDigit(static_cast<unsigned char>(*c)) || *c == '<';
        case Expect::Either:
            return true;
    }
    return false;
}

bool isEither(const OcrLayout& layout, int32_t at) {
    for (const TypedRun& run : layout.runs) {
        if (run.expect == Expect::Either && at >= run.from && at < run.from + run.length) return true;
    }
    return false;
}

constexpr int32_t kMostFlips = 3;
constexpr int32_t kMostFlippable = 16;
constexpr int32_t kLongestNumber = 16;

bool numberHolds(const char* value, const NumberRule& rule, char digit) {
    const int32_t expected = mrzCheckDigit(TextSpan{value, rule.length});
    return expected >= 0 && digit == static_cast<char>('0' + expected);
}

// Corrects a number in place to the one value whose check digit holds with the fewest
// look-alikes flipped (none when it holds as it stands). False when none holds within
// kMostFlips flips, or when two hold with as few: the zone's composite digit weighs the
// number's characters as its own digit does, so it could not tell them apart.
bool correctNumber(char* zone, const OcrLayout& layout, const NumberRule& rule) {
    const char digit = zone[rule.digitAt];
    // A field of fillers, or a card's number that goes on past its nine places: the zone's
    // own check judges it as it stands.
    if (digit == '<') return true;
    int32_t flippable[kMostFlippable];
    int32_t n = 0;
    for (int32_t i = 0; i < rule.length && n < kMostFlippable; ++i) {
        const int32_t at = rule.from + i;
        if (isEither(layout, at) && flipped(zone[at]) != zone[at]) flippable[n++] = i;
    }
    char* number = zone + rule.from;
    for (int32_t flips = 0; flips <= kMostFlips && flips <= n; ++flips) {
        char found[kLongestNumber];
        int32_t holding = 0;
        int32_t pick[kMostFlips] = {};
        for (int32_t k = 0; k < flips; ++k) pick[k] = k;
        while (true) {
            char trial[kLongestNumber];
            std::memcpy(trial, number, static_cast<size_t>(rule.length));
            for (int32_t k = 0; k < flips; ++k) trial[flippable[pick[k]]] = flipped(trial[flippable[pick[k]]]);
            if (numberHolds(trial, rule, digit) && ++holding == 1) std::memcpy(found, trial, static_cast<size_t>(rule.length));
            // The next set of positions, in increasing order.
            int32_t k = flips - 1;
            while (k >= 0 && pick[k] == n - flips + k) --k;
            if (k < 0) break;
            ++pick[k];
            for (int32_t j = k + 1; j < flips; ++j) pick[j] = pick[j - 1] + 1;
        }
        if (holding > 1) return false;
        if (holding == 1) {
            std::memcpy(number, found, static_cast<size_t>(rule.length));
            return true;
        }
    }
    return false;
}

bool everyDigitHolds(const FoundZone& zone) {
    const TextSpan text{zone.text, zone.length};
    switch (zone.kind) {
        case ZoneKind::FrenchIdentityCard:
            return checkNationalZoneDigits(NationalZone::FrenchIdentityCard, text, nullptr) == 1;
        case ZoneKind::FrenchDrivingLicence:
            return checkNationalZoneDigits(NationalZone::FrenchDrivingLicence, text, nullptr) == 1;
        case ZoneKind::SwissDrivingLicence:
        case ZoneKind::None:
            return false;
        default:
            return checkMrzDigits(zone.text, zone.length, nullptr) == 1;
    }
}

// Whether the corrections could change the part: a character its places do not expect, or
// a number whose check digit does not hold as it stands. The correction of a part depends
// on nothing else, so a part without either is left as it is.
bool partMayChange(const FoundZone& zone, const OcrLayout& layout, Part part) {
    for (const TypedRun& run : layout.runs) {
        if (run.part != part) continue;
        for (int32_t at = run.from; at < run.from + run.length; ++at) {
            char c = zone.text[at];
            if (!typeCharacter(&c, run.expect) || c != zone.text[at]) return true;
        }
        if (run.expect != Expect::Either) continue;
        for (const NumberRule& rule : layout.numbers) {
            const char digit = zone.text[rule.digitAt];
            const bool covers = run.from >= rule.from && run.from < rule.from + rule.length;
            if (covers && digit != '<' && !numberHolds(zone.text + rule.from, rule, digit)) return true;
        }
    }
    return false;
}

// The corrections of one field written into the zone as found, then its lines.
int32_t repairPart(TextSpan in, char* out, int32_t room, Part part) {
    FoundZone zone{};
    FoundZone corrected{};
    if (!findZone(in, &zone)) return -1;
    const OcrLayout* layout = ocrLayoutOf(zone.kind);
    if (layout == nullptr || !partMayChange(zone, *layout, part) || !correctZoneLookAlikes(zone, &corrected)) return -1;
    bool changed = false;
    for (const TypedRun& run : layout->runs) {
        if (run.part != part) continue;
        for (int32_t at = run.from; at < run.from + run.length; ++at) {
            changed = changed || zone.text[at] != corrected.text[at];
            zone.text[at] = corrected.text[at];
        }
    }
    return changed ? writeZoneLines(zone, out, room) : -1;
}

}  // namespace

bool correctZoneLookAlikes(const FoundZone& zone, FoundZone* corrected) {
    const OcrLayout* layout = ocrLayoutOf(zone.kind);
    if (layout == nullptr || corrected == nullptr || zoneKindOf(zone.text, zone.length) != zone.kind) return false;
    FoundZone typed = zone;
    for (const TypedRun& run : layout->runs) {
        for (int32_t at = run.from; at < run.from + run.length; ++at) {
            if (!typeCharacter(&typed.text[at], run.expect)) return false;
        }
    }
    for (const NumberRule& rule : layout->numbers) {
        if (!correctNumber(typed.text, *layout, rule)) return false;
    }
    if (!everyDigitHolds(typed)) return false;
    *corrected = typed;
    return true;
}

int32_t repairZoneLines(TextSpan in, char* out, int32_t room) {
    FoundZone zone{};
    FoundZone corrected{};
    if (!findZone(in, &zone) || holdsTheZoneAlone(in, zone)) return -1;
    if (!opensAsWritten(zone) && !correctZoneLookAlikes(zone, &corrected)) return -1;
    return writeZoneLines(zone, out, room);
}

bool zoneMayNeedCorrection(const TextFacts& facts) {
    if (!facts.has('<')) return false;
    FoundZone zone{};
    if (!findZone(TextSpan{facts.text, facts.length}, &zone)) return false;
    const OcrLayout* layout = ocrLayoutOf(zone.kind);
    if (layout == nullptr) return false;
    for (const TypedRun& run : layout->runs) {
        for (int32_t at = run.from; at < run.from + run.length; ++at) {
            char c = zone.text[at];
            if (!typeCharacter(&c, run.expect) || c != zone.text[at]) return true;
        }
    }
    return !everyDigitHolds(zone);
}

int32_t repairZoneDocumentCode(TextSpan in, char* out, int32_t room) { return repairPart(in, out, room, DocumentCode); }
int32_t repairZoneIssuingState(TextSpan in, char* out, int32_t room) { return repairPart(in, out, room, IssuingState); }
int32_t repairZoneNames(TextSpan in, char* out, int32_t room) { return repairPart(in, out, room, Names); }
int32_t repairZoneDocumentNumber(TextSpan in, char* out, int32_t room) {
    return repairPart(in, out, room, DocumentNumber);
}
int32_t repairZoneNationality(TextSpan in, char* out, int32_t room) { return repairPart(in, out, room, Nationality); }
int32_t repairZoneBirthDate(TextSpan in, char* out, int32_t room) { return repairPart(in, out, room, BirthDate); }
int32_t repairZoneExpiryDate(TextSpan in, char* out, int32_t room) { return repairPart(in, out, room, ExpiryDate); }
int32_t repairZoneOptionalData(TextSpan in, char* out, int32_t room) { return repairPart(in, out, room, OptionalData); }
int32_t repairZoneComposite(TextSpan in, char* out, int32_t room) { return repairPart(in, out, room, Composite); }

}  // namespace orvane
