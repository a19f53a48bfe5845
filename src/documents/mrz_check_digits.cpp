#include "documents/mrz_check_digits.h"

#include <iterator>
#include <span>

#include "documents/mrz.h"
#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr int32_t kLongestZone = 90;
constexpr int32_t kWeights[] = {7, 3, 1};

struct Range {
    int32_t from;
    int32_t length;
};

// One check digit: the ranges it covers, in order, and where it stands.
struct CheckDigitRule {
    const char* field;
    Range ranges[4];
    int32_t rangeCount;
    int32_t digitAt;
};

constexpr CheckDigitRule kTd3Rules[] = {
    {"documentNumber", {{44, 9}}, 1, 53},
    {"birthDate", {{57, 6}}, 1, 63},
    {"expiryDate", {{65, 6}}, 1, 71},
    {"optionalData", {{72, 14}}, 1, 86},
    {"composite", {{44, 10}, {57, 7}, {65, 22}}, 3, 87},
};
static_assert(std::size(kTd3Rules) == 5);
// The card's optional data has no digit of its own; the composite covers it.
constexpr CheckDigitRule kTd1Rules[] = {
    {"documentNumber", {{5, 9}}, 1, 14},
    {"birthDate", {{30, 6}}, 1, 36},
    {"expiryDate", {{38, 6}}, 1, 44},
    {"composite", {{5, 25}, {30, 7}, {38, 7}, {48, 11}}, 4, 59},
};
static_assert(std::size(kTd1Rules) == 4);
constexpr CheckDigitRule kTd2Rules[] = {
    {"documentNumber", {{36, 9}}, 1, 45},
    {"birthDate", {{49, 6}}, 1, 55},
    {"expiryDate", {{57, 6}}, 1, 63},
    {"composite", {{36, 10}, {49, 7}, {57, 14}}, 3, 71},
};
static_assert(std::size(kTd2Rules) == 4);
// Visas carry no composite digit.
constexpr CheckDigitRule kVisaLongRules[] = {
    {"documentNumber", {{44, 9}}, 1, 53},
    {"birthDate", {{57, 6}}, 1, 63},
    {"expiryDate", {{65, 6}}, 1, 71},
};
static_assert(std::size(kVisaLongRules) == 3);
constexpr CheckDigitRule kVisaShortRules[] = {
    {"documentNumber", {{36, 9}}, 1, 45},
    {"birthDate", {{49, 6}}, 1, 55},
    {"expiryDate", {{57, 6}}, 1, 63},
};
static_assert(std::size(kVisaShortRules) == 3);

// A zone character's value: digits their own, letters 10 to 35, the filler 0; -1 for
// any other byte. One table, as every check digit reads each of its characters.
struct CharacterValues {
    int8_t of[256];
};

constexpr CharacterValues makeCharacterValues() {
    CharacterValues v{};
    for (int32_t c = 0; c < 256; ++c) v.of[c] = -1;
    for (int32_t c = '0'; c <= '9'; ++c) v.of[c] = static_cast<int8_t>(c - '0');
    for (int32_t c = 'A'; c <= 'Z'; ++c) v.of[c] = static_cast<int8_t>(c - 'A' + 10);
    v.of[static_cast<unsigned char>('<')] = 0;
    return v;
}

constexpr CharacterValues kCharacterValues = makeCharacterValues();

int32_t characterValue(char c) { return kCharacterValues.of[static_cast<unsigned char>(c)]; }

// The weighted sum of the ranges, the weights running on across them; -1 for a
// character outside the zone.
int32_t weightedSum(const char* zone, const Range* ranges, int32_t count) {
    int32_t sum = 0;
    int32_t weight = 0;  // index into kWeights, cycling
    for (int32_t r = 0; r < count; ++r) {
        for (int32_t i = 0; i < ranges[r].length; ++i) {
            const int32_t value = characterValue(zone[ranges[r].from + i]);
            if (value < 0) return -1;
            sum += value * kWeights[weight];
            weight = weight == 2 ? 0 : weight + 1;
        }
    }
    return sum;
}

bool onlyFillers(const char* zone, const CheckDigitRule& rule) {
    for (int32_t r = 0; r < rule.rangeCount; ++r) {
        for (int32_t i = 0; i < rule.ranges[r].length; ++i) {
            if (zone[rule.ranges[r].from + i] != '<') return false;
        }
    }
    return true;
}

bool ruleHolds(const char* zone, const CheckDigitRule& rule) {
    const char printed = zone[rule.digitAt];
    // Issuers print a filler where the digit of a field of fillers would stand.
    if (printed == '<') return onlyFillers(zone, rule);
    const int32_t sum = weightedSum(zone, rule.ranges, rule.rangeCount);
    return sum >= 0 && isAsciiDigit(static_cast<unsigned char>(printed)) && sum % 10 == printed - '0';
}

// A three-line card's number that goes on after the "<" at its digit's place: its
// second part and its own check digit, which ends that part.
CheckDigitRule longCardNumberRule(const char* zone) {
    int32_t end = 15;
    while (end < 30 && zone[end] != '<') ++end;
    return CheckDigitRule{"documentNumber", {{5, 9}, {15, end - 1 - 15}}, 2, end - 1};
}

bool hasLongCardNumber(const char* zone) { return zone[14] == '<' && zone[15] != '<'; }

// Keeps the zone characters, capitalised; false when more than a zone's worth remain.
bool collectZone(const char* text, int32_t length, char* zone, int32_t* zoneLength) {
    int32_t n = 0;
    for (int32_t i = 0; i < length; ++i) {
        const char c = toAsciiUpper(text[i]);
        if (characterValue(c) < 0) continue;  // exactly the bytes isMrzZoneCharacter keeps
        if (n == kLongestZone) return false;
        zone[n++] = c;
    }
    *zoneLength = n;
    return true;
}

}  // namespace

MrzLayout zoneLayoutOf(const char* zone, int32_t length) {
    if (length == 88 && zone[0] == 'P') return MrzLayout::Td3;
    if (length == 88 && zone[0] == 'V') return MrzLayout::VisaLong;
    if (length == 72 && zone[0] == 'V') return MrzLayout::VisaShort;
    if (length == 90 && isMrzCardType(zone[0], zone[1])) return MrzLayout::Td1;
    if (length == 72 && isMrzCardType(zone[0], zone[1])) return MrzLayout::Td2;
    return MrzLayout::None;
}

namespace {

std::span<const CheckDigitRule> rulesOf(MrzLayout layout) {
    switch (layout) {
        case MrzLayout::Td1: return kTd1Rules;
        case MrzLayout::Td2: return kTd2Rules;
        case MrzLayout::Td3: return kTd3Rules;
        case MrzLayout::VisaLong: return kVisaLongRules;
        case MrzLayout::VisaShort: return kVisaShortRules;
        case MrzLayout::None: break;
    }
    return {};
}

}  // namespace

int32_t mrzCheckDigit(TextSpan characters) {
    if (characters.data == nullptr || characters.length < 0) return kErrFraming;
    const Range whole{0, characters.length};
    const int32_t sum = weightedSum(characters.data, &whole, 1);
    return sum < 0 ? kErrFraming : sum % 10;
}

int32_t checkMrzDigits(const char* zoneText, int32_t length, MrzCheckReport* report) {
    MrzCheckReport result{MrzLayout::None, 0, nullptr, {}, 0};
    if (report != nullptr) *report = result;
    if (zoneText == nullptr || length < 0) return kErrInvalidArgument;
    char zone[kLongestZone];
    int32_t zoneLength = 0;
    if (!collectZone(zoneText, length, zone, &zoneLength) || zoneLength < 2) return kErrFraming;
    result.layout = zoneLayoutOf(zone, zoneLength);
    if (result.layout == MrzLayout::None) return kErrFraming;
    for (CheckDigitRule rule : rulesOf(result.layout)) {
        if (result.layout == MrzLayout::Td1 && rule.digitAt == 14 && hasLongCardNumber(zone)) rule = longCardNumberRule(zone);
        ++result.checkedDigits;
        if (ruleHolds(zone, rule)) continue;
        if (result.firstFailure == nullptr) result.firstFailure = rule.field;
        result.failures[result.failureCount++] = rule.field;
    }
    if (report != nullptr) *report = result;
    return result.firstFailure == nullptr ? 1 : 0;
}

}  // namespace orvane
