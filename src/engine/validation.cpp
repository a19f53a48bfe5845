#include "engine/validation.h"

#include <cstring>

#include "engine/status.h"
#include "fields/address.h"
#include "fields/codes.h"
#include "fields/countries.h"
#include "fields/dates.h"
#include "fields/names.h"
#include "fields/physical.h"
#include "fields/text.h"

namespace orvane {
namespace {

inline constexpr int32_t kCodeBuffer = 16;
inline constexpr int32_t kNumberBuffer = 32;
inline constexpr int32_t kNameBuffer = 128;

int isDigitClass(int c) { return isAsciiDigit(c); }
int isLetterClass(int c) { return isAsciiAlpha(c); }
int isAlnumClass(int c) { return isAsciiAlnum(c); }
int isHyphen(int c) { return c == '-'; }
int isAsterisk(int c) { return c == '*'; }

// Consumes exactly n characters of a class.
bool consumeRun(TextSpan text, int32_t* pos, int32_t n, CharTest test) {
    for (int32_t k = 0; k < n; ++k) {
        if (*pos >= text.length || !test(static_cast<unsigned char>(text.data[*pos]))) return false;
        ++*pos;
    }
    return true;
}

// Consumes one character when it is of the kind.
void consumeOptional(TextSpan text, int32_t* pos, CharTest test) {
    if (*pos < text.length && test(static_cast<unsigned char>(text.data[*pos]))) ++*pos;
}

CharTest optionalTest(int32_t n) {
    switch (n) {
        case 1:
            return isHyphen;
        case 2:
            return isAsterisk;
        case 3:
            return isLetterClass;
        case 4:
            return isDigitClass;
        default:
            return nullptr;
    }
}

// Phonetic class of an upper-case letter; Y is deliberately in class 7, not a vowel.
int phoneticClass(char letter) {
    switch (letter) {
        case 'A': case 'E': case 'I': case 'O': case 'U':
            return 0;
        case 'B': case 'F': case 'P': case 'V':
            return 1;
        case 'C': case 'G': case 'J': case 'K': case 'Q': case 'S': case 'X': case 'Z':
            return 2;
        case 'D': case 'T':
            return 3;
        case 'L':
            return 4;
        case 'M': case 'N':
            return 5;
        case 'R':
            return 6;
        default:
            return 7;  // H, W, Y
    }
}

bool lastNameCode(const ParsedRecord* record, char code[4]) {
    char name[kNameBuffer];
    if (getLastName(record, name, kNameBuffer) != kOk) return false;
    return phoneticCode(makeSpan(name), code);
}

bool startsWithCode(TextSpan number, const char code[4]) {
    return number.length >= 4 && std::memcmp(number.data, code, 4) == 0;
}

// The two digits of a number at from equal value (0..99).
bool twoDigitsEqual(TextSpan text, int32_t from, int32_t value) {
    return digitsAt(text, from, 2) && (text.data[from] - '0') * 10 + (text.data[from + 1] - '0') == value;
}

bool readJurisdiction(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return getJurisdictionCode(record, buffer, capacity) == kOk && std::strlen(buffer) == 2;
}

bool ruleApplies(const DocumentIdRule& rule, uint16_t document, const ParsedRecord* record, TextSpan number) {
    if ((rule.documents & document) == 0) return false;
    if (rule.check != nullptr) return rule.check(record, number);
    return matchPattern(number, rule.pattern.bytes);
}

}  // namespace

bool matchPattern(TextSpan text, const char* pattern) {
    if (text.data == nullptr || pattern == nullptr) return false;
    int32_t pos = 0;
    for (const unsigned char* p = reinterpret_cast<const unsigned char*>(pattern); *p != 0; ++p) {
        const unsigned char op = *p;
        const int32_t n = op & 0x0F;
        if (op < 0x80) {
            if (pos >= text.length || static_cast<unsigned char>(text.data[pos]) != op) return false;
            ++pos;
        } else if (op >= 0xC0) {
            continue;
        } else if ((op & 0xF0) == 0xA0) {
            if (CharTest test = optionalTest(n)) consumeOptional(text, &pos, test);
        } else {
            const CharTest test = (op & 0xF0) == 0x80 ? isDigitClass : (op & 0xF0) == 0x90 ? isLetterClass : isAlnumClass;
            if (!consumeRun(text, &pos, n, test)) return false;
        }
    }
    return pos == text.length;
}

bool phoneticCode(TextSpan name, char code[4]) {
    if (!spanUsable(name)) return false;
    const char first = toAsciiUpper(name.data[0]);
    if (!isAsciiUpper(static_cast<unsigned char>(first))) return false;
    code[0] = first;
    code[1] = code[2] = code[3] = '0';
    int previous = phoneticClass(first);
    int32_t written = 1;
    for (int32_t i = 1; i < name.length && written < 4; ++i) {
        const char letter = toAsciiUpper(name.data[i]);
        if (!isAsciiUpper(static_cast<unsigned char>(letter))) return false;
        const int cls = phoneticClass(letter);
        if (cls == 0) {
            previous = 0;
        } else if (cls != 7 && cls != previous) {
            code[written++] = static_cast<char>('0' + cls);
            previous = cls;
        }
    }
    return true;
}

bool checkConnecticut(const ParsedRecord* record, TextSpan number) {
    if (number.length != 9) return false;
    DateValue birth{};
    if (birthdateValue(record, &birth) != kOk) return false;
    const int32_t month = birth.month + (birth.year % 2 == 0 ? 12 : 0);
    return twoDigitsEqual(number, 0, month) && digitsAt(number, 2, 7);
}

bool checkFlorida(const ParsedRecord* record, TextSpan number) {
    char code[4];
    if (number.length <= 4 || !lastNameCode(record, code) || !startsWithCode(number, code)) return false;
    DateValue birth{};
    if (birthdateValue(record, &birth) != kOk) return false;
    int32_t pos = 4;
    consumeOptional(number, &pos, isHyphen);
    if (!consumeRun(number, &pos, 3, isDigitClass)) return false;
    consumeOptional(number, &pos, isHyphen);
    if (!twoDigitsEqual(number, pos, birth.year % 100)) return false;
    pos += 2;
    consumeOptional(number, &pos, isHyphen);
    if (!consumeRun(number, &pos, 3, isDigitClass)) return false;
    if (pos == number.length) return true;
    consumeOptional(number, &pos, isHyphen);
    return consumeRun(number, &pos, 1, isDigitClass) && pos == number.length;
}

bool checkWisconsin(const ParsedRecord* record, TextSpan number) {
    char code[4];
    if (number.length < 4 || !lastNameCode(record, code) || !startsWithCode(number, code)) return false;
    if (!digitsAt(number, 4, 3)) return false;
    DateValue birth{};
    if (birthdateValue(record, &birth) != kOk || !twoDigitsEqual(number, 7, birth.year % 100)) return false;
    if (number.length == 9) return false;
    int32_t gender = 0;
    if (genderCode(record, &gender) != kOk || number.length < 10) return false;
    const char sexDigit = number.data[9];
    const bool sexFits = gender == kGenderMale ? (sexDigit >= '0' && sexDigit <= '4') : (sexDigit >= '5' && sexDigit <= '9');
    return sexFits && number.length == 14 && digitsAt(number, 10, 4);
}

int32_t validateDocumentId(const ParsedRecord* record, char* scratch, int32_t scratchCapacity) {
    if (record == nullptr || scratch == nullptr || scratchCapacity < 1) return kErrInvalidArgument;
    if (!readJurisdiction(record, scratch, scratchCapacity)) return kCheckNotCheckable;
    const char jurisdiction[2] = {scratch[0], scratch[1]};
    if (getDocumentType(record, scratch, scratchCapacity) != kOk) return kCheckNotCheckable;
    uint16_t document = 0;
    if (std::strcmp(scratch, "DL") == 0) document = kLicence;
    if (std::strcmp(scratch, "ID") == 0) document = kIdCard;
    if (document == 0) return kCheckNotCheckable;
    char number[kNumberBuffer];
    if (getLicenseNumber(record, number, kNumberBuffer) != kOk) return kCheckNotCheckable;
    const DocumentIdRuleSet set = documentIdRulesFor(TextSpan{jurisdiction, 2});
    if (!set.known) return kCheckNotCheckable;
    if (set.rules.empty()) return kCheckInvalid;
    for (const DocumentIdRule& rule : set.rules) {
        if (ruleApplies(rule, document, record, makeSpan(number))) return kCheckValid;
    }
    return kCheckInvalid;
}

int32_t validateBarcode(const ParsedRecord* record, int32_t columns, int32_t rows, int32_t errorCorrectionLevel) {
    // The bounds are kept although some table entries list more than 33 columns.
    if (columns < 3 || columns > 33 || rows < 3 || rows > 90 || static_cast<uint32_t>(errorCorrectionLevel) > 8 ||
        record == nullptr) {
        return kErrInvalidArgument;
    }
    char jurisdiction[kCodeBuffer];
    if (!readJurisdiction(record, jurisdiction, kCodeBuffer)) return kCheckNotCheckable;
    const BarcodeSizeSet set = barcodeSizesFor(TextSpan{jurisdiction, 2});
    if (!set.known) return kCheckNotCheckable;
    for (const BarcodeSize& size : set.sizes) {
        if (size.columns == columns && size.rows == rows && size.errorCorrectionLevel == errorCorrectionLevel) {
            return kCheckValid;
        }
    }
    return kCheckInvalid;
}

int32_t validateJurisdictionCode(const ParsedRecord* record) {
    if (record == nullptr) return kErrInvalidArgument;
    char jurisdiction[kCodeBuffer];
    if (!readJurisdiction(record, jurisdiction, kCodeBuffer)) return kCheckNotCheckable;
    TextSpan iin;
    if (readField(record, field::iin, &iin) != kOk) return kCheckNotCheckable;
    const char* expected = jurisdictionCodeForIin(iin);
    if (expected == nullptr) return kCheckInvalid;
    return std::strcmp(expected, jurisdiction) == 0 ? kCheckValid : kCheckInvalid;
}

}  // namespace orvane
