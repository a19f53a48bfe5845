// Pieces shared by the national document readers: slashed dates, Latin-1 folding in
// place, and the walk over AAMVA-like element lines that the Guatemalan, Mexican and
// Puerto Rican layouts carry.
#pragma once

#include <cstdint>
#include <span>

#include "engine/format.h"
#include "engine/record.h"

namespace orvane {

// Day "/" month "/" year: one or two digits of day and of month, exactly four of year,
// nothing after. True with the numbers as read; no range test.
bool readSlashedDate(TextSpan text, DateValue* out);

// Stores the eight characters YYYYMMDD as literal text; components wider than their
// place store nothing.
FieldSlot* setFieldDateText(ParsedRecord* record, FieldId id, const DateValue& date);

// Replaces every Latin-1 letter or sign of text by its ASCII stand-in.
void foldLatin1InPlace(char* text, int32_t length);

// An element line: a three-letter identifier and its value up to the end of the line.
// Each rule names the slot and how the value is stored there.
using ElementStore = void (*)(ParsedRecord* record, FieldId id, TextSpan value);
struct ElementRule {
    char id[4];
    FieldId field;
    ElementStore store;
};

// Recognised and left out: the layout stores what the element stands for itself.
void ignoreElement(ParsedRecord* record, FieldId id, TextSpan value);
// The value trimmed of white space, as it stands.
void storeElementText(ParsedRecord* record, FieldId id, TextSpan value);
// Eight digits day, month, year (DDMMYYYY) stored as YYYYMMDD; anything else, or an
// impossible date, stores nothing.
void storeDayFirstDate(ParsedRecord* record, FieldId id, TextSpan value);
// The same for month, day, year (MMDDYYYY).
void storeMonthFirstDate(ParsedRecord* record, FieldId id, TextSpan value);

// The value of the first line holding the element id, trimmed. False when no line
// holds it.
bool findElementValue(TextSpan text, std::span<const ElementRule> rules, const char* id,
                      TextSpan* value);
// Stores every element line of the rules, in text order, and documentType from the
// subfile designator ("DL" or "ID") in front of the first element when there is one.
// Returns the number of elements stored.
int32_t readElementLines(TextSpan text, std::span<const ElementRule> rules, ParsedRecord* record);

// A national layout of element lines: its rules, the test that recognises it, the
// marker that test looks for, and the country every record of it belongs to.
struct ElementLayout {
    std::span<const ElementRule> rules;
    const char* marker;
    bool (*recognises)(TextSpan text, const ElementLayout& layout);
    const char* country;
    const char* countryCode;
};

// Recognisers: the country's name as the value of "DCG", whatever its case, in text
// that does not open like an AAMVA barcode (such text belongs to the AAMVA readers,
// whatever its country); the issuer number right after "ANSI " in the header.
bool countryNameInHeaderlessText(TextSpan text, const ElementLayout& layout);
bool issuerInHeader(TextSpan text, const ElementLayout& layout);

// Folds the Latin-1 letters, refuses text the layout does not recognise (-25), stores
// the elements, then the country, country code and (unless the designator gave one)
// documentType "DL".
int32_t readElementLayout(char* text, int32_t length, ParsedRecord* record, const ElementLayout& layout);

// Necessary for a country-named element layout: somewhere a "DCG" whose value is the
// country's name, judged on the caller's bytes as the reader's Latin-1 fold will leave them.
bool mayReadCountryElements(const TextFacts& facts, const char* countryName);

// Whether the span, trimmed, equals the upper-case word whatever the case of its letters.
bool equalsWordIgnoringCase(TextSpan span, const char* word);

}  // namespace orvane
