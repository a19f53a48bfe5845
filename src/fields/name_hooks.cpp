// Whole-name layouts of single jurisdictions that the generic rules would misread.
#include "fields/name_hooks.h"

#include "fields/answer.h"
#include "fields/text.h"

namespace orvane {
namespace {

constexpr int32_t kPositions = 8;
constexpr int32_t kWords = 8;

int32_t answerJoined(const TextSpan* words, int32_t count, char* buffer, int32_t capacity) {
    return answerFromCopy(joinSpansZ(buffer, capacity, words, count, kBlank, nullptr, nullptr, '\0'));
}

}  // namespace

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
