// The name hooks of the jurisdictions whose whole names the generic rules misread, and
// the GenericSplitter. A hook reads the whole name only when the slots its worker would
// otherwise answer from are empty; hooks and splitters answer only with text of the record.
#pragma once

#include <cstdint>

#include "fields/names.h"

namespace orvane {

int32_t alabamaFirstName(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t alabamaLastName(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t alabamaMiddleName(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t alabamaSuffix(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t alabamaPrefix(const ParsedRecord* record, char* buffer, int32_t capacity);

int32_t coloradoFirstName(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t coloradoLastName(const ParsedRecord* record, char* buffer, int32_t capacity);
int32_t coloradoMiddleName(const ParsedRecord* record, char* buffer, int32_t capacity);

// The splitters of the rows whose useGenericSplitter is 0.
extern const GenericSplitter kGenericSplitter;

}  // namespace orvane
