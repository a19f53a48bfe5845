// The name of every format the registry holds, as callers see it.
#pragma once

#include <cstdint>
#include <span>

#include "engine/record.h"

namespace orvane {

struct FormatName {
    uint32_t formatId;
    const char* name;     // the format as the registry knows it
    const char* edition;  // for AAMVA rows that read several versions: what follows the
                          // edition the header names, e.g. ", short header"; else null
};

// Every format's name, in format number order.
std::span<const FormatName> formatNames();
// The name of a format, or null for a number no row holds.
const FormatName* findFormatName(uint32_t formatId);

// Writes the name of the format of a record into buffer. An AAMVA row that reads several
// versions names the edition of the version its header gave ("AAMVA DL/ID 2013
// (version 08)"). 0, -21 for bad arguments, -26 for a record of no format or a name
// that does not fit.
int32_t answerFormatName(const ParsedRecord* record, char* buffer, int32_t capacity);

}  // namespace orvane
