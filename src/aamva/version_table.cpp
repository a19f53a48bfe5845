#include <iterator>

#include "aamva/engine.h"

namespace orvane {
namespace {

// format, min and expected version, header length, positions of the data element
// separator, record separator and segment terminator, then offset and length of the
// IIN, the version and the number of entries.
constexpr AamvaVersionRow kAamvaVersionTable[] = {
    {17,  0,  1, 19,  1,  2,  3,  9,  6, 15,  2, 17,  2},
    {18,  0,  1, 18,  1,  2,  3,  8,  6, 14,  2, 16,  2},
    {19,  0,  1, 19,  1,  2,  3,  9,  6, 15,  2, 17,  2},
    {20,  0,  0, 16,  1,  1,  2,  7,  6, 13,  1, 14,  2},
    {21,  0,  0, 17,  1,  2,  3,  8,  6, 14,  1, 15,  2},
    {22,  0,  0, 17,  1,  2,  3,  8,  6, 14,  1, 15,  2},
    {23,  0,  0, 17,  1,  2,  3,  8,  6, 14,  1, 15,  2},
    {24,  0,  1, 19,  1,  2,  3,  9,  6, 15,  2, 17,  2},
    {25,  0,  1, 17,  1,  1,  2,  8,  6,  9,  1, 15,  2},
    {26,  0,  1, 18,  1,  1,  2,  8,  6, 14,  2, 16,  2},
    {27,  0,  1, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {28,  0,  1, 19,  1,  2,  3,  9,  6, 15,  2, 17,  2},
    {29,  0,  2, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {30,  0,  2, 19,  1,  2,  3,  9,  6, 15,  2, 17,  2},
    {31,  0,  3, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {32,  0,  3, 20,  1,  1,  2,  8,  6, 14,  2, 18,  2},
    {33,  0,  3, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {34,  0,  3, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {35,  0,  3, 20,  1,  2,  3,  8,  6, 14,  2, 18,  2},
    {36,  0,  3, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {37,  0,  4, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {38,  0,  4, 20,  1,  2,  3,  8,  6, 14,  2, 18,  2},
    {39,  0,  5, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {40,  0,  5, 19,  1,  2,  3,  9,  6, 13,  2, 17,  2},
    {41,  0,  6, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {42,  7, 99, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {43,  7,  8, 20,  1,  2,  3,  8,  6, 14,  2, 18,  2},
    {44,  7,  8, 19,  1,  2,  3,  9,  6, 15,  2, 17,  2},
    {45,  3,  8, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {46,  7, 99, 21,  1,  2,  3,  9,  6, 15,  2, 19,  2},
    {47,  0, 12, 17,  1,  2,  3,  9,  6, 15,  2,  0,  0},
};
static_assert(std::size(kAamvaVersionTable) == 31);

}  // namespace

// Rows 45 and 46 are never found through their readers, which load row 42 on purpose;
// they stay in the table.
const AamvaVersionRow* findAamvaVersionRow(uint32_t formatNumber) {
    // The rows stand in format order from 17, so the row is usually found at once.
    const uint32_t guess = formatNumber - kAamvaVersionTable[0].formatNumber;
    if (guess < std::size(kAamvaVersionTable) && kAamvaVersionTable[guess].formatNumber == formatNumber) {
        return &kAamvaVersionTable[guess];
    }
    for (const AamvaVersionRow& row : kAamvaVersionTable) {
        if (row.formatNumber == formatNumber) return &row;
    }
    return nullptr;
}

std::span<const AamvaVersionRow> aamvaVersionTable() { return kAamvaVersionTable; }

}  // namespace orvane
