#include "fields/names.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "api/handle.h"
#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;

constexpr const char* kNone = nullptr;  // the worker answers -26

struct Slot {
    FieldId id;
    const char* text;
};

void fill(ParsedRecord* record, const std::vector<Slot>& slots) {
    for (const Slot& s : slots) setFieldLiteral(record, s.id, s.text);
}

using NameWorker = int32_t (*)(const ParsedRecord*, char*, int32_t);
struct NamedWorker {
    const char* name;
    NameWorker worker;
};
constexpr NamedWorker kWorkers[] = {
    {"first", getFirstName},   {"middle", getMiddleName}, {"last", getLastName},
    {"suffix", getNameSuffix}, {"prefix", getNamePrefix}, {"full", getFullName},
};
using Answers = std::array<const char*, std::size(kWorkers)>;

std::string answerText(const char* text) { return text != nullptr ? text : "(no answer)"; }

// Every worker's answer, "(no answer)" for -26; any other status fails the test.
std::array<std::string, std::size(kWorkers)> answersOf(const ParsedRecord* record) {
    std::array<std::string, std::size(kWorkers)> answers;
    for (size_t i = 0; i < std::size(kWorkers); ++i) {
        char buffer[128];
        std::memset(buffer, 'x', sizeof buffer);
        const int32_t status = kWorkers[i].worker(record, buffer, sizeof buffer);
        EXPECT_TRUE(status == kOk || status == kErrNoAnswer) << kWorkers[i].name << " " << status;
        answers[i] = status == kOk ? std::string(buffer) : answerText(nullptr);
        if (status == kOk) EXPECT_FALSE(answers[i].empty()) << kWorkers[i].name;
    }
    return answers;
}

void expectAnswers(const ParsedRecord* record, const Answers& expected) {
    const auto answers = answersOf(record);
    for (size_t i = 0; i < std::size(kWorkers); ++i) {
        EXPECT_EQ(answers[i], answerText(expected[i])) << kWorkers[i].name;
    }
}

// ---- cleanName ----

TEST(CleanName, DropsSuffixesPlaceholdersAndEdges) {
    struct Case {
        const char* text;
        const char* cleaned;
    };
    const Case cases[] = {
        {"JOHN JR", "JOHN"},
        {"JR JOHN", "JR JOHN"},  // the first word stays even when it is a suffix
        {"JR", "JR"},
        {"JOHN 4TH III", "JOHN"},
        {"JOHN V", "JOHN V"},    // V is no suffix
        {"JOHN jr", "JOHN jr"},  // suffixes match case
        {"NONE", kNone},
        {"NONE.", kNone},
        {"NONE JOHN", "JOHN"},
        {"JOHN NONE.", "JOHN"},
        {"NONE JR", kNone},  // JR goes as a suffix, NONE as a placeholder
        {"-JOHN-", "JOHN"},
        {"^/JOHN\\", "JOHN"},
        {"O'BRIEN-SMITH", "O'BRIEN-SMITH"},
        {"JOHN,PAUL$MARY@ANN", "JOHN PAUL MARY ANN"},
        {"  JOHN \t PAUL\r\n", "JOHN PAUL"},
        {"- / ^", kNone},
        {"", kNone},
        {"A B C D E F G H I J K L M N O P Q R", "A B C D E F G H I J K L M N O P"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        char buffer[64];
        std::strcpy(buffer, c.text);
        const int32_t status = cleanName(buffer, sizeof buffer);
        if (c.cleaned == kNone) {
            EXPECT_EQ(status, kErrNoAnswer);
            EXPECT_STREQ(buffer, "");
        } else {
            EXPECT_EQ(status, kOk);
            EXPECT_STREQ(buffer, c.cleaned);
        }
    }
}

TEST(CleanName, StaysInsideItsCapacity) {
    char buffer[8] = {'J', 'O', 'H', 'N', ' ', 'P', 'A', 'U'};  // no terminator within reach
    EXPECT_EQ(cleanName(buffer, sizeof buffer), kOk);
    EXPECT_STREQ(buffer, "JOHN PA");
    EXPECT_EQ(cleanName(nullptr, 8), kErrInvalidArgument);
    EXPECT_EQ(cleanName(buffer, 0), kErrInvalidArgument);
}

// ---- The workers ----

// Whole names as the generic rules read them. None of them is one of the layouts of the
// jurisdictions with rules of their own, so a California record reads them the same.
struct WholeNameCase {
    const char* whole;
    Answers answers;  // first, middle, last, suffix, prefix, full
};
const WholeNameCase kWholeNames[] = {
    {"SMITH,JOHN,PAUL", {"JOHN", "PAUL", "SMITH", kNone, kNone, "SMITH JOHN PAUL"}},
    {"SMITH$JOHN@PAUL", {"JOHN", "PAUL", "SMITH", kNone, kNone, "SMITH JOHN PAUL"}},
    {"SMITH,JOHN PAUL", {"JOHN", "PAUL", "SMITH", kNone, kNone, "SMITH JOHN PAUL"}},
    {"SMITH , JOHN PAUL GEORGE", {"JOHN", "PAUL GEORGE", "SMITH", kNone, kNone, "SMITH JOHN PAUL GEORGE"}},
    {"VAN  DYKE,JOHN", {"JOHN", kNone, "VAN DYKE", kNone, kNone, "VAN DYKE JOHN"}},
    {"JOHN PAUL SMITH JR", {"JOHN", "PAUL", "SMITH", "JR", kNone, "JOHN PAUL SMITH JR"}},
    {"JOHN PAUL VAN DYKE", {"JOHN", "PAUL", "VAN DYKE", kNone, kNone, "JOHN PAUL VAN DYKE"}},
    {"JOHN SMITH III", {"JOHN", kNone, "SMITH", "III", kNone, "JOHN SMITH III"}},
    {"JOHN", {"JOHN", kNone, kNone, kNone, kNone, "JOHN"}},
    {"SMITH,JR,JOHN", {"JOHN", kNone, "SMITH", "JR", kNone, "SMITH JR JOHN"}},
    {"SMITH,JOHN PAUL,JR", {"JOHN", "PAUL", "SMITH", "JR", kNone, "SMITH JOHN PAUL JR"}},
    {"SMITH,JOHN,PAUL JR", {"JOHN", "PAUL", "SMITH", "JR", kNone, "SMITH JOHN PAUL JR"}},
    // An initial in second place turns the parts round, deliberately, unless a suffix
    // part is dropped first.
    {"SMITH,J,JOHN", {"SMITH", "J", "JOHN", kNone, kNone, "SMITH J JOHN"}},
    {"SMITH,J,JR", {"J", kNone, "SMITH", "JR", kNone, "SMITH J JR"}},
    // A word that opens the name is never the suffix.
    {"IV SMITH", {"IV", kNone, kNone, kNone, kNone, "IV SMITH"}},
    {" IV SMITH", {"IV", kNone, kNone, "IV", kNone, "IV SMITH"}},
    {"DOE,NONE", {kNone, kNone, "DOE", kNone, kNone, "DOE NONE"}},
    // Two parts give the middle name as written.
    {"SMITH,JOHN NONE", {"JOHN", "NONE", "SMITH", kNone, kNone, "SMITH JOHN NONE"}},
    {",-SMITH,JOHN/", {"JOHN", kNone, "-SMITH", kNone, kNone, "SMITH JOHN"}},
    {",,,", {kNone, kNone, kNone, kNone, kNone, kNone}},
};

TEST(NameWorkers, CutWholeNames) {
    for (const WholeNameCase& c : kWholeNames) {
        SCOPED_TRACE(c.whole);
        RecordWithBuffer r;
        fill(r.get(), {{field::fullName, c.whole}});
        expectAnswers(r.get(), c.answers);
    }
}

TEST(NameWorkers, PreferSlotsInOrder) {
    struct Case {
        const char* what;
        std::vector<Slot> slots;
        Answers answers;
    };
    const Case cases[] = {
        {"slots over given names over whole name",
         {{field::firstName, " JANE "}, {field::givenNames, "MARY ANN"}, {field::fullName, "DOE,JOHN PAUL"}},
         {"JANE", "ANN", "DOE", kNone, kNone, "DOE JOHN PAUL"}},
        {"given names over whole name",
         {{field::givenNames, ",MARY ANN, LOUISE"}, {field::fullName, "DOE,JOHN PAUL"}},
         {"MARY", "ANN LOUISE", "DOE", kNone, kNone, "DOE JOHN PAUL"}},
        {"separate slots composed",
         {{field::firstName, "JOHN"}, {field::lastName, "DOE"}},
         {"JOHN", kNone, "DOE", kNone, kNone, "JOHN DOE"}},
        {"all parts composed",
         {{field::firstName, "JOHN"}, {field::middleName, "PAUL"}, {field::lastName, "DOE"},
          {field::nameSuffix, " JR "}, {field::namePrefix, " DR "}},
         {"JOHN", "PAUL", "DOE", "JR", "DR", "JOHN PAUL DOE JR"}},
        {"suffix from the last name",
         {{field::firstName, "JOHN"}, {field::lastName, "DOE JR"}},
         {"JOHN", kNone, "DOE", "JR", kNone, "JOHN DOE JR"}},
        {"middle slot loses commas and placeholders",
         {{field::middleName, " A,, B,NONE."}, {field::lastName, "DOE"}},
         {kNone, "A B", "DOE", kNone, kNone, "A B DOE"}},
        // A placeholder in a slot is the answer, not a reason to look further.
        {"placeholder first name",
         {{field::firstName, "NONE"}, {field::fullName, "DOE,JOHN"}},
         {kNone, kNone, "DOE", kNone, kNone, "DOE JOHN"}},
        {"suffix slot none in any case",
         {{field::nameSuffix, "none"}, {field::fullName, "JOHN SMITH JR"}},
         {"JOHN", kNone, "SMITH", kNone, kNone, "JOHN SMITH JR"}},
        {"blank slots give way",
         {{field::firstName, "  "}, {field::lastName, " "}, {field::middleName, " "}, {field::nameSuffix, " "},
          {field::fullName, "DOE,JOHN PAUL JR"}},
         {"JOHN", "PAUL JR", "DOE", "JR", kNone, "DOE JOHN PAUL JR"}},
        {"nothing", {{field::city, "SMITH"}}, {kNone, kNone, kNone, kNone, kNone, kNone}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        RecordWithBuffer r;
        fill(r.get(), c.slots);
        expectAnswers(r.get(), c.answers);
    }
}

TEST(NameWorkers, FullNameKeepsOneCharacterMore) {
    struct Case {
        std::vector<Slot> slots;
        int32_t capacity;
        const char* full;
    };
    const Case cases[] = {
        {{{field::fullName, "SMITH,JOHN"}}, 7, "SMITH"},
        {{{field::fullName, "SMITH,JOHN"}}, 3, "S"},
        {{{field::fullName, "SMITH,JOHN"}}, 2, kNone},
        {{{field::fullName, "SMITH,JOHN"}}, 1, kNone},
        // Composed pieces share the room; a piece that does not fit is left out.
        {{{field::firstName, "JOHN"}, {field::lastName, "DOE"}}, 9, "JOHN DOE"},
        {{{field::firstName, "JOHN"}, {field::lastName, "DOE"}}, 8, "JOHN DO"},
        {{{field::firstName, "JOHN"}, {field::lastName, "DOE"}}, 6, "JOHN"},
        {{{field::firstName, "JOHN"}, {field::lastName, "DOE"}}, 3, "JO"},
        {{{field::firstName, "JOHN"}, {field::lastName, "DOE"}}, 1, kNone},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.capacity);
        RecordWithBuffer r;
        fill(r.get(), c.slots);
        char buffer[16];
        std::memset(buffer, 'x', sizeof buffer);
        const int32_t status = getFullName(r.get(), buffer, c.capacity);
        EXPECT_EQ(buffer[c.capacity], 'x');  // nothing written beyond the capacity
        if (c.full == kNone) {
            EXPECT_EQ(status, kErrNoAnswer);
        } else {
            EXPECT_EQ(status, kOk);
            EXPECT_STREQ(buffer, c.full);
        }
    }
    // The other workers keep capacity - 1 characters.
    RecordWithBuffer r;
    fill(r.get(), {{field::fullName, "SMITH,JOHN"}});
    char buffer[3];
    EXPECT_EQ(getFirstName(r.get(), buffer, 3), kOk);
    EXPECT_STREQ(buffer, "JO");
}

TEST(NameWorkers, RefuseBadArguments) {
    RecordWithBuffer r;
    fill(r.get(), {{field::fullName, "SMITH,JOHN"}, {field::namePrefix, "DR"}});
    ParsedRecord unattached{};
    char buffer[16];
    for (const NamedWorker& w : kWorkers) {
        SCOPED_TRACE(w.name);
        EXPECT_EQ(w.worker(nullptr, buffer, 16), kErrInvalidArgument);
        EXPECT_EQ(w.worker(&unattached, buffer, 16), kErrInvalidArgument);
        EXPECT_EQ(w.worker(r.get(), nullptr, 16), kErrInvalidArgument);
        EXPECT_EQ(w.worker(r.get(), buffer, 0), kErrInvalidArgument);
        EXPECT_EQ(w.worker(r.get(), buffer, -1), kErrInvalidArgument);
        EXPECT_EQ(w.worker(r.get(), buffer, 1), kErrNoAnswer);  // only the terminator fits
    }
}

TEST(NameWorkers, LeaveTheRecordAlone) {
    RecordWithBuffer r;
    fill(r.get(), {{field::fullName, "SMITH,J,JOHN"}, {field::jurisdictionCode, "CA"}});
    const std::vector<char> before = r.buffer;
    const int32_t used = r.record.workUsed;
    answersOf(r.get());
    EXPECT_EQ(r.buffer, before);
    EXPECT_EQ(r.record.workUsed, used);
}

// ---- Jurisdiction layouts ----

struct LayoutCase {
    std::vector<Slot> slots;
    Answers answers;  // with the jurisdiction's rule
    Answers generic;  // the same slots in a record of no jurisdiction
};

void expectLayout(const LayoutCase& c, std::vector<Slot> jurisdiction) {
    RecordWithBuffer withRule;
    fill(withRule.get(), c.slots);
    fill(withRule.get(), jurisdiction);
    {
        SCOPED_TRACE("with the rule");
        expectAnswers(withRule.get(), c.answers);
    }
    RecordWithBuffer plain;
    fill(plain.get(), c.slots);
    SCOPED_TRACE("generic");
    expectAnswers(plain.get(), c.generic);
}

TEST(NameLayouts, AlabamaReadsPositionsAndTitles) {
    const LayoutCase cases[] = {
        {{{field::fullName, "DR SMITH,J,PAUL,JR"}},
         {"J", "PAUL", "SMITH", "JR", "DR", "DR SMITH J PAUL JR"},
         {"J", "PAUL", "DR SMITH", "JR", kNone, "DR SMITH J PAUL JR"}},
        {{{field::fullName, "SMITH,J,PAUL"}},
         {"J", "PAUL", "SMITH", kNone, kNone, "SMITH J PAUL"},
         {"SMITH", "J", "PAUL", kNone, kNone, "SMITH J PAUL"}},
        {{{field::fullName, "SMITH,J,,JR"}},
         {"J", kNone, "SMITH", "JR", kNone, "SMITH J JR"},
         {"J", kNone, "SMITH", "JR", kNone, "SMITH J JR"}},
        {{{field::fullName, "MRS VAN DYKE,MARY ANN"}},
         {"MARY", "ANN", "VAN DYKE", kNone, "MRS", "MRS VAN DYKE MARY ANN"},
         {"MARY", "ANN", "MRS VAN DYKE", kNone, kNone, "MRS VAN DYKE MARY ANN"}},
        // A title alone is the surname.
        {{{field::fullName, "DR,JOHN"}},
         {"JOHN", kNone, "DR", kNone, kNone, "DR JOHN"},
         {"JOHN", kNone, "DR", kNone, kNone, "DR JOHN"}},
        // The ordinary form goes on to the generic rules.
        {{{field::fullName, "SMITH,JOHN PAUL JR"}},
         {"JOHN", "PAUL JR", "SMITH", "JR", kNone, "SMITH JOHN PAUL JR"},
         {"JOHN", "PAUL JR", "SMITH", "JR", kNone, "SMITH JOHN PAUL JR"}},
        // Separate slots win over the whole name.
        {{{field::fullName, "DR SMITH,J,PAUL"}, {field::lastName, "JONES"}, {field::namePrefix, "REV"}},
         {"J", "PAUL", "JONES", kNone, "REV", "DR SMITH J PAUL"},
         {"DR SMITH", "J", "JONES", kNone, "REV", "DR SMITH J PAUL"}},
    };
    for (const LayoutCase& c : cases) {
        SCOPED_TRACE(c.slots[0].text);
        expectLayout(c, {{field::jurisdictionCode, "AL"}});
        expectLayout(c, {{field::iin, "636033"}});
    }
}

TEST(NameLayouts, ColoradoReadsTheSurnameFirst) {
    const LayoutCase cases[] = {
        {{{field::fullName, "SMITH JOHN PAUL"}},
         {"JOHN", "PAUL", "SMITH", kNone, kNone, "SMITH JOHN PAUL"},
         {"SMITH", "JOHN", "PAUL", kNone, kNone, "SMITH JOHN PAUL"}},
        {{{field::fullName, "SMITH JOHN PAUL GEORGE JR"}},
         {"JOHN", "PAUL GEORGE", "SMITH", "JR", kNone, "SMITH JOHN PAUL GEORGE JR"},
         {"SMITH", "JOHN", "PAUL GEORGE", "JR", kNone, "SMITH JOHN PAUL GEORGE JR"}},
        {{{field::fullName, "SMITH JOHN"}},
         {"JOHN", kNone, "SMITH", kNone, kNone, "SMITH JOHN"},
         {"SMITH", kNone, "JOHN", kNone, kNone, "SMITH JOHN"}},
        {{{field::fullName, "SMITH"}},
         {"SMITH", kNone, kNone, kNone, kNone, "SMITH"},
         {"SMITH", kNone, kNone, kNone, kNone, "SMITH"}},
        {{{field::fullName, "SMITH,JOHN PAUL"}},
         {"JOHN", "PAUL", "SMITH", kNone, kNone, "SMITH JOHN PAUL"},
         {"JOHN", "PAUL", "SMITH", kNone, kNone, "SMITH JOHN PAUL"}},
        {{{field::fullName, "SMITH JOHN PAUL"}, {field::firstName, "JANE"}},
         {"JANE", "PAUL", "SMITH", kNone, kNone, "SMITH JOHN PAUL"},
         {"JANE", "JOHN", "PAUL", kNone, kNone, "SMITH JOHN PAUL"}},
    };
    for (const LayoutCase& c : cases) {
        SCOPED_TRACE(c.slots[0].text);
        expectLayout(c, {{field::jurisdictionCode, "CO"}});
        expectLayout(c, {{field::iin, "636020"}});
    }
}

TEST(NameLayouts, CaliforniaKeepsTheSuffixOutOfTheParts) {
    const LayoutCase cases[] = {
        {{{field::fullName, "SMITH JR,JOHN PAUL"}},
         {"JOHN", "PAUL", "SMITH", "JR", kNone, "SMITH JR JOHN PAUL"},
         {"JOHN", "PAUL", "SMITH JR", "JR", kNone, "SMITH JR JOHN PAUL"}},
        {{{field::fullName, "SMITH,JOHN PAUL JR"}},
         {"JOHN", "PAUL", "SMITH", "JR", kNone, "SMITH JOHN PAUL JR"},
         {"JOHN", "PAUL JR", "SMITH", "JR", kNone, "SMITH JOHN PAUL JR"}},
        {{{field::fullName, "SMITH,JOHN III"}},
         {"JOHN", kNone, "SMITH", "III", kNone, "SMITH JOHN III"},
         {"JOHN", "III", "SMITH", "III", kNone, "SMITH JOHN III"}},
        {{{field::fullName, "SMITH,JR JOHN"}},
         {"JOHN", kNone, "SMITH", "JR", kNone, "SMITH JR JOHN"},
         {"JR", "JOHN", "SMITH", "JR", kNone, "SMITH JR JOHN"}},
        // A part that would be left empty is not the layout.
        {{{field::fullName, "SMITH,JR"}},
         {"JR", kNone, "SMITH", "JR", kNone, "SMITH JR"},
         {"JR", kNone, "SMITH", "JR", kNone, "SMITH JR"}},
    };
    for (const LayoutCase& c : cases) {
        SCOPED_TRACE(c.slots[0].text);
        expectLayout(c, {{field::jurisdictionCode, "CA"}});
        expectLayout(c, {{field::iin, "636014"}});
    }
}

TEST(NameLayouts, CaliforniaReadsEveryOtherWholeNameGenerically) {
    for (const WholeNameCase& c : kWholeNames) {
        SCOPED_TRACE(c.whole);
        RecordWithBuffer r;
        fill(r.get(), {{field::fullName, c.whole}, {field::jurisdictionCode, "CA"}});
        expectAnswers(r.get(), c.answers);
    }
}

TEST(NameWorkers, AnyBytesGiveAStatusAndATerminatedAnswer) {
    // Short texts of name letters, separators, suffix material and odd bytes, in every rule.
    const char alphabet[] = {'A', 'J', 'R', 'I', 'V', 'N', 'O', 'E', '.', ' ', ',', '$', '@', '-',
                             '/', '\t', '\0', '\x7f', '\xe9'};
    const char* jurisdictions[] = {"AL", "CO", "CA", "TX"};
    const FieldId sources[] = {field::fullName, field::lastName, field::givenNames};
    uint32_t seed = 12345;
    auto next = [&seed] { return (seed = seed * 1103515245u + 12345u) >> 16; };
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        const uint32_t length = next() % 40;
        for (uint32_t i = 0; i < length; ++i) text.push_back(alphabet[next() % sizeof alphabet]);
        RecordWithBuffer r;
        setFieldLiteral(r.get(), field::jurisdictionCode, jurisdictions[round % 4]);
        setFieldFromSpan(r.get(), sources[next() % 3], testing::span(text), nullptr, nullptr, '\0');
        for (const NamedWorker& w : kWorkers) {
            const int32_t capacity = 1 + static_cast<int32_t>(next() % 24);
            char buffer[32];
            std::memset(buffer, 'x', sizeof buffer);
            const int32_t status = w.worker(r.get(), buffer, capacity);
            ASSERT_TRUE(status == kOk || status == kErrNoAnswer) << w.name << " " << status;
            if (status == kOk) ASSERT_LT(strnlen(buffer, sizeof buffer), static_cast<size_t>(capacity));
            ASSERT_EQ(buffer[capacity], 'x') << w.name;
        }
    }
}

// ---- Through the exported getters ----

struct HandleDeleter {
    void operator()(SVT_ParserHandle* h) const { SVT_delete(h); }
};
using HandlePtr = std::unique_ptr<SVT_ParserHandle, HandleDeleter>;

using Getter = int (*)(SVT_ParserHandle*, char*, int);
constexpr Getter kGetters[] = {SVT_getFirstName, SVT_getMiddleName, SVT_getLastName,
                               SVT_getNameSuffix, SVT_getNamePrefix, SVT_getFullName};
static_assert(std::size(kGetters) == std::size(kWorkers));

TEST(NameGetters, AnswerThroughTheHandle) {
    HandlePtr h(SVT_create());
    char buffer[32];
    for (Getter g : kGetters) EXPECT_EQ(g(h.get(), buffer, 32), kErrInvalidArgument);  // no parse yet
    const char input[] = "nothing the library knows";
    SVT_parse(h.get(), input, static_cast<int>(sizeof input - 1));
    resetRecord(&h->record);
    fill(&h->record, {{field::fullName, "DR SMITH,J,PAUL,JR"}, {field::iin, "636033"}});
    const Answers expected = {"J", "PAUL", "SMITH", "JR", "DR", "DR SMITH J PAUL JR"};
    for (size_t i = 0; i < std::size(kGetters); ++i) {
        SCOPED_TRACE(kWorkers[i].name);
        EXPECT_EQ(kGetters[i](nullptr, buffer, 32), kErrInvalidArgument);
        EXPECT_EQ(kGetters[i](h.get(), buffer, -1), kErrInvalidArgument);
        EXPECT_EQ(kGetters[i](h.get(), buffer, 0), kErrInvalidArgument);
        ASSERT_EQ(kGetters[i](h.get(), buffer, 32), kOk);
        EXPECT_STREQ(buffer, expected[i]);
    }
}

}  // namespace
}  // namespace orvane
