// Whole-name layouts of single jurisdictions that the generic rules would misread. A
// hook that does not recognise its layout returns non-zero so the generic steps go on.
#include "fields/name_hooks.h"

#include <cstring>
#include <iterator>

#include "fields/answer.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr int32_t kPositions = 8;
constexpr int32_t kWords = 8;

// Titles that may stand before a surname.
constexpr const char* kTitles[] = {
    "MR", "MRS", "MS", "MISS", "DR", "REV", "HON", "MR.", "MRS.", "MS.", "DR.", "REV.", "HON.",
};
static_assert(std::size(kTitles) == 13);

// The whole name, when the record has none of the slots that the worker prefers to it.
template <size_t N>
bool wholeNameWithout(const ParsedRecord* record, const FieldId (&preferred)[N], TextSpan* whole) {
    for (FieldId id : preferred) {
        if (fieldMissing(record, id) == 0) return false;
    }
    return readField(record, field::fullName, whole) == kOk;
}

constexpr FieldId kFirstNameSlots[] = {field::firstName, field::givenNames};
constexpr FieldId kMiddleNameSlots[] = {field::middleName, field::givenNames};
constexpr FieldId kLastNameSlots[] = {field::lastName};
constexpr FieldId kSuffixSlots[] = {field::nameSuffix};
constexpr FieldId kPrefixSlots[] = {field::namePrefix};

int32_t answerTrimmed(TextSpan value, char* buffer, int32_t capacity) {
    trimIf(&value, isWhiteSpace);
    return answerAsIs(value, buffer, capacity);
}

int32_t answerJoined(const TextSpan* words, int32_t count, char* buffer, int32_t capacity) {
    return answerFromCopy(joinSpansZ(buffer, capacity, words, count, kBlank, nullptr, nullptr, '\0'));
}

bool hasPartDelimiter(TextSpan text) {
    for (int32_t i = 0; i < text.length; ++i) {
        if (text.data[i] != '\0' && std::strchr(kPartDelimiters, text.data[i]) != nullptr) return true;
    }
    return false;
}

}  // namespace

// ---- Alabama ----

// Alabama writes the whole name by position, LAST,FIRST,MIDDLE, keeping empty positions,
// with a suffix in a position of its own and perhaps a title before the surname:
// "DR SMITH,J,PAUL,JR". The generic rules would turn a name with a lone initial as first
// name round and keep the title in the surname.
namespace {

struct AlabamaName {
    TextSpan title;
    TextSpan surname;
    TextSpan first;
    TextSpan middle;
    TextSpan suffix;
};

// Takes the first position after the surname that holds a suffix out of the positions.
int32_t takeSuffixPosition(TextSpan* positions, int32_t count, TextSpan* suffix) {
    for (int32_t i = 1; i < count; ++i) {
        if (!isNameSuffix(positions[i])) continue;
        *suffix = positions[i];
        const size_t after = static_cast<size_t>(count - i - 1);
        std::memmove(positions + i, positions + i + 1, after * sizeof *positions);
        return count - 1;
    }
    return count;
}

void splitTitle(TextSpan part, TextSpan* title, TextSpan* surname) {
    trimIf(&part, isWhiteSpace);
    *surname = part;
    TextSpan word;
    TextSpan rest;
    if (nextToken(part, &word, &rest, kBlank, kSkipEmptyTokens) != 1) return;
    trimIf(&rest, isWhiteSpace);
    if (rest.length < 1 || !spanInList(word, kTitles, static_cast<int32_t>(std::size(kTitles)))) return;
    *title = word;
    *surname = rest;
}

bool readAlabamaName(TextSpan whole, AlabamaName* name) {
    *name = AlabamaName{};
    TextSpan positions[kPositions];
    int32_t count = splitTokens(whole, positions, kPositions, kPartDelimiters, 0);
    count = takeSuffixPosition(positions, count, &name->suffix);
    if (count < 2) return false;
    splitTitle(positions[0], &name->title, &name->surname);
    if (count >= 3) {
        name->first = positions[1];
        name->middle = positions[2];
        return true;
    }
    // Two positions are the generic LAST,FIRST MIDDLE unless a title stands first.
    if (!spanUsable(name->title)) return false;
    nextToken(positions[1], &name->first, &name->middle, kBlank, kSkipEmptyTokens);
    return true;
}

template <size_t N>
bool readAlabamaRecord(const ParsedRecord* record, const FieldId (&preferred)[N], AlabamaName* name) {
    TextSpan whole;
    return wholeNameWithout(record, preferred, &whole) && readAlabamaName(whole, name);
}

}  // namespace

int32_t alabamaFirstName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    AlabamaName name;
    if (!readAlabamaRecord(record, kFirstNameSlots, &name)) return kErrNoAnswer;
    return answerTrimmed(name.first, buffer, capacity);
}

int32_t alabamaLastName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    AlabamaName name;
    if (!readAlabamaRecord(record, kLastNameSlots, &name)) return kErrNoAnswer;
    return answerTrimmed(name.surname, buffer, capacity);
}

int32_t alabamaMiddleName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    AlabamaName name;
    if (!readAlabamaRecord(record, kMiddleNameSlots, &name)) return kErrNoAnswer;
    if (answerTrimmed(name.middle, buffer, capacity) != kOk) return kErrNoAnswer;
    return cleanName(buffer, capacity);
}

int32_t alabamaSuffix(const ParsedRecord* record, char* buffer, int32_t capacity) {
    AlabamaName name;
    if (!readAlabamaRecord(record, kSuffixSlots, &name)) return kErrNoAnswer;
    return answerAsIs(name.suffix, buffer, capacity);
}

int32_t alabamaPrefix(const ParsedRecord* record, char* buffer, int32_t capacity) {
    AlabamaName name;
    if (!readAlabamaRecord(record, kPrefixSlots, &name)) return kErrNoAnswer;
    return answerAsIs(name.title, buffer, capacity);
}

// ---- Colorado ----

// Colorado writes a whole name without commas surname first, LAST FIRST MIDDLE, with any
// suffix at the end: "SMITH JOHN PAUL JR". The generic rules would read it as FIRST
// MIDDLE LAST.
namespace {

template <size_t N>
int32_t readColoradoRecord(const ParsedRecord* record, const FieldId (&preferred)[N],
                           TextSpan (&words)[kWords]) {
    TextSpan whole;
    if (!wholeNameWithout(record, preferred, &whole) || hasPartDelimiter(whole)) return 0;
    const int32_t count = splitTokens(whole, words, kWords, kBlank, kSkipEmptyTokens);
    if (count < 2) return 0;
    return 1 + removeNameSuffixes(words + 1, count - 1);
}

}  // namespace

int32_t coloradoFirstName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    TextSpan words[kWords];
    if (readColoradoRecord(record, kFirstNameSlots, words) < 2) return kErrNoAnswer;
    return answerAsIs(words[1], buffer, capacity);
}

int32_t coloradoLastName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    TextSpan words[kWords];
    if (readColoradoRecord(record, kLastNameSlots, words) < 2) return kErrNoAnswer;
    return answerAsIs(words[0], buffer, capacity);
}

int32_t coloradoMiddleName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    TextSpan words[kWords];
    const int32_t count = readColoradoRecord(record, kMiddleNameSlots, words);
    if (count < 3) return kErrNoAnswer;
    return answerJoined(words + 2, count - 2, buffer, capacity);
}

// ---- The generic splitter ----

// California may write the suffix as a word inside either part of a LAST,GIVEN NAMES
// name: "SMITH JR,JOHN PAUL", "SMITH,JOHN PAUL JR", "SMITH,JR JOHN". The generic rules
// would keep it in the surname or the middle name, or take it for the first name. Any
// other whole name is cut by the generic rules.
namespace {

struct SuffixedName {
    TextSpan surname[kWords];
    TextSpan given[kWords];
    int32_t surnameWords;
    int32_t givenWords;
};

bool readSuffixedName(TextSpan whole, SuffixedName* name) {
    TextSpan parts[kPositions];
    if (splitTokens(whole, parts, kPositions, kPartDelimiters, kSkipEmptyTokens) != 2) return false;
    const int32_t surname = splitTokens(parts[0], name->surname, kWords, kBlank, kSkipEmptyTokens);
    const int32_t given = splitTokens(parts[1], name->given, kWords, kBlank, kSkipEmptyTokens);
    name->surnameWords = removeNameSuffixes(name->surname, surname);
    name->givenWords = removeNameSuffixes(name->given, given);
    const bool hadSuffix = name->surnameWords < surname || name->givenWords < given;
    return hadSuffix && name->surnameWords > 0 && name->givenWords > 0;
}

int32_t firstNameBesideSuffix(const ParsedRecord*, TextSpan whole, char* buffer, int32_t capacity) {
    SuffixedName name;
    if (!readSuffixedName(whole, &name)) return firstNameOfWholeName(whole, buffer, capacity);
    return answerAsIs(name.given[0], buffer, capacity);
}

int32_t lastNameBesideSuffix(const ParsedRecord*, TextSpan whole, char* buffer, int32_t capacity) {
    SuffixedName name;
    if (!readSuffixedName(whole, &name)) return lastNameOfWholeName(whole, buffer, capacity);
    return answerJoined(name.surname, name.surnameWords, buffer, capacity);
}

int32_t middleNameBesideSuffix(const ParsedRecord*, TextSpan whole, char* buffer, int32_t capacity) {
    SuffixedName name;
    if (!readSuffixedName(whole, &name)) return middleNameOfWholeName(whole, buffer, capacity);
    if (name.givenWords < 2) return kErrNoAnswer;
    return answerJoined(name.given + 1, name.givenWords - 1, buffer, capacity);
}

}  // namespace

const GenericSplitter kGenericSplitter = {firstNameBesideSuffix, lastNameBesideSuffix,
                                          middleNameBesideSuffix};

}  // namespace orvane
