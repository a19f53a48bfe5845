// Countries, jurisdictions and issuer identification numbers (IINs): the lookups over
// the three reference tables and the workers that answer the getters from them.
#pragma once

#include <cstdint>
#include <span>

#include "engine/record.h"

namespace orvane {

struct CountryRow {
    const char* name;    // upper case
    const char* alpha3;  // three upper-case letters
};

struct IinRow {
    uint64_t number;
    char code[3];  // jurisdiction code
    char text[7];  // decimal text of number
};

struct JurisdictionRow {
    const char* countryName;
    char code[3];
    const char* jurisdictionName;
};

// The tables as they stand, for integrity tests. The country rows end before the
// terminator row.
std::span<const CountryRow> countryRows();
std::span<const IinRow> iinRows();
std::span<const JurisdictionRow> jurisdictionRows();

// Lookups: null (or 0) when nothing matched.

// Name of the first row with that alpha-3; the input may be in any case.
const char* countryNameForAlpha3(TextSpan code);
// Alpha-3 of the first row with that name; the input may be in any case.
const char* alpha3ForCountryName(const char* name);
// 1 when the text is an alpha-3 of the table as it stands (case matters), else 0.
int32_t isCountryAlpha3(const char* text);
// Jurisdiction code of the IIN read from the first six characters.
const char* jurisdictionCodeForIin(TextSpan iin);
// 1 when the first six characters read as an IIN of the table, else 0.
int32_t isKnownIin(TextSpan iin);
// Six-digit IIN of a two-letter jurisdiction code (case matters).
const char* iinForJurisdictionCode(TextSpan code);
// Country of a two-letter jurisdiction code (case matters): "United States", "Canada", ...
const char* countryForJurisdictionCode(TextSpan code);
// Alpha-3 of that country, as the country code worker derives it from the country's
// name: what alpha3ForCountryName gives, or the name when it is itself a code.
const char* countryCodeOfJurisdiction(TextSpan code);

// Workers: 0 with the answer in buffer, -21 for bad arguments, -26 for no answer.

// The jurisdiction code as read, else the one of the IIN.
int32_t getJurisdictionCode(const ParsedRecord* record, char* buffer, int32_t capacity);
// The country name as read, else from the alpha-3 code, else from the jurisdiction.
int32_t getCountry(const ParsedRecord* record, char* buffer, int32_t capacity);
// The alpha-3 code as read, else derived from the country name.
int32_t getCountryCode(const ParsedRecord* record, char* buffer, int32_t capacity);
// The IIN when the table knows it, else the one of the jurisdiction, else as read.
int32_t getIIN(const ParsedRecord* record, char* buffer, int32_t capacity);
// The jurisdiction code that belongs to the IIN.
int32_t getIssuedBy(const ParsedRecord* record, char* buffer, int32_t capacity);

}  // namespace orvane
