// The name workers: each picks the best source in the record, splits whole names by
// fixed rules and lets the jurisdiction's name rule answer first.
#include "fields/names.h"

#include <cstring>
#include <iterator>

#include "fields/answer.h"
#include "fields/countries.h"
#include "fields/name_hooks.h"
#include "fields/text.h"

namespace orvane {
namespace {

// Compared exactly, case included.
constexpr const char* kNameSuffixes[] = {
    "JR", "SR", "JR.", "SR.", "II", "III", "IV", "MD", "PHD", "PH.D", "M.D.", "4TH", "2ND", "3RD",
    "1ST",
    "4TH",  // deliberately listed twice
    "VI",   // deliberately no "V" in the list
    "5TH", "6TH", "7TH", "VII", "8TH", "VIII", "9TH",
};
static_assert(std::size(kNameSuffixes) == 24);

constexpr const char* kNamePlaceholders[] = {"NONE", "NONE."};  // isCleanName knows them too

constexpr int32_t kSuffixCount = static_cast<int32_t>(std::size(kNameSuffixes));
constexpr int32_t kPlaceholderCount = static_cast<int32_t>(std::size(kNamePlaceholders));

constexpr int32_t kCleanWords = 16;
constexpr int32_t kNameParts = 8;
constexpr int32_t kFirstNameWords = 3;
constexpr int32_t kNameWords = 8;
constexpr int32_t kSuffixWords = 16;
constexpr FieldId kJurisdictionSlots[] = {field::jurisdictionCode, field::residenceJurisdictionCode};

// The middle-name slot keeps its words but not its commas. The sets are built here, as
// the copies that use them are not written out where they are called.
constexpr ByteTable kCommas = byteTableOf(",");
constexpr ByteTable kCommasAndBlanks = byteTableOf(", ");
constexpr ByteTable kNoBytes = byteTableOf(nullptr);
constexpr ByteTable kBlanks = byteTableOf(kBlank);
// The whole name answered as the full name reads with blanks for its separators.
constexpr ByteTable kFullNameSeparators = byteTableOf("$@,");
constexpr ByteTable kTokenEdges = byteTableOf(kTokenEdgeSet);
constexpr ByteTable kLetters = byteTableOf("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");

using NameWorker = int32_t (*)(const ParsedRecord* record, char* buffer, int32_t capacity);

// The delimiter sets of the cuts below, built at compile time.
constexpr ByteTable kPartBreaks = byteTableOf(kPartDelimiters);
constexpr ByteTable kWordBreaks = byteTableOf(kWordDelimiters);
constexpr ByteTable kGivenNameBreaks = byteTableOf(kGivenNameDelimiters);
constexpr ByteTable kBlankBreaks = byteTableOf(kBlank);

// trimSet over a table.
void trimTable(TextSpan* span, const ByteTable& edges) {
    while (span->length > 0 && edges.has(span->data[0])) {
        ++span->data;
        --span->length;
    }
    while (span->length > 0 && edges.has(span->data[span->length - 1])) --span->length;
}

// The first word of the text at or after at, empty words skipped; false when none is left.
// next is where the following search starts: past the delimiter that ended the word.
bool nextWord(TextSpan text, int32_t at, const ByteTable& breaks, TextSpan* word, int32_t* next) {
    const int32_t n = text.length;
    while (at < n && breaks.has(text.data[at])) ++at;
    if (at >= n) return false;
    int32_t end = at;
    while (end < n && !breaks.has(text.data[end])) ++end;
    *word = TextSpan{text.data + at, end - at};
    *next = end < n ? end + 1 : end;
    return true;
}

// splitTokens skipping empty tokens, with the set's bytes tested one at a time: names
// are short, so a byte loop beats the wide searches.
int32_t cutWords(TextSpan text, TextSpan* words, int32_t max, const ByteTable& breaks) {
    if (text.data == nullptr || text.length < 1) return 0;
    int32_t count = 0;
    for (int32_t at = 0; count < max && at < text.length;) {
        if (!nextWord(text, at, breaks, &words[count], &at)) break;
        ++count;
    }
    return count;
}

// Takes out a suffix part, or turns the parts round when the second is an initial.
int32_t adjustNameParts(TextSpan* parts, int32_t count) {
    if (count < 3) return count;
    if (isNameSuffix(parts[1])) {
        std::memmove(parts + 1, parts + 2, static_cast<size_t>(count - 2) * sizeof *parts);
        return count - 1;
    }
    if (isNameSuffix(parts[count - 1])) return count - 1;
    if (parts[1].length == 1) {
        // Deliberately reads an initial in second place as FIRST,M,LAST: the last part
        // moves to the front.
        const TextSpan last = parts[count - 1];
        std::memmove(parts + 1, parts, static_cast<size_t>(count - 1) * sizeof *parts);
        parts[0] = last;
    }
    return count;
}

int32_t cutNameParts(TextSpan whole, TextSpan (&parts)[kNameParts]) {
    return adjustNameParts(parts, cutWords(whole, parts, kNameParts, kPartBreaks));
}

// Drops suffix words from the words after the first; returns the new count.
int32_t dropTrailingSuffixes(TextSpan* words, int32_t count) {
    if (count < 2) return count;
    return 1 + removeNameSuffixes(words + 1, count - 1);
}

int32_t answerTrimmed(TextSpan value, char* buffer, int32_t capacity) {
    trimIf(&value, isWhiteSpace);
    return answerAsIs(value, buffer, capacity);
}

int32_t answerJoined(const TextSpan* words, int32_t count, char* buffer, int32_t capacity) {
    return answerFromCopy(joinSpansZ(buffer, capacity, words, count, kBlank, nullptr, nullptr, '\0'));
}

// A middle name with its commas turned into blanks and runs of either collapsed.
int32_t answerMiddleText(TextSpan value, char* buffer, int32_t capacity) {
    trimIf(&value, isWhiteSpace);
    return answerFromCopy(
        copyByTablesZ(buffer, capacity, value, kCommas, kCommasAndBlanks, ' '));
}

bool hookAnswers(NameHook hook, const ParsedRecord* record, char* buffer, int32_t capacity) {
    return hook != nullptr && hook(record, buffer, capacity) == kOk;
}

bool splitsGenerically(const NameRule* rule) { return rule->useGenericSplitter == 0; }

// The first word of the given names, and what follows it.
bool cutGivenNames(const ParsedRecord* record, TextSpan* first, TextSpan* rest) {
    TextSpan given;
    if (readField(record, field::givenNames, &given) != kOk) return false;
    int32_t next = 0;
    if (!nextWord(given, 0, kGivenNameBreaks, first, &next)) return false;
    *rest = TextSpan{given.data + next, given.length - next};
    return true;
}

int32_t composeFullName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    constexpr NameWorker kPieces[] = {getFirstName, getMiddleName, getLastName, getNameSuffix};
    int32_t used = 0;
    for (NameWorker piece : kPieces) {
        const int32_t room = capacity - used;
        if (room < 1) break;
        if (piece(record, buffer + used, room) != kOk) continue;
        const int32_t length =
            static_cast<int32_t>(strnlen(buffer + used, static_cast<size_t>(room - 1)));
        buffer[used + length] = ' ';
        used += length + 1;
    }
    if (used == 0) {
        buffer[0] = '\0';
        return kErrNoAnswer;
    }
    buffer[used - 1] = '\0';
    return kOk;
}

}  // namespace

namespace {

// The suffixes packed into numbers by length, so that a word is tested with a few
// comparisons; no suffix is longer than four characters.
constexpr uint32_t packWord(const char* text, int32_t length) {
    uint32_t packed = 0;
    for (int32_t i = 0; i < length; ++i) packed = packed << 8 | static_cast<unsigned char>(text[i]);
    return packed;
}

struct PackedSuffixes {
    uint32_t words[5][kSuffixCount];
    int32_t count[5];
};

constexpr PackedSuffixes packSuffixes() {
    PackedSuffixes p{};
    for (const char* suffix : kNameSuffixes) {
        int32_t length = 0;
        while (suffix[length] != '\0') ++length;
        p.words[length][p.count[length]++] = packWord(suffix, length);
    }
    return p;
}

constexpr PackedSuffixes kPackedSuffixes = packSuffixes();
static_assert([] {
    for (const char* suffix : kNameSuffixes) {
        int32_t length = 0;
        while (suffix[length] != '\0') ++length;
        if (length < 1 || length > 4) return false;
    }
    return true;
}());

}  // namespace

bool isNameSuffix(TextSpan word) {
    if (word.data == nullptr || word.length < 1 || word.length > 4) return false;
    const uint32_t packed = packWord(word.data, word.length);
    for (int32_t i = 0; i < kPackedSuffixes.count[word.length]; ++i) {
        if (kPackedSuffixes.words[word.length][i] == packed) return true;
    }
    return false;
}

int32_t removeNameSuffixes(TextSpan* words, int32_t count) {
    if (words == nullptr || count < 1) return 0;
    int32_t kept = 0;
    for (int32_t i = 0; i < count; ++i) {
        if (!isNameSuffix(words[i])) words[kept++] = words[i];
    }
    return kept;
}

// The rule of the jurisdiction that the IIN answer names, else of the jurisdiction code
// answer, else the fallback. The two answers are taken from the slots as the workers
// would give them, without copying them into scratch buffers.
const NameRule* deriveNameRule(const ParsedRecord* record) {
    const NameRule* fallback = nameRuleForCode(TextSpan{nullptr, 0});
    if (record == nullptr || record->workBuffer == nullptr || record->workCapacity < 1) return fallback;
    // What getIIN answers: the IIN as read when the table knows it, else the jurisdiction's.
    TextSpan iin;
    TextSpan code;
    const bool read = readField(record, field::iin, &iin) == kOk;
    const bool coded = firstFilledField(record, kJurisdictionSlots, &code) == kOk;
    // The table knows an IIN exactly when it gives it a jurisdiction.
    const char* readIssuer = read ? jurisdictionCodeForIin(iin) : nullptr;
    const char* ofJurisdiction = coded && readIssuer == nullptr ? iinForJurisdictionCode(code) : nullptr;
    TextSpan answer = TextSpan{nullptr, 0};
    if (read) answer = ofJurisdiction != nullptr ? makeSpan(ofJurisdiction) : iin;
    if (!read && ofJurisdiction != nullptr) answer = makeSpan(ofJurisdiction);
    // The answer is measured up to its first NUL before its six digits are read.
    if (answer.length >= 6 && std::memchr(answer.data, '\0', 6) == nullptr) {
        const char* issuer = answer.data == iin.data && read ? readIssuer : jurisdictionCodeForIin(TextSpan{answer.data, 6});
        if (issuer != nullptr) return nameRuleForCode(makeSpan(issuer));
    }
    // What getJurisdictionCode answers: the code as read, trimmed of unprintable bytes,
    // else the one of the IIN; only two characters can name a rule.
    if (coded) {
        trimIf(&code, isNotPrintableCode);
        return nameRuleForCode(code);
    }
    return readIssuer != nullptr ? nameRuleForCode(makeSpan(readIssuer)) : fallback;
}

void rememberNameRule(ParsedRecord* record) {
    if (record == nullptr) return;
    record->nameRule = NameRuleMemo{deriveNameRule(record), record->fields[field::iin],
                                    record->fields[field::jurisdictionCode],
                                    record->fields[field::residenceJurisdictionCode]};
}

namespace {

// Whether cleaning would leave the name as it stands: at most as many words as it keeps,
// letters parted by single blanks, with no suffix after the first word and no placeholder.
// The name ends at its NUL or at max; its length is measured on the way.
bool isCleanName(const char* text, int32_t max, int32_t* length) {
    int32_t words = 0;
    bool clean = true;
    int32_t i = 0;
    for (;; ++i) {
        const int32_t wordStart = i;
        while (i < max && kLetters.has(text[i])) ++i;
        const TextSpan word{text + wordStart, i - wordStart};
        // A blank at either end or two together, too many words, a suffix after the
        // first word or the placeholder (of the placeholders only "NONE" is made of letters).
        if (word.length < 1 || ++words > kCleanWords || (wordStart > 0 && isNameSuffix(word)) ||
            (word.length == 4 && std::memcmp(word.data, "NONE", 4) == 0)) {
            clean = false;
        }
        if (i == max || text[i] != ' ') break;
    }
    if (i < max && text[i] != '\0') clean = false;
    while (i < max && text[i] != '\0') ++i;
    *length = i;
    return clean;
}

// cleanName of a name that is not clean already; kept out of line, so that the usual
// clean name costs no stack frame.
[[gnu::noinline]] int32_t cleanUncleanName(char* buffer, int32_t capacity, int32_t length) {
    const TextSpan text = makeSpan(buffer, length);
    TextSpan words[kCleanWords];
    int32_t count = dropTrailingSuffixes(words, cutWords(text, words, kCleanWords, kWordBreaks));
    count = removeWords(words, count, kNamePlaceholders, kPlaceholderCount);
    for (int32_t i = 0; i < count; ++i) trimSet(&words[i], kTokenEdgeSet);
    // Each word only moves towards the start, so the join reads every byte before it
    // writes over it.
    if (joinSpansZ(buffer, capacity, words, count, kBlank, nullptr, nullptr, '\0') > 0) return kOk;
    buffer[0] = '\0';
    return kErrNoAnswer;
}

}  // namespace

int32_t cleanName(char* buffer, int32_t capacity) {
    if (buffer == nullptr || capacity < 1) return kErrInvalidArgument;
    int32_t length = 0;
    if (!isCleanName(buffer, capacity - 1, &length)) return cleanUncleanName(buffer, capacity, length);
    buffer[length] = '\0';
    return kOk;
}

int32_t firstNameOfWholeName(TextSpan wholeName, char* buffer, int32_t capacity) {
    TextSpan parts[kNameParts];
    const int32_t count = cutNameParts(wholeName, parts);
    if (count >= 3) return answerAsIs(parts[1], buffer, capacity);
    TextSpan words[kFirstNameWords];
    const TextSpan source = count == 2 ? parts[1] : wholeName;
    if (cutWords(source, words, kFirstNameWords, kBlankBreaks) < 1) return kErrNoAnswer;
    return answerAsIs(words[0], buffer, capacity);
}

int32_t middleNameOfWholeName(TextSpan wholeName, char* buffer, int32_t capacity) {
    TextSpan parts[kNameParts];
    const int32_t count = cutNameParts(wholeName, parts);
    if (count > 2) {
        if (answerTrimmed(parts[2], buffer, capacity) != kOk) return kErrNoAnswer;
        return cleanName(buffer, capacity);
    }
    TextSpan words[kNameWords];
    if (count == 2) {
        // The given names after the first, joined as they stand.
        const int32_t given = cutWords(parts[1], words, kNameWords, kBlankBreaks);
        if (given < 2) return kErrNoAnswer;
        return answerJoined(words + 1, given - 1, buffer, capacity);
    }
    const int32_t all = cutWords(wholeName, words, kNameWords, kBlankBreaks);
    if (all < 3) return kErrNoAnswer;
    if (dropTrailingSuffixes(words, all) < 3) return kErrNoAnswer;
    if (answerAsIs(words[1], buffer, capacity) != kOk) return kErrNoAnswer;
    return cleanName(buffer, capacity);
}

int32_t lastNameOfWholeName(TextSpan wholeName, char* buffer, int32_t capacity) {
    TextSpan parts[kNameParts];
    if (cutNameParts(wholeName, parts) >= 2) {
        TextSpan last = parts[0];
        trimIf(&last, isWhiteSpace);
        return answerFromCopy(copyByTablesZ(buffer, capacity, last, kNoBytes, kBlanks, '\0'));
    }
    TextSpan words[kNameWords];
    const int32_t count = removeNameSuffixes(words, cutWords(wholeName, words, kNameWords, kBlankBreaks));
    // Everything after the first two words, so that a two-word surname stays whole.
    if (count >= 3) return answerJoined(words + 2, count - 2, buffer, capacity);
    if (count == 2) return answerAsIs(words[1], buffer, capacity);
    return kErrNoAnswer;
}

int32_t getFirstName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    buffer[0] = '\0';
    const NameRule* rule = nameRuleFor(record);
    if (hookAnswers(rule->firstNameHook, record, buffer, capacity)) return cleanName(buffer, capacity);
    TextSpan value;
    if (readField(record, field::firstName, &value) == kOk &&
        answerTrimmed(value, buffer, capacity) == kOk) {
        return cleanName(buffer, capacity);
    }
    TextSpan rest;
    if (cutGivenNames(record, &value, &rest) && answerAsIs(value, buffer, capacity) == kOk) {
        return cleanName(buffer, capacity);
    }
    TextSpan whole;
    if (readField(record, field::fullName, &whole) != kOk) return kErrNoAnswer;
    if (hookAnswers(rule->firstNameHook, record, buffer, capacity)) return cleanName(buffer, capacity);
    const int32_t status = splitsGenerically(rule)
                               ? kGenericSplitter.first(record, whole, buffer, capacity)
                               : firstNameOfWholeName(whole, buffer, capacity);
    if (status != kOk) return kErrNoAnswer;
    return cleanName(buffer, capacity);
}

int32_t getMiddleName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    buffer[0] = '\0';
    const NameRule* rule = nameRuleFor(record);
    if (hookAnswers(rule->middleNameHook, record, buffer, capacity)) return kOk;
    TextSpan value;
    if (readField(record, field::middleName, &value) == kOk &&
        answerMiddleText(value, buffer, capacity) == kOk) {
        return cleanName(buffer, capacity);
    }
    TextSpan first;
    if (cutGivenNames(record, &first, &value) && answerMiddleText(value, buffer, capacity) == kOk) {
        return cleanName(buffer, capacity);
    }
    if (hookAnswers(rule->middleNameHook, record, buffer, capacity)) return kOk;
    TextSpan whole;
    if (readField(record, field::fullName, &whole) != kOk) return kErrNoAnswer;
    // A splitter's middle name is taken as written, like a hook's.
    if (splitsGenerically(rule)) {
        return kGenericSplitter.middle(record, whole, buffer, capacity) == kOk ? kOk : kErrNoAnswer;
    }
    return middleNameOfWholeName(whole, buffer, capacity);
}

int32_t getLastName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    buffer[0] = '\0';
    const NameRule* rule = nameRuleFor(record);
    if (hookAnswers(rule->lastNameHook, record, buffer, capacity)) return cleanName(buffer, capacity);
    TextSpan value;
    if (readField(record, field::lastName, &value) == kOk &&
        answerTrimmed(value, buffer, capacity) == kOk) {
        return cleanName(buffer, capacity);
    }
    if (readField(record, field::fullName, &value) != kOk) return kErrNoAnswer;
    if (splitsGenerically(rule)) {
        return kGenericSplitter.last(record, value, buffer, capacity) == kOk ? kOk : kErrNoAnswer;
    }
    return lastNameOfWholeName(value, buffer, capacity);
}

namespace {

// The first suffix among the first words of the text, one at a time. Deliberately never
// takes a suffix from a word that opens the text: IV SMITH has none.
int32_t answerSuffixWord(TextSpan source, char* buffer, int32_t capacity) {
    TextSpan word;
    int32_t at = 0;
    for (int32_t seen = 0; seen < kSuffixWords && at < source.length && nextWord(source, at, kGivenNameBreaks, &word, &at);
         ++seen) {
        if (word.data != source.data && isNameSuffix(word)) return answerAsIs(word, buffer, capacity);
    }
    return kErrNoAnswer;
}

}  // namespace

int32_t getNameSuffix(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    buffer[0] = '\0';
    TextSpan value;
    if (readField(record, field::nameSuffix, &value) == kOk) {
        trimIf(&value, isWhiteSpace);
        if (value.length > 0) {
            if (spanCompare(value, makeSpan("NONE"), kIgnoreCase) == 0) return kErrNoAnswer;
            return answerAsIs(value, buffer, capacity);
        }
    }
    if (hookAnswers(nameRuleFor(record)->suffixHook, record, buffer, capacity)) return kOk;
    TextSpan source;
    if (readField(record, field::fullName, &source) != kOk &&
        readField(record, field::lastName, &source) != kOk) {
        return kErrNoAnswer;
    }
    return answerSuffixWord(source, buffer, capacity);
}

int32_t getNamePrefix(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    buffer[0] = '\0';
    if (hookAnswers(nameRuleFor(record)->prefixHook, record, buffer, capacity)) return kOk;
    TextSpan value;
    if (readField(record, field::namePrefix, &value) != kOk) return kErrNoAnswer;
    return answerTrimmed(value, buffer, capacity);
}

int32_t getFullName(const ParsedRecord* record, char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    buffer[0] = '\0';
    TextSpan whole;
    if (readField(record, field::fullName, &whole) != kOk) {
        return composeFullName(record, buffer, capacity);
    }
    trimTable(&whole, kTokenEdges);
    // Deliberately one character shorter than the other answers: capacity - 2 at most.
    return answerFromCopy(
        copyByTablesZ(buffer, capacity - 1, whole, kFullNameSeparators, kBlanks, ' '));
}

}  // namespace orvane
