// Each reader: record what the card is, configure the engine for its layout, run, then
// apply the check that tells it from its neighbours.
#include "documents/cac.h"

#include <cstring>

#include "documents/cac_layouts.h"
#include "documents/fixed_field_engine.h"
#include "engine/status.h"
#include "fields/dates.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr const char* kCommonAccessCard1 = "Common Access Card 1";
constexpr const char* kCommonAccessCardN = "Common Access Card N";
constexpr const char* kCommonAccessCardV3 = "Common Access Card v3";
constexpr const char* kCivilianCardPrefix = "DoD/Uniformed Services Civilian ID Card v";
constexpr const char* kCountryUsa = "USA";
constexpr const char* kDocumentCac = "CAC";
constexpr const char* kIdcv = "IDCV";

// The FieldId that tells format 53 ("0") from format 54 ("1").
constexpr FieldId kVariantMarker = 99;
// Layout A fields that hold base-32 identifiers.
constexpr FieldId kBase32Identifiers[] = {field::licenseNumberAlt3, 91};
// Layout A fields that hold base-32 day numbers.
constexpr FieldId kDayNumberDates[] = {field::birthdateAlt, field::issueDate, field::expirationDate};
// Dates written as four-digit year, month abbreviation and two-digit day.
constexpr FieldId kDatedFields[] = {109, 110, field::birthdateAlt, field::issueDate,
                                    field::expirationDate};
// Format 55 has two more of them.
constexpr FieldId kCivilianDatedFields[] = {134, 136};

constexpr int32_t kDatedLength = 9;
constexpr int32_t kLongestHeight = 12;

bool isOneOf(FieldId id, std::span<const FieldId> ids) {
    for (FieldId candidate : ids) {
        if (candidate == id) return true;
    }
    return false;
}

void storeCardIdentity(ParsedRecord* record, const char* standardName) {
    setFieldLiteral(record, field::standardName, standardName);
    setFieldLiteral(record, field::countryCode, kCountryUsa);
    setFieldLiteral(record, field::documentType, kDocumentCac);
}

// Formats 51 and 52 carry no literal head: the version is the first character and
// also the first field.
int32_t checkLeadingVersion(FixedFieldEngine& e, TextSpan input) {
    if (input.data == nullptr || input.length == 0) return kErrInvalidArgument;
    if (input.length < 1) return kErrEmptyInput;
    return checkVersionAt(e, input, 0);
}

int32_t checkIdcvHeader(FixedFieldEngine&, TextSpan input) {
    if (input.data == nullptr || input.length == 0) return kErrInvalidArgument;
    if (input.length < 5 || std::memcmp(input.data, kIdcv, 4) != 0) return kErrFraming;
    // The version character is deliberately not compared for this card.
    return kOk;
}

int32_t enterWholeInput(FixedFieldEngine& e, TextSpan input) {
    if (input.data == nullptr || input.length <= 0) return kErrFraming;
    if (e.splitFields == nullptr) return kOk;
    return e.splitFields(e, input);
}

void storeBase32Identifier(FixedFieldEngine& e, FieldId id, TextSpan value) {
    uint64_t number = 0;
    if (decodeBase32Hex(value, &number) != kOk) return;
    char text[33] = {};
    formatInt(static_cast<int64_t>(number), text, 32, 0);
    setFieldLiteral(e.record, id, text);
}

void storeDayNumberDate(FixedFieldEngine& e, FieldId id, TextSpan value) {
    uint64_t elapsed = 0;
    if (decodeBase32Hex(value, &elapsed) != kOk) return;
    DateValue date{};
    // The number counts the days elapsed since 1 January 1000, which is day 1.
    if (dateFromDayNumber(static_cast<int64_t>(elapsed) + 1, &date) != kOk) return;
    setFieldDate(e.record, id, &date);
}

void storeNumericField(FixedFieldEngine& e, FieldId id, TextSpan value) {
    if (isOneOf(id, kBase32Identifiers)) {
        storeBase32Identifier(e, id, value);
    } else if (isOneOf(id, kDayNumberDates)) {
        storeDayNumberDate(e, id, value);
    } else {
        storeTrimmedField(e, id, value);
    }
}

// How the dated layouts differ from one another.
struct DatedStoreRule {
    bool nameWithCommas;   // full name through the comma producer
    bool heightUntrimmed;  // height stored as built, blanks and all
    bool civilianDates;    // FieldIds 134 and 136 are dates too
};
constexpr DatedStoreRule kLayoutBRule{true, true, false};
constexpr DatedStoreRule kLayoutCRule{false, false, false};
constexpr DatedStoreRule kLayoutDRule{false, false, true};

bool isDatedField(FieldId id, const DatedStoreRule& rule) {
    return isOneOf(id, kDatedFields) || (rule.civilianDates && isOneOf(id, kCivilianDatedFields));
}

// Year, month abbreviation and day become YYYYMMDD; the digits are deliberately not
// checked. Anything else is stored as text.
void storeDatedText(FixedFieldEngine& e, FieldId id, TextSpan value) {
    const char* month = nullptr;
    if (value.length == kDatedLength) month = monthNumberOfAbbreviation(TextSpan{value.data + 4, 3});
    if (month == nullptr) {
        storeTrimmedField(e, id, value);
        return;
    }
    char date[9] = {};
    std::memcpy(date, value.data, 4);
    std::memcpy(date + 4, month, 2);
    std::memcpy(date + 6, value.data + 7, 2);
    setFieldLiteral(e.record, id, date);
}

// Feet, an apostrophe, inches and a double quote: "60" becomes 6'0".
void storeHeight(FixedFieldEngine& e, FieldId id, TextSpan value, bool untrimmed) {
    if (value.data == nullptr || value.length < 1 || value.length > kLongestHeight) return;
    char height[kLongestHeight + 3] = {};
    int32_t n = 0;
    height[n++] = value.data[0];
    height[n++] = '\'';
    for (int32_t i = 1; i < value.length; ++i) height[n++] = value.data[i];
    height[n++] = '"';
    if (untrimmed) {
        setFieldLiteral(e.record, id, height);
        return;
    }
    TextSpan text{height, n};
    trimIf(&text, isBlankOrNul);
    setFieldMapped(e.record, id, text, nullptr, nullptr, '\0');
}

// Every space becomes comma and space; repeated spaces are deliberately not merged.
int32_t produceCommaName(const void* context, char* dst, int32_t room) {
    const TextSpan& name = *static_cast<const TextSpan*>(context);
    int32_t written = 0;
    for (int32_t i = 0; i < name.length && written < room; ++i) {
        if (name.data[i] != ' ') {
            dst[written++] = name.data[i];
            continue;
        }
        if (room - written < 2) break;
        dst[written++] = ',';
        dst[written++] = ' ';
    }
    while (written > 0 && isBlankOrNul(static_cast<unsigned char>(dst[written - 1]))) --written;
    return written;
}

void storeDatedField(FixedFieldEngine& e, FieldId id, TextSpan value, const DatedStoreRule& rule) {
    if (isDatedField(id, rule)) {
        storeDatedText(e, id, value);
    } else if (id == field::heightAlt) {
        storeHeight(e, id, value, rule.heightUntrimmed);
    } else if (id == field::fullName && rule.nameWithCommas) {
        setFieldProduced(e.record, id, &value, produceCommaName);
    } else {
        storeTrimmedField(e, id, value);
    }
}

template <const DatedStoreRule& Rule>
void datedStoreFor(FixedFieldEngine& e, FieldId id, TextSpan value) {
    storeDatedField(e, id, value, Rule);
}

int32_t parseLayoutA(const char* text, int32_t length, ParsedRecord* record,
                     const ParseClock* clock, const char* version, const char* standardName) {
    storeCardIdentity(record, standardName);
    FixedFieldEngine e;
    initFixedFieldEngine(e, record, clock, version, cacLayoutA());
    e.checkHeader = checkLeadingVersion;
    e.enterBody = enterWholeInput;
    e.storeField = storeNumericField;
    return runFixedFieldEngine(e, text, length);
}

// The "IDUS" cards share their head and version; the first body field names the layout.
int32_t requireVariantMarker(const ParsedRecord* record, const char* marker) {
    TextSpan stored;
    if (readField(record, kVariantMarker, &stored) != kOk) return kErrCacVariant;
    return spanEquals(stored, marker) == 0 ? kOk : kErrCacVariant;
}

// Writes the civilian card's edition from the fifth input character.
void storeCivilianStandardName(ParsedRecord* record, char version) {
    char name[64] = {};
    const size_t prefix = std::strlen(kCivilianCardPrefix);
    std::memcpy(name, kCivilianCardPrefix, prefix);
    name[prefix] = version;
    setFieldLiteral(record, field::standardName, name);
}

}  // namespace

// The layout opens with its version, "1".
bool mayReadCacFormat51(const TextFacts& f) { return f.at(0) == '1'; }

int32_t parseCacFormat51(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return parseLayoutA(text, length, record, clock, "1", kCommonAccessCard1);
}

// The layout opens with its version, "N".
bool mayReadCacFormat52(const TextFacts& f) { return f.at(0) == 'N'; }

int32_t parseCacFormat52(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    return parseLayoutA(text, length, record, clock, "N", kCommonAccessCardN);
}

// "IDUS" and the version "3".
bool mayReadCacFormat53(const TextFacts& f) { return f.startsWith("IDUS3"); }

int32_t parseCacFormat53(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    storeCardIdentity(record, kCommonAccessCardV3);
    FixedFieldEngine e;
    initFixedFieldEngine(e, record, clock, "3", cacLayoutB());
    e.storeField = datedStoreFor<kLayoutBRule>;
    if (int32_t status = runFixedFieldEngine(e, text, length)) return status;
    return requireVariantMarker(record, "0");
}

bool mayReadCacFormat54(const TextFacts& f) { return f.startsWith("IDUS3"); }

int32_t parseCacFormat54(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    storeCardIdentity(record, kCommonAccessCardV3);
    FixedFieldEngine e;
    initFixedFieldEngine(e, record, clock, "3", cacLayoutC());
    e.storeField = datedStoreFor<kLayoutCRule>;
    if (int32_t status = runFixedFieldEngine(e, text, length)) return status;
    return requireVariantMarker(record, "1");
}

// "IDCV" and its version character.
bool mayReadCacFormat55(const TextFacts& f) { return f.length >= 5 && f.startsWith("IDCV"); }

int32_t parseCacFormat55(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    FixedFieldEngine e;
    initFixedFieldEngine(e, record, clock, "3", cacLayoutD());
    e.checkHeader = checkIdcvHeader;
    e.storeField = datedStoreFor<kLayoutDRule>;
    if (int32_t status = runFixedFieldEngine(e, text, length)) return status;
    // Only a card that was read gets its identity, unlike the other four.
    if (length > 4) {
        storeCivilianStandardName(record, text[4]);
        setFieldLiteral(record, field::countryCode, kCountryUsa);
        setFieldLiteral(record, field::documentType, kDocumentCac);
    }
    return kOk;
}

}  // namespace orvane
