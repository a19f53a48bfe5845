#include "documents/cac_layouts.h"

#include <iterator>

#include "fields/text.h"

namespace orvane {
namespace {

constexpr FixedFieldLayout kLayoutA[] = {
    {88, 1},                         // version character
    {field::licenseNumberAlt3, 6},   // base 32
    {90, 1},
    {91, 7},                         // base 32
    {field::firstName, 20},
    {field::lastName, 26},
    {field::birthdateAlt, 4},        // base-32 day number
    {92, 1},
    {93, 1},
    {94, 2},
    {95, 6},
    {96, 2},
    {97, 2},
    {field::issueDate, 4},           // base-32 day number
    {field::expirationDate, 4},      // base-32 day number
    {98, 1},
    {field::middleName, 1},
};
static_assert(std::size(kLayoutA) == 17);
static_assert(layoutWidth(kLayoutA) == 89);

constexpr FixedFieldLayout kLayoutB[] = {
    {99, 1},  // variant marker: "0"
    {field::fullName, 27},
    {field::licenseNumberAlt2, 9},
    {101, 1},
    {102, 9},
    {103, 2},
    {field::heightAlt, 2},
    {field::weightPounds, 3},
    {field::hairColor, 2},
    {field::eyeColor, 2},
    {field::birthdateAlt, 9},
    {104, 1},
    {105, 1},
    {106, 1},
    {107, 1},
    {108, 1},
    {109, 9},
    {110, 9},
    {111, 6},
    {field::issueDate, 9},
    {field::expirationDate, 9},
    {112, 4},
    {113, 1},
    {114, 6},
    {115, 5},
    {116, 6},
    {117, 4},
    {118, 27},
    {119, 9},
    {120, 6},
};
static_assert(std::size(kLayoutB) == 30);
static_assert(layoutWidth(kLayoutB) == 182);

constexpr FixedFieldLayout kLayoutC[] = {
    {99, 1},  // variant marker: "1"
    {field::fullName, 27},
    {field::licenseNumberAlt2, 9},
    {101, 1},
    {102, 9},
    {103, 2},
    {field::heightAlt, 2},
    {field::weightPounds, 3},
    {field::hairColor, 2},
    {field::eyeColor, 2},
    {field::birthdateAlt, 9},
    {104, 1},
    {105, 1},
    {106, 1},
    {107, 1},
    {108, 1},
    {109, 9},
    {110, 9},
    {111, 6},
    {field::issueDate, 9},
    {field::expirationDate, 9},
    {112, 4},
    {113, 1},
    {121, 6},
    {122, 5},
    {95, 6},
    {123, 3},
    {124, 3},
};
static_assert(std::size(kLayoutC) == 28);
static_assert(layoutWidth(kLayoutC) == 142);

constexpr FixedFieldLayout kLayoutD[] = {
    {99, 1},
    {field::fullName, 27},
    {field::licenseNumberAlt2, 9},
    {129, 1},
    {102, 9},
    {113, 1},
    {130, 1},
    {field::heightAlt, 2},
    {133, 3},
    {field::hairColor, 2},
    {field::eyeColor, 2},
    {field::birthdateAlt, 9},
    {128, 23},
    {111, 6},
    {134, 9},
    {136, 9},
    {112, 4},
    {135, 1},
    {121, 6},
    {122, 5},
    {95, 6},
    {132, 7},
    {123, 3},
    {124, 3},
    {127, 35},
};
static_assert(std::size(kLayoutD) == 25);
static_assert(layoutWidth(kLayoutD) == 184);

constexpr MonthAbbreviation kMonths[] = {
    {"JAN", "01"}, {"FEB", "02"}, {"MAR", "03"}, {"APR", "04"}, {"MAY", "05"}, {"JUN", "06"},
    {"JUL", "07"}, {"AUG", "08"}, {"SEP", "09"}, {"OCT", "10"}, {"NOV", "11"}, {"DEC", "12"},
};
static_assert(std::size(kMonths) == 12);

}  // namespace

std::span<const FixedFieldLayout> cacLayoutA() { return kLayoutA; }
std::span<const FixedFieldLayout> cacLayoutB() { return kLayoutB; }
std::span<const FixedFieldLayout> cacLayoutC() { return kLayoutC; }
std::span<const FixedFieldLayout> cacLayoutD() { return kLayoutD; }

const char* monthNumberOfAbbreviation(TextSpan letters) {
    for (const MonthAbbreviation& month : kMonths) {
        if (spanEquals(letters, month.letters) == 0) return month.number;
    }
    return nullptr;
}

std::span<const MonthAbbreviation> monthAbbreviations() { return kMonths; }

}  // namespace orvane
