#include "fields/address.h"

#include <cstring>

#include "fields/answer.h"
#include "fields/countries.h"
#include "fields/names.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr FieldId kAddress1Slots[] = {field::address1, field::residenceAddress1};
constexpr FieldId kAddress2Slots[] = {field::address2, field::address2Alt, field::residenceAddress2};
constexpr FieldId kCitySlots[] = {field::city, field::residenceCity};
constexpr FieldId kPostalSlots[] = {field::postalCode, field::residencePostalCode};
constexpr FieldId kLicenseSlots[] = {field::licenseNumber, field::licenseNumberAlt, field::licenseNumberAlt2,
                                     field::licenseNumberAlt3};

int isDollarOrNotPrintable(int c) { return c == '$' || isNotPrintableCode(c); }

int32_t answerAddressLine(const ParsedRecord* record, const FieldId* ids, int32_t count, char* buffer,
                          int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    const NameRule* rule = nameRuleFor(record);
    if (rule->addressHook != nullptr && rule->addressHook(record, ids, count, buffer, capacity) == kOk) return kOk;
    TextSpan line;
    if (firstFilledField(record, ids, count, &line) != kOk) return kErrNoAnswer;
    trimIf(&line, isNotPrintableCode);
    trimSet(&line, kTokenEdgeSet);
    return answerPrintableCollapsed(line, buffer, capacity);
}

// Where a stretch equal to text starts at a word of the address at or after from and
// ends at a word's end: the index after it, or -1.
int32_t consumeStretch(TextSpan address, int32_t from, const char* text) {
    const int32_t n = static_cast<int32_t>(std::strlen(text));
    for (int32_t at = from; n > 0 && at + n <= address.length; ++at) {
        const bool wordStart = at == 0 || address.data[at - 1] == ' ';
        const bool wordEnd = at + n == address.length || address.data[at + n] == ' ';
        if (wordStart && wordEnd && address.data[at] != ' ' && std::memcmp(address.data + at, text, static_cast<size_t>(n)) == 0) {
            return at + n;
        }
    }
    return -1;
}

// The postal text of an address line that ends with city, jurisdiction and code. The
// caller's buffer holds the city and the jurisdiction code while the line is walked.
int32_t postalTextOfAddress(const ParsedRecord* record, TextSpan address, char* buffer, int32_t capacity,
                            TextSpan* postal) {
    if (capacity < 2 || getCity(record, buffer, capacity) != kOk) return kErrNoAnswer;
    const int32_t cityLength = static_cast<int32_t>(std::strlen(buffer));
    char* code = buffer + cityLength + 1;
    const int32_t codeRoom = capacity - cityLength - 1;
    if (codeRoom < 1 || getJurisdictionCode(record, code, codeRoom) != kOk) return kErrNoAnswer;
    const int32_t afterCity = consumeStretch(address, 0, buffer);
    if (afterCity < 0) return kErrNoAnswer;
    for (int32_t from = afterCity; (from = consumeStretch(address, from, code)) >= 0;) {
        TextSpan rest{address.data + from, address.length - from};
        trimIf(&rest, isWhiteSpace);
        if (rest.length > 0 && allChars(rest, isWordChar) == 0) {
            *postal = rest;
            return kOk;
        }
    }
    return kErrNoAnswer;
}

// Copies the stored number without the characters of the drop set; a number made of
// nothing else is given as it stands.
int32_t licenseNumberWithout(const ParsedRecord* record, char* buffer, int32_t room, const char* dropSet) {
    TextSpan number;
    if (record == nullptr || buffer == nullptr || firstFilledField(record, kLicenseSlots, &number) != kOk) return 0;
    trimIf(&number, isWhiteSpace);
    const int32_t written = copyFiltered(buffer, room, number, dropSet, nullptr, '\0');
    if (written > 0) return written;
    return copyFiltered(buffer, room, number, nullptr, nullptr, '\0');
}

}  // namespace

int32_t getAddress1(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerAddressLine(record, kAddress1Slots, 2, buffer, capacity);
}

int32_t getAddress2(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerAddressLine(record, kAddress2Slots, 3, buffer, capacity);
}

int32_t getCity(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerFirstFilled(record, kCitySlots, answerPrintableCollapsed, buffer, capacity);
}

int32_t getLicenseNumber(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    const NameRule* rule = nameRuleFor(record);
    if (rule->licenseNumberHook != nullptr) {
        const int32_t written = rule->licenseNumberHook(record, buffer, capacity - 1);
        if (written < 1) return kErrNoAnswer;
        buffer[written] = '\0';
        return kOk;
    }
    TextSpan number;
    if (firstFilledField(record, kLicenseSlots, &number) != kOk) return kErrNoAnswer;
    return answerAsIs(number, buffer, capacity - 1);
}

int32_t getPostalCode(const ParsedRecord* record, char* buffer, int32_t capacity) {
    // Runs of blanks or commas in a stored postal text, of blanks in one cut from an
    // address, become one.
    static constexpr ByteSet kStoredDropped = byteSetOf(" ,");
    static constexpr ByteSet kCutDropped = byteSetOf(" ");
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    const NameRule* rule = nameRuleFor(record);
    TextSpan postal;
    if (firstFilledField(record, kPostalSlots, &postal) == kOk) {
        if (rule->postalCodeHook != nullptr) return rule->postalCodeHook(postal, buffer, capacity);
        return answerFromCopy(copyBySetsZ(buffer, capacity, postal, ByteSet{}, kStoredDropped, '\0'));
    }
    TextSpan address;
    if (firstFilledField(record, kAddress1Slots, &address) != kOk) return kErrNoAnswer;
    if (postalTextOfAddress(record, address, buffer, capacity, &postal) != kOk) return kErrNoAnswer;
    if (rule->postalCodeHook != nullptr) return rule->postalCodeHook(postal, buffer, capacity);
    return answerFromCopy(copyBySetsZ(buffer, capacity, postal, ByteSet{}, kCutDropped, '\0'));
}

int32_t usPostalCode(TextSpan postal, char* buffer, int32_t capacity) {
    trimIf(&postal, isWhiteSpace);
    if (!spanUsable(postal)) return kErrNoAnswer;
    if (buffer == nullptr || capacity < 11) return kErrBufferTooSmall;
    std::memcpy(buffer, "00000-0000", 11);
    int32_t position = 0;
    // Short codes are filled on the right, deliberately: 1234 answers 12340-0000.
    for (int32_t i = 0; i < postal.length && position < 10; ++i) {
        if (!isAsciiDigit(static_cast<unsigned char>(postal.data[i]))) continue;
        if (position == 5) ++position;  // the dash stays
        buffer[position++] = postal.data[i];
    }
    return kOk;
}

int32_t licenseNumberWithoutSeparators(const ParsedRecord* record, char* buffer, int32_t room) {
    return licenseNumberWithout(record, buffer, room, " -");
}

int32_t licenseNumberWithoutBlanks(const ParsedRecord* record, char* buffer, int32_t room) {
    return licenseNumberWithout(record, buffer, room, " ");
}

int32_t canadianAddressLine(const ParsedRecord* record, const FieldId* ids, int32_t count, char* buffer,
                            int32_t capacity) {
    if (ids == nullptr || count < 1) return kErrNoAnswer;
    const bool firstLine = ids[0] == field::address1;
    TextSpan line;
    if (!firstLine && firstFilledField(record, ids, count, &line) == kOk) return kErrNoAnswer;
    if (firstFilledField(record, kAddress1Slots, &line) != kOk) return kErrNoAnswer;
    int32_t cut = 0;
    while (cut < line.length && line.data[cut] != '$' && line.data[cut] != ',') ++cut;
    if (cut == line.length) return kErrNoAnswer;
    TextSpan part = firstLine ? TextSpan{line.data, cut} : TextSpan{line.data + cut + 1, line.length - cut - 1};
    trimIf(&part, isDollarOrNotPrintable);
    trimSet(&part, kTokenEdgeSet);
    return answerFromCopy(copyMappedZ(buffer, capacity, part, isDollarOrNotPrintable, isWhiteSpace, ' '));
}

}  // namespace orvane
