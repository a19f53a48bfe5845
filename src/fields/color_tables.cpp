#include "fields/color_tables.h"

#include <cstring>
#include <iterator>

namespace orvane {
namespace {

constexpr ColorRow kEyeColors[] = {
    {"BLK", 3, "Black"},
    {"BLU", 3, "Blue"},
    {"BRO", 3, "Brown"},
    {"BRN", 3, "Brown"},
    {"GRY", 3, "Gray"},
    {"GRN", 3, "Green"},
    {"HAZ", 3, "Hazel"},
    {"MAR", 3, "Maroon"},
    {"PNK", 3, "Pink"},
    {"DIC", 3, "Dichromatic"},
    {"UNK", 3, "Unknown"},
    {"BK", 2, "Black"},
    {"BL", 2, "Blue"},
    {"BR", 2, "Brown"},
    {"GY", 2, "Gray"},
    {"VI", 2, "Viole"},  // deliberately five letters
};
static_assert(std::size(kEyeColors) == 16);

// Hair says "Grey" where eyes say "Gray", on purpose.
constexpr ColorRow kHairColors[] = {
    {"BAL", 3, "Bald"},
    {"BLK", 3, "Black"},
    {"BLN", 3, "Blond"},
    {"BRO", 3, "Brown"},
    {"GRY", 3, "Grey"},
    {"RED", 3, "Red/Auburn"},
    {"BRN", 3, "Brown"},
    {"SDY", 3, "Sandy"},
    {"WHI", 3, "White"},
    {"UNK", 3, "Unknown"},
    {"BD", 2, "Bald"},
    {"BK", 2, "Black"},
    {"BN", 2, "Blond"},
    {"BR", 2, "Brown"},
    {"GY", 2, "Grey"},
    {"RD", 2, "Red/Auburn"},
    {"WH", 2, "White"},
};
static_assert(std::size(kHairColors) == 17);

constexpr uint64_t textLength(const char* text) {
    uint64_t length = 0;
    while (text[length] != '\0') ++length;
    return length;
}

template <size_t N>
constexpr bool lengthsMatchCodes(const ColorRow (&rows)[N]) {
    for (const ColorRow& row : rows) {
        if (row.codeLength != textLength(row.code)) return false;
    }
    return true;
}
static_assert(lengthsMatchCodes(kEyeColors) && lengthsMatchCodes(kHairColors));

}  // namespace

const char* colorNameForCode(TextSpan code, std::span<const ColorRow> table) {
    if (code.data == nullptr || code.length < 2) return nullptr;
    const uint64_t length = static_cast<uint64_t>(code.length);
    for (const ColorRow& row : table) {
        if (row.codeLength == length && std::memcmp(row.code, code.data, length) == 0) {
            return row.name;
        }
    }
    return nullptr;
}

const char* eyeColorName(TextSpan code) { return colorNameForCode(code, kEyeColors); }
const char* hairColorName(TextSpan code) { return colorNameForCode(code, kHairColors); }

std::span<const ColorRow> eyeColorTable() { return kEyeColors; }
std::span<const ColorRow> hairColorTable() { return kHairColors; }

}  // namespace orvane
