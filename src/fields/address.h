// Address lines, city, postal code and licence number, with the per-jurisdiction hooks
// of the name rule table.
#pragma once

#include <cstdint>

#include "engine/record.h"

namespace orvane {

// Workers: 0 with the answer in buffer, -21 for bad arguments, -26 for no answer, and
// -18 where a postal-code hook reports a short buffer.
int32_t getAddress1(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getAddress2(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getCity(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t getPostalCode(const ParsedRecord* record, char* buffer, int32_t capacity);
// At most capacity - 2 characters of the number (the room is capacity - 1).
int32_t getLicenseNumber(const ParsedRecord* record, char* buffer, int32_t capacity);

// The hooks the jurisdictions' rows carry.

// ZIP codes of the United States and its territories: five digits, "-", four digits,
// filled with "0" on the right (12345 answers 12345-0000, 1234 answers 12340-0000).
int32_t usPostalCode(TextSpan postal, char* buffer, int32_t capacity);
// The licence number without the blanks and hyphens that cards print between its groups.
int32_t licenseNumberWithoutSeparators(const ParsedRecord* record, char* buffer, int32_t room);
// The licence number without blanks, keeping the hyphens that belong to its form.
int32_t licenseNumberWithoutBlanks(const ParsedRecord* record, char* buffer, int32_t room);
// Canadian cards that carry street, city, province and postal code in one line.
int32_t canadianAddressLine(const ParsedRecord* record, const FieldId* ids, int32_t count, char* buffer,
                            int32_t capacity);

}  // namespace orvane
