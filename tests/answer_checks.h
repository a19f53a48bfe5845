// Asks a parsed handle every question of the C interface and checks each status is one
// the interface documents and that no answer passes its buffer's capacity. Shared by the
// hostile-input, allocation and fuzz tests; allocates nothing unless it reports a fault.
#pragma once

#include <cstring>
#include <string>
#include <string_view>

#include "../tools/answer_table.h"
#include "orvane_parser.h"

namespace orvane::testing {

// SVT_parse: its own codes, or the refusal a format reader gave on its final run.
inline bool isDocumentedParseStatus(int s) {
    return s == SVT_OK || s == SVT_ERR_NULL_INPUT || s == SVT_ERR_EMPTY_INPUT || s == SVT_ERR_INVALID_ARGUMENT ||
           s == SVT_ERR_NO_WORK_BUFFER || s == SVT_ERR_NOT_RECOGNISED || (s >= -14 && s <= -1) || s == -20 || s == -22;
}
inline bool isDocumentedTextStatus(int s) {
    return s == SVT_OK || s == SVT_ERR_BUFFER_TOO_SMALL || s == SVT_ERR_INVALID_ARGUMENT || s == SVT_ERR_NO_ANSWER;
}
inline bool isDocumentedFlagStatus(int s) { return s == SVT_OK || s == SVT_ERR_INVALID_ARGUMENT || s == SVT_ERR_NO_ANSWER; }
inline bool isDocumentedCheckStatus(int s) { return s == SVT_OK || s == SVT_ERR_INVALID_ARGUMENT; }

// The answers about the parse rather than the document: 0, -21 or -26.
inline bool isDocumentedResultStatus(int s) { return s == SVT_OK || s == SVT_ERR_INVALID_ARGUMENT || s == SVT_ERR_NO_ANSWER; }

// Whether text is one JSON value and nothing else (RFC 8259), without allocating; nesting
// deeper than the result object's is refused too.
class JsonChecker {
  public:
    static bool valid(std::string_view json) {
        JsonChecker c(json);
        c.blanks();
        if (!c.value(0)) return false;
        c.blanks();
        return c.at == json.size();
    }

  private:
    explicit JsonChecker(std::string_view json) : text(json), at(0) {}

    std::string_view text;
    size_t at;

    bool more() const { return at < text.size(); }
    char peek() const { return more() ? text[at] : '\0'; }
    bool take(char c) {
        if (peek() != c) return false;
        ++at;
        return true;
    }
    void blanks() {
        while (more() && (peek() == ' ' || peek() == '\t' || peek() == '\n' || peek() == '\r')) ++at;
    }
    bool word(std::string_view w) {
        if (text.substr(at, w.size()) != w) return false;
        at += w.size();
        return true;
    }
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }
    bool digits() {
        const size_t from = at;
        while (isDigit(peek())) ++at;
        return at > from;
    }
    bool number() {
        take('-');
        if (!take('0') && !digits()) return false;
        if (take('.') && !digits()) return false;
        if (take('e') || take('E')) {
            if (!take('+')) take('-');
            if (!digits()) return false;
        }
        return true;
    }
    bool quoted() {
        if (!take('"')) return false;
        while (more()) {
            const unsigned char c = static_cast<unsigned char>(text[at++]);
            if (c == '"') return true;
            if (c < 0x20) return false;
            if (c != '\\') continue;
            const char e = peek();
            ++at;
            if (e == 'u') {
                for (int i = 0; i < 4; ++i, ++at) {
                    if (!more() || std::strchr("0123456789abcdefABCDEF", text[at]) == nullptr) return false;
                }
            } else if (std::strchr("\"\\/bfnrt", e) == nullptr || e == '\0') {
                return false;
            }
        }
        return false;
    }
    bool members(int depth, bool object) {
        const char close = object ? '}' : ']';
        blanks();
        if (take(close)) return true;
        do {
            blanks();
            if (object) {
                if (!quoted()) return false;
                blanks();
                if (!take(':')) return false;
            }
            if (!value(depth + 1)) return false;
            blanks();
        } while (take(','));
        return take(close);
    }
    bool value(int depth) {
        if (depth > 8) return false;
        blanks();
        const char c = peek();
        if (c == '{' || c == '[') {
            ++at;
            return members(depth, c == '{');
        }
        if (c == '"') return quoted();
        if (c == 't') return word("true");
        if (c == 'f') return word("false");
        if (c == 'n') return word("null");
        return number();
    }
};

// A text answer at several capacities: a documented status, nothing written past the
// capacity, and a terminated text within it. call(buffer, capacity) asks the question.
template <typename Call>
std::string askText(const char* name, Call call, bool (*documented)(int)) {
    constexpr int kGuard = 16;
    char buffer[256 + kGuard];
    int exact = 0;
    if (call(buffer, 256) == SVT_OK) exact = static_cast<int>(strnlen(buffer, 256)) + 1;
    for (int capacity : {1, 2, 5, exact - 1, exact, 256}) {
        if (capacity < 1) continue;
        std::memset(buffer, 0x5A, sizeof buffer);
        const int status = call(buffer, capacity);
        if (!documented(status)) return std::string(name) + " status " + std::to_string(status);
        for (int i = capacity; i < capacity + kGuard; ++i) {
            if (buffer[i] != 0x5A) return std::string(name) + " wrote past capacity " + std::to_string(capacity);
        }
        if (status == SVT_OK && strnlen(buffer, static_cast<size_t>(capacity)) == static_cast<size_t>(capacity)) {
            return std::string(name) + " left no terminator at capacity " + std::to_string(capacity);
        }
    }
    return std::string();
}

// The elements: the count, the first at several capacities, the second and the last,
// the one past the end, and each found again by its id. A long document has thousands;
// these stand for them (ids are found again by a walk from the start).
inline std::string askElements(SVT_ParserHandle* handle) {
    int count = -7;
    const int status = SVT_getElementCount(handle, &count);
    if (!isDocumentedResultStatus(status)) return "element count status " + std::to_string(status);
    if (status != SVT_OK) return count == -7 ? std::string() : "element count written on failure";
    if (count < 0) return "element count " + std::to_string(count);
    for (int index : {0, 1, count - 1, count}) {
        if (index < 0 || index > count) continue;
        char id[64];
        char value[256];
        const int found = SVT_getElementAt(handle, index, id, sizeof id, value, sizeof value);
        if (index == count) {
            if (found != SVT_ERR_NO_ANSWER) return "element past the end status " + std::to_string(found);
            continue;
        }
        if (found != SVT_OK && found != SVT_ERR_NO_ANSWER) return "element status " + std::to_string(found);
        for (int idCapacity : {1, 64}) {
            if (index != 0) break;  // the capacities once; each call walks the elements
            std::string fault = askText(
                "element", [&](char* b, int c) { return SVT_getElementAt(handle, index, id, idCapacity, b, c); },
                isDocumentedResultStatus);
            if (!fault.empty()) return fault;
            fault = askText(
                "element id", [&](char* b, int c) { return SVT_getElementAt(handle, index, b, c, value, 8); },
                isDocumentedResultStatus);
            if (!fault.empty()) return fault;
        }
        if (SVT_getElementAt(handle, index, id, sizeof id, value, sizeof value) != SVT_OK) continue;
        char again[256];
        if (SVT_getElement(handle, id, again, sizeof again) != SVT_OK) return std::string("element not found by id ") + id;
        std::string fault = askText(
            "element by id", [&](char* b, int c) { return SVT_getElement(handle, id, b, c); }, isDocumentedResultStatus);
        if (!fault.empty()) return fault;
    }
    char value[16];
    const int unknown = SVT_getElement(handle, "", value, sizeof value);
    if (unknown != SVT_ERR_NO_ANSWER) return "element with an empty id status " + std::to_string(unknown);
    return std::string();
}

// The JSON object at several capacities: the length it needs, -26 and "" when it does not
// fit, and a valid JSON object when it does.
inline std::string askJson(SVT_ParserHandle* handle) {
    constexpr int kRoom = 32768;
    constexpr int kGuard = 16;
    char buffer[kRoom + kGuard];
    int length = -7;
    const int first = SVT_getResultJson(handle, buffer, kRoom, &length);
    if (!isDocumentedResultStatus(first)) return "JSON status " + std::to_string(first);
    if (first == SVT_ERR_INVALID_ARGUMENT) return std::string();
    if (length < 2) return "JSON length " + std::to_string(length);
    if (first == SVT_OK && !JsonChecker::valid(std::string_view(buffer, static_cast<size_t>(length)))) {
        return "JSON not valid: " + std::string(buffer, static_cast<size_t>(length));
    }
    if (first == SVT_OK && (buffer[0] != '{' || strnlen(buffer, kRoom) != static_cast<size_t>(length))) {
        return "JSON not one object of its length";
    }
    for (int capacity : {1, length, length + 1}) {
        if (capacity < 1 || capacity > kRoom) continue;
        std::memset(buffer, 0x5A, sizeof buffer);
        int needed = -7;
        const int status = SVT_getResultJson(handle, buffer, capacity, &needed);
        if (needed != length) return "JSON length changed at capacity " + std::to_string(capacity);
        if (status != (capacity > length ? SVT_OK : SVT_ERR_NO_ANSWER)) return "JSON status " + std::to_string(status);
        if (status != SVT_OK && buffer[0] != '\0') return "JSON that does not fit left text";
        for (int i = capacity; i < capacity + kGuard; ++i) {
            if (buffer[i] != 0x5A) return "JSON wrote past capacity " + std::to_string(capacity);
        }
    }
    return std::string();
}

// The format, field count, elements, check digits, age and expiry, JSON, repairs and
// version; each status documented and each answer in its range.
inline std::string askBeyondTheFields(SVT_ParserHandle* handle) {
    int group = -7;
    int id = -7;
    int status = SVT_getFormat(handle, &group, &id);
    if (!isDocumentedResultStatus(status)) return "format status " + std::to_string(status);
    const bool parsed = status == SVT_OK;
    if (parsed && (group < 0 || group > 5 || id < 0 || (id > 67 && id < 100))) {
        return "format " + std::to_string(group) + "/" + std::to_string(id);
    }
    if (!parsed && (group != -7 || id != -7)) return "format written on failure";
    char name[256];
    if (parsed && SVT_getFormatName(handle, name, sizeof name) != SVT_OK) return "format without a name";
    std::string fault = askText(
        "format name", [&](char* b, int c) { return SVT_getFormatName(handle, b, c); }, isDocumentedResultStatus);
    if (!fault.empty()) return fault;

    int count = -7;
    status = SVT_getFieldCount(handle, &count);
    if (!isDocumentedResultStatus(status)) return "field count status " + std::to_string(status);
    if (status == SVT_OK && (count < 0 || count > 140)) return "field count " + std::to_string(count);
    if (!(fault = askElements(handle)).empty()) return fault;

    int verdict = -7;
    status = SVT_validateCheckDigits(handle, &verdict);
    if (!isDocumentedResultStatus(status)) return "check digits status " + std::to_string(status);
    if (status == SVT_OK && (verdict < SVT_CHECK_NOT_CHECKABLE || verdict > SVT_CHECK_INVALID)) {
        return "check digits verdict " + std::to_string(verdict);
    }
    char failures[128];
    const int failed = SVT_getCheckDigitFailures(handle, failures, sizeof failures);
    if (status == SVT_OK && (failed == SVT_OK) != (verdict == SVT_CHECK_INVALID)) {
        return "check digit failures disagree with the verdict";
    }
    fault = askText(
        "check digit failures", [&](char* b, int c) { return SVT_getCheckDigitFailures(handle, b, c); },
        isDocumentedResultStatus);
    if (!fault.empty()) return fault;

    int age = -7;
    status = SVT_getAge(handle, &age);
    if (!isDocumentedResultStatus(status)) return "age status " + std::to_string(status);
    if (status == SVT_OK ? age < 0 || age > 9999 : age != -7) return "age " + std::to_string(age);
    int expired = -7;
    status = SVT_isExpired(handle, &expired);
    if (!isDocumentedResultStatus(status)) return "expiry status " + std::to_string(status);
    if (status == SVT_OK ? expired != 0 && expired != 1 : expired != -7) return "expired " + std::to_string(expired);

    if (!(fault = askJson(handle)).empty()) return fault;
    fault = askText(
        "repairs", [&](char* b, int c) { return SVT_getRepairs(handle, b, c); }, isDocumentedResultStatus);
    if (!fault.empty()) return fault;
    return askText("version", [](char* b, int c) { return SVT_getVersionText(b, c); }, isDocumentedResultStatus);
}

// Every text answer at several capacities (with a guard after the buffer), every flag,
// the three checks and the answers beyond the fields. The first fault, or "" when there
// is none.
inline std::string askEverything(SVT_ParserHandle* handle, int columns = 20, int rows = 15, int level = 5) {
    constexpr int kGuard = 16;
    char buffer[256 + kGuard];
    for (const auto& answer : orvane_tools::kTextAnswers) {
        int exact = 0;
        if (answer.getter(handle, buffer, 256) == SVT_OK) exact = static_cast<int>(strnlen(buffer, 256)) + 1;
        for (int capacity : {1, 2, 11, exact, 256}) {
            if (capacity < 1) continue;
            std::memset(buffer, 0x5A, sizeof buffer);
            const int status = answer.getter(handle, buffer, capacity);
            if (!isDocumentedTextStatus(status)) return std::string(answer.name) + " status " + std::to_string(status);
            for (int i = capacity; i < capacity + kGuard; ++i) {
                if (buffer[i] != 0x5A) return std::string(answer.name) + " wrote past capacity " + std::to_string(capacity);
            }
        }
    }
    for (const auto& answer : orvane_tools::kFlagAnswers) {
        int value = 7;
        const int status = answer.getter(handle, &value);
        if (!isDocumentedFlagStatus(status)) return std::string(answer.name) + " status " + std::to_string(status);
        if (status == SVT_OK && value != 0 && value != 1) return std::string(answer.name) + " value " + std::to_string(value);
    }
    int status = 0;
    int result = SVT_validateDocumentId(handle, &status);
    if (!isDocumentedCheckStatus(result)) return "document id check " + std::to_string(result);
    result = SVT_validateJurisdictionCode(handle, &status);
    if (!isDocumentedCheckStatus(result)) return "jurisdiction check " + std::to_string(result);
    result = SVT_validateBarcode(handle, columns, rows, level, &status);
    if (!isDocumentedCheckStatus(result)) return "barcode check " + std::to_string(result);
    return askBeyondTheFields(handle);
}

// Parses the input strictly and leniently, asking everything after each parse.
inline std::string parseBothWaysAndAsk(SVT_ParserHandle* handle, const void* data, int length, int columns = 20,
                                       int rows = 15, int level = 5) {
    for (bool lenient : {false, true}) {
        const int status = lenient ? SVT_parseLenient(handle, data, length) : SVT_parse(handle, data, length);
        const char* how = lenient ? "lenient " : "strict ";
        if (!isDocumentedParseStatus(status)) return how + std::string("parse status ") + std::to_string(status);
        std::string fault = askEverything(handle, columns, rows, level);
        if (!fault.empty()) return how + fault;
    }
    return std::string();
}

}  // namespace orvane::testing
