#include "documents/national_fields.h"

#include <cstring>

#include "engine/status.h"
#include "fields/dates.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr const char* kLineEnds = "\n\r\x1e";
constexpr int32_t kIdLength = 3;
constexpr int32_t kDesignatorLength = 2;
constexpr int32_t kDigitDateLength = 8;
constexpr const char* kCountryElement = "DCG";
constexpr int32_t kAnsiLength = 5;    // "ANSI "
constexpr int32_t kIssuerLength = 6;
constexpr int32_t kHeaderSearch = 32;  // the issuer stands early in the header line

// Reads a run of minDigits..maxDigits decimal digits at *pos, advancing it.
bool readNumber(TextSpan text, int32_t* pos, int32_t minDigits, int32_t maxDigits, int32_t* value) {
    int32_t digits = 0;
    *value = 0;
    while (*pos < text.length && digits < maxDigits &&
           isAsciiDigit(static_cast<unsigned char>(text.data[*pos]))) {
        *value = *value * 10 + (text.data[*pos] - '0');
        ++*pos;
        ++digits;
    }
    return digits >= minDigits;
}

bool readChar(TextSpan text, int32_t* pos, char expected) {
    if (*pos >= text.length || text.data[*pos] != expected) return false;
    ++*pos;
    return true;
}

int32_t digitsAt(const char* text, int32_t count) {
    int32_t value = 0;
    for (int32_t i = 0; i < count; ++i) value = value * 10 + (text[i] - '0');
    return value;
}

bool isRealDate(const DateValue& date) {
    return isPlausibleDate(date) && date.day <= daysInMonth(date.year, date.month);
}

// Splits eight digits into a date; the offsets say where year, month and day stand.
bool readDigitDate(TextSpan value, int32_t yearAt, int32_t monthAt, int32_t dayAt, DateValue* out) {
    if (value.length != kDigitDateLength || allChars(value, isAsciiDigit) != 0) return false;
    *out = DateValue{digitsAt(value.data + yearAt, 4), digitsAt(value.data + monthAt, 2),
                     digitsAt(value.data + dayAt, 2), 0, 0, 0};
    return isRealDate(*out);
}

const ElementRule* ruleAt(const char* at, std::span<const ElementRule> rules) {
    for (const ElementRule& rule : rules) {
        if (std::memcmp(at, rule.id, kIdLength) == 0) return &rule;
    }
    return nullptr;
}

bool isDesignator(const char* at) {
    return (at[0] == 'D' && at[1] == 'L') || (at[0] == 'I' && at[1] == 'D');
}

// An AAMVA barcode opens with "@", after any control bytes a reader put in front.
bool opensLikeAamva(TextSpan text) {
    int32_t i = 0;
    while (i < text.length && (static_cast<unsigned char>(text.data[i]) <= ' ' ||
                               static_cast<unsigned char>(text.data[i]) >= 0x7F)) {
        ++i;
    }
    return i < text.length && text.data[i] == '@';
}

struct ElementLine {
    const ElementRule* rule;
    TextSpan value;
    TextSpan designator;  // "DL" or "ID" in front of the element, or empty
};

// The element of one line: at its start, or behind a subfile designator inside it,
// because the header line carries the first element of the subfile.
bool elementOfLine(TextSpan line, std::span<const ElementRule> rules, ElementLine* out) {
    int32_t start = -1;
    out->designator = TextSpan{nullptr, 0};
    if (line.length >= kIdLength && (out->rule = ruleAt(line.data, rules)) != nullptr) start = 0;
    for (int32_t p = 0; start < 0 && p + kDesignatorLength + kIdLength <= line.length; ++p) {
        if (!isDesignator(line.data + p)) continue;
        if ((out->rule = ruleAt(line.data + p + kDesignatorLength, rules)) == nullptr) continue;
        out->designator = TextSpan{line.data + p, kDesignatorLength};
        start = p + kDesignatorLength;
    }
    if (start < 0) return false;
    out->value = TextSpan{line.data + start + kIdLength, line.length - start - kIdLength};
    trimIf(&out->value, isWhiteSpace);
    return true;
}

// Cuts lines off rest until one holds an element of the rules.
bool nextElementLine(TextSpan* rest, std::span<const ElementRule> rules, ElementLine* out) {
    TextSpan line;
    while (rest->length > 0 && nextToken(*rest, &line, rest, kLineEnds, 0)) {
        if (elementOfLine(line, rules, out)) return true;
    }
    return false;
}

}  // namespace

bool readSlashedDate(TextSpan text, DateValue* out) {
    if (!spanUsable(text) || out == nullptr) return false;
    int32_t pos = 0;
    DateValue date{0, 0, 0, 0, 0, 0};
    const bool read = readNumber(text, &pos, 1, 2, &date.day) && readChar(text, &pos, '/') &&
                      readNumber(text, &pos, 1, 2, &date.month) && readChar(text, &pos, '/') &&
                      readNumber(text, &pos, 4, 4, &date.year) && pos == text.length;
    if (read) *out = date;
    return read;
}

FieldSlot* setFieldDateText(ParsedRecord* record, FieldId id, const DateValue& date) {
    char text[kDigitDateLength + 1] = {};
    if (formatInt(date.year, text, 4, 1) != 4 || formatInt(date.month, text + 4, 2, 1) != 2 ||
        formatInt(date.day, text + 6, 2, 1) != 2) {
        return nullptr;
    }
    return setFieldLiteral(record, id, text);
}

void foldLatin1InPlace(char* text, int32_t length) {
    if (text == nullptr) return;
    for (int32_t i = 0; i < length; ++i) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c >= 0xA0) text[i] = static_cast<char>(foldLatin1(c));  // ASCII stays as it is
    }
}

void ignoreElement(ParsedRecord*, FieldId, TextSpan) {}

void storeElementText(ParsedRecord* record, FieldId id, TextSpan value) {
    trimIf(&value, isWhiteSpace);
    setFieldMapped(record, id, value, nullptr, nullptr, '\0');
}

void storeDayFirstDate(ParsedRecord* record, FieldId id, TextSpan value) {
    DateValue date;
    if (readDigitDate(value, 4, 2, 0, &date)) setFieldDate(record, id, &date);
}

void storeMonthFirstDate(ParsedRecord* record, FieldId id, TextSpan value) {
    DateValue date;
    if (readDigitDate(value, 4, 0, 2, &date)) setFieldDate(record, id, &date);
}

bool findElementValue(TextSpan text, std::span<const ElementRule> rules, const char* id,
                      TextSpan* value) {
    if (!spanUsable(text) || id == nullptr || value == nullptr) return false;
    ElementLine line;
    TextSpan rest = text;
    while (nextElementLine(&rest, rules, &line)) {
        if (std::memcmp(line.rule->id, id, kIdLength) == 0) {
            *value = line.value;
            return true;
        }
    }
    return false;
}

int32_t readElementLines(TextSpan text, std::span<const ElementRule> rules, ParsedRecord* record) {
    if (!spanUsable(text)) return 0;
    int32_t stored = 0;
    ElementLine line;
    TextSpan rest = text;
    while (nextElementLine(&rest, rules, &line)) {
        if (spanUsable(line.designator) && fieldMissing(record, field::documentType) != 0) {
            setField(record, field::documentType, line.designator);
        }
        line.rule->store(record, line.rule->field, line.value);
        ++stored;
    }
    return stored;
}

char foldedUpper(char c) { return toAsciiUpper(static_cast<char>(foldLatin1(static_cast<unsigned char>(c)))); }

bool isFoldedBlank(char c) {
    const char folded = foldedUpper(c);
    return folded == ' ' || folded == '\t' || folded == '\v' || folded == '\f';
}

// Whether the value at from is the name, blanks around it, before a line end.
bool valueIsName(const TextFacts& f, int32_t from, const char* name) {
    int32_t at = from;
    while (at < f.length && isFoldedBlank(f.text[at])) ++at;
    for (const char* n = name; *n != '\0'; ++n, ++at) {
        if (at >= f.length || foldedUpper(f.text[at]) != *n) return false;
    }
    while (at < f.length && isFoldedBlank(f.text[at])) ++at;
    return at == f.length || f.text[at] == '\n' || f.text[at] == '\r' || f.text[at] == '\x1e';
}

bool mayReadCountryElements(const TextFacts& f, const char* countryName) {
    // No Latin-1 letter folds to "G", so every "DCG" keeps a plain one.
    for (int32_t at = 2; at < f.length; ++at) {
        const void* g = std::memchr(f.text + at, 'G', static_cast<size_t>(f.length - at));
        if (g == nullptr) return false;
        at = static_cast<int32_t>(static_cast<const char*>(g) - f.text);
        if (foldedUpper(f.text[at - 1]) == 'C' && foldedUpper(f.text[at - 2]) == 'D' &&
            valueIsName(f, at + 1, countryName)) {
            return true;
        }
    }
    return false;
}

bool countryNameInHeaderlessText(TextSpan text, const ElementLayout& layout) {
    TextSpan country;
    return !opensLikeAamva(text) && findElementValue(text, layout.rules, kCountryElement, &country) &&
           equalsWordIgnoringCase(country, layout.marker);
}

bool issuerInHeader(TextSpan text, const ElementLayout& layout) {
    char ansiIssuer[kAnsiLength + kIssuerLength + 1] = "ANSI ";
    if (makeSpan(layout.marker).length != kIssuerLength) return false;
    std::memcpy(ansiIssuer + kAnsiLength, layout.marker, kIssuerLength);
    const TextSpan header{text.data, text.length < kHeaderSearch ? text.length : kHeaderSearch};
    return spanFind(header, TextSpan{ansiIssuer, kAnsiLength + kIssuerLength}) >= 0;
}

int32_t readElementLayout(char* text, int32_t length, ParsedRecord* record, const ElementLayout& layout) {
    if (text == nullptr || length < 1 || layout.recognises == nullptr) return kErrNotRecognised;
    foldLatin1InPlace(text, length);
    const TextSpan whole{text, length};
    if (!layout.recognises(whole, layout)) return kErrNotRecognised;
    readElementLines(whole, layout.rules, record);
    setFieldLiteral(record, field::country, layout.country);
    setFieldLiteral(record, field::countryCode, layout.countryCode);
    defaultToLicence(record);
    return kOk;
}

bool equalsWordIgnoringCase(TextSpan span, const char* word) {
    if (span.data == nullptr || word == nullptr) return false;
    trimIf(&span, isWhiteSpace);
    return spanCompare(span, makeSpan(word), kIgnoreCase) == 0;
}

}  // namespace orvane
