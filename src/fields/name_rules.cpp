// The per-jurisdiction name rules: one row per jurisdiction, in the order the rules are
// searched. Row 0 is the fallback for records of no known jurisdiction.
#include <iterator>

#include "fields/name_hooks.h"
#include "fields/names.h"
#include "fields/text.h"

namespace orvane {
namespace {

// Columns: code, then only the hooks the jurisdiction has (licenseNumberHook,
// firstNameHook, lastNameHook, middleNameHook, addressHook, suffixHook, prefixHook,
// postalCodeHook), then useGenericSplitter (0 = split whole names with the GenericSplitter).
constexpr NameRule kNameRules[] = {
    {.jurisdictionCode = "", .useGenericSplitter = -1},
    {.jurisdictionCode = "AK", .useGenericSplitter = -1},
    {.jurisdictionCode = "AR", .useGenericSplitter = -1},
    {.jurisdictionCode = "CT", .useGenericSplitter = -1},
    {.jurisdictionCode = "DE", .useGenericSplitter = -1},
    {.jurisdictionCode = "DC", .useGenericSplitter = -1},
    {.jurisdictionCode = "GA", .useGenericSplitter = -1},
    {.jurisdictionCode = "GM", .useGenericSplitter = -1},
    {.jurisdictionCode = "ID", .useGenericSplitter = -1},
    {.jurisdictionCode = "IA", .useGenericSplitter = -1},
    {.jurisdictionCode = "LA", .useGenericSplitter = -1},
    {.jurisdictionCode = "ME", .useGenericSplitter = -1},
    {.jurisdictionCode = "MS", .useGenericSplitter = -1},
    {.jurisdictionCode = "MO", .useGenericSplitter = -1},
    {.jurisdictionCode = "MT", .useGenericSplitter = -1},
    {.jurisdictionCode = "NV", .useGenericSplitter = -1},
    {.jurisdictionCode = "NH", .useGenericSplitter = -1},
    {.jurisdictionCode = "NM", .useGenericSplitter = -1},
    {.jurisdictionCode = "NC", .useGenericSplitter = -1},
    {.jurisdictionCode = "ND", .useGenericSplitter = -1},
    {.jurisdictionCode = "OK", .useGenericSplitter = -1},
    {.jurisdictionCode = "OR", .useGenericSplitter = -1},
    {.jurisdictionCode = "PA", .useGenericSplitter = -1},
    {.jurisdictionCode = "RI", .useGenericSplitter = -1},
    {.jurisdictionCode = "SC", .useGenericSplitter = -1},
    {.jurisdictionCode = "SD", .useGenericSplitter = -1},
    {.jurisdictionCode = "TN", .useGenericSplitter = -1},
    {.jurisdictionCode = "TX", .useGenericSplitter = -1},
    {.jurisdictionCode = "DS", .useGenericSplitter = -1},
    {.jurisdictionCode = "VI", .useGenericSplitter = -1},
    {.jurisdictionCode = "UT", .useGenericSplitter = -1},
    {.jurisdictionCode = "VT", .useGenericSplitter = -1},
    {.jurisdictionCode = "VA", .useGenericSplitter = -1},
    {.jurisdictionCode = "WA", .useGenericSplitter = -1},
    {.jurisdictionCode = "WV", .useGenericSplitter = -1},
    {.jurisdictionCode = "WY", .useGenericSplitter = -1},
    {.jurisdictionCode = "AB", .useGenericSplitter = -1},
    {.jurisdictionCode = "BC", .useGenericSplitter = -1},
    {.jurisdictionCode = "MB", .useGenericSplitter = -1},
    {.jurisdictionCode = "NB", .useGenericSplitter = -1},
    {.jurisdictionCode = "NT", .useGenericSplitter = -1},
    {.jurisdictionCode = "NS", .useGenericSplitter = -1},
    {.jurisdictionCode = "NU", .useGenericSplitter = -1},
    {.jurisdictionCode = "PE", .useGenericSplitter = -1},
    {.jurisdictionCode = "QC", .useGenericSplitter = -1},
    {.jurisdictionCode = "SK", .useGenericSplitter = -1},
    {.jurisdictionCode = "YT", .useGenericSplitter = -1},
    {.jurisdictionCode = "WI", .useGenericSplitter = -1},
    {.jurisdictionCode = "ON", .useGenericSplitter = -1},
    {.jurisdictionCode = "NJ", .useGenericSplitter = -1},
    {.jurisdictionCode = "NY", .useGenericSplitter = -1},
    {.jurisdictionCode = "NF", .useGenericSplitter = -1},
    {.jurisdictionCode = "LB", .useGenericSplitter = -1},
    {.jurisdictionCode = "NE", .useGenericSplitter = -1},
    {.jurisdictionCode = "MI", .useGenericSplitter = -1},
    {.jurisdictionCode = "MD", .useGenericSplitter = -1},
    {.jurisdictionCode = "FL", .useGenericSplitter = -1},
    {.jurisdictionCode = "MA", .useGenericSplitter = -1},
    {.jurisdictionCode = "KS", .useGenericSplitter = -1},
    {.jurisdictionCode = "HI", .useGenericSplitter = -1},
    {.jurisdictionCode = "AZ", .useGenericSplitter = -1},
    {.jurisdictionCode = "KY", .useGenericSplitter = -1},
    {.jurisdictionCode = "IN", .useGenericSplitter = -1},
    {.jurisdictionCode = "IL", .useGenericSplitter = -1},
    {.jurisdictionCode = "CO", .firstNameHook = coloradoFirstName, .lastNameHook = coloradoLastName, .middleNameHook = coloradoMiddleName, .useGenericSplitter = -1},
    {.jurisdictionCode = "AL", .firstNameHook = alabamaFirstName, .lastNameHook = alabamaLastName, .middleNameHook = alabamaMiddleName, .suffixHook = alabamaSuffix, .prefixHook = alabamaPrefix, .useGenericSplitter = -1},
    {.jurisdictionCode = "OH", .useGenericSplitter = -1},
    {.jurisdictionCode = "MN", .useGenericSplitter = -1},
    {.jurisdictionCode = "CA", .useGenericSplitter = 0},
};
static_assert(std::size(kNameRules) == 69);

}  // namespace

std::span<const NameRule> nameRuleTable() { return kNameRules; }

const NameRule* nameRuleForCode(TextSpan code) {
    for (const NameRule& rule : kNameRules) {
        if (spanEquals(code, rule.jurisdictionCode) == 0) return &rule;
    }
    return &kNameRules[0];
}

}  // namespace orvane
