#include "aamva/variant_steps.h"

#include <cstring>

#include "engine/status.h"
#include "fields/countries.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr FieldId kJurisdictionSlots[] = {field::jurisdictionCode, field::residenceJurisdictionCode};

bool isDigitAt(TextSpan payload, int32_t index) {
    return isAsciiDigit(static_cast<unsigned char>(payloadByte(payload, index)));
}

bool separatorAllowed(char separator, RecordSeparators rule) {
    switch (rule) {
        case RecordSeparators::Any:
            return true;
        case RecordSeparators::FileOrRecord:
            return separator == 28 || separator == 30;
        case RecordSeparators::FileRecordOrSix:
            return separator == 28 || separator == 30 || separator == '6';
    }
    return false;
}

// Length of a subfile that starts at start: read from the directory when it holds a
// number there, cut to end at the payload's end; otherwise the rest of the payload.
int32_t subfileLength(TextSpan payload, TextSpan directory, int32_t start, int32_t at, int32_t digits,
                      int32_t shift) {
    const int32_t rest = payload.length - start;
    int32_t length = 0;
    if (directory.length < at + digits || !readHeaderNumber(directory, static_cast<uint32_t>(at),
                                                            static_cast<uint32_t>(digits), &length)) {
        return rest;
    }
    length += shift;
    return length < rest ? length : rest;
}

int isDecimalDigit(int c) { return isAsciiDigit(c); }

bool isSlRecord(const char* record) { return record[0] == 'S' && record[1] == 'L'; }

bool jurisdictionIsNorthCarolina(const ParsedRecord* record) {
    TextSpan code;
    return firstFilledField(record, kJurisdictionSlots, &code) == kOk && spanEquals(code, "NC") == 0;
}

// Keeps the characters of a date value without its dashes and moves the first four to
// the end, so that 01-15-1980 reads 19800115.
int32_t storeMonthFirstDate(AamvaParser& p, FieldId id, TextSpan value) {
    char date[32];
    int32_t n = 0;
    for (int32_t i = 0; i < value.length && n < static_cast<int32_t>(sizeof date) - 1; ++i) {
        if (value.data[i] != '-') date[n++] = value.data[i];
    }
    char reordered[32];
    const int32_t head = n < 4 ? n : 4;
    std::memcpy(reordered, date + head, static_cast<size_t>(n - head));
    std::memcpy(reordered + n - head, date, static_cast<size_t>(head));
    setField(p.record, id, TextSpan{reordered, n});
    return kOk;
}

bool isDateField(FieldId id) {
    return id == field::expirationDate || id == field::birthdate || id == field::issueDate;
}

}  // namespace

int32_t runElementStep(AamvaParser& p, TextSpan data, const AamvaElementTable& table, Delimiters rule) {
    if (data.data == nullptr) return kErrInvalidArgument;
    if (rule == Delimiters::BothNewline && static_cast<unsigned char>(p.segmentTerminator) > 63) {
        p.segmentTerminator = '\n';
    }
    char delimiters[3] = {p.dataElementSeparator, '\0', '\0'};
    switch (rule) {
        case Delimiters::Both:
        case Delimiters::BothNewline:
            delimiters[1] = p.segmentTerminator;
            break;
        case Delimiters::BothDash:
            if (p.segmentTerminator != '-') delimiters[1] = p.segmentTerminator;
            break;
        case Delimiters::SeparatorOnly:
            break;
        case Delimiters::CrLf:
            delimiters[0] = '\r';
            delimiters[1] = '\n';
            break;
    }
    if (p.elementLoop == nullptr) return kOk;
    return p.elementLoop(p, data, delimiters, table);
}

int32_t checkHeaderWord(AamvaParser& p, TextSpan payload, const HeaderWordRule& rule) {
    if (payload.data == nullptr) return kErrInvalidArgument;
    if (payload.length < rule.minLength) return kErrPayloadTooShort;
    if (!separatorAllowed(p.recordSeparator, rule.separators)) return kErrRecordSeparator;
    const TextSpan window{payload.data + rule.from, rule.to - rule.from + 1};
    return spanFind(window, makeSpan(rule.word)) >= 0 ? kOk : rule.missingStatus;
}

bool headerWordWithin(const TextFacts& f, const HeaderWordRule& rule) {
    if (f.length < rule.minLength) return false;
    return spanFind(TextSpan{f.text + rule.from, rule.to - rule.from + 1}, makeSpan(rule.word)) >= 0;
}

int32_t requireRecordSeparator30(AamvaParser& p, TextSpan payload) {
    if (payload.data == nullptr) return kErrInvalidArgument;
    return p.recordSeparator == 30 ? kOk : kErrRecordSeparator;
}

int32_t readNewlineHeader(AamvaParser& p, TextSpan payload) { return aamvaReadHeader(p, payload, false); }

int32_t storeIssuerAToSix(AamvaParser& p, TextSpan payload) {
    if (payload.length < static_cast<int64_t>(p.row.iinOffset) + p.row.iinLength) return kErrPayloadTooShort;
    TextSpan iin{payload.data + p.row.iinOffset, static_cast<int32_t>(p.row.iinLength)};
    trimSet(&iin, " \n\t\r");
    setFieldFromSpan(p.record, field::iin, iin, "A", nullptr, '6');
    return kOk;
}

int32_t storeIssuerAfterAnsi(AamvaParser& p, TextSpan payload) {
    if (payload.data == nullptr || payload.length <= 9) return kOk;
    int32_t from = 0;
    while (payload.length - from > 9) {
        const int32_t found = spanFind(TextSpan{payload.data + from, payload.length - from}, makeSpan("ANSI"));
        if (found < 0) return kOk;
        int32_t at = from + found + 4;
        while (at < payload.length && isAsciiSpace(static_cast<unsigned char>(payload.data[at]))) ++at;
        if (payload.length - at >= 6 && allChars(TextSpan{payload.data + at, 6}, isDecimalDigit) == 0) {
            setField(p.record, field::iin, TextSpan{payload.data + at, 6});
            return kOk;
        }
        from = at;
    }
    return kOk;
}

int32_t takeExpectedVersion(AamvaParser& p, TextSpan) {
    p.version = static_cast<int32_t>(p.row.expectedVersion);
    return runStep(p.versionCheck, p);
}

int32_t takeOneEntry(AamvaParser& p, TextSpan) {
    p.entryCount = 1;
    return kOk;
}

int32_t readEntriesLeniently(AamvaParser& p, TextSpan payload) {
    if (payload.length < static_cast<int64_t>(p.row.entriesOffset) + p.row.entriesLength) return kErrPayloadTooShort;
    int32_t value = 0;
    if (readHeaderNumber(payload, p.row.entriesOffset, p.row.entriesLength, &value)) p.entryCount = value;
    return kOk;
}

int32_t acceptAnyVersion(AamvaParser&) { return kOk; }

int32_t requireVersionInRange(AamvaParser& p) {
    const int64_t version = p.version;
    return version >= p.row.minVersion && version <= p.row.expectedVersion ? kOk : kErrVersion;
}

int32_t readNumberedDirectory(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry,
                              const NumberedDirectory& layout) {
    if (payload.data == nullptr || directory.data == nullptr || entry == nullptr) return kErrInvalidArgument;
    *entry = SubfileEntry{};
    if (directory.length < layout.minLength) return kErrDirectory;
    readSubfileType(p, directory, entry);
    int32_t offset = 0;
    if (!readHeaderNumber(directory, static_cast<uint32_t>(layout.offsetAt),
                          static_cast<uint32_t>(layout.offsetDigits), &offset)) {
        return kErrDirectory;
    }
    int32_t start = findElementStart(payload, offset + layout.searchShift);
    if (layout.alignToDigits) start = alignToDigits(payload, start);
    if (layout.backOffLetter && !isDigitAt(payload, start)) start -= 1;
    if (start < 0 || start > payload.length) return kErrDirectory;
    entry->offset = start;
    entry->length = subfileLength(payload, directory, start, layout.lengthAt, layout.lengthDigits, layout.lengthShift);
    return kOk;
}

int32_t readDirectoryTypeOnly(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry) {
    if (payload.data == nullptr || directory.data == nullptr || entry == nullptr) return kErrInvalidArgument;
    *entry = SubfileEntry{};
    if (directory.length < 2) return kErrDirectory;
    readSubfileType(p, directory, entry);
    return kOk;
}

int32_t readDirectoryFixed(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry,
                           int32_t offset) {
    if (int32_t status = readDirectoryTypeOnly(p, payload, directory, entry)) return status;
    entry->offset = offset;
    entry->length = payload.length - offset;
    return kOk;
}

int32_t readDirectorySearchFrom26(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry) {
    if (int32_t status = readDirectoryTypeOnly(p, payload, directory, entry)) return status;
    const int32_t offset = findDataStart(payload, 26);
    if (offset < 0 || offset > payload.length) return kErrDirectory;
    entry->offset = offset;
    entry->length = payload.length - offset;
    return kOk;
}

int32_t locateSlDirectory(AamvaParser& p, TextSpan payload, TextSpan* directory) {
    return aamvaLocateDirectory(p, payload, directory, isSlRecord);
}

int32_t readSlDirectory(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry) {
    if (payload.data == nullptr || directory.data == nullptr || entry == nullptr) return kErrInvalidArgument;
    *entry = SubfileEntry{};
    if (directory.length <= 9) return kErrDirectory;
    if (isSlRecord(directory.data)) {
        entry->type = 1;
        setFieldLiteral(p.record, field::documentType, "DL");  // deliberately "DL", not "SL"
    }
    int32_t offset = 0;
    if (!readHeaderNumber(directory, 2, 4, &offset)) return kErrDirectory;
    const int64_t at = static_cast<int64_t>(directory.data - payload.data) + offset;
    if (at < 0 || at >= payload.length) return kErrDirectory;
    int32_t start = static_cast<int32_t>(at) + 12;
    if (payload.length > start && isDigitAt(payload, start)) start += 1;
    int32_t length = 0;
    if (!readHeaderNumber(directory, 6, 4, &length) || length < 0) return kErrSubfileLength;
    const int32_t rest = payload.length - start;
    entry->offset = start;
    entry->length = length < rest ? length : rest;
    return kOk;
}

int32_t readOwnDirectory(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry) {
    if (payload.data == nullptr || directory.data == nullptr || entry == nullptr) return kErrInvalidArgument;
    *entry = SubfileEntry{};
    if (directory.length < 2 || !isSubfileType(directory.data)) return kErrDirectory;
    readSubfileType(p, directory, entry);
    const char* type = entry->type == 1 ? "DL" : "ID";
    int32_t at = static_cast<int32_t>(directory.data - payload.data) + (entry->type == 1 ? 2 : 1);
    if (payload.length - at < 3) return kErrDirectory;
    while (payload.length - at > 2) {
        if (payload.data[at] == type[0] && payload.data[at + 1] == type[1]) {
            entry->offset = at;
            entry->length = payload.length - at;
            return kOk;
        }
        ++at;
    }
    return kErrDirectory;
}

int32_t selectPlain(AamvaParser&, TextSpan payload, const SubfileEntry* entry, TextSpan* data) {
    if (payload.data == nullptr || entry == nullptr || data == nullptr || entry->offset < 0 || entry->length < 0 ||
        static_cast<int64_t>(entry->offset) + entry->length > payload.length) {
        return kErrInvalidArgument;
    }
    *data = TextSpan{payload.data + entry->offset, entry->length};
    return kOk;
}

int32_t selectDroppingType(AamvaParser& p, TextSpan payload, const SubfileEntry* entry, TextSpan* data) {
    if (int32_t status = selectPlain(p, payload, entry, data)) return status;
    if (data->length >= 2 && isSubfileType(data->data)) spanSkip(data, 2);
    return kOk;
}

int32_t loopOverTable(AamvaParser& p, TextSpan data, const char* delimiters, const AamvaElementTable& elements) {
    const PairEntry* table = elements.pairs;
    int32_t tableSize = elements.count;
    // The last token of every pair's id, found in one walk over the data; then the pairs
    // are applied in table order to the slots still empty.
    constexpr int32_t kMaxPairs = 128;
    if (tableSize > kMaxPairs) tableSize = kMaxPairs;
    TextSpan last[kMaxPairs] = {};
    TextSpan rest = data;
    TextSpan token;
    while (rest.data != nullptr && rest.length > 0 && nextToken(rest, &token, &rest, delimiters, 0)) {
        if (token.length < 3) continue;
        const char id[4] = {token.data[0], token.data[1], token.data[2], '\0'};
        const uint32_t key = elementKey(id);
        const TextSpan value{token.data + 3, token.length - 3};
        if (elements.index == nullptr) {
            for (int32_t i = 0; i < tableSize; ++i) {
                if (table[i].key == key) last[i] = value;
            }
            continue;
        }
        const ElementSlot& slot = findElementSlot(*elements.index, key);
        for (int32_t i = 0; i < slot.count; ++i) {
            if (slot.positions[i] < tableSize) last[slot.positions[i]] = value;
        }
    }
    for (int32_t i = 0; i < tableSize; ++i) {
        const FieldId id = static_cast<FieldId>(table[i].value);
        if (fieldMissing(p.record, id) == 0 || last[i].data == nullptr || last[i].length < 1) continue;
        if (p.elementStore != nullptr) p.elementStore(p, id, last[i]);
    }
    return kOk;
}

int32_t storeReorderedDate(AamvaParser& p, FieldId id, TextSpan value) {
    if (!isDateField(id)) return aamvaElementStore(p, id, value);
    trimIf(&value, isBlankOrNul);
    return storeMonthFirstDate(p, id, value);
}

int32_t storeReorderedDateMovingHeight(AamvaParser& p, FieldId id, TextSpan value) {
    // This layout's values also carry stray bytes outside the printable range at their ends.
    trimIf(&value, isBlankOrNul);
    trimIf(&value, isNotPrintableCode);
    if (id == field::heightCentimeters) id = field::heightAlt;
    return storeReorderedDate(p, id, value);
}

int32_t refuseNorthCarolina(const ParsedRecord* record) {
    return jurisdictionIsNorthCarolina(record) ? kErrJurisdictionIsNc : kOk;
}

int32_t requireNorthCarolina(const ParsedRecord* record) {
    if (jurisdictionIsNorthCarolina(record)) return kOk;
    TextSpan iin;
    if (readField(record, field::iin, &iin) != kOk) return kErrJurisdictionNotNc;
    const char* code = jurisdictionCodeForIin(iin);
    return code != nullptr && std::strcmp(code, "NC") == 0 ? kOk : kErrJurisdictionNotNc;
}

int32_t requireCanada(const ParsedRecord* record) {
    char code[8];
    if (getCountryCode(record, code, sizeof code) != kOk) return kErrNotRecognised;
    return std::strcmp(code, "CAN") == 0 ? kOk : kErrNotRecognised;
}

}  // namespace orvane
