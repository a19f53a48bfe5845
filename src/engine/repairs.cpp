#include "engine/repairs.h"

#include <cstring>
#include <iterator>

#include "aamva/repairs.h"
#include "documents/zone_ocr.h"
#include "engine/status.h"

namespace orvane {
namespace {

// In the order they run: the encoding and what stands before the text first, the
// header next, then the lines and what they hold.
constexpr Repair kRepairs[] = {
    // name, repair, decisive
    {"utf8-to-latin1", repairUtf8ToLatin1, true},
    {"symbology-identifier", repairSymbologyIdentifier, true},
    {"stray-high-bytes", repairStrayHighBytes, true},
    {"crlf-lines", repairLineBreaks, false},
    {"header-marker", repairHeaderMarker, true},
    {"header-separators", repairHeaderSeparators, false},
    {"line-indents", repairLineIndents, true},
    {"element-separators", repairElementSeparators, true},
    {"slash-dates", repairSlashDates, true},
    // A machine-readable zone's lines out of the OCR text, then its look-alikes field by
    // field: neither other lines nor a look-alike that makes the check digits hold is a
    // layout's own.
    {"zone-lines", repairZoneLines, true},
    {"zone-ocr-documentCode", repairZoneDocumentCode, true},
    {"zone-ocr-issuingState", repairZoneIssuingState, true},
    {"zone-ocr-names", repairZoneNames, true},
    {"zone-ocr-documentNumber", repairZoneDocumentNumber, true},
    {"zone-ocr-nationality", repairZoneNationality, true},
    {"zone-ocr-birthDate", repairZoneBirthDate, true},
    {"zone-ocr-expiryDate", repairZoneExpiryDate, true},
    {"zone-ocr-optionalData", repairZoneOptionalData, true},
    {"zone-ocr-composite", repairZoneComposite, true},
};
static_assert(std::size(kRepairs) <= 32, "a repair's bit must fit the mask");

}  // namespace

std::span<const Repair> repairTable() { return kRepairs; }

int32_t repairText(TextSpan input, char* out, char* spare, int32_t room, uint32_t* applied) {
    *applied = 0;
    if (input.data == nullptr || input.length < 1 || out == nullptr || spare == nullptr || room < 1) return -1;
    // The text moves between the two buffers, each repair writing into the other one.
    TextSpan current = input;
    char* target = out;
    for (size_t i = 0; i < std::size(kRepairs); ++i) {
        const int32_t length = kRepairs[i].apply(current, target, room);
        if (length < 0) continue;
        *applied |= uint32_t{1} << i;
        current = TextSpan{target, length};
        target = target == out ? spare : out;
    }
    if (*applied == 0) return -1;
    if (current.data != out) std::memcpy(out, current.data, static_cast<size_t>(current.length));
    return current.length;
}

bool anyDecisive(uint32_t repairs) {
    for (size_t i = 0; i < std::size(kRepairs); ++i) {
        if ((repairs >> i & 1u) != 0 && kRepairs[i].decisive) return true;
    }
    return false;
}

int32_t writeRepairNames(uint32_t repairs, char* buffer, int32_t capacity) {
    if (buffer == nullptr || capacity < 1) return kErrInvalidArgument;
    int32_t at = 0;
    for (size_t i = 0; i < std::size(kRepairs); ++i) {
        if ((repairs >> i & 1u) == 0) continue;
        const size_t n = std::strlen(kRepairs[i].name);
        if (at + (at > 0 ? 1 : 0) + static_cast<int64_t>(n) + 1 > capacity) {
            buffer[0] = '\0';  // a name cut short would name no repair
            return kErrNoAnswer;
        }
        if (at > 0) buffer[at++] = ',';
        std::memcpy(buffer + at, kRepairs[i].name, n);
        at += static_cast<int32_t>(n);
    }
    buffer[at] = '\0';
    return at > 0 ? kOk : kErrNoAnswer;
}

}  // namespace orvane
