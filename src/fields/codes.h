// Licence codes, their descriptions, the yes/no flags, the document type and the
// AAMVA version.
#pragma once

#include <cstdint>

#include "engine/record.h"

namespace orvane {

// The two-digit AAMVA header version, copied as it stands.
int32_t getAamvaVersion(const ParsedRecord* record, char* buffer, int32_t capacity);

// Codes and descriptions as the document gives them, with unprintable characters
// turned into blanks: 0, -21 for bad arguments, -26 when the slots are empty.
int32_t getVehicleClassCode(const ParsedRecord* record, char* buffer, int32_t capacity);
// Always the vehicle class code.
int32_t getClassificationCode(const ParsedRecord* record, char* buffer, int32_t capacity);
// Restrictions, with runs of white space reduced to one blank.
int32_t getRestrictionCode(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getEndorsementsCode(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getVehicleClassCodeDescription(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getRestrictionCodeDescription(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getEndorsementCodeDescription(const ParsedRecord* record, char* buffer, int32_t capacity);
// The one-character compliance type; -26 for any other length or an unprintable one.
int32_t getComplianceType(const ParsedRecord* record, char* buffer, int32_t capacity);

// Flags: 0 with value 1 only for the stored text "1", else 0; -21 for bad arguments;
// -26 when the slot is empty.
int32_t getLimitedDurationDocument(const ParsedRecord* record, int32_t* value);
int32_t getOrganDonor(const ParsedRecord* record, int32_t* value);
int32_t getVeteran(const ParsedRecord* record, int32_t* value);

// The stored document type, else "DL" when a name, an address, a licence number and
// the second birth date are present, else "UNKNOWN". 0 even when the text was cut.
int32_t getDocumentType(const ParsedRecord* record, char* buffer, int32_t capacity);

}  // namespace orvane
