// Each reader: load its row of the version table, put its own steps in place of the
// defaults, record the edition it reads, run.
#include "aamva/variants.h"

#include "aamva/engine.h"
#include "aamva/variant_steps.h"
#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr const char* kAamva2000 = "AAMVA DL/ID 2000";
constexpr const char* kAamva2003 = "AAMVA DL/ID 2003";
constexpr const char* kAamva2005 = "AAMVA DL/ID 2005";
constexpr const char* kAamva2009 = "AAMVA DL/ID 2009";
constexpr const char* kAamva2010 = "AAMVA DL/ID 2010";
constexpr const char* kAamva2011 = "AAMVA DL/ID 2011";
constexpr const char* kAamva2014 = "AAMVA DL/ID 2014";
constexpr const char* kPartially2000 = "PARTIALLY AAMVA DL/ID 2000";
constexpr const char* kNonStandard2000 = "NON STANDARD PARTIALLY BASED ON AAMVA DL/ID 2000";

using enum Delimiters;

// Records the edition (when there is one) and runs the engine.
int32_t runVariant(AamvaParser& p, const char* standardName, const char* text, int32_t length) {
    if (standardName != nullptr) setFieldLiteral(p.record, field::standardName, standardName);
    return runAamvaParser(p, text, length);
}

// Runs the variant and, when it read the input, the check that ends it.
int32_t runVariantChecked(AamvaParser& p, const char* standardName, const char* text, int32_t length,
                          int32_t (*finalCheck)(const ParsedRecord*)) {
    if (int32_t status = runVariant(p, standardName, text, length)) return status;
    return finalCheck(p.record);
}

}  // namespace

bool mayReadAamvaFormat17(const TextFacts& f) { return aamvaHeaderMayPass(f, 17, VersionRule::Exact) && headerWordWithin(f, kAnsiAt4Or5); }

int32_t parseAamvaFormat17(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 17, record, clock)) return status;
    p.headerCheck = headerWordCheck<kAnsiAt4Or5>;
    p.elementStep = elementStepFor<kAamvaTableA, BothDash>;
    return runVariant(p, kAamva2000, text, length);
}

bool mayReadAamvaFormat18(const TextFacts& f) { return aamvaHeaderMayPass(f, 18, VersionRule::Exact) && headerWordWithin(f, kAnsiAt4); }

int32_t parseAamvaFormat18(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 18, record, clock)) return status;
    p.headerCheck = headerWordCheck<kAnsiAt4>;
    p.directoryReader = numberedDirectoryReader<kDirectoryMinusOne>;
    p.subfileSelector = selectPlain;
    p.elementStep = elementStepFor<kAamvaTableA, BothDash>;
    return runVariant(p, kAamva2000, text, length);
}

bool mayReadAamvaFormat19(const TextFacts& f) { return aamvaHeaderMayPass(f, 19, VersionRule::Exact) && headerWordWithin(f, kAnsiAt4Or5); }

int32_t parseAamvaFormat19(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 19, record, clock)) return status;
    p.headerCheck = headerWordCheck<kAnsiAt4Or5>;
    p.directoryReader = numberedDirectoryReader<kDirectoryAligned>;
    p.elementStep = elementStepFor<kAamvaTableA, Both>;
    return runVariant(p, kAamva2000, text, length);
}

bool mayReadAamvaFormat20(const TextFacts& f) { return aamvaHeaderMayPass(f, 20, VersionRule::Exact) && headerWordWithin(f, kAamva36At3); }

int32_t parseAamvaFormat20(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 20, record, clock)) return status;
    p.issuerStep = storeIssuerAToSix;
    p.headerCheck = headerWordCheck<kAamva36At3>;
    p.elementStep = elementStepFor<kAamvaTableA, BothDash>;
    return runVariant(p, kNonStandard2000, text, length);
}

bool mayReadAamvaFormat21(const TextFacts& f) { return aamvaHeaderMayPass(f, 21, VersionRule::Exact) && headerWordWithin(f, kAamva36At4WithSeparator); }

int32_t parseAamvaFormat21(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 21, record, clock)) return status;
    p.issuerStep = storeIssuerAToSix;
    p.headerCheck = headerWordCheck<kAamva36At4WithSeparator>;
    p.elementStep = elementStepFor<kAamvaTableA, Both>;
    return runVariantChecked(p, kNonStandard2000, text, length, refuseNorthCarolina);
}

bool mayReadAamvaFormat22(const TextFacts& f) { return aamvaHeaderMayPass(f, 22, VersionRule::Exact) && headerWordWithin(f, kAamva36At4WithSeparator); }

int32_t parseAamvaFormat22(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 22, record, clock)) return status;
    p.issuerStep = storeIssuerAToSix;
    p.headerCheck = headerWordCheck<kAamva36At4WithSeparator>;
    p.directoryReader = numberedDirectoryReader<kDirectoryPlusOne>;
    p.subfileSelector = selectDroppingType;
    p.elementStore = storeReorderedDate;
    p.elementStep = elementStepFor<kAamvaTableA, Both>;
    return runVariantChecked(p, kNonStandard2000, text, length, requireNorthCarolina);
}

bool mayReadAamvaFormat23(const TextFacts& f) { return aamvaHeaderMayPass(f, 23, VersionRule::Any) && headerWordWithin(f, kAamvaWithin7); }

int32_t parseAamvaFormat23(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 23, record, clock)) return status;
    p.versionStep = nullptr;
    p.issuerStep = nullptr;
    p.headerCheck = headerWordCheck<kAamvaWithin7>;
    p.subfileSelector = selectDroppingType;
    p.elementStore = storeReorderedDateMovingHeight;
    p.elementStep = elementStepFor<kAamvaTableA, SeparatorOnly>;
    return runVariantChecked(p, kNonStandard2000, text, length, requireNorthCarolina);
}

bool mayReadAamvaFormat24(const TextFacts& f) { return aamvaHeaderMayPass(f, 24, VersionRule::Exact) && headerWordWithin(f, kAamvaAt4WithSeparator); }

int32_t parseAamvaFormat24(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 24, record, clock)) return status;
    p.headerCheck = headerWordCheck<kAamvaAt4WithSeparator>;
    p.elementStep = elementStepFor<kAamvaTableA, Both>;
    return runVariant(p, kAamva2000, text, length);
}

bool mayReadAamvaFormat25(const TextFacts& f) { return aamvaHeaderMayPass(f, 25, VersionRule::Exact) && headerWordWithin(f, kAamvaAt4); }

int32_t parseAamvaFormat25(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 25, record, clock)) return status;
    p.issuerStep = nullptr;
    p.headerCheck = headerWordCheck<kAamvaAt4>;
    p.elementStep = elementStepFor<kAamvaTableA, BothDash>;
    return runVariant(p, kNonStandard2000, text, length);
}

bool mayReadAamvaFormat26(const TextFacts& f) { return aamvaHeaderMayPass(f, 26, VersionRule::Exact); }

int32_t parseAamvaFormat26(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 26, record, clock)) return status;
    p.directoryReader = numberedDirectoryReader<kDirectory3Digit>;
    p.subfileSelector = selectPlain;
    p.elementStep = elementStepFor<kAamvaTableA, SeparatorOnly>;
    return runVariant(p, kPartially2000, text, length);
}

bool mayReadAamvaFormat27(const TextFacts& f) { return aamvaHeaderMayPass(f, 27, VersionRule::Exact); }

int32_t parseAamvaFormat27(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 27, record, clock)) return status;
    p.elementStep = elementStepFor<kAamvaTableB, BothDash>;
    return runVariant(p, kAamva2003, text, length);
}

bool mayReadAamvaFormat28(const TextFacts& f) { return aamvaHeaderMayPass(f, 28, VersionRule::Exact); }

int32_t parseAamvaFormat28(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 28, record, clock)) return status;
    p.directoryReader = readDirectoryTypeOnly;
    p.subfileSelector = aamvaSubfileSelector;
    p.elementStep = elementStepFor<kAamvaTableB, BothDash>;
    return runVariant(p, kAamva2005, text, length);
}

bool mayReadAamvaFormat29(const TextFacts& f) { return aamvaHeaderMayPass(f, 29, VersionRule::Exact) && f.at(2) == '\x1e'; }

int32_t parseAamvaFormat29(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 29, record, clock)) return status;
    p.headerCheck = requireRecordSeparator30;
    p.elementStep = elementStepFor<kAamvaTableB, BothDash>;
    return runVariant(p, kAamva2003, text, length);
}

bool mayReadAamvaFormat30(const TextFacts& f) { return aamvaHeaderMayPass(f, 30, VersionRule::Exact); }

int32_t parseAamvaFormat30(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 30, record, clock)) return status;
    p.elementStep = elementStepFor<kAamvaTableB, BothDash>;
    return runVariant(p, kAamva2003, text, length);
}

bool mayReadAamvaFormat31(const TextFacts& f) { return aamvaHeaderMayPass(f, 31, VersionRule::Exact); }

int32_t parseAamvaFormat31(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 31, record, clock)) return status;
    p.elementStep = elementStepFor<kAamvaTableB, BothDash>;
    return runVariant(p, kAamva2005, text, length);
}

bool mayReadAamvaFormat32(const TextFacts& f) { return aamvaHeaderMayPass(f, 32, VersionRule::Exact); }

int32_t parseAamvaFormat32(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 32, record, clock)) return status;
    p.directoryReader = numberedDirectoryReader<kDirectoryMinusOne>;
    p.subfileSelector = selectDroppingType;
    p.elementStep = elementStepFor<kAamvaTableB, BothDash>;
    return runVariant(p, kAamva2005, text, length);
}

bool mayReadAamvaFormat33(const TextFacts& f) { return aamvaHeaderMayPass(f, 33, VersionRule::Exact); }

int32_t parseAamvaFormat33(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 33, record, clock)) return status;
    p.directoryReader = readDirectoryFixedAt<27>;
    p.elementStep = elementStepFor<kAamvaTableB, BothDash>;
    return runVariant(p, kAamva2005, text, length);
}

bool mayReadAamvaFormat34(const TextFacts& f) { return aamvaHeaderMayPass(f, 34, VersionRule::Exact); }

int32_t parseAamvaFormat34(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 34, record, clock)) return status;
    p.directoryReader = readDirectoryFixedAt<32>;
    p.elementStep = elementStepFor<kAamvaTableB, BothDash>;
    return runVariant(p, kAamva2005, text, length);
}

bool mayReadAamvaFormat35(const TextFacts& f) { return aamvaHeaderMayPass(f, 35, VersionRule::Any); }

int32_t parseAamvaFormat35(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 35, record, clock)) return status;
    p.versionStep = takeExpectedVersion;
    p.entriesStep = takeOneEntry;
    p.issuerStep = storeIssuerAfterAnsi;
    p.versionCheck = acceptAnyVersion;
    p.directoryReader = readDirectorySearchFrom26;
    p.elementStep = elementStepFor<kAamvaTableB, CrLf>;
    return runVariant(p, kAamva2005, text, length);
}

bool mayReadAamvaFormat36(const TextFacts& f) { return aamvaHeaderMayPass(f, 36, VersionRule::Exact); }

int32_t parseAamvaFormat36(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 36, record, clock)) return status;
    p.directoryLocator = locateSlDirectory;
    p.directoryReader = readSlDirectory;
    p.subfileSelector = selectPlain;
    p.elementStep = elementStepFor<kAamvaTableB, BothDash>;
    return runVariant(p, kAamva2005, text, length);
}

bool mayReadAamvaFormat37(const TextFacts& f) { return aamvaHeaderMayPass(f, 37, VersionRule::Exact); }

int32_t parseAamvaFormat37(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 37, record, clock)) return status;
    p.elementLoop = loopOverTable;
    p.elementStep = elementStepFor<kAamvaTableD, BothDash>;
    return runVariant(p, kAamva2009, text, length);
}

bool mayReadAamvaFormat38(const TextFacts& f) { return aamvaHeaderMayPass(f, 38, VersionRule::Exact); }

int32_t parseAamvaFormat38(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 38, record, clock)) return status;
    p.elementStep = elementStepFor<kAamvaTableD, SeparatorOnly>;
    return runVariant(p, kAamva2009, text, length);
}

bool mayReadAamvaFormat39(const TextFacts& f) { return aamvaHeaderMayPass(f, 39, VersionRule::Exact); }

int32_t parseAamvaFormat39(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 39, record, clock)) return status;
    p.elementLoop = loopOverTable;
    p.elementStep = elementStepFor<kAamvaTableD, BothDash>;
    return runVariant(p, kAamva2010, text, length);
}

bool mayReadAamvaFormat40(const TextFacts& f) { return aamvaHeaderMayPass(f, 40, VersionRule::Exact); }

int32_t parseAamvaFormat40(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 40, record, clock)) return status;
    p.elementStep = elementStepFor<kAamvaTableD, BothDash>;
    return runVariant(p, kAamva2010, text, length);
}

bool mayReadAamvaFormat41(const TextFacts& f) { return aamvaHeaderMayPass(f, 41, VersionRule::Exact); }

int32_t parseAamvaFormat41(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 41, record, clock)) return status;
    p.elementStep = elementStepFor<kAamvaTableE, BothDash>;
    return runVariant(p, kAamva2011, text, length);
}

// The header is read from the first "@", wherever it stands.
bool mayReadAamvaFormat42(const TextFacts& f) {
    const int32_t at = f.find("@");
    if (at < 0) return false;
    const TextFacts fromAt{f.text + at, f.length - at, {}};
    return aamvaHeaderMayPass(fromAt, 42, VersionRule::InRange);
}

int32_t parseAamvaFormat42(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 42, record, clock)) return status;
    p.versionCheck = requireVersionInRange;
    p.elementStep = elementStepFor<kAamvaTableC, BothDash>;
    // Reads from the first "@"; text without one is refused before anything is written.
    const int32_t at = text != nullptr ? spanFind(TextSpan{text, length}, makeSpan("@")) : -1;
    if (at < 0) return text == nullptr || length < 0 ? kErrInvalidArgument : kErrNoAtSign;
    return runVariant(p, kAamva2014, text + at, length - at);
}

bool mayReadAamvaFormat43(const TextFacts& f) { return aamvaHeaderMayPass(f, 43, VersionRule::InRange); }

int32_t parseAamvaFormat43(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 43, record, clock)) return status;
    p.versionCheck = requireVersionInRange;
    p.elementStep = elementStepFor<kAamvaTableC, SeparatorOnly>;
    return runVariant(p, kAamva2014, text, length);
}

bool mayReadAamvaFormat44(const TextFacts& f) { return aamvaHeaderMayPass(f, 44, VersionRule::InRange); }

int32_t parseAamvaFormat44(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 44, record, clock)) return status;
    p.versionCheck = requireVersionInRange;
    p.elementStep = elementStepFor<kAamvaTableC, BothDash>;
    return runVariant(p, kAamva2014, text, length);
}

bool mayReadAamvaFormat45(const TextFacts& f) { return aamvaHeaderMayPass(f, 42, VersionRule::Any); }

int32_t parseAamvaFormat45(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    // Deliberately runs on the row of format 42; its own row is never used.
    if (int32_t status = initAamvaParser(p, 42, record, clock)) return status;
    p.headerStep = readNewlineHeader;
    p.versionStep = takeExpectedVersion;
    p.entriesStep = takeOneEntry;
    p.issuerStep = storeIssuerAfterAnsi;
    p.versionCheck = acceptAnyVersion;
    p.elementStep = elementStepFor<kAamvaTableC, Both>;
    return runVariantChecked(p, kAamva2014, text, length, requireCanada);
}

bool mayReadAamvaFormat46(const TextFacts& f) { return aamvaHeaderMayPass(f, 42, VersionRule::InRange); }

int32_t parseAamvaFormat46(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    // Deliberately runs on the row of format 42; its own row is never used.
    if (int32_t status = initAamvaParser(p, 42, record, clock)) return status;
    p.entriesStep = readEntriesLeniently;
    p.versionCheck = requireVersionInRange;
    p.elementStep = elementStepFor<kAamvaTableC, BothNewline>;
    return runVariant(p, kAamva2014, text, length);
}

// Both run on the row of format 42 and format 42 reads from the first "@". Where that is
// the first byte, the header's entry count reads, and the segment terminator is neither
// above 63 (which this reader turns into a line feed) nor "-" (which format 42 leaves
// out of its delimiters), every step does the same.
bool format46ReadsAsFormat42(const TextFacts& f) {
    const AamvaVersionRow* row = findAamvaVersionRow(42);
    if (f.at(0) != '@') return false;
    const unsigned char terminator = static_cast<unsigned char>(f.at(static_cast<int32_t>(row->segmentTerminatorPos)));
    if (terminator > 63 || terminator == '-') return false;
    // Shorter texts fail the header steps of both, before the entry count is read.
    if (f.length < static_cast<int64_t>(row->entriesOffset) + row->entriesLength) return true;
    int32_t entries = 0;
    return readHeaderNumber(TextSpan{f.text, f.length}, row->entriesOffset, row->entriesLength, &entries);
}

bool mayReadAamvaFormat47(const TextFacts& f) { return aamvaHeaderMayPass(f, 47, VersionRule::Exact); }

int32_t parseAamvaFormat47(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock) {
    AamvaParser p;
    if (int32_t status = initAamvaParser(p, 47, record, clock)) return status;
    p.entriesStep = takeOneEntry;
    p.directoryReader = readOwnDirectory;
    p.elementStep = elementStepFor<kAamvaTableA, BothDash>;
    return runVariant(p, nullptr, text, length);  // this layout names no edition
}

}  // namespace orvane
