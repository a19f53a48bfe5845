// Three plausibility checks of a parsed North-American licence: the shape of its
// document number, the size of the PDF417 symbol that carried it, and whether the
// jurisdiction agrees with the issuer number. Each answers 1 (not checkable), 2 (valid)
// or 3 (invalid), or -21 for bad arguments.
#pragma once

#include <cstdint>
#include <span>

#include "engine/pattern_notation.h"
#include "engine/record.h"

namespace orvane {

// Documents a rule applies to.
inline constexpr uint16_t kIdCard = 1;
inline constexpr uint16_t kLicence = 2;
inline constexpr uint16_t kBoth = 3;

// A check that derives the expected number from other fields of the record.
using DedicatedCheck = bool (*)(const ParsedRecord* record, TextSpan number);

struct DocumentIdRule {
    char jurisdiction[3];
    uint16_t documents;
    DedicatedCheck check;   // or null, with a pattern
    NumberPattern pattern;  // byte-coded (see matchPattern); empty with a check
    const char* example;    // a number the rule accepts
    const char* nearMiss;   // one edit away from the example, refused by the rule
};

struct BarcodeSize {
    char jurisdiction[3];
    uint8_t columns;
    uint8_t rows;
    uint8_t errorCorrectionLevel;
};

// The rules of one jurisdiction, in order; known is false when it has no row.
struct DocumentIdRuleSet {
    std::span<const DocumentIdRule> rules;
    bool known;
};
struct BarcodeSizeSet {
    std::span<const BarcodeSize> sizes;
    bool known;
};
DocumentIdRuleSet documentIdRulesFor(TextSpan jurisdiction);
BarcodeSizeSet barcodeSizesFor(TextSpan jurisdiction);
// The whole tables, for integrity tests.
std::span<const DocumentIdRule> documentIdRules();
std::span<const BarcodeSize> barcodeSizes();

// Matches text against a byte-coded pattern: a byte below 0x80 is a literal; 0x8n is
// exactly n digits, 0x9n n letters, 0xBn n letters or digits; 0xA1 an optional
// hyphen, 0xA2 an optional asterisk, 0xA3 an optional letter, 0xA4 an optional digit.
bool matchPattern(TextSpan text, const char* pattern);

// Four-character phonetic code of a name (a letter and three digits); false when the
// name holds anything but letters A-Z.
bool phoneticCode(TextSpan name, char code[4]);

// The dedicated number checks of Connecticut, Florida and Wisconsin.
bool checkConnecticut(const ParsedRecord* record, TextSpan number);
bool checkFlorida(const ParsedRecord* record, TextSpan number);
bool checkWisconsin(const ParsedRecord* record, TextSpan number);

int32_t validateDocumentId(const ParsedRecord* record, char* scratch, int32_t scratchCapacity);
int32_t validateBarcode(const ParsedRecord* record, int32_t columns, int32_t rows, int32_t errorCorrectionLevel);
int32_t validateJurisdictionCode(const ParsedRecord* record);

}  // namespace orvane
