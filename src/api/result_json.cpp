#include "api/result_json.h"

#include <cstring>
#include <iterator>

#include "api/java_fields.h"
#include "api/json.h"
#include "engine/check_digits.h"
#include "engine/driver.h"
#include "engine/elements.h"
#include "engine/format_names.h"
#include "engine/registry.h"
#include "fields/dates.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr int32_t kAnswerRoom = 8192;
constexpr int32_t kMostElementIds = 256;

// Writes into room known to be there.
struct UncheckedSink {
    char* at;
    void put(char c) { *at++ = c; }
    void append(const char* bytes, int32_t n) {
        if (n <= 0) return;
        std::memcpy(at, bytes, static_cast<size_t>(n));
        at += n;
    }
};

// Writes what fits and counts everything, so that the caller learns the length needed.
struct JsonSink {
    char* buffer;
    int64_t capacity;
    int64_t length;
    bool firstMember;

    void put(char c) {
        if (length < capacity - 1) buffer[length] = c;
        ++length;
    }
    void append(const char* bytes, int32_t n) {
        if (n <= 0) return;
        const int64_t room = capacity - 1 - length;
        if (room > 0) std::memcpy(buffer + length, bytes, static_cast<size_t>(n < room ? n : room));
        length += n;
    }
    void text(const char* s) { append(s, static_cast<int32_t>(std::strlen(s))); }
    // A string whose every byte could take a six-byte escape, and its quotes, is written
    // without a check per byte when that much room is left.
    void string(TextSpan s) {
        if (s.length >= 0 && length + 6 * static_cast<int64_t>(s.length) + 2 < capacity) {
            UncheckedSink unchecked{buffer + length};
            writeJsonString(s, unchecked);
            length = unchecked.at - buffer;
            return;
        }
        writeJsonString(s, *this);
    }
    void number(int64_t value) {
        char digits[24];
        const int32_t n = formatInt(value, digits, 20, 0);
        for (int32_t i = 0; i < n; ++i) put(digits[i]);
    }
    // Member names are the library's own identifiers, plain ASCII, so they go in unescaped;
    // when the whole member fits it is written without a check per byte.
    void member(const char* name) {
        const int64_t n = static_cast<int64_t>(std::strlen(name));
        if (length + n + 4 < capacity) {
            char* at = buffer + length;
            if (!firstMember) *at++ = ',';
            *at++ = '"';
            std::memcpy(at, name, static_cast<size_t>(n));
            at += n;
            *at++ = '"';
            *at++ = ':';
            length = at - buffer;
            firstMember = false;
            return;
        }
        if (!firstMember) put(',');
        firstMember = false;
        put('"');
        text(name);
        put('"');
        put(':');
    }
};

const char* checkWord(int32_t status) {
    switch (status) {
        case kCheckValid: return "valid";
        case kCheckInvalid: return "invalid";
        default: return "not checkable";
    }
}

constexpr bool sameName(const char* a, const char* b) {
    while (*a != '\0' && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

// Which text answers are dates, in the order of kJavaTextFields: worked out once, at
// compile time, rather than by comparing names for every answer of every result.
struct DateAnswers {
    bool isDate[std::size(kJavaTextFields)];
};
constexpr DateAnswers findDateAnswers() {
    DateAnswers d{};
    for (size_t i = 0; i < std::size(kJavaTextFields); ++i) {
        for (const char* date : {"expirationDate", "HAZMATExpDate", "birthdate", "cardRevisionDate", "issueDate"}) {
            if (sameName(kJavaTextFields[i].name, date)) d.isDate[i] = true;
        }
    }
    return d;
}
constexpr DateAnswers kDateAnswers = findDateAnswers();

// MM/DD/YYYY as YYYY-MM-DD.
void writeIsoDate(JsonSink& out, const char* name, const char* answer) {
    if (std::strlen(answer) != 10) return;
    char iso[11] = {answer[6], answer[7], answer[8], answer[9], '-', answer[0], answer[1], '-', answer[3], answer[4], '\0'};
    char isoName[32];
    const size_t n = std::strlen(name);
    std::memcpy(isoName, name, n);
    std::memcpy(isoName + n, "ISO", 4);
    out.member(isoName);
    out.string(makeSpan(iso));
}

void writeAnswers(JsonSink& out, ParserHandle* handle, char* answer) {
    for (size_t i = 0; i < std::size(kJavaTextFields); ++i) {
        const JavaTextField& field = kJavaTextFields[i];
        if (field.getter(handle, answer, kAnswerRoom) != kOk || answer[0] == '\0') continue;
        out.member(field.name);
        out.string(makeSpan(answer));
        if (kDateAnswers.isDate[i]) writeIsoDate(out, field.name, answer);
    }
    for (const JavaFlagField& flag : kJavaFlagFields) {
        int value = 0;
        if (flag.getter(handle, &value) != kOk) continue;
        out.member(flag.name);
        out.number(value);
    }
}

void writeChecks(JsonSink& out, ParserHandle* handle) {
    int status = 0;
    if (SVT_validateDocumentId(handle, &status) == kOk) {
        out.member("documentIdValidationStatus");
        out.text("\"");
        out.text(checkWord(status));
        out.text("\"");
    }
    if (SVT_validateJurisdictionCode(handle, &status) == kOk) {
        out.member("jurisdictionCodeValidationStatus");
        out.text("\"");
        out.text(checkWord(status));
        out.text("\"");
    }
}

void writeCheckDigits(JsonSink& out, const ParserHandle* handle) {
    const CheckDigitReport report = checkDocumentDigits(&handle->record, TextSpan{handle->keptText, handle->keptLength});
    const char* verdict = report.verdict == kCheckValid ? "valid" : report.verdict == kCheckInvalid ? "invalid" : "none";
    out.member("checkDigits");
    out.string(makeSpan(verdict));
    if (report.failureCount > 0) {
        out.member("checkDigitFailures");
        out.put('[');
        for (int32_t i = 0; i < report.failureCount; ++i) {
            if (i > 0) out.put(',');
            out.string(makeSpan(report.failures[i]));
        }
        out.put(']');
    }
    // The zone members the command-line tool has always printed.
    if (handle->record.formatGroup == kGroupMrz && report.verdict != kCheckNotCheckable) {
        out.member("mrzCheckDigits");
        out.string(makeSpan(verdict));
        if (report.failureCount > 0) {
            out.member("mrzCheckDigitFailure");
            out.string(makeSpan(report.failures[0]));
        }
    }
}

void writeDates(JsonSink& out, const ParserHandle* handle) {
    const DateValue today{handle->clock.parseYear, handle->clock.parseMonth, handle->clock.parseDay, 0, 0, 0};
    int32_t value = 0;
    if (ageOn(&handle->record, today, &value) == kOk) {
        out.member("age");
        out.number(value);
    }
    if (expiredOn(&handle->record, today, &value) == kOk) {
        out.member("expired");
        out.text(value != 0 ? "true" : "false");
    }
}

void writeRepairs(JsonSink& out, ParserHandle* handle, char* answer) {
    if (SVT_getRepairs(handle, answer, kAnswerRoom) != kOk) return;
    out.member("repairs");
    out.put('[');
    const char* at = answer;
    while (*at != '\0') {
        const char* end = std::strchr(at, ',');
        const int32_t n = end != nullptr ? static_cast<int32_t>(end - at) : static_cast<int32_t>(std::strlen(at));
        if (at != answer) out.put(',');
        out.string(TextSpan{at, n});
        at += n + (end != nullptr ? 1 : 0);
    }
    out.put(']');
}

// Three-character element ids, a letter and two letters or digits, as a bit each.
constexpr int32_t kElementIdBits = 26 * 36 * 36;

int32_t letterOrDigit(char c) { return isAsciiUpper(static_cast<unsigned char>(c)) ? c - 'A' : isAsciiDigit(static_cast<unsigned char>(c)) ? 26 + c - '0' : -1; }

// The bit of an AAMVA element id, or -1 for any other name.
int32_t elementIdBit(TextSpan id) {
    if (id.length != 3 || !isAsciiUpper(static_cast<unsigned char>(id.data[0]))) return -1;
    const int32_t second = letterOrDigit(id.data[1]);
    const int32_t third = letterOrDigit(id.data[2]);
    if (second < 0 || third < 0) return -1;
    return ((id.data[0] - 'A') * 36 + second) * 36 + third;
}

// The elements as members of one object; an id the document repeats keeps its first value.
// Element ids are remembered in a bit set, however many the text holds; the other names
// (zone fields, the record's fields) are few.
struct ElementWriter {
    JsonSink* out;
    uint64_t seenIds[(kElementIdBits + 63) / 64];
    TextSpan seen[kMostElementIds];
    int32_t seenCount;
    bool first;
};

bool alreadyWritten(ElementWriter& w, TextSpan id) {
    const int32_t bit = elementIdBit(id);
    if (bit >= 0) {
        const bool seen = (w.seenIds[bit / 64] >> (bit % 64) & 1) != 0;
        w.seenIds[bit / 64] |= uint64_t{1} << (bit % 64);
        return seen;
    }
    for (int32_t i = 0; i < w.seenCount; ++i) {
        const TextSpan& seen = w.seen[i];
        if (seen.length != id.length) continue;
        if (id.length == 0 || std::memcmp(seen.data, id.data, static_cast<size_t>(id.length)) == 0) return true;
    }
    if (w.seenCount < kMostElementIds) w.seen[w.seenCount++] = id;
    return false;
}

bool writeElement(void* context, TextSpan id, TextSpan value) {
    ElementWriter& w = *static_cast<ElementWriter*>(context);
    if (alreadyWritten(w, id)) return true;
    if (!w.first) w.out->put(',');
    w.first = false;
    w.out->string(id);
    w.out->put(':');
    w.out->string(value);
    return true;
}

void writeElements(JsonSink& out, const ParserHandle* handle) {
    out.member("elements");
    out.put('{');
    ElementWriter writer;  // the names' list needs no clearing: its count says what it holds
    writer.out = &out;
    std::memset(writer.seenIds, 0, sizeof writer.seenIds);
    writer.seenCount = 0;
    writer.first = true;
    visitElements(&handle->record, TextSpan{handle->keptText, handle->keptLength}, writeElement, &writer);
    out.put('}');
}

void writeFormat(JsonSink& out, const ParserHandle* handle, char* answer) {
    out.member("formatGroup");
    out.number(handle->record.formatGroup);
    out.member("formatId");
    out.number(handle->record.formatId);
    if (answerFormatName(&handle->record, answer, kAnswerRoom) == kOk) {
        out.member("formatName");
        out.string(makeSpan(answer));
    }
}

}  // namespace

int32_t writeResultJson(ParserHandle* handle, char* buffer, int32_t capacity, int32_t* length) {
    if (handle == nullptr || buffer == nullptr || capacity < 1 || length == nullptr) return kErrInvalidArgument;
    if (handle->record.workBuffer == nullptr) return kErrInvalidArgument;
    JsonSink out{buffer, capacity, 0, true};
    char answer[kAnswerRoom];
    out.put('{');
    out.member("status");
    out.number(handle->lastStatus);
    if (handle->lastStatus == kOk) {
        writeFormat(out, handle, answer);
        writeAnswers(out, handle, answer);
        writeChecks(out, handle);
        out.member("fieldCount");
        out.number(countFilledFields(&handle->record));
        writeCheckDigits(out, handle);
        writeDates(out, handle);
        writeRepairs(out, handle, answer);
        writeElements(out, handle);
    }
    out.put('}');
    *length = out.length > INT32_MAX ? INT32_MAX : static_cast<int32_t>(out.length);
    if (out.length >= capacity) {
        buffer[0] = '\0';
        return kErrNoAnswer;
    }
    buffer[out.length] = '\0';
    return kOk;
}

}  // namespace orvane
