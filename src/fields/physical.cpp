#include "fields/physical.h"

#include "fields/answer.h"
#include "fields/color_tables.h"
#include "fields/text.h"
#include "fields/weight_ranges.h"

namespace orvane {
namespace {

constexpr int32_t kMinimumWeightCapacity = 4;
constexpr int32_t kLongestConvertedWeight = 7;
constexpr int32_t kLongestStoredPounds = 9;

bool startsWith(TextSpan value, char first) { return value.length >= 1 && value.data[0] == first; }

// Answers the named colour, or the stored code untouched when the table does not know it.
int32_t answerColor(const ParsedRecord* record, FieldId id, const char* (*nameFor)(TextSpan),
                    char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    TextSpan code;
    if (readField(record, id, &code) != kOk) return kErrNoAnswer;
    if (const char* name = nameFor(code)) return answerLiteral(name, buffer, capacity);
    return answerAsIs(code, buffer, capacity);
}

// Writes the first character, an apostrophe, the rest and a double quote: the digits
// are deliberately neither checked nor padded, so "6" answers 6'".
int32_t answerFeetAndInches(TextSpan height, char* buffer, int32_t capacity) {
    trimIf(&height, isNotPrintableCode);
    if (height.length < 1) return kErrNoAnswer;
    if (capacity <= height.length + 2) return kErrBufferTooSmall;
    int32_t written = 0;
    buffer[written++] = height.data[0];
    buffer[written++] = '\'';
    for (int32_t i = 1; i < height.length; ++i) buffer[written++] = height.data[i];
    buffer[written++] = '"';
    buffer[written] = '\0';
    return kOk;
}

int32_t answerCentimetres(TextSpan height, char* buffer, int32_t capacity) {
    trimIf(&height, isNotPrintableCode);
    // Deliberately -18 for an empty text too, as for a buffer that cannot take the unit.
    if (height.length < 1 || capacity <= height.length + 2) return kErrBufferTooSmall;
    const int32_t written = copyFiltered(buffer, capacity, height, nullptr, nullptr, '\0');
    buffer[written] = 'c';
    buffer[written + 1] = 'm';
    buffer[written + 2] = '\0';
    return kOk;
}

bool hasLengthUpTo(TextSpan value, int32_t longest) {
    return value.length >= 1 && value.length <= longest;
}

bool isWholeNumber(TextSpan value, int32_t longest) {
    return hasLengthUpTo(value, longest) && allChars(value, isAsciiDigit) == 0;
}

int64_t leadingNumber(TextSpan value) {
    int64_t number = 0;
    for (int32_t i = 0; i < value.length && isAsciiDigit(static_cast<unsigned char>(value.data[i])); ++i) {
        number = number * 10 + (value.data[i] - '0');
        if (number > 9) return number;  // already past every range digit
    }
    return number;
}

// Writes a converted weight. Deliberately: digits that fill the buffer exactly get no
// terminator, and digits that do not fit leave the empty text, both with status 0.
int32_t answerConvertedWeight(int32_t weight, char* buffer, int32_t capacity) {
    const int32_t written = formatInt(weight, buffer, capacity, 0);
    if (written < capacity) buffer[written] = '\0';
    return kOk;
}

// Single-precision on purpose, so that rounding matches the stored conversion exactly.
int32_t poundsToKilograms(int32_t pounds) {
    const float kilograms = static_cast<float>(pounds) / 2.2f;
    return static_cast<int32_t>(kilograms + 0.5f);
}

int32_t kilogramsToPounds(int32_t kilograms) {
    const float pounds = static_cast<float>(kilograms) * 2.2f;
    return static_cast<int32_t>(pounds + 0.5f);
}

int32_t readWholeNumber(TextSpan digits) {
    int32_t number = 0;
    for (int32_t i = 0; i < digits.length; ++i) number = number * 10 + (digits.data[i] - '0');
    return number;
}

// The range text for the stored weight-range digit, or -26.
int32_t answerWeightRange(const ParsedRecord* record, const char* (*rangeText)(int64_t),
                          char* buffer, int32_t capacity) {
    TextSpan range;
    if (readField(record, field::weightRange, &range) != kOk) return kErrNoAnswer;
    if (!isAsciiDigit(static_cast<unsigned char>(range.data[0]))) return kErrNoAnswer;
    const char* text = rangeText(leadingNumber(range));
    if (text == nullptr) return kErrNoAnswer;
    return answerLiteral(text, buffer, capacity);
}

int32_t checkWeightArgs(const ParsedRecord* record, const char* buffer, int32_t capacity) {
    if (capacity < kMinimumWeightCapacity) return kErrInvalidArgument;
    return checkAnswerArgs(record, buffer, capacity);
}

}  // namespace

int32_t genderCode(const ParsedRecord* record, int32_t* result) {
    if (int32_t status = checkAnswerArgs(record, result, 1)) return status;
    TextSpan gender;
    if (readField(record, field::gender, &gender) != kOk) return kErrNoAnswer;
    // The tests run in this order: whole words first, then the first character.
    if (spanEquals(gender, "MALE") == 0 || startsWith(gender, '1') || startsWith(gender, 'M')) {
        *result = kGenderMale;
        return kOk;
    }
    if (spanEquals(gender, "FEMALE") == 0 || startsWith(gender, '2') || startsWith(gender, 'F')) {
        *result = kGenderFemale;
        return kOk;
    }
    return kErrNoAnswer;
}

int32_t getGender(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    int32_t gender = 0;
    if (int32_t status = genderCode(record, &gender)) return status;
    const char* text = gender == kGenderMale ? "Male" : "Female";
    // The whole word or nothing: a cut gender would read as another answer.
    if (capacity <= makeSpan(text).length) return kErrBufferTooSmall;
    copyLiteralZ(buffer, capacity, text);
    return kOk;
}

int32_t getEyeColor(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerColor(record, field::eyeColor, eyeColorName, buffer, capacity);
}

int32_t getHairColor(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerColor(record, field::hairColor, hairColorName, buffer, capacity);
}

int32_t getRace(const ParsedRecord* record, char* buffer, int32_t capacity) {
    return answerSlot(record, field::race, answerPrintable, buffer, capacity);
}

int32_t getHeight(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    TextSpan height;
    if (readField(record, field::heightAlt, &height) == kOk) {
        return answerPrintable(height, buffer, capacity);
    }
    if (readField(record, field::height, &height) == kOk) {
        return answerFeetAndInches(height, buffer, capacity);
    }
    if (readField(record, field::heightCentimeters, &height) == kOk) {
        return answerCentimetres(height, buffer, capacity);
    }
    return kErrNoAnswer;
}

int32_t getWeightKG(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkWeightArgs(record, buffer, capacity)) return status;
    TextSpan weight;
    if (readField(record, field::weightPounds, &weight) == kOk &&
        isWholeNumber(weight, kLongestConvertedWeight)) {
        return answerConvertedWeight(poundsToKilograms(readWholeNumber(weight)), buffer, capacity);
    }
    if (readField(record, field::weightKilograms, &weight) == kOk &&
        hasLengthUpTo(weight, kLongestConvertedWeight) && allChars(weight, isDigitOrPoint) == 0) {
        return answerAsIs(weight, buffer, capacity);
    }
    return answerWeightRange(record, weightRangeKilograms, buffer, capacity);
}

int32_t getWeightLBS(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkWeightArgs(record, buffer, capacity)) return status;
    TextSpan weight;
    // Deliberately looser than the kilogram reading: up to nine characters of any kind.
    if (readField(record, field::weightPounds, &weight) == kOk &&
        hasLengthUpTo(weight, kLongestStoredPounds)) {
        return answerAsIs(weight, buffer, capacity);
    }
    if (readField(record, field::weightKilograms, &weight) == kOk &&
        isWholeNumber(weight, kLongestConvertedWeight)) {
        return answerConvertedWeight(kilogramsToPounds(readWholeNumber(weight)), buffer, capacity);
    }
    return answerWeightRange(record, weightRangePounds, buffer, capacity);
}

}  // namespace orvane
