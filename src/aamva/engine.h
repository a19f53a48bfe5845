// The AAMVA engine: reads the header, subfile directory and data elements of a PDF417
// licence barcode into a record. Each format variant builds one engine on its stack,
// replaces a few steps and runs the main step; an empty step is skipped.
#pragma once

#include <cstdint>
#include <span>

#include "engine/format.h"
#include "engine/record.h"

namespace orvane {

// Where a subfile lies in the payload; type 0 none, 1 "DL", 2 "ID".
struct SubfileEntry {
    int32_t type;
    int32_t offset;
    int32_t length;
};

// Where the pairs of one element id stand in its table, in table order.
struct ElementSlot {
    uint32_t key;  // 0 marks an empty slot
    uint8_t count;
    uint8_t positions[3];
};

// The element ids of a table hashed to their pairs, so that the element loop finds an id
// with a multiplication and a comparison or two.
inline constexpr uint32_t kElementSlots = 128;
struct ElementIndex {
    ElementSlot slots[kElementSlots];
};
constexpr uint32_t elementSlotOf(uint32_t key) { return (key * 2654435761u) >> 25; }
static_assert(kElementSlots == 1u << 7);

// The slot of the key's pairs, or an empty slot when the table has none.
inline const ElementSlot& findElementSlot(const ElementIndex& index, uint32_t key) {
    uint32_t at = elementSlotOf(key);
    while (index.slots[at].key != key && index.slots[at].key != 0) at = (at + 1) % kElementSlots;
    return index.slots[at];
}

// An element table maps packed three-letter element ids to FieldIds; ids may repeat
// and every matching pair is applied in order.
struct AamvaElementTable {
    const PairEntry* pairs;
    int32_t count;
    const ElementIndex* index;  // null: the pairs are walked
};

// One row of the version table: how a format's header is laid out.
struct AamvaVersionRow {
    uint32_t formatNumber;
    uint32_t minVersion;
    uint32_t expectedVersion;
    uint32_t headerLength;
    uint32_t dataElementSeparatorPos;
    uint32_t recordSeparatorPos;
    uint32_t segmentTerminatorPos;
    uint32_t iinOffset;
    uint32_t iinLength;
    uint32_t versionOffset;
    uint32_t versionLength;
    uint32_t entriesOffset;
    uint32_t entriesLength;
};

struct AamvaParser {
    ParsedRecord* record;
    const void* context;  // handed over by the format reader, kept untouched
    AamvaVersionRow row;  // how this format's header is laid out
    char dataElementSeparator;
    char recordSeparator;
    char segmentTerminator;
    int32_t entryCount;
    int32_t version;
    int32_t position;

    int32_t (*mainStep)(AamvaParser& p, const char* payload, int32_t length);
    int32_t (*headerStep)(AamvaParser& p, TextSpan payload);
    int32_t (*versionStep)(AamvaParser& p, TextSpan payload);
    int32_t (*entriesStep)(AamvaParser& p, TextSpan payload);
    int32_t (*issuerStep)(AamvaParser& p, TextSpan payload);
    int32_t (*versionCheck)(AamvaParser& p);
    int32_t (*headerCheck)(AamvaParser& p, TextSpan payload);
    int32_t (*bodyStep)(AamvaParser& p, TextSpan payload);
    int32_t (*directoryLocator)(AamvaParser& p, TextSpan payload, TextSpan* directory);
    int32_t (*directoryReader)(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry);
    int32_t (*subfileSelector)(AamvaParser& p, TextSpan payload, const SubfileEntry* entry, TextSpan* data);
    int32_t (*elementLoop)(AamvaParser& p, TextSpan data, const char* delimiters, const AamvaElementTable& table);
    int32_t (*elementStep)(AamvaParser& p, TextSpan data);
    int32_t (*elementStore)(AamvaParser& p, FieldId id, TextSpan value);
};

// The row of a format number, or null; and the whole table, for integrity tests.
const AamvaVersionRow* findAamvaVersionRow(uint32_t formatNumber);
std::span<const AamvaVersionRow> aamvaVersionTable();

// The five element tables of the editions.
extern const AamvaElementTable kAamvaTableA;  // early layout
extern const AamvaElementTable kAamvaTableB;  // 2003-2005 layouts
extern const AamvaElementTable kAamvaTableC;  // 2014 layouts
extern const AamvaElementTable kAamvaTableD;  // 2009-2010 layouts, the union
extern const AamvaElementTable kAamvaTableE;  // the 2011 variant


// Whether some edition's element table knows the three characters as an element id.
bool isKnownElementId(const char* id);

// Packs a three-letter element id as first << 16 | second << 8 | third.
constexpr uint32_t elementKey(const char (&id)[4]) {
    return static_cast<uint32_t>(static_cast<unsigned char>(id[0])) << 16 |
           static_cast<uint32_t>(static_cast<unsigned char>(id[1])) << 8 |
           static_cast<uint32_t>(static_cast<unsigned char>(id[2]));
}

// Clears the engine, loads the version row of formatNumber and installs the default
// steps; -22 (and nothing installed) for an unknown format number.
int32_t initAamvaParser(AamvaParser& p, uint32_t formatNumber, ParsedRecord* record,
                        const void* context);

// Runs the main step, or answers 0 when a variant removed it.
int32_t runAamvaParser(AamvaParser& p, const char* payload, int32_t length);

// The default steps, for variants that wrap or reuse them.
int32_t aamvaMainStep(AamvaParser& p, const char* payload, int32_t length);
int32_t aamvaHeaderStep(AamvaParser& p, TextSpan payload);
// The header step, with the three separators read from the payload or all set to LF.
int32_t aamvaReadHeader(AamvaParser& p, TextSpan payload, bool separatorsFromPayload);
int32_t aamvaVersionStep(AamvaParser& p, TextSpan payload);
int32_t aamvaEntriesStep(AamvaParser& p, TextSpan payload);
int32_t aamvaIssuerStep(AamvaParser& p, TextSpan payload);
int32_t aamvaVersionCheck(AamvaParser& p);
int32_t aamvaBodyStep(AamvaParser& p, TextSpan payload);
int32_t aamvaDirectoryLocator(AamvaParser& p, TextSpan payload, TextSpan* directory);
// The directory locator, with the test that a 10-byte record starts the directory.
int32_t aamvaLocateDirectory(AamvaParser& p, TextSpan payload, TextSpan* directory,
                             bool (*isRecordStart)(const char* record));
int32_t aamvaDirectoryReader(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry);
int32_t aamvaSubfileSelector(AamvaParser& p, TextSpan payload, const SubfileEntry* entry, TextSpan* data);
int32_t aamvaElementLoop(AamvaParser& p, TextSpan data, const char* delimiters, const AamvaElementTable& table);
int32_t aamvaElementStore(AamvaParser& p, FieldId id, TextSpan value);

// Finds "ANSI" or "AAMVA" followed (after one byte) by eight digits in text that starts
// with "@"; the version is the two bytes after the six-digit issuer number. 0 with the
// version span, -21 for a null text or negative length, -26 when there is none. The
// driver adds the version of the winning reading with it.
int32_t findAamvaHeader(const char* text, int32_t length, TextSpan* version);

// How a format's version check judges the header's version number.
enum class VersionRule {
    Exact,    // the row's expected version
    InRange,  // from the row's minimum to its expected version
    Any,      // not read, or any
};
// Necessary for the header steps of a format to pass: "@" first, a header of the row's
// length and a version number the rule accepts, read as the version step reads it.
bool aamvaVersionMayPass(const TextFacts& facts, uint32_t formatNumber, VersionRule rule);
inline bool aamvaHeaderMayPass(const TextFacts& facts, uint32_t formatNumber, VersionRule rule) {
    // The "@" that most texts lack is asked for here, before the row is looked up.
    return facts.at(0) == '@' && aamvaVersionMayPass(facts, formatNumber, rule);
}

// Helpers the variants share with the defaults.
// Reads a numeric header field at offset/length: true with its value when every
// character is a digit, white space or a sign.
bool readHeaderNumber(TextSpan payload, uint32_t offset, uint32_t length, int32_t* value);
// Start of the first element id after "8 digits, DL or ID, 3 letters", or fallback.
int32_t findDataStart(TextSpan payload, int32_t fallback);
// The subfile start nudged next to the digits of the directory before it.
int32_t alignToDigits(TextSpan payload, int32_t start);
// Index of "DLDAA" + 2 within the first n bytes, or n.
int32_t findElementStart(TextSpan payload, int32_t n);
// Whether the two bytes at text are "DL" or "ID".
bool isSubfileType(const char* text);
// Records "DL"/"ID" at the directory's start as the subfile type and the document type.
void readSubfileType(AamvaParser& p, TextSpan directory, SubfileEntry* entry);
// The payload byte at index, or 0 outside the payload.
char payloadByte(TextSpan payload, int32_t index);

}  // namespace orvane
