// The steps that the AAMVA format variants put in place of the engine's defaults.
// Behaviours that differ only by a value (which word a header holds, how a directory
// offset is adjusted) share one function with a constant describing the variant.
#pragma once

#include <cstdint>

#include "aamva/engine.h"

namespace orvane {

// Which bytes end a data element.
enum class Delimiters {
    Both,              // data element separator and segment terminator
    BothDash,          // the same, leaving out a segment terminator that is "-"
    SeparatorOnly,     // the data element separator alone
    CrLf,              // carriage return and line feed, whatever the header says
    BothNewline,       // both, after a segment terminator above 63 became a line feed
};

int32_t runElementStep(AamvaParser& p, TextSpan data, const AamvaElementTable& table, Delimiters rule);

// An element step reading one table with one delimiter rule.
template <const AamvaElementTable& Table, Delimiters Rule>
int32_t elementStepFor(AamvaParser& p, TextSpan data) {
    return runElementStep(p, data, Table, Rule);
}

// Header checks: a word must stand within bytes from..to of the payload.
enum class RecordSeparators { Any, FileOrRecord, FileRecordOrSix };
struct HeaderWordRule {
    const char* word;
    int32_t from;
    int32_t to;
    int32_t minLength;  // shorter payloads give -1
    RecordSeparators separators;
    int32_t missingStatus;
};
int32_t checkHeaderWord(AamvaParser& p, TextSpan payload, const HeaderWordRule& rule);
// Necessary for checkHeaderWord to pass: the word within its window.
bool headerWordWithin(const TextFacts& facts, const HeaderWordRule& rule);
template <const HeaderWordRule& Rule>
int32_t headerWordCheck(AamvaParser& p, TextSpan payload) {
    return checkHeaderWord(p, payload, Rule);
}

inline constexpr HeaderWordRule kAnsiAt4{"ANSI", 4, 7, 8, RecordSeparators::FileRecordOrSix, -4};
inline constexpr HeaderWordRule kAnsiAt4Or5{"ANSI", 4, 8, 9, RecordSeparators::FileRecordOrSix, -4};
inline constexpr HeaderWordRule kAamvaAt4{"AAMVA", 4, 8, 9, RecordSeparators::Any, -6};
inline constexpr HeaderWordRule kAamvaAt4WithSeparator{"AAMVA", 4, 8, 9, RecordSeparators::FileOrRecord, -5};
inline constexpr HeaderWordRule kAamvaWithin7{"AAMVA", 4, 10, 11, RecordSeparators::Any, -5};
inline constexpr HeaderWordRule kAamva36At3{"AAMVA36", 3, 9, 10, RecordSeparators::Any, -5};
inline constexpr HeaderWordRule kAamva36At4WithSeparator{"AAMVA36", 4, 10, 11, RecordSeparators::FileOrRecord, -5};

int32_t requireRecordSeparator30(AamvaParser& p, TextSpan payload);

// Header steps.
int32_t readNewlineHeader(AamvaParser& p, TextSpan payload);
int32_t storeIssuerAToSix(AamvaParser& p, TextSpan payload);
int32_t storeIssuerAfterAnsi(AamvaParser& p, TextSpan payload);
int32_t takeExpectedVersion(AamvaParser& p, TextSpan payload);
int32_t takeOneEntry(AamvaParser& p, TextSpan payload);
int32_t readEntriesLeniently(AamvaParser& p, TextSpan payload);
int32_t acceptAnyVersion(AamvaParser& p);
int32_t requireVersionInRange(AamvaParser& p);

// Directory readers whose offset (and length) are numbers in the directory record.
struct NumberedDirectory {
    int32_t minLength;     // shorter directories give -9
    int32_t offsetAt;
    int32_t offsetDigits;
    int32_t searchShift;   // added to the offset before the element-start search
    bool alignToDigits;    // nudge the start as the default reader does
    bool backOffLetter;    // move back one byte when the start is not a digit
    int32_t lengthAt;
    int32_t lengthDigits;
    int32_t lengthShift;   // added to a length read from the directory
};
int32_t readNumberedDirectory(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry,
                              const NumberedDirectory& layout);
template <const NumberedDirectory& Layout>
int32_t numberedDirectoryReader(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry) {
    return readNumberedDirectory(p, payload, directory, entry, Layout);
}
inline constexpr NumberedDirectory kDirectoryMinusOne{10, 2, 4, -1, false, false, 6, 4, 0};
inline constexpr NumberedDirectory kDirectoryPlusOne{10, 2, 4, 1, false, false, 6, 4, 0};
inline constexpr NumberedDirectory kDirectoryAligned{6, 2, 4, 0, false, true, 6, 4, 1};
inline constexpr NumberedDirectory kDirectory3Digit{5, 2, 3, -1, true, false, 7, 2, 0};

// Directory readers with a fixed or searched subfile start.
int32_t readDirectoryTypeOnly(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry);
int32_t readDirectoryFixed(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry,
                           int32_t offset);
template <int32_t Offset>
int32_t readDirectoryFixedAt(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry) {
    return readDirectoryFixed(p, payload, directory, entry, Offset);
}
int32_t readDirectorySearchFrom26(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry);
int32_t locateSlDirectory(AamvaParser& p, TextSpan payload, TextSpan* directory);
int32_t readSlDirectory(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry);
int32_t readOwnDirectory(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry);

// Subfile selectors.
int32_t selectPlain(AamvaParser& p, TextSpan payload, const SubfileEntry* entry, TextSpan* data);
int32_t selectDroppingType(AamvaParser& p, TextSpan payload, const SubfileEntry* entry, TextSpan* data);

// Element loop walking the table instead of the data.
int32_t loopOverTable(AamvaParser& p, TextSpan data, const char* delimiters, const AamvaElementTable& table);

// Element stores turning month-day-year dates into year-month-day.
int32_t storeReorderedDate(AamvaParser& p, FieldId id, TextSpan value);
int32_t storeReorderedDateMovingHeight(AamvaParser& p, FieldId id, TextSpan value);

// Checks run after a successful main step.
int32_t refuseNorthCarolina(const ParsedRecord* record);
int32_t requireNorthCarolina(const ParsedRecord* record);
int32_t requireCanada(const ParsedRecord* record);

}  // namespace orvane
