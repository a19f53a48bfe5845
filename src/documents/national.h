// Readers of the national documents: the Virgin Islands licence (two layouts), the South
// African identity document, the Panamanian licence, the Guatemalan and Mexican
// element layouts, the Puerto Rican licence and the Latin-1 text of Mexican licences.
#pragma once

#include <cstdint>
#include <span>

#include "engine/format.h"

namespace orvane {

// The federal commercial vehicle codes of the Virgin Islands layout ("DCH"), kept in a
// slot of their own.
inline constexpr FieldId kVirginIslandsVehicleCodes = 137;

// The two Virgin Islands layouts: the column of the element table each reads.
enum class VirginIslandsLayout { Dct = 0, Dtt = 1 };

// One element of the Virgin Islands layouts, in the order the elements are expected:
// its identifier in each layout and the slot it fills.
struct VirginIslandsElementRow {
    char id[2][4];
    FieldId field;
};

// The element table as it stands, for integrity tests.
std::span<const VirginIslandsElementRow> virginIslandsElementOrder();

// The format readers of registry rows 56 to 63, in row order. Each returns 0 when it
// recognised its document and -25 otherwise, except the two Virgin Islands readers,
// which succeed without writing anything on foreign text.

// Format 56: Guatemalan licence, AAMVA-like element lines with GUATEMALA in "DCG".
int32_t parseGuatemalaLicence(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
// Format 57: Puerto Rican licence, an AAMVA barcode under the issuer number 604431.
int32_t parsePuertoRicoLicence(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
// Format 58: Panamanian licence, "|"-separated fields around "|CIP|".
int32_t parsePanamaLicence(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
// Format 59: South African identity document, "|"-separated with a marker in the last field.
int32_t parseSouthAfricaIdentity(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
// Format 60: Mexican licence, AAMVA-like element lines with MEXICO in "DCG".
int32_t parseMexicoElements(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
// Format 61: Mexican licence as labelled lines of folded Latin-1 text.
int32_t parseMexicoLatin1Text(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
// Formats 62 and 63: Virgin Islands licence, first name under "DCT" or under "DTT".
int32_t parseVirginIslandsLicence(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseVirginIslandsLicenceDtt(char* text, int32_t length, ParsedRecord* record,
                                     const ParseClock* clock);

// Whether a South African identity number's last digit is the Luhn digit of the twelve
// before it: 2 when it is, 3 when not, 1 when the record holds no thirteen-digit number.
int32_t checkSouthAfricanIdNumber(const ParsedRecord* record);

// Necessary conditions of each reader's acceptance, for the driver's quick refusals.
bool mayReadGuatemalaLicence(const TextFacts& facts);
bool mayReadPuertoRicoLicence(const TextFacts& facts);
bool mayReadPanamaLicence(const TextFacts& facts);
bool mayReadSouthAfricaIdentity(const TextFacts& facts);
bool mayReadMexicoElements(const TextFacts& facts);
bool mayReadMexicoLatin1Text(const TextFacts& facts);
// Both Virgin Islands layouts.
bool mayReadVirginIslandsLicence(const TextFacts& facts);

}  // namespace orvane
