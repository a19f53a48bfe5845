// The repairs the lenient parse makes to damaged scanner text, each a small named unit:
// it looks for one kind of damage that scanners, keyboard wedges and apps do to the text
// and writes a repaired copy. The lenient parse reads the repaired text too and keeps
// the better reading.
#pragma once

#include <cstdint>
#include <span>

#include "engine/format.h"
#include "engine/record.h"

namespace orvane {

// Writes the repaired text of in into out (room bytes) and returns its length, or -1
// when the damage is not there (or the repair would not fit); out is then left as it was.
using RepairStep = int32_t (*)(TextSpan in, char* out, int32_t room);

struct Repair {
    const char* name;
    RepairStep apply;
    // The damage is never a layout's own (a layout may put other separators in its
    // header, or dashes in its dates, but none indents its lines), so a repaired reading
    // that scores as well as the input as it came is the one to keep.
    bool decisive;
    // Bytes the damage cannot be without, so that a clean text costs a glance per repair.
    QuickCheck mayApply;
};

// The repairs in the order they run; a repair's bit is its index here.
std::span<const Repair> repairTable();

// Runs every repair on the text in turn, each on what the ones before left. The result
// ends in out, which spare (of the same room) helps build; returns its length, or -1
// when no repair applied. *applied gets a bit per repair that did.
int32_t repairText(TextSpan input, char* out, char* spare, int32_t room, uint32_t* applied);

// Whether one of the repairs whose bits are set is decisive.
bool anyDecisive(uint32_t repairs);

// Writes the names of the repairs whose bits are set, comma-separated, in the order the
// repairs run: 0, -21 for a bad buffer, -26 when no bit is set or the names do not fit.
int32_t writeRepairNames(uint32_t repairs, char* buffer, int32_t capacity);

// The repairs each family brings.
int32_t repairUtf8ToLatin1(TextSpan in, char* out, int32_t room);
int32_t repairSymbologyIdentifier(TextSpan in, char* out, int32_t room);
int32_t repairStrayHighBytes(TextSpan in, char* out, int32_t room);
int32_t repairLineBreaks(TextSpan in, char* out, int32_t room);

}  // namespace orvane
