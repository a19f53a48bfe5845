// The fixed-width reader: after an optional head, fields follow one another without
// separators, each as wide as its layout row says. A reader builds one engine on its
// stack, replaces some steps and runs it; an empty step is skipped.
#pragma once

#include <cstdint>
#include <span>

#include "engine/format.h"
#include "engine/record.h"

namespace orvane {

// One field of a layout: where it goes and how many characters it takes.
struct FixedFieldLayout {
    FieldId id;
    int32_t width;
};

struct FixedFieldEngine {
    ParsedRecord* record;
    const void* context;      // handed over by the format reader, kept untouched
    const char* versionText;  // the expected version character; empty or null accepts any
    const FixedFieldLayout* layout;
    uint32_t layoutCount;

    int32_t (*run)(FixedFieldEngine& e, const char* input, int32_t length);
    int32_t (*checkHeader)(FixedFieldEngine& e, TextSpan input);
    int32_t (*enterBody)(FixedFieldEngine& e, TextSpan input);
    int32_t (*splitFields)(FixedFieldEngine& e, TextSpan body);
    void (*storeField)(FixedFieldEngine& e, FieldId id, TextSpan value);
};

// Clears the engine, keeps the arguments and installs the default steps.
void initFixedFieldEngine(FixedFieldEngine& e, ParsedRecord* record, const void* context,
                          const char* versionText, std::span<const FixedFieldLayout> layout);

// Runs the run step, or answers 0 when it was removed.
int32_t runFixedFieldEngine(FixedFieldEngine& e, const char* input, int32_t length);

// The default steps, for readers that wrap or reuse them.
int32_t fixedFieldRun(FixedFieldEngine& e, const char* input, int32_t length);
// "IDUS" and, when one is expected, the version character after it.
int32_t checkIdusHeader(FixedFieldEngine& e, TextSpan input);
// Splits what follows the nine characters of the head.
int32_t enterBodyAfterHead(FixedFieldEngine& e, TextSpan input);
// Cuts the body by the layout; -25 when it ends inside a field.
int32_t splitFixedFields(FixedFieldEngine& e, TextSpan body);
// Stores the field with blanks trimmed at both ends.
void storeTrimmedField(FixedFieldEngine& e, FieldId id, TextSpan value);

// Whether the version character at position of input is the expected one; 0 or -7.
int32_t checkVersionAt(const FixedFieldEngine& e, TextSpan input, int32_t position);

}  // namespace orvane
