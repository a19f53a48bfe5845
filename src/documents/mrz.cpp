#include "documents/mrz.h"

#include <iterator>
#include <span>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr const char* kFiller = "<";
constexpr const char* kDocumentPassport = "PASSPORT";
constexpr const char* kDocumentTravel = "TD";
constexpr const char* kDocumentLicence = "DL";

// What a step reads; each kind has one reader.
enum class ZoneField {
    IssuingState,
    Name,
    DocumentNumber,
    Nationality,
    BirthDate,
    Sex,
    ExpiryDate,
    OptionalData,
    ResidenceCode,
};

struct ZoneStep {
    ZoneField field;
    int32_t from;
    int32_t length;
};

using enum ZoneField;

// Passports read their fields in this order: a failing reader keeps what came before.
constexpr ZoneStep kTd3Steps[] = {
    {IssuingState, 2, 3}, {Name, 5, 39},        {BirthDate, 57, 6},      {ExpiryDate, 65, 6},
    {Sex, 64, 1},         {Nationality, 54, 3}, {DocumentNumber, 44, 9}, {OptionalData, 72, 14},
};
// The other layouts read theirs in the order of their positions.
constexpr ZoneStep kTd1Steps[] = {
    {IssuingState, 2, 3}, {DocumentNumber, 5, 9}, {BirthDate, 30, 6},     {Sex, 37, 1},
    {ExpiryDate, 38, 6},  {Nationality, 45, 3},   {ResidenceCode, 56, 2}, {Name, 60, 30},
};
constexpr ZoneStep kTd2Steps[] = {
    {IssuingState, 2, 3}, {Name, 5, 31},      {DocumentNumber, 36, 9}, {Nationality, 46, 3},
    {BirthDate, 49, 6},   {Sex, 56, 1},       {ExpiryDate, 57, 6},
};
// Visas: the second line starts at 36 (two lines of 36, the card's own positions) or at
// 44 (two lines of 44).
constexpr std::span<const ZoneStep> kShortVisaSteps = kTd2Steps;
constexpr ZoneStep kLongVisaSteps[] = {
    {IssuingState, 2, 3}, {Name, 5, 39},       {DocumentNumber, 44, 9}, {Nationality, 54, 3},
    {BirthDate, 57, 6},   {Sex, 64, 1},        {ExpiryDate, 65, 6},
};

constexpr int32_t kTd3Length = 88;
constexpr int32_t kTd1Length = 90;
constexpr int32_t kTd2Length = 72;
constexpr int32_t kShortVisaLength = 72;
constexpr int32_t kLongVisaLength = 88;

// The parts of a name field: the primary identifier, all given names, the first of
// them and the ones after it.
struct MrzName {
    TextSpan primary;
    TextSpan givenNames;
    TextSpan firstGiven;
    TextSpan otherGiven;
};

// The three readers answer 0, -21 for a null or too short field, and -20 for a field
// that does not read.

// A three-letter code up to its first "<": "D<<" gives "D".
int32_t readMrzCountryCode(TextSpan field, TextSpan* code) {
    if (field.data == nullptr || field.length < 3 || code == nullptr) return kErrInvalidArgument;
    const TextSpan letters{field.data, 3};
    if (allChars(letters, isMrzCodeCharacter) != 0) return kErrFraming;
    int32_t n = 0;
    while (n < 3 && letters.data[n] != '<') ++n;
    *code = TextSpan{letters.data, n};
    return kOk;
}

// YYMMDD as 19YY, MM, DD; the century is the caller's concern.
int32_t readMrzDate(TextSpan field, DateValue* date) {
    if (field.data == nullptr || field.length != 6 || date == nullptr) return kErrInvalidArgument;
    if (allChars(field, isAsciiDigit) != 0) return kErrFraming;
    const auto pair = [&](int32_t at) { return (field.data[at] - '0') * 10 + (field.data[at + 1] - '0'); };
    *date = DateValue{1900 + pair(0), pair(2), pair(4), 0, 0, 0};
    return kOk;
}

int32_t readMrzName(TextSpan field, MrzName* name) {
    if (field.data == nullptr || field.length < 0 || name == nullptr) return kErrInvalidArgument;
    *name = MrzName{};
    if (allChars(field, isMrzCodeCharacter) != 0) return kErrFraming;
    trimSet(&field, kFiller);
    if (field.length == 0) return kErrFraming;
    TextSpan rest;
    const int32_t split = spanFind(field, makeSpan("<<"));
    if (split >= 0) {
        // Primary and given names stand on either side of the double filler.
        name->primary = TextSpan{field.data, split};
        trimSet(&name->primary, kFiller);
        name->givenNames = TextSpan{field.data + split + 2, field.length - split - 2};
        trimSet(&name->givenNames, kFiller);
    } else {
        // Single fillers only: the first word is the primary identifier.
        nextToken(field, &name->primary, &rest, kFiller, 0);
        name->givenNames = rest;
    }
    nextToken(name->givenNames, &name->firstGiven, &name->otherGiven, kFiller, 0);
    return kOk;
}

// What the readers share while one zone is read.
struct ZoneReader {
    ParsedRecord* record;
    TextSpan zone;
    int32_t parseYear;
    int32_t birthYear;
};

TextSpan part(const ZoneReader& r, const ZoneStep& step) {
    return TextSpan{r.zone.data + step.from, step.length};
}

// Fillers become single spaces.
void storeZoneText(ParsedRecord* record, FieldId id, TextSpan text) {
    setFieldFromSpan(record, id, text, kFiller, " ", ' ');
}

int32_t storeCountryCode(ZoneReader& r, FieldId id, TextSpan field) {
    TextSpan code;
    if (int32_t status = readMrzCountryCode(field, &code)) return status;
    if (code.length > 0) setField(r.record, id, code);
    return kOk;
}

int32_t storeName(ZoneReader& r, TextSpan field) {
    MrzName name;
    if (int32_t status = readMrzName(field, &name)) return status;
    storeZoneText(r.record, field::lastName, name.primary);
    storeZoneText(r.record, field::firstName, name.firstGiven);
    storeZoneText(r.record, field::middleName, name.otherGiven);
    return kOk;
}

// A birth year goes to this century only when the last one would put it more than a
// hundred years back.
int32_t mrzBirthYear(int32_t twoDigitYear, int32_t parseYear) {
    const int32_t lastCentury = 1900 + twoDigitYear;
    return lastCentury + 100 < parseYear ? 2000 + twoDigitYear : lastCentury;
}

// A document does not expire before its holder was born.
int32_t mrzExpiryYear(int32_t twoDigitYear, int32_t birthYear) {
    const int32_t year = 1900 + twoDigitYear;
    return year < birthYear ? year + 100 : year;
}

int32_t storeBirthDate(ZoneReader& r, TextSpan field) {
    DateValue date;
    // Whatever the date reader answers, a bad date refuses the zone as a framing fault.
    if (readMrzDate(field, &date) != kOk) return kErrFraming;
    date.year = mrzBirthYear(date.year - 1900, r.parseYear);
    r.birthYear = date.year;
    setFieldDate(r.record, field::birthdateAlt, &date);
    return kOk;
}

int32_t storeExpiryDate(ZoneReader& r, TextSpan field) {
    DateValue date;
    if (readMrzDate(field, &date) != kOk) return kErrFraming;
    date.year = mrzExpiryYear(date.year - 1900, r.birthYear);
    setFieldDate(r.record, field::expirationDate, &date);
    return kOk;
}

void storeSex(ZoneReader& r, TextSpan field) {
    if (field.data[0] == 'M') setFieldLiteral(r.record, field::gender, "M");
    if (field.data[0] == 'F') setFieldLiteral(r.record, field::gender, "F");
}

void storeTrimmedText(ZoneReader& r, FieldId id, TextSpan field) {
    trimSet(&field, kFiller);
    if (field.length > 0) storeZoneText(r.record, id, field);
}

// Two letters in the card's optional data are taken for a region code.
void storeResidenceCode(ZoneReader& r, TextSpan field) {
    if (allChars(field, isAsciiUpper) != 0) return;
    setField(r.record, field::residenceJurisdictionCode, field);
}

int32_t readZoneStep(ZoneReader& r, const ZoneStep& step) {
    const TextSpan field = part(r, step);
    switch (step.field) {
        case IssuingState:
            return storeCountryCode(r, field::countryCode, field);
        case Nationality:
            return storeCountryCode(r, field::mrzCountryCode, field);
        case Name:
            return storeName(r, field);
        case BirthDate:
            return storeBirthDate(r, field);
        case ExpiryDate:
            return storeExpiryDate(r, field);
        case Sex:
            storeSex(r, field);
            return kOk;
        case DocumentNumber:
            storeTrimmedText(r, field::licenseNumber, field);
            return kOk;
        case OptionalData:
            storeTrimmedText(r, field::licenseNumberAlt, field);
            return kOk;
        case ResidenceCode:
            storeResidenceCode(r, field);
            return kOk;
    }
    return kOk;
}

int32_t readZoneSteps(ZoneReader& r, std::span<const ZoneStep> steps) {
    for (const ZoneStep& step : steps) {
        if (int32_t status = readZoneStep(r, step)) return status;
    }
    return kOk;
}

// The entry checks every layout shares, up to the first character.
int32_t checkZone(const char* text, int32_t length, const ParsedRecord* record,
                  const ParseClock* clock, int32_t expectedLength) {
    if (text == nullptr || record == nullptr || clock == nullptr || length < 0) {
        return kErrInvalidArgument;
    }
    if (length != expectedLength) return kErrFraming;
    if (allChars(TextSpan{text, length}, isMrzZoneCharacter) != 0) return kErrFraming;
    return kOk;
}

int32_t readZone(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock,
                 std::span<const ZoneStep> steps) {
    ZoneReader r{record, TextSpan{text, length}, clock->parseYear, 0};
    return readZoneSteps(r, steps);
}

}  // namespace

int isMrzZoneCharacter(int c) { return isAsciiDigit(c) || isAsciiUpper(c) || c == '<'; }
int isMrzCodeCharacter(int c) { return isAsciiUpper(c) || c == '<'; }
bool isMrzCardType(char first, char second) { return charInSet(first, "ACI") && second != 'V'; }

namespace {

// The bytes the zone framing keeps: letters, digits and "<".
struct ZoneBytes {
    bool kept[256];
};
constexpr ZoneBytes makeZoneBytes() {
    ZoneBytes z{};
    for (int c = 0; c < 256; ++c) z.kept[c] = isAsciiAlnum(c) || c == '<';
    return z;
}
constexpr ZoneBytes kZoneBytes = makeZoneBytes();

}  // namespace

ZoneOpening openZone(const TextFacts& input) {
    ZoneOpening opening{'\0', '\0', 0};
    int32_t i = 0;
    while (i < input.length && !kZoneBytes.kept[static_cast<unsigned char>(input.text[i])]) ++i;
    if (i == input.length) return ZoneOpening{'\0', '\0', i};
    opening.first = toAsciiUpper(input.text[i++]);
    while (i < input.length && !kZoneBytes.kept[static_cast<unsigned char>(input.text[i])]) ++i;
    if (i < input.length) opening.second = toAsciiUpper(input.text[i++]);
    opening.next = i;
    return opening;
}

// The framing leaves the input's last byte out when the input fills the buffers, so one
// more character may be counted here.
bool zoneMayHaveLength(const TextFacts& input, const ZoneOpening& opening, int32_t length) {
    int32_t characters = (opening.first != '\0') + (opening.second != '\0');
    int32_t i = opening.next;
#if defined(__SSE2__)
    // Sixteen bytes at a time: digits, letters of either case (the case bit set, then
    // "a" to "z") and "<". Counting past the limit within a block changes no answer.
    const __m128i caseBit = _mm_set1_epi8(0x20);
    for (; i + 16 <= input.length && characters <= length + 1; i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(input.text + i));
        const __m128i lower = _mm_or_si128(bytes, caseBit);
        const __m128i digit = _mm_and_si128(_mm_cmpgt_epi8(bytes, _mm_set1_epi8('0' - 1)), _mm_cmplt_epi8(bytes, _mm_set1_epi8('9' + 1)));
        const __m128i letter = _mm_and_si128(_mm_cmpgt_epi8(lower, _mm_set1_epi8('a' - 1)), _mm_cmplt_epi8(lower, _mm_set1_epi8('z' + 1)));
        const __m128i filler = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('<'));
        const int kept = _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(digit, letter), filler));
        characters += __builtin_popcount(static_cast<unsigned>(kept));
    }
#endif
    for (; i < input.length && characters <= length + 1; ++i) {
        characters += kZoneBytes.kept[static_cast<unsigned char>(input.text[i])];
    }
    return characters == length || characters == length + 1;
}

// The zone readers' checks judge the caller's bytes, so that inputs of other documents
// never pay for the zone framing.

// Two lines of 44, a passport's "P" first.
bool mayReadMrzFormat64(const TextFacts& f) {
    const ZoneOpening zone = openZone(f);
    return zone.first == 'P' && zoneMayHaveLength(f, zone, kTd3Length);
}

int32_t parseMrzFormat64(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    if (int32_t status = checkZone(text, length, record, clock, kTd3Length)) return status;
    if (text[0] != 'P') return kErrFraming;
    if (int32_t status = readZone(text, length, record, clock, kTd3Steps)) return status;
    setFieldLiteral(record, field::documentType, kDocumentPassport);
    return kOk;
}

// Three lines of 30 of an identity card.
bool mayReadMrzFormat65(const TextFacts& f) {
    const ZoneOpening zone = openZone(f);
    return isMrzCardType(zone.first, zone.second) && zoneMayHaveLength(f, zone, kTd1Length);
}

int32_t parseMrzFormat65(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    if (int32_t status = checkZone(text, length, record, clock, kTd1Length)) return status;
    if (!isMrzCardType(text[0], text[1])) return kErrFraming;
    if (int32_t status = readZone(text, length, record, clock, kTd1Steps)) return status;
    // Deliberately a driving licence when the optional data carries a two-letter code.
    const bool licence = fieldMissing(record, field::residenceJurisdictionCode) == 0;
    setFieldLiteral(record, field::documentType, licence ? kDocumentLicence : kDocumentTravel);
    return kOk;
}

// Two lines of 36 of an identity card.
bool mayReadMrzFormat66(const TextFacts& f) {
    const ZoneOpening zone = openZone(f);
    return isMrzCardType(zone.first, zone.second) && zoneMayHaveLength(f, zone, kTd2Length);
}

int32_t parseMrzFormat66(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    if (int32_t status = checkZone(text, length, record, clock, kTd2Length)) return status;
    if (!isMrzCardType(text[0], text[1])) return kErrFraming;
    if (int32_t status = readZone(text, length, record, clock, kTd2Steps)) return status;
    setFieldLiteral(record, field::documentType, kDocumentTravel);
    return kOk;
}

// A visa of either length.
bool mayReadMrzFormat67(const TextFacts& f) {
    const ZoneOpening zone = openZone(f);
    return zone.first == 'V' && (zoneMayHaveLength(f, zone, kLongVisaLength) || zoneMayHaveLength(f, zone, kShortVisaLength));
}

int32_t parseMrzFormat67(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    const bool longVisa = length == kLongVisaLength;
    const int32_t expected = longVisa ? kLongVisaLength : kShortVisaLength;
    if (int32_t status = checkZone(text, length, record, clock, expected)) return status;
    if (text[0] != 'V') return kErrFraming;
    const std::span<const ZoneStep> steps = longVisa ? kLongVisaSteps : kShortVisaSteps;
    if (int32_t status = readZone(text, length, record, clock, steps)) return status;
    setFieldLiteral(record, field::documentType, kDocumentTravel);
    return kOk;
}

}  // namespace orvane
