#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "fields/names.h"
#include "test_support.h"

namespace orvane {
namespace {

using testing::RecordWithBuffer;

std::string codeOf(const NameRule* rule) { return rule != nullptr ? rule->jurisdictionCode : "(null)"; }

bool hasNameHooks(const NameRule& rule) {
    return rule.firstNameHook != nullptr || rule.lastNameHook != nullptr ||
           rule.middleNameHook != nullptr || rule.suffixHook != nullptr || rule.prefixHook != nullptr;
}

TEST(NameRuleTable, RowsInOrderWithDistinctCodes) {
    const auto rules = nameRuleTable();
    ASSERT_EQ(rules.size(), 69u);
    EXPECT_STREQ(rules[0].jurisdictionCode, "");
    EXPECT_FALSE(hasNameHooks(rules[0]));
    EXPECT_EQ(rules[0].useGenericSplitter, -1);
    const std::pair<size_t, const char*> spots[] = {
        {1, "AK"}, {2, "AR"}, {28, "DS"}, {29, "VI"}, {36, "AB"}, {47, "WI"},
        {52, "LB"}, {64, "CO"}, {65, "AL"}, {66, "OH"}, {67, "MN"}, {68, "CA"},
    };
    for (const auto& [row, code] : spots) EXPECT_STREQ(rules[row].jurisdictionCode, code) << row;
    std::set<std::string> codes;
    for (const NameRule& rule : rules) {
        ASSERT_NE(rule.jurisdictionCode, nullptr);
        EXPECT_TRUE(codes.insert(rule.jurisdictionCode).second) << rule.jurisdictionCode;
        if (rule.jurisdictionCode[0] != '\0') EXPECT_EQ(std::strlen(rule.jurisdictionCode), 2u);
    }
}

TEST(NameRuleTable, OnlyAlabamaAndColoradoHaveNameHooksAndOnlyCaliforniaSplits) {
    for (const NameRule& rule : nameRuleTable()) {
        const std::string code = rule.jurisdictionCode;
        SCOPED_TRACE(code);
        EXPECT_EQ(hasNameHooks(rule), code == "AL" || code == "CO");
        EXPECT_EQ(rule.useGenericSplitter, code == "CA" ? 0 : -1);
    }
}

TEST(NameRuleFor, ChoosesByIinFirstThenByJurisdictionCode) {
    struct Slot {
        FieldId id;
        const char* text;
    };
    struct Case {
        const char* what;
        std::vector<Slot> slots;
        const char* code;
    };
    const Case cases[] = {
        {"iin alone", {{field::iin, "636033"}}, "AL"},
        {"iin over jurisdiction", {{field::iin, "636020"}, {field::jurisdictionCode, "CA"}}, "CO"},
        {"jurisdiction alone", {{field::jurisdictionCode, "CA"}}, "CA"},
        {"jurisdiction of residence", {{field::residenceJurisdictionCode, "AL"}}, "AL"},
        {"unknown iin gives way to the jurisdiction", {{field::iin, "123456"}, {field::jurisdictionCode, "CO"}}, "CO"},
        {"jurisdiction without an iin", {{field::jurisdictionCode, "LB"}}, "LB"},
        {"iin of a jurisdiction without a row", {{field::iin, "604431"}}, ""},
        {"unknown jurisdiction", {{field::jurisdictionCode, "XX"}}, ""},
        {"lower case", {{field::jurisdictionCode, "ca"}}, ""},
        {"nothing", {}, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        RecordWithBuffer r;
        for (const Slot& s : c.slots) setFieldLiteral(r.get(), s.id, s.text);
        EXPECT_EQ(codeOf(nameRuleFor(r.get())), c.code);
    }
    EXPECT_EQ(nameRuleFor(nullptr), &nameRuleTable()[0]);
    ParsedRecord unattached{};
    EXPECT_EQ(nameRuleFor(&unattached), &nameRuleTable()[0]);
    EXPECT_EQ(nameRuleForCode(makeSpan("CAX", 2)), nameRuleForCode(makeSpan("CA")));
    EXPECT_EQ(nameRuleForCode(makeSpan(nullptr, 2)), &nameRuleTable()[0]);
}

}  // namespace
}  // namespace orvane
