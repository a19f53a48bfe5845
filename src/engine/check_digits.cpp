#include "engine/check_digits.h"

#include "documents/mrz_check_digits.h"
#include "documents/national.h"
#include "documents/national_zones.h"
#include "engine/registry.h"
#include "engine/status.h"

namespace orvane {
namespace {

constexpr uint32_t kSouthAfricanIdentity = 59;

}  // namespace

CheckDigitReport checkDocumentDigits(const ParsedRecord* record, TextSpan text) {
    CheckDigitReport report{kCheckNotCheckable, {}, 0};
    if (record == nullptr) return report;
    if (const NationalZone layout = nationalZoneOfFormat(record->formatId); layout != NationalZone::None) {
        NationalZoneCheck check{};
        if (checkNationalZoneDigits(layout, text, &check) < 0 || check.checkedDigits == 0) return report;
        report.verdict = check.failureCount == 0 ? kCheckValid : kCheckInvalid;
        for (int32_t i = 0; i < check.failureCount; ++i) report.failures[report.failureCount++] = check.failures[i];
    } else if (record->formatGroup == kGroupMrz) {
        MrzCheckReport zone{};
        if (checkMrzDigits(text.data, text.length, &zone) < 0) return report;
        report.verdict = zone.failureCount == 0 ? kCheckValid : kCheckInvalid;
        for (int32_t i = 0; i < zone.failureCount; ++i) report.failures[report.failureCount++] = zone.failures[i];
    } else if (record->formatId == kSouthAfricanIdentity) {
        report.verdict = checkSouthAfricanIdNumber(record);
        if (report.verdict == kCheckInvalid) report.failures[report.failureCount++] = "documentNumber";
    }
    return report;
}

}  // namespace orvane
