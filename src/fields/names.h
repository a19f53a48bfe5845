// Names: the workers that answer first, middle and last name, suffix, prefix and full
// name from the record, and the per-jurisdiction rules that may override them.
#pragma once

#include <cstdint>
#include <span>

#include "engine/record.h"

namespace orvane {

// A name hook writes one name part and returns 0, or returns non-zero to let the
// generic steps go on.
using NameHook = int32_t (*)(const ParsedRecord* record, char* buffer, int32_t capacity);
// Writes at most room characters and returns how many; below 1 means no answer.
using LicenseNumberHook = int32_t (*)(const ParsedRecord* record, char* buffer, int32_t room);
// Answers an address line from the listed slots; 0 when it answered.
using AddressHook = int32_t (*)(const ParsedRecord* record, const FieldId* ids, int32_t count,
                                char* buffer, int32_t capacity);
// Formats the postal text; its status is the postal code worker's.
using PostalCodeHook = int32_t (*)(TextSpan postal, char* buffer, int32_t capacity);
// Cuts one name part out of a whole name; 0, or non-zero when there is none.
using WholeNameSplitter = int32_t (*)(const ParsedRecord* record, TextSpan wholeName,
                                      char* buffer, int32_t capacity);

// One jurisdiction's overrides. Hooks left out stay null and are skipped.
struct NameRule {
    const char* jurisdictionCode;
    LicenseNumberHook licenseNumberHook = nullptr;
    NameHook firstNameHook = nullptr;
    NameHook lastNameHook = nullptr;
    NameHook middleNameHook = nullptr;
    AddressHook addressHook = nullptr;
    NameHook suffixHook = nullptr;
    NameHook prefixHook = nullptr;
    PostalCodeHook postalCodeHook = nullptr;
    int32_t useGenericSplitter;  // 0: whole names go through the GenericSplitter
};

// The whole-name splitters of the rows that ask for them.
struct GenericSplitter {
    WholeNameSplitter first;
    WholeNameSplitter last;
    WholeNameSplitter middle;
};

// The rule table as it stands, for integrity tests; row 0 is the fallback.
std::span<const NameRule> nameRuleTable();
// The row whose code equals the key exactly, else row 0.
const NameRule* nameRuleForCode(TextSpan code);
// The row of the record's jurisdiction, by IIN first, then by jurisdiction code; never null.
const NameRule* deriveNameRule(const ParsedRecord* record);
// The same, from the rule the record keeps while the slots it came from stand; inline,
// as every name, address and postal answer asks.
inline const NameRule* nameRuleFor(const ParsedRecord* record) {
    if (record == nullptr) return deriveNameRule(record);
    const NameRuleMemo& kept = record->nameRule;
    const FieldSlot& iin = record->fields[field::iin];
    const FieldSlot& code = record->fields[field::jurisdictionCode];
    const FieldSlot& residence = record->fields[field::residenceJurisdictionCode];
    const bool holds = kept.rule != nullptr && kept.iin.data == iin.data && kept.iin.length == iin.length &&
                       kept.jurisdictionCode.data == code.data && kept.jurisdictionCode.length == code.length &&
                       kept.residenceJurisdictionCode.data == residence.data &&
                       kept.residenceJurisdictionCode.length == residence.length;
    return holds ? kept.rule : deriveNameRule(record);
}
// Keeps the record's rule in it, for a record that no reader will change any more.
void rememberNameRule(ParsedRecord* record);

// Whether a word is one of the generational suffixes (or MD, PHD), exactly.
bool isNameSuffix(TextSpan word);
// Drops, in place and in order, every suffix word; returns the new count.
int32_t removeNameSuffixes(TextSpan* words, int32_t count);

// Rewrites a produced name in place: suffix words after the first and placeholders are
// dropped, word edges trimmed, words joined by single blanks. 0, or -26 when nothing is
// left (the buffer is then empty).
int32_t cleanName(char* buffer, int32_t capacity);

// The generic cuts of a whole name, shared by the workers and the splitters. The first
// name is written raw (its worker cleans it); the middle and last names are final.
// Each returns 0, or -26 when the whole name has no such part.
int32_t firstNameOfWholeName(TextSpan wholeName, char* buffer, int32_t capacity);
int32_t middleNameOfWholeName(TextSpan wholeName, char* buffer, int32_t capacity);
int32_t lastNameOfWholeName(TextSpan wholeName, char* buffer, int32_t capacity);

// Workers: 0 with the answer in buffer, -21 for bad arguments, -26 for no answer.
int32_t getFirstName(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getMiddleName(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getLastName(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getNameSuffix(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getNamePrefix(const ParsedRecord* record, char* buffer, int32_t capacity);
// The whole name as read, else the parts joined by blanks.
int32_t getFullName(const ParsedRecord* record, char* buffer, int32_t capacity);

}  // namespace orvane
