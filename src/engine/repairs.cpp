#include "engine/repairs.h"

#include <cstring>
#include <iterator>

#include "aamva/repairs.h"
#include "documents/zone_ocr.h"
#include "engine/status.h"

namespace orvane {
namespace {

// The bytes each kind of damage needs.
bool anyHighByte(const TextFacts& f) { return (f.bytes[2] | f.bytes[3]) != 0; }
bool hasUtf8Lead(const TextFacts& f) { return f.bytes[3] != 0; }  // 0xC2-0xF4 lead, 0xEF the mark
bool hasIdentifierMark(const TextFacts& f) { return f.has(']'); }
bool hasStrayHighBytes(const TextFacts& f) { return anyHighByte(f) && f.has('@'); }
bool hasCarriageReturns(const TextFacts& f) { return f.has('\r') && f.has('@'); }
bool hasAtSign(const TextFacts& f) { return f.has('@'); }
bool hasIndents(const TextFacts& f) { return (f.has(' ') || f.has('\t')) && (f.has('\n') || f.has('\r')); }
bool hasDateSigns(const TextFacts& f) { return f.has('/') || f.has('-'); }
bool hasFillers(const TextFacts& f) { return f.has('<'); }

// In the order they run: the encoding and what stands before the text first, the
// header next, then the lines and what they hold.
constexpr Repair kRepairs[] = {
    // name, repair, decisive, the bytes its damage needs
    {"utf8-to-latin1", repairUtf8ToLatin1, true, hasUtf8Lead},
    {"symbology-identifier", repairSymbologyIdentifier, true, hasIdentifierMark},
    {"stray-high-bytes", repairStrayHighBytes, true, hasStrayHighBytes},
    {"crlf-lines", repairLineBreaks, false, hasCarriageReturns},
    {"header-marker", repairHeaderMarker, true, hasAtSign},
    {"header-separators", repairHeaderSeparators, false, hasAtSign},
    {"line-indents", repairLineIndents, true, hasIndents},
    {"element-separators", repairElementSeparators, true, hasAtSign},
    {"slash-dates", repairSlashDates, true, hasDateSigns},
    // A machine-readable zone's lines out of the OCR text, then its look-alikes field by
    // field: neither other lines nor a look-alike that makes the check digits hold is a
    // layout's own.
    {"zone-lines", repairZoneLines, true, hasFillers},
    {"zone-ocr-documentCode", repairZoneDocumentCode, true, zoneMayNeedCorrection},
    {"zone-ocr-issuingState", repairZoneIssuingState, true, zoneMayNeedCorrection},
    {"zone-ocr-names", repairZoneNames, true, zoneMayNeedCorrection},
    {"zone-ocr-documentNumber", repairZoneDocumentNumber, true, zoneMayNeedCorrection},
    {"zone-ocr-nationality", repairZoneNationality, true, zoneMayNeedCorrection},
    {"zone-ocr-birthDate", repairZoneBirthDate, true, zoneMayNeedCorrection},
    {"zone-ocr-expiryDate", repairZoneExpiryDate, true, zoneMayNeedCorrection},
    {"zone-ocr-optionalData", repairZoneOptionalData, true, zoneMayNeedCorrection},
    {"zone-ocr-composite", repairZoneComposite, true, zoneMayNeedCorrection},
};
static_assert(std::size(kRepairs) <= 32, "a repair's bit must fit the mask");

// A gate's answer depends on the text alone, so each is asked once per text; several
// repairs share one.
struct GateAnswers {
    QuickCheck asked[16];
    bool answers[16];
    int32_t count;

    bool ask(QuickCheck gate, const TextFacts& facts) {
        for (int32_t i = 0; i < count; ++i) {
            if (asked[i] == gate) return answers[i];
        }
        const bool answer = gate(facts);
        if (count < 16) {
            asked[count] = gate;
            answers[count++] = answer;
        }
        return answer;
    }
};

}  // namespace

std::span<const Repair> repairTable() { return kRepairs; }

int32_t repairText(TextSpan input, char* out, char* spare, int32_t room, uint32_t* applied) {
    *applied = 0;
    if (input.data == nullptr || input.length < 1 || out == nullptr || spare == nullptr || room < 1) return -1;
    // The text moves between the two buffers, each repair writing into the other one.
    TextSpan current = input;
    char* target = out;
    TextFacts facts;
    gatherTextFacts(current.data, current.length, &facts);
    GateAnswers gates{};
    for (size_t i = 0; i < std::size(kRepairs); ++i) {
        if (!gates.ask(kRepairs[i].mayApply, facts)) continue;
        const int32_t length = kRepairs[i].apply(current, target, room);
        if (length < 0) continue;
        *applied |= uint32_t{1} << i;
        current = TextSpan{target, length};
        target = target == out ? spare : out;
        gatherTextFacts(current.data, current.length, &facts);
        gates = GateAnswers{};
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
