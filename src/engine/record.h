// The parsed record and the field store: every reader writes its results here, every
// getter reads them from here. Nothing in this unit allocates; the work buffer belongs
// to the parser handle.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "engine/field_ids.h"
#include "engine/status.h"

namespace orvane {

// A non-owning view of text. Usable when data is set and length >= 1.
struct TextSpan {
    const char* data;
    int32_t length;
};

// A slot is a span into the record's work buffer; filled when usable.
using FieldSlot = TextSpan;

// A calendar date; the time of day is carried for callers that compare with the
// parse time and is not written by the date setter.
struct DateValue {
    int32_t year;
    int32_t month;
    int32_t day;
    int32_t hour;
    int32_t minute;
    int32_t second;
};

struct NameRule;

// The jurisdiction's name rule as the driver found it once the parse was over, with the
// slots it was derived from: every name answer asks for it, and a record changed since
// no longer matches them and derives it afresh.
struct NameRuleMemo {
    const NameRule* rule;  // null: none kept
    FieldSlot iin;
    FieldSlot jurisdictionCode;
    FieldSlot residenceJurisdictionCode;
};

struct ParsedRecord {
    uint32_t formatGroup;  // 6 after a reset: no format
    uint32_t formatId;     // 68 after a reset: no format
    FieldSlot fields[kFieldCount];
    char* workBuffer;  // not owned
    int32_t workCapacity;
    int32_t workUsed;
    // Bit i: a setter wrote slot i since the last reset. Every other slot is empty, so a
    // reset clears and a count looks at these slots only.
    uint64_t touched[(kFieldCount + 63) / 64];
    NameRuleMemo nameRule;
};

inline void markTouched(ParsedRecord* record, FieldId id) { record->touched[id >> 6] |= uint64_t{1} << (id & 63); }

inline constexpr uint32_t kNoFormatGroup = 6;
inline constexpr uint32_t kNoFormatId = 68;

// One entry of a key-to-value table, such as the AAMVA element tables.
struct PairEntry {
    uint32_t key;
    int32_t value;
};

// A character test; receives the byte as an unsigned value.
using CharTest = int (*)(int c);
// A field worker: writes its answer into buffer and returns 0 or a negative status.
using TextDeriver = int32_t (*)(const ParsedRecord* record, char* buffer, int32_t capacity);
// Writes at most room bytes at dst and returns how many it wrote; bytes past that count
// must be left as they were (zero), since a reset clears only what values occupy.
using FieldProducer = int32_t (*)(const void* context, char* dst, int32_t room);

inline bool spanUsable(TextSpan span) { return span.data != nullptr && span.length >= 1; }
// Membership in a C-string set, as the copy operations' filters test it; the NUL byte is
// never a member. Inline, so that a literal set becomes a few comparisons.
inline bool charInSet(char c, const char* set) {
    for (const char* p = set; *p != '\0'; ++p) {
        if (*p == c) return true;
    }
    return false;
}
inline TextSpan makeSpan(const char* data, int32_t length) { return TextSpan{data, length}; }
// The span of a C string; a null string gives a null span. Inline, so that the length
// of a literal is known where it is written.
inline TextSpan makeSpan(const char* text) {
    if (text == nullptr) return TextSpan{nullptr, 0};
    return TextSpan{text, static_cast<int32_t>(std::strlen(text))};
}

// Copy operations. The plain forms write no terminator and return the characters
// written; the Z forms write at most cap - 1 characters plus a NUL and return
// written + 1, or 0 (writing nothing) when no character was copied.
int32_t copyFiltered(char* dst, int32_t cap, TextSpan span, const char* replaceSet,
                     const char* collapseSet, char replaceChar);
int32_t joinSpans(char* dst, int32_t cap, const TextSpan* spans, int32_t count,
                  const char* separator, const char* replaceSet, const char* collapseSet,
                  char replaceChar);
int32_t joinSpansZ(char* dst, int32_t cap, const TextSpan* spans, int32_t count,
                   const char* separator, const char* replaceSet, const char* collapseSet,
                   char replaceChar);
// Inline, so that the tests of a call are written into its loop.
inline int32_t copyMapped(char* dst, int32_t cap, TextSpan span, CharTest dropTest,
                   CharTest collapseTest, char replaceChar) {
    if (dst == nullptr || cap < 1 || !spanUsable(span)) return 0;
    int32_t written = 0;
    for (int32_t i = 0; i < span.length && written < cap; ++i) {
        char c = span.data[i];
        if (dropTest != nullptr && dropTest(static_cast<unsigned char>(c))) {
            if (replaceChar == '\0') continue;
            c = replaceChar;
        }
        if (collapseTest != nullptr && written > 0 && dst[written - 1] == c &&
            collapseTest(static_cast<unsigned char>(c))) {
            continue;
        }
        dst[written++] = c;
    }
    return written;
}

inline int32_t copyMappedZ(char* dst, int32_t cap, TextSpan span, CharTest dropTest,
                    CharTest collapseTest, char replaceChar) {
    if (dst == nullptr || cap < 1) return 0;
    const int32_t written = copyMapped(dst, cap - 1, span, dropTest, collapseTest, replaceChar);
    if (written < 1) return 0;
    dst[written] = '\0';
    return written + 1;
}



// Whether a C-string set has members.
inline bool hasMembers(const char* set) { return set != nullptr && *set != '\0'; }

// The members of a C-string set as bits, so that a copy tests each byte with one lookup;
// the NUL byte is never a member. Built at compile time for sets known there.
struct ByteSet {
    uint64_t bits[4];
    constexpr bool has(char c) const {
        const unsigned char b = static_cast<unsigned char>(c);
        return (bits[b >> 6] >> (b & 63) & 1) != 0;
    }
};
constexpr ByteSet byteSetOf(const char* set) {
    ByteSet s{};
    for (const char* p = set; p != nullptr && *p != '\0'; ++p) {
        const unsigned char b = static_cast<unsigned char>(*p);
        s.bits[b >> 6] |= uint64_t{1} << (b & 63);
    }
    return s;
}

// A set as one flag per byte value: a byte is tested with one load, for the loops over
// short texts that test every byte. Built at compile time.
struct ByteTable {
    bool member[256];
    constexpr bool has(char c) const { return member[static_cast<unsigned char>(c)]; }
};
constexpr ByteTable byteTableOf(const char* set) {
    ByteTable t{};
    for (const char* p = set; p != nullptr && *p != '\0'; ++p) t.member[static_cast<unsigned char>(*p)] = true;
    return t;
}

// copyBySetsZ over tables, for the answers that copy short values.
inline int32_t copyByTablesZ(char* dst, int32_t cap, TextSpan span, const ByteTable& replaced,
                             const ByteTable& collapsed, char replaceChar) {
    if (dst == nullptr || cap < 2 || !spanUsable(span)) return 0;
    int32_t written = 0;
    for (int32_t i = 0; i < span.length && written < cap - 1; ++i) {
        char c = span.data[i];
        if (replaced.has(c)) {
            if (replaceChar == '\0') continue;
            c = replaceChar;
        }
        if (written > 0 && dst[written - 1] == c && collapsed.has(c)) continue;
        dst[written++] = c;
    }
    if (written < 1) return 0;
    dst[written] = '\0';
    return written + 1;
}

// The filtered copy of copyFiltered, for sets as bits: replaced bytes become the
// replacement (or are dropped for NUL), then a byte of the collapse set equal to the
// last written one is left out. dst and cap are valid and the span usable.
inline int32_t copyBySets(char* dst, int32_t cap, TextSpan span, const ByteSet& replaced, const ByteSet& collapsed,
                          char replaceChar) {
    ByteSet special{};
    for (int word = 0; word < 4; ++word) special.bits[word] = replaced.bits[word] | collapsed.bits[word];
    int32_t written = 0;
    for (int32_t i = 0; i < span.length && written < cap; ++i) {
        char c = span.data[i];
        if (!special.has(c)) {
            dst[written++] = c;  // neither replaced nor collapsed
            continue;
        }
        if (replaced.has(c)) {
            if (replaceChar == '\0') continue;
            c = replaceChar;
        }
        if (written > 0 && dst[written - 1] == c && collapsed.has(c)) continue;
        dst[written++] = c;
    }
    return written;
}

// Setters: append the value to the work buffer and point the slot at it. They return
// the slot, or null for a null record or a FieldId above 139. A value that yields no
// character clears the slot.
FieldSlot* setFieldBySets(ParsedRecord* record, FieldId id, TextSpan span, const ByteSet& replaced,
                          const ByteSet& collapsed, char replaceChar);
FieldSlot* setFieldJoined(ParsedRecord* record, FieldId id, const TextSpan* spans,
                          int32_t count, const char* separator, const char* replaceSet,
                          const char* collapseSet, char replaceChar);
FieldSlot* setFieldMapped(ParsedRecord* record, FieldId id, TextSpan span, CharTest dropTest,
                          CharTest collapseTest, char replaceChar);
FieldSlot* setFieldProduced(ParsedRecord* record, FieldId id, const void* context,
                            FieldProducer producer);
FieldSlot* setFieldLiteral(ParsedRecord* record, FieldId id, const char* text);
FieldSlot* setFieldDate(ParsedRecord* record, FieldId id, const DateValue* date);
// Copies n bytes as memmove does; values are short, so most take two loads and two
// stores, all loads first so that overlapping spans still copy right.
inline void moveValueBytes(char* dst, const char* src, int32_t n) {
    if (n >= 8 && n <= 16) {
        uint64_t head;
        uint64_t tail;
        std::memcpy(&head, src, 8);
        std::memcpy(&tail, src + n - 8, 8);
        std::memcpy(dst, &head, 8);
        std::memcpy(dst + n - 8, &tail, 8);
    } else if (n >= 4 && n < 8) {
        uint32_t head;
        uint32_t tail;
        std::memcpy(&head, src, 4);
        std::memcpy(&tail, src + n - 4, 4);
        std::memcpy(dst, &head, 4);
        std::memcpy(dst + n - 4, &tail, 4);
    } else if (n >= 1 && n < 4) {
        const char first = src[0];
        const char middle = src[n / 2];
        const char last = src[n - 1];
        dst[0] = first;
        dst[n / 2] = middle;
        dst[n - 1] = last;
    } else if (n > 16) {
        std::memmove(dst, src, static_cast<size_t>(n));
    }
}

// The Z form of copyBySets, for callers whose sets are built at compile time.
inline int32_t copyBySetsZ(char* dst, int32_t cap, TextSpan span, const ByteSet& replaced, const ByteSet& collapsed,
                           char replaceChar) {
    if (dst == nullptr || cap < 2 || !spanUsable(span)) return 0;
    const int32_t written = copyBySets(dst, cap - 1, span, replaced, collapsed, replaceChar);
    if (written < 1) return 0;
    dst[written] = '\0';
    return written + 1;
}

// copyFilteredZ: the copy with nothing filtered, the usual one, is written out here.
inline int32_t copyFilteredZ(char* dst, int32_t cap, TextSpan span, const char* replaceSet,
                             const char* collapseSet, char replaceChar) {
    const bool filtered = (replaceSet != nullptr && *replaceSet != '\0') || (collapseSet != nullptr && *collapseSet != '\0');
    if (dst == nullptr || cap < 2 || !spanUsable(span)) return 0;
    if (filtered) {
        // The sets of a call with literal strings are built where the call is written.
        return copyBySetsZ(dst, cap, span, byteSetOf(replaceSet), byteSetOf(collapseSet), replaceChar);
    }
    const int32_t n = span.length < cap - 1 ? span.length : cap - 1;
    moveValueBytes(dst, span.data, n);
    dst[n] = '\0';
    return n + 1;
}
inline int32_t copyLiteralZ(char* dst, int32_t cap, const char* text) {
    if (text == nullptr) return 0;
    return copyFilteredZ(dst, cap, makeSpan(text), nullptr, nullptr, '\0');
}

#if defined(__GNUC__)
#define ORVANE_ALWAYS_INLINE inline __attribute__((always_inline))
#else
#define ORVANE_ALWAYS_INLINE inline
#endif

// setField, written into the loops that store most values.
ORVANE_ALWAYS_INLINE FieldSlot* storeFieldValue(ParsedRecord* record, FieldId id, TextSpan span) {
    if (record == nullptr || id >= kFieldCount) return nullptr;
    FieldSlot* slot = &record->fields[id];
    markTouched(record, id);
    int32_t n = spanUsable(span) ? span.length : 0;
    const int32_t room = record->workCapacity - record->workUsed;
    if (n > room) n = room;
    if (record->workBuffer == nullptr || n < 1) {
        slot->data = nullptr;
        slot->length = 0;
        return slot;
    }
    char* dst = record->workBuffer + record->workUsed;
    moveValueBytes(dst, span.data, n);
    slot->data = dst;
    slot->length = n;
    record->workUsed += n;
    // The terminator, while room remains for one more value.
    if (record->workUsed < record->workCapacity - 1) {
        record->workBuffer[record->workUsed] = '\0';
        record->workUsed += 1;
    }
    return slot;
}

// setFieldFromSpan with nothing filtered: the value as it stands.
inline FieldSlot* setField(ParsedRecord* record, FieldId id, TextSpan span) { return storeFieldValue(record, id, span); }

// The value with the bytes of replaceSet replaced and runs of a collapseSet byte made
// one; inline, so that the sets of a call are built where they are known.
inline FieldSlot* setFieldFromSpan(ParsedRecord* record, FieldId id, TextSpan span, const char* replaceSet,
                                   const char* collapseSet, char replaceChar) {
    // Nothing to filter, the common case: a plain copy.
    if (!hasMembers(replaceSet) && !hasMembers(collapseSet)) return setField(record, id, span);
    return setFieldBySets(record, id, span, byteSetOf(replaceSet), byteSetOf(collapseSet), replaceChar);
}
// Stores the text only when the slot is still empty.
void setFieldLiteralIfMissing(ParsedRecord* record, FieldId id, const char* text);
// A reader that found no document type reads a driving licence.
inline void defaultToLicence(ParsedRecord* record) { setFieldLiteralIfMissing(record, field::documentType, "DL"); }

// Readers. The first filled slot of the list; inline, as every answer starts here.
inline int32_t firstFilledField(const ParsedRecord* record, const FieldId* ids, int32_t count,
                                TextSpan* out) {
    if (record == nullptr || ids == nullptr || out == nullptr) return kErrInvalidArgument;
    for (int32_t i = 0; i < count; ++i) {
        if (ids[i] >= kFieldCount) continue;
        const FieldSlot& slot = record->fields[ids[i]];
        if (spanUsable(slot)) {
            *out = slot;
            return kOk;
        }
    }
    return kErrNoneFilled;
}
template <size_t N>
int32_t firstFilledField(const ParsedRecord* record, const FieldId (&ids)[N], TextSpan* out) {
    return firstFilledField(record, ids, static_cast<int32_t>(N), out);
}
// 0 and the slot's span when the one slot is filled, -16 otherwise.
inline int32_t readField(const ParsedRecord* record, FieldId id, TextSpan* out) {
    return firstFilledField(record, &id, 1, out);
}
// 0 when the slot is filled, -1 otherwise (also for an id beyond the record).
int32_t fieldMissing(const ParsedRecord* record, FieldId id);

// Record operations.
int32_t resetRecord(ParsedRecord* record);
// Number of filled slots.
int32_t countFilledFields(const ParsedRecord* record);
int32_t attachWorkBuffer(ParsedRecord* record, char* buffer, int32_t capacity);
void sanitizeWorkBuffer(ParsedRecord* record);

// Span and number helpers of the store.
void spanSkip(TextSpan* span, int32_t n);
int32_t formatInt(int64_t value, char* dst, int32_t width, int zeroPad);

}  // namespace orvane
