#include <iterator>

#include "aamva/engine.h"

namespace orvane {
namespace {

// Element id to FieldId, in table order. Repeats are deliberate: every matching pair
// is applied, so one element can fill two slots.

// The early layout.
constexpr PairEntry kAPairs[] = {
    {elementKey("DAA"), 1}, {elementKey("DAG"), 2}, {elementKey("DAI"), 3}, {elementKey("DAJ"), 4},
    {elementKey("DAK"), 5}, {elementKey("DAQ"), 6}, {elementKey("DAR"), 7}, {elementKey("DAS"), 8},
    {elementKey("DAT"), 9}, {elementKey("DBA"), 10}, {elementKey("DBB"), 11},
    {elementKey("DBC"), 12}, {elementKey("DBD"), 13}, {elementKey("DAU"), 14},
    {elementKey("DAW"), 15}, {elementKey("DAY"), 16}, {elementKey("DAZ"), 17},
    {elementKey("DBK"), 18}, {elementKey("PAA"), 19}, {elementKey("PAB"), 20},
    {elementKey("PAC"), 21}, {elementKey("PAD"), 22}, {elementKey("PAE"), 23},
    {elementKey("PAF"), 24}, {elementKey("DAB"), 25}, {elementKey("DAC"), 26},
    {elementKey("DAD"), 27}, {elementKey("DAE"), 28}, {elementKey("DAF"), 29},
    {elementKey("DAH"), 30}, {elementKey("DAL"), 31}, {elementKey("DAM"), 32},
    {elementKey("DAN"), 33}, {elementKey("DAO"), 34}, {elementKey("DAP"), 35},
    {elementKey("DAV"), 36}, {elementKey("DAX"), 37}, {elementKey("DBE"), 38},
    {elementKey("DBF"), 39}, {elementKey("DBG"), 40}, {elementKey("DBH"), 41},
    {elementKey("DBI"), 42}, {elementKey("DBJ"), 43}, {elementKey("DBL"), 44},
    {elementKey("DBM"), 45}, {elementKey("DBN"), 46}, {elementKey("DBO"), 47},
    {elementKey("DBP"), 48}, {elementKey("DBQ"), 49}, {elementKey("DBR"), 50},
    {elementKey("DBS"), 51},
};
static_assert(std::size(kAPairs) == 51);

// The 2003-2005 layouts.
constexpr PairEntry kBPairs[] = {
    {elementKey("DCA"), 52}, {elementKey("DCB"), 8}, {elementKey("DCD"), 9},
    {elementKey("DBA"), 10}, {elementKey("DCS"), 25}, {elementKey("DCT"), 53},
    {elementKey("DBD"), 13}, {elementKey("DBB"), 11}, {elementKey("DBC"), 12},
    {elementKey("DAY"), 16}, {elementKey("DAU"), 54}, {elementKey("DAG"), 2},
    {elementKey("DAI"), 3}, {elementKey("DAJ"), 4}, {elementKey("DAK"), 5}, {elementKey("DAQ"), 55},
    {elementKey("DCG"), 56}, {elementKey("DCH"), 57}, {elementKey("DAH"), 58},
    {elementKey("DAZ"), 17}, {elementKey("DCI"), 59}, {elementKey("DCJ"), 60},
    {elementKey("DCK"), 61}, {elementKey("DBN"), 62}, {elementKey("DBG"), 63},
    {elementKey("DBS"), 64}, {elementKey("DCU"), 28}, {elementKey("DCE"), 65},
    {elementKey("DCL"), 66}, {elementKey("DCM"), 67}, {elementKey("DCN"), 68},
    {elementKey("DCO"), 69}, {elementKey("DCP"), 70}, {elementKey("DCQ"), 71},
    {elementKey("DCR"), 72}, {elementKey("DAA"), 1},
};
static_assert(std::size(kBPairs) == 36);

// The 2014 layouts: DBB goes to 78 and then 11, DAQ to 6 and then 55.
constexpr PairEntry kCPairs[] = {
    {elementKey("DCA"), 52}, {elementKey("DCB"), 8}, {elementKey("DCD"), 9},
    {elementKey("DBA"), 10}, {elementKey("DCS"), 25}, {elementKey("DAC"), 26},
    {elementKey("DAD"), 27}, {elementKey("DBD"), 13}, {elementKey("DBB"), 78},
    {elementKey("DBC"), 12}, {elementKey("DAY"), 16}, {elementKey("DAU"), 54},
    {elementKey("DAG"), 2}, {elementKey("DAI"), 3}, {elementKey("DAJ"), 4}, {elementKey("DAK"), 5},
    {elementKey("DAQ"), 6}, {elementKey("DCF"), 73}, {elementKey("DCG"), 125},
    {elementKey("DDE"), 75}, {elementKey("DDF"), 76}, {elementKey("DDG"), 77},
    {elementKey("DAH"), 58}, {elementKey("DAZ"), 17}, {elementKey("DCI"), 59},
    {elementKey("DCJ"), 60}, {elementKey("DCK"), 61}, {elementKey("DBN"), 62},
    {elementKey("DBG"), 63}, {elementKey("DBS"), 64}, {elementKey("DCU"), 28},
    {elementKey("DCE"), 65}, {elementKey("DCL"), 66}, {elementKey("DCM"), 67},
    {elementKey("DCN"), 68}, {elementKey("DCO"), 69}, {elementKey("DCP"), 70},
    {elementKey("DCQ"), 71}, {elementKey("DCR"), 72}, {elementKey("DDA"), 79},
    {elementKey("DDB"), 80}, {elementKey("DDC"), 81}, {elementKey("DDD"), 82},
    {elementKey("DAW"), 15}, {elementKey("DAX"), 37}, {elementKey("DDH"), 83},
    {elementKey("DDI"), 84}, {elementKey("DDJ"), 85}, {elementKey("DDK"), 41},
    {elementKey("DDL"), 126}, {elementKey("DCA"), 52}, {elementKey("DCB"), 8},
    {elementKey("DCD"), 9}, {elementKey("DBA"), 10}, {elementKey("DCS"), 25},
    {elementKey("DCT"), 53}, {elementKey("DBD"), 13}, {elementKey("DBB"), 11},
    {elementKey("DBC"), 12}, {elementKey("DAY"), 16}, {elementKey("DAU"), 54},
    {elementKey("DAG"), 2}, {elementKey("DAI"), 3}, {elementKey("DAJ"), 4}, {elementKey("DAK"), 5},
    {elementKey("DAQ"), 55}, {elementKey("DCG"), 56}, {elementKey("DCH"), 57},
};
static_assert(std::size(kCPairs) == 68);

// The 2009-2010 layouts, the union of the others: DAU fills both 54 and 14.
constexpr PairEntry kDPairs[] = {
    {elementKey("DAK"), 5}, {elementKey("DCF"), 73}, {elementKey("DCG"), 125},
    {elementKey("DDE"), 75}, {elementKey("DDF"), 76}, {elementKey("DDG"), 77},
    {elementKey("DAA"), 1}, {elementKey("DAG"), 2}, {elementKey("DAI"), 3}, {elementKey("DAJ"), 4},
    {elementKey("DAQ"), 6}, {elementKey("DAR"), 7}, {elementKey("DAS"), 8}, {elementKey("DAT"), 9},
    {elementKey("DBA"), 10}, {elementKey("DBB"), 11}, {elementKey("DBC"), 12},
    {elementKey("DBD"), 13}, {elementKey("DCA"), 52}, {elementKey("DCB"), 8},
    {elementKey("DCD"), 9}, {elementKey("DCS"), 25}, {elementKey("DCT"), 53},
    {elementKey("DAY"), 16}, {elementKey("DAU"), 54}, {elementKey("DCH"), 57},
    {elementKey("DAC"), 26}, {elementKey("DAD"), 27}, {elementKey("DAH"), 58},
    {elementKey("DAZ"), 17}, {elementKey("DCI"), 59}, {elementKey("DCJ"), 60},
    {elementKey("DCK"), 61}, {elementKey("DBN"), 62}, {elementKey("DBG"), 63},
    {elementKey("DBS"), 64}, {elementKey("DCU"), 28}, {elementKey("DCE"), 65},
    {elementKey("DCL"), 66}, {elementKey("DCM"), 67}, {elementKey("DCN"), 68},
    {elementKey("DCO"), 69}, {elementKey("DCP"), 70}, {elementKey("DCQ"), 71},
    {elementKey("DCR"), 72}, {elementKey("DDA"), 79}, {elementKey("DDB"), 80},
    {elementKey("DDC"), 81}, {elementKey("DDD"), 82}, {elementKey("DAW"), 15},
    {elementKey("DAX"), 37}, {elementKey("DAU"), 14}, {elementKey("DBK"), 18},
    {elementKey("PAA"), 19}, {elementKey("PAB"), 20}, {elementKey("PAC"), 21},
    {elementKey("PAD"), 22}, {elementKey("PAE"), 23}, {elementKey("PAF"), 24},
    {elementKey("DAB"), 25}, {elementKey("DAE"), 28}, {elementKey("DAF"), 29},
    {elementKey("DAL"), 31}, {elementKey("DAM"), 32}, {elementKey("DAN"), 33},
    {elementKey("DAO"), 34}, {elementKey("DAP"), 35}, {elementKey("DAV"), 36},
    {elementKey("DBE"), 38}, {elementKey("DBF"), 39}, {elementKey("DBH"), 41},
    {elementKey("DBI"), 42}, {elementKey("DBJ"), 43}, {elementKey("DBL"), 44},
    {elementKey("DBM"), 45}, {elementKey("DBO"), 47}, {elementKey("DBP"), 48},
    {elementKey("DBQ"), 49}, {elementKey("DBR"), 50}, {elementKey("DDH"), 83},
    {elementKey("DDI"), 84}, {elementKey("DDJ"), 85},
};
static_assert(std::size(kDPairs) == 82);

// The index of the first n pairs of a table: each id hashed to a slot (the next free one
// on a collision) that lists its pairs' positions in table order.
template <size_t N>
constexpr ElementIndex indexPairs(const PairEntry (&pairs)[N], size_t n = N) {
    ElementIndex index{};
    for (size_t i = 0; i < n; ++i) {
        uint32_t at = elementSlotOf(pairs[i].key);
        while (index.slots[at].key != 0 && index.slots[at].key != pairs[i].key) at = (at + 1) % kElementSlots;
        ElementSlot& slot = index.slots[at];
        slot.key = pairs[i].key;
        // More pairs for one id than a slot lists fails the build.
        slot.positions[slot.count] = static_cast<uint8_t>(i);
        slot.count = static_cast<uint8_t>(slot.count + 1);
    }
    return index;
}

constexpr ElementIndex kAIndex = indexPairs(kAPairs);
constexpr ElementIndex kBIndex = indexPairs(kBPairs);
constexpr ElementIndex kCIndex = indexPairs(kCPairs);
constexpr ElementIndex kDIndex = indexPairs(kDPairs);
constexpr ElementIndex kEIndex = indexPairs(kCPairs, 48);

}  // namespace

const AamvaElementTable kAamvaTableA{kAPairs, static_cast<int32_t>(std::size(kAPairs)), &kAIndex};
const AamvaElementTable kAamvaTableB{kBPairs, static_cast<int32_t>(std::size(kBPairs)), &kBIndex};
const AamvaElementTable kAamvaTableC{kCPairs, static_cast<int32_t>(std::size(kCPairs)), &kCIndex};
const AamvaElementTable kAamvaTableD{kDPairs, static_cast<int32_t>(std::size(kDPairs)), &kDIndex};
bool isKnownElementId(const char* id) {
    const uint32_t key = static_cast<uint32_t>(static_cast<unsigned char>(id[0])) << 16 |
                         static_cast<uint32_t>(static_cast<unsigned char>(id[1])) << 8 |
                         static_cast<uint32_t>(static_cast<unsigned char>(id[2]));
    for (const ElementIndex* index : {&kAIndex, &kBIndex, &kCIndex, &kDIndex}) {
        if (findElementSlot(*index, key).count != 0) return true;
    }
    return false;
}

// The 2011 variant: the 2014 table up to DDJ, without DDK, DDL and the repeated tail.
const AamvaElementTable kAamvaTableE{kCPairs, 48, &kEIndex};
static_assert(kCPairs[47].key == elementKey("DDJ") && kCPairs[48].key == elementKey("DDK"));

}  // namespace orvane
