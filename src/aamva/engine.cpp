#include "aamva/engine.h"

#include <algorithm>
#include <cstring>

#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

inline constexpr int32_t kDirectoryRecordLength = 10;

bool startsWith(TextSpan span, const char* prefix) {
    const int32_t n = static_cast<int32_t>(std::strlen(prefix));
    return span.data != nullptr && span.length >= n && std::memcmp(span.data, prefix, static_cast<size_t>(n)) == 0;
}

bool allLetters(const char* text, int32_t n) {
    return runLength(TextSpan{text, n}, 0, isAsciiAlpha, n) == n;
}

bool isNumericHeaderChar(char c) {
    return isAsciiDigit(static_cast<unsigned char>(c)) || isAsciiSpace(static_cast<unsigned char>(c)) ||
           c == '+' || c == '-';
}

// The default store, called directly rather than through the step.
ORVANE_ALWAYS_INLINE void storeTrimmedElement(AamvaParser& p, FieldId id, TextSpan value) {
    trimIf(&value, isBlankOrNul);
    storeFieldValue(p.record, id, value);
}

// Applies every pair of the key, in table order: through the table's index when it has
// one, else by walking the table.
ORVANE_ALWAYS_INLINE void storeElement(AamvaParser& p, uint32_t key, TextSpan value, const AamvaElementTable& table) {
    if (p.elementStore == nullptr) return;
    if (table.index == nullptr) {
        for (int32_t i = 0; i < table.count; ++i) {
            if (table.pairs[i].key == key) p.elementStore(p, static_cast<FieldId>(table.pairs[i].value), value);
        }
        return;
    }
    const ElementSlot& slot = findElementSlot(*table.index, key);
    for (int32_t i = 0; i < slot.count; ++i) {
        const FieldId id = static_cast<FieldId>(table.pairs[slot.positions[i]].value);
        if (p.elementStore == aamvaElementStore) {
            storeTrimmedElement(p, id, value);
        } else {
            p.elementStore(p, id, value);
        }
    }
}

}  // namespace

bool isSubfileType(const char* at) {
    return (at[0] == 'D' && at[1] == 'L') || (at[0] == 'I' && at[1] == 'D');
}

char payloadByte(TextSpan payload, int32_t index) {
    if (payload.data == nullptr || index < 0 || index >= payload.length) return '\0';
    return payload.data[index];
}

bool readHeaderNumber(TextSpan payload, uint32_t offset, uint32_t length, int32_t* value) {
    // At most 15 bytes, and only those before a NUL.
    const uint32_t n = length < 15 ? length : 15;
    const char* field = payload.data + offset;
    if (n <= 2 && allDigits(field, static_cast<int32_t>(n))) {
        // The usual one or two digits.
        *value = n == 0 ? 0 : n == 1 ? field[0] - '0' : (field[0] - '0') * 10 + (field[1] - '0');
        return true;
    }
    uint32_t end = 0;
    for (; end < n && field[end] != '\0'; ++end) {
        if (!isNumericHeaderChar(field[end])) return false;
    }
    const int64_t number = readLeadingInteger(TextSpan{field, static_cast<int32_t>(end)});
    *value = static_cast<int32_t>(number > INT32_MAX ? INT32_MAX : number < -INT32_MAX ? -INT32_MAX : number);
    return true;
}

int32_t findDataStart(TextSpan payload, int32_t fallback) {
    if (payload.data == nullptr || payload.length <= 12) return fallback;
    // Candidates are found by the "D" or "I" of their subfile type, 8 bytes in.
    const int32_t last = payload.length - 13;
    for (int32_t i = 0; i <= last; ++i) {
        i += findEitherByte(payload.data + i + 8, last - i + 1, 'D', 'I');
        if (i > last) break;
        const char* at = payload.data + i;
        if (isSubfileType(at + 8) && allDigits(at, 8) && allLetters(at + 10, 3)) return i + 10;
    }
    return fallback;
}

int32_t alignToDigits(TextSpan payload, int32_t start) {
    // Deliberately asymmetric: a digit at the start moves forward one byte, and a digit
    // two bytes back (but not one) moves back one.
    int32_t s = isAsciiDigit(static_cast<unsigned char>(payloadByte(payload, start))) ? start + 1 : start;
    if (s > 1 && !isAsciiDigit(static_cast<unsigned char>(payloadByte(payload, s - 1))) &&
        isAsciiDigit(static_cast<unsigned char>(payloadByte(payload, s - 2)))) {
        s -= 1;
    }
    return s;
}

int32_t findElementStart(TextSpan payload, int32_t n) {
    const int32_t limit = n < payload.length ? n : payload.length;
    const int32_t found = spanFind(TextSpan{payload.data, limit < 0 ? 0 : limit}, makeSpan("DLDAA"));
    return found >= 0 ? found + 2 : n;
}

void readSubfileType(AamvaParser& p, TextSpan directory, SubfileEntry* entry) {
    if (startsWith(directory, "DL")) {
        entry->type = 1;
        setFieldLiteral(p.record, field::documentType, "DL");
    } else if (startsWith(directory, "ID")) {
        entry->type = 2;
        setFieldLiteral(p.record, field::documentType, "ID");
    }
}

int32_t aamvaMainStep(AamvaParser& p, const char* payload, int32_t length) {
    if (payload == nullptr || length < 0) return kErrInvalidArgument;
    const TextSpan span{payload, length};
    if (int32_t status = runStep(p.headerStep, p, span)) return status;
    if (int32_t status = runStep(p.headerCheck, p, span)) return status;
    if (int32_t status = runStep(p.bodyStep, p, span)) return status;
    defaultToLicence(p.record);
    return kOk;
}

int32_t aamvaHeaderStep(AamvaParser& p, TextSpan payload) {
    return aamvaReadHeader(p, payload, true);
}

int32_t aamvaReadHeader(AamvaParser& p, TextSpan payload, bool separatorsFromPayload) {
    if (payload.data == nullptr || payload.length == 0) return kErrInvalidArgument;
    if (payload.length <= static_cast<int64_t>(p.row.headerLength)) return kErrPayloadTooShort;
    if (payload.data[0] != '@') return kErrNoAtSign;
    p.position = static_cast<int32_t>(p.row.headerLength);
    if (separatorsFromPayload) {
        p.dataElementSeparator = payloadByte(payload, static_cast<int32_t>(p.row.dataElementSeparatorPos));
        p.recordSeparator = payloadByte(payload, static_cast<int32_t>(p.row.recordSeparatorPos));
        p.segmentTerminator = payloadByte(payload, static_cast<int32_t>(p.row.segmentTerminatorPos));
    } else {
        p.dataElementSeparator = p.recordSeparator = p.segmentTerminator = '\n';
    }
    if (int32_t status = runStep(p.versionStep, p, payload)) return status;
    if (int32_t status = runStep(p.entriesStep, p, payload)) return status;
    if (p.entryCount < 1) p.entryCount = 1;
    return runStep(p.issuerStep, p, payload);
}

int32_t aamvaVersionStep(AamvaParser& p, TextSpan payload) {
    if (payload.length < static_cast<int64_t>(p.row.versionOffset) + p.row.versionLength) return kErrPayloadTooShort;
    int32_t value = 0;
    if (!readHeaderNumber(payload, p.row.versionOffset, p.row.versionLength, &value)) return kErrVersion;
    p.version = value;
    return runStep(p.versionCheck, p);
}

int32_t aamvaEntriesStep(AamvaParser& p, TextSpan payload) {
    if (payload.length < static_cast<int64_t>(p.row.entriesOffset) + p.row.entriesLength) return kErrPayloadTooShort;
    int32_t value = 0;
    if (!readHeaderNumber(payload, p.row.entriesOffset, p.row.entriesLength, &value)) return kErrEntries;
    p.entryCount = value;
    return kOk;
}

int32_t aamvaIssuerStep(AamvaParser& p, TextSpan payload) {
    if (payload.length < static_cast<int64_t>(p.row.iinOffset) + p.row.iinLength) return kErrPayloadTooShort;
    TextSpan iin{payload.data + p.row.iinOffset, static_cast<int32_t>(p.row.iinLength)};
    trimSet(&iin, " \n\t\r");
    setField(p.record, field::iin, iin);
    return kOk;
}

int32_t aamvaVersionCheck(AamvaParser& p) {
    return p.version == static_cast<int64_t>(p.row.expectedVersion) ? kOk : kErrVersion;
}

int32_t aamvaBodyStep(AamvaParser& p, TextSpan payload) {
    SubfileEntry entry{};
    if (p.directoryLocator != nullptr) {
        TextSpan directory{payload.data, 0};
        if (int32_t status = p.directoryLocator(p, payload, &directory)) return status;
        if (int32_t status = runStep(p.directoryReader, p, payload, directory, &entry)) return status;
    }
    TextSpan data{payload.data, 0};
    if (int32_t status = runStep(p.subfileSelector, p, payload, &entry, &data)) return status;
    return runStep(p.elementStep, p, data);
}

int32_t aamvaDirectoryLocator(AamvaParser& p, TextSpan payload, TextSpan* directory) {
    return aamvaLocateDirectory(p, payload, directory, isSubfileType);
}

int32_t aamvaLocateDirectory(AamvaParser& p, TextSpan payload, TextSpan* directory,
                             bool (*isRecordStart)(const char* record)) {
    if (payload.data == nullptr || directory == nullptr) return kErrInvalidArgument;
    int32_t start = p.position < payload.length ? p.position : payload.length;
    if (p.entryCount >= 1 && payload.length - start >= kDirectoryRecordLength) {
        int32_t examined = 0;
        while (examined < p.entryCount && payload.length - start >= kDirectoryRecordLength &&
               !isRecordStart(payload.data + start)) {
            start += kDirectoryRecordLength;
            ++examined;
        }
    }
    *directory = TextSpan{payload.data + start, payload.length - start};
    return kOk;
}

int32_t aamvaDirectoryReader(AamvaParser& p, TextSpan payload, TextSpan directory, SubfileEntry* entry) {
    if (payload.data == nullptr || directory.data == nullptr || entry == nullptr) return kErrInvalidArgument;
    *entry = SubfileEntry{};
    readSubfileType(p, directory, entry);
    int32_t start = findDataStart(payload, -1);
    if (start == -1) {
        int32_t offset = 0;
        if (directory.length < 6 || !readHeaderNumber(directory, 2, 4, &offset)) return kErrDirectory;
        start = findElementStart(payload, offset);
    }
    if (start < 0 || start > payload.length) return kErrDirectory;
    entry->offset = findDataStart(payload, alignToDigits(payload, start));
    entry->length = payload.length - entry->offset;
    return kOk;
}

int32_t aamvaSubfileSelector(AamvaParser&, TextSpan payload, const SubfileEntry* entry, TextSpan* data) {
    if (payload.data == nullptr || entry == nullptr || data == nullptr || entry->offset < 0 ||
        entry->length < 0 || static_cast<int64_t>(entry->offset) + entry->length > payload.length) {
        return kErrInvalidArgument;
    }
    *data = TextSpan{payload.data + entry->offset, entry->length};
    if (data->length >= 2 && isSubfileType(data->data)) {
        spanSkip(data, 2);
        if (data->length < 1) return kOk;
    }
    // Drops an "L" even when no "DL"/"ID" went before it; kept on purpose.
    if (data->length >= 1 && data->data[0] == 'L') spanSkip(data, 1);
    return kOk;
}

int32_t aamvaElementLoop(AamvaParser& p, TextSpan data, const char* delimiters, const AamvaElementTable& table) {
    const char* set = delimiters != nullptr ? delimiters : "";
    const int32_t kinds = set[0] == '\0' ? 0 : set[1] == '\0' ? 1 : set[2] == '\0' ? 2 : 3;
    if (kinds < 3) {
        // The tokens nextToken would cut, with the delimiters read once for the loop.
        const char first = set[0];
        const char second = kinds == 2 ? set[1] : set[0];
        const char* at = data.data;
        int32_t left = data.length;
        while (at != nullptr && left > 0) {
            const int32_t end = kinds == 0 ? left : findEitherByte(at, left, first, second);
            const char* token = at;
            const int32_t next = end < left ? end + 1 : end;
            at += next;
            left -= next;
            if (end < 3) continue;
            const uint32_t key = static_cast<uint32_t>(static_cast<unsigned char>(token[0])) << 16 |
                                 static_cast<uint32_t>(static_cast<unsigned char>(token[1])) << 8 |
                                 static_cast<uint32_t>(static_cast<unsigned char>(token[2]));
            storeElement(p, key, TextSpan{token + 3, end - 3}, table);
        }
        return kOk;
    }
    TextSpan rest = data;
    TextSpan token;
    while (rest.data != nullptr && rest.length > 0 && nextToken(rest, &token, &rest, delimiters, 0)) {
        if (token.length < 3) continue;
        const uint32_t key = static_cast<uint32_t>(static_cast<unsigned char>(token.data[0])) << 16 |
                             static_cast<uint32_t>(static_cast<unsigned char>(token.data[1])) << 8 |
                             static_cast<uint32_t>(static_cast<unsigned char>(token.data[2]));
        const TextSpan value{token.data + 3, token.length - 3};
        storeElement(p, key, value, table);
    }
    return kOk;
}

int32_t aamvaElementStore(AamvaParser& p, FieldId id, TextSpan value) {
    storeTrimmedElement(p, id, value);
    return kOk;
}

int32_t initAamvaParser(AamvaParser& p, uint32_t formatNumber, ParsedRecord* record, const void* context) {
    std::memset(&p, 0, sizeof p);
    p.record = record;
    p.context = context;
    const AamvaVersionRow* row = findAamvaVersionRow(formatNumber);
    if (row == nullptr) return kErrUnknownFormat;
    p.row = *row;
    p.mainStep = aamvaMainStep;
    p.headerStep = aamvaHeaderStep;
    p.versionStep = aamvaVersionStep;
    p.entriesStep = aamvaEntriesStep;
    p.issuerStep = aamvaIssuerStep;
    p.versionCheck = aamvaVersionCheck;
    p.bodyStep = aamvaBodyStep;
    p.directoryLocator = aamvaDirectoryLocator;
    p.directoryReader = aamvaDirectoryReader;
    p.subfileSelector = aamvaSubfileSelector;
    p.elementLoop = aamvaElementLoop;
    p.elementStore = aamvaElementStore;
    return kOk;
}

int32_t findAamvaHeader(const char* text, int32_t length, TextSpan* version) {
    if (text == nullptr || length < 0) return kErrInvalidArgument;
    if (length < 14 || text[0] != '@') return kErrNoAnswer;
    for (int32_t p = 1; p + 12 < length; ++p) {
        const bool marker = std::memcmp(text + p, "ANSI", 4) == 0 || std::memcmp(text + p, "AAMVA", 5) == 0;
        if (marker && allDigits(text + p + 5, 8)) {
            if (version != nullptr) *version = TextSpan{text + p + 11, 2};
            return kOk;
        }
    }
    return kErrNoAnswer;
}

bool aamvaVersionMayPass(const TextFacts& f, uint32_t formatNumber, VersionRule rule) {
    const AamvaVersionRow* row = findAamvaVersionRow(formatNumber);
    if (row == nullptr || f.length <= static_cast<int64_t>(row->headerLength) || f.at(0) != '@') return false;
    if (rule == VersionRule::Any) return true;
    if (f.length < static_cast<int64_t>(row->versionOffset) + row->versionLength) return false;
    int32_t version = 0;
    const char* digits = f.text + row->versionOffset;
    if (row->versionLength == 2 && isAsciiDigit(static_cast<unsigned char>(digits[0])) &&
        isAsciiDigit(static_cast<unsigned char>(digits[1]))) {
        version = (digits[0] - '0') * 10 + (digits[1] - '0');  // the usual two digits, as readHeaderNumber reads them
    } else if (!readHeaderNumber(TextSpan{f.text, f.length}, row->versionOffset, row->versionLength, &version)) {
        return false;
    }
    if (rule == VersionRule::Exact) return version == static_cast<int64_t>(row->expectedVersion);
    return version >= static_cast<int64_t>(row->minVersion) && version <= static_cast<int64_t>(row->expectedVersion);
}

int32_t runAamvaParser(AamvaParser& p, const char* payload, int32_t length) {
    return runStep(p.mainStep, p, payload, length);
}

}  // namespace orvane
