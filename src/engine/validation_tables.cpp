#include <iterator>

#include "engine/validation.h"
#include "fields/text.h"

namespace orvane {
namespace {

// The shapes of document numbers each jurisdiction issues, rules in the order they are
// tried. Card design years are not consulted and so not kept.
// A pattern is written in a notation compiled to matchPattern's bytes while building
// (a malformed one stops the build): tokens separated by one space, each of
//   Dn, Ln, An   exactly n (1..15) digits, letters, letters or digits;
//   -? *? L? D?  an optional hyphen, asterisk, letter, digit;
//   'text'       these characters literally (printable ASCII), e.g. '-' or ' - '.
// Rules with a dedicated check have no pattern.
constexpr DocumentIdRule kDocumentIdRules[] = {
    {"AB", kIdCard, nullptr, "D4 -? D5"},
    {"AB", kIdCard, nullptr, "D6 -? D3"},
    {"AB", kLicence, nullptr, "D6 -? D3"},
    {"AK", kBoth, nullptr, "D7"},
    {"AL", kIdCard, nullptr, "L1 D6"},
    {"AL", kLicence, nullptr, "D7"},
    {"AR", kBoth, nullptr, "D9"},
    {"AS", kIdCard, nullptr, "D5 -? D11"},
    {"AS", kLicence, nullptr, "D3 '-' D2 '-' D4"},
    {"AS", kLicence, nullptr, "D3 D2 D4"},
    {"AS", kLicence, nullptr, "D6"},
    {"AZ", kIdCard, nullptr, "D4 L1 D5"},
    {"AZ", kBoth, nullptr, "L1 D8"},
    {"BC", kLicence, nullptr, "D7"},
    {"BC", kIdCard, nullptr, "D9"},
    {"CA", kBoth, nullptr, "L1 D7"},
    {"CN", kBoth, nullptr, "D9"},
    {"CO", kBoth, nullptr, "D2 '-' D3 '-' D4"},
    {"CO", kBoth, nullptr, "D2 D3 D4"},
    {"CT", kBoth, checkConnecticut, {}},
    {"DC", kIdCard, nullptr, "D9"},
    {"DC", kIdCard, nullptr, "D7"},
    {"DC", kLicence, nullptr, "D7"},
    {"DE", kIdCard, nullptr, "D7"},
    {"DE", kLicence, nullptr, "D6"},
    {"DE", kLicence, nullptr, "D7"},
    {"FL", kBoth, checkFlorida, {}},
    {"GA", kBoth, nullptr, "D9"},
    {"GU", kIdCard, nullptr, "L1 D2 -? D5"},
    {"GU", kLicence, nullptr, "D10"},
    {"HI", kIdCard, nullptr, "L1 D7"},
    {"HI", kBoth, nullptr, "L1 D8"},
    {"IA", kIdCard, nullptr, "D9"},
    {"IA", kIdCard, nullptr, "D3 L2 D4"},
    {"IA", kLicence, nullptr, "D3 L2 D4"},
    {"IA", kLicence, nullptr, "D9"},
    {"ID", kBoth, nullptr, "L2 D6 L1"},
    {"IL", kBoth, nullptr, "L1 D3 '-' D4 '-' D4"},
    {"IL", kBoth, nullptr, "L1 D3 D4 D4"},
    {"IL", kBoth, nullptr, "D4 '-' D4 '-' D3 L1"},
    {"IL", kBoth, nullptr, "D4 D4 D3 L1"},
    {"IN", kBoth, nullptr, "D4 '-' D2 '-' D4"},
    {"IN", kBoth, nullptr, "D4 D2 D4"},
    {"KS", kBoth, nullptr, "D3 '-' D2 '-' D4"},
    {"KS", kBoth, nullptr, "D3 D2 D4"},
    {"KS", kBoth, nullptr, "L1 D2 '-' D2 '-' D4"},
    {"KS", kBoth, nullptr, "L1 D2 D2 D4"},
    {"KY", kBoth, nullptr, "L1 D2 '-' D3 '-' D3"},
    {"KY", kBoth, nullptr, "L1 D2 D3 D3"},
    {"LA", kIdCard, nullptr, "D5"},
    {"LA", kBoth, nullptr, "'00' D7"},
    {"LA", kBoth, nullptr, "'01' D7"},
    {"MA", kBoth, nullptr, "'S' D8"},
    {"MB", kIdCard, nullptr, "L2 '-' L2 '-' L2 '-' L1 D3 L2"},
    {"MB", kIdCard, nullptr, "L2 L2 L2 L1 D3 L2"},
    {"MB", kLicence, nullptr, "L2 '-' L2 '-' L2 '-' L1 D3 L2"},
    {"MB", kLicence, nullptr, "L2 L2 L2 L1 D3 L2"},
    {"MD", kBoth, nullptr, "L1 '-' D3 '-' D3 '-' D3 '-' D3"},
    {"MD", kBoth, nullptr, "L1 D3 D3 D3 D3"},
    {"ME", kBoth, nullptr, "D7"},
    {"MI", kIdCard, nullptr, "L1 ' ' D3 ' ' D3 ' ' D3 ' ' D1"},
    {"MI", kIdCard, nullptr, "L1 D3 D3 D3 D1"},
    {"MI", kIdCard, nullptr, "D4"},
    {"MI", kIdCard, nullptr, "L1 ' ' D3 ' ' D3 ' ' D3 ' ' D3"},
    {"MI", kIdCard, nullptr, "L1 D3 D3 D3 D3"},
    {"MI", kLicence, nullptr, "L1 ' ' D3 ' ' D3 ' ' D3 ' ' D3"},
    {"MI", kLicence, nullptr, "L1 D3 D3 D3 D3"},
    {"MN", kBoth, nullptr, "L1 '-' D3 '-' D3 '-' D3 '-' D3"},
    {"MN", kBoth, nullptr, "L1 D3 D3 D3 D3"},
    {"MN", kBoth, nullptr, "L1 D12"},
    {"MO", kBoth, nullptr, "L1 D9"},
    {"MP", kLicence, nullptr, "D4 -? D4"},
    {"MS", kBoth, nullptr, "D9"},
    {"MT", kBoth, nullptr, "D13"},
    {"NB", kIdCard, nullptr, "D7"},
    {"NB", kLicence, nullptr, "D7"},
    {"NC", kBoth, nullptr, "D12"},
    {"ND", kBoth, nullptr, "L3 '-' D2 '-' D4"},
    {"ND", kBoth, nullptr, "L3 D2 D4"},
    {"NE", kBoth, nullptr, "L1 D8"},
    {"NH", kBoth, nullptr, "D10"},
    {"NH", kBoth, nullptr, "D2 L3 D5"},
    {"NH", kBoth, nullptr, "A11"},
    {"NJ", kBoth, nullptr, "L1 D4 ' ' D5 ' ' D5"},
    {"NJ", kBoth, nullptr, "L1 D4 D5 ' ' D5"},
    {"NJ", kBoth, nullptr, "L1 D4 D5 D5"},
    {"NL", kBoth, nullptr, "L1 D9"},
    {"NM", kBoth, nullptr, "D9"},
    {"NS", kBoth, nullptr, "L5 D9"},
    {"NT", kIdCard, nullptr, "D5"},
    {"NT", kLicence, nullptr, "D6"},
    {"NU", kIdCard, nullptr, "D2"},
    {"NU", kIdCard, nullptr, "D6"},
    {"NU", kLicence, nullptr, "D6"},
    {"NV", kBoth, nullptr, "D10"},
    {"NY", kBoth, nullptr, "D3 ' ' D3 ' ' D3"},
    {"NY", kBoth, nullptr, "D9"},
    {"OH", kBoth, nullptr, "L2 D6"},
    {"OK", kBoth, nullptr, "D9"},
    {"OK", kBoth, nullptr, "L1 D9"},
    {"ON", kIdCard, nullptr, "D3 ' - ' L2 D2 ' - ' D5"},
    {"ON", kIdCard, nullptr, "D1 -? D1 -? D1 -? L1 -? L1 -? D1 -? D1 -? D1 -? D1 -? D1 -? D1 -? D1"},
    {"ON", kLicence, nullptr, "L1 D4 ' - ' D5 ' - ' D5"},
    {"ON", kLicence, nullptr, "L1 D4 '-' D5 '-' D5"},
    {"OR", kBoth, nullptr, "D8"},
    {"OR", kIdCard, nullptr, "D1 D? D? D? D? D? D?"},
    {"OR", kLicence, nullptr, "D4"},
    {"PA", kBoth, nullptr, "D2 ' ' D3 ' ' D3"},
    {"PA", kBoth, nullptr, "D8"},
    {"PE", kBoth, nullptr, "D6"},
    {"PR", kBoth, nullptr, "D7"},
    {"QC", kLicence, nullptr, "L1 D4 '-' D6 '-' D2"},
    {"QC", kLicence, nullptr, "L1 D12"},
    {"RI", kBoth, nullptr, "D7"},
    {"SC", kBoth, nullptr, "D9"},
    {"SD", kBoth, nullptr, "D8"},
    {"TN", kIdCard, nullptr, "D9"},
    {"TN", kLicence, nullptr, "D9"},
    {"TX", kBoth, nullptr, "D8"},
    {"UT", kBoth, nullptr, "D9"},
    {"UT", kBoth, nullptr, "'0' D9"},
    {"VA", kBoth, nullptr, "L1 D2 '-' D2 '-' D4"},
    {"VA", kBoth, nullptr, "L1 D8"},
    {"VI", kLicence, nullptr, "L1 '-' D12"},
    {"VI", kLicence, nullptr, "L1 '-' D10"},
    {"VT", kIdCard, nullptr, "D7 L1"},
    {"VT", kBoth, nullptr, "D8"},
    {"WA", kBoth, nullptr, "L7 D3 L1 D1"},
    {"WA", kBoth, nullptr, "L3 '**' L2 D2 '*' L2"},
    {"WA", kBoth, nullptr, "L7 D3 L2"},
    {"WI", kBoth, checkWisconsin, {}},
    {"WV", kBoth, nullptr, "D7"},
    {"WV", kBoth, nullptr, "L1 D6"},
    {"WY", kIdCard, nullptr, "D2 '-' D7"},
    {"WY", kLicence, nullptr, "D6 '-' D3"},
    {"YT", kIdCard, nullptr, "D6"},
    {"YT", kLicence, nullptr, "D5"},
};

// The PDF417 symbols each jurisdiction prints: data columns, rows, error-correction
// level. Entries above 33 columns can never match the check's bounds; they are kept.
constexpr BarcodeSize kBarcodeSizes[] = {
    {"AB", 32, 16, 5}, {"AB", 20, 15, 5},
    {"AK", 25, 12, 3},
    {"AZ", 32, 9, 4}, {"AZ", 16, 19, 5},
    {"AR", 20, 20, 5},
    {"CA", 34, 15, 5},
    {"CO", 20, 16, 5},
    {"CT", 17, 14, 5},
    {"DE", 18, 14, 4}, {"DE", 34, 15, 5},
    {"DC", 20, 16, 5}, {"DC", 26, 11, 5},
    {"FL", 19, 15, 5}, {"FL", 18, 15, 5},
    {"GA", 33, 15, 5},
    {"HI", 29, 12, 6}, {"HI", 23, 11, 4},
    {"ID", 23, 12, 5},
    {"IL", 20, 12, 4}, {"IL", 42, 12, 7},
    {"IN", 42, 13, 5},
    {"IA", 31, 15, 5},
    {"KS", 20, 15, 5}, {"KS", 21, 15, 5}, {"KS", 22, 15, 5}, {"KS", 23, 15, 5}, {"KS", 24, 15, 5},
    {"LA", 34, 9, 5}, {"LA", 32, 10, 5}, {"LA", 22, 15, 5},
    {"ME", 37, 15, 7}, {"ME", 37, 15, 6},
    {"MD", 19, 13, 5}, {"MD", 20, 12, 5}, {"MD", 22, 14, 3}, {"MD", 22, 14, 5},
    {"MA", 33, 15, 5}, {"MA", 20, 17, 5}, {"MA", 22, 17, 5},
    {"MI", 21, 17, 5}, {"MI", 27, 14, 5},
    {"MN", 10, 15, 5},
    {"MS", 13, 18, 5},
    {"NE", 32, 15, 5},
    {"NH", 15, 14, 2},
    {"NM", 29, 15, 5}, {"NM", 25, 15, 5},
    {"NY", 20, 20, 6}, {"NY", 22, 21, 6},
    {"ND", 17, 14, 4},
    {"OH", 45, 15, 8},
    {"OK", 19, 12, 4}, {"OK", 20, 15, 5}, {"OK", 22, 15, 5},
    {"OR", 15, 17, 3},
    {"PA", 17, 14, 5},
    {"RI", 44, 14, 4}, {"RI", 42, 14, 4},
    {"SC", 14, 15, 4},
    {"SD", 18, 15, 5}, {"SD", 33, 15, 5},
    {"TN", 22, 12, 5},
    {"TX", 39, 15, 5},
    {"UT", 39, 15, 5},
    {"VT", 30, 15, 5},
    {"VA", 21, 19, 5},
    {"WA", 22, 19, 6},
    {"WV", 31, 11, 5},
    {"WI", 19, 15, 5}, {"WI", 20, 15, 5},
    {"WY", 30, 11, 5},
};

// Rows of a table: runs of entries of one jurisdiction.
template <typename Entry, size_t N>
constexpr int countJurisdictions(const Entry (&entries)[N]) {
    int rows = 0;
    for (size_t i = 0; i < N; ++i) {
        if (i == 0 || entries[i].jurisdiction[0] != entries[i - 1].jurisdiction[0] ||
            entries[i].jurisdiction[1] != entries[i - 1].jurisdiction[1]) {
            ++rows;
        }
    }
    return rows;
}
static_assert(countJurisdictions(kDocumentIdRules) == 69);
static_assert(std::size(kDocumentIdRules) == 137);
static_assert(countJurisdictions(kBarcodeSizes) == 45);
static_assert(std::size(kBarcodeSizes) == 72);

// The run of entries of one jurisdiction, found by its first entry.
template <typename Entry, size_t N>
std::span<const Entry> runOf(const Entry (&entries)[N], TextSpan code) {
    if (code.data == nullptr || code.length != 2) return {};
    for (size_t i = 0; i < N; ++i) {
        if (entries[i].jurisdiction[0] != code.data[0] || entries[i].jurisdiction[1] != code.data[1]) continue;
        size_t end = i;
        while (end < N && entries[end].jurisdiction[0] == code.data[0] && entries[end].jurisdiction[1] == code.data[1]) {
            ++end;
        }
        return std::span<const Entry>(entries + i, end - i);
    }
    return {};
}

}  // namespace

DocumentIdRuleSet documentIdRulesFor(TextSpan jurisdiction) {
    const auto rules = runOf(kDocumentIdRules, jurisdiction);
    return {rules, !rules.empty()};
}

BarcodeSizeSet barcodeSizesFor(TextSpan jurisdiction) {
    const auto sizes = runOf(kBarcodeSizes, jurisdiction);
    return {sizes, !sizes.empty()};
}

std::span<const DocumentIdRule> documentIdRules() { return kDocumentIdRules; }
std::span<const BarcodeSize> barcodeSizes() { return kBarcodeSizes; }

}  // namespace orvane
