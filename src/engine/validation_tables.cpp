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
// Beside each rule, a number it accepts and a near miss it refuses; the examples of the
// dedicated checks are for a holder SMITH, male, born 1990-11-05.
constexpr DocumentIdRule kDocumentIdRules[] = {
    {"AB", kIdCard, nullptr, "D4 -? D5", "1234-56789", "1234-5678"},
    {"AB", kIdCard, nullptr, "D6 -? D3", "123456-789", "12345-789"},
    {"AB", kLicence, nullptr, "D6 -? D3", "123456789", "12345678"},
    {"AK", kBoth, nullptr, "D7", "1234567", "123456"},
    {"AL", kIdCard, nullptr, "L1 D6", "A123456", "1123456"},
    {"AL", kLicence, nullptr, "D7", "1234567", "12345678"},
    {"AR", kBoth, nullptr, "D9", "123456789", "12345678"},
    {"AS", kIdCard, nullptr, "D5 -? D11", "12345-12345678901", "12345-1234567890"},
    {"AS", kLicence, nullptr, "D3 '-' D2 '-' D4", "123-45-6789", "123-456789"},
    {"AS", kLicence, nullptr, "D3 D2 D4", "123456789", "12345678"},
    {"AS", kLicence, nullptr, "D6", "123456", "12345A"},
    {"AZ", kIdCard, nullptr, "D4 L1 D5", "1234A56789", "1234556789"},
    {"AZ", kBoth, nullptr, "L1 D8", "A12345678", "A1234567"},
    {"BC", kLicence, nullptr, "D7", "1234567", "123456"},
    {"BC", kIdCard, nullptr, "D9", "123456789", "12345678"},
    {"CA", kBoth, nullptr, "L1 D7", "A1234567", "A123456"},
    {"CN", kBoth, nullptr, "D9", "123456789", "1234567890"},
    {"CO", kBoth, nullptr, "D2 '-' D3 '-' D4", "12-345-6789", "12-3456789"},
    {"CO", kBoth, nullptr, "D2 D3 D4", "123456789", "12345678"},
    {"CT", kBoth, checkConnecticut, {}, "231234567", "221234567"},
    {"DC", kIdCard, nullptr, "D9", "123456789", "12345678"},
    {"DC", kIdCard, nullptr, "D7", "1234567", "123456"},
    {"DC", kLicence, nullptr, "D7", "1234567", "123456"},
    {"DE", kIdCard, nullptr, "D7", "1234567", "123456"},
    {"DE", kLicence, nullptr, "D6", "123456", "12345"},
    {"DE", kLicence, nullptr, "D7", "1234567", "12345678"},
    {"FL", kBoth, checkFlorida, {}, "S530-460-90-800-0", "S530-460-91-800-0"},
    {"GA", kBoth, nullptr, "D9", "123456789", "12345678"},
    {"GU", kIdCard, nullptr, "L1 D2 -? D5", "A12-34567", "A12-3456"},
    {"GU", kLicence, nullptr, "D10", "1234567890", "123456789"},
    {"HI", kIdCard, nullptr, "L1 D7", "A1234567", "A123456"},
    {"HI", kBoth, nullptr, "L1 D8", "A12345678", "112345678"},
    {"IA", kIdCard, nullptr, "D9", "123456789", "12345678"},
    {"IA", kIdCard, nullptr, "D3 L2 D4", "123AB4567", "123A14567"},
    {"IA", kLicence, nullptr, "D3 L2 D4", "123AB4567", "1234B4567"},
    {"IA", kLicence, nullptr, "D9", "123456789", "1234567890"},
    {"ID", kBoth, nullptr, "L2 D6 L1", "AB123456C", "AB1234567"},
    {"IL", kBoth, nullptr, "L1 D3 '-' D4 '-' D4", "A123-4567-8901", "A123-4567-890"},
    {"IL", kBoth, nullptr, "L1 D3 D4 D4", "A12345678901", "A1234567890"},
    {"IL", kBoth, nullptr, "D4 '-' D4 '-' D3 L1", "1234-5678-901A", "1234-5678-9012"},
    {"IL", kBoth, nullptr, "D4 D4 D3 L1", "12345678901A", "123456789012"},
    {"IN", kBoth, nullptr, "D4 '-' D2 '-' D4", "1234-56-7890", "1234-567890"},
    {"IN", kBoth, nullptr, "D4 D2 D4", "1234567890", "123456789"},
    {"KS", kBoth, nullptr, "D3 '-' D2 '-' D4", "123-45-6789", "123-45-678"},
    {"KS", kBoth, nullptr, "D3 D2 D4", "123456789", "12345678"},
    {"KS", kBoth, nullptr, "L1 D2 '-' D2 '-' D4", "K12-34-5678", "K12-34-567"},
    {"KS", kBoth, nullptr, "L1 D2 D2 D4", "K12345678", "K1234567"},
    {"KY", kBoth, nullptr, "L1 D2 '-' D3 '-' D3", "A12-345-678", "A12-345678"},
    {"KY", kBoth, nullptr, "L1 D2 D3 D3", "A12345678", "112345678"},
    {"LA", kIdCard, nullptr, "D5", "12345", "1234"},
    {"LA", kBoth, nullptr, "'00' D7", "001234567", "00123456"},
    {"LA", kBoth, nullptr, "'01' D7", "011234567", "021234567"},
    {"MA", kBoth, nullptr, "'S' D8", "S12345678", "S1234567"},
    {"MB", kIdCard, nullptr, "L2 '-' L2 '-' L2 '-' L1 D3 L2", "AB-CD-EF-G123HI", "AB-CD-EF-G12HI"},
    {"MB", kIdCard, nullptr, "L2 L2 L2 L1 D3 L2", "ABCDEFG123HI", "ABCDEFG1234I"},
    {"MB", kLicence, nullptr, "L2 '-' L2 '-' L2 '-' L1 D3 L2", "AB-CD-EF-G123HI", "AB-CD-EFG123HI"},
    {"MB", kLicence, nullptr, "L2 L2 L2 L1 D3 L2", "ABCDEFG123HI", "ABCDEF1123HI"},
    {"MD", kBoth, nullptr, "L1 '-' D3 '-' D3 '-' D3 '-' D3", "A-123-456-789-012", "A-123-456-789-01"},
    {"MD", kBoth, nullptr, "L1 D3 D3 D3 D3", "A123456789012", "A12345678901"},
    {"ME", kBoth, nullptr, "D7", "1234567", "123456A"},
    {"MI", kIdCard, nullptr, "L1 ' ' D3 ' ' D3 ' ' D3 ' ' D1", "A 123 456 789 0", "A 123 456 7890"},
    {"MI", kIdCard, nullptr, "L1 D3 D3 D3 D1", "A1234567890", "A123456789"},
    {"MI", kIdCard, nullptr, "D4", "1234", "123"},
    {"MI", kIdCard, nullptr, "L1 ' ' D3 ' ' D3 ' ' D3 ' ' D3", "A 123 456 789 012", "A 123 456 789 01"},
    {"MI", kIdCard, nullptr, "L1 D3 D3 D3 D3", "A123456789012", "A12345678901"},
    {"MI", kLicence, nullptr, "L1 ' ' D3 ' ' D3 ' ' D3 ' ' D3", "A 123 456 789 012", "A 123 456 789 01"},
    {"MI", kLicence, nullptr, "L1 D3 D3 D3 D3", "A123456789012", "A12345678901"},
    {"MN", kBoth, nullptr, "L1 '-' D3 '-' D3 '-' D3 '-' D3", "A-123-456-789-012", "A123-456-789-012"},
    {"MN", kBoth, nullptr, "L1 D3 D3 D3 D3", "A123456789012", "AB23456789012"},
    {"MN", kBoth, nullptr, "L1 D12", "A123456789012", "A12345678901A"},  // never reached: the rule above takes the same numbers
    {"MO", kBoth, nullptr, "L1 D9", "A123456789", "A12345678"},
    {"MP", kLicence, nullptr, "D4 -? D4", "1234-5678", "1234-567"},
    {"MS", kBoth, nullptr, "D9", "123456789", "12345678"},
    {"MT", kBoth, nullptr, "D13", "1234567890123", "123456789012"},
    {"NB", kIdCard, nullptr, "D7", "1234567", "123456"},
    {"NB", kLicence, nullptr, "D7", "1234567", "12345678"},
    {"NC", kBoth, nullptr, "D12", "123456789012", "12345678901"},
    {"ND", kBoth, nullptr, "L3 '-' D2 '-' D4", "ABC-12-3456", "AB1-12-3456"},
    {"ND", kBoth, nullptr, "L3 D2 D4", "ABC123456", "ABC12345"},
    {"NE", kBoth, nullptr, "L1 D8", "A12345678", "A1234567"},
    {"NH", kBoth, nullptr, "D10", "1234567890", "123456789"},
    {"NH", kBoth, nullptr, "D2 L3 D5", "12ABC34567", "12AB134567"},
    {"NH", kBoth, nullptr, "A11", "AB12CD34EF5", "AB12CD34EF"},
    {"NJ", kBoth, nullptr, "L1 D4 ' ' D5 ' ' D5", "A1234 56789 01234", "A1234 56789 0123"},
    {"NJ", kBoth, nullptr, "L1 D4 D5 ' ' D5", "A123456789 01234", "A123456789 0123"},
    {"NJ", kBoth, nullptr, "L1 D4 D5 D5", "A12345678901234", "A1234567890123"},
    {"NL", kBoth, nullptr, "L1 D9", "A123456789", "A12345678"},
    {"NM", kBoth, nullptr, "D9", "123456789", "12345678"},
    {"NS", kBoth, nullptr, "L5 D9", "ABCDE123456789", "ABCD1123456789"},
    {"NT", kIdCard, nullptr, "D5", "12345", "1234"},
    {"NT", kLicence, nullptr, "D6", "123456", "12345"},
    {"NU", kIdCard, nullptr, "D2", "12", "1"},
    {"NU", kIdCard, nullptr, "D6", "123456", "12345"},
    {"NU", kLicence, nullptr, "D6", "123456", "12345A"},
    {"NV", kBoth, nullptr, "D10", "1234567890", "123456789"},
    {"NY", kBoth, nullptr, "D3 ' ' D3 ' ' D3", "123 456 789", "123 456789"},
    {"NY", kBoth, nullptr, "D9", "123456789", "12345678"},
    {"OH", kBoth, nullptr, "L2 D6", "AB123456", "A1123456"},
    {"OK", kBoth, nullptr, "D9", "123456789", "12345678"},
    {"OK", kBoth, nullptr, "L1 D9", "A123456789", "A12345678"},
    {"ON", kIdCard, nullptr, "D3 ' - ' L2 D2 ' - ' D5", "123 - AB12 - 34567", "123 - AB12 - 3456"},
    {"ON", kIdCard, nullptr, "D1 -? D1 -? D1 -? L1 -? L1 -? D1 -? D1 -? D1 -? D1 -? D1 -? D1 -? D1", "123-AB-1234567", "123-A1-1234567"},
    {"ON", kLicence, nullptr, "L1 D4 ' - ' D5 ' - ' D5", "A1234 - 56789 - 01234", "A1234 - 56789 - 0123"},
    {"ON", kLicence, nullptr, "L1 D4 '-' D5 '-' D5", "A1234-56789-01234", "A1234-56789-0123"},
    {"OR", kBoth, nullptr, "D8", "12345678", "1234567A"},
    {"OR", kIdCard, nullptr, "D1 D? D? D? D? D? D?", "12345", "1234A"},
    {"OR", kLicence, nullptr, "D4", "1234", "12345"},
    {"PA", kBoth, nullptr, "D2 ' ' D3 ' ' D3", "12 345 678", "12 345 67"},
    {"PA", kBoth, nullptr, "D8", "12345678", "1234567"},
    {"PE", kBoth, nullptr, "D6", "123456", "12345"},
    {"PR", kBoth, nullptr, "D7", "1234567", "123456"},
    {"QC", kLicence, nullptr, "L1 D4 '-' D6 '-' D2", "A1234-567890-12", "A1234-567890-1"},
    {"QC", kLicence, nullptr, "L1 D12", "A123456789012", "A12345678901"},
    {"RI", kBoth, nullptr, "D7", "1234567", "12345678"},
    {"SC", kBoth, nullptr, "D9", "123456789", "12345678"},
    {"SD", kBoth, nullptr, "D8", "12345678", "123456789"},
    {"TN", kIdCard, nullptr, "D9", "123456789", "12345678"},
    {"TN", kLicence, nullptr, "D9", "123456789", "1234567890"},
    {"TX", kBoth, nullptr, "D8", "12345678", "123456789"},
    {"UT", kBoth, nullptr, "D9", "123456789", "12345678"},
    {"UT", kBoth, nullptr, "'0' D9", "0123456789", "1123456789"},
    {"VA", kBoth, nullptr, "L1 D2 '-' D2 '-' D4", "A12-34-5678", "A12-345678"},
    {"VA", kBoth, nullptr, "L1 D8", "A12345678", "A1234567"},
    {"VI", kLicence, nullptr, "L1 '-' D12", "A-123456789012", "A123456789012"},
    {"VI", kLicence, nullptr, "L1 '-' D10", "A-1234567890", "A-123456789"},
    {"VT", kIdCard, nullptr, "D7 L1", "1234567A", "1234567"},
    {"VT", kBoth, nullptr, "D8", "12345678", "1234567"},
    {"WA", kBoth, nullptr, "L7 D3 L1 D1", "ABCDEFG123H4", "ABCDEF1123H4"},
    {"WA", kBoth, nullptr, "L3 '**' L2 D2 '*' L2", "DOE**JO12*AB", "DOE*JO12*AB"},
    {"WA", kBoth, nullptr, "L7 D3 L2", "ABCDEFG123HI", "ABCDEFG123H"},
    {"WI", kBoth, checkWisconsin, {}, "S5304609012345", "S5304609062345"},
    {"WV", kBoth, nullptr, "D7", "1234567", "123456"},
    {"WV", kBoth, nullptr, "L1 D6", "A123456", "A12345"},
    {"WY", kIdCard, nullptr, "D2 '-' D7", "12-3456789", "12-345678"},
    {"WY", kLicence, nullptr, "D6 '-' D3", "123456-789", "123456789"},
    {"YT", kIdCard, nullptr, "D6", "123456", "12345"},
    {"YT", kLicence, nullptr, "D5", "12345", "123456"},
};

// The PDF417 symbols each jurisdiction prints: data columns, rows, error-correction
// level. Each entry is its own example of an accepted size, except that entries above
// 33 columns can never match the check's bounds; they are kept.
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

// Codes of two capitals find their run through its place among the 676 pairs: the
// first entry of the code and the length of the run from it, as runOf finds them.
constexpr int32_t codePlace(char first, char second) {
    if (first < 'A' || first > 'Z' || second < 'A' || second > 'Z') return -1;
    return (first - 'A') * 26 + (second - 'A');
}

struct RunIndex {
    int16_t first[26 * 26];
    int16_t count[26 * 26];
};

template <typename Entry, size_t N>
constexpr RunIndex indexRuns(const Entry (&entries)[N]) {
    RunIndex index{};
    for (int16_t& f : index.first) f = -1;
    for (size_t i = 0; i < N; ++i) {
        const int32_t place = codePlace(entries[i].jurisdiction[0], entries[i].jurisdiction[1]);
        if (place < 0 || index.first[place] >= 0) continue;
        size_t end = i;
        while (end < N && entries[end].jurisdiction[0] == entries[i].jurisdiction[0] &&
               entries[end].jurisdiction[1] == entries[i].jurisdiction[1]) {
            ++end;
        }
        index.first[place] = static_cast<int16_t>(i);
        index.count[place] = static_cast<int16_t>(end - i);
    }
    return index;
}

constexpr RunIndex kDocumentIdRuns = indexRuns(kDocumentIdRules);
constexpr RunIndex kBarcodeSizeRuns = indexRuns(kBarcodeSizes);

template <typename Entry, size_t N>
std::span<const Entry> indexedRunOf(const Entry (&entries)[N], const RunIndex& index, TextSpan code) {
    if (code.data == nullptr || code.length != 2) return {};
    const int32_t place = codePlace(code.data[0], code.data[1]);
    if (place < 0) return runOf(entries, code);
    if (index.first[place] < 0) return {};
    return std::span<const Entry>(entries + index.first[place], static_cast<size_t>(index.count[place]));
}

}  // namespace

DocumentIdRuleSet documentIdRulesFor(TextSpan jurisdiction) {
    const auto rules = indexedRunOf(kDocumentIdRules, kDocumentIdRuns, jurisdiction);
    return {rules, !rules.empty()};
}

BarcodeSizeSet barcodeSizesFor(TextSpan jurisdiction) {
    const auto sizes = indexedRunOf(kBarcodeSizes, kBarcodeSizeRuns, jurisdiction);
    return {sizes, !sizes.empty()};
}

std::span<const DocumentIdRule> documentIdRules() { return kDocumentIdRules; }
std::span<const BarcodeSize> barcodeSizes() { return kBarcodeSizes; }

}  // namespace orvane
