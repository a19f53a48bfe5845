#include "engine/record.h"

#include <bit>
#include <cstring>
#include <iterator>

#include "engine/status.h"

namespace orvane {
namespace {

// Adds a terminator after the last value while room remains for one more value.
void terminateValue(ParsedRecord* record) {
    if (record->workUsed < record->workCapacity - 1) {
        record->workBuffer[record->workUsed] = '\0';
        record->workUsed += 1;
    }
}

FieldSlot* clearSlot(FieldSlot* slot) {
    slot->data = nullptr;
    slot->length = 0;
    return slot;
}

// Runs one copy into the free part of the work buffer and commits its result to the
// slot. The copy returns the bytes it used; valueLength maps that to the slot length.
template <typename Copy, typename ValueLength>
FieldSlot* storeCopy(ParsedRecord* record, FieldId id, Copy copy, ValueLength valueLength) {
    if (record == nullptr || id >= kFieldCount) return nullptr;
    FieldSlot* slot = &record->fields[id];
    markTouched(record, id);
    if (record->workBuffer == nullptr) return clearSlot(slot);
    const int32_t room = record->workCapacity - record->workUsed;
    char* dst = record->workBuffer + record->workUsed;
    int32_t used = room > 0 ? copy(dst, room) : 0;
    if (used > room) used = room;
    const int32_t length = used > 0 ? valueLength(used) : 0;
    if (length < 1) return clearSlot(slot);
    slot->data = dst;
    slot->length = length;
    record->workUsed += used;
    terminateValue(record);
    return slot;
}

int32_t sameLength(int32_t used) { return used; }

}  // namespace

int32_t copyFiltered(char* dst, int32_t cap, TextSpan span, const char* replaceSet,
                     const char* collapseSet, char replaceChar) {
    if (dst == nullptr || cap < 1 || !spanUsable(span)) return 0;
    const bool replacing = hasMembers(replaceSet);
    const bool collapsing = hasMembers(collapseSet);
    if (!replacing && !collapsing) {
        // memmove: callers may copy a text onto itself, a little earlier in the buffer.
        const int32_t n = span.length < cap ? span.length : cap;
        std::memmove(dst, span.data, static_cast<size_t>(n));
        return n;
    }
    return copyBySets(dst, cap, span, byteSetOf(replacing ? replaceSet : nullptr), byteSetOf(collapsing ? collapseSet : nullptr),
                      replaceChar);
}

int32_t joinSpans(char* dst, int32_t cap, const TextSpan* spans, int32_t count,
                  const char* separator, const char* replaceSet, const char* collapseSet,
                  char replaceChar) {
    if (dst == nullptr || cap < 1 || spans == nullptr) return 0;
    int32_t written = 0;
    bool first = true;
    for (int32_t i = 0; i < count && written < cap; ++i) {
        if (!spanUsable(spans[i])) continue;
        if (!first && separator != nullptr) {
            for (const char* s = separator; *s != '\0' && written < cap; ++s) dst[written++] = *s;
            if (written >= cap) break;
        }
        first = false;
        written += copyFiltered(dst + written, cap - written, spans[i], replaceSet, collapseSet,
                                replaceChar);
    }
    return written;
}

int32_t joinSpansZ(char* dst, int32_t cap, const TextSpan* spans, int32_t count,
                   const char* separator, const char* replaceSet, const char* collapseSet,
                   char replaceChar) {
    if (dst == nullptr || cap < 1) return 0;
    const int32_t written =
        joinSpans(dst, cap - 1, spans, count, separator, replaceSet, collapseSet, replaceChar);
    if (written < 1) return 0;
    dst[written] = '\0';
    return written + 1;
}


FieldSlot* setFieldBySets(ParsedRecord* record, FieldId id, TextSpan span, const ByteSet& replaced,
                          const ByteSet& collapsed, char replaceChar) {
    return storeCopy(
        record, id,
        [&](char* dst, int32_t room) {
            if (dst == nullptr || room < 1 || !spanUsable(span)) return 0;
            return copyBySets(dst, room, span, replaced, collapsed, replaceChar);
        },
        sameLength);
}

FieldSlot* setFieldJoined(ParsedRecord* record, FieldId id, const TextSpan* spans,
                          int32_t count, const char* separator, const char* replaceSet,
                          const char* collapseSet, char replaceChar) {
    // Deliberately keeps the joined copy's own terminator in the buffer and then adds
    // the usual one, so a joined value occupies its length plus two bytes.
    return storeCopy(
        record, id,
        [&](char* dst, int32_t room) {
            return joinSpansZ(dst, room, spans, count, separator, replaceSet, collapseSet,
                              replaceChar);
        },
        [](int32_t used) { return used - 1; });
}

FieldSlot* setFieldMapped(ParsedRecord* record, FieldId id, TextSpan span, CharTest dropTest,
                          CharTest collapseTest, char replaceChar) {
    return storeCopy(
        record, id,
        [&](char* dst, int32_t room) {
            return copyMapped(dst, room, span, dropTest, collapseTest, replaceChar);
        },
        sameLength);
}

FieldSlot* setFieldProduced(ParsedRecord* record, FieldId id, const void* context,
                            FieldProducer producer) {
    if (producer == nullptr) return nullptr;
    return storeCopy(
        record, id, [&](char* dst, int32_t room) { return producer(context, dst, room); },
        sameLength);
}

FieldSlot* setFieldLiteral(ParsedRecord* record, FieldId id, const char* text) {
    if (text == nullptr) return nullptr;
    return setField(record, id, makeSpan(text));
}

void setFieldLiteralIfMissing(ParsedRecord* record, FieldId id, const char* text) {
    if (fieldMissing(record, id) != 0) setFieldLiteral(record, id, text);
}

FieldSlot* setFieldDate(ParsedRecord* record, FieldId id, const DateValue* date) {
    if (record == nullptr || date == nullptr || id >= kFieldCount) return nullptr;
    if (record->workBuffer == nullptr) return nullptr;
    // Unlike the other setters, a date that does not fit leaves the slot as it was.
    if (record->workCapacity - record->workUsed < 8) return nullptr;
    char* dst = record->workBuffer + record->workUsed;
    // A component wider than its field writes nothing and leaves the zero bytes of the
    // reset buffer in its place, deliberately.
    const DateValue& d = *date;
    if (d.year >= 0 && d.year <= 9999 && d.month >= 0 && d.month <= 99 && d.day >= 0 && d.day <= 99) {
        const char digits[8] = {static_cast<char>('0' + d.year / 1000), static_cast<char>('0' + d.year / 100 % 10),
                                static_cast<char>('0' + d.year / 10 % 10), static_cast<char>('0' + d.year % 10),
                                static_cast<char>('0' + d.month / 10),     static_cast<char>('0' + d.month % 10),
                                static_cast<char>('0' + d.day / 10),       static_cast<char>('0' + d.day % 10)};
        std::memcpy(dst, digits, 8);
    } else {
        formatInt(date->year, dst, 4, 1);
        formatInt(date->month, dst + 4, 2, 1);
        formatInt(date->day, dst + 6, 2, 1);
    }
    FieldSlot* slot = &record->fields[id];
    markTouched(record, id);
    slot->data = dst;
    slot->length = 8;
    record->workUsed += 8;
    terminateValue(record);
    return slot;
}

int32_t countFilledFields(const ParsedRecord* record) {
    int32_t filled = 0;
    for (int word = 0; word < static_cast<int>(std::size(record->touched)); ++word) {
        for (uint64_t bits = record->touched[word]; bits != 0; bits &= bits - 1) {
            filled += spanUsable(record->fields[word * 64 + std::countr_zero(bits)]) ? 1 : 0;
        }
    }
    return filled;
}

int32_t fieldMissing(const ParsedRecord* record, FieldId id) {
    // Ids beyond the record count as missing rather than being read out of bounds.
    if (record == nullptr || id >= kFieldCount) return -1;
    return spanUsable(record->fields[id]) ? 0 : -1;
}

int32_t resetRecord(ParsedRecord* record) {
    if (record == nullptr || record->workBuffer == nullptr || record->workCapacity < 1) {
        return kErrInvalidArgument;
    }
    record->formatGroup = kNoFormatGroup;
    record->formatId = kNoFormatId;
    record->nameRule.rule = nullptr;
    for (int word = 0; word < static_cast<int>(std::size(record->touched)); ++word) {
        for (uint64_t bits = record->touched[word]; bits != 0; bits &= bits - 1) {
            record->fields[word * 64 + std::countr_zero(bits)] = FieldSlot{nullptr, 0};
        }
        record->touched[word] = 0;
    }
    // Values are only ever written below workUsed, so clearing that part leaves the whole
    // buffer reading as zero bytes.
    const int32_t written = record->workUsed < record->workCapacity ? record->workUsed : record->workCapacity;
    std::memset(record->workBuffer, 0, static_cast<size_t>(written > 0 ? written : 0));
    record->workUsed = 0;
    return kOk;
}

int32_t attachWorkBuffer(ParsedRecord* record, char* buffer, int32_t capacity) {
    if (record == nullptr || buffer == nullptr || capacity < 1) return kErrInvalidArgument;
    record->workBuffer = buffer;
    record->workCapacity = capacity;
    std::memset(buffer, 0, static_cast<size_t>(capacity));
    // A record met for the first time may hold anything: every slot is cleared.
    std::memset(record->fields, 0, sizeof record->fields);
    std::memset(record->touched, 0, sizeof record->touched);
    record->nameRule = NameRuleMemo{};
    record->workUsed = 0;
    return resetRecord(record);
}

void sanitizeWorkBuffer(ParsedRecord* record) {
    if (record == nullptr || record->workBuffer == nullptr) return;
    char* buffer = record->workBuffer;
    const int32_t used = record->workUsed < record->workCapacity ? record->workUsed : record->workCapacity;
    int32_t i = 0;
    // Eight bytes at a time while they hold only printable bytes and terminators.
    constexpr uint64_t kOnes = 0x0101010101010101ull;
    constexpr uint64_t kHigh = 0x8080808080808080ull;
    for (; i + 8 <= used; i += 8) {
        uint64_t word;
        std::memcpy(&word, buffer + i, 8);
        const uint64_t low = word & ~kHigh;
        const uint64_t below20 = ~(low + (0x80 - 0x20) * kOnes) & kHigh;  // high bit: low 7 bits < 0x20
        const uint64_t is7f = ~((low ^ 0x7F * kOnes) + 0x7F * kOnes) & kHigh;  // high bit: low 7 bits == 0x7F
        const uint64_t zero = ~((word & ~kHigh) + 0x7F * kOnes) & ~word & kHigh;  // high bit: byte == 0
        if ((((below20 & ~zero) | is7f | word) & kHigh) != 0) break;  // the byte loop below rewrites them
    }
    for (; i < used; ++i) {
        const unsigned char c = static_cast<unsigned char>(buffer[i]);
        if (c != 0 && (c < 0x20 || c > 0x7E)) buffer[i] = ' ';
    }
}

void spanSkip(TextSpan* span, int32_t n) {
    if (span == nullptr || span->data == nullptr || span->length < 1 || n < 1) return;
    if (n < span->length) {
        span->data += n;
        span->length -= n;
        return;
    }
    // Deliberately leaves data on the span's last character rather than past its end.
    span->data += span->length - 1;
    span->length = 0;
}

int32_t formatInt(int64_t value, char* dst, int32_t width, int zeroPad) {
    if (dst == nullptr || width < 1) return 0;
    const bool negative = value < 0;
    uint64_t magnitude = negative ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    int32_t digits = 1;
    for (uint64_t rest = magnitude / 10; rest != 0; rest /= 10) ++digits;
    const int32_t needed = digits + (negative ? 1 : 0);
    if (needed > width) return 0;
    const int32_t length = zeroPad ? width : needed;
    std::memset(dst, '0', static_cast<size_t>(length));
    int32_t pos = length - 1;
    do {
        dst[pos--] = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    if (negative) dst[0] = '-';
    return length;
}

}  // namespace orvane
