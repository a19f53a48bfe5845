// The licence-number rules and barcode sizes: the bytes the notation compiles to, every
// rule's example and near miss, and every size, through the checks.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "engine/status.h"
#include "engine/validation.h"
#include "test_support.h"

namespace orvane {
namespace {

constexpr bool compilesTo(std::string_view notation, std::string_view bytes) {
    const CompiledPattern compiled = compilePattern(notation);
    return compiled.ok && std::string_view(compiled.bytes) == bytes;
}
static_assert(compilesTo("D4 -? D5", "\x84\xA1\x85"));
static_assert(compilesTo("D13 L15 A11", "\x8D\x9F\xBB"));  // counts above 9 stay in the low four bits
static_assert(compilesTo("L? D? *? -?", "\xA3\xA4\xA2\xA1"));
static_assert(compilesTo("D3 ' - ' L2 'S' D1", "\x83 - \x92S\x81"));
static_assert(compilesTo("'abcdefghijklmnopqrstuvw'", "abcdefghijklmnopqrstuvw"));  // the longest that fits
// What a table row may not hold: each of these would stop the build.
static_assert(!compilePattern("").ok);
static_assert(!compilePattern("D0").ok);
static_assert(!compilePattern("D16").ok);
static_assert(!compilePattern("D05").ok);
static_assert(!compilePattern("D").ok);
static_assert(!compilePattern("X4").ok);
static_assert(!compilePattern("A?").ok);
static_assert(!compilePattern("D4 - D5").ok);  // a literal hyphen is quoted
static_assert(!compilePattern("D4  D5").ok);
static_assert(!compilePattern("D4 ").ok);
static_assert(!compilePattern("D4'-'").ok);
static_assert(!compilePattern("D4 ''").ok);
static_assert(!compilePattern("D4 '-").ok);
static_assert(!compilePattern("'\t'").ok);
static_assert(!compilePattern("'\xE9'").ok);
static_assert(!compilePattern("'abcdefghijklmnopqrstuvwx'").ok);  // no room left for the NUL

// The holder the dedicated checks' examples are written for.
struct Holder {
    testing::RecordWithBuffer r{1024};
    Holder() {
        setFieldLiteral(r.get(), field::lastName, "SMITH");
        setFieldLiteral(r.get(), field::gender, "M");
        setFieldLiteral(r.get(), field::birthdate, "19901105");
    }
};

bool ruleTakes(const DocumentIdRule& rule, const ParsedRecord* holder, const char* number) {
    return rule.check != nullptr ? rule.check(holder, makeSpan(number)) : matchPattern(makeSpan(number), rule.pattern.bytes);
}

// The rule the check stops at: the first of the jurisdiction's rules for the document
// that takes the number.
const DocumentIdRule* firstTaking(const char* jurisdiction, uint16_t document, const ParsedRecord* holder,
                                  const char* number) {
    for (const DocumentIdRule& rule : documentIdRulesFor(makeSpan(jurisdiction)).rules) {
        if ((rule.documents & document) != 0 && ruleTakes(rule, holder, number)) return &rule;
    }
    return nullptr;
}

// One character inserted, removed or replaced turns a into b.
bool oneEditApart(std::string_view a, std::string_view b) {
    if (a.size() > b.size()) std::swap(a, b);
    if (b.size() - a.size() > 1) return false;
    size_t i = 0;
    while (i < a.size() && a[i] == b[i]) ++i;
    if (i == b.size()) return false;  // the same text
    return a.substr(a.size() == b.size() ? i + 1 : i) == b.substr(i + 1);
}

TEST(DocumentIdRules, EachTakesItsExampleAndRefusesItsNearMiss) {
    Holder holder;
    // Takes only what the rule before it (L1 D3 D3 D3 D3) already takes.
    const DocumentIdRule* neverReached = &documentIdRulesFor(makeSpan("MN")).rules[2];
    for (const DocumentIdRule& rule : documentIdRules()) {
        ASSERT_TRUE(rule.example != nullptr && rule.nearMiss != nullptr) << rule.jurisdiction;
        SCOPED_TRACE(std::string(rule.jurisdiction) + " " + rule.example + " / " + rule.nearMiss);
        EXPECT_TRUE(ruleTakes(rule, holder.r.get(), rule.example));
        EXPECT_FALSE(ruleTakes(rule, holder.r.get(), rule.nearMiss));
        EXPECT_TRUE(oneEditApart(rule.example, rule.nearMiss));
        for (const uint16_t document : {kIdCard, kLicence}) {
            if ((rule.documents & document) == 0) continue;
            // The example reaches its own rule: no earlier rule for the document takes it.
            const DocumentIdRule* first = firstTaking(rule.jurisdiction, document, holder.r.get(), rule.example);
            EXPECT_EQ(first == &rule, &rule != neverReached);
            // And the check on a whole record finds it valid.
            Holder record;
            setFieldLiteral(record.r.get(), field::jurisdictionCode, rule.jurisdiction);
            setFieldLiteral(record.r.get(), field::documentType, document == kIdCard ? "ID" : "DL");
            setFieldLiteral(record.r.get(), field::licenseNumber, rule.example);
            char scratch[64];
            EXPECT_EQ(validateDocumentId(record.r.get(), scratch, sizeof scratch), kCheckValid);
        }
    }
}

TEST(BarcodeSizes, EachEntryIsAcceptedWithinTheBounds) {
    // Entries above 33 columns lie outside the check's bounds, deliberately kept: these
    // jurisdictions list no other size and so never pass.
    const std::vector<std::string> neverAccepted = {"CA", "IN", "ME", "OH", "RI", "TX", "UT"};
    std::vector<std::string> accepted;
    std::vector<std::string> jurisdictions;
    for (const BarcodeSize& size : barcodeSizes()) {
        SCOPED_TRACE(std::string(size.jurisdiction) + " " + std::to_string(size.columns) + "x" +
                     std::to_string(size.rows) + " level " + std::to_string(size.errorCorrectionLevel));
        testing::RecordWithBuffer r{256};
        setFieldLiteral(r.get(), field::jurisdictionCode, size.jurisdiction);
        const int32_t status = validateBarcode(r.get(), size.columns, size.rows, size.errorCorrectionLevel);
        EXPECT_EQ(status, size.columns > 33 ? kErrInvalidArgument : kCheckValid);
        if (jurisdictions.empty() || jurisdictions.back() != size.jurisdiction) jurisdictions.push_back(size.jurisdiction);
        if (status == kCheckValid && (accepted.empty() || accepted.back() != size.jurisdiction)) {
            accepted.push_back(size.jurisdiction);
        }
    }
    EXPECT_EQ(jurisdictions.size(), 45u);
    std::vector<std::string> never;
    for (const std::string& code : jurisdictions) {
        if (std::find(accepted.begin(), accepted.end(), code) == accepted.end()) never.push_back(code);
    }
    std::sort(never.begin(), never.end());
    EXPECT_EQ(never, neverAccepted);
}

}  // namespace
}  // namespace orvane
