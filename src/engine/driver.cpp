#include "engine/driver.h"

#include <cctype>
#include <cstring>

#include "aamva/engine.h"
#include "engine/framers.h"
#include "engine/status.h"
#include "fields/countries.h"
#include "fields/names.h"

namespace orvane {
namespace {

inline constexpr int32_t kNoScore = -9999;

int32_t checkDriverArguments(const void* data, int32_t dataLength, const char* inputCopy,
                             int32_t inputCopyCapacity, const ParsedRecord* record) {
    if (data == nullptr) return kErrNullInput;
    if (dataLength < 1) return kErrEmptyInput;
    if (inputCopy == nullptr || inputCopyCapacity < 1 || record == nullptr) {
        return kErrInvalidArgument;
    }
    if (record->workBuffer == nullptr || record->workCapacity < 1) return kErrNoWorkBuffer;
    return kOk;
}

// The state of one parse: the caller's input, the scratch buffer, the upper-case
// mapping and the barcode framing kept for the rows that share it.
struct ParseRun {
    const char* data;
    int32_t dataLength;
    char* inputCopy;
    // What framers may fill: the scratch buffer less one byte, so an input as long as the
    // buffer deliberately loses its last byte.
    int32_t room;
    int32_t scoringRoom;   // what the scoring derivers may fill
    unsigned char upper[256];
    bool asciiUpperCase;
    Framer keptFramer;          // the framer whose upper-cased output is kept, or null
    const char* keptText;
    int32_t keptLength;
    bool recordIsReset;         // no setter has stored a value since the last reset
    int32_t snapshotRow;        // the row whose record is kept in the scratch buffer, or -1
    const char* snapshot;
};

// The C library's upper-case mapping, read once per parse into a table; true when it is
// the plain ASCII one, as in the "C" locale and most others.
bool readUpperCaseTable(unsigned char* upper) {
    bool ascii = true;
#ifdef __GLIBC__
    // glibc's own table behind toupper, read directly: the same answers, no call per byte.
    const int32_t* mapping = *__ctype_toupper_loc();
#endif
    for (int c = 0; c < 256; ++c) {
#ifdef __GLIBC__
        upper[c] = static_cast<unsigned char>(mapping[c]);
#else
        upper[c] = static_cast<unsigned char>(std::toupper(c));
#endif
        const int plain = (c >= 'a' && c <= 'z') ? c - 'a' + 'A' : c;
        ascii = ascii && upper[c] == plain;
    }
    return ascii;
}

// Flips a-z to A-Z eight bytes at a time; other bytes, high ones included, stay.
void asciiUpperCase(char* text, int32_t length) {
    constexpr uint64_t kOnes = 0x0101010101010101ull;
    constexpr uint64_t kHigh = 0x8080808080808080ull;
    int32_t i = 0;
    for (; i + 8 <= length; i += 8) {
        uint64_t word;
        std::memcpy(&word, text + i, 8);
        const uint64_t low = word & ~kHigh;
        const uint64_t fromA = low + (0x80 - 'a') * kOnes;      // high bit: byte >= 'a'
        const uint64_t pastZ = low + (0x80 - 'z' - 1) * kOnes;  // high bit: byte > 'z'
        const uint64_t lower = fromA & ~pastZ & ~word & kHigh;  // 'a'..'z', below 0x80
        word ^= lower >> 2;                                      // 0x80 >> 2 is the case bit
        std::memcpy(text + i, &word, 8);
    }
    for (; i < length; ++i) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c >= 'a' && c <= 'z') text[i] = static_cast<char>(c - 32);
    }
}

void upperCaseInPlace(const ParseRun& run, char* text, int32_t length) {
    if (run.asciiUpperCase) {
        asciiUpperCase(text, length);
        return;
    }
    for (int32_t i = 0; i < length; ++i) text[i] = static_cast<char>(run.upper[static_cast<unsigned char>(text[i])]);
}

// Rows that share a framer get its output framed once per parse: most rows frame the
// input as barcode text, the four zone rows as a zone. The last such framing is kept at
// the end of the scratch buffer, from where each row gets a fresh copy. It is kept only
// where nothing else reaches it: no framer writes more than a third beyond the input
// (the header repairs grow it by a byte per three), no reader writes beyond its text,
// and the scoring derivers get a room of more than twice the framed text, which their
// answers never exceed. Longer inputs are framed anew for every row.
bool isSharedFramer(Framer framer) { return framer == frameBarcodeText || framer == frameMrz; }

void keepFraming(ParseRun& run, Framer framer, int32_t length) {
    const int64_t capacity = static_cast<int64_t>(run.room) + 1;
    const int64_t offset = capacity - (length + 1);
    const int64_t framerReach = (4 * static_cast<int64_t>(run.dataLength)) / 3 + 2;
    if (framerReach > offset || offset - 1 < 2 * static_cast<int64_t>(length) + 64) return;
    char* kept = run.inputCopy + offset;
    std::memcpy(kept, run.inputCopy, static_cast<size_t>(length) + 1);
    run.keptFramer = framer;
    run.keptText = kept;
    run.keptLength = length;
    if (offset - 1 < run.scoringRoom) run.scoringRoom = static_cast<int32_t>(offset) - 1;
}

// Frames the input for the row into the scratch buffer, upper-cased except after the
// pass-through framer.
int32_t frameForRow(ParseRun& run, const FormatDescriptor& row, int32_t* framedLength) {
    if (row.framer == run.keptFramer) {
        std::memcpy(run.inputCopy, run.keptText, static_cast<size_t>(run.keptLength) + 1);
        *framedLength = run.keptLength;
        return kOk;
    }
    int32_t length = 0;
    const int32_t framed = row.framer(run.data, run.dataLength, run.inputCopy, run.room, &length);
    if (framed != kOk) return framed;
    if (length < 0) length = 0;
    if (length > run.room) length = run.room;
    *framedLength = length;
    if (row.framer == framePassThrough) return kOk;
    upperCaseInPlace(run, run.inputCopy, length);
    if (isSharedFramer(row.framer)) keepFraming(run, row.framer, length);
    return kOk;
}

// Frames the input and runs the row's reader on a fresh record.
int32_t runRow(ParseRun& run, const FormatDescriptor& row, ParsedRecord* record, const ParseClock* clock,
               int32_t* framedLength) {
    if (int32_t status = frameForRow(run, row, framedLength)) return status;
    // A record that no value reached since its last reset still is a reset record.
    if (record->workUsed != 0 || !run.recordIsReset) resetRecord(record);
    run.recordIsReset = true;
    return row.parser(run.inputCopy, *framedLength, record, clock);
}

// The best record so far is kept in the scratch buffer, below where a shared framing
// can be kept and above where any framer, reader or scoring deriver writes, so that the
// winner need not be run again at the end. A reader's result depends only on its text
// and the parse clock, so restoring it gives the record a second run would give.
struct SlotPlace {
    int32_t offset;  // into the work buffer, or -1 for an empty slot
    int32_t length;
};
inline constexpr int64_t kSlotPlacesSize = static_cast<int64_t>(kFieldCount) * sizeof(SlotPlace);

void keepBestRecord(ParseRun& run, const ParsedRecord* record, int32_t row) {
    run.snapshotRow = -1;
    const int64_t capacity = static_cast<int64_t>(run.room) + 1;
    const int64_t framed = (4 * static_cast<int64_t>(run.dataLength)) / 3 + 3;  // any framing, with NUL
    const int64_t end = capacity - framed;
    const int64_t start = end - kSlotPlacesSize - record->workUsed;
    if (start - 1 < 2 * framed + 64) return;
    SlotPlace places[kFieldCount];
    for (FieldId id = 0; id < kFieldCount; ++id) {
        const FieldSlot& slot = record->fields[id];
        if (!spanUsable(slot)) {
            places[id] = SlotPlace{-1, 0};
            continue;
        }
        const int64_t offset = slot.data - record->workBuffer;
        if (offset < 0 || offset + slot.length > record->workUsed) return;  // not a value of the store
        places[id] = SlotPlace{static_cast<int32_t>(offset), slot.length};
    }
    char* area = run.inputCopy + start;
    std::memcpy(area, places, sizeof places);
    std::memcpy(area + sizeof places, record->workBuffer, static_cast<size_t>(record->workUsed));
    run.snapshot = area;
    run.snapshotRow = row;
    run.scoringRoom = static_cast<int32_t>(start) - 1;
}

void restoreBestRecord(const ParseRun& run, ParsedRecord* record, int32_t used) {
    resetRecord(record);
    SlotPlace places[kFieldCount];
    std::memcpy(places, run.snapshot, sizeof places);
    std::memcpy(record->workBuffer, run.snapshot + sizeof places, static_cast<size_t>(used));
    record->workUsed = used;
    for (FieldId id = 0; id < kFieldCount; ++id) {
        if (places[id].offset >= 0) record->fields[id] = FieldSlot{record->workBuffer + places[id].offset, places[id].length};
    }
}

// The AAMVA version of a row's text as its reader left it (readers may rewrite their text
// in place), read before the scoring derivers overwrite the scratch buffer.
struct HeaderVersion {
    bool found;
    char digits[2];
};

HeaderVersion readHeaderVersion(const char* text, int32_t length) {
    TextSpan version;
    if (findAamvaHeader(text, length, &version) != kOk) return HeaderVersion{false, {}};
    return HeaderVersion{true, {version.data[0], version.data[1]}};
}

// Adds the AAMVA version to the winner's record.
void storeAamvaVersion(const HeaderVersion& version, ParsedRecord* record) {
    if (version.found) setField(record, field::aamvaVersion, TextSpan{version.digits, 2});
}

// Whether a derived text equals the expected code; the scratch buffer receives it.
int32_t deriveAndCompare(TextDeriver derive, const ParsedRecord* record, char* scratch, int32_t room,
                         const char* expected, bool* equal) {
    const int32_t status = derive(record, scratch, room);
    *equal = status == kOk && std::strcmp(scratch, expected) == 0;
    return status;
}

// A row that names the country or jurisdiction its records must yield gains when the
// record agrees, loses much when it disagrees, and loses when the names are missing.
int32_t scoreAdjustment(const FormatDescriptor& row, const ParsedRecord* record, char* scratch, int32_t room) {
    int32_t adjustment = 0;
    bool equal = false;
    if (row.expectedCountry != nullptr) {
        if (deriveAndCompare(getCountryCode, record, scratch, room, row.expectedCountry, &equal) == kOk) {
            adjustment += equal ? 100 : -1000;
        }
        if (getFirstName(record, scratch, room) != kOk) adjustment -= 100;
    }
    if (row.expectedJurisdiction != nullptr) {
        if (deriveAndCompare(getJurisdictionCode, record, scratch, room, row.expectedJurisdiction, &equal) == kOk) {
            adjustment += equal ? 50 : -500;
        }
        if (getFirstName(record, scratch, room) != kOk || getLastName(record, scratch, room) != kOk) {
            adjustment -= 50;
        }
    }
    return adjustment;
}

}  // namespace

int32_t countFilledFields(const ParsedRecord* record) {
    int32_t filled = 0;
    for (const FieldSlot& slot : record->fields) filled += spanUsable(slot) ? 1 : 0;
    return filled;
}

int32_t parseBestFormatOf(std::span<const FormatDescriptor> rows, const void* data,
                          int32_t dataLength, char* inputCopy, int32_t inputCopyCapacity,
                          ParsedRecord* record, const ParseClock* clock) {
    const int32_t status =
        checkDriverArguments(data, dataLength, inputCopy, inputCopyCapacity, record);
    if (status != kOk) return status;
    ParseRun run{static_cast<const char*>(data), dataLength, inputCopy, inputCopyCapacity - 1,
                 inputCopyCapacity - 1, {}, false, nullptr, nullptr, 0, false, -1, nullptr};
    run.asciiUpperCase = readUpperCaseTable(run.upper);
    int32_t bestRow = -1;
    int32_t bestScore = kNoScore;
    int32_t bestUsed = 0;
    HeaderVersion bestVersion{false, {}};
    for (size_t r = 0; r < rows.size(); ++r) {
        int32_t length = 0;
        if (runRow(run, rows[r], record, clock, &length) != kOk) continue;
        int32_t score = countFilledFields(record);
        if (score == 0) continue;
        const HeaderVersion version = readHeaderVersion(inputCopy, length);
        // The scoring derivers write into the scratch buffer; the next row frames anew.
        score += scoreAdjustment(rows[r], record, inputCopy, run.scoringRoom);
        if (score > bestScore) {
            bestRow = static_cast<int32_t>(r);
            bestScore = score;
            bestUsed = record->workUsed;
            bestVersion = version;
            keepBestRecord(run, record, bestRow);
        }
    }
    if (bestRow < 0) return kErrNotRecognised;
    const FormatDescriptor& best = rows[static_cast<size_t>(bestRow)];
    if (run.snapshotRow == bestRow) {
        restoreBestRecord(run, record, bestUsed);
    } else {
        int32_t length = 0;
        if (int32_t final = runRow(run, best, record, clock, &length)) return final;
        bestVersion = readHeaderVersion(inputCopy, length);
    }
    storeAamvaVersion(bestVersion, record);
    record->formatGroup = best.formatGroup;
    record->formatId = best.formatId;
    sanitizeWorkBuffer(record);
    return kOk;
}

int32_t parseBestFormat(const void* data, int32_t dataLength, char* inputCopy,
                        int32_t inputCopyCapacity, ParsedRecord* record, const ParseClock* clock) {
    return parseBestFormatOf(formatRegistry(), data, dataLength, inputCopy, inputCopyCapacity,
                             record, clock);
}

}  // namespace orvane
