// The per-jurisdiction name rules: one row per jurisdiction, in the order the rules are
// searched. Row 0 is the fallback for records of no known jurisdiction.
#include <iterator>

#include "fields/address.h"
#include "fields/name_hooks.h"
#include "fields/names.h"
#include "fields/text.h"

namespace orvane {
namespace {

// Every US row and the territories that use US ZIP codes (DS, GM, VI) format postal
// codes as ZIP codes; Canadian rows split one-line addresses; the rows whose cards print
// licence numbers in groups answer the number without the group separators.
// Columns: code, then only the hooks the jurisdiction has (licenseNumberHook,
// firstNameHook, lastNameHook, middleNameHook, addressHook, suffixHook, prefixHook,
// postalCodeHook), then useGenericSplitter (0 = split whole names with the GenericSplitter).
constexpr NameRule kNameRules[] = {
    {.jurisdictionCode = "", .useGenericSplitter = -1},
    {.jurisdictionCode = "AK", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "AR", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "CT", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "DE", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "DC", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "GA", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "GM", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "ID", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "IA", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "LA", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "ME", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "MS", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "MO", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "MT", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "NV", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "NH", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "NM", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "NC", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "ND", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "OK", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "OR", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "PA", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "RI", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "SC", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "SD", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "TN", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "TX", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "DS", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "VI", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "UT", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "VT", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "VA", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "WA", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "WV", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "WY", .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "AB", .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "BC", .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "MB", .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "NB", .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "NT", .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "NS", .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "NU", .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "PE", .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "QC", .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "SK", .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "YT", .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "WI", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "ON", .licenseNumberHook = licenseNumberWithoutBlanks, .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "NJ", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "NY", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "NF", .licenseNumberHook = licenseNumberWithoutSeparators, .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "LB", .licenseNumberHook = licenseNumberWithoutSeparators, .addressHook = canadianAddressLine, .useGenericSplitter = -1},
    {.jurisdictionCode = "NE", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "MI", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "MD", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "FL", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "MA", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "KS", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "HI", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "AZ", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "KY", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "IN", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "IL", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "CO", .licenseNumberHook = licenseNumberWithoutSeparators, .firstNameHook = coloradoFirstName, .lastNameHook = coloradoLastName, .middleNameHook = coloradoMiddleName, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "AL", .licenseNumberHook = licenseNumberWithoutSeparators, .firstNameHook = alabamaFirstName, .lastNameHook = alabamaLastName, .middleNameHook = alabamaMiddleName, .suffixHook = alabamaSuffix, .prefixHook = alabamaPrefix, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "OH", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "MN", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = -1},
    {.jurisdictionCode = "CA", .licenseNumberHook = licenseNumberWithoutSeparators, .postalCodeHook = usPostalCode, .useGenericSplitter = 0},
};
static_assert(std::size(kNameRules) == 69);

// The first row of each code at the code's place among the 676 pairs of capitals; 0,
// the fallback, elsewhere.
struct RuleIndex {
    uint8_t row[26 * 26];
};

constexpr int32_t codePlace(char first, char second) {
    if (first < 'A' || first > 'Z' || second < 'A' || second > 'Z') return -1;
    return (first - 'A') * 26 + (second - 'A');
}

constexpr RuleIndex indexRules() {
    RuleIndex index{};
    for (size_t i = std::size(kNameRules); i-- > 1;) {
        const char* c = kNameRules[i].jurisdictionCode;
        index.row[codePlace(c[0], c[1])] = static_cast<uint8_t>(i);
    }
    return index;
}

// Every row but the fallback has a code of two capitals, so the index finds them all.
constexpr bool codesAreCapitals() {
    for (size_t i = 1; i < std::size(kNameRules); ++i) {
        const char* c = kNameRules[i].jurisdictionCode;
        if (c[0] == '\0' || codePlace(c[0], c[1]) < 0 || c[2] != '\0') return false;
    }
    return kNameRules[0].jurisdictionCode[0] == '\0';
}
static_assert(codesAreCapitals());

constexpr RuleIndex kRulesByCode = indexRules();

}  // namespace

std::span<const NameRule> nameRuleTable() { return kNameRules; }

const NameRule* nameRuleForCode(TextSpan code) {
    // Every row but the fallback has a two-letter code, so only such a key can match one.
    if (code.data == nullptr || code.length != 2) return &kNameRules[0];
    const int32_t place = codePlace(code.data[0], code.data[1]);
    return &kNameRules[place < 0 ? 0 : kRulesByCode.row[place]];
}

}  // namespace orvane
