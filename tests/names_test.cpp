#include "fields/names.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "engine/status.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;
using testing::Slot;

constexpr const char* kNone = nullptr;  // the worker answers -26

constexpr testing::Worker kWorkers[] = {getFirstName, getMiddleName, getLastName,
                                        getNameSuffix, getNamePrefix, getFullName};
constexpr const char* kWorkerNames[] = {"first", "middle", "last", "suffix", "prefix", "full"};
using Answers = std::array<const char*, std::size(kWorkers)>;  // in kWorkers order

void expectAnswers(const std::vector<Slot>& slots, const Answers& expected) {
    for (size_t i = 0; i < std::size(kWorkers); ++i) {
        const std::string want = expected[i] != kNone ? expected[i] : "#-26";
        EXPECT_EQ(testing::ask(kWorkers[i], slots, 128), want) << kWorkerNames[i];
    }
}

TEST(CleanName, DropsSuffixesPlaceholdersAndEdges) {
    struct Case {
        const char* text;
        const char* cleaned;
    };
    const Case cases[] = {
        {"JOHN JR", "JOHN"}, {"JR JOHN", "JR JOHN"}, {"JR", "JR"},  // the first word always stays
        {"JOHN 4TH III", "JOHN"}, {"JOHN V", "JOHN V"}, {"JOHN jr", "JOHN jr"},  // no V; case matters
        {"NONE", kNone}, {"NONE JOHN", "JOHN"}, {"JOHN NONE.", "JOHN"}, {"NONE JR", kNone},
        {"^/JOHN\\", "JOHN"}, {"O'BRIEN-SMITH", "O'BRIEN-SMITH"}, {"- / ^", kNone}, {"", kNone},
        {"JOHN,PAUL$MARY@ANN", "JOHN PAUL MARY ANN"}, {"  JOHN \t PAUL\r\n", "JOHN PAUL"},
        {"A B C D E F G H I J K L M N O P Q R", "A B C D E F G H I J K L M N O P"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        char buffer[64];
        std::strcpy(buffer, c.text);
        EXPECT_EQ(cleanName(buffer, sizeof buffer), c.cleaned == kNone ? kErrNoAnswer : kOk);
        EXPECT_STREQ(buffer, c.cleaned == kNone ? "" : c.cleaned);
    }
    char unterminated[8] = {'J', 'O', 'H', 'N', ' ', 'P', 'A', 'U'};
    EXPECT_EQ(cleanName(unterminated, sizeof unterminated), kOk);
    EXPECT_STREQ(unterminated, "JOHN PA");
}

// The name ends at its NUL or where the capacity cuts it, whatever follows.
TEST(CleanName, EndsAtTheTerminatorOrTheCapacity) {
    struct Case {
        std::string bytes;  // the buffer's bytes, the NUL included when there is one
        int32_t capacity;
        const char* cleaned;
    };
    const Case cases[] = {
        {std::string("JOHN\0JR X", 10), 10, "JOHN"},
        {std::string("JOHN \0PAUL", 10), 10, "JOHN"},
        {std::string("JOHN PAUL", 9), 6, "JOHN"},  // cut just after the blank
        {std::string("JOHN PAUL", 9), 7, "JOHN P"},
        {std::string("JOHN JR", 7), 7, "JOHN J"},  // the cut leaves no suffix
        {std::string("JOHN JR", 7), 8, "JOHN"},
        {std::string("JOHN,PAUL", 9), 5, "JOHN"},
        {std::string("NONE!", 5), 5, kNone},
        {std::string("\0JOHN", 5), 5, kNone},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.bytes + " in " + std::to_string(c.capacity));
        std::vector<char> buffer(c.bytes.begin(), c.bytes.end());
        buffer.resize(static_cast<size_t>(c.capacity), 'Z');
        EXPECT_EQ(cleanName(buffer.data(), c.capacity), c.cleaned == kNone ? kErrNoAnswer : kOk);
        EXPECT_STREQ(buffer.data(), c.cleaned == kNone ? "" : c.cleaned);
    }
}

// Whole names as the generic rules read them; California reads every one of them alike.
struct WholeNameCase {
    const char* whole;
    Answers answers;
};
const WholeNameCase kWholeNames[] = {
    {"SMITH$JOHN@PAUL", {"JOHN", "PAUL", "SMITH", kNone, kNone, "SMITH JOHN PAUL"}},
    {"SMITH , JOHN PAUL GEORGE", {"JOHN", "PAUL GEORGE", "SMITH", kNone, kNone, "SMITH JOHN PAUL GEORGE"}},
    {"VAN  DYKE,JOHN", {"JOHN", kNone, "VAN DYKE", kNone, kNone, "VAN DYKE JOHN"}},
    {"JOHN PAUL SMITH JR", {"JOHN", "PAUL", "SMITH", "JR", kNone, "JOHN PAUL SMITH JR"}},
    {"JOHN PAUL VAN DYKE", {"JOHN", "PAUL", "VAN DYKE", kNone, kNone, "JOHN PAUL VAN DYKE"}},
    {"JOHN SMITH III", {"JOHN", kNone, "SMITH", "III", kNone, "JOHN SMITH III"}},
    {"JOHN", {"JOHN", kNone, kNone, kNone, kNone, "JOHN"}},
    {"SMITH,JR,JOHN", {"JOHN", kNone, "SMITH", "JR", kNone, "SMITH JR JOHN"}},
    {"SMITH,JOHN PAUL,JR", {"JOHN", "PAUL", "SMITH", "JR", kNone, "SMITH JOHN PAUL JR"}},
    {"SMITH,JOHN,PAUL JR", {"JOHN", "PAUL", "SMITH", "JR", kNone, "SMITH JOHN PAUL JR"}},
    // An initial in second place turns the parts round, unless a suffix part goes first.
    {"SMITH,J,JOHN", {"SMITH", "J", "JOHN", kNone, kNone, "SMITH J JOHN"}},
    {"SMITH,J,JR", {"J", kNone, "SMITH", "JR", kNone, "SMITH J JR"}},
    // A word that opens the name is never the suffix.
    {"IV SMITH", {"IV", kNone, kNone, kNone, kNone, "IV SMITH"}},
    {" IV SMITH", {"IV", kNone, kNone, "IV", kNone, "IV SMITH"}},
    {"DOE,NONE", {kNone, kNone, "DOE", kNone, kNone, "DOE NONE"}},
    {"SMITH,JOHN NONE", {"JOHN", "NONE", "SMITH", kNone, kNone, "SMITH JOHN NONE"}},  // as written
    {",-SMITH,JOHN/", {"JOHN", kNone, "-SMITH", kNone, kNone, "SMITH JOHN"}},
    {",,,", {kNone, kNone, kNone, kNone, kNone, kNone}},
};

TEST(NameWorkers, CutWholeNames) {
    for (const char* jurisdiction : {"", "CA"}) {
        for (const WholeNameCase& c : kWholeNames) {
            SCOPED_TRACE(std::string(jurisdiction) + " " + c.whole);
            expectAnswers({{field::fullName, c.whole}, {field::jurisdictionCode, jurisdiction}}, c.answers);
        }
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
        {"all parts composed",
         {{field::firstName, "JOHN"}, {field::middleName, "PAUL"}, {field::lastName, "DOE"},
          {field::nameSuffix, " JR "}, {field::namePrefix, " DR "}},
         {"JOHN", "PAUL", "DOE", "JR", "DR", "JOHN PAUL DOE JR"}},
        {"suffix from the last name", {{field::firstName, "JOHN"}, {field::lastName, "DOE JR"}},
         {"JOHN", kNone, "DOE", "JR", kNone, "JOHN DOE JR"}},
        {"middle slot loses commas and placeholders", {{field::middleName, " A,, B,NONE."}, {field::lastName, "DOE"}},
         {kNone, "A B", "DOE", kNone, kNone, "A B DOE"}},
        // A placeholder in a slot is the answer, not a reason to look further.
        {"placeholder first name", {{field::firstName, "NONE"}, {field::fullName, "DOE,JOHN"}},
         {kNone, kNone, "DOE", kNone, kNone, "DOE JOHN"}},
        {"suffix slot none in any case", {{field::nameSuffix, "none"}, {field::fullName, "JOHN SMITH JR"}},
         {"JOHN", kNone, "SMITH", kNone, kNone, "JOHN SMITH JR"}},
        {"blank slots give way",
         {{field::firstName, "  "}, {field::lastName, " "}, {field::middleName, " "}, {field::nameSuffix, " "},
          {field::fullName, "DOE,JOHN PAUL JR"}},
         {"JOHN", "PAUL JR", "DOE", "JR", kNone, "DOE JOHN PAUL JR"}},
        {"nothing", {{field::city, "SMITH"}}, {kNone, kNone, kNone, kNone, kNone, kNone}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        expectAnswers(c.slots, c.answers);
    }
}

TEST(NameWorkers, FullNameKeepsOneCharacterLessThanTheOthers) {
    const std::vector<Slot> whole = {{field::fullName, "SMITH,JOHN"}};
    const std::vector<Slot> parts = {{field::firstName, "JOHN"}, {field::lastName, "DOE"}};
    testing::runWorkerCases({
        {"whole, 7", getFullName, whole, 7, "SMITH"},
        {"whole, 3", getFullName, whole, 3, "S"},
        {"whole, 2", getFullName, whole, 2, "#-26"},
        {"first name, 3", getFirstName, whole, 3, "JO"},
        // Composed pieces share the room; a piece that does not fit is left out.
        {"parts, 9", getFullName, parts, 9, "JOHN DOE"},
        {"parts, 8", getFullName, parts, 8, "JOHN DO"},
        {"parts, 6", getFullName, parts, 6, "JOHN"},
    });
}

// Layouts of the jurisdictions with name rules of their own; each row reads otherwise
// under the generic rules.
TEST(NameLayouts, AlabamaColoradoAndCalifornia) {
    struct Case {
        const char* jurisdiction;
        std::vector<Slot> slots;
        Answers answers;
    };
    const Case cases[] = {
        {"AL", {{field::fullName, "DR SMITH,J,PAUL,JR"}}, {"J", "PAUL", "SMITH", "JR", "DR", "DR SMITH J PAUL JR"}},
        {"AL", {{field::fullName, "SMITH,J,PAUL"}}, {"J", "PAUL", "SMITH", kNone, kNone, "SMITH J PAUL"}},
        {"AL", {{field::fullName, "MRS VAN DYKE,MARY ANN"}},
         {"MARY", "ANN", "VAN DYKE", kNone, "MRS", "MRS VAN DYKE MARY ANN"}},
        {"AL", {{field::fullName, "DR,JOHN"}}, {"JOHN", kNone, "DR", kNone, kNone, "DR JOHN"}},  // a title alone
        {"AL", {{field::fullName, "DR SMITH,J,PAUL"}, {field::lastName, "JONES"}, {field::namePrefix, "REV"}},
         {"J", "PAUL", "JONES", kNone, "REV", "DR SMITH J PAUL"}},  // slots win over the whole name
        {"CO", {{field::fullName, "SMITH JOHN PAUL"}}, {"JOHN", "PAUL", "SMITH", kNone, kNone, "SMITH JOHN PAUL"}},
        {"CO", {{field::fullName, "SMITH JOHN PAUL GEORGE JR"}},
         {"JOHN", "PAUL GEORGE", "SMITH", "JR", kNone, "SMITH JOHN PAUL GEORGE JR"}},
        {"CO", {{field::fullName, "SMITH JOHN PAUL"}, {field::firstName, "JANE"}},
         {"JANE", "PAUL", "SMITH", kNone, kNone, "SMITH JOHN PAUL"}},
        {"CA", {{field::fullName, "SMITH JR,JOHN PAUL"}}, {"JOHN", "PAUL", "SMITH", "JR", kNone, "SMITH JR JOHN PAUL"}},
        {"CA", {{field::fullName, "SMITH,JOHN PAUL JR"}}, {"JOHN", "PAUL", "SMITH", "JR", kNone, "SMITH JOHN PAUL JR"}},
        {"CA", {{field::fullName, "SMITH,JR JOHN"}}, {"JOHN", kNone, "SMITH", "JR", kNone, "SMITH JR JOHN"}},
        {"CA", {{field::fullName, "SMITH,JR"}}, {"JR", kNone, "SMITH", "JR", kNone, "SMITH JR"}},  // nothing left
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.jurisdiction) + " " + c.slots[0].value);
        std::vector<Slot> slots = c.slots;
        slots.push_back({field::jurisdictionCode, c.jurisdiction});
        expectAnswers(slots, c.answers);
    }
}

TEST(NameRules, TableRowsAndHooks) {
    const auto rules = nameRuleTable();
    ASSERT_EQ(rules.size(), 69u);
    EXPECT_STREQ(rules[0].jurisdictionCode, "");
    EXPECT_STREQ(rules[47].jurisdictionCode, "WI");
    EXPECT_STREQ(rules[68].jurisdictionCode, "CA");
    std::set<std::string> codes;
    for (const NameRule& rule : rules) {
        const std::string code = rule.jurisdictionCode;
        SCOPED_TRACE(code);
        EXPECT_TRUE(codes.insert(code).second);
        const bool nameHooks = rule.firstNameHook || rule.lastNameHook || rule.middleNameHook || rule.suffixHook ||
                               rule.prefixHook;
        EXPECT_EQ(nameHooks, code == "AL" || code == "CO");
        EXPECT_EQ(rule.useGenericSplitter, code == "CA" ? 0 : -1);
    }
}

TEST(NameRules, ChosenByIinFirstThenByJurisdictionCode) {
    struct Case {
        const char* what;
        std::vector<Slot> slots;
        const char* code;
    };
    const Case cases[] = {
        {"iin alone", {{field::iin, "636033"}}, "AL"},
        {"iin over jurisdiction", {{field::iin, "636020"}, {field::jurisdictionCode, "CA"}}, "CO"},
        {"jurisdiction of residence", {{field::residenceJurisdictionCode, "AL"}}, "AL"},
        {"unknown iin gives way", {{field::iin, "123456"}, {field::jurisdictionCode, "CO"}}, "CO"},
        {"iin of a jurisdiction without a row", {{field::iin, "604431"}}, ""},
        {"lower case", {{field::jurisdictionCode, "ca"}}, ""},
        {"nothing", {}, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        RecordWithBuffer r;
        for (const Slot& s : c.slots) setFieldLiteral(r.get(), s.id, s.value);
        EXPECT_STREQ(nameRuleFor(r.get())->jurisdictionCode, c.code);
    }
    EXPECT_EQ(nameRuleFor(nullptr), &nameRuleTable()[0]);
    EXPECT_EQ(nameRuleForCode(makeSpan("CAX", 2)), nameRuleForCode(makeSpan("CA")));
}

// A kept rule answers only while the slots it came from stand; any later value in one of
// them, or a reset, makes the record derive it again.
TEST(NameRules, KeptRuleFollowsLaterValues) {
    struct Case {
        const char* what;
        FieldId id;
        const char* value;
        const char* code;
    };
    const Case cases[] = {
        {"iin of another jurisdiction", field::iin, "636020", "CO"},
        {"jurisdiction code", field::jurisdictionCode, "AL", "AL"},
        {"same code written again", field::jurisdictionCode, "CA", "CA"},
        {"residence beside the code", field::residenceJurisdictionCode, "AL", "CA"},
        {"unknown iin", field::iin, "123456", "CA"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        RecordWithBuffer r;
        setFieldLiteral(r.get(), field::jurisdictionCode, "CA");
        rememberNameRule(r.get());
        EXPECT_STREQ(nameRuleFor(r.get())->jurisdictionCode, "CA");
        setFieldLiteral(r.get(), c.id, c.value);
        EXPECT_STREQ(nameRuleFor(r.get())->jurisdictionCode, c.code);
    }
    RecordWithBuffer r;
    setFieldLiteral(r.get(), field::iin, "636033");
    rememberNameRule(r.get());
    resetRecord(r.get());
    EXPECT_EQ(r.get()->nameRule.rule, nullptr);
    EXPECT_STREQ(nameRuleFor(r.get())->jurisdictionCode, "");
}

}  // namespace
}  // namespace orvane
