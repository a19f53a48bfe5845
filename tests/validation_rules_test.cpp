// The licence-number rules as the matcher sees them.
#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <string_view>

#include "engine/validation.h"

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

// Every rule's bytes as they were written by hand before the notation, in table order
// (null: a dedicated check). The compiled table must hand the matcher exactly these.
constexpr const char* kHandWrittenBytes[] = {
    "\x84\xA1\x85", "\x86\xA1\x83", "\x86\xA1\x83",  // AB
    "\x87",  // AK
    "\x91\x86", "\x87",  // AL
    "\x89",  // AR
    "\x85\xA1\x8B", "\x83-\x82-\x84", "\x83\x82\x84", "\x86",  // AS
    "\x84\x91\x85", "\x91\x88",  // AZ
    "\x87", "\x89",  // BC
    "\x91\x87",  // CA
    "\x89",  // CN
    "\x82-\x83-\x84", "\x82\x83\x84",  // CO
    nullptr,  // CT
    "\x89", "\x87", "\x87",  // DC
    "\x87", "\x86", "\x87",  // DE
    nullptr,  // FL
    "\x89",  // GA
    "\x91\x82\xA1\x85", "\x8A",  // GU
    "\x91\x87", "\x91\x88",  // HI
    "\x89", "\x83\x92\x84", "\x83\x92\x84", "\x89",  // IA
    "\x92\x86\x91",  // ID
    "\x91\x83-\x84-\x84", "\x91\x83\x84\x84", "\x84-\x84-\x83\x91", "\x84\x84\x83\x91",  // IL
    "\x84-\x82-\x84", "\x84\x82\x84",  // IN
    "\x83-\x82-\x84", "\x83\x82\x84", "\x91\x82-\x82-\x84", "\x91\x82\x82\x84",  // KS
    "\x91\x82-\x83-\x83", "\x91\x82\x83\x83",  // KY
    "\x85", "00\x87", "01\x87",  // LA
    "S\x88",  // MA
    "\x92-\x92-\x92-\x91\x83\x92", "\x92\x92\x92\x91\x83\x92",  // MB
    "\x92-\x92-\x92-\x91\x83\x92", "\x92\x92\x92\x91\x83\x92",
    "\x91-\x83-\x83-\x83-\x83", "\x91\x83\x83\x83\x83",  // MD
    "\x87",  // ME
    "\x91 \x83 \x83 \x83 \x81", "\x91\x83\x83\x83\x81", "\x84", "\x91 \x83 \x83 \x83 \x83",  // MI
    "\x91\x83\x83\x83\x83", "\x91 \x83 \x83 \x83 \x83", "\x91\x83\x83\x83\x83",
    "\x91-\x83-\x83-\x83-\x83", "\x91\x83\x83\x83\x83", "\x91\x8C",  // MN
    "\x91\x89",  // MO
    "\x84\xA1\x84",  // MP
    "\x89",  // MS
    "\x8D",  // MT
    "\x87", "\x87",  // NB
    "\x8C",  // NC
    "\x93-\x82-\x84", "\x93\x82\x84",  // ND
    "\x91\x88",  // NE
    "\x8A", "\x82\x93\x85", "\xBB",  // NH
    "\x91\x84 \x85 \x85", "\x91\x84\x85 \x85", "\x91\x84\x85\x85",  // NJ
    "\x91\x89",  // NL
    "\x89",  // NM
    "\x95\x89",  // NS
    "\x85", "\x86",  // NT
    "\x82", "\x86", "\x86",  // NU
    "\x8A",  // NV
    "\x83 \x83 \x83", "\x89",  // NY
    "\x92\x86",  // OH
    "\x89", "\x91\x89",  // OK
    "\x83 - \x92\x82 - \x85",  // ON
    "\x81\xA1\x81\xA1\x81\xA1\x91\xA1\x91\xA1\x81\xA1\x81\xA1\x81\xA1\x81\xA1\x81\xA1\x81\xA1\x81",
    "\x91\x84 - \x85 - \x85", "\x91\x84-\x85-\x85",
    "\x88", "\x81\xA4\xA4\xA4\xA4\xA4\xA4", "\x84",  // OR
    "\x82 \x83 \x83", "\x88",  // PA
    "\x86",  // PE
    "\x87",  // PR
    "\x91\x84-\x86-\x82", "\x91\x8C",  // QC
    "\x87",  // RI
    "\x89",  // SC
    "\x88",  // SD
    "\x89", "\x89",  // TN
    "\x88",  // TX
    "\x89", "0\x89",  // UT
    "\x91\x82-\x82-\x84", "\x91\x88",  // VA
    "\x91-\x8C", "\x91-\x8A",  // VI
    "\x87\x91", "\x88",  // VT
    "\x97\x83\x91\x81", "\x93**\x92\x82*\x92", "\x97\x83\x92",  // WA
    nullptr,  // WI
    "\x87", "\x91\x86",  // WV
    "\x82-\x87", "\x86-\x83",  // WY
    "\x86", "\x85",  // YT
};
static_assert(std::size(kHandWrittenBytes) == 137);

TEST(DocumentIdRules, CompileToTheHandWrittenBytes) {
    const auto rules = documentIdRules();
    ASSERT_EQ(rules.size(), std::size(kHandWrittenBytes));
    for (size_t i = 0; i < rules.size(); ++i) {
        SCOPED_TRACE("rule " + std::to_string(i) + " " + rules[i].jurisdiction);
        const char* expected = kHandWrittenBytes[i] != nullptr ? kHandWrittenBytes[i] : "";
        EXPECT_STREQ(rules[i].pattern.bytes, expected);
        EXPECT_EQ(rules[i].check == nullptr, kHandWrittenBytes[i] != nullptr);
    }
}

}  // namespace
}  // namespace orvane
